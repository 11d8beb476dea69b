#!/bin/bash
# Takes the pictures of the manual anew: runs the demonstration on a virtual display and puts what
# it leaves in demo-output/ into docs/pictures/. Look at each before it is committed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The name in the manual, and the demonstration's.
PICTURES="
  following           corvane-during
  compact             corvane-compact
  editor              corvane-editor
  presets             page-presets
  recording-options   page-recording-options
  options             page-options
  logging-options     page-logging-options
  checkbox-detection  page-checkbox-detection
  practice            sdr-during
"

DISPLAY='' scripts/demo.sh "$@"
while read -r name taken; do
  [ -z "$name" ] || cp "demo-output/$taken.png" "docs/pictures/$name.png"
done <<<"$PICTURES"
