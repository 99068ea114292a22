# shellcheck shell=bash

# What reads debug symbols, as a DLL, since its licence asks for one that can be exchanged. Readers alone, for what the tool hands over in
# memory: neither libelf nor zlib. The change keeps a faulty table of ranges from being read on after it was freed.
build_libdwarf() {
  local tools=x86_64-w64-mingw32 unit
  local units=(abbrev alloc arange crc32 debug_names debug_sup debuglink die_deliv dsc elf_access elf_load_headers elf_rel_detector
    elfread error find_sigref fission_to_cu form form_class_names frame frame2 funcs gdbindex generic_init global gnu_index groups
    harmless init_finish leb line loc locationop_read loclists machoread macro macro5 names object_detector object_read_common peread
    print_lines pubtypes query ranges rnglists str_offsets stringsection tied tsearchhash types util vars weaks xu_index)
  debian_source dwarfutils "$1" &&
    cd "$1/source/libdwarf" &&
    replace_in dwarf_rnglists.c $'            free_rnglists_chain(dbg,head_chain);\n        }\n' \
      $'            free_rnglists_chain(dbg,head_chain);\n            return res;\n        }\n' &&
    printf '#define HAVE_%s 1\n' INTTYPES_H MALLOC_H STDDEF_H STDINT_H STDLIB_H STRING_H SYS_STAT_H SYS_TYPES_H UNISTD_H \
      UNUSED_ATTRIBUTE WINDOWS_PATH >config.h &&
    printf '#define PACKAGE_VERSION "20210528"\n' >>config.h || return
  units=("${units[@]/#/dwarf_}" dwarfstring crc32 pro_encode_nm)
  for unit in "${units[@]}"; do
    "$tools-gcc-posix" -O2 -g -fno-ipa-ra -I. -c "$unit.c" || return
  done
  mkdir -p "$2/bin" "$2/lib" "$2/include/libdwarf" "$2/share/licenses/libdwarf" &&
    "$tools-gcc-posix" -shared -static-libgcc "${units[@]/%/.o}" -Wl,--file-alignment=0x1000 -o "$2/bin/libdwarf.dll" \
      -Wl,--out-implib,"$2/lib/libdwarf.dll.a" &&
    cp dwarf.h libdwarf.h "$2/include/libdwarf/" &&
    cat LIBDWARFCOPYRIGHT LGPL.txt >"$2/share/licenses/libdwarf/COPYING"
}

version_libdwarf() { source_version dwarfutils libdwarf-dev; }
