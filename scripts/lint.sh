# shellcheck shell=bash
# Static analysis and formatting.

lint_packages=(clang-format clang-tidy cppcheck shellcheck)

sources() { git -C "$root" ls-files --cached --others --exclude-standard "$@"; }

verb_format() {
  need_packages clang-format
  (cd "$root" && sources '*.cpp' '*.hpp' | xargs -r clang-format -i)
}

# verb_lint [--fast]: --fast leaves out clang-tidy, which takes some minutes.
verb_lint() {
  configure
  need_packages "${lint_packages[@]}"
  local failed=()
  lint_format || failed+=("formatting: ./dev format mends it")
  lint_shell || failed+=("shell scripts: each line above names its rule; shellcheck.net explains it")
  lint_cppcheck || failed+=("cppcheck: mend what it names, or suppress one line with a // cppcheck-suppress and the reason")
  [[ ${1:-} == --fast ]] || lint_tidy || failed+=("clang-tidy: mend what it names, or say // NOLINT(check): and the reason")
  if ((${#failed[@]} > 0)); then
    say "found by lint:"
    printf '  %s\n' "${failed[@]}" >&2
    return 1
  fi
  say "lint found nothing"
}

lint_format() {
  say "checking the format"
  (cd "$root" && sources '*.cpp' '*.hpp' | xargs -r clang-format --dry-run -Werror)
}

# The scripts are one program in several files: variables of one are used in another.
lint_shell() {
  say "checking the scripts"
  (cd "$root" && shellcheck --exclude=SC2154,SC2034 -x dev .ci/run scripts/*.sh tests/support/run-under-wine)
}

lint_cppcheck() {
  say "cppcheck"
  (cd "$root" && sources 'kivara/*.cpp' 'toolkit/*.cpp' 'apps/*.cpp' 'tools/*.cpp' |
    xargs -r cppcheck --quiet --language=c++ --std=c++20 --platform=win64 --enable=warning,performance,portability \
      --inline-suppr --error-exitcode=1 --suppress=missingIncludeSystem -Ikivara/include -Itoolkit/sv0105/include)
}

# clang reads the cross-compiler's commands with its headers named one by one, and without the options that it does not know.
lint_tidy() {
  say "clang-tidy (some minutes)"
  local commands
  commands=$(build_dir)/lint
  mkdir -p "$commands"
  sed 's/ -fno-ipa-ra//g' "$(build_dir)/compile_commands.json" >"$commands/compile_commands.json"
  local base=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include folders=()
  local folder
  for folder in "$base/c++" "$base/c++/x86_64-w64-mingw32" "$base/c++/backward" /usr/x86_64-w64-mingw32/include; do
    folders+=("--extra-arg-before=-isystem$folder")
  done
  (cd "$root" && tidy_sources | xargs -r -P "$(nproc)" -n 4 clang-tidy --quiet -p "$commands" \
    --extra-arg-before=--target=x86_64-w64-mingw32 "${folders[@]}" --extra-arg=-Wno-unknown-warning-option \
    --extra-arg=-Wno-unused-command-line-argument 2> >(grep -vE 'warnings? generated|Suppressed|Use -header-filter' >&2))
}

# Sources of the library, the toolkit and the programs that the build knows.
tidy_sources() {
  sed -n 's/^  "file": "\(.*\)",\{0,1\}$/\1/p' "$(build_dir)/compile_commands.json" |
    grep -E "^$root/(kivara|toolkit|apps|tools)/.*\.cpp$" | sort -u
}
