#!/bin/bash
# Builds and runs the tests. Without arguments every level, else the named ones:
#   lint native contract desktop package browser simulation fuzz bench
# Installs first what is missing. Ends with one line "N passed, N failed"; logs in build/logs.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/wine.sh
source scripts/lib/programs.sh
source scripts/lib/results.sh
source scripts/lib/levels.sh
source scripts/lib/companion.sh
source scripts/lib/desktop.sh
source scripts/lib/browser.sh

ALL_LEVELS="lint native contract desktop package browser simulation fuzz bench"
LEVELS=${*:-$ALL_LEVELS}
for level in $LEVELS; do
  [[ " $ALL_LEVELS " == *" $level "* ]] || die "no level '$level'; there are: $ALL_LEVELS"
done

WERROR=ON
need_packages $BUILD_PACKAGES $RUN_PACKAGES $TEST_PACKAGES $PACKAGE_PACKAGES
[[ " $LEVELS " != *" browser "* ]] || need_packages $BROWSER_PACKAGES
for level in $LEVELS; do
  step "$level"
  SECONDS=0
  case $level in
    contract | desktop) build_beside $LEVELS ;;
    browser | simulation | bench) await_built_beside ;;
  esac
  "level_$level"
  say "$level took $SECONDS s"
done
say ""
report
