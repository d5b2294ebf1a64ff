#!/usr/bin/env bash
# Writes the reference pictures of the storyboard anew, into tests/screen/goldens/.
# Use it on purpose only: when a change of the module's drawing is meant to
# change what the phone shows. Look at every picture before committing them
# (git diff shows which changed); the storyboard test compares the session's
# pictures with these, pixel by pixel.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
out="$here/tests/screen/goldens"
bash "$here/scripts/storyboard.sh" "$out"
rm -f "$out/index.html"
git -C "$here" status --short -- tests/screen/goldens
