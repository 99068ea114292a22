# shellcheck shell=bash
# API pages of the public headers, with the pages of docs/; a warning is an error, and so is an operation without a comment.

docs_packages=(doxygen)

help_docs() {
  cat <<'TEXT'
usage: ./dev docs

Makes the API pages of the public headers, with the pages of docs/, in build/docs/html. An operation without a comment and a warning of
doxygen are errors.
TEXT
}

check_docs() { check_no_arguments "$@"; }

verb_docs() {
  need_packages "${build_packages[@]}" "${docs_packages[@]}"
  mkdir -p "$root/build"
  local failed=()
  documented || failed+=("comments: write /// above what is named; docs/adding-a-module.md says what it holds")
  (cd "$root" && doxygen docs/Doxyfile) || failed+=("pages: mend what doxygen names above")
  if ((${#failed[@]} > 0)); then
    say "found in the documentation:"
    printf '  %s\n' "${failed[@]}" >&2
    return 1
  fi
  say "API pages: $root/build/docs/html/index.html"
}

documented() {
  say "looking for operations without a comment"
  local system
  mapfile -t system < <(compiler_folders)
  (cd "$root" && python3 scripts/documented.py --libclang="$libclang" --header=kivara.hpp --header=sv/sv.hpp \
    --include=kivara/include --include=toolkit/sv0105/include --include=toolkit/re00005/include "${system[@]/#/--system=}")
}
