#!/usr/bin/env bash
# Sends a live broadcast for the real video manager's push viewer: VP8 video
# over RTP (payload 96) by UDP, by default to 127.0.0.1 port 5004, where
# `videomanager` listens unless told otherwise.
#
#   bash scripts/broadcast.sh                        test picture (SMPTE bars) until stopped
#   bash scripts/broadcast.sh --seconds 8            ... for 8 seconds, then the broadcast ends
#   bash scripts/broadcast.sh --pattern ball         any videotestsrc pattern
#   bash scripts/broadcast.sh --colour 0xffe67828    one colour (0xAARRGGBB)
#   bash scripts/broadcast.sh --file clip.webm       a media file, in real time
#   bash scripts/broadcast.sh --size 640x480         the picture's size (default 320x240)
#   bash scripts/broadcast.sh --port 5006 --host 127.0.0.1
#
# The stream has no sound. Stop it with Ctrl-C (or SIGTERM): the receiver
# notices the silence and ends the broadcast.
set -euo pipefail

host=127.0.0.1
port=5004
seconds=""
pattern=smpte
colour=""
file=""
size=320x240
while [ $# -gt 0 ]; do
    case $1 in
        --host) host=$2; shift 2 ;;
        --port) port=$2; shift 2 ;;
        --seconds) seconds=$2; shift 2 ;;
        --pattern) pattern=$2; shift 2 ;;
        --colour) colour=$2; pattern=solid-color; shift 2 ;;
        --file) file=$2; shift 2 ;;
        --size) size=$2; shift 2 ;;
        -h | --help) sed -n '2,15p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
        *) echo "broadcast: unknown argument $1 (try --help)" >&2; exit 2 ;;
    esac
done
case $port in '' | *[!0-9]*) echo "broadcast: --port needs a number" >&2; exit 2 ;; esac
case $seconds in *[!0-9]*) echo "broadcast: --seconds needs a whole number" >&2; exit 2 ;; esac
[[ $size =~ ^[1-9][0-9]*x[1-9][0-9]*$ ]] || { echo "broadcast: --size needs WIDTHxHEIGHT" >&2; exit 2; }

# 25 frames a second, a key frame every second: a receiver that joins or
# resumes shows pictures within a second.
encode=(videoconvert ! videoscale ! "video/x-raw,width=${size%x*},height=${size#*x}" ! videorate ! "video/x-raw,framerate=25/1"
        ! vp8enc deadline=1 keyframe-max-dist=25 ! rtpvp8pay pt=96 ! udpsink host="$host" port="$port")

if [ -n "$file" ]; then
    [ -f "$file" ] || { echo "broadcast: no file $file" >&2; exit 2; }
    source=(filesrc location="$file" ! decodebin ! queue)
else
    source=(videotestsrc is-live=true pattern="$pattern")
    [ -n "$colour" ] && source+=(foreground-color="$colour")
    [ -n "$seconds" ] && source+=(num-buffers=$((seconds * 25)))
    source+=(! "video/x-raw,framerate=25/1")
fi

echo "broadcast: sending to $host port $port" >&2
# exec: a signal to this script's process reaches the sender itself.
exec gst-launch-1.0 -q "${source[@]}" ! "${encode[@]}"
