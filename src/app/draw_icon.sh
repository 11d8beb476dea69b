#!/bin/sh
# Draws corvane.ico: an antenna that sends, at every size that Windows asks for. Needs ImageMagick.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Strokes along a circle around the antenna's head. $1: radius, $2 and $3: from and to, in degrees.
arc() {
  awk -v r="$1" -v from="$2" -v to="$3" 'BEGIN {
    for (a = from; a < to; a += 5) {
      b = a + 5
      printf "line %.1f,%.1f %.1f,%.1f ", 128 + r * cos(a * 3.14159 / 180),
        86 + r * sin(a * 3.14159 / 180), 128 + r * cos(b * 3.14159 / 180),
        86 + r * sin(b * 3.14159 / 180)
    }
  }'
}

# $1: size in pixels of one picture. Small ones do without the outer waves.
draw() {
  waves="$(arc 44 140 220) $(arc 44 320 400)"
  outer="$(arc 84 140 220) $(arc 84 320 400)"
  stroke=14
  if [ "$1" -le 24 ]; then
    outer=''
    stroke=20
  fi
  convert -size 256x256 xc:none \
    -fill '#17405f' -draw 'roundrectangle 4,4 251,251 48,48' \
    -fill none -stroke '#ffffff' -strokewidth "$stroke" \
    -draw "stroke-linecap round $waves $outer" \
    -draw 'stroke-linecap round line 128,100 92,222 line 128,100 164,222 line 106,178 150,178' \
    -stroke none -fill '#ff8000' -draw 'circle 128,86 128,64' \
    -filter Lanczos -resize "$1x$1" "PNG32:$work/$1.png"
}

for size in 16 20 24 32 40 48 64 256; do
  draw "$size"
done
convert "$work/16.png" "$work/20.png" "$work/24.png" "$work/32.png" "$work/40.png" \
  "$work/48.png" "$work/64.png" "$work/256.png" corvane.ico
