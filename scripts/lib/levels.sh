# The levels of the tests. A program that was not built is a failure, never a skipped step.

# How many simulated runs of ten minutes, how long each fuzz target runs, and how long
# one test program may take, in seconds.
SIMULATED_RUNS=${SIMULATED_RUNS:-2000}
FUZZ_SECONDS=${FUZZ_SECONDS:-8}
PROGRAM_LIMIT=900

level_lint() {
  run_one lint python3 scripts/lint.py
  sed -n 's/^note: /        /p' "$LOGS/lint.log"
}

level_native() {
  if ! configure_and_build sanitize; then
    fail "native: build"
    return
  fi
  rm -rf "$LOGS/native"
  mkdir -p "$LOGS/native"
  # Leaks cannot be looked for where a container forbids tracing: the sanitizer then says so.
  GTEST_OUTPUT="xml:$LOGS/native/" run_logged native/ctest ctest --test-dir "$BUILD/sanitize" \
    -j "$JOBS" --output-on-failure --no-tests=error --timeout "$PROGRAM_LIMIT" \
    --output-junit "$LOGS/native/ctest.junit" || true
  local programs
  programs=$(python3 scripts/lib/ctest_codes.py "$LOGS/native/ctest.junit") || programs=
  if [ -z "$programs" ]; then
    fail "native: no test program ran"
    return
  fi
  # shellcheck disable=SC2086
  count_cases native $programs
}

# The screen, prefix and sound that programs under Wine need; once for all levels.
WINE_READY=
prepare_wine() {
  [ -z "$WINE_READY" ] || return 0
  start_display
  start_sound || return 1
  use_wine_prefix wine N
  WINE_READY=yes
}

# run_under_wine LEVEL PROGRAM_FILE: all cases of one GoogleTest program.
run_under_wine() {
  local level=$1 file=$2 name code=0
  name=$(basename "$file" .exe)
  if [ ! -f "$file" ]; then
    fail "$level: $name was not built"
    return
  fi
  GTEST_OUTPUT="xml:$(windows_path "$LOGS/$level/$name.xml")" run_logged "$level/$name" \
    timeout -k 10 "$PROGRAM_LIMIT" "$WINELOADER" "$file" || code=$?
  count_cases "$level" "$name=$code"
}

level_contract() {
  rm -rf "$LOGS/contract"
  mkdir -p "$LOGS/contract"
  if ! configure_and_build mingw; then
    fail "contract: build"
    return
  fi
  keep_to_one_core 0
  be_nice -10
  run_contract_programs
  be_nice 0
  use_every_core
}

run_contract_programs() {
  if ! prepare_wine; then
    fail "contract: surroundings"
    return
  fi
  local pictures=$LOGS/contract/pictures.txt beside
  (use_every_core && keep_to_one_core 1 && exec scripts/pictures.sh) >"$pictures" 2>&1 </dev/null &
  beside=$!
  at_exit "kill $beside 2>/dev/null; wait $beside 2>/dev/null"
  run_under_wine contract "$BUILD/mingw/tests/contract/contract_win.exe"
  run_under_wine contract "$BUILD/mingw/tests/contract/contract_win_mci.exe"
  run_under_wine contract "$BUILD/mingw/tests/contract/contract_win_mci_lost.exe"
  run_under_wine contract "$BUILD/mingw/tests/desktop/ui_window_test.exe"
  run_one contract/tools-replay replay_gives_the_same_bytes
  run_one contract/tools-files other_commands_give_the_same_files
  run_one contract/pictures pictures_were_right "$beside" "$pictures"
}

# pictures_were_right PROCESS OUTPUT: of the pictures that were taken beside the other programs.
pictures_were_right() {
  local code=0
  wait "$1" || code=$?
  cat "$2"
  return "$code"
}

# build_beside LEVEL...: what the later ones of these levels need, while cases wait for their
# windows, and only when nothing else wants a processor. What fails here is built, and told
# of, by its level.
BUILT_BESIDE=
build_beside() {
  [ -z "$BUILT_BESIDE" ] || return 0
  [[ " $* " == *" bench "* || " $* " == *" simulation "* || " $* " == *" browser "* ]] || return 0
  (
    renice -n 19 -p "$BASHPID" >/dev/null
    configure_and_build native make_day corvane-tools benchmarks simulate || true
  ) >/dev/null 2>&1 &
  BUILT_BESIDE=$!
  at_exit "kill $BUILT_BESIDE 2>/dev/null; wait $BUILT_BESIDE 2>/dev/null"
}

await_built_beside() {
  [ -z "$BUILT_BESIDE" ] || wait "$BUILT_BESIDE" || true
  BUILT_BESIDE=
}

# As many targets beside each other as there are processors, then a table of what they did. Chance
# takes the same way in each run, so that what fails once fails again; scripts/fuzz.sh lets it begin
# elsewhere.
FUZZ_SEED=1

level_fuzz() {
  local target name targets=() running=()
  if ! configure_and_build sanitize fuzz_targets; then
    fail "fuzz: build"
    return
  fi
  rm -rf "$LOGS/fuzz"
  mkdir -p "$LOGS/fuzz"
  for target in "$BUILD"/sanitize/fuzz/fuzz_*; do
    [ -f "$target" ] && [ -x "$target" ] || continue
    targets+=("$target")
    run_fuzz_target "$target" &
    running+=($!)
    [ ${#running[@]} -lt "$JOBS" ] || await_fuzz_target
  done
  while [ ${#running[@]} -gt 0 ]; do await_fuzz_target; done
  for target in "${targets[@]}"; do
    name=$(basename "$target")
    run_one "fuzz/$name" fuzz_target_passed "$LOGS/fuzz/$name.txt"
  done
  [ ${#targets[@]} -gt 0 ] || fail "fuzz: no target was built"
  run_one fuzz/table python3 scripts/lib/fuzz_table.py "$LOGS/fuzz"
  cat "$LOGS/fuzz/table.log"
}

# All take the same time: the first that was begun is the first to end.
await_fuzz_target() {
  wait "${running[0]}" || true
  running=("${running[@]:1}")
}

# fuzz_target_passed OUTPUT
fuzz_target_passed() {
  cat "$1"
  [ -e "$1.passed" ]
}

# New inputs go to build/, the committed ones are only read.
run_fuzz_target() {
  local name seeds output
  name=$(basename "$1")
  output=$LOGS/fuzz/$name.txt
  seeds=$ROOT/fuzz/corpus/${name#fuzz_}
  mkdir -p "$BUILD/fuzz-inputs/$name" "$BUILD/fuzz-found"
  "$1" -seed="$FUZZ_SEED" -max_total_time="$FUZZ_SECONDS" -timeout=20 -rss_limit_mb=2048 \
    -print_final_stats=1 -artifact_prefix="$BUILD/fuzz-found/$name-" "$BUILD/fuzz-inputs/$name" \
    $([ ! -d "$seeds" ] || printf '%s' "$seeds") >"$output" 2>&1 </dev/null &&
    touch "$output.passed"
}

# Runs of the whole program at random, optimised: under the sanitizers native has some of them.
level_simulation() {
  if ! configure_and_build native simulate; then
    fail "simulation: build"
    return
  fi
  run_one simulation "$BUILD/native/tests/simulation/simulate" --runs "$SIMULATED_RUNS" \
    --jobs "$JOBS"
  tail -n 2 "$LOGS/simulation.log"
  # There are half a million calls about windows: some of them here.
  run_one simulation-one-failure "$BUILD/native/tests/simulation/simulate" --one-failure \
    --every 300 --jobs "$JOBS"
  tail -n 1 "$LOGS/simulation-one-failure.log"
  # scripts/long-run.sh goes on for a month.
  run_one simulation-memory "$BUILD/native/tests/simulation/simulate" --hours 12
  tail -n 1 "$LOGS/simulation-memory.log"
}

# scripts/bench.sh measures longer.
BENCH_ARGUMENTS=--short
BENCH_CALLS=60
# Seconds at each rate of lines a second.
BENCH_LOAD="6 4 12"
BENCH_USAGE_SECONDS=5

level_bench() {
  local program name found=
  if ! configure_and_build native benchmarks; then
    fail "bench: build"
    return
  fi
  rm -rf "$LOGS/bench"
  mkdir -p "$LOGS/bench"
  for program in "$BUILD"/native/bench/bench_*; do
    [ -f "$program" ] && [ -x "$program" ] || continue
    found=yes
    name=$(basename "$program")
    # shellcheck disable=SC2086
    run_one "bench/$name" "$program" $BENCH_ARGUMENTS "--benchmark_out=$LOGS/bench/$name.json" \
      --benchmark_out_format=json
    cat "$LOGS/bench/$name.log"
  done
  [ -n "$found" ] || fail "bench: no benchmark was built"
  measure_windows
  run_one bench/replay scripts/bench-replay.sh
  (cd "$ROOT/dist" && stat -c '%n %s' Corvane.exe SdrStandin.exe) >"$LOGS/bench/sizes.log" || true
  run_one bench/figures python3 scripts/lib/figures.py "$LOGS/bench"
  cat "$LOGS/bench/figures.log"
}

# With real windows; only a call that is missed or a program that does not come is a failure.
measure_windows() {
  local name arguments
  if ! (build_programs && configure_and_build mingw latency_bench load_bench editor_bench \
    usage_bench) || ! prepare_wine; then
    fail "bench: the measurements with real windows could not be run"
    return
  fi
  for name in latency load usage editor; do
    arguments=
    [ "$name" != latency ] || arguments=$BENCH_CALLS
    [ "$name" != load ] || arguments=$BENCH_LOAD
    [ "$name" != usage ] || arguments=$BENCH_USAGE_SECONDS
    # shellcheck disable=SC2086
    CORVANE_PROGRAMS=$(windows_path "$ROOT/dist") \
      run_one "bench/$name" "$WINELOADER" "$BUILD/mingw/tests/desktop/${name}_bench.exe" \
      $arguments
    cat "$LOGS/bench/$name.log"
  done
}

# The package is built here and once more elsewhere, from nothing, under other circumstances: the
# bytes must be the same. Then its content is looked at.
level_package() {
  local elsewhere=$BUILD/package-elsewhere/deeper/checkout version zip
  version=$(package_version)
  zip=dist/Corvane-$version.zip
  # Any time will do, if both bear it.
  export SOURCE_DATE_EPOCH=1700000000
  rm -f "$ROOT/$zip"
  run_one package/built scripts/package.sh
  copy_sources "$elsewhere"
  run_one package/built-elsewhere env -u CMAKE_CXX_COMPILER_LAUNCHER CCACHE_DISABLE=1 \
    TZ=Asia/Kathmandu LC_ALL=C bash -c "umask 077 && exec '$elsewhere/scripts/package.sh'"
  run_one package/same-bytes python3 scripts/lib/check_package.py same "$zip" "$elsewhere/$zip"
  run_one package/content python3 scripts/lib/check_package.py "$zip" "$version" "$ROOT"
  run_one package/faults-are-found \
    python3 -B scripts/lib/check_package_test.py "$zip" "$version" "$ROOT"
  unset SOURCE_DATE_EPOCH
}

# copy_sources FOLDER: everything as it is here, committed or not, but nothing that was built.
copy_sources() {
  rm -rf "$1"
  mkdir -p "$1"
  tar -c --exclude=./build --exclude=./dist --exclude=./demo-output --exclude=./.git . |
    tar -x -C "$1"
}
