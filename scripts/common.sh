# shellcheck shell=bash
# Settings and small helpers of every verb.

preset=${KIVARA_PRESET:-release}
cache=${KIVARA_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kivara}

say() { printf 'dev: %s\n' "$*" >&2; }

fail() {
  printf 'dev: error: %s\n' "$*" >&2
  exit 1
}

# The processes that this run started and has to end, by their ids.
started=()
end_started() {
  local pid
  for pid in "${started[@]}"; do
    kill "$pid" 2>/dev/null || true
  done
}
trap end_started EXIT

# need_space DIR MEGABYTES WHAT: stops with advice when the disk is too full.
need_space() {
  local free
  mkdir -p "$1" || fail "cannot create $1; set KIVARA_CACHE to a folder that you can write"
  free=$(df -Pm "$1" | awk 'NR == 2 { print $4 }')
  ((free >= $2)) || fail "$3 needs $2 MB in $1, which has $free MB left; free some space or set KIVARA_CACHE to another disk"
}

# once NAME COMMAND...: runs the command unless another ./dev is running one of the same name; then it waits.
once() {
  local name=$1
  shift
  mkdir -p "$cache/locks"
  (
    flock 9
    "$@"
  ) 9>"$cache/locks/$name"
}
