#!/bin/bash
# Installs what is missing, builds with warnings as errors, and runs all tests; then the tests of the
# SDK and of the bench once more under the address and undefined-behaviour sanitizers.
#
#   ./test.sh                everything
#   ./test.sh ci             only the first half
#   ./test.sh asan           only the second half
#   ./test.sh long           nothing of these, but what takes too long for every day: a minute of fuzzing for
#                            each target, the tests of threads under the thread sanitizer, hundreds of random
#                            users under the other sanitizers, clang-tidy and clazy over everything, the
#                            interfaces of the libraries, every file compiled alone, all walks through the host on
#                            all screens, and docs/adding-a-dialog.md followed to the letter
#   ./test.sh fuzz           only the fuzzing
#   ./test.sh tsan           only the thread sanitizer
#   ./test.sh random         only the random users
#   ./test.sh analyze        only clang-tidy and clazy
#   ./test.sh abi            only the interfaces of the libraries
#   ./test.sh abi --update   only rewrites the baseline of the interfaces
#   ./test.sh alone          only sources without the precompiled headers, and private headers by themselves
#   ./test.sh walks          only the walks through the host
#   ./test.sh page           only the page about dialogs
set -eu
cd "$(dirname "$0")"
. tools/packages.sh
install_packages $run_packages $test_packages

# timed COMMAND... : runs it and says how long it took.
timed() {
  local start=$SECONDS
  "$@"
  echo "$* took $((SECONDS - start)) s"
}

# configure PRESET : quiet unless it fails.
configure() {
  mkdir -p build
  cmake --preset "$1" >"build/configure-$1.log" 2>&1 || { cat "build/configure-$1.log"; exit 1; }
}

# Inputs that the engine makes for each target; see tests/fuzz.
run_fuzzers() {
  install_packages $fuzz_packages
  configure fuzz
  cmake --build --preset fuzz --target fuzz_programs
  tests/fuzz/run.sh 60
}

run_thread_sanitizer() {
  configure tsan
  cmake --build --preset tsan --target thread_tests
  ctest --preset tsan -L threads -E random_hash
}

# Each user has a seed; a failure prints the seed and what the user did. See CONTRIBUTING.md.
run_random_users() {
  configure asan
  cmake --build --preset asan --target random_user
  build/asan/bin/random_user --seeds 1001-1300 --actions 400 --parallel "$(nproc)"
}

# Builds first, since sources include generated files.
analyze_everything() {
  install_packages $analysis_packages
  configure ci
  cmake --build --preset ci
  python3 tools/analyze.py . build/ci
}

# Debug libraries have all that is compared, are quick to build, and no function stands in for an equal one. An option goes
# to the check.
check_interfaces() {
  configure dev
  cmake --build --preset dev --target sdk_libraries
  [ $# = 0 ] || { python3 tools/check_abi.py . build/dev "$@"; return; }
  python3 -B tests/tree/check_abi_test.py
  python3 tools/check_abi.py . build/dev
}

compile_alone() {
  configure ci
  cmake --build --preset ci
  python3 tools/check_alone.py . build/ci
}

# With a real mouse and keyboard on virtual screens; the pictures are in build/ci/walk_pictures. See CONTRIBUTING.md.
run_walks() {
  configure ci
  cmake --build --preset ci --target walk_programs
  local failed=0 screen size theme scale
  for screen in "1024x700 light 1" "1024x700 dark 1" "1920x1080 light 1" "1920x1080 light 1.25" "1920x1080 dark 1.5" \
    "1920x1080 light 2" "1920x1080 dark 2" "3840x2160 light 2"; do
    read -r size theme scale <<<"$screen"
    ZOR_SCREEN=$size tools/with_display.sh python3 -B tests/walks/run_walk.py --build build/ci --theme "$theme" \
      --scale "$scale" || failed=1
  done
  python3 -B tests/walks/make_sheets.py build/ci/walk_pictures
  return $failed
}

follow_page() {
  python3 tests/docs/follow_adding_a_dialog.py .
}

what=${1:-all}
case "$what" in
  fuzz) timed run_fuzzers; exit ;;
  tsan) timed run_thread_sanitizer; exit ;;
  random) timed run_random_users; exit ;;
  analyze) timed analyze_everything; exit ;;
  abi) shift; timed check_interfaces "$@"; exit ;;
  alone) timed compile_alone; exit ;;
  walks) timed run_walks; exit ;;
  page) timed follow_page; exit ;;
  long)
    timed run_fuzzers
    timed run_thread_sanitizer
    timed run_random_users
    timed analyze_everything
    timed check_interfaces
    timed compile_alone
    timed run_walks
    timed follow_page
    if [ -n "$(git status --porcelain)" ]; then
      echo "Passed. tools/long_passed.txt stays as it is, since there are changes without a commit."
    else
      git rev-parse HEAD >tools/long_passed.txt
      echo "Passed. Please commit tools/long_passed.txt: CI analyzes what differs from that commit."
    fi
    exit ;;
esac
if [ "$what" != asan ]; then
  configure ci
  timed cmake --build --preset ci
  timed cmake --build --preset ci --target all_verify_interface_header_sets
  timed ctest --preset ci -j2
  install_packages $analysis_packages
  timed python3 tools/analyze.py . build/ci --since-long
fi
if [ "$what" != ci ]; then
  configure asan
  timed cmake --build --preset asan --target sanitized_tests
  timed ctest --preset asan -j2 -L "sdk|bench" -LE host -E "random_hash|plugin_library"
fi
