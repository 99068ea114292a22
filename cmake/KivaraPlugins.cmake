# Plug-ins for programs on the library. The build uses this file, and the installed package hands it to its users.

set(KIVARA_PLUGIN_SOURCE ${CMAKE_CURRENT_LIST_DIR}/plugin.cpp.in)

# kivara_add_plugin(NAME GENERAL|SCRIPT SOURCES file... [LINKS target...]): plugins/NAME.dll below the folder of the programs. It
# exports the version of the library that it is built for, and its type; the sources of a SCRIPT plug-in define the six functions of
# aplugin_exports.hpp, and linking fails where one is missing.
function(kivara_add_plugin name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "GENERAL;SCRIPT" "" "SOURCES;LINKS")
  kivara_check_arguments("kivara_add_plugin(${name})" arg SOURCES)
  if(arg_GENERAL STREQUAL arg_SCRIPT)
    message(FATAL_ERROR "kivara_add_plugin(${name}) needs either GENERAL or SCRIPT.")
  endif()
  set(type KIV_PLUGIN_GENERAL)
  set(is_script 0)
  if(arg_SCRIPT)
    set(type KIV_PLUGIN_KIVSCRIPT)
    set(is_script 1)
  endif()
  set(exports ${CMAKE_CURRENT_BINARY_DIR}/${name}-plugin.cpp)
  configure_file(${KIVARA_PLUGIN_SOURCE} ${exports} @ONLY)
  add_library(${name} MODULE ${arg_SOURCES} ${exports})
  target_compile_definitions(${name} PRIVATE KIVARA_PLUGIN)
  target_link_libraries(${name} PRIVATE kivara::kivara ${arg_LINKS})
  kivara_program_folder(programs)
  set_target_properties(${name} PROPERTIES
    PREFIX "" # DLLs of MinGW begin with "lib" otherwise
    LIBRARY_OUTPUT_DIRECTORY ${programs}/plugins
    KIVARA_PLACE plugins)
endfunction()
