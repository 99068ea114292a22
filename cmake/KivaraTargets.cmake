# How the kinds of targets of this project are made. Sources and links are always named, never globbed.

set(KIVARA_CMAKE_DIR ${CMAKE_CURRENT_LIST_DIR})
include(KivaraDelayLoad)
include(KivaraResources)
include(KivaraPlugins)
include(KivaraVersionInfo)
include(KivaraSymbols)
include(KivaraInstall)

# The samples are projects that find the library as those of users do. Here they find what is being built.
set(kivara_DIR ${PROJECT_BINARY_DIR}/package/tree)
configure_file(${KIVARA_CMAKE_DIR}/package/kivaraConfigVersion.cmake.in ${kivara_DIR}/kivaraConfigVersion.cmake @ONLY)
file(CONFIGURE OUTPUT ${kivara_DIR}/kivaraConfig.cmake CONTENT "# All that it would bring is there.\n")

# As in the installed package; but all that programs need lies in one folder here, and kivara_ship installs.
function(kivara_deploy program)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESTINATION" "WITH;FILES")
  add_dependencies(${program} kivara_packs ${arg_WITH})
  foreach(file IN LISTS arg_FILES)
    configure_file(${file} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${file} COPYONLY)
  endforeach()
endfunction()

# What runs programs of this build where programs of Windows do not run by themselves; empty on Windows, since CMake takes it
# for tests in any case.
set(KIVARA_EMULATOR "")
if(CMAKE_CROSSCOMPILING)
  set(KIVARA_EMULATOR ${PROJECT_SOURCE_DIR}/tests/support/harness/run-under-wine)
endif()

# What the library's own files say of where they come from.
function(kivara_own_version_info target description)
  kivara_version_info(${target} DESCRIPTION "${description}" VERSION ${kivara_VERSION} PRODUCT kivara COMPANY kivara)
endfunction()

# kivara_dll(NAME SOURCES file... [LINKS target...] DESCRIPTION text): a DLL that exports what its headers mark.
function(kivara_dll name)
  cmake_parse_arguments(arg "" "DESCRIPTION" "SOURCES;LINKS" ${ARGN})
  add_library(${name} SHARED ${arg_SOURCES})
  target_link_libraries(${name} ${arg_LINKS})
  string(TOUPPER ${name} upper)
  target_compile_definitions(${name} PRIVATE ${upper}_EXPORTS)
  kivara_own_version_info(${name} "${arg_DESCRIPTION}")
endfunction()

# kivara_program(NAME SOURCES file... [LINKS target...] [DESCRIPTION text] [CONSOLE]): a program, of the GUI subsystem unless
# it says CONSOLE, with a manifest, and with file properties where it has a description.
function(kivara_program name)
  cmake_parse_arguments(arg "CONSOLE" "DESCRIPTION" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  kivara_manifest(${name})
  if(arg_DESCRIPTION)
    kivara_own_version_info(${name} "${arg_DESCRIPTION}")
  endif()
  target_link_libraries(${name} PRIVATE ${arg_LINKS})
  if(NOT arg_CONSOLE)
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
  endif()
endfunction()

# kivara_test(NAME SOURCES file... [LINKS target...] [PROGRAMS target...] [PROPERTIES ctest property...] [OWN_DISPLAY monitors]):
# a GoogleTest program; each of its cases is a ctest case of its own, found when the tests run. PROGRAMS are the child programs that it
# starts. OWN_DISPLAY runs each case in a display and a prefix of its own, with 1 or 2 monitors; under Wine alone.
function(kivara_test name)
  cmake_parse_arguments(arg "" "OWN_DISPLAY" "SOURCES;LINKS;PROGRAMS;PROPERTIES" ${ARGN})
  set(emulator ${KIVARA_EMULATOR})
  if(arg_OWN_DISPLAY)
    set(emulator ${PROJECT_SOURCE_DIR}/tests/support/harness/in-own-display ${arg_OWN_DISPLAY})
  endif()
  kivara_program(${name} CONSOLE SOURCES ${arg_SOURCES} LINKS ${arg_LINKS} kivara_test_support)
  if(arg_PROGRAMS)
    add_dependencies(${name} ${arg_PROGRAMS})
  endif()
  set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR "${emulator}")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300 ${arg_PROPERTIES})
endfunction()

# kivara_long_test(NAME FILTER pattern): the cases of a test program that the pattern of GoogleTest names, once more for
# `./dev long`, which lets each of them do many times as much.
function(kivara_long_test name)
  cmake_parse_arguments(arg "" "FILTER" "" ${ARGN})
  gtest_discover_tests(${name} TEST_PREFIX Long. TEST_FILTER ${arg_FILTER} TEST_LIST ${name}_LONG_TESTS
    DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 86400 LABELS long)
endfunction()
