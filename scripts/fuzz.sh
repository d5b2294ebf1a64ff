#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang into build-fuzz/ and runs each
# for a while, starting from the seeds in fuzz/corpus/<target>/.
# Usage: scripts/fuzz.sh [seconds per target, default 60] [target ...]
# New interesting inputs collect in build-fuzz/corpus/<target>/ (the committed
# seeds are only read); a crashing input is written to build-fuzz/crashes/ and
# fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
seconds=${1:-60}
shift || true
builddir=${FUZZ_BUILD_DIR:-$root/build-fuzz}
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(fuzz_catalogue fuzz_notifications fuzz_requests)

# The build runs a sanitized helper (the image generator); Qt's one-time
# allocations there are not ours to report.
ASAN_OPTIONS=detect_leaks=0 cmake -S fuzz -B "$builddir" -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
ASAN_OPTIONS=detect_leaks=0 cmake --build "$builddir" -j"${JOBS:-$(nproc)}" --target "${targets[@]}"

export QT_QPA_PLATFORM=offscreen
# Leaks are the business of scripts/sanitize.sh and scripts/memcheck.sh; here
# every input would be checked against Qt's lazily built caches.
export ASAN_OPTIONS="detect_leaks=0:halt_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
mkdir -p "$builddir/crashes"
status=0
for target in "${targets[@]}"; do
    mkdir -p "$builddir/corpus/$target"
    log="$builddir/$target.log"
    echo "fuzz: $target for $seconds s"
    if ! "$builddir/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 \
        -print_final_stats=1 -artifact_prefix="$builddir/crashes/$target-" \
        "$builddir/corpus/$target" "fuzz/corpus/$target" >"$log" 2>&1; then
        echo "fuzz: $target FAILED, see $log"
        tail -n 40 "$log"
        status=1
    fi
    grep -E "^(Done|stat::number_of_executed_units|stat::peak_rss_mb)" "$log" | sed "s/^/fuzz: $target: /"
done
exit $status
