# The installed headers beside what a product has: headers of the same names, and the platform's own.
cmake_minimum_required(VERSION 3.23)
set(headers ${INSTALLED}/include/kivara)
set(work ${WORK}/headers)
file(REMOVE_RECURSE ${work})
file(GLOB_RECURSE names RELATIVE ${headers} ${headers}/*)

# preprocess(RESULT TEXT options...): what the compiler's preprocessor makes of a source.
function(preprocess result text)
  file(WRITE ${work}/source.cpp "${text}")
  execute_process(COMMAND ${CXX} -std=c++20 ${ARGN} -isystem ${headers} -E ${work}/source.cpp
    OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "not understood by the compiler:\n${text}${errors}")
  endif()
  set(${result} "${output}" PARENT_SCOPE)
endfunction()

# A product has a header of each name on its include path, which comes before that of the library. They are of no use to the library.
foreach(name IN LISTS names)
  file(WRITE ${work}/product/${name} "#error \"${name} of the product\"\n")
endforeach()
preprocess(ignored "#include \"${headers}/kivara.hpp\"\n#include \"${headers}/sv/sv.hpp\"\n#include \"${headers}/tools/winnames.hpp\"\n"
  -I${work}/product)

# macros(RESULT TEXT): the names of the macros that are left at the end of a source.
function(macros result text)
  preprocess(lines "${text}" -dM)
  string(REGEX MATCHALL "#define [A-Za-z0-9_]+" names "${lines}")
  list(TRANSFORM names REPLACE "#define " "")
  set(${result} ${names} PARENT_SCOPE)
endfunction()

# The names that public headers use.
set(used "")
foreach(name IN LISTS names)
  file(READ ${headers}/${name} text)
  string(REGEX REPLACE "//[^\n]*|\"[^\"\n]*\"|#undef[^\n]*" " " text "${text}")
  string(REGEX MATCHALL "[A-Za-z_][A-Za-z0-9_]*" words "${text}")
  list(APPEND used ${words})
endforeach()
list(REMOVE_DUPLICATES used)

# None of them is a macro of the platform's headers, whichever come first: it would rename what it stands for in one of two sources.
# Each header includes one of the three that mark what is exported.
set(library "#include \"kivara.hpp\"\n#include \"sv/sv.hpp\"\n")
set(platform "#include <winsock2.h>\n#include <windows.h>\n#include <commctrl.h>\n#include <commdlg.h>\n#include <mmsystem.h>
#include <shellapi.h>\n#include <shlobj.h>\n#include <winspool.h>\n")
macros(without "${library}")
foreach(order IN ITEMS "${library}${platform}" "${platform}#include <tools/export.hpp>\n" "${platform}#include <sv/export.hpp>\n"
    "${platform}#include <export.hpp>\n")
  macros(with "${order}")
  list(REMOVE_ITEM with ${without})
  set(unharmed ${used})
  list(REMOVE_ITEM unharmed ${with})
  set(renamed ${used})
  list(REMOVE_ITEM renamed ${unharmed})
  if(renamed)
    message(SEND_ERROR "a macro of the platform renames ${renamed} in:\n${order}end them in tools/winnames.hpp")
  endif()
endforeach()

# A source that has nothing to do with the library gets what it knows.
macros(plain "#include <windows.h>\n")
if(NOT DrawText IN_LIST plain)
  message(SEND_ERROR "windows.h alone has lost a macro")
endif()
