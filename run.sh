#!/bin/bash
# Installs what is missing, builds, and opens the host with the bench loaded.
#
#   ./run.sh [ARGUMENT...]   arguments go to zorhost (./run.sh --help shows them)
#   ./run.sh --demo          plays the main job unattended and prints a summary; also what happens
#                            where there is no display
set -eu
cd "$(dirname "$0")"
. tools/packages.sh

has_display() { [ -n "${DISPLAY:-}" ] && timeout 10 xdpyinfo >/dev/null 2>&1; }

install_packages $run_packages
mkdir -p build
cmake --preset release >build/configure-release.log 2>&1 || { cat build/configure-release.log; exit 1; }
cmake --build --preset release

host=build/release/bin/zorhost
if [ "${1:-}" = "--demo" ]; then
  shift
elif has_display; then
  exec "$host" "$@"
elif [ $# -gt 0 ]; then
  exec env QT_QPA_PLATFORM=offscreen "$host" "$@"
else
  echo "There is no display: playing the demo."
fi

if has_display; then
  exec tools/demo.sh "$host"
fi
exec tools/with_display.sh tools/demo.sh "$host"
