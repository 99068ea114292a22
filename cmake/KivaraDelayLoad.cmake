# Libraries of the system that a module needs only now and then are loaded by the first call into them, so that programs that never
# make one start without them.

# kivara_delay_load(TARGET library...): links TARGET with the system's libraries, each named as for the linker ("winhttp"), and lets
# the first call of a function load it.
#
# - A call whose library or function is missing ends the program by a structured exception: ask LoadLibrary first where that can be.
# - The stubs do not keep arguments of floating point in registers: not for functions that take any.
# - Tests reach the calls with tests/support: spyOnImport and replaceImports also see functions that are loaded late.
function(kivara_delay_load target)
  foreach(library IN LISTS ARGN)
    kivara_make_delay_library(made ${library})
    target_link_libraries(${target} PRIVATE ${made})
  endforeach()
endfunction()

# Makes the import library once for each build folder, from what the toolchain's own one names.
function(kivara_make_delay_library result library)
  set(made ${CMAKE_BINARY_DIR}/delayload/lib${library}_delay.a)
  set(${result} ${made} PARENT_SCOPE)
  if(EXISTS ${made})
    return()
  endif()
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=lib${library}.a
    OUTPUT_VARIABLE original OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_DLLTOOL} --identify ${original}
    OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_NM} ${original}
    OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "__imp_[A-Za-z0-9_]+" functions "${symbols}")
  list(TRANSFORM functions REPLACE "^__imp_" "")
  list(JOIN functions "\n" lines)
  file(WRITE ${CMAKE_BINARY_DIR}/delayload/${library}.def "LIBRARY \"${dll}\"\nEXPORTS\n${lines}\n")
  # The tool names its symbols after the file, so it is called beside it: a path from the root would become part of them.
  execute_process(COMMAND ${CMAKE_DLLTOOL} --machine i386:x86-64 --input-def ${library}.def --output-delaylib lib${library}_delay.a
    WORKING_DIRECTORY ${CMAKE_BINARY_DIR}/delayload COMMAND_ERROR_IS_FATAL ANY)
endfunction()
