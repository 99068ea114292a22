# At installation: moves the debug symbols of KIVARA_BUILT to a file of their own, and writes its name into the installed binary. The
# folder .debug beside a binary is where debuggers and addr2line look for it.
#
# A crash report names a binary by the time stamp in its header, which objcopy otherwise replaces by the moment of the installation.
cmake_path(GET KIVARA_BUILT FILENAME name)
set(folder $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${KIVARA_DESTINATION})
set(symbols ${folder}/.debug/${name}.debug)
file(MAKE_DIRECTORY ${folder}/.debug)
execute_process(COMMAND ${KIVARA_OBJCOPY} --preserve-dates --only-keep-debug ${KIVARA_BUILT} ${symbols}
  COMMAND_ERROR_IS_FATAL ANY)
# From the binary as it was built: that of an earlier installation has a link already, and objcopy adds no second one.
execute_process(COMMAND ${KIVARA_OBJCOPY} --preserve-dates --strip-all ${KIVARA_OBJCOPY_OPTIONS}
    --add-gnu-debuglink=${symbols} ${KIVARA_BUILT} ${folder}/${name}
  COMMAND_ERROR_IS_FATAL ANY)
