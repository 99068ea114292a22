# shellcheck shell=bash
# Line coverage of the library, the toolkit, tools and programs, from one run of all tests.

coverage_packages=(gcovr)

help_coverage() {
  cat <<'TEXT'
usage: ./dev coverage [ctest args]

Builds everything with counters, runs the tests as ./dev test does, and prints the lines that ran, per folder. Line by line they are in
build/coverage/coverage.html. With arguments, such as -R '^Dispatcher', what those tests alone run. See docs/coverage.md.
TEXT
}

check_coverage() { check_test "$@"; }

# Each process adds its counts when it ends, to files that it locks one by one: tests that end side by side lose nothing. What another
# process ends, or a crash, counts nothing.
verb_coverage() {
  preset=coverage
  need_packages "${build_packages[@]}" "${coverage_packages[@]}"
  build
  find "$(build_dir)" -name '*.gcda' -delete
  local code=0
  verb_test "$@" || code=$?
  say "reading the counts"
  (cd "$root" && gcovr -j "$(nproc)" --gcov-executable x86_64-w64-mingw32-gcov-posix --root . --object-directory "$(build_dir)" \
    --filter 'kivara/' --filter 'toolkit/' --filter 'tools/' --filter 'apps/' --exclude-throw-branches --csv "$(build_dir)/coverage.csv" \
    --html-details "$(build_dir)/coverage.html" "$(build_dir)") || fail "gcovr could not read the counts"
  lines_per_folder "$(build_dir)/coverage.csv"
  say "line by line: $(build_dir)/coverage.html"
  ((code == 0)) || say "not all tests passed, see above; the table counts what ran of those that failed too"
  return "$code"
}

# lines_per_folder CSV: a line for each folder, then one for each of the topmost and one for all, and the files below 90 %.
lines_per_folder() {
  awk -F, '
    function row(run, lines, name) { return sprintf("%6.1f %%  %6d lines  %s", lines > 0 ? 100 * run / lines : 100, lines, name) }
    NR > 1 {
      folder = top = $1
      sub(/\/[^\/]*$/, "", folder)
      sub(/\/.*/, "", top)
      lines[folder] += $2; run[folder] += $3; toplines[top] += $2; toprun[top] += $3; all += $2; allrun += $3
      if (10 * $3 < 9 * $2) { low[$1] = row($3, $2, $1); anylow = 1 }
    }
    END {
      for (folder in lines) print row(run[folder], lines[folder], folder) | "sort -k5"
      close("sort -k5")
      for (top in toplines) print row(toprun[top], toplines[top], "all of " top "/") | "sort -k5"
      close("sort -k5")
      print row(allrun, all, "in all")
      print "files below 90 %:" (anylow ? "" : " none")
      fflush() # before what sort writes
      for (file in low) print low[file] | "sort -k5"
    }' "$1"
}
