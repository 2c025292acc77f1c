#!/bin/bash
# with_display.sh COMMAND... : runs a command on a virtual display with a window manager.
# The screen is 1600 x 1000, or ZOR_SCREEN (WIDTHxHEIGHT); the server keeps its pixels in $XDG_RUNTIME_DIR/Xvfb_screen0, a file
# of the format XWD. Returns what the command returns.
set -u
XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8
chmod 700 "$XDG_RUNTIME_DIR"
server= manager=
finish() {
  [ -n "$manager" ] && kill "$manager" 2>/dev/null
  [ -n "$server" ] && kill "$server" 2>/dev/null
  wait 2>/dev/null
  rm -rf "$XDG_RUNTIME_DIR"
}
trap finish EXIT

# wait_until SECONDS COMMAND... : polls for a state.
wait_until() {
  local end=$((SECONDS + $1))
  shift
  until "$@" >/dev/null 2>&1; do
    [ $SECONDS -lt $end ] || { echo "with_display.sh: no answer to: $*" >&2; exit 1; }
    sleep 0.05
  done
}
manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 0x; }

exec {number_pipe}<> <(:)
Xvfb -displayfd $number_pipe -screen 0 "${ZOR_SCREEN:-1600x1000}x24" -fbdir "$XDG_RUNTIME_DIR" \
  -nolisten tcp -noreset 2>"$XDG_RUNTIME_DIR/xvfb.log" &
server=$!
read -r -t 20 -u $number_pipe number || { cat "$XDG_RUNTIME_DIR/xvfb.log" >&2; exit 1; }
export DISPLAY=:$number
wait_until 20 xdpyinfo
openbox --sm-disable >/dev/null 2>&1 &
manager=$!
wait_until 20 manager_runs
"$@"
