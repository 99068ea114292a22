# shellcheck shell=bash
# API pages of the public headers; a warning is an error.

docs_packages=(doxygen)

verb_docs() {
  need_packages "${docs_packages[@]}"
  (cd "$root" && doxygen docs/Doxyfile)
  say "API pages: $root/build/docs/html/index.html"
}
