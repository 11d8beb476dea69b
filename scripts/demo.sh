#!/bin/bash
# Shows Corvane at work with a stand-in for SDR#: calls are followed, one is recorded, and what
# happens is told as it happens. Then a report of these calls is made. Pictures of both programs and
# of the report are left in demo-output/.
#   --keep-open   leaves both windows open until Corvane's is closed
#   --calls N     ends after N calls (3)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/wine.sh
source scripts/lib/programs.sh

for word in "$@"; do
  case $word in
    -h | --help) sed -n '2,6s/^# \{0,1\}//p' "$0" && exit 0 ;;
  esac
done

# report_picture PAGE PICTURE: as a browser shows it. What it says goes to its log.
report_picture() {
  local profile code=0
  profile=$(mktemp -d)
  # Chromium's own sandbox does not start for root.
  timeout 60 chromium --headless --disable-gpu --no-first-run --disable-background-networking \
    --disable-component-update --disable-sync --disable-dev-shm-usage \
    $([ "$(id -u)" -ne 0 ] || echo --no-sandbox) --user-data-dir="$profile" --hide-scrollbars \
    --window-size=1280,1700 --screenshot="$ROOT/$2" "file://$ROOT/$1" \
    >"$LOGS/report-picture.log" 2>&1 || code=$?
  rm -rf "$profile"
  [ "$code" -eq 0 ] && [ -s "$2" ]
}

need_packages $BUILD_PACKAGES $TOOLS_PACKAGES $RUN_PACKAGES chromium
build_programs
build_native_tools
configure_and_build mingw demo_driver || die "the demonstration could not be built"

if display_usable; then
  use_wine_prefix wine-desktop Y
  # What is recorded is what is heard, not a microphone.
  export PULSE_SOURCE=@DEFAULT_MONITOR@
  pactl info >/dev/null 2>&1 || start_sound || die "no sound server could be started"
else
  say "no display: using a virtual one"
  start_display
  use_wine_prefix wine N
  start_sound || die "no sound server could be started"
fi

FOLDER=$BUILD/demo
rm -rf "$FOLDER"
mkdir -p "$FOLDER" demo-output
rm -f demo-output/*.png demo-output/*.wav demo-output/*.html
cp dist/Corvane.exe "$FOLDER"
cp samples/*.txt "$FOLDER"

step "Corvane follows calls"
CORVANE_PROGRAMS=$(windows_path "$ROOT/dist") wine_here \
  "$BUILD/mingw/demo/demo_driver.exe" --folder "$(windows_path "$FOLDER")" \
  --scenario "$(windows_path "$ROOT/demo/demo.scenario")" \
  --pictures "$(windows_path "$ROOT/demo-output")" "$@" 2>"$LOGS/demo.log" </dev/null |
  sed -u 's/\r$//'

find "$FOLDER" -name '*.wav' -exec cp {} demo-output/ \;

step "What happened, to look back at"
dist/corvane-tools report "$FOLDER"/Daily/* -o demo-output/report.html
report_picture demo-output/report.html demo-output/report.png ||
  say "no picture of the report could be taken: $(tail -n 1 "$LOGS/report-picture.log")"
say ""
say "left in demo-output/:"
ls demo-output
