#!/bin/sh
# Checks the layout of every C++ file with clang-format 14. Run with --fix to apply it.
cd "$(dirname "$0")/.." || exit 2
mode="--dry-run -Werror"
[ "$1" = "--fix" ] && mode="-i"
formatter=$(command -v clang-format-14 || command -v clang-format) || { echo "clang-format is missing"; exit 2; }
find sdk bench host tests benchmarks \( -name '*.h' -o -name '*.cpp' \) -print0 | xargs -0 "$formatter" $mode
