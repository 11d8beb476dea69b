#!/bin/bash
# Runs the native tests and tells which lines and branches of src/ they run through. Ends with 1
# when a branch is taken by none and not in the list of those that cannot be, tests/unreached.txt.
# Installs first what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh

DATA=$BUILD/coverage-data
need_packages $FUZZ_PACKAGES llvm
configure_and_build coverage || die "the tests could not be built"
rm -rf "$DATA"
mkdir -p "$DATA"
# One file for each test program, to which its runs add.
LLVM_PROFILE_FILE="$DATA/%m.profraw" run_logged coverage-tests ctest --test-dir "$BUILD/coverage" \
  -j "$JOBS" --output-on-failure --no-tests=error --timeout 900 || die "a test failed"
llvm-profdata merge -sparse -o "$DATA/all.profdata" "$DATA"/*.profraw
mapfile -t PROGRAMS < <(ctest --test-dir "$BUILD/coverage" --show-only=json-v1 |
  python3 -c 'import json, sys
for test in json.load(sys.stdin)["tests"]: print(test["command"][0])' | sort -u | grep "^$BUILD/")
llvm-cov export -dump -instr-profile="$DATA/all.profdata" "${PROGRAMS[0]}" \
  $(printf -- '-object %s ' "${PROGRAMS[@]:1}") 2>"$DATA/warnings.txt" |
  grep '^{"data"' >"$DATA/coverage.json" || die "llvm-cov: $(cat "$DATA/warnings.txt")"
# What it leaves out: of inline functions only what was compiled without being used, hash 0.
! grep '^hash-mismatch' "$DATA/warnings.txt" | grep -v '= 0x0$' || die "not all could be counted"
python3 scripts/lib/coverage.py "$DATA/coverage.json" "$ROOT"
