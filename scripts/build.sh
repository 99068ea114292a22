# shellcheck shell=bash
# Configure, build and test.

# Paths below the checkout count as relative for the compiler's cache, so that clones share what they have compiled.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

build_dir() { printf '%s/build/%s' "$root" "$preset"; }

verb_setup() {
  need_packages "${build_packages[@]}" "${run_packages[@]}" "${screenshot_packages[@]}"
  need_library_dependencies
  need_test_dependencies
  has_display || start_virtual_display
  need_prefix
}

configure() {
  need_packages "${build_packages[@]}"
  need_library_dependencies
  need_test_dependencies
  [[ ${with_bench:-} != yes ]] || need_bench_dependencies
  need_space "$root" 700 "the build"
  local prefixes
  prefixes=$(IFS=:; printf '%s' "${dependency_prefixes[*]}")
  local stamp
  stamp=$(build_dir)/.configured
  [[ -e $stamp && $(<"$stamp") == "$prefixes"* && -e $(build_dir)/build.ninja ]] && return
  say "configuring preset $preset"
  local forget
  mapfile -t forget < <(found_dependencies)
  (cd "$root" &&
    CMAKE_PREFIX_PATH=$prefixes cmake --preset "$preset" "${forget[@]}" -DKIVARA_BENCH="${with_bench:-no}" >&2)
  printf '%s' "$prefixes" >"$stamp"
}

# An option for each thing that an earlier configuration found among the dependencies, which may lie elsewhere by now.
found_dependencies() {
  [[ ! -e $(build_dir)/CMakeCache.txt ]] || sed -n "s|^\([^#:]*\):[A-Z]*=$cache/deps/.*|-U\1|p" "$(build_dir)/CMakeCache.txt"
}

# build TARGET...: none means everything.
build() {
  configure
  # The build itself runs a program of ours, for the language packs.
  need_packages "${run_packages[@]}"
  need_prefix
  local targets=()
  (($# == 0)) || targets=(--target "$@")
  say "building ($preset)"
  cmake --build "$(build_dir)" "${targets[@]}" >&2
}

verb_build() { build "$@"; }

# verb_test [--rounds N] [ctest args]: with rounds, all tests N times over, each time in another order.
verb_test() {
  local rounds=0
  if [[ ${1:-} == --rounds ]]; then
    [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || fail "--rounds needs a number: ./dev test --rounds 5"
    rounds=$2
    shift 2
  fi
  build
  need_packages "${run_packages[@]}" "${screenshot_packages[@]}"
  start_virtual_display
  need_prefix
  keep_wine_alive
  if ((rounds == 0)); then
    say "testing ($preset)"
    run_tests "$@"
  else
    test_in_rounds "$rounds" "$@"
  fi
}

run_tests() {
  ctest --test-dir "$(build_dir)" --output-on-failure --no-tests=error --parallel "${KIVARA_JOBS:-$(($(nproc) * 2))}" "$@"
}

# test_in_rounds N ARGS...: goes through all rounds and names at the end what failed in any of them, with the times it did.
test_in_rounds() {
  local round rounds=$1 failures
  failures=$(mktemp)
  shift
  for ((round = 1; round <= rounds; round++)); do
    say "testing ($preset), in random order, round $round of $rounds"
    rm -f "$(build_dir)/Testing/Temporary/LastTestsFailed.log"
    run_tests --schedule-random "$@" || sed 's/^[0-9]*://' "$(build_dir)/Testing/Temporary/LastTestsFailed.log" >>"$failures" ||
      printf 'ctest itself\n' >>"$failures"
  done
  if [[ -s $failures ]]; then
    say "failed in $rounds rounds:"
    sort "$failures" | uniq -c | sort -rn >&2
    rm -f "$failures"
    return 1
  fi
  rm -f "$failures"
  say "$rounds rounds, and no test failed in any"
}
