# DLLs of resources and manifests of programs. The build uses this file, and the installed package hands it to its users.

set(KIVARA_PROGRAM_RC ${CMAKE_CURRENT_LIST_DIR}/program.rc)
set(KIVARA_MANIFEST ${CMAKE_CURRENT_LIST_DIR}/program.manifest)

# kivara_check_arguments(CALL PREFIX needed...): ends the configuration where a call lacks an argument, or has one that is unknown.
macro(kivara_check_arguments call prefix)
  foreach(needed ${ARGN})
    if("${${prefix}_${needed}}" STREQUAL "")
      message(FATAL_ERROR "${call} needs ${needed}.")
    endif()
  endforeach()
  if(DEFINED ${prefix}_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "${call} does not know \"${${prefix}_UNPARSED_ARGUMENTS}\".")
  endif()
endmacro()

function(kivara_check_language call language)
  if(NOT language MATCHES "^[1-9][0-9]?[0-9]?[0-9]?[0-9]?$" OR language GREATER 65535)
    message(FATAL_ERROR "${call}: LANGUAGE is the decimal language identifier of Windows, such as 1031 for German or 2057 for \
British English, but not \"${language}\".")
  endif()
endfunction()

# The folder of the programs of the project that calls.
function(kivara_program_folder result)
  set(folder ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  if(NOT folder)
    set(folder ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  set(${result} ${folder} PARENT_SCOPE)
endfunction()

# A resource script of a target: UTF-8, and in the language of the target where it names none. They are options of the source, since
# CMake drops all options of targets that it does not know of resource compilers.
function(kivara_resource_script target script)
  if(NOT CMAKE_RC_COMPILER_LOADED)
    message(FATAL_ERROR "The resources of ${target} need RC among the languages of the project: project(NAME LANGUAGES CXX RC).")
  endif()
  cmake_path(ABSOLUTE_PATH script)
  target_sources(${target} PRIVATE ${script})
  set(language $<TARGET_PROPERTY:KIVARA_LANGUAGE>)
  set_source_files_properties(${script} TARGET_DIRECTORY ${target} PROPERTIES
    COMPILE_OPTIONS "--codepage=65001;$<$<BOOL:${language}>:--language=${language}>")
endfunction()

# kivara_resource_dll(NAME OUTPUT file LANGUAGE id SOURCE file.rc): a DLL of resources alone, without code and start-up.
# OUTPUT counts from the folder of the programs, LANGUAGE is the decimal language id of all that the script names none for, and
# the script is UTF-8.
function(kivara_resource_dll name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "OUTPUT;LANGUAGE;SOURCE" "")
  kivara_check_arguments("kivara_resource_dll(${name})" arg OUTPUT LANGUAGE SOURCE)
  kivara_check_language("kivara_resource_dll(${name})" "${arg_LANGUAGE}")
  cmake_path(GET arg_OUTPUT PARENT_PATH folder)
  cmake_path(GET arg_OUTPUT STEM file)
  math(EXPR language ${arg_LANGUAGE} OUTPUT_FORMAT HEXADECIMAL)
  kivara_program_folder(programs)
  add_library(${name} MODULE)
  kivara_resource_script(${name} ${arg_SOURCE})
  target_link_options(${name} PRIVATE -nostdlib -Wl,--entry=0)
  set_target_properties(${name} PROPERTIES
    LINKER_LANGUAGE CXX
    PREFIX ""
    OUTPUT_NAME ${file}
    LIBRARY_OUTPUT_DIRECTORY ${programs}/${folder}
    KIVARA_LANGUAGE ${language}
    KIVARA_PLACE "${folder}")
endfunction()

# kivara_language_pack(NAME BASE name LANGUAGE id SOURCE file.rc): a resource DLL under the name that the library looks for:
# createResourceManager("name", true) finds language\ID\name72.dll.
function(kivara_language_pack name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "BASE;LANGUAGE;SOURCE" "")
  kivara_check_arguments("kivara_language_pack(${name})" arg BASE LANGUAGE SOURCE)
  kivara_check_language("kivara_language_pack(${name})" "${arg_LANGUAGE}")
  kivara_resource_dll(${name}
    OUTPUT language/${arg_LANGUAGE}/${arg_BASE}${KIVARA_RESOURCE_VERSION}.dll
    LANGUAGE ${arg_LANGUAGE}
    SOURCE ${arg_SOURCE})
endfunction()

# kivara_word_pack(NAME LANGUAGE id TEXTS file.txt [CODEPAGE n]): language/ID/kivml.dll from a list of words that are recognised
# in every language. The packer checks the list on the way; where programs of Windows do not run by themselves,
# CMAKE_CROSSCOMPILING_EMULATOR has to name what runs them.
function(kivara_word_pack name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LANGUAGE;TEXTS;CODEPAGE" "")
  kivara_check_arguments("kivara_word_pack(${name})" arg LANGUAGE TEXTS)
  kivara_check_language("kivara_word_pack(${name})" "${arg_LANGUAGE}")
  if(NOT arg_CODEPAGE)
    set(arg_CODEPAGE 1252)
  endif()
  kivara_program_folder(programs)
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
  set_target_properties(${name} PROPERTIES KIVARA_FILE ${packed} KIVARA_PLACE language/${arg_LANGUAGE})
endfunction()

# kivara_manifest(PROGRAM): the manifest of a program: current controls, no administrator, the scale of the user's display, current
# versions of Windows.
function(kivara_manifest program)
  kivara_resource_script(${program} ${KIVARA_PROGRAM_RC})
  set_source_files_properties(${KIVARA_PROGRAM_RC} TARGET_DIRECTORY ${program} PROPERTIES OBJECT_DEPENDS ${KIVARA_MANIFEST})
endfunction()
