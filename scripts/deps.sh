# shellcheck shell=bash
# Libraries that are cross-built from Debian's sources, each once, into the cache under a key of version and flags.

toolchain=$root/cmake/toolchain-mingw64.cmake
dependency_prefixes=()

# build_key NAME VERSION: the folder name of a build; it changes with the compiler and with the recipe's flags.
build_key() {
  local compiler
  compiler=$(x86_64-w64-mingw32-g++-posix -dumpfullversion)
  printf '%s-%s-%s' "$1" "$2" "$(cat "$toolchain" <(declare -f "build_$1") <(printf '%s' "$compiler") | sha256sum | cut -c1-12)"
}

# need_dependency NAME VERSION: builds it if the cache lacks it, and adds its prefix for CMake.
need_dependency() {
  local key prefix
  key=$(build_key "$1" "$2")
  prefix=$cache/deps/$key
  if [[ ! -e $prefix/.complete ]]; then
    need_space "$cache" 500 "building $1"
    say "building $1 $2 (once; kept in $cache)"
    once "$key" build_into "$1" "$prefix"
  fi
  dependency_prefixes+=("$prefix")
}

build_into() {
  local name=$1 prefix=$2 work log
  [[ ! -e $prefix/.complete ]] || return 0
  work=$(mktemp -d "$cache/build-$name.XXXXXX")
  log=$work/build.log
  if ! "build_$name" "$work" "$prefix" >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    fail "$name could not be built (log: $log)"
  fi
  touch "$prefix/.complete"
  rm -rf "$work"
}

build_googletest() {
  rm -rf "$2" &&
    cmake -G Ninja -S /usr/src/googletest -B "$1/build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
      -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$2" -DBUILD_SHARED_LIBS=OFF -DBUILD_GMOCK=OFF &&
    cmake --build "$1/build" &&
    cmake --install "$1/build"
}

package_version() { dpkg-query -W -f='${Version}' "$1" | tr -c 'A-Za-z0-9.\n' '_'; }

need_test_dependencies() {
  need_dependency googletest "$(package_version googletest)"
}
