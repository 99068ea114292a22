# shellcheck shell=bash
# Configure, build and test.

# Paths below the checkout count as relative for the compiler's cache, so that clones share what they have compiled.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

build_dir() { printf '%s/build/%s' "$root" "$preset"; }

help_setup() {
  cat <<'TEXT'
usage: ./dev setup

Installs the packages, builds the libraries and makes the Wine prefix that the other verbs need, and stops. They do it themselves.
TEXT
}

check_setup() { check_no_arguments "$@"; }

verb_setup() {
  need_packages "${build_packages[@]}" "${run_packages[@]}" "${screenshot_packages[@]}" "${test_packages[@]}" "${print_packages[@]}"
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

help_build() {
  cat <<'TEXT'
usage: ./dev build [targets]

Builds everything, or only the named targets: kivara, modeler, service, kivml, a test program such as ui_test. The programs are in
build/release/bin. --preset debug before the verb: with the library's assertions, in build/debug.
TEXT
}

# is_target NAME: one that was written since the last build counts too.
is_target() {
  ninja -C "$(build_dir)" -t query "$1" >/dev/null 2>&1 ||
    { ninja -C "$(build_dir)" build.ninja >/dev/null 2>&1 && ninja -C "$(build_dir)" -t query "$1" >/dev/null 2>&1; }
}

# Which targets there are is known where the build has been configured.
check_build() {
  local word
  for word in "$@"; do
    [[ $word != -* ]] || fail "unknown option '$word'; usage: ./dev build [targets]"
    if [[ -e $(build_dir)/build.ninja ]] && command -v ninja >/dev/null; then
      is_target "$word" || fail "there is no target '$word'; cmake --build $(build_dir) --target help lists them"
    fi
  done
}

verb_build() { build "$@"; }

help_test() {
  cat <<'TEXT'
usage: ./dev test [--rounds N] [--windows 7|8.1|10|11] [ctest args]

Builds everything and runs every test but the long ones, side by side, with a display and a Wine prefix of their own.
  -R REGEX      only the tests of such names: -R '^Dispatcher'
  -E REGEX      without those
  -LE huge      without those that need gigabytes
  -V            with all that they print
  --rerun-failed, --stop-on-failure and the other options of ctest
  --rounds N    N times over, in random order; at the end what failed in any round
  --windows V   under Windows 7, 8.1, 10 or 11, as far as Wine can be any of them; each has a Wine prefix of its own (10)
KIVARA_JOBS sets how many run at a time (twice the number of cores). Up to five tests that fail are tried once more, alone, and named at
the end when they pass then; --rounds does not forgive. See docs/testing.md.
TEXT
}

check_test() {
  while [[ ${1:-} =~ ^--(rounds|windows)$ ]]; do
    if [[ $1 == --rounds ]]; then
      [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || fail "--rounds needs a number: ./dev test --rounds 5"
    else
      [[ ${2:-} =~ ^(7|8\.1|10|11)$ ]] || fail "--windows needs a version, 7, 8.1, 10 or 11: ./dev test --windows 7"
    fi
    shift 2
  done
  check_ctest_arguments "$@"
}

# verb_test [--rounds N] [--windows V] [ctest args]: with rounds, all tests N times over, each time in another order.
verb_test() {
  local rounds=0
  while [[ ${1:-} =~ ^--(rounds|windows)$ ]]; do
    [[ $1 == --windows ]] || rounds=$2
    [[ $1 == --rounds ]] || windows=$2
    shift 2
  done
  ready_for_tests
  without_long_tests "$@"
  if ((rounds == 0)); then
    say "testing ($(what_is_tested))"
    rm -f "$(last_failures)"
    run_tests "${test_arguments[@]}" || test_alone
  else
    test_in_rounds "$rounds" "${test_arguments[@]}"
  fi
}

what_is_tested() { if [[ $windows == "$usual_windows" ]]; then printf '%s' "$preset"; else printf '%s, Windows %s' "$preset" "$windows"; fi; }

help_long() {
  cat <<'TEXT'
usage: ./dev long [ctest args]

Builds everything and runs the tests that ./dev test leaves out because they take long: the random tests with a hundred times their inputs
(KIVARA_TEST_TIMES), from a seed that differs from run to run and is printed. ./dev long -R parser: only some.
TEXT
}

check_long() {
  check_ctest_arguments "$@"
  [[ ${KIVARA_TEST_SEED:-0} =~ ^[0-9]+$ ]] || fail "KIVARA_TEST_SEED is a number, not '$KIVARA_TEST_SEED'"
  [[ ${KIVARA_TEST_TIMES:-1} =~ ^[1-9][0-9]*$ ]] || fail "KIVARA_TEST_TIMES is a number, not '$KIVARA_TEST_TIMES'"
}

verb_long() {
  ready_for_tests
  export KIVARA_TEST_SEED=${KIVARA_TEST_SEED:-$((RANDOM * 32768 + RANDOM))} KIVARA_TEST_TIMES=${KIVARA_TEST_TIMES:-100}
  say "testing ($preset) what takes long, $KIVARA_TEST_TIMES times over; the same again: KIVARA_TEST_SEED=$KIVARA_TEST_SEED ./dev long"
  run_tests -L '^long$' "$@"
}

ready_for_tests() {
  build
  need_packages "${run_packages[@]}" "${screenshot_packages[@]}" "${test_packages[@]}" "${print_packages[@]}"
  start_virtual_display
  start_print_server
  need_prefix
  keep_wine_alive
}

# ctest itself takes words that it does not know for nothing, and would run all tests.
check_ctest_arguments() {
  local regexes=' -R -E -L -LE -FA -FS -FC --tests-regex --exclude-regex --label-regex --label-exclude '
  local values=' -I --tests-information -C -O --output-log --output-junit --repeat --timeout --stop-time --test-load --max-width -j --parallel
    --test-output-size-passed --test-output-size-failed --test-output-truncation '
  local plain=' -V -VV --verbose --extra-verbose --debug --progress -Q --quiet --output-on-failure --stop-on-failure -N --show-only
    --rerun-failed -U --union --schedule-random --no-label-summary --print-labels -F '
  while (($# > 0)); do
    if [[ $regexes$values == *[[:space:]]"$1"[[:space:]]* && $1 == -* ]]; then
      (($# > 1)) || fail "$1 needs a value"
      [[ $regexes != *" $1 "* ]] || is_regex "$2" || fail "'$2' is no regular expression"
      shift 2
    elif [[ $plain == *[[:space:]]"$1"[[:space:]]* || $1 =~ ^(-j[0-9]+|--(show-only|no-tests)=.+)$ ]]; then
      shift
    else
      fail "ctest has no option '$1'; tests are named by -R: ./dev test -R '$1'"
    fi
  done
}

is_regex() {
  local code=0
  grep -qE -- "$1" <<<x 2>/dev/null || code=$?
  ((code != 2))
}

# without_long_tests ARGS...: the arguments with the label `long` left out, in test_arguments. Of several -LE, ctest leaves out only
# what all of them name.
without_long_tests() {
  local left_out='^long$'
  test_arguments=()
  while (($# > 0)); do
    if [[ $1 == -LE || $1 == --label-exclude ]]; then
      left_out+="|$2"
      shift
    else
      test_arguments+=("$1")
    fi
    shift
  done
  test_arguments+=(-LE "$left_out")
}

# How many tests run at a time.
test_jobs() { printf '%s' "${KIVARA_JOBS:-$(($(nproc) * 2))}"; }

run_tests() {
  ctest --test-dir "$(build_dir)" --output-on-failure --no-tests=error --parallel "$(test_jobs)" "$@"
}

last_failures() { printf '%s' "$(build_dir)/Testing/Temporary/LastTestsFailed.log"; }

# test_alone: what has failed side by side with others runs once more, one test at a time. A test that passes then is named: the fault may be the
# machine's, which starts hundreds of processes a minute, or the test's, which does not bear its neighbours. Many failures are none of both.
test_alone() {
  local failed
  [[ -s $(last_failures) ]] || return 1
  mapfile -t failed < <(sed 's/^[0-9]*://' "$(last_failures)")
  ((${#failed[@]} <= 5)) || return 1
  say "failed side by side with others, and tried alone now: ${failed[*]}"
  KIVARA_JOBS=1 run_tests --rerun-failed || return 1
  say "PASSED ONLY ALONE: ${failed[*]}"
}

# run_tests_in_random_order ARGS...: ctest gets the order by random numbers in place of the time that each test takes, and writes those to the
# file of times, from which the next run takes its order and ./dev mutants what a test may take. So the file stays as it was.
run_tests_in_random_order() {
  local times code=0
  times=$(build_dir)/Testing/Temporary/CTestCostData.txt
  [[ ! -f $times ]] || cp "$times" "$times.kept"
  run_tests --schedule-random "$@" || code=$?
  rm -f "$times"
  [[ ! -f $times.kept ]] || mv "$times.kept" "$times"
  return "$code"
}

# test_in_rounds N ARGS...: goes through all rounds and names at the end what failed in any of them, with the times it did.
test_in_rounds() {
  local round rounds=$1 failures
  failures=$(mktemp -p "$scratch")
  shift
  for ((round = 1; round <= rounds; round++)); do
    say "testing ($(what_is_tested)), in random order, round $round of $rounds"
    rm -f "$(last_failures)"
    run_tests_in_random_order "$@" || sed 's/^[0-9]*://' "$(last_failures)" >>"$failures" ||
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
