# The desktop level: cases that drive the two finished programs. Each runs in a process of its own:
# one that fails or hangs spoils no other.
#
# The cases that need the fixed port run one after the other. Those about files need none and run
# beside them, in a prefix and on a screen of their own, and step back where both want a processor.
#
# Corvane waits 200 ms for an answer of SDR# and then goes on without it, as it must. So that a
# machine with much else to do does not come between them, the cases go first where this user may
# say so.

PORT_PROGRAMS="desktop_test persistence_link_test"
FILE_PROGRAMS="persistence_test window_life_test"
DESKTOP_CASE_LIMIT=${DESKTOP_CASE_LIMIT:-600}

level_desktop() {
  rm -rf "$LOGS/desktop"
  mkdir -p "$LOGS/desktop"
  # shellcheck disable=SC2086
  if ! (build_programs && configure_and_build mingw $PORT_PROGRAMS $FILE_PROGRAMS screenshot); then
    fail "desktop: build"
    return
  fi
  be_nice -10
  if ! prepare_wine; then
    fail "desktop: surroundings"
    return
  fi
  local beside
  file_cases >"$LOGS/desktop/file-cases.txt" 2>&1 </dev/null &
  beside=$!
  at_exit "kill $beside 2>/dev/null; wait $beside 2>/dev/null"
  use_small_disk small-disk
  run_desktop_programs $PORT_PROGRAMS | tee "$LOGS/desktop/port-cases.txt"
  wait "$beside" || fail "desktop: the cases about files ended early"
  cat "$LOGS/desktop/file-cases.txt"
  count_desktop_cases "$LOGS/desktop/port-cases.txt"
  count_desktop_cases "$LOGS/desktop/file-cases.txt"
  be_nice 0
}

# be_nice N: of what is started from here on.
be_nice() { renice -n "$1" -p "$BASHPID" >/dev/null 2>&1 || true; }

file_cases() {
  CLEANUPS=()
  trap run_cleanups EXIT
  trap 'exit 143' TERM
  be_nice 5
  start_display
  use_wine_prefix wine-files N
  use_small_disk small-disk-files
  # shellcheck disable=SC2086
  run_desktop_programs $FILE_PROGRAMS
}

# run_desktop_programs PROGRAM...: all their cases, a line for each, and at last one that says so.
run_desktop_programs() {
  local program tests names name
  for program in "$@"; do
    tests=$BUILD/mingw/tests/desktop/$program.exe
    names=$(wine_here "$tests" --gtest_list_tests "--gtest_filter=$CASES" 2>/dev/null |
      tr -d '\r' | awk '/^[^ ]/ {suite = $1} /^  / {print suite $1}') || names=
    [ -n "$names" ] || [ -n "${DESKTOP_FILTER:-}" ] || say "FAILED  $program lists no case"
    for name in $names; do
      run_desktop_case "$tests" "$name"
    done
  done
  say "end     of $*"
}

# count_desktop_cases FILE: adds what the lines in it say.
count_desktop_cases() {
  local result name found= ended=
  while read -r result name _; do
    case $result in
      ok) found=yes && pass ;;
      FAILED) found=yes && fail "desktop: $name" ;;
      end) ended=yes ;;
    esac
  done <"$1"
  [ -n "$ended" ] || fail "desktop: $(basename "$1") ended before its last case"
  [ -n "$found" ] || [ -n "${DESKTOP_FILTER:-}" ] || fail "desktop: no case in $(basename "$1")"
}

# use_small_disk NAME: a file system with hardly more room than the program needs for the cases that
# fill it; and which cases are run, in CASES. Only root can mount one, and not in every container.
use_small_disk() {
  local folder=$BUILD/$1
  CASES=${DESKTOP_FILTER:-*}
  mkdir -p "$folder"
  if mount -t tmpfs -o size=16m corvane-small-disk "$folder" 2>/dev/null; then
    at_exit "umount -l '$folder' 2>/dev/null"
    CORVANE_SMALL_DISK=$(windows_path "$folder")
    export CORVANE_SMALL_DISK
    return
  fi
  say "no small disk can be mounted here: the cases of a full disk are left out"
  case $CASES in
    *-*) CASES="$CASES:*FullDisk*" ;;
    *) CASES="$CASES-*FullDisk*" ;;
  esac
}

# run_limited NAME PROGRAM ARGUMENTS...: ends it after the limit, with a picture of the screen taken
# before: once it is gone its windows are gone too.
run_limited() {
  local name=$1 program
  shift
  "$WINELOADER" "$@" &
  program=$!
  (
    for _ in $(seq "$DESKTOP_CASE_LIMIT"); do
      sleep 1
      kill -0 "$program" 2>/dev/null || exit 0
    done
    echo "ended after $DESKTOP_CASE_LIMIT s"
    timeout 20 "$WINELOADER" "$BUILD/mingw/tests/desktop/screenshot.exe" \
      "$(windows_path "$LOGS/desktop/$name.png")" || echo "no picture could be taken"
    kill -KILL "$program"
  ) &
  wait "$program"
}

run_desktop_case() {
  local tests=$1 name=$2 code=0 begin=$SECONDS
  CORVANE_PROGRAMS=$(windows_path "$ROOT/dist") \
    CORVANE_PICTURES=$(windows_path "$LOGS/desktop") \
    GTEST_OUTPUT="xml:$(windows_path "$LOGS/desktop/$name.xml")" \
    run_logged "desktop/$name" run_limited "${name//\//-}" "$tests" "--gtest_filter=$name" ||
    code=$?
  if [ "$code" -eq 0 ] && grep -q '^\[  PASSED  \] 1 test' "$LOGS/desktop/$name.log"; then
    say "ok      $name ($((SECONDS - begin)) s)"
  else
    say "FAILED  $name; pictures in build/logs/desktop"
  fi
}

