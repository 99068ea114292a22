# Debug symbols in files of their own. The build uses this file, and the installed package hands it to its users.

set(KIVARA_SPLIT_SYMBOLS ${CMAKE_CURRENT_LIST_DIR}/split-symbols.cmake)

# kivara_split_symbols_of_file(FILE DESTINATION [OPTIONS of objcopy]): the same for a file that is no target.
function(kivara_split_symbols_of_file file destination)
  install(CODE "set(KIVARA_BUILT \"${file}\")\nset(KIVARA_DESTINATION \"${destination}\")
set(KIVARA_OBJCOPY \"${CMAKE_OBJCOPY}\")\nset(KIVARA_OBJCOPY_OPTIONS \"${ARGN}\")")
  install(SCRIPT ${KIVARA_SPLIT_SYMBOLS})
endfunction()

# kivara_split_symbols(TARGET [DESTINATION folder]): what is installed of a program or DLL holds no debug symbols; they go into the
# folder .debug beside it, where debuggers and addr2line look. The folder is the one that the target is installed to, "bin" unless
# given; call it after the call that installs the target. The time stamps of the binary stay as the linker wrote them.
function(kivara_split_symbols target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESTINATION" "")
  if(NOT DEFINED arg_DESTINATION)
    set(arg_DESTINATION bin)
  endif()
  kivara_check_arguments("kivara_split_symbols(${target})" arg DESTINATION)
  kivara_split_symbols_of_file($<TARGET_FILE:${target}> ${arg_DESTINATION})
endfunction()
