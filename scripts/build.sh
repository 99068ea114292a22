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
  local targets=()
  (($# == 0)) || targets=(--target "$@")
  say "building ($preset)"
  cmake --build "$(build_dir)" "${targets[@]}" >&2
}

verb_build() { build "$@"; }

verb_test() {
  build
  need_packages "${run_packages[@]}" "${screenshot_packages[@]}"
  start_virtual_display
  need_prefix
  keep_wine_alive
  say "testing ($preset)"
  ctest --test-dir "$(build_dir)" --output-on-failure --no-tests=error --parallel "${KIVARA_JOBS:-$(($(nproc) * 2))}" "$@"
}
