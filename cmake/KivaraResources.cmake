# DLLs of resources and manifests of programs. The build uses this file, and the installed package hands it to its users.

set(KIVARA_PROGRAM_RC ${CMAKE_CURRENT_LIST_DIR}/program.rc)

# The number in the names of resource DLLs, for the library and for products alike. It is no part of the product's version:
# installed products go on looking for these names.
set(KIVARA_RESOURCE_VERSION 72)

# kivara_resource_dll(NAME OUTPUT file LANGUAGE id SOURCE file.rc): a DLL of resources alone, without code and start-up.
# OUTPUT counts from the folder of the programs, LANGUAGE is the decimal language id of all that the script names none for, and
# the script is UTF-8.
function(kivara_resource_dll name)
  cmake_parse_arguments(arg "" "OUTPUT;LANGUAGE;SOURCE" "" ${ARGN})
  foreach(needed IN ITEMS OUTPUT LANGUAGE SOURCE)
    if(NOT arg_${needed})
      message(FATAL_ERROR "kivara_resource_dll(${name}) needs ${needed}.")
    endif()
  endforeach()
  if(NOT CMAKE_RC_COMPILER_LOADED)
    message(FATAL_ERROR "kivara_resource_dll needs RC among the languages of the project: project(NAME LANGUAGES CXX RC).")
  endif()
  cmake_path(GET arg_OUTPUT PARENT_PATH folder)
  cmake_path(GET arg_OUTPUT STEM file)
  math(EXPR language ${arg_LANGUAGE} OUTPUT_FORMAT HEXADECIMAL)
  set(programs ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  if(NOT programs)
    set(programs ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  add_library(${name} MODULE ${arg_SOURCE})
  target_compile_options(${name} PRIVATE --codepage=65001 --language=${language})
  target_link_options(${name} PRIVATE -nostdlib -Wl,--entry=0)
  set_target_properties(${name} PROPERTIES
    LINKER_LANGUAGE CXX
    PREFIX ""
    OUTPUT_NAME ${file}
    LIBRARY_OUTPUT_DIRECTORY ${programs}/${folder})
endfunction()

# kivara_language_pack(NAME BASE name LANGUAGE id SOURCE file.rc): a resource DLL under the name that the library looks for:
# createResourceManager("name", true) finds language\ID\name72.dll.
function(kivara_language_pack name)
  cmake_parse_arguments(arg "" "BASE;LANGUAGE;SOURCE" "" ${ARGN})
  if(NOT arg_BASE)
    message(FATAL_ERROR "kivara_language_pack(${name}) needs BASE.")
  endif()
  kivara_resource_dll(${name}
    OUTPUT language/${arg_LANGUAGE}/${arg_BASE}${KIVARA_RESOURCE_VERSION}.dll
    LANGUAGE ${arg_LANGUAGE}
    SOURCE ${arg_SOURCE})
endfunction()

# kivara_word_pack(NAME LANGUAGE id TEXTS file.txt [CODEPAGE n]): language/ID/kivml.dll from a list of words that are recognised
# in every language. The packer checks the list on the way; where programs of Windows do not run by themselves,
# CMAKE_CROSSCOMPILING_EMULATOR has to name what runs them.
function(kivara_word_pack name)
  cmake_parse_arguments(arg "" "LANGUAGE;TEXTS;CODEPAGE" "" ${ARGN})
  foreach(needed IN ITEMS LANGUAGE TEXTS)
    if(NOT arg_${needed})
      message(FATAL_ERROR "kivara_word_pack(${name}) needs ${needed}.")
    endif()
  endforeach()
  if(NOT arg_CODEPAGE)
    set(arg_CODEPAGE 1252)
  endif()
  set(programs ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  if(NOT programs)
    set(programs ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  set(packer kivml)
  if(NOT TARGET kivml)
    if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
      message(FATAL_ERROR "kivara_word_pack(${name}) runs kivml.exe: set CMAKE_CROSSCOMPILING_EMULATOR to what runs programs of \
Windows here, such as /usr/bin/wine.")
    endif()
    set(packer ${CMAKE_CROSSCOMPILING_EMULATOR} ${KIVARA_BIN_DIR}/kivml.exe)
  endif()
  cmake_path(ABSOLUTE_PATH arg_TEXTS)
  set(packed ${programs}/language/${arg_LANGUAGE}/kivml.dll)
  file(MAKE_DIRECTORY ${programs}/language/${arg_LANGUAGE})
  add_custom_command(
    OUTPUT ${packed}
    COMMAND ${packer} pack ${arg_TEXTS} ${packed} --codepage ${arg_CODEPAGE}
    DEPENDS $<TARGET_NAME_IF_EXISTS:kivml> ${arg_TEXTS}
    COMMENT "Packing language/${arg_LANGUAGE}/kivml.dll"
    VERBATIM)
  add_custom_target(${name} ALL DEPENDS ${packed})
endfunction()

# kivara_manifest(PROGRAM): the manifest of a program: common controls 6, no administrator, current versions of Windows.
function(kivara_manifest program)
  target_sources(${program} PRIVATE ${KIVARA_PROGRAM_RC})
endfunction()
