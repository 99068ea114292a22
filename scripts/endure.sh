# shellcheck shell=bash
# Endurance: a program that does all at once for minutes, and looks at what it holds of the system.

help_endure() {
  cat <<'TEXT'
usage: ./dev endure [options]

Builds and runs a program that does all that the library offers, at once and over and over: windows, languages, themes, events, logs, pages,
requests, plug-ins, far calls, files, texts, processes, boxes, pictures, the tray. Handles, threads, GDI and USER objects, memory and files
at the end are compared with those of the second tenth of the time. Ends with 1 and names what grew. See docs/testing.md.
  --minutes N      for so long (10)
  --seconds N      the same in seconds
  --only NAMES     these activities alone, with commas between them: --only windows,themes
  --without NAMES  all but these
  --samples FILE   all samples go there as a table, with commas
  --leak WHAT      loses one thing a round, which has to be noticed: handle, thread, gdi, user, memory, file, rounds or result
TEXT
}

check_endure() {
  while (($# > 0)); do
    case $1 in
      --minutes | --seconds) [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || fail "$1 needs a number: ./dev endure $1 10" ;;
      --only | --without) [[ -n ${2:-} ]] || fail "$1 needs names of activities: ./dev endure $1 windows,themes" ;;
      --samples) [[ -n ${2:-} ]] || fail "--samples needs the name of a file" ;;
      --leak) [[ ${2:-} =~ ^(handle|thread|gdi|user|memory|file|rounds|result)$ ]] || fail "--leak needs one of: handle, thread, gdi, user, memory, file, rounds, result" ;;
      *) fail "unknown argument '$1'; ./dev endure --help lists them" ;;
    esac
    shift 2
  done
}

verb_endure() {
  local words=() folder code=0
  while (($# > 0)); do
    case $1 in
      --minutes) words+=(--seconds "$(($2 * 60))") ;;
      --samples) words+=(--samples "Z:$(realpath -m "$2")") ;;
      *) words+=("$1" "$2") ;;
    esac
    shift 2
  done
  build endurance
  need_packages "${run_packages[@]}" "${screenshot_packages[@]}" "${test_packages[@]}" "${print_packages[@]}"
  start_virtual_display
  start_print_server
  need_prefix
  keep_wine_alive
  folder=$(mktemp -d -p "$scratch")
  # Its end must not wait for what it has started outside of Wine.
  (cd "$folder" && "$wine_loader" "$(build_dir)/bin/endurance.exe" "${words[@]}" </dev/null) || code=$?
  rm -rf "$folder"
  return "$code"
}
