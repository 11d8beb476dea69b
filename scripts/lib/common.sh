# Shared by the scripts: where things are, plain messages, logs. Sourced, not run.
set -euo pipefail

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
BUILD=$ROOT/build
LOGS=$BUILD/logs
JOBS=$(nproc)
mkdir -p "$LOGS"
# Some bare environments have no home folder set; wine and pulseaudio insist on one.
export HOME=${HOME:-$BUILD/home}
mkdir -p "$HOME"

say() { printf '%s\n' "$*"; }
step() { printf '\n== %s\n' "$*"; }
die() {
  printf 'error: %s\n' "$*" >&2
  exit 1
}

# run_logged NAME COMMAND...: runs with all output in build/logs/NAME.log; shows the end of it when
# the command fails, and gives the command's exit code.
run_logged() {
  local log=$LOGS/$1.log code=0
  shift
  mkdir -p "$(dirname "$log")"
  "$@" >"$log" 2>&1 </dev/null || code=$?
  if [ "$code" -ne 0 ]; then
    say "failed (exit code $code): $*"
    show_tail "$log"
  fi
  return "$code"
}

show_tail() {
  say "--- end of ${1#"$ROOT"/} ---"
  tail -n 40 "$1"
  say "---"
}

# Everything that must be ended when the script ends, newest first. Processes are ended by the id
# they were started with.
CLEANUPS=()
at_exit() { CLEANUPS=("$*" "${CLEANUPS[@]}"); }
run_cleanups() {
  local code=$? cleanup
  for cleanup in "${CLEANUPS[@]}"; do eval "$cleanup" || true; done
  return "$code"
}
trap run_cleanups EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# ON where warnings are to be errors.
WERROR=OFF

configure() {
  run_logged "configure-$1" cmake -S "$ROOT" --preset "$1" -DCORVANE_WERROR="$WERROR"
}

# configure_and_build PRESET TARGET...: without targets, everything.
configure_and_build() {
  local preset=$1
  shift
  configure "$preset" || return 1
  # Built by another compiler before: cmake has then forgotten whatever else was wanted.
  if grep -q 'require your cache to be deleted' "$LOGS/configure-$preset.log"; then
    configure "$preset" || return 1
  fi
  run_logged "build-$preset" cmake --build "$BUILD/$preset" -j "$JOBS" \
    ${1:+--target "$@"} || return 1
}
