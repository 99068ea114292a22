# shellcheck shell=bash

build_benchmark() {
  debian_source benchmark "$1" &&
    cmake_install "$1/source" "$1" "$2" -DGIT_VERSION="$(sed "s/-.*//" "$1/version")" \
      -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_WERROR=OFF
}

version_benchmark() { source_version benchmark libbenchmark-dev; }
