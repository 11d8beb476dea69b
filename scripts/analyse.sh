#!/bin/bash
# Looks through the portable sources with clang-tidy and cppcheck; what they are asked, and what not
# and why, stands in .clang-tidy and .cppcheck. Ends with 1 when either finds something. Takes some
# minutes. Installs first what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/results.sh

need_packages $FUZZ_PACKAGES clang-tidy cppcheck
# Each source by itself, as the two take them.
run_logged configure-analyse cmake -S . -B "$BUILD/analyse" -G Ninja \
  -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_UNITY_BUILD=OFF || die "the sources could not be listed"

with_clang_tidy() {
  git ls-files 'src/*.cpp' 'archive/*.cpp' 'tools/*.cpp' 'standin/*.cpp' | grep -v _win.cpp |
    xargs -P "$JOBS" -n 4 clang-tidy -p "$BUILD/analyse" --quiet
}

with_cppcheck() {
  cppcheck -j "$JOBS" --std=c++20 --enable=warning,performance,portability --quiet \
    --error-exitcode=1 --suppressions-list=.cppcheck -I src -I . src archive tools standin
}

run_one clang-tidy with_clang_tidy
run_one cppcheck with_cppcheck
report
