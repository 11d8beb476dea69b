#!/bin/bash
# Runs all fuzz targets for so many seconds in all (an hour when none are named), as many beside
# each other as there are processors, and ends with a table of executions and of what they reached.
# New inputs are kept in build/fuzz-inputs for the next run; what breaks a claim lies in
# build/fuzz-found. Installs first what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/programs.sh
source scripts/lib/results.sh
source scripts/lib/levels.sh

SECONDS_IN_ALL=${1:-3600}
[[ $SECONDS_IN_ALL =~ ^[1-9][0-9]*$ ]] || die "usage: scripts/fuzz.sh [SECONDS]"
TARGETS=$(grep -c '^corvane_fuzz(' fuzz/CMakeLists.txt)

need_packages $FUZZ_PACKAGES
FUZZ_SECONDS=$((SECONDS_IN_ALL * JOBS / TARGETS + 1))
FUZZ_SEED=0
level_fuzz
report
