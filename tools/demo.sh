#!/bin/bash
# demo.sh ZORHOST [OUTPUT FOLDER] : plays the main job unattended and prints a summary with the paths of the
# pictures, which lie in the folder "demo" of the build unless another is named. Exits non-zero if anything
# differs from what it should be.
set -eu
host=$1
root=$(cd "$(dirname "$0")/.." && pwd)
out=${2:-$(cd "$(dirname "$host")/.." && pwd)/demo}
rm -rf "$out"
mkdir -p "$out"
exec "$host" --script "$root/host/demo/spine.zorscript" --settings "$out/settings.ini" --theme light \
  --define "SAMPLES=$(dirname "$host")/../samples" --define "OUT=$out"
