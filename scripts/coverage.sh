# shellcheck shell=bash
# Line coverage of the library, the toolkit, tools and programs, from one run of all tests.

coverage_packages=(gcovr)

verb_coverage() {
  preset=coverage
  need_packages "${build_packages[@]}" "${coverage_packages[@]}"
  find "$(build_dir)" -name '*.gcda' -delete 2>/dev/null || true
  local code=0
  verb_test "$@" || code=$?
  say "reading the counts"
  (cd "$root" && gcovr --gcov-executable x86_64-w64-mingw32-gcov-posix --root . --object-directory "$(build_dir)" \
    --filter 'kivara/' --filter 'toolkit/' --filter 'tools/' --filter 'apps/' --exclude-throw-branches --csv "$(build_dir)/coverage.csv" \
    --html-details "$(build_dir)/coverage.html" "$(build_dir)")
  lines_per_folder "$(build_dir)/coverage.csv"
  say "line by line: $(build_dir)/coverage.html"
  return "$code"
}

# lines_per_folder CSV: a line for each folder, and the files below 90 %.
lines_per_folder() {
  awk -F, '
    NR > 1 {
      folder = $1
      sub(/\/[^\/]*$/, "", folder)
      lines[folder] += $2; run[folder] += $3; all += $2; allrun += $3
      if ($2 > 0 && $3 / $2 < 0.9) low[$1] = sprintf("%6.1f %%  %s", 100 * $3 / $2, $1)
    }
    END {
      for (folder in lines) printf "%6.1f %%  %6d lines  %s\n", 100 * run[folder] / lines[folder], lines[folder], folder | "sort -k4"
      close("sort -k4")
      printf "%6.1f %%  %6d lines  in all\n", 100 * allrun / all, all
      for (file in low) { if (!said++) print "below 90 %:"; print low[file] | "sort" }
    }' "$1"
}
