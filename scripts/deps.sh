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

# want_dependency NAME: the same, but what needs it is left out where it cannot be fetched.
want_dependency() {
  (need_dependency "$1") || :
  # Asked of the cache: within a condition a failed step above does not end what follows it.
  if is_built "$cache/deps/$(build_key "$1")" "$("version_$1")"; then
    need_dependency "$1"
  else
    say "going on without $1"
  fi
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

# What recipes are written with. scripts/deps/NAME.sh is the recipe of NAME: build_NAME WORK PREFIX builds in WORK, installs to PREFIX and
# leaves the version in WORK/version; version_NAME says which version a build of today would have, nothing where that is not known.
# It takes no time but for the first call after the machine's package lists have changed.

# replace_in FILE OLD NEW: the first place; fails where there is none.
replace_in() {
  local LC_ALL=C content
  content=$(<"$1")
  [[ $content == *"$2"* ]] || { printf '%s has no %s\n' "$1" "$2" && return 1; }
  printf '%s\n' "${content/"$2"/"$3"}" >"$1"
}

package_version() { dpkg-query -W -f='${Version}' "$1" | tr -c 'A-Za-z0-9.\n' '_'; }

for file in "$root"/scripts/deps/*.sh; do
  # shellcheck source=/dev/null
  source "$file"
done

need_library_dependencies() {
  need_dependency openssl
  need_dependency minizip
  need_dependency tre
  need_dependency libdwarf
}

need_test_dependencies() {
  need_dependency googletest
  want_dependency archiver
}

need_bench_dependencies() {
  need_dependency benchmark
  need_dependency peers
}
