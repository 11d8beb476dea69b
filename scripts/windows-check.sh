#!/bin/bash
# Makes dist/Corvane-<version>-windows-check.zip: the tests that run on Windows as they are, with
# both programs and one command that starts them and writes a report. See docs/windows-check.md.
#   scripts/windows-check.sh                 makes it
#   scripts/windows-check.sh --run [FILTER]  makes it, unpacks it and runs it under Wine; FILTER is
#                                            GoogleTest's
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/programs.sh
source scripts/lib/wine.sh

RUN=
FILTER=
case ${1:-} in
  --run) RUN=yes FILTER=${2:-} ;;
  "") ;;
  *) die "$(sed -n '2,6s/^# \{0,1\}//p' "${BASH_SOURCE[0]}")" ;;
esac

need_packages $BUILD_PACKAGES $RUN_PACKAGES $TEST_PACKAGES
build_programs
step "Building the tests for Windows"
configure_and_build mingw contract_win contract_win_mci desktop_test persistence_test \
  persistence_link_test latency_bench windows_check || die "the tests could not be built"
step "Packing"
ZIP=dist/Corvane-$(package_version)-windows-check.zip
python3 scripts/lib/pack_check.py "$ZIP"
say "$ZIP is ready"
[ -n "$RUN" ] || exit 0

step "Running it under Wine"
FOLDER=$BUILD/windows-check
rm -rf "$FOLDER"
mkdir -p "$FOLDER"
python3 -m zipfile -e "$ZIP" "$FOLDER"
FOLDER=$(echo "$FOLDER"/*)
start_display
start_sound
use_wine_prefix wine-check N
code=0
export CORVANE_CHECK_UNATTENDED=1
(cd "$FOLDER" && wine_here cmd /c check.cmd ${FILTER:+"$FILTER"} </dev/null) || code=$?
[ -s "$FOLDER/report.txt" ] || die "there is no report"
tail -n 1 "$FOLDER/report.txt" | grep -Eq '^[1-9][0-9]* passed, 0 failed' || code=1
exit "$code"
