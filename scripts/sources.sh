# shellcheck shell=bash
# Sources of Debian packages, through package lists of our own, so that the machine's own configuration stays as it is.

source_packages=(dpkg-dev xz-utils bzip2 patch)
package_lists=/var/lib/apt/lists

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
  once source-lists source_apt get update
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
      keep_source_version "$1" "$version"
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

# source_version NAME PACKAGE: the version of the source that debian_source would unpack, as far as this machine knows:
# nothing before the first time. PACKAGE is a package that is built from that source. The answer is kept until the
# machine's package lists change; then the mirror is asked, if they name a version other than the one kept.
source_version() {
  local kept=$cache/sources/$1.version
  [[ $kept -nt $package_lists ]] || once "version-$1" renew_source_version "$1" "$2" "$kept"
  [[ ! -s $kept ]] || printf '%s' "$(<"$kept")"
}

renew_source_version() {
  local listed version
  [[ ! $3 -nt $package_lists ]] || return 0
  mkdir -p "$cache/sources"
  listed=$(listed_version "$2")
  if [[ -n $listed && ! (-e $3 && $(<"$3") == "$listed") ]]; then
    say "looking for the source of $1 $listed"
    if version=$(version_on_mirror "$1" 2>/dev/null); then
      keep_source_version "$1" "$version"
    else
      say "the mirror does not answer; $1 stays as it is"
    fi
  fi
  touch "$3"
}

keep_source_version() { printf '%s\n' "$2" >"$cache/sources/$1.version"; }

# The newest version of a package by the machine's lists; nothing when there are none. An added "+b" counts mere
# rebuilds.
listed_version() { apt-cache madison "$1" 2>/dev/null | awk 'NR == 1 { sub(/\+b[0-9]+$/, "", $3); print $3 }'; }

# The newest version whose description is on the mirror.
version_on_mirror() {
  local folder version code=1
  (refresh_source_lists) >/dev/null || return 1
  folder=$(mktemp -d -p "$scratch")
  for version in $(source_versions "$1"); do
    if (cd "$folder" && source_apt get source --dsc-only --download-only "$1=$version" >/dev/null); then
      printf '%s' "$version"
      code=0
      break
    fi
  done
  rm -rf "$folder"
  return "$code"
}
