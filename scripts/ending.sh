# shellcheck shell=bash
# However a run ends, also by Ctrl+C or kill, nothing of it stays: no process that it started, no file that was there for it alone.

# supervised WORD...: runs this command with the words in a process beside this one, which waits for it and then clears up. The mark in
# the environment is what all that was started is found by, also what has left the process group, as programs under Wine do.
supervised() {
  run_id=$$.$RANDOM$RANDOM
  scratch=$(mktemp -d "${TMPDIR:-/tmp}/kivara-dev.$$.XXXXXX")
  end_signal=
  local signal code=0
  trap clear_up EXIT
  for signal in INT TERM HUP; do
    # shellcheck disable=SC2064 # the signal's name now
    trap "end_signal=$signal" "$signal"
  done
  # What runs in the background would ignore Ctrl+C otherwise.
  KIVARA_DEV_RUN=${KIVARA_DEV_RUN:-}:$run_id: KIVARA_DEV_SCRATCH=$scratch env --default-signal=INT,QUIT "$root/dev" "$@" <&0 &
  verb_process=$!
  wait "$verb_process" || code=$?
  [[ -z $end_signal ]] || code=$((128 + $(kill -l "$end_signal")))
  exit "$code"
}

clear_up() {
  local code=$?
  trap '' INT TERM HUP
  if [[ -n $end_signal ]]; then
    printf '\n' >&2
    say "ended by SIG$end_signal; ending what was started"
  fi
  [[ $end_signal != INT ]] || let_end_by_itself
  end_processes_of_run
  [[ -z $end_signal ]] || remove_unfinished
  rm -rf "$scratch"
  exit "$code"
}

# Ctrl+C has reached the programs too, and one that answers it in order takes a moment.
let_end_by_itself() {
  local tries
  for ((tries = 0; tries < 50; tries++)); do
    kill -0 "$verb_process" 2>/dev/null || return 0
    sleep 0.1
  done
}

end_processes_of_run() {
  local tries pids
  for ((tries = 0; tries < 100; tries++)); do
    mapfile -t pids < <(processes_of_run)
    ((${#pids[@]} > 0)) || return 0
    if ((tries == 0)); then
      kill -TERM "${pids[@]}" 2>/dev/null || true
    elif ((tries > 30)); then
      kill -KILL "${pids[@]}" 2>/dev/null || true
    fi
    sleep 0.1
  done
}

# All but the server of the Wine prefix and its helpers, which other runs may be using, and which end a moment after the last program.
processes_of_run() {
  local path program
  for path in $(grep -lsz "^KIVARA_DEV_RUN=.*:$run_id:" /proc/[0-9]*/environ || true); do
    program=$(tr '\0' ' ' <"${path%environ}cmdline" 2>/dev/null) || continue
    [[ $program =~ (wineserver|services\.exe|winedevice\.exe|plugplay\.exe|svchost\.exe|rpcss\.exe) ]] || basename "${path%/environ}"
  done
}

# unfinished PATH: is removed if the run is ended before PATH/.complete is there.
unfinished() { [[ -z $supervised ]] || printf '%s\n' "$1" >>"$scratch/unfinished"; }

remove_unfinished() {
  local path
  [[ -e $scratch/unfinished ]] || return 0
  while read -r path; do
    [[ -e $path && ! -e $path/.complete ]] || continue
    [[ ! -e $path/system.reg ]] || WINEPREFIX=$path wineserver -k 2>/dev/null || true
    rm -rf "$path"
  done <"$scratch/unfinished"
}
