#!/bin/bash
# Installs what is missing, builds with warnings as errors, and runs all tests; then the tests of the
# SDK and of the bench once more under the address and undefined-behaviour sanitizers.
#
#   ./test.sh                everything
#   ./test.sh ci             only the first half
#   ./test.sh asan           only the second half
set -eu
cd "$(dirname "$0")"
. tools/packages.sh
install_packages $run_packages $test_packages

# configure PRESET : quiet unless it fails.
configure() {
  mkdir -p build
  cmake --preset "$1" >"build/configure-$1.log" 2>&1 || { cat "build/configure-$1.log"; exit 1; }
}

what=${1:-all}
if [ "$what" != asan ]; then
  configure ci
  cmake --build --preset ci
  cmake --build --preset ci --target all_verify_interface_header_sets
  ctest --preset ci -j2
fi
if [ "$what" != ci ]; then
  configure asan
  cmake --build --preset asan --target sanitized_tests
  ctest --preset asan -j2 -L "sdk|bench" -LE host -E "random_hash|plugin_library"
fi
