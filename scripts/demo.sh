#!/bin/bash
# Shows Corvane at work with a stand-in for SDR#: calls are followed, one is recorded, and what
# happens is told as it happens. Pictures of both programs are left in demo-output/.
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
    -h | --help) sed -n '2,5s/^# \{0,1\}//p' "$0" && exit 0 ;;
  esac
done

need_packages $BUILD_PACKAGES $RUN_PACKAGES
build_programs
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
rm -f demo-output/*.png demo-output/*.wav
cp dist/Corvane.exe "$FOLDER"
cp samples/*.txt "$FOLDER"

step "Corvane follows calls"
CORVANE_PROGRAMS=$(windows_path "$ROOT/dist") wine_here \
  "$BUILD/mingw/demo/demo_driver.exe" --folder "$(windows_path "$FOLDER")" \
  --scenario "$(windows_path "$ROOT/demo/demo.scenario")" \
  --pictures "$(windows_path "$ROOT/demo-output")" "$@" 2>"$LOGS/demo.log" </dev/null |
  sed -u 's/\r$//'

find "$FOLDER" -name '*.wav' -exec cp {} demo-output/ \;
say ""
say "left in demo-output/:"
ls demo-output
