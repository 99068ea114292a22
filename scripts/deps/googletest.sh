# shellcheck shell=bash

build_googletest() {
  package_version googletest >"$1/version"
  cmake_install /usr/src/googletest "$1" "$2" -DBUILD_GMOCK=OFF
}

version_googletest() { package_version googletest; }
