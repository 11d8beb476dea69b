#!/bin/bash
# Opens reports in a browser without a window: a day of 100,000 calls made by the stand-in's
# traffic, and ten such days. Plays, walks the queue by keyboard, filters, exports, compares totals
# with the logs, looks for harm done by labels, sees to it that nothing is asked of any network, and
# measures making, opening and filtering against their limits. Takes pictures of the report, to be
# looked at: build/report-in-browser/*.png. axe-core, which looks for what hinders people with a
# screen reader or a keyboard, comes from npm.
#   --small     one day of 2,500 calls alone
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/programs.sh
source scripts/lib/browser.sh

case ${1:-} in
  '' | --small) ;;
  *) sed -n '2,8s/^# \{0,1\}//p' "$0" && exit 2 ;;
esac

need_packages $BENCH_PACKAGES $BROWSER_PACKAGES
command -v npm >/dev/null || need_packages npm
fetch_axe || die "axe-core could not be fetched"
build_native_tools
configure_and_build native make_day || die "the generator of day folders could not be built"
REPORTS=$BUILD/report-in-browser
rm -rf "$REPORTS"
mkdir -p "$REPORTS"
tools=$ROOT/dist/corvane-tools

make_day day 2500 900 4000 25000 60
use_report day "$tools"
[ "${1:-}" != --small ] || exit 0

step "A day of 100,000 calls, 200 of them recorded"
make_day large-day 100000 9000 150 400 200
timed_report large-day "$tools" 3000
in_browser measure "$REPORTS/large-day.html" 1000 16

step "Ten days of 100,000 calls"
make_day ten-days 1000000 9000 150 400 0
timed_report ten-days "$tools"
in_browser measure "$REPORTS/ten-days.html" 0 100
