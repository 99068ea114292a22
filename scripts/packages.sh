# shellcheck shell=bash
# Debian packages, installed only when one is missing.

build_packages=(g++-mingw-w64-x86-64-posix cmake ninja-build ccache googletest doxygen python3 openssl libclang1-14
  libz-mingw-w64-dev librsvg2-bin)
run_packages=(wine wine64 xvfb openbox fonts-wine fonts-liberation)
# Wine runs ntlm_auth of winbind for NTLM, whose service is not needed; xrandr makes two monitors of a display; the pages call curl.
test_packages=(winbind x11-xserver-utils curl)
screenshot_packages=(xdotool wmctrl imagemagick x11-utils)

missing_packages() {
  local package
  for package in "$@"; do
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || printf '%s\n' "$package"
  done
}

as_root() {
  if [[ $(id -u) == 0 ]]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    fail "these need an administrator, and there is no sudo: $*"
  fi
}

# need_packages NAME...: installs those that are missing.
need_packages() {
  local missing
  command -v dpkg-query >/dev/null || fail "this set-up is for Debian 12; install by hand what matches: $*"
  mapfile -t missing < <(missing_packages "$@")
  ((${#missing[@]} == 0)) && return
  say "installing packages: ${missing[*]}"
  need_space /var/cache/apt 1500 "installing packages"
  once packages install_packages "${missing[@]}"
}

install_packages() {
  local log
  log=$(mktemp) # stays where something fails
  # A service that a package starts is not this run's to end.
  local apt=(env --unset=KIVARA_DEV_RUN DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
  with_progress "reading the package lists" "$log" as_root "${apt[@]}" update || say "the package lists could not be refreshed; trying with the old ones"
  if ! with_progress "installing packages" "$log" as_root "${apt[@]}" install -y --no-install-recommends "$@"; then
    tail -n 15 "$log" >&2
    fail "the packages above could not be installed; look at the network and the package sources, then run: apt-get install $* (log: $log)"
  fi
  rm -f "$log"
}
