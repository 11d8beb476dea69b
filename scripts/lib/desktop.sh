# The desktop level: cases that drive the two finished programs. Each runs in a process of its own:
# one that fails or hangs spoils no other.
#
# They wait for windows and calls more than they compute, so several lanes take case after case from
# one list, each with a screen, a prefix, sound and a network of its own: the port is fixed, and
# two programs that talk through it must be alone with it. Where no network can be made, one lane
# runs what needs the port and another the rest.
#
# Corvane waits 200 ms for an answer of SDR# and then goes on without it, as it must. So that a
# machine with much else to do does not come between them, the cases that need the port go first
# where this user may say so; those about files step back.

PORT_PROGRAMS="desktop_test persistence_link_test"
FILE_PROGRAMS="persistence_test window_life_test"
# Ten minutes of hands at random, in two cases, and three of faults.
HANDS_PROGRAMS="random_hands_test random_faults_test"
export CORVANE_RANDOM_SECONDS=${CORVANE_RANDOM_SECONDS:-300}
export CORVANE_FAULT_SECONDS=${CORVANE_FAULT_SECONDS:-180}
# These take minutes: they begin first, so that no lane is left alone with one at the end.
LONG_CASES="FiveIdleMinutes|KillTest|AThousand|BusyMinutes|ManyRecordings"
DESKTOP_LANES=${DESKTOP_LANES:-$((JOBS < 2 ? 3 : 6))}
DESKTOP_CASE_LIMIT=${DESKTOP_CASE_LIMIT:-900}

level_desktop() {
  local lane lanes=() kinds=()
  rm -rf "$LOGS/desktop"
  mkdir -p "$LOGS/desktop"
  # shellcheck disable=SC2086
  if ! (build_programs && configure_and_build mingw $PORT_PROGRAMS $FILE_PROGRAMS \
    $HANDS_PROGRAMS screenshot); then
    fail "desktop: build"
    return
  fi
  if ! prepare_wine; then
    fail "desktop: surroundings"
    return
  fi
  local cases=${DESKTOP_FILTER:-*}
  if ! can_mount_small_disk; then
    say "no small disk can be mounted here: the cases of a full disk are left out"
    case $cases in
      *-*) cases="$cases:*FullDisk*" ;;
      *) cases="$cases-*FullDisk*" ;;
    esac
  fi
  # shellcheck disable=SC2086
  list_desktop_cases port "$cases" $PORT_PROGRAMS
  # shellcheck disable=SC2086
  list_desktop_cases file "$cases" $FILE_PROGRAMS
  # shellcheck disable=SC2086
  list_desktop_cases hands "$cases" $HANDS_PROGRAMS

  mapfile -t kinds < <(lane_kinds)
  for lane in $(seq "${#kinds[@]}"); do
    # shellcheck disable=SC2086
    $OWN_NETWORK "$ROOT/scripts/lib/desktop_lane.sh" "$lane" ${kinds[lane - 1]} </dev/null 2>&1 &
    lanes+=($!)
    at_exit "kill $! 2>/dev/null; wait $! 2>/dev/null"
  done
  for lane in "${lanes[@]}"; do
    wait "$lane" || say "a lane ended early"
  done
  count_desktop_cases
}

# How a lane is started, so that it has a network of its own and may mount; empty: it cannot.
OWN_NETWORK=
if unshare -nm true 2>/dev/null; then
  OWN_NETWORK="unshare -nm"
elif unshare -rnm true 2>/dev/null; then
  OWN_NETWORK="unshare -rnm"
fi

# lane_kinds: a line for each lane with the kinds of cases it takes, the first before the others.
lane_kinds() {
  local lane
  if [ -z "$OWN_NETWORK" ]; then
    printf '%s\n' "port hands" file
    return
  fi
  for lane in $(seq "$DESKTOP_LANES"); do
    case $lane in
      1) echo "port file hands" ;;
      2) echo "file port hands" ;;
      *) echo "hands port file" ;;
    esac
  done
}

# list_desktop_cases KIND FILTER PROGRAM...: what is to be run, "PROGRAM CASE", the long ones first.
list_desktop_cases() {
  local filter=$2 program tests names list=$LOGS/desktop/to-run-$1
  shift 2
  for program in "$@"; do
    tests=$BUILD/mingw/tests/desktop/$program.exe
    names=$(wine_here "$tests" --gtest_list_tests "--gtest_filter=$filter" 2>/dev/null |
      tr -d '\r' | awk '/^[^ ]/ {suite = $1} /^  / {print suite $1}') || names=
    [ -n "$names" ] || [ -n "${DESKTOP_FILTER:-}" ] || fail "desktop: $program lists no case"
    for name in $names; do echo "$program $name"; done
  done >"$list-in-order"
  { grep -E "$LONG_CASES" "$list-in-order" || true
    grep -vE "$LONG_CASES" "$list-in-order" || true; } >"$list"
}

# Only root can mount one, and not in every container.
can_mount_small_disk() {
  local folder=$BUILD/small-disk
  mkdir -p "$folder"
  # shellcheck disable=SC2016
  $OWN_NETWORK sh -c 'mount -t tmpfs -o size=16m corvane-small-disk "$1" && umount "$1"' sh \
    "$folder" 2>/dev/null
}

# What the lanes say, against what was to be run.
count_desktop_cases() {
  local name
  while read -r _ name; do
    if grep -qsF "ok      $name (" "$LOGS/desktop"/lane-*.txt; then
      pass
    elif grep -qsF "FAILED  $name;" "$LOGS/desktop"/lane-*.txt; then
      fail "desktop: $name"
    else
      fail "desktop: $name was not run to its end"
    fi
  done < <(cat "$LOGS/desktop"/to-run-*-in-order)
  [ -s "$LOGS/desktop/to-run-port-in-order" ] || [ -n "${DESKTOP_FILTER:-}" ] ||
    fail "desktop: no case"
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
    say "FAILED  $name; $(first_failure "$LOGS/desktop/$name.log"); pictures in build/logs/desktop"
  fi
}

# first_failure LOG: what a case said first of what went wrong, in one line.
first_failure() {
  tr -d '\r' <"$1" | grep -a -m 1 -A 3 -E 'Failure$|^ended after' |
    sed -E '/^--$/d; s/: Failure$/:/' | tr '\n' ' ' | cut -c 1-300
}
