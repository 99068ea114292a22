# shellcheck shell=bash
# Libraries that are cross-built from Debian's sources, each once, into the cache under a key of compiler and recipe. A
# prefix holds one version; when a newer one is known, it takes the place of the old one, for all checkouts and build
# folders.

toolchain=$root/cmake/toolchain-mingw64.cmake
dependency_prefixes=()

# build_key NAME: the folder name of a build; it changes with the compiler, its settings and the recipe.
build_key() {
  local compiler
  compiler=$(x86_64-w64-mingw32-g++-posix -dumpfullversion)
  printf '%s-%s' "$1" "$(cat "$toolchain" <(recipe "$1") <(printf '%s' "$compiler") | sha256sum | cut -c1-12)"
}

# recipe NAME: build_NAME, and the files scripts/deps/NAME_* that it puts into the sources.
recipe() {
  declare -f "build_$1"
  find "$root/scripts/deps" -name "$1_*" | LC_ALL=C sort | xargs -r -d '\n' cat
}

# need_dependency NAME: builds it with build_NAME if the cache lacks it or has another version of it than version_NAME
# tells, and adds its prefix for CMake.
need_dependency() {
  local key prefix version
  key=$(build_key "$1")
  prefix=$cache/deps/$key
  version=$("version_$1")
  if ! is_built "$prefix" "$version"; then
    need_space "$cache" 500 "building $1"
    say "building $1 ${version:+$version }(once; kept in $cache)"
    once "$key" build_into "$1" "$prefix" "$version"
  fi
  dependency_prefixes+=("$prefix")
}

# is_built PREFIX VERSION: any version will do where none is known.
is_built() { [[ -e $1/.complete && (-z $2 || $(<"$1/.complete") == "$2") ]]; }

# Builds beside the prefix and exchanges the two: other checkouts may be reading it.
build_into() {
  local name=$1 prefix=$2 work log
  ! is_built "$prefix" "$3" || return 0
  work=$(mktemp -d "$cache/build-$name.XXXXXX")
  log=$work/build.log
  unfinished "$work"
  unfinished "$prefix.new"
  rm -rf "$prefix.new"
  if ! with_progress "building $name" "$log" "build_$name" "$work" "$prefix.new"; then
    tail -n 20 "$log" >&2
    fail "$name could not be built (log: $log)"
  fi
  cat "$work/version" >"$prefix.new/.complete"
  [[ ! -e $prefix ]] || mv -T "$prefix" "$work/replaced"
  mv -T "$prefix.new" "$prefix"
  say "built $name $(<"$work/version")"
  rm -rf "$work"
}

# cmake_install SOURCE WORK PREFIX OPTIONS...
cmake_install() {
  cmake -G Ninja -S "$1" -B "$2/build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$3" -DBUILD_SHARED_LIBS=OFF "${@:4}" &&
    cmake --build "$2/build" &&
    cmake --install "$2/build"
}

# Recipes. build_NAME WORK PREFIX builds in WORK, installs to PREFIX and leaves the version in WORK/version.

build_googletest() {
  package_version googletest >"$1/version"
  cmake_install /usr/src/googletest "$1" "$2" -DBUILD_GMOCK=OFF
}

# libcrypto alone, static, without what no caller of ours reaches; the low-level AES and DES functions stay.
build_openssl() {
  local off=(shared tests dso engine module pinshared autoload-config async ssl tls dtls comp cms ct ocsp ts srp psk
    legacy aria bf camellia cast chacha gost idea md4 mdc2 poly1305 rc2 rc4 rmd160 scrypt seed siphash sm2 sm3 sm4 whirlpool)
  local tools=x86_64-w64-mingw32
  need_packages make perl
  debian_source openssl "$1" &&
    cd "$1/source" &&
    CC=$tools-gcc-posix AR=$tools-ar RANLIB=$tools-ranlib RC=$tools-windres \
      perl Configure mingw64 "${off[@]/#/no-}" --prefix="$2" --libdir=lib &&
    make -j "$(nproc)" build_generated libcrypto.a &&
    mkdir -p "$2/lib" "$2/include" "$2/share/licenses/openssl" &&
    cp LICENSE.txt "$2/share/licenses/openssl/" &&
    cp -r include/openssl "$2/include/" &&
    cp libcrypto.a "$2/lib/"
}

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

# The engine of regular expressions, for single bytes, without approximate matching. As it stands, it goes over a
# pattern by recursion, has a stack for patterns of some 1,000 characters, and takes memory and time without limit: the
# changes give it a larger stack, a walk without recursion, and limits that end in "out of memory". The others mend
# negated brackets whose items overlap, and repetitions in repetitions, whose copies got the same places. The last ones save
# time: places where no match can begin are passed by, and who asks for no offsets has a search without them.
build_tre() {
  local tools=x86_64-w64-mingw32 walk search source
  local sources=(regcomp regerror regexec tre-ast tre-compile tre-match-backtrack tre-match-parallel tre-mem tre-parse
    tre-stack)
  walk=$(<"$root/scripts/deps/tre_walk.c") && search=$(<"$root/scripts/deps/tre_search.c") &&
    debian_source tre "$1" && cd "$1/source/lib" &&
    printf '#define HAVE_SYS_TYPES_H 1\n' >tre-config.h &&
    replace_in tre-compile.c 'tre_stack_new(512, 10240, 128)' 'tre_stack_new(512, 4000000, 4096)' &&
    replace_in tre-compile.c $'tre_ast_to_tnfa(tre_ast_node_t *node,' 'tre_walk_by_recursion(tre_ast_node_t *node,' &&
    replace_in tre-compile.c '/* Converts the syntax tree' "$walk"$'\n/* Converts the syntax tree' &&
    replace_in tre-compile.c 'tre_ast_to_tnfa(tree, NULL, counts, NULL);' \
      'if ((errcode = tre_ast_to_tnfa(tree, NULL, counts, NULL)) != REG_OK) ERROR_EXIT(errcode);' &&
    replace_in tre-parse.c $'\t      curr_max = MAX(max + 1, curr_max);' \
      $'\t      curr_min = curr_max = MAX(max + 1, curr_max);' &&
    replace_in tre-compile.c $'pos_add = tre_stack_pop_int(stack);\n\t    pos_add_last = pos_add;' \
      'int grown = pos_add;
            pos_add_last = tre_stack_pop_int(stack);
            if (iter->min > 1 || iter->max > 1) pos_add = pos_add_last; else pos_add_last = pos_add;' &&
    replace_in tre-compile.c 'pos_add = pos_add_save;' 'pos_add = pos_add_save + grown;' &&
    replace_in tre-compile.c 'pos_add_total += pos_add - pos_add_last;' \
      'if (iter_depth == 0) pos_add_total = pos_add;' &&
    replace_in tre-compile.c 'int num_copied = 0;' 'int num_copied = 0, first = INT_MAX, last = -1;' &&
    replace_in tre-compile.c 'num_copied++;' \
      'num_copied++; first = MIN(first, (int)lit->position); last = MAX(last, (int)lit->position);' &&
    replace_in tre-compile.c '*pos_add += num_copied;' '*pos_add += MAX(num_copied, last - first + 1);' &&
    replace_in tre-compile.c 'if (max_pos > *position)' 'if (max_pos >= *position)' &&
    replace_in tre-compile.c '*position = max_pos;' '*position = max_pos + 1;' &&
    replace_in tre-compile.c '#include <assert.h>' $'#include <assert.h>\n#include <limits.h>' &&
    replace_in tre-mem.h 'int failed;' 'int failed; size_t total;' &&
    replace_in tre-mem.c $'\t  int block_size;' 'int block_size;
          if (size > (size_t)1 << 25 || mem->total > (size_t)1 << 28) { mem->failed = 1; return NULL; }' &&
    replace_in tre-mem.c $'\t  mem->n = block_size;\n' \
      $'\t  mem->n = block_size;\n\t  mem->total += block_size;\n' &&
    replace_in tre-match-parallel.c $'reg_errcode_t\ntre_tnfa_run_parallel(' \
      "$search"$'\n\nreg_errcode_t\ntre_tnfa_run_parallel(' &&
    replace_in tre-match-parallel.c $'  if (!match_tags)\n    num_tags = 0;' 'if (!match_tags) num_tags = 0;
  if (!match_tags && type == STR_BYTE && len < 0) {
    reg_errcode_t result = tre_search(tnfa, string, eflags, match_end_ofs);
    if (result != REG_BADPAT) return result;
  }' &&
    replace_in tre-match-parallel.c 'DPRINT((" init >"));' \
      'if (reach_next_i == reach_next && type == STR_BYTE && len < 0)
            tre_pass_by(tnfa, &str_byte, &prev_c, &next_c, &pos);' || return
  for source in "${sources[@]}"; do
    "$tools-gcc-posix" -O2 -g -DNDEBUG -fno-ipa-ra -Wno-unused-function -DHAVE_ISBLANK -DTRE_REGEX_T_FIELD=value \
      -DTRE_VERSION='"0.8.0"' -c "$source.c" || return
  done
  mkdir -p "$2/lib" "$2/include/tre" "$2/share/licenses/tre" "$2/share/tre" &&
    "$tools-ar" rcs "$2/lib/libtre.a" "${sources[@]/%/.o}" &&
    cp tre.h tre-config.h "$2/include/tre/" &&
    cp ../LICENSE "$2/share/licenses/tre/" &&
    cp ../tests/retest.c "$2/share/tre/"
}

# replace_in FILE OLD NEW: the first place; fails where there is none.
replace_in() {
  local LC_ALL=C content
  content=$(<"$1")
  [[ $content == *"$2"* ]] || { printf '%s has no %s\n' "$1" "$2" && return 1; }
  printf '%s\n' "${content/"$2"/"$3"}" >"$1"
}

build_benchmark() {
  debian_source benchmark "$1" &&
    cmake_install "$1/source" "$1" "$2" -DGIT_VERSION="$(sed "s/-.*//" "$1/version")" \
      -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_WERROR=OFF
}

# Headers alone, linked into a prefix of their own: the host's include folder must never be on the cross-compiler's
# path.
build_peers() {
  need_packages libboost-dev libspdlog-dev libfmt-dev
  mkdir -p "$2/include" &&
    ln -s /usr/include/boost /usr/include/spdlog /usr/include/fmt "$2/include/" &&
    package_version libboost-dev >"$1/version"
}

# Versions. version_NAME tells which version a build of today would have; nothing where that is not known. It takes no
# time but for the first call after the machine's package lists have changed.

version_googletest() { package_version googletest; }
version_openssl() { source_version openssl openssl; }
version_minizip() { source_version minizip minizip; }
version_tre() { source_version tre libtre-dev; }
version_benchmark() { source_version benchmark libbenchmark-dev; }
version_peers() { :; } # links, which follow what is installed

package_version() { dpkg-query -W -f='${Version}' "$1" | tr -c 'A-Za-z0-9.\n' '_'; }

need_library_dependencies() {
  need_dependency openssl
  need_dependency minizip
  need_dependency tre
}

need_test_dependencies() { need_dependency googletest; }

need_bench_dependencies() {
  need_dependency benchmark
  need_dependency peers
}
