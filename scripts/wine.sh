# shellcheck shell=bash
# The Wine prefix and the display that Windows programs run in.

wine_loader=/usr/lib/wine/wine64
wine_settings=5 # raise it when the settings below change: a new prefix is then made

# The version of Windows that programs see. Each has a prefix of its own, so that the others stay as they are.
usual_windows=10
windows=$usual_windows

wine_environment() {
  WINEPREFIX=$cache/wine/$(package_version wine)-$wine_settings
  [[ $windows == "$usual_windows" ]] || WINEPREFIX+=-windows-$windows
  export WINEPREFIX
  export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINELOADER=$wine_loader LC_ALL=C.UTF-8
  export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
}

need_prefix() {
  wine_environment
  [[ -e $WINEPREFIX/.complete ]] && return
  need_space "$cache" 1500 "a Wine prefix"
  say "making a Wine prefix (once; kept in $cache)"
  has_display || start_virtual_display
  once wine-prefix make_prefix
}

# The font that the buttons of title bars are drawn with: Debian's Wine does not look into its own folder of fonts.
marlett=/usr/share/wine/fonts/marlett.ttf

make_prefix() {
  [[ ! -e $WINEPREFIX/.complete ]] || return 0
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  unfinished "$WINEPREFIX"
  local log=$WINEPREFIX/.log
  with_progress "making a Wine prefix" "$log" fill_prefix || {
    tail -n 15 "$log" >&2
    fail "the Wine prefix $WINEPREFIX could not be made (log: $log)"
  }
  touch "$WINEPREFIX/.complete"
}

# The debugger would take seconds for each program that a test lets crash, and say nothing that the test's own does not.
fill_prefix() {
  wineboot --init &&
    cp "$marlett" "$WINEPREFIX/drive_c/windows/Fonts/" &&
    set_windows &&
    wine_setting 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 &&
    wine_setting 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d none &&
    wine_setting 'HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings' /v ProxyEnable /t REG_DWORD /d 0 &&
    wineserver -w
}

# Windows 11 calls itself 10 with a later build, which is how a Wine that does not know it can be it.
set_windows() {
  local build
  if [[ $windows != 11 ]]; then
    "$wine_loader" winecfg -v "win${windows//./}"
    return
  fi
  "$wine_loader" winecfg -v win10 || return
  for build in CurrentBuild CurrentBuildNumber; do
    wine_setting 'HKLM\Software\Microsoft\Windows NT\CurrentVersion' /v "$build" /d 22631 || return
  done
}

wine_setting() { "$wine_loader" reg add "$@" /f; }

# keep_wine_alive: one idle program in the prefix for the length of this script. The prefix's server and its helpers then
# start once, and outside of any pipe that somebody reads to its end.
keep_wine_alive() {
  local folder silence
  folder=$(mktemp -d -p "$scratch")
  mkfifo "$folder/silence"
  exec {silence}<>"$folder/silence"
  "$wine_loader" cmd /c pause <&"$silence" >/dev/null 2>&1 &
  started+=($!)
  exec {silence}>&-
  rm -rf "$folder"
  # The first window would start the desktop otherwise, which would keep the output of that test open to the end of all.
  "$wine_loader" explorer.exe /desktop </dev/null >/dev/null 2>&1 &
  started+=($!)
  sleep 3
}

has_display() { [[ -n ${DISPLAY:-} ]] && xdpyinfo >/dev/null 2>&1; }

# start_virtual_display: an X server of our own with a window manager, ended with this script.
start_virtual_display() {
  local number_file
  number_file=$(mktemp -p "$scratch")
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number_file" >/dev/null 2>&1 9>&- &
  started+=($!)
  local tries
  for ((tries = 0; tries < 600; tries++)); do
    [[ -s $number_file ]] && break
    sleep 0.1
  done
  [[ -s $number_file ]] || fail "the virtual display Xvfb did not start within 60 seconds"
  DISPLAY=:$(<"$number_file")
  export DISPLAY
  rm -f "$number_file"
  openbox >/dev/null 2>&1 &
  started+=($!)
  wait_for_window_manager
}

# Without a window manager Wine waits two seconds for each window that goes away, and no window gets the focus.
wait_for_window_manager() {
  command -v xprop >/dev/null || return 0 # not installed yet where a build makes the first prefix
  local tries
  for ((tries = 0; tries < 600; tries++)); do
    [[ $(xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null) != *'window id'* ]] || return 0
    sleep 0.1
  done
  fail "the window manager openbox did not start within 60 seconds"
}

# run_wine PROGRAM ARGS...: AllocConsole fails when the three streams are a terminal, so they never are.
run_wine() {
  if [[ -t 0 || -t 1 || -t 2 ]]; then
    "$wine_loader" "$@" </dev/null > >(cat) 2> >(cat >&2)
  else
    "$wine_loader" "$@"
  fi
}

help_wine() {
  cat <<'TEXT'
usage: ./dev wine PROGRAM [args]

Runs a Windows program in the project's Wine prefix and ends with its exit code; without a display, in a virtual one that goes away with
it. PROGRAM is a path, such as build/release/bin/kivml.exe, or the name of a program of Wine, such as cmd. Ctrl+C reaches the program.
TEXT
}

check_wine() {
  (($# > 0)) || fail "usage: ./dev wine PROGRAM [args]"
  [[ $1 != */* || -f $1 ]] || fail "there is no program $1; ./dev build makes those of this project"
}

verb_wine() {
  need_packages "${run_packages[@]}" "${screenshot_packages[@]}"
  has_display || start_virtual_display
  need_prefix
  run_wine "$@"
}
