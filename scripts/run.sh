#!/usr/bin/env bash
# The main job: installs what is missing, builds, and starts the launcher with
# the push broadcast viewer (or the VOD browser with --vod). Other arguments go
# to the launcher; see `build/src/tools/launcher/qpe-launcher --help`.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)" --target qpe-launcher vod >/dev/null

if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
    echo "run: no display found, running offscreen (nothing will be seen; use --trace to watch the requests)" >&2
    export QT_QPA_PLATFORM=offscreen
fi
echo "run: no video manager runs here yet, so nothing answers the module's requests." >&2
exec build/src/tools/launcher/qpe-launcher "$@"
