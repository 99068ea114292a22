# shellcheck shell=bash
# Static analysis and formatting.

lint_packages=(clang-format clang-tidy cppcheck shellcheck)

sources() { git -C "$root" ls-files --cached --others --exclude-standard "$@"; }

help_format() {
  cat <<'TEXT'
usage: ./dev format

Brings all sources into the form that ./dev lint asks for, by clang-format. Before that it writes what comes from the list of options
of the command line: their getters in the header, and the table of the page.
TEXT
}

check_format() { check_no_arguments "$@"; }

verb_format() {
  need_packages clang-format
  python3 "$root/scripts/options.py" "$root"
  (cd "$root" && sources '*.cpp' '*.hpp' | xargs -r clang-format -i)
}

help_lint() {
  cat <<'TEXT'
usage: ./dev lint [--fast] [files]

Looks for faults without running anything: format, shell scripts, cppcheck, clang-tidy. With files, only at those sources.
  --fast   leaves out clang-tidy, which takes some minutes; what was clean is not looked at again until something changes
TEXT
}

check_lint() {
  local file
  [[ ${1:-} != --fast ]] || shift
  for file in "$@"; do
    [[ -f $file ]] || fail "there is no source $file; usage: ./dev lint [--fast] [files]"
  done
}

verb_lint() {
  local fast=no failed=()
  [[ ${1:-} != --fast ]] || { fast=yes && shift; }
  lint_files=()
  local file
  for file in "$@"; do
    lint_files+=("$(realpath --relative-to="$root" "$file")")
  done
  configure
  need_packages "${lint_packages[@]}"
  lint_layers || failed+=("the order of the rooms: each line above names what docs/layers.md does not allow")
  lint_format || failed+=("formatting: ./dev format mends it")
  lint_shell || failed+=("shell scripts: each line above names its rule; shellcheck.net explains it")
  lint_cppcheck || failed+=("cppcheck: mend what it names, or suppress one line with a // cppcheck-suppress and the reason")
  [[ $fast == yes ]] || lint_tidy || failed+=("clang-tidy: mend what it names, or say // NOLINT(check): and the reason")
  if ((${#failed[@]} > 0)); then
    say "found by lint:"
    printf '  %s\n' "${failed[@]}" >&2
    return 1
  fi
  say "lint found nothing"
}

# lint_sources PATTERN...: the sources that match, of those that lint was called for.
lint_sources() {
  if ((${#lint_files[@]} > 0)); then
    printf '%s\n' "${lint_files[@]}" | grep -E '\.[ch]pp$' || true
  else
    sources "$@"
  fi
}

lint_format() {
  say "checking the format"
  (cd "$root" && lint_sources '*.cpp' '*.hpp' | xargs -r clang-format --dry-run -Werror)
}

lint_layers() {
  say "checking the order of the rooms"
  python3 "$root/scripts/layers.py" "$root"
}

# The scripts are one program in several files: variables of one are used in another.
lint_shell() {
  say "checking the scripts"
  (cd "$root" && shellcheck --exclude=SC2154,SC2034 -x dev .ci/run scripts/*.sh scripts/deps/*.sh cmake/keep-import-library \
    tests/support/harness/in-own-display tests/support/harness/run-under-wine tests/support/servers/make-certificates)
}

lint_cppcheck() {
  say "cppcheck"
  (cd "$root" && lint_sources 'kivara/*.cpp' 'toolkit/*.cpp' 'apps/*.cpp' 'tools/*.cpp' |
    xargs -r cppcheck --quiet -j "$(nproc)" --language=c++ --std=c++20 --platform=win64 --enable=warning,performance,portability \
      --inline-suppr --error-exitcode=1 --suppress=missingIncludeSystem -Ikivara/include -Itoolkit/sv0105/include -Itoolkit/re00005/include)
}

# clang-tidy of every source of the library, the toolkit and the programs that the build knows. A source that was clean is not
# looked at again until it, a header that it includes, its command or the rules change.
lint_tidy() {
  export root tidy_folder tidy_cache=$cache/lint
  tidy_folder=$(build_dir)/lint
  mkdir -p "$tidy_folder" "$tidy_cache"
  find "$tidy_cache" -type f -mtime +60 -delete
  tidy_commands >"$tidy_folder/compile_commands.json"
  local files
  mapfile -t files < <(tidy_sources)
  say "clang-tidy (${#files[@]} sources)"
  export -f tidy_one tidy_key tidy_command
  printf '%s\n' "${files[@]}" | xargs -r -P "$(nproc)" -n 1 bash -c "tidy_one \"\$0\""
}

# Of a source that several targets compile only the first, its own target's; and no options that clang does not know.
tidy_commands() {
  sed 's/ -fno-ipa-ra//g' "$(build_dir)/compile_commands.json" | awk -v root="$root" '
    /^{/ { entry = ""; wanted = 0 }
    { entry = entry $0 "\n" }
    /^  "file": / { wanted = $2 ~ "^\"" root "/(kivara|toolkit|apps|tools)/.*[.]cpp\"" && !seen[$2]++ }
    /^}/ && wanted { sub(/,?\n$/, "", entry); printf "%s\n%s", (count++ ? "," : "["), entry }
    END { print (count ? "\n]" : "[]") }'
}

tidy_sources() {
  sed -n 's/^  "file": "\(.*\)",\{0,1\}$/\1/p' "$tidy_folder/compile_commands.json" |
    if ((${#lint_files[@]} > 0)); then grep -Fx "${lint_files[@]/#/-e$root/}" || true; else cat; fi
}

# tidy_one FILE: prints what is found, and fails then.
tidy_one() {
  local key found
  key=$(tidy_key "$1") || key=
  [[ -z $key || ! -e $tidy_cache/$key ]] || return 0
  if found=$(tidy_command "$1" 2>&1); then
    [[ -z $key ]] || : >"$tidy_cache/$key"
  else
    printf '%s\n' "$found" | grep -vE 'warnings? (and [0-9]+ errors? )?generated|Suppressed|Use -header-filter|^Error while processing'
    return 1
  fi
}

# clang reads the cross-compiler's commands, with its headers named one by one.
tidy_command() {
  local base=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include folder options=()
  for folder in "$base/c++" "$base/c++/x86_64-w64-mingw32" "$base/c++/backward" /usr/x86_64-w64-mingw32/include; do
    options+=("--extra-arg-before=-isystem$folder")
  done
  # GCC's form of printf attributes; members that only keep their place in a layout.
  for folder in unknown-warning-option unused-command-line-argument ignored-attributes unused-private-field; do
    options+=("--extra-arg=-Wno-$folder")
  done
  clang-tidy --quiet -p "$tidy_folder" --extra-arg-before=--target=x86_64-w64-mingw32 "${options[@]}" "$1"
}

# tidy_key FILE: changes with all that the answer depends on, and is the same in every checkout. Fails when the compiler cannot
# tell what the source includes.
tidy_key() {
  local command headers
  command=$(grep -F -B1 "\"file\": \"$1\"" "$tidy_folder/compile_commands.json" | sed -n 's/^  "command": "\(.*\)",$/\1/p')
  cd "$tidy_folder/.." || return 1
  # shellcheck disable=SC2086 # the words of a command without blanks in its words
  headers=$(${command%% -o *} -MM "$1" 2>/dev/null) || return 1
  {
    clang-tidy --version
    declare -f tidy_command
    cat "$root/.clang-tidy"
    printf '%s\n' "${command//"$root"/}"
    tr -s '[:space:]\134' '\n' <<<"$headers" | grep / | sort -u | xargs sha256sum | sed "s|$root||"
  } | sha256sum | cut -c1-32
}
