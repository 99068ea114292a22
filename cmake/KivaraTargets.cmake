# How the kinds of targets of this project are made. Sources and links are always named, never globbed.

# kivara_dll(NAME SOURCES file... [LINKS target...]): a DLL that exports what its headers mark.
function(kivara_dll name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} SHARED ${arg_SOURCES})
  target_link_libraries(${name} ${arg_LINKS})
  string(TOUPPER ${name} upper)
  target_compile_definitions(${name} PRIVATE ${upper}_EXPORTS)
endfunction()

# kivara_program(NAME SOURCES file... [LINKS target...] [CONSOLE]): a program, of the GUI subsystem unless it says CONSOLE.
function(kivara_program name)
  cmake_parse_arguments(arg "CONSOLE" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINKS})
  if(NOT arg_CONSOLE)
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
  endif()
endfunction()

# kivara_test(NAME SOURCES file... [LINKS target...] [PROGRAMS target...] [PROPERTIES ctest property...]): a GoogleTest
# program; each of its cases is a ctest case of its own, found when the tests run. PROGRAMS are the child programs that it starts.
function(kivara_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS;PROGRAMS;PROPERTIES" ${ARGN})
  kivara_program(${name} CONSOLE SOURCES ${arg_SOURCES} LINKS ${arg_LINKS} kivara_test_support)
  if(arg_PROGRAMS)
    add_dependencies(${name} ${arg_PROGRAMS})
  endif()
  set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR ${PROJECT_SOURCE_DIR}/tests/support/run-under-wine)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300 ${arg_PROPERTIES})
endfunction()
