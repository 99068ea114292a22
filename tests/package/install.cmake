# Installs, and looks at what is there.
file(REMOVE_RECURSE ${INSTALLED})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${INSTALLED}
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "the installation failed:\n${output}")
endif()

foreach(file IN ITEMS
    bin/kivara.dll bin/SV0105.dll bin/TL0105.dll bin/re00005.dll
    bin/libstdc++-6.dll bin/libgcc_s_seh-1.dll bin/libwinpthread-1.dll
    bin/.debug/kivara.dll.debug bin/.debug/SV0105.dll.debug bin/.debug/TL0105.dll.debug bin/plugins/textcommands.dll
    bin/plugins/userwatch.dll bin/plugins/.debug/textcommands.dll.debug bin/words.exe bin/modeler.exe bin/modeler.zip bin/service.exe
    bin/kivcrash.exe bin/libdwarf.dll bin/.debug/kivcrash.exe.debug bin/.debug/libdwarf.dll.debug
    bin/kivml.exe bin/kivuser.exe bin/.debug/re00005.dll.debug bin/charmaps/central-european.map
    bin/lang.ini bin/agfx.zip bin/language/1031/kivara72.dll bin/language/2057/kivara72.dll
    include/kivara/kivara.hpp include/kivara/kivara_version.hpp include/kivara/tools.hpp include/kivara/tools/string.hpp include/kivara/sv/sv.hpp include/kivara/re00005.hpp
    lib/libkivara.dll.a lib/libSV0105.dll.a lib/libTL0105.dll.a lib/libre00005.dll.a lib/libkivara_main.a
    lib/cmake/kivara/kivaraConfig.cmake lib/cmake/kivara/kivaraConfigVersion.cmake
    lib/cmake/kivara/KivaraPlugins.cmake lib/cmake/kivara/plugin.cpp.in lib/cmake/kivara/presets.json lib/cmake/kivara/toolchain-mingw64.cmake
    share/doc/kivara/api/index.html share/doc/kivara/api/classKivMDIApplication.html share/doc/kivara/api/modeler.png
    share/doc/kivara/README.md share/doc/kivara/docs/package.md share/doc/kivara/docs/frame.svg
    share/doc/kivara/CHANGELOG.md share/doc/kivara/notices/NOTICES.txt share/doc/kivara/notices/gcc-runtime.txt share/doc/kivara/notices/libdwarf.txt
    share/doc/kivara/notices/minizip.txt share/doc/kivara/notices/openssl.txt share/doc/kivara/notices/winpthreads.txt
    share/doc/kivara/notices/zlib.txt share/doc/kivara/notices/tre.txt)
  if(NOT EXISTS ${INSTALLED}/${file})
    message(SEND_ERROR "${file} is missing")
  endif()
endforeach()

# The package is of the version that all else is of.
file(STRINGS ${INSTALLED}/lib/cmake/kivara/kivaraConfigVersion.cmake version REGEX "^set\\(PACKAGE_VERSION ")
if(NOT version STREQUAL "set(PACKAGE_VERSION \"${VERSION}\")")
  message(SEND_ERROR "the package is not of version ${VERSION}: ${version}")
endif()

# expect_umbrella(HEADER FOLDER [EXCEPT header...]): a header that includes all others of a folder; the names count from
# include/kivara.
function(expect_umbrella header folder)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "EXCEPT")
  file(READ ${INSTALLED}/include/kivara/${header} umbrella)
  file(GLOB headers RELATIVE ${INSTALLED}/include/kivara ${INSTALLED}/include/kivara/${folder}*.hpp)
  list(REMOVE_ITEM headers ${header} ${arg_EXCEPT})
  foreach(other IN LISTS headers)
    if(NOT umbrella MATCHES "#include \"([.][.]/)?${other}\"")
      message(SEND_ERROR "${header} does not include ${other}")
    endif()
  endforeach()
endfunction()

expect_umbrella(kivara.hpp "")
expect_umbrella(sv/sv.hpp sv/)
# The platform's header is for sources that want it; the marks of export, and the end of its macros, come with every other header.
expect_umbrella(tools.hpp tools/ EXCEPT tools/winapi.hpp tools/winnames.hpp tools/export.hpp)

include(${CMAKE_CURRENT_LIST_DIR}/links.cmake)
file(GLOB pages ${INSTALLED}/share/doc/kivara/*.md ${INSTALLED}/share/doc/kivara/docs/*.md)
expect_links(${pages})

# The moment in the header of a binary, by which a crash report names it.
function(time_stamp result binary)
  execute_process(COMMAND ${OBJDUMP} -p ${binary} OUTPUT_VARIABLE header COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH "Time/Date[^\n]*[0-9]" header "${header}")
  set(${result} "${header}" PARENT_SCOPE)
endfunction()

# Every binary has its symbols in a file of its own and knows its name; both are of the moment when it was linked.
file(GLOB binaries ${INSTALLED}/bin/*.dll ${INSTALLED}/bin/*.exe)
foreach(binary IN LISTS binaries)
  cmake_path(GET binary FILENAME name)
  execute_process(COMMAND ${OBJDUMP} -h ${binary} OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
  if(NOT sections MATCHES "\\.gnu_debuglink" OR sections MATCHES "\\.debug_info")
    message(SEND_ERROR "${name} has its debug symbols still, or no link to them")
  endif()
  execute_process(COMMAND ${OBJDUMP} -h ${INSTALLED}/bin/.debug/${name}.debug OUTPUT_VARIABLE sections)
  if(NOT sections MATCHES "\\.debug_info")
    message(SEND_ERROR "${name}.debug holds no debug symbols")
  endif()
  time_stamp(built ${BUILD}/bin/${name})
  time_stamp(stripped ${binary})
  time_stamp(symbols ${INSTALLED}/bin/.debug/${name}.debug)
  if(built STREQUAL "" OR NOT stripped STREQUAL built OR NOT symbols STREQUAL built)
    message(SEND_ERROR "${name} was built: ${built}, installed: ${stripped}, symbols: ${symbols}")
  endif()
endforeach()

# Installed once more, a header that did not change keeps its time, so that products are not built anew.
file(TIMESTAMP ${INSTALLED}/include/kivara/sv/window.hpp before "%s")
execute_process(COMMAND ${CMAKE_COMMAND} -E sleep 1)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${INSTALLED} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(TIMESTAMP ${INSTALLED}/include/kivara/sv/window.hpp after "%s")
if(NOT before STREQUAL after)
  message(SEND_ERROR "an unchanged header is new after a second installation")
endif()
