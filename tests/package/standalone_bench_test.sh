#!/bin/bash
# standalone_bench_test.sh <build folder> <source folder>
#
# The bench as its owners build it: installs SDK and host into a temporary prefix, copies the bench folder
# alone out of the tree, builds it against the installed package, installs it, and lets the installed host
# load the installed plug-in, open its console and run a job in the installed helper program. Nothing of the source or
# build tree takes part.
set -eu
build=$1
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

cmake --install "$build" --prefix "$prefix" >"$work/install.log" || { cat "$work/install.log"; exit 1; }
plugin=$(find "$prefix" -name 'libZORTesting*')
[ -n "$plugin" ] || { echo "the bench is not among the installed files"; exit 1; }
rm $plugin
find "$prefix" -path '*/zorsdk/plugins/libZORStandardCommands.so' | grep -q . ||
  { echo "the SDK's own commands are not among the installed plug-ins"; exit 1; }

grep -q 'Dr. A. V. Hershey' "$prefix/share/doc/zorsdk/acknowledgements.txt"

cp -r "$source/bench" "$work/bench"
export CCACHE_BASEDIR=$work
cmake -S "$work/bench" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_INSTALL_PREFIX="$prefix" >"$work/configure.log" 2>&1 || { cat "$work/configure.log"; exit 1; }
cmake --build "$work/build" >"$work/build.log" 2>&1 || { tail -n 60 "$work/build.log"; exit 1; }
cmake --install "$work/build" >/dev/null

plugin=$(find "$prefix" -name 'libZORTesting.so')
[ -f "$plugin" ] || { echo "the bench built alone was not installed"; exit 1; }
worker=$prefix/libexec/zorsdk/zorworker
[ -x "$worker" ] || { echo "the program that runs jobs is not among the installed files"; exit 1; }
if readelf -d $(find "$prefix" -path '*/plugins/*.so') "$prefix"/bin/zorhost "$worker" "$prefix"/lib*/libZOR*.so |
  grep -E 'RUNPATH|RPATH' | grep -v '\[\$ORIGIN'; then
  echo "an installed file looks for libraries outside its own prefix"
  exit 1
fi

cd "$work"
unset LD_LIBRARY_PATH ZOR_PLUGIN_PATH ZOR_SAMPLES
# Without a caller the program has nothing to do, but all of its libraries are found.
status=0
QT_QPA_PLATFORM=offscreen "$worker" 2>"$work/worker.log" || status=$?
[ $status -eq 2 ] || { echo "the installed program that runs jobs ended with $status"; cat "$work/worker.log"; exit 1; }
mkdir "$work/out"
QT_QPA_PLATFORM=offscreen "$prefix/bin/zorhost" --settings "$work/settings.ini" \
  --define "SAMPLES=$prefix/share/zorsdk/samples" --define "OUT=$work/out" \
  --script "$source/tests/package/open_console.zorscript" >"$work/host.log" 2>&1 ||
  { cat "$work/host.log"; exit 1; }
if grep 'jobs run in threads' "$work/host.log"; then
  echo "the installed host cannot use the installed program that runs jobs"
  exit 1
fi
QT_QPA_PLATFORM=offscreen "$prefix/bin/zorhost" --version
