#!/bin/bash
# One lane of the desktop level: desktop_lane.sh NUMBER KIND...
# Takes case after case from the lists of the named kinds until they are empty, with a screen, a
# prefix, sound and a small disk of its own. A line for each case.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source scripts/lib/common.sh
source scripts/lib/wine.sh
source scripts/lib/desktop.sh

lane=$1
shift
SURROUNDINGS=-lane-$lane

# A file system with hardly more room than the program needs, for the cases that fill it.
use_small_disk() {
  local folder=$BUILD/small-disk-$lane
  mkdir -p "$folder"
  mount -t tmpfs -o size=16m corvane-small-disk "$folder" 2>/dev/null || return 0
  at_exit "umount -l '$folder' 2>/dev/null"
  CORVANE_SMALL_DISK=$(windows_path "$folder")
  export CORVANE_SMALL_DISK
}

# next_case KIND...: takes the first case of the first list that has one, and says "KIND PROGRAM
# CASE". Fails when nothing is left.
next_case() {
  local kind list taken
  exec 9>"$LOGS/desktop/to-run-lock"
  flock 9
  for kind in "$@"; do
    list=$LOGS/desktop/to-run-$kind
    taken=$(head -n 1 "$list")
    [ -n "$taken" ] || continue
    sed -i 1d "$list"
    echo "$kind $taken"
    return 0
  done
  return 1
}

be_nice -10
keep_to_one_core "$lane"
[ -z "$OWN_NETWORK" ] || python3 scripts/lib/loopback_up.py
start_display
start_sound
use_wine_prefix "wine-lane-$lane" N
use_small_disk
while taken=$(next_case "$@"); do
  read -r kind program name <<<"$taken"
  (
    [ "$kind" != file ] || be_nice 0
    run_desktop_case "$BUILD/mingw/tests/desktop/$program.exe" "$name"
  ) | tee -a "$LOGS/desktop/lane-$lane.txt"
done
