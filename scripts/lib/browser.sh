# The report's page in a browser without a window.

AXE_VERSION=4.14.1
# The script of axe-core once it is there.
AXE=

# fetch_axe: axe-core, which looks for what hinders people with a screen reader or a keyboard, is no
# package of Debian. Fails where it is not there and npm cannot fetch it.
fetch_axe() {
  local folder=$BUILD/axe-core-$AXE_VERSION
  if [ ! -f "$folder/package/axe.min.js" ]; then
    command -v npm >/dev/null || return 1
    rm -rf "$folder"
    mkdir -p "$folder"
    (cd "$folder" && run_logged axe-core timeout 40 npm pack --silent "axe-core@$AXE_VERSION" &&
      tar -xzf "axe-core-$AXE_VERSION.tgz" package/axe.min.js) || return 1
  fi
  AXE=$folder/package/axe.min.js
}

# make_day NAME CALLS PER_HOUR SHORTEST_MS LONGEST_MS RECORDINGS: day folders of the stand-in's
# traffic, in $REPORTS/NAME.
make_day() {
  local name=$1
  shift
  "$BUILD/native/bench/make_day" "$REPORTS/$name/Daily" "$@" >"$REPORTS/$name.txt"
}

in_browser() { /usr/bin/python3 -B "$ROOT/scripts/lib/report_browser.py" "$@"; }

# use_report NAME TOOLS: makes the report of $REPORTS/NAME with that program and uses it. Results go
# to $REPORT_RESULTS.
use_report() {
  "$2" report "$REPORTS/$1"/Daily/* -o "$REPORTS/$1.html" || return 1
  # shellcheck disable=SC2086
  in_browser use "$REPORTS/$1.html" "$REPORTS/$1" "$2" $AXE
}

level_browser() {
  local code=0 tools=$BUILD/native/tools/corvane-tools
  REPORTS=$LOGS/browser
  rm -rf "$REPORTS"
  mkdir -p "$REPORTS"
  if ! configure_and_build native make_day corvane-tools; then
    fail "browser: build"
    return
  fi
  fetch_axe ||
    say "axe-core is not here and npm could not fetch it: its two cases are left out"
  make_day day 2500 900 4000 25000 60
  REPORT_RESULTS=$REPORTS/report_browser.xml run_logged browser/day use_report day "$tools" ||
    code=$?
  count_cases browser "report_browser=$code"
  make_day large-day 20000 9000 150 400 200
  run_one browser/figures figures_of_report "$tools"
  sed -n 's/^\(built\|opens\) /        a day of 20,000 calls: \1 /p' "$LOGS/browser/figures.log"
}

# What is told and not judged: a machine that does something else besides is slow.
figures_of_report() {
  timed_report large-day "$1" && in_browser measure "$REPORTS/large-day.html"
}

# timed_report NAME TOOLS [MOST_MS]: makes the report and tells the processor's time that it took;
# fails when that is more.
timed_report() {
  /usr/bin/python3 - "$REPORTS/$1.html" "${3:-0}" "$2" report "$REPORTS/$1"/Daily/* \
    -o "$REPORTS/$1.html" <<'PYTHON'
import os
import resource
import subprocess
import sys
import time

begin = time.monotonic()
subprocess.run(sys.argv[3:], check=True)
took = time.monotonic() - begin
used = resource.getrusage(resource.RUSAGE_CHILDREN)
processor = used.ru_utime + used.ru_stime
size = os.path.getsize(sys.argv[1])
print(f"built in {took:.2f} s, {processor:.2f} s of the processor; {size / 1e6:.1f} MB")
if 0 < int(sys.argv[2]) < 1000 * processor:
    sys.exit(f"FAILED: more than {sys.argv[2]} ms of the processor")
PYTHON
}
