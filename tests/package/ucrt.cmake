# A compiler whose runtime headers are those of UCRT is refused at configure time; a project that asks quietly goes on.
include(${CMAKE_CURRENT_LIST_DIR}/configure_project.cmake)
configure_project(${SOURCE}/apps/minimal ${WORK}/ucrt -DCMAKE_CXX_FLAGS=-D_UCRT)
if(code EQUAL 0)
  message(FATAL_ERROR "UCRT was accepted")
endif()
string(REGEX REPLACE "[ \n]+" " " words "${output}")
if(NOT words MATCHES "kivara needs MinGW-w64 GCC for 64-bit Windows on msvcrt, but the runtime is UCRT")
  message(FATAL_ERROR "the reason is not told:\n${output}")
endif()

file(WRITE ${WORK}/quiet/CMakeLists.txt [[
cmake_minimum_required(VERSION 3.23)
project(quiet LANGUAGES CXX)
find_package(kivara CONFIG QUIET)
if(kivara_FOUND)
  message(FATAL_ERROR "found")
endif()
]])
execute_process(
  COMMAND ${CMAKE_COMMAND} -G Ninja -S ${WORK}/quiet -B ${WORK}/quiet/build -DCMAKE_CXX_FLAGS=-D_UCRT
    -DCMAKE_TOOLCHAIN_FILE=${INSTALLED}/lib/cmake/kivara/toolchain-mingw64.cmake
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "the quiet question ended the configuration:\n${output}")
endif()
