# shellcheck shell=bash
# A print server for the tests: what they print goes to files, and no printer of this machine is seen by them.

print_packages=(cups-daemon cups-client libcups2 ghostscript poppler-utils)

# start_print_server: CUPS in a folder of its own, on a socket in it, so that there is no port to share; ended with this script. Tests
# find it by CUPS_SERVER, add queues to it, and look for what was printed in $KIVARA_PRINTED.
start_print_server() {
  local folder tries
  folder=$(mktemp -d -p "$scratch" print.XXXXXX)
  mkdir -p "$folder"/{cache,printed,programs/backend,root,run,spool}
  write_print_settings "$folder"
  export CUPS_SERVER=$folder/run/socket KIVARA_PRINTED=$folder/printed
  # By its own path, the system may confine it to the folders of the system's server.
  cp /usr/sbin/cupsd "$folder/programs/"
  "$folder/programs/cupsd" -f -c "$folder/cupsd.conf" -s "$folder/cups-files.conf" </dev/null >/dev/null 2>&1 &
  started+=($!)
  for ((tries = 0; tries < 300; tries++)); do
    [[ $(lpstat -r 2>/dev/null) != 'scheduler is running' ]] || return 0
    sleep 0.1
  done
  tail -n 15 "$folder/errors" >&2 || true
  fail "the print server of the tests did not start within 30 seconds"
}

write_print_settings() {
  # The server runs a back end that others must not start as its own user, and others as nobody, who may not reach this folder.
  install -m 700 "$root/scripts/printing/keep" "$1/programs/backend/keep"
  ln -s /usr/lib/cups/daemon "$1/programs/daemon"
  cat >"$1/cups-files.conf" <<TEXT
ServerRoot $1/root
ServerBin $1/programs
CacheDir $1/cache
StateDir $1/run
RequestRoot $1/spool
AccessLog $1/requests
ErrorLog $1/errors
PageLog $1/pages
User nobody
Group nogroup
SystemGroup root
TEXT
  cat >"$1/cupsd.conf" <<TEXT
Listen $1/run/socket
Browsing No
WebInterface No
DefaultAuthType None
MaxJobs 0
MaxLogSize 0
<Location />
  Allow all
</Location>
<Policy default>
  <Limit All>
    Allow all
  </Limit>
</Policy>
TEXT
}
