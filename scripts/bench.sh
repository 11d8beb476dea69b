#!/bin/bash
# Measures: all benchmarks, natively and with real windows, one after the other, for as long as good
# figures take; then one table with something to compare each figure with. The figures are in
# build/logs/bench/figures.csv, what the programs printed lies beside it. Arguments go to the native
# programs: --benchmark_filter=... leaves out what the table needs. Installs first what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/wine.sh
source scripts/lib/programs.sh
source scripts/lib/results.sh
source scripts/lib/levels.sh

need_packages $BUILD_PACKAGES $RUN_PACKAGES $BENCH_PACKAGES python3
BENCH_ARGUMENTS="--benchmark_repetitions=5 $*"
BENCH_CALLS=200
BENCH_LOAD="60 1 4 8 12 15 17 20"
BENCH_USAGE_SECONDS=30
level_bench
report
