#!/bin/bash
# Builds the two Windows programs into dist/. Installs what that needs first.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/programs.sh

need_packages $BUILD_PACKAGES
build_programs
say "dist/Corvane.exe and dist/SdrStandin.exe are ready"
