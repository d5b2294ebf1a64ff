#!/usr/bin/env bash
# The main job: installs what is missing, builds, and runs the video module in
# the launcher with a video manager beside it, both on one D-Bus session bus (a
# private one when none is there):
#
#   bash scripts/run.sh              the push broadcast viewer
#   bash scripts/run.sh --vod        the VOD browser
#   bash scripts/run.sh --keys ...   other arguments go to the launcher
#                                    (build/src/tools/launcher/qpe-launcher --help)
#
# The video manager is the real one (build/src/tools/videomanager/videomanager)
# when GStreamer is there: it plays the sample media of build/media/ and a
# broadcast that scripts/broadcast.sh sends to 127.0.0.1, and the launcher
# shows their pictures. VIDEO_MANAGER=sim chooses the simulated one
# (build/src/tools/videomanager-sim/videomanager-sim), which the launcher
# shows as a test picture.
#
# With a display the window is live: Esc ends the broadcast, Enter/F1/F2/Esc
# browse and play. Without one everything runs offscreen, every message is
# printed, and the run ends by itself: the broadcast is interrupted by a call
# and then ends, or a scripted walk through the VOD browser plays titles (with
# the real video manager: one to its end after a seek, then the next, during
# which the run ends, so that --grab FILE shows its picture).
# SIM_ARGS adds options to the simulator, VM_ARGS to the real video manager
# (--help tells theirs); BUILD_DIR chooses the build directory (default build).
set -euo pipefail
cd "$(dirname "$0")/.."

build=${BUILD_DIR:-build}
launcher=$build/src/tools/launcher/qpe-launcher
simulator=$build/src/tools/videomanager-sim/videomanager-sim
real=$build/src/tools/videomanager/videomanager
media=$build/media

if [ -z "${RUN_SH_ON_PRIVATE_BUS:-}" ]; then
    bash scripts/setup.sh
    cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    targets=(qpe-launcher vod videomanager-sim)
    # The real video manager and its media exist where GStreamer does.
    if [[ $(cmake --build "$build" --target help) == *samplemedia* ]]; then
        targets+=(videomanager samplemedia)
    fi
    cmake --build "$build" -j"$(nproc)" --target "${targets[@]}" >/dev/null
fi

# Options that only ask the launcher something need no video manager.
for arg in "$@"; do
    case $arg in
        -h | --help | --help-all | -v | --version | --list) exec "$launcher" "$@" ;;
    esac
done

# The launcher and the video manager find each other on the session bus.
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

# The real video manager, unless the simulator is asked for or GStreamer lacks something.
manager=sim
if [ "${VIDEO_MANAGER:-real}" != sim ]; then
    if [ -x "$real" ] && [ -f "$media/catalogue.json" ] && missing=$("$real" --check); then
        manager=real
    else
        echo "run: the real video manager cannot play here (${missing:-not built}): using the simulator" >&2
    fi
fi

kind=real
[ "$manager" = sim ] && kind=simulated

vod=0
ends=0
for arg in "$@"; do
    case $arg in
        --vod) vod=1 ;;
        --keys | --quit-after | --quit-after=*) ends=1 ;;
    esac
done

work=$(mktemp -d)
vm_pid=""
tail_pid=""
sender_pid=""
call_pid=""
# shellcheck disable=SC2317 # called by the trap
cleanup() {
    if [ -n "$call_pid" ]; then kill "$call_pid" 2>/dev/null || true; wait "$call_pid" 2>/dev/null || true; fi
    if [ -n "$sender_pid" ]; then kill "$sender_pid" 2>/dev/null || true; wait "$sender_pid" 2>/dev/null || true; fi
    if [ -n "$vm_pid" ]; then kill "$vm_pid" 2>/dev/null || true; wait "$vm_pid" 2>/dev/null || true; fi
    if [ -n "$tail_pid" ]; then kill "$tail_pid" 2>/dev/null || true; wait "$tail_pid" 2>/dev/null || true; fi
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# Both programs see the same device files (the catalogue the video manager writes).
export QPE_ROOT="${QPE_ROOT:-$work/root}"
mkdir -p "$QPE_ROOT/tmp/status" "$QPE_ROOT/tmp/systemdb"
export QPE_IPC_TRANSPORT=dbus
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR="$work/runtime"
    mkdir -m 700 "$XDG_RUNTIME_DIR"
fi

# The broadcast goes to 127.0.0.1 only, on a port of this run's own.
push_port=$((20000 + RANDOM % 20000))
# The video plane is this run's own too.
export QPE_VIDEO_PLANE="/qpe-run-$$"

launcher_args=()
sim_args=()
vm_args=(--catalogue "$media/catalogue.json" --push-port "$push_port")
keys_script=0
# with the real video manager offscreen: the broadcast's length and a call in it (0: none)
broadcast_seconds=0
call_at=0
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ]; then
    export QT_QPA_PLATFORM=offscreen
    # Nobody can dismiss a notice that nobody sees.
    export QPE_NOTICE_TIMEOUT="${QPE_NOTICE_TIMEOUT:-1500}"
    # Nobody listens either.
    vm_args+=(--audio-sink "fakesink sync=true")
    launcher_args+=(--trace)
    if [ "$ends" = 0 ]; then
        if [ "$vod" = 1 ] && [ "$manager" = real ]; then
            echo "run: no display: running offscreen; a scripted walk browses, plays a title, seeks forward," \
                 "lets it end and ends while the next title plays" >&2
            keys_script=1
            launcher_args+=(--keys --quit-after 60000)
        elif [ "$vod" = 1 ]; then
            echo "run: no display: running offscreen; a scripted walk browses, plays a title and stops it" >&2
            keys_script=1
            launcher_args+=(--keys --quit-after 60000)
            sim_args+=(--time-scale 0.5)
        elif [ "$manager" = real ]; then
            echo "run: no display: running offscreen; a 10-second broadcast, interrupted by a call from 3 s" \
                 "to 5 s; its end closes the viewer" >&2
            broadcast_seconds=10
            call_at=3
        else
            echo "run: no display: running offscreen; the simulated video manager interrupts the broadcast" \
                 "with a call and then ends it, which closes the viewer" >&2
            sim_args+=(--time-scale 0.25 --call-at 3 --call-length 2 --multicast-end-at 10)
        fi
    else
        echo "run: no display: running offscreen" >&2
    fi
    echo "run: lines from the $kind video manager start with [vm] (<- received, -> sent);" \
         "the module's messages with [module]" >&2
else
    echo "run: live window (Esc: Back, Enter: Select, F1/F2: Context1/2, 4: full screen; --trace prints" \
         "the module's messages); lines from the $kind video manager start with [vm]" >&2
fi

if [ "$manager" = real ]; then
    program=$real
    # shellcheck disable=SC2206 # VM_ARGS is split into words on purpose
    manager_args=("${vm_args[@]}" ${VM_ARGS:-})
else
    program=$simulator
    # shellcheck disable=SC2206 # SIM_ARGS is split into words on purpose
    manager_args=("${sim_args[@]}" ${SIM_ARGS:-})
fi
# The log exists before the follower starts: the background redirection below
# opens it only when the video manager's process gets to it.
: >"$work/vm.log"
"$program" "${manager_args[@]}" >"$work/vm.log" 2>&1 &
vm_pid=$!
tail -n +1 --pid="$vm_pid" -f "$work/vm.log" | sed -u 's/^/[vm] /' &
tail_pid=$!

# The video manager says when it listens.
for _ in $(seq 100); do
    grep -q -- '-- ready' "$work/vm.log" && break
    kill -0 "$vm_pid" 2>/dev/null || { echo "run: the video manager did not start" >&2; exit 1; }
    sleep 0.1
done

# The real broadcast: a test picture from 127.0.0.1 to the video manager,
# and a call that pauses it, from the call manager's side of the bus.
if [ "$manager" = real ] && [ "$vod" = 0 ]; then
    sender=(bash scripts/broadcast.sh --port "$push_port" --pattern ball)
    [ "$broadcast_seconds" -gt 0 ] && sender+=(--seconds "$broadcast_seconds")
    "${sender[@]}" > >(sed -u 's/^/[sender] /') 2>&1 &
    sender_pid=$!
    if [ "$call_at" -gt 0 ]; then
        (
            call() {
                dbus-send --session --type=signal /com/trolltech/qtopia/QPE_2FPushApplication \
                    "com.trolltech.qtopia.$1" array:byte:
            }
            sleep "$call_at"; echo "[run] a call begins" >&2; call startcall_28_29
            sleep 2; echo "[run] the call is over" >&2; call stopcall_28_29
        ) &
        call_pid=$!
    fi
fi

walk() {
    # Groups, parts, titles, the information page, play, pause, resume, stop, back to the groups.
    local step
    for step in Select Select Select Context1 Select Select Back Back Back; do
        sleep 1.5
        echo "$step"
    done
    sleep 2
}

walk_real() {
    # Groups, parts, the first title's information page, play; a seek forward
    # (5 s) and the title's real end; then the next title, which is still
    # playing when the walk ends.
    local step
    for step in Select Select Select Context1; do
        sleep 1.5
        echo "$step"
    done
    sleep 2.5; echo Context1
    sleep 5; echo Down
    sleep 1; echo Select
    sleep 1.5; echo Context1
    sleep 3
}

status=0
if [ "$keys_script" = 1 ] && [ "$manager" = real ]; then
    walk_real | "$launcher" "${launcher_args[@]}" "$@" | sed -u 's/^/[module] /' || status=$?
elif [ "$keys_script" = 1 ]; then
    walk | "$launcher" "${launcher_args[@]}" "$@" | sed -u 's/^/[module] /' || status=$?
elif [ ${#launcher_args[@]} -gt 0 ]; then
    "$launcher" "${launcher_args[@]}" "$@" | sed -u 's/^/[module] /' || status=$?
else
    "$launcher" "$@" || status=$?
fi
# The log of the video manager's last answers reaches the screen before it stops.
sleep 0.2
exit "$status"
