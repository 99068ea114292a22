# A compiler whose runtime headers are those of UCRT is refused at configure time; a project that asks quietly goes on.
include(${CMAKE_CURRENT_LIST_DIR}/build_project.cmake)
configure_project(${INSTALLED}/share/doc/kivara/apps/minimal ${WORK}/ucrt fails -DCMAKE_CXX_FLAGS=-D_UCRT)
expect_words("kivara needs MinGW-w64 GCC for 64-bit Windows on msvcrt, but the runtime is UCRT")

file(WRITE ${WORK}/quiet/CMakeLists.txt [[
cmake_minimum_required(VERSION 3.23)
project(quiet LANGUAGES CXX)
find_package(kivara CONFIG QUIET)
if(kivara_FOUND)
  message(FATAL_ERROR "found")
endif()
]])
configure_project(${WORK}/quiet ${WORK}/quiet/build works -DCMAKE_CXX_FLAGS=-D_UCRT)
