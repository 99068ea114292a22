# shellcheck shell=bash
# The archiver that products ship beside their programs, for tests alone: it is neither shipped nor part of the package.
build_archiver() {
  local version=5.2.0 sum=04f9738ee00be8be53f5d06254a9e6e4b5117b17f8b74058477d870e62764a7d
  need_packages curl ca-certificates
  curl -fsSL --retry 2 --connect-timeout 20 --max-time 120 -o "$1/7zip-bin.tgz" "https://registry.npmjs.org/7zip-bin/-/7zip-bin-$version.tgz" &&
    printf '%s  %s\n' "$sum" "$1/7zip-bin.tgz" | sha256sum --check --quiet &&
    tar -xzf "$1/7zip-bin.tgz" -C "$1" package/win/x64/7za.exe package/LICENSE.txt &&
    mkdir -p "$2/share/archiver" &&
    cp "$1/package/win/x64/7za.exe" "$1/package/LICENSE.txt" "$2/share/archiver/" &&
    printf '%s\n' "$version" >"$1/version"
}

version_archiver() { printf '5.2.0'; } # that of the recipe
