#!/bin/bash
# demo.sh ZORHOST [OUTPUT FOLDER] : plays the main jobs unattended, each in a program of its own, and prints
# summaries with the paths of the pictures, which lie in the folder "demo" of the build unless another is
# named. Exits non-zero if anything differs from what it should be.
set -eu
host=$(realpath "$1") # file dialogs take relative paths from where they were last
root=$(cd "$(dirname "$0")/.." && pwd)
out=${2:-$(cd "$(dirname "$host")/.." && pwd)/demo}
rm -rf "$out"
mkdir -p "$out"
failed=0
for job in spine geometry features nesting nest; do
  "$host" --script "$root/host/demo/$job.zorscript" --settings "$out/settings.ini" --theme light \
    --define "SAMPLES=$(dirname "$host")/../samples" --define "OUT=$out" || failed=1
done
exit $failed
