# Which compilers can share classes, exceptions, streams and memory with the library: MinGW-w64 GCC for 64-bit Windows on the
# runtime msvcrt. The build asks, and so does the installed package on behalf of its user.

# kivara_compiler_problem(RESULT): the reason why the compiler of this configuration cannot be used, or the empty text.
function(kivara_compiler_problem result)
  set(problem "")
  if("${CMAKE_CXX_COMPILER_ID}" STREQUAL "")
    set(problem "C++ is not among the languages of the project: write project(NAME LANGUAGES CXX RC)")
  elseif(NOT WIN32)
    set(problem "the target is ${CMAKE_SYSTEM_NAME}, not Windows")
  elseif(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(problem "the compiler is ${CMAKE_CXX_COMPILER_ID}, whose classes and exceptions are not those of GCC")
  elseif(NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(problem "the target is not a 64-bit one")
  elseif(KIVARA_UCRT)
    set(problem "the runtime is UCRT, whose streams and memory are not those of msvcrt (on MSYS2 take the MINGW64 shell)")
  endif()
  set(${result} "${problem}" PARENT_SCOPE)
endfunction()

# kivara_require_compiler(HINT [QUIET FOUND]): ends the configuration with the reason and the hint; with QUIET it only sets the
# variable FOUND to whether the compiler can be used.
function(kivara_require_compiler hint)
  cmake_parse_arguments(arg "" "QUIET" "" ${ARGN})
  kivara_compiler_problem(problem)
  if(NOT problem)
    include(CheckCXXSymbolExists)
    set(CMAKE_REQUIRED_QUIET ON)
    check_cxx_symbol_exists(_UCRT stdlib.h KIVARA_UCRT)
    kivara_compiler_problem(problem)
  endif()
  if(problem AND NOT arg_QUIET)
    message(FATAL_ERROR "kivara needs MinGW-w64 GCC for 64-bit Windows on msvcrt, but ${problem}. ${hint}")
  endif()
  if(arg_QUIET)
    string(COMPARE EQUAL "${problem}" "" usable)
    set(${arg_QUIET} ${usable} PARENT_SCOPE)
  endif()
endfunction()
