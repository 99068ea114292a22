# shellcheck shell=bash

# What reads archives, without passwords; zlib itself is in the toolchain's own folders.
build_minizip() {
  local tools=x86_64-w64-mingw32 unit
  debian_source minizip "$1" &&
    cd "$1/source" &&
    for unit in ioapi unzip; do
      "$tools-gcc-posix" -c -O2 -DNOUNCRYPT "$unit.c" -o "$unit.o" || return
    done &&
    mkdir -p "$2/lib" "$2/include/minizip" "$2/share/licenses/minizip" &&
    "$tools-ar" rcs "$2/lib/libminizip.a" ioapi.o unzip.o &&
    cp ioapi.h unzip.h "$2/include/minizip/" &&
    cp MiniZip64_info.txt "$2/share/licenses/minizip/"
}

version_minizip() { source_version minizip minizip; }
