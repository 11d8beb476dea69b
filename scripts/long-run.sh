#!/bin/bash
# Lets the finished program follow busy traffic for so many minutes (30 when none are named), then
# the simulated one for so many virtual days (30); leaves two pictures and the figures behind them
# in build/logs/long-run. Ends with 1 when something grows. Installs first what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/wine.sh
source scripts/lib/programs.sh

MINUTES=${1:-30}
DAYS=${2:-30}
[[ $MINUTES =~ ^[0-9]+$ && $DAYS =~ ^[0-9]+$ ]] || die "usage: scripts/long-run.sh [MINUTES [DAYS]]"
FOLDER=$LOGS/long-run

need_packages $BUILD_PACKAGES $RUN_PACKAGES $BENCH_PACKAGES gnuplot-nox
mkdir -p "$FOLDER"
WRONG=0

# run_to NAME COMMAND...: the figures of a run in NAME.csv; what it says in the end is shown.
run_to() {
  local name=$1
  shift
  "$@" >"$FOLDER/$name.csv" 2>"$FOLDER/$name.txt" </dev/null || WRONG=1
  sed -i 's/\r$//' "$FOLDER/$name.csv" "$FOLDER/$name.txt"
  say "$name: $(tail -n 1 "$FOLDER/$name.txt")"
}

# plot NAME TITLE SECONDS_OR_HOURS COLUMN_AND_LABEL...
plot() {
  local name=$1 title=$2 axis=$3 rows=() column
  shift 3
  for column in "$@"; do
    rows+=("plot file using 1:${column%% *} with lines lw 2 title '${column#* }'")
  done
  gnuplot <<EOF
set terminal pngcairo size 900,$((190 * ${#rows[@]} + 60)) font 'Liberation Sans,10'
set output '$FOLDER/$name.png'
set datafile separator ','
file = '< tail -n +2 $FOLDER/$name.csv'
set multiplot layout ${#rows[@]},1 title '$title'
set yrange [0:*]
set offsets graph 0, 0, graph 0.15, 0
set xlabel '$axis'
set key left bottom
set grid ytics lc rgb '#dddddd'
$(printf '%s\n' "${rows[@]}")
unset multiplot
EOF
}

if [ "$MINUTES" -gt 0 ]; then
  build_programs
  configure_and_build mingw long_run || die "the driver could not be built"
  start_display
  start_sound || die "no sound"
  use_wine_prefix wine N
  step "$MINUTES minutes of busy traffic in the finished program"
  CORVANE_PROGRAMS=$(windows_path "$ROOT/dist") \
    run_to program "$WINELOADER" "$BUILD/mingw/tests/desktop/long_run.exe" "$MINUTES"
  plot program "The finished program under busy traffic" seconds '2 memory, KiB' '3 handles' \
    '4 GDI objects' '5 USER objects' '7 processor, ms a second'
fi
if [ "$DAYS" -gt 0 ]; then
  configure_and_build native simulate || die "the simulation could not be built"
  step "$DAYS virtual days"
  run_to simulated "$BUILD/native/tests/simulation/simulate" --hours "$((DAYS * 24))"
  plot simulated "The simulated program under busy traffic" hours '2 heap in use, KiB' \
    '4 calls followed'
fi
say "the figures and pictures are in ${FOLDER#"$ROOT"/}"
[ "$WRONG" -eq 0 ]
