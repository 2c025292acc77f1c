#!/bin/bash
# Fuzzes every target, or the named ones, for some seconds each, with the programs of the preset "fuzz".
#
#   tests/fuzz/run.sh [SECONDS] [TARGET...]
#
# What is found stays in build/fuzz/found, with the log of its run; once repaired it belongs into the corpus of the
# target. Inputs that reach new code stay in build/fuzz/corpora, with which the next run starts.
set -eu
cd "$(dirname "$0")/../.."
seconds=${1:-60}
shift || true
targets=${*:-$(ls tests/fuzz/corpus)}

# dictionary TARGET : the words of its format, if there are any.
dictionary() {
  case "$1" in
    contour_xml) echo xml ;;
    instance | nesting_json) echo json ;;
    container | msi | job_bytes) echo document ;;
    *) echo "$1" ;;
  esac
}

failed=""
mkdir -p build/fuzz/found
for target in $targets; do
  corpus=build/fuzz/corpora/$target
  words=tests/fuzz/dictionaries/$(dictionary "$target").dict
  options="-max_total_time=$seconds -timeout=60 -rss_limit_mb=3072 -malloc_limit_mb=2048 -max_len=8192 -print_final_stats=1"
  [ ! -f "$words" ] || options="$options -dict=$words"
  mkdir -p "$corpus"
  echo "fuzzing $target for $seconds s"
  if ! build/fuzz/bin/fuzz_"$target" $options -artifact_prefix=build/fuzz/found/"$target"- \
    "$corpus" tests/fuzz/corpus/"$target" >build/fuzz/found/"$target".log 2>&1; then
    failed="$failed $target"
    tail -n 60 build/fuzz/found/"$target".log
  fi
  grep -E "number_of_executed_units|new_units_added" build/fuzz/found/"$target".log || true
done
[ -z "$failed" ] || { echo "Found something in:$failed; see build/fuzz/found"; exit 1; }
