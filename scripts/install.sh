# shellcheck shell=bash
# What users of the library get: an installation, or the same as a zip archive.

verb_install() {
  (($# == 1)) || fail "usage: ./dev install DIR"
  local folder
  folder=$(realpath -m "$1")
  build kivara_shipped
  need_space "$folder" 100 "the installation"
  cmake --install "$(build_dir)" --prefix "$folder" >"$(build_dir)/install.log" ||
    fail "the installation failed (log: $(build_dir)/install.log)"
  say "installed to $folder"
  say "a project finds it with: cmake -DCMAKE_TOOLCHAIN_FILE=$folder/lib/cmake/kivara/toolchain-mingw64.cmake"
}

verb_package() {
  build kivara_shipped
  local log
  log=$(build_dir)/package.log
  cpack --config "$(build_dir)/CPackConfig.cmake" -B "$(build_dir)/package" >"$log" || fail "no archive was made (log: $log)"
  say "packed: $(sed -n 's/.*package: \(.*\) generated\./\1/p' "$log")"
}
