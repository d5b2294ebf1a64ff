#!/usr/bin/env bash
# The main job: installs what is missing, builds, and runs the video module in
# the launcher with the simulated video manager beside it, both on one D-Bus
# session bus (a private one when none is there):
#
#   bash scripts/run.sh              the push broadcast viewer
#   bash scripts/run.sh --vod        the VOD browser
#   bash scripts/run.sh --keys ...   other arguments go to the launcher
#                                    (build/src/tools/launcher/qpe-launcher --help)
#
# With a display the window is live: Esc ends the broadcast, Enter/F1/F2/Esc
# browse and play. Without one everything runs offscreen, every message is
# printed, and the run ends by itself: the simulator ends the broadcast after a
# call, or a scripted walk through the VOD browser plays a title and stops it.
# SIM_ARGS adds options to the simulator (build/src/tools/videomanager-sim/videomanager-sim --help);
# BUILD_DIR chooses the build directory (default build).
set -euo pipefail
cd "$(dirname "$0")/.."

build=${BUILD_DIR:-build}
launcher=$build/src/tools/launcher/qpe-launcher
simulator=$build/src/tools/videomanager-sim/videomanager-sim

if [ -z "${RUN_SH_ON_PRIVATE_BUS:-}" ]; then
    bash scripts/setup.sh
    cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build "$build" -j"$(nproc)" --target qpe-launcher vod videomanager-sim >/dev/null
fi

# Options that only ask the launcher something need no video manager.
for arg in "$@"; do
    case $arg in
        -h | --help | --help-all | -v | --version | --list) exec "$launcher" "$@" ;;
    esac
done

# The launcher and the simulator find each other on the session bus.
if ! dbus-send --session --dest=org.freedesktop.DBus --print-reply /org/freedesktop/DBus \
        org.freedesktop.DBus.GetId >/dev/null 2>&1; then
    if [ -n "${RUN_SH_ON_PRIVATE_BUS:-}" ]; then
        echo "run: the private D-Bus session bus does not answer" >&2
        exit 1
    fi
    echo "run: no D-Bus session bus here: starting a private one (dbus-run-session)" >&2
    export RUN_SH_ON_PRIVATE_BUS=1
    exec dbus-run-session -- bash "$0" "$@"
fi

vod=0
ends=0
for arg in "$@"; do
    case $arg in
        --vod) vod=1 ;;
        --keys | --quit-after | --quit-after=*) ends=1 ;;
    esac
done

work=$(mktemp -d)
sim_pid=""
tail_pid=""
# shellcheck disable=SC2317 # called by the trap
cleanup() {
    if [ -n "$sim_pid" ]; then kill "$sim_pid" 2>/dev/null || true; wait "$sim_pid" 2>/dev/null || true; fi
    if [ -n "$tail_pid" ]; then kill "$tail_pid" 2>/dev/null || true; wait "$tail_pid" 2>/dev/null || true; fi
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# Both programs see the same device files (the catalogue the simulator writes).
export QPE_ROOT="${QPE_ROOT:-$work/root}"
mkdir -p "$QPE_ROOT/tmp/status" "$QPE_ROOT/tmp/systemdb"
export QPE_IPC_TRANSPORT=dbus
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR="$work/runtime"
    mkdir -m 700 "$XDG_RUNTIME_DIR"
fi

launcher_args=()
sim_args=()
keys_script=0
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ]; then
    export QT_QPA_PLATFORM=offscreen
    # Nobody can dismiss a notice that nobody sees.
    export QPE_NOTICE_TIMEOUT="${QPE_NOTICE_TIMEOUT:-1500}"
    launcher_args+=(--trace)
    if [ "$ends" = 0 ]; then
        if [ "$vod" = 1 ]; then
            echo "run: no display: running offscreen; a scripted walk browses, plays a title and stops it" >&2
            keys_script=1
            launcher_args+=(--keys --quit-after 60000)
            sim_args+=(--time-scale 0.5)
        else
            echo "run: no display: running offscreen; the simulated video manager interrupts the broadcast" \
                 "with a call and then ends it, which closes the viewer" >&2
            sim_args+=(--time-scale 0.25 --call-at 3 --call-length 2 --multicast-end-at 10)
        fi
    else
        echo "run: no display: running offscreen" >&2
    fi
    echo "run: lines from the simulated video manager start with [vm] (<- received, -> sent);" \
         "the module's messages with [module]" >&2
else
    echo "run: live window (Esc: Back, Enter: Select, F1/F2: Context1/2, 4: full screen; --trace prints" \
         "the module's messages); lines from the simulated video manager start with [vm]" >&2
fi

# shellcheck disable=SC2206 # SIM_ARGS is split into words on purpose
sim_args+=(${SIM_ARGS:-})
# The log exists before the follower starts: the background redirection below
# opens it only when the simulator's process gets to it.
: >"$work/sim.log"
"$simulator" "${sim_args[@]}" >"$work/sim.log" 2>&1 &
sim_pid=$!
tail -n +1 --pid="$sim_pid" -f "$work/sim.log" | sed -u 's/^/[vm] /' &
tail_pid=$!

# The simulator says when it listens.
for _ in $(seq 100); do
    grep -q -- '-- ready' "$work/sim.log" && break
    kill -0 "$sim_pid" 2>/dev/null || { echo "run: the simulator did not start" >&2; exit 1; }
    sleep 0.1
done

walk() {
    # Groups, parts, titles, the information page, play, pause, resume, stop, back to the groups.
    local step
    for step in Select Select Select Context1 Select Select Back Back Back; do
        sleep 1.5
        echo "$step"
    done
    sleep 2
}

status=0
if [ "$keys_script" = 1 ]; then
    walk | "$launcher" "${launcher_args[@]}" "$@" | sed -u 's/^/[module] /' || status=$?
elif [ ${#launcher_args[@]} -gt 0 ]; then
    "$launcher" "${launcher_args[@]}" "$@" | sed -u 's/^/[module] /' || status=$?
else
    "$launcher" "$@" || status=$?
fi
# The log of the simulator's last answers reaches the screen before it stops.
sleep 0.2
exit "$status"
