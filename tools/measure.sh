#!/bin/bash
# Builds the benchmarks and fills the tables of docs/performance.md with what they measure. Run it on an idle machine.
#
#   tools/measure.sh                     every table but those that take long, see tools/measurements.toml
#   tools/measure.sh geometry jobs.nesting    tables of these names or sections alone
#   tools/measure.sh nesting             the densities of the nesting solver: two hours, most of them on two cores
#   tools/measure.sh --quick             a trial run with small sizes, which leaves the page as it is
#   tools/measure.sh --compare OLD.json  prints in the end what is slower than in the results of another run
#
# The results are in build/benchmark/measured.json as well, table by table: a run that was interrupted goes on with the
# names of the tables that it did not reach. `tools/measure.py --help` lists all options.
set -eu
cd "$(dirname "$0")/.."
cmake --preset benchmark >/dev/null
cmake --build --preset benchmark
exec python3 tools/measure.py . build/benchmark "$@"
