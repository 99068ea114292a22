# shellcheck shell=bash
# Changes of the library, one at a time, each to be noticed by a test. scripts/mutants/ does it.

mutants_packages=(bubblewrap git)

help_mutants() {
  cat <<'TEXT'
usage: ./dev mutants [options]

Changes the library in one place at a time, in a copy, builds the DLL, runs the tests of the room up to the first that fails, and names
what no test noticed. docs/testing.md says what counts.
  --room NAME    only this room, a folder of tests/ such as text; may be given several times; all of them otherwise
  --count N      so many changes that compile (40)
  --seed S       other changes, or the same again (1); a run that was ended goes on where it was
  --again        keeps what was noticed, whatever has changed since, and tries the rest once more
  --unprotected  without the sandbox that keeps changed code from your files: in a container that is thrown away
TEXT
}

verb_mutants() {
  need_packages "${build_packages[@]}" "${run_packages[@]}" "${screenshot_packages[@]}" "${test_packages[@]}" "${print_packages[@]}" "${mutants_packages[@]}"
  need_library_dependencies
  need_test_dependencies
  need_space "$root" 4000 "a copy of the checkout with its build"
  start_virtual_display
  start_print_server
  need_prefix
  local system
  mapfile -t system < <(compiler_folders)
  PYTHONPATH=$root/scripts python3 -m mutants --root="$root" --work="$root/build/mutants" --libclang="$libclang" \
    "${system[@]/#/--system=}" --jobs="$(test_jobs)" "$@"
}

check_mutants() {
  while (($# > 0)); do
    case $1 in
      --room) [[ -n ${2:-} && -e $root/tests/$2/CMakeLists.txt ]] || fail "there is no room '${2:-}'; its tests would be in tests/${2:-NAME}" ;;
      --count) [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || fail "--count needs a number: ./dev mutants --count 40" ;;
      --seed) [[ ${2:-} =~ ^[A-Za-z0-9]+$ ]] || fail "--seed needs a number or a word: ./dev mutants --seed 7" ;;
      --again | --unprotected)
        shift
        continue
        ;;
      *) fail "unknown argument '$1'; ./dev mutants --help lists them" ;;
    esac
    shift 2
  done
}
