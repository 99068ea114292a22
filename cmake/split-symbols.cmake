# At installation: moves the debug symbols of KIVARA_BUILT to a file of their own, and tells the installed binary its name. The
# folder .debug beside a binary is where debuggers and addr2line look for it.
cmake_path(GET KIVARA_BUILT FILENAME name)
set(bin $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/bin)
file(MAKE_DIRECTORY ${bin}/.debug)
execute_process(COMMAND ${KIVARA_OBJCOPY} --only-keep-debug ${KIVARA_BUILT} ${bin}/.debug/${name}.debug
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${KIVARA_OBJCOPY} --strip-all ${KIVARA_FILE_ALIGNMENT}
    --add-gnu-debuglink=${bin}/.debug/${name}.debug ${bin}/${name}
  COMMAND_ERROR_IS_FATAL ANY)
