# Counts over all levels, and what failed.
PASSED=0
FAILED=0
FAILURES=()

pass() { PASSED=$((PASSED + ${1:-1})); }
# fail NAME: one more failure.
fail() {
  FAILED=$((FAILED + 1))
  FAILURES+=("$1")
}

# run_one NAME COMMAND...: a check that counts as one test.
run_one() {
  local name=$1
  shift
  if run_logged "$name" "$@"; then
    pass
    say "ok      $name"
  else
    fail "$name"
    say "FAILED  $name"
  fi
}

# count_cases LEVEL PROGRAM=CODE...: adds the cases that GoogleTest programs left in
# build/logs/LEVEL/*.xml.
count_cases() {
  local level=$1 counted good bad name
  shift
  counted=$(python3 "$ROOT/scripts/lib/count_tests.py" "$LOGS/$level" "$@") ||
    die "the results of $level could not be counted"
  read -r good bad <<<"$counted"
  pass "$good"
  while read -r name; do [ -z "$name" ] || fail "$level: $name"; done \
    <<<"$(tail -n +2 <<<"$counted")"
  say "$level: $good passed, $bad failed"
}

# The last line of a test run; its exit code.
report() {
  local name
  if [ "$FAILED" -gt 0 ]; then
    say ""
    for name in "${FAILURES[@]}"; do say "FAILED: $name"; done
    say "logs are in build/logs"
  fi
  say "$PASSED passed, $FAILED failed"
  [ "$FAILED" -eq 0 ] && [ "$PASSED" -gt 0 ]
}
