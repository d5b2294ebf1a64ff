#!/usr/bin/env bash
# Writes the storyboard: one picture of the phone's display per step of a
# scripted push and VOD session, and an index.html that shows them.
#   bash scripts/storyboard.sh [OUTDIR]        (default: storyboard/)
# BUILD_DIR names the build tree (default: build); it is configured and the
# storyboard program built when needed.
set -euo pipefail

here="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-$here/build}"
out="${1:-$here/storyboard}"

if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
cmake --build "$build" --target storyboard -j"$(nproc)" >/dev/null

# The session runs offscreen, on the in-process transport, whatever the desktop has.
QT_QPA_PLATFORM=offscreen QPE_IPC_TRANSPORT=local QT_LOGGING_RULES="${QT_LOGGING_RULES:-default.debug=false}" \
    "$build/src/tools/launcher/storyboard/storyboard" "$out"
echo "open $out/index.html"
