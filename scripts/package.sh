#!/bin/bash
# Makes the package for users, dist/Corvane-<version>.zip, and its checksum beside it: both
# programs, scenarios, sample lists, the manual as HTML and PDF, checksums. The same commit gives
# the same bytes, in whatever folder and whenever it is built with the same tools. The times in it
# are the commit's, or SOURCE_DATE_EPOCH where that is set.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/programs.sh

need_packages $BUILD_PACKAGES $PACKAGE_PACKAGES
if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
  SOURCE_DATE_EPOCH=$(git -c safe.directory='*' log -1 --format=%ct) ||
    die "this is no git checkout: set SOURCE_DATE_EPOCH to the time that the package is to bear"
  [ -z "$(git -c safe.directory='*' status --porcelain)" ] ||
    say "note: not everything here is committed; the package is that of no commit"
fi
export SOURCE_DATE_EPOCH

build_programs
step "Writing the manual"
VERSION=$(package_version)
FOLDER=$BUILD/package
rm -rf "$FOLDER"
mkdir -p "$FOLDER"
# The system's own interpreter: it has the packages that were installed above.
/usr/bin/python3 scripts/lib/manual.py pages "$FOLDER/manual" "$VERSION"
run_logged manual-pdf /usr/bin/python3 scripts/lib/manual.py pdf "$FOLDER/manual.pdf" "$VERSION"
step "Packing"
/usr/bin/python3 scripts/lib/pack.py "$FOLDER" "dist/Corvane-$VERSION.zip"
say "dist/Corvane-$VERSION.zip is ready; its checksum lies beside it"
