#!/bin/bash
# Builds the two Windows programs and the companion for the command line, for Windows and for this
# system, into dist/. Installs what that needs first.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/programs.sh

need_packages $BUILD_PACKAGES $TOOLS_PACKAGES
build_programs
build_native_tools
say "dist/Corvane.exe, dist/SdrStandin.exe, dist/corvane-tools.exe and dist/corvane-tools are ready"
