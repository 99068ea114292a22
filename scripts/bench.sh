# shellcheck shell=bash
# Benchmarks: each operation beside its peer, in one process.

bench_table=docs/benchmarks.md

help_bench() {
  cat <<'TEXT'
usage: ./dev bench [options]
       ./dev bench --table

Builds and runs the benchmarks and prints each operation's time as a ratio to its peer's; the rows are also in build/release/bench.json.
  --benchmark_filter=REGEX   only those; all other options of Google Benchmark do too
  --table                    runs nothing: writes the rows of the last run into docs/benchmarks.md
TEXT
}

check_bench() {
  local word
  for word in "$@"; do
    [[ $word == --benchmark_*=* || $word == --table && $# == 1 ]] || fail "unknown option '$word'; ./dev bench --help lists them"
  done
  [[ ${1:-} != --table || -e $(build_dir)/bench.json ]] || fail "there is no $(build_dir)/bench.json; run ./dev bench first"
}

verb_bench() {
  local json
  json=$(build_dir)/bench.json
  if [[ ${1:-} == --table ]]; then
    write_bench_table "$json"
    return
  fi
  with_bench=yes
  build kivara_bench
  need_packages "${run_packages[@]}" "${screenshot_packages[@]}"
  start_virtual_display
  need_prefix
  keep_wine_alive
  local folder code=0
  folder=$(mktemp -d -p "$scratch")
  (cd "$folder" && "$wine_loader" "$(build_dir)/bin/kivara_bench.exe" --json="Z:$json" "$@" </dev/null) || code=$?
  rm -rf "$folder"
  ((code != 0)) || say "the same table as JSON: $json (./dev bench --table writes it into $bench_table)"
  return "$code"
}

# write_bench_table JSON: replaces what stands between the two marks of the page.
write_bench_table() {
  local page=$root/$bench_table table
  table=$(mktemp -p "$scratch")
  bench_rows "$1" >"$table"
  awk -v table="$table" '
    /^<!-- end of the table -->$/ { inside = 0 }
    !inside { print }
    /^<!-- table/ { inside = 1; while ((getline line < table) > 0) print line }' "$page" >"$page.new"
  mv "$page.new" "$page"
  rm -f "$table"
  say "written: $page"
}

# bench_rows JSON: the benchmark program writes one row a line, its texts without quotes.
bench_rows() {
  printf '\n| operation | peer | ratio | goal |\n|---|---|---|---|\n'
  awk -F'"' '/"operation"/ {
    ratio = $15; goal = $17
    gsub(/[^0-9.e+-]/, "", ratio)
    gsub(/[^0-9.a-z]/, "", goal)
    told = goal == "null" ? "" : sprintf("at most %.2f%s", goal, ratio + 0 <= goal + 0 ? "" : ", **missed**")
    printf "| %s | %s | %.*f | %s |\n", $4, $8, ratio < 0.1 ? 3 : 2, ratio, told
  }' "$1"
  printf '\n'
}
