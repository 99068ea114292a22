# shellcheck shell=bash
# Benchmarks: each operation beside its peer, in one process.

verb_bench() {
  with_bench=yes
  build kivara_bench
  need_packages "${run_packages[@]}" "${screenshot_packages[@]}"
  start_virtual_display
  need_prefix
  keep_wine_alive
  local folder code=0
  folder=$(mktemp -d)
  (cd "$folder" && "$wine_loader" "$(build_dir)/bin/kivara_bench.exe" --json="Z:$(build_dir)/bench.json" "$@" </dev/null) || code=$?
  rm -rf "$folder"
  ((code != 0)) || say "the same table as JSON: $(build_dir)/bench.json"
  return "$code"
}
