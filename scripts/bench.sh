#!/bin/bash
# Builds the benchmarks and runs them one after the other, with their figures on the terminal.
# Arguments go to each program: --short, or --benchmark_filter=... and whatever else the benchmark
# library knows. Installs first what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh

need_packages $BENCH_PACKAGES
step "Building the benchmarks"
configure_and_build native benchmarks || die "the benchmarks could not be built"
code=0
for program in "$BUILD"/native/bench/bench_*; do
  [ -f "$program" ] && [ -x "$program" ] || continue
  step "$(basename "$program")"
  "$program" "$@" || code=1
done
exit $code
