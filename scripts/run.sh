# shellcheck shell=bash
# Running the sample product.

help_run() {
  cat <<'TEXT'
usage: ./dev run [--] [arguments of the program]

Builds modeler.exe, the sample product, and runs it with the arguments, in the working folder. Without a display it runs in a virtual one
until its window has been there for a second; the picture is in build/screenshot.png. It opens the order model unless an argument is
-modelFILE; -model alone opens none. What comes after -- reaches the program in any case: ./dev run -- --help. docs/command-line.md has
the arguments, docs/boxes.md what boxes at the start mean.
TEXT
}

check_run() { :; }

# The model that is shown where the arguments name none: the first picture is then of what the product is for.
order_model() {
  local argument
  for argument; do
    [[ $argument != [-/]model* ]] || return 0
  done
  printf '%s\n' "-modelZ:$root/apps/modeler/models/order.txt"
}

verb_run() {
  [[ ${1:-} != -- ]] || shift
  need_packages "${run_packages[@]}" "${screenshot_packages[@]}"
  # Asked before the build, which starts a virtual display itself when it makes a prefix.
  local seen=yes program model
  has_display || seen=no
  build modeler
  need_prefix
  program=$(build_dir)/bin/modeler.exe
  model=$(order_model "$@")
  [[ -z $model ]] || set -- "$@" "$model"
  if [[ $seen == yes ]]; then
    say "running modeler.exe $*"
    run_wine "$program" "$@"
  else
    has_display || start_virtual_display
    run_with_screenshot "$program" "$@"
  fi
}

# run_with_screenshot PROGRAM ARGS...: waits for the main window, takes its picture, closes it, gives the exit code.
run_with_screenshot() {
  local picture=$root/build/screenshot.png pid window
  rm -f "$picture"
  say "no display: running modeler.exe ${*:2} in a virtual one"
  # The desktop, which Wine starts with the program, outlives it and complains about the end of the display.
  "$wine_loader" "$@" </dev/null > >(cat) 2> >(grep -v --line-buffered '^X connection to .* broken' >&2) &
  pid=$!
  started+=("$pid")
  if window=$(wait_for_window "$pid"); then
    sleep 1
    import -window root "$picture"
    local colours
    colours=$(/usr/bin/identify -format %k "$picture")
    ((colours > 1)) || fail "the screenshot $picture shows nothing"
    say "screenshot: $picture"
    wmctrl -i -c "$window"
  fi
  local code=0
  wait_for_end "$pid" || fail "modeler.exe did not end within 30 seconds after its window was closed"
  wait "$pid" || code=$?
  say "modeler.exe ended with exit code $code"
  return "$code"
}

# The first named, visible window; fails when the program ends before it shows one.
wait_for_window() {
  local tries window
  for ((tries = 0; tries < 300; tries++)); do
    window=$(xdotool search --onlyvisible --class modeler.exe 2>/dev/null | tail -n 1 || true)
    if [[ -n $window ]]; then
      printf '%s\n' "$window"
      return
    fi
    kill -0 "$1" 2>/dev/null || return 1
    sleep 0.1
  done
  return 1
}

wait_for_end() {
  local tries
  for ((tries = 0; tries < 300; tries++)); do
    kill -0 "$1" 2>/dev/null || return 0
    sleep 0.1
  done
  return 1
}
