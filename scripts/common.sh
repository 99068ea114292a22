# shellcheck shell=bash
# Settings and small helpers of every verb.

preset=${KIVARA_PRESET:-release}
cache=${KIVARA_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kivara}

# What scripts read sources with.
libclang=/usr/lib/x86_64-linux-gnu/libclang-14.so.1
export PYTHONDONTWRITEBYTECODE=1

# The folders of headers that the cross-compiler looks into by itself.
compiler_folders() { x86_64-w64-mingw32-g++-posix -E -v -x c++ /dev/null 2>&1 >/dev/null | sed -n '/^#include </,/^End of/s/^ //p'; }

say() { printf 'dev: %s\n' "$*" >&2; }

fail() {
  printf 'dev: error: %s\n' "$*" >&2
  exit 1
}

# The folder for what is there for this run alone; it is removed at the end. A run that was started by a supervising one has it from
# there.
scratch=${KIVARA_DEV_SCRATCH:-${TMPDIR:-/tmp}}
supervised=${KIVARA_DEV_SCRATCH:+yes}
unset KIVARA_DEV_SCRATCH

# The processes that this run started and has to end, by their ids.
started=()
end_started() {
  local pid
  for pid in "${started[@]}"; do
    kill "$pid" 2>/dev/null || true
  done
}
trap end_started EXIT

check_no_arguments() { (($# == 0)) || fail "this verb takes no arguments: $*"; }

progress_every=10 # seconds

# with_progress WHAT LOG COMMAND...: runs the command with its output in the log, and says every few seconds how far it is.
with_progress() {
  local what=$1 log=$2 process code=0 said=$SECONDS begun=$SECONDS
  "${@:3}" >"$log" 2>&1 &
  process=$!
  while kill -0 "$process" 2>/dev/null; do
    sleep 0.2
    if ((SECONDS - said >= progress_every)); then
      said=$SECONDS
      say "$what: $((SECONDS - begun)) seconds, $(wc -l <"$log") lines; $(tail -n 1 "$log" | tr -d '\r' | cut -c1-90)"
    fi
  done
  wait "$process" || code=$?
  return "$code"
}

# need_space DIR MEGABYTES WHAT: stops with advice when the disk is too full.
need_space() {
  local free
  local elsewhere=
  [[ $1 != "$cache"* ]] || elsewhere=', or set KIVARA_CACHE to another folder'
  mkdir -p "$1" || fail "cannot create $1 for $3; make it writable$elsewhere"
  free=$(df -Pm "$1" | awk 'NR == 2 { print $4 }')
  ((free >= $2)) || fail "$3 needs $2 MB in $1, which has $free MB left; free some space$elsewhere"
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
