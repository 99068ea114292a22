# What others wrote, as far as it is shipped. What is linked into a DLL of ours, or put beside it, gets an entry here; nothing can be
# installed while a notice is missing.

kivara_notice(gcc-runtime
  WHAT "libstdc++-6.dll and libgcc_s_seh-1.dll, the runtime of the compiler"
  FILES share/doc/gcc-mingw-w64-base/copyright share/licenses/gcc-libs/COPYING.RUNTIME)
kivara_notice(winpthreads
  WHAT "libwinpthread-1.dll, threads of the runtime, and start-up code in each binary"
  FILES share/doc/mingw-w64-common/copyright share/licenses/libwinpthread/COPYING share/licenses/winpthreads/COPYING)
kivara_notice(openssl
  WHAT "OpenSSL, AES and Base64 in kivara.dll"
  FILES share/licenses/openssl/LICENSE.txt share/licenses/openssl/LICENSE)
kivara_notice(minizip
  WHAT "minizip, reading the archive of pictures in SV0105.dll, and those of crashes in kivcrash.exe"
  FILES share/licenses/minizip/MiniZip64_info.txt share/licenses/minizip/LICENSE)
kivara_notice(zlib
  WHAT "zlib, unpacking the archive of pictures in SV0105.dll, and those of crashes in kivcrash.exe"
  FILES share/doc/libz-mingw-w64/copyright share/doc/libz-mingw-w64-dev/copyright share/licenses/zlib/LICENSE)
kivara_notice(tre
  WHAT "TRE, regular expressions in re00005.dll"
  FILES share/licenses/tre/LICENSE share/licenses/libtre/LICENSE)
kivara_notice(libdwarf
  WHAT "libdwarf.dll, debug symbols in kivcrash.exe, under the LGPL 2.1: another build of it may take its place"
  FILES share/licenses/libdwarf/COPYING share/licenses/libdwarf/LGPL.txt)
