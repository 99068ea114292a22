# shellcheck shell=bash
# Sources of Debian packages, through package lists of our own, so that the machine's own configuration stays as it is.

source_packages=(dpkg-dev xz-utils bzip2 patch)

source_apt() {
  local lists=$cache/sources
  apt-"$1" -qq -o APT::Sandbox::User=root -o Dir::Etc::sourcelist="$lists/sources.list" -o Dir::Etc::sourceparts=- \
    -o Dir::State::lists="$lists/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache= "${@:2}"
}

# The machine's own archives, as source entries.
refresh_source_lists() {
  mkdir -p "$cache/sources/lists/partial"
  # shellcheck disable=SC2016 # apt fills these in
  apt-get indextargets --format 'deb-src $(REPO_URI) $(CODENAME) $(COMPONENT)' 'Created-By: Packages' |
    grep -E '/debian(-security)?/? ' | sort -u >"$cache/sources/sources.list"
  [[ -s $cache/sources/sources.list ]] || fail "no Debian archive is configured; see /etc/apt/sources.list"
  source_apt get update
}

# debian_source NAME FOLDER: unpacks the newest source that can be fetched into FOLDER/source and writes its version to
# FOLDER/version. A mirror may lack the newest security version: then the next older one is taken.
debian_source() {
  need_packages "${source_packages[@]}"
  refresh_source_lists
  local version
  for version in $(source_versions "$1"); do
    if (cd "$2" && source_apt get source --download-only "$1=$version"); then
      printf '%s\n' "$version" >"$2/version"
      dpkg-source --no-check -x "$2"/*.dsc "$2/source"
      return
    fi
    say "$1 $version is not on the mirror; trying an older version"
  done
  say "the source of $1 cannot be fetched; look at the network and at $cache/sources/sources.list"
  return 1
}

source_versions() {
  source_apt cache showsrc --only-source "$1" | sed -n 's/^Version: //p' | sort -Vru
}
