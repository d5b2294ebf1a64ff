#!/usr/bin/env bash
# Runs one test program under valgrind's memcheck, by default the screen-truth
# roads: the browser, information page, small and full-screen players and the
# push viewer through calls, broadcasts, notices, the silent server's watchdog
# and the end, on the launcher's display and window manager. Any memcheck
# error or definite leak fails the run. Builds the program into build/ (the normal build) first.
# Usage: scripts/memcheck.sh [test program name, default tst_screentruth]
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
builddir=${MEMCHECK_BUILD_DIR:-$root/build}
program=${1:-tst_screentruth}

cmake -S . -B "$builddir" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$builddir" -j"${JOBS:-$(nproc)}" --target "$program"
binary=$(find "$builddir/tests" -type f -name "$program" -perm -u+x | head -n 1)
[ -n "$binary" ] || { echo "memcheck: $program not built" >&2; exit 1; }

export QT_QPA_PLATFORM=offscreen QT_FONT_DPI=72
log="$builddir/memcheck-$program.log"
start=$(date +%s)
status=0
valgrind --tool=memcheck --error-exitcode=99 --leak-check=full \
    --show-leak-kinds=definite --errors-for-leak-kinds=definite \
    --track-origins=yes --num-callers=30 \
    --suppressions="$root/scripts/valgrind.supp" --gen-suppressions=all \
    --log-file="$log" "$binary" || status=$?
echo "memcheck: $program exit $status in $(( $(date +%s) - start )) s; log $log"
grep -E "ERROR SUMMARY|definitely lost|indirectly lost" "$log" || true
exit $status
