#!/usr/bin/env bash
# Builds, tests and reports on Windows, in the MINGW64 shell of MSYS2. See docs/windows.md.
# shellcheck disable=SC2317 # steps are called by their names
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
for part in common deps; do
  # shellcheck source=/dev/null
  source "$root/scripts/$part.sh"
done

folder=${KIVARA_WINDOWS_BUILD:-$root/build/windows}
report=$folder/report.txt
packages=(clang cmake gcc gtest librsvg minizip ninja openssl python zlib)
system_packages=(curl patch tar xz)
steps=()

usage() {
  cat <<'TEXT'
usage: scripts/windows.sh [--no-install] [ctest args]

For the MINGW64 shell of MSYS2: installs what is missing by pacman, builds the libraries that MSYS2 lacks, configures, builds and tests, and
writes what came of it to build/windows/report.txt, also where a step fails. It ends with 0 when every test has passed.
  --no-install   leaves pacman alone
  ctest args     -R '^Dispatcher' for some of the tests, for example
TEXT
}

# The compiler by the names that the recipes know it by.
x86_64-w64-mingw32-gcc-posix() { gcc "$@"; }
x86_64-w64-mingw32-ar() { ar "$@"; }

# The sources that the recipes were written for, which apt finds elsewhere.
declare -A source_versions=([tre]=0.8.0-7 [dwarfutils]=20210528-1)
declare -A checksums=(
  [tre_0.8.0.orig.tar.gz]=be8670a55198bc57485a6a8ae4b497d7db98ea25f90968585b7eb07d94c6a7dd
  [tre_0.8.0-7.debian.tar.xz]=3c6cc5fb955722a82b7ac25d8f707b47de1a639f046bc36191620d4aaeb9b998
  [dwarfutils_20210528.orig.tar.gz]=b8ba0ee9b70d2052d45272489d79bf456c4d342fc8c3bba45038afc50ec6e28b
  [dwarfutils_20210528-1.debian.tar.xz]=bedc1643e623e6f5e851144b26dc4f94e89daa0ef5e6a1d66d208c89ae8d0e0d)

# debian_source NAME FOLDER: as in sources.sh, without apt.
debian_source() {
  local version=${source_versions[$1]} file
  local files=("${1}_${version%-*}.orig.tar.gz" "${1}_$version.debian.tar.xz")
  mkdir -p "$2/source"
  for file in "${files[@]}"; do
    curl -fsSL --retry 2 --max-time 300 -o "$2/$file" "https://deb.debian.org/debian/pool/main/${1:0:1}/$1/$file" || return
    printf '%s  %s\n' "${checksums[$file]}" "$2/$file" | sha256sum --check --quiet || return
  done
  tar -xf "$2/${files[0]}" -C "$2/source" --strip-components=1 && tar -xf "$2/${files[1]}" -C "$2/source" || return
  debian_changes "$2/source" || return
  printf '%s\n' "$version" >"$2/version"
}

# Those of the distribution, in its order.
debian_changes() {
  local change
  [[ -e $1/debian/patches/series ]] || return 0
  while read -r change _; do
    [[ -z $change || $change == '#'* ]] || patch -d "$1" -p1 --quiet <"$1/debian/patches/$change" || return
  done <"$1/debian/patches/series"
}

# A path as native programs read it.
native() { if command -v cygpath >/dev/null; then cygpath -m "$1"; else printf '%s' "$1"; fi; }

check_shell() {
  [[ ${MSYSTEM:-} == MINGW64 ]] || fail "this is for the MINGW64 shell of MSYS2, whose runtime is msvcrt; this shell is '${MSYSTEM:-none of MSYS2}'"
}

install_packages() { pacman -S --needed --noconfirm "${packages[@]/#/mingw-w64-x86_64-}" "${system_packages[@]}"; }

# library NAME: builds it once, into a folder that is a prefix for CMake.
library() {
  local prefix=$folder/deps/$1 work
  [[ ! -e $prefix/.complete ]] || return 0
  rm -rf "$prefix"
  work=$(mktemp -d "$folder/deps.XXXXXX")
  (set -e; "build_$1" "$work" "$prefix") || return
  mv "$work/version" "$prefix/.complete"
  rm -rf "$work"
}

configure_build() {
  cmake -S "$(native "$root")" -B "$(native "$folder")" -G Ninja "-DCMAKE_PREFIX_PATH=$(native "$folder/deps/tre");$(native "$folder/deps/libdwarf")" \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS=-fno-ipa-ra
}

run_tests() { ctest --test-dir "$(native "$folder")" --output-on-failure --no-tests=error --parallel "$(nproc)" -LE '^long$' "$@"; }

# step NAME COMMAND...: its output goes to NAME.log. A failure ends the script, with a report, unless the step is that of the tests.
step() {
  local begun=$SECONDS result='done'
  say "$1"
  with_progress "$1" "$folder/$1.log" "${@:2}" || result=FAILED
  steps+=("$(printf '%-12s %-7s %6d seconds' "$1" "$result" "$((SECONDS - begun))")")
  [[ $result == FAILED && $1 != tests ]] || return 0
  write_report
  fail "$1 failed; the last lines of its output stand in $report"
}

# The lines that follow a heading of ctest, up to the next empty one.
listed_after() { tr -d '\r' <"$folder/tests.log" | sed -n "/^$1/,/^\$/s/^\t *//p"; }

library_version() {
  sed -n 's/^#define KIVARA_VERSION_[A-Z_]* \([0-9]*\)\r\{0,1\}$/\1/p' "$root/kivara/include/kivara_version.hpp" | head -n 4 | paste -sd. -
}

facts() {
  printf 'kivara %s, %s\n' "$(library_version)" "$(git -C "$root" rev-parse --short HEAD 2>/dev/null || printf 'no commit')"
  printf 'system:   %s\n' "$(cmd.exe //c ver 2>/dev/null | tr -d '\r\n' || uname -a)"
  printf 'compiler: %s\n' "$(gcc --version 2>/dev/null | head -n 1)"
  printf 'cmake:    %s\n\n' "$(cmake --version 2>/dev/null | head -n 1)"
  printf '%s\n' "${steps[@]}"
}

write_report() {
  local failed skipped last
  failed=$(listed_after 'The following tests FAILED')
  skipped=$(listed_after 'The following tests did not run')
  last=${steps[-1]%% *}
  {
    facts
    printf '\n%s\n' "$(tr -d '\r' <"$folder/tests.log" | grep '% tests passed' || printf 'no tests ran')"
    printf '\nfailed:\n%s\n' "${failed:-none}"
    printf '\nskipped:\n%s\n' "${skipped:-none}"
    if [[ ${steps[-1]} == *FAILED* && $last != tests ]]; then
      printf '\nthe last lines of %s:\n' "$last.log"
      tail -n 40 "$folder/$last.log"
    fi
  } >"$report"
  say "written: $report"
}

main() {
  local install=yes
  if [[ ${1:-} =~ ^(-h|--help)$ ]]; then
    usage
    return
  fi
  [[ ${1:-} != --no-install ]] || { install=no && shift; }
  check_shell
  mkdir -p "$folder/deps"
  : >"$folder/tests.log"
  [[ $install == no ]] || step packages install_packages
  step tre library tre
  step libdwarf library libdwarf
  step configure configure_build
  step build cmake --build "$(native "$folder")"
  step tests run_tests "$@"
  write_report
  [[ ${steps[-1]} != *FAILED* ]] || fail "tests failed; $report lists them"
}

main "$@"
exit
