# shellcheck shell=bash
# What users of the library get: an installation, or the same as a zip archive.

help_install() {
  cat <<'TEXT'
usage: ./dev install DIR

Builds what users get and installs it into DIR, which is made where it is not there: DLLs, headers, CMake package, tools and language
packs. A path counts from the working folder. docs/package.md says how a project finds it.
TEXT
}

check_install() {
  [[ $# == 1 && -n $1 && $1 != -* ]] || fail "usage: ./dev install DIR"
  local folder
  folder=$(realpath -m "$1")
  while [[ ! -e $folder ]]; do
    folder=$(dirname "$folder")
  done
  [[ -d $folder && -w $folder ]] || fail "$1 cannot be written: look at $folder"
}

verb_install() {
  local folder
  folder=$(realpath -m "$1")
  need_space "$folder" 100 "the installation"
  build kivara_shipped
  cmake --install "$(build_dir)" --prefix "$folder" >"$(build_dir)/install.log" ||
    fail "the installation failed (log: $(build_dir)/install.log)"
  say "installed to $folder"
  say "a project finds it with: cmake -DCMAKE_TOOLCHAIN_FILE=$folder/lib/cmake/kivara/toolchain-mingw64.cmake"
}

help_package() {
  cat <<'TEXT'
usage: ./dev package

Packs what ./dev install would install into a zip archive below build/release/package, and prints its name.
TEXT
}

check_package() { check_no_arguments "$@"; }

verb_package() {
  build kivara_shipped
  local log
  log=$(build_dir)/package.log
  cpack --config "$(build_dir)/CPackConfig.cmake" -B "$(build_dir)/package" >"$log" || fail "no archive was made (log: $log)"
  say "packed: $(sed -n 's/.*package: \(.*\) generated\./\1/p' "$log")"
}
