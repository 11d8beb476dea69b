#!/bin/bash
# Takes pictures of the main window's pages, of compact mode and of the editor in its states, at
# each scale and in light-on-dark colours, and of the message boxes; looks for text that is cut off,
# for controls that lie over others or leave their frame; and compares them with the approved ones.
#   --approve   takes them over as approved; look at each before it is committed
# The pictures are in build/pictures/, those that differ in build/pictures/differences/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/wine.sh

APPROVED=tests/pictures
# Edges of letters may differ by this much, and so many pixels of ten thousand by more.
FUZZ=15%
MOST_DIFFERING=5

case ${1:-} in
  '' | --approve) ;;
  *) sed -n '2,7s/^# \{0,1\}//p' "$0" && exit 2 ;;
esac

need_packages $BUILD_PACKAGES $RUN_PACKAGES imagemagick
configure_and_build mingw window_pictures || die "the pictures' program could not be built"
start_display 2000x1300
use_wine_prefix wine-pictures N

taken=$BUILD/pictures
rm -rf "$taken"
mkdir -p "$taken/differences"
code=0
wine_here "$BUILD/mingw/tests/desktop/window_pictures.exe" "$(windows_path "$taken")" \
  2>/dev/null | tr -d '\r' || code=1

wine_version=$(wine_here --version)
if [ "${1:-}" = --approve ]; then
  mkdir -p "$APPROVED"
  rm -f "$APPROVED"/*.png
  cp "$taken"/*.png "$APPROVED"
  printf '%s\n' "$wine_version" >"$APPROVED/taken-with.txt"
  say "approved: $(find "$APPROVED" -name '*.png' | wc -l) pictures"
  exit "$code"
fi

# Another system draws letters and title bars in another way.
if [ "$wine_version" != "$(cat "$APPROVED/taken-with.txt")" ]; then
  say "the approved pictures were taken with $(cat "$APPROVED/taken-with.txt"), this is" \
    "$wine_version: not compared"
  exit "$code"
fi
compared=0
for approved in "$APPROVED"/*.png; do
  name=$(basename "$approved")
  compared=$((compared + 1))
  differing=$(compare -metric AE -fuzz "$FUZZ" "$approved" "$taken/$name" \
    "$taken/differences/$name" 2>&1 >/dev/null || true)
  read -r width height <<<"$(identify -format '%w %h\n' "$approved")"
  pixels=$((width * height))
  case $differing in
    '' | *[!0-9]*)
      say "$name: cannot be compared: $differing"
      code=1
      ;;
    *)
      if [ $((differing * 10000)) -gt $((pixels * MOST_DIFFERING)) ]; then
        say "$name: $differing of $pixels pixels differ"
        code=1
      else
        rm -f "$taken/differences/$name"
      fi
      ;;
  esac
done
[ "$compared" -gt 0 ] || die "there are no approved pictures"
new=$(find "$taken" -maxdepth 1 -name '*.png' | wc -l)
[ "$new" -eq "$compared" ] || die "$new pictures were taken, $compared are approved"
say "$compared pictures compared"
exit "$code"
