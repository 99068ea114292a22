# shellcheck shell=bash

# Headers alone, linked into a prefix of their own: the host's include folder must never be on the cross-compiler's
# path.
build_peers() {
  need_packages libboost-dev libspdlog-dev libfmt-dev
  mkdir -p "$2/include" &&
    ln -s /usr/include/boost /usr/include/spdlog /usr/include/fmt "$2/include/" &&
    package_version libboost-dev >"$1/version"
}

version_peers() { :; } # links, which follow what is installed
