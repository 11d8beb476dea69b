#!/bin/bash
# Opens reports in a browser without a window: a day of 100,000 calls made by the stand-in's
# traffic, and ten such days. Measures opening and filtering, plays, walks the queue by keyboard,
# filters, exports, compares totals with the logs, and sees to it that nothing is asked of any
# network. Takes pictures of the report, to be looked at: build/report-in-browser/*.png. axe-core,
# which looks for what hinders people with a screen reader or a keyboard, comes from npm.
#   --small     one day of 2,500 calls alone
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/programs.sh

case ${1:-} in
  '' | --small) ;;
  *) sed -n '2,7s/^# \{0,1\}//p' "$0" && exit 2 ;;
esac

need_packages $BENCH_PACKAGES $BROWSER_PACKAGES
build_native_tools
configure_and_build native make_day || die "the generator of day folders could not be built"
AXE_VERSION=4.14.1
axe=$BUILD/axe-core-$AXE_VERSION/package/axe.min.js
if [ ! -f "$axe" ]; then
  command -v npm >/dev/null || need_packages npm
  mkdir -p "$BUILD/axe-core-$AXE_VERSION"
  (cd "$BUILD/axe-core-$AXE_VERSION" && npm pack --silent "axe-core@$AXE_VERSION" &&
    tar -xzf "axe-core-$AXE_VERSION.tgz") || die "axe-core could not be fetched"
fi
make_day=$BUILD/native/bench/make_day
out=$BUILD/report-in-browser
rm -rf "$out"
mkdir -p "$out"

# report NAME CALLS PER_HOUR SHORTEST_MS LONGEST_MS RECORDINGS
report() {
  local name=$1 begin
  shift
  "$make_day" "$out/$name/Daily" "$@" >"$out/$name.txt"
  begin=$(date +%s%N)
  dist/corvane-tools report "$out/$name"/Daily/* -o "$out/$name.html"
  echo "$name: the report took $((($(date +%s%N) - begin) / 1000000)) ms"
}

report day 2500 900 4000 25000 60
python=/usr/bin/python3
"$python" scripts/lib/report_browser.py use "$out/day.html" "$out/day" "$axe"
[ "${1:-}" != --small ] || exit 0
report large-day 100000 9000 150 400 200
"$python" scripts/lib/report_browser.py measure "$out/large-day.html" 1000 16
report ten-days 1000000 9000 150 400 0
"$python" scripts/lib/report_browser.py measure "$out/ten-days.html" 0 100
