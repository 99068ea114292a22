# 64-bit Windows with MinGW-w64 GCC, posix threads, msvcrt.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# For this target GCC 12 takes an inline function's copy in the same file for the one that will be called, and keeps values in
# registers that this copy does not change; the linker may choose the copy of another file, which does (seen in std::shuffle
# between two libraries that use std::mt19937). Libraries need the option as much as our own code.
set(CMAKE_CXX_FLAGS_INIT -fno-ipa-ra)

# Packages are looked for in the prefixes that the caller names, never among the host's.
string(REPLACE ":" ";" kivara_prefixes "$ENV{CMAKE_PREFIX_PATH}")
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${kivara_prefixes})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
