#!/usr/bin/env bash
# Makes the sample media of the real video manager with GStreamer's own test
# sources, and the catalogue that lists them:
#
#   bash scripts/make-media.sh OUTDIR
#
#   OUTDIR/bars.ogg         colour bars and a 440 Hz tone, 5 s (Theora, Vorbis in Ogg)
#   OUTDIR/ball.webm        a bouncing ball and a 660 Hz tone, 10 s (VP8, Vorbis in WebM)
#   OUTDIR/catalogue.json   both titles, for videomanager --catalogue
#
# The build runs it (target samplemedia). Needs gst-launch-1.0 and the base and
# good plugins (Debian: gstreamer1.0-tools, gstreamer1.0-plugins-base,
# gstreamer1.0-plugins-good; scripts/setup.sh installs them).
set -euo pipefail

out=${1:?usage: make-media.sh OUTDIR}
mkdir -p "$out"

# clip FILE SECONDS PATTERN FREQUENCY ENCODER MUXER
clip() {
    local file=$1 seconds=$2 pattern=$3 frequency=$4 encoder=$5 muxer=$6
    # 25 frames and 44100 samples (50 buffers of 882) per second: both streams
    # last exactly the clip's length. A key frame every second keeps exact
    # seeks quick. The encoder and the muxer are split into words on purpose.
    # shellcheck disable=SC2086
    gst-launch-1.0 -q -e \
        videotestsrc num-buffers=$((seconds * 25)) pattern="$pattern" \
        ! video/x-raw,width=320,height=240,framerate=25/1 ! videoconvert ! $encoder ! mux. \
        audiotestsrc num-buffers=$((seconds * 50)) samplesperbuffer=882 freq="$frequency" volume=0.3 \
        ! audio/x-raw,rate=44100,channels=1 ! audioconvert ! vorbisenc ! mux. \
        $muxer name=mux ! filesink location="$out/$file.part"
    mv "$out/$file.part" "$out/$file"
}

clip bars.ogg 5 smpte 440 "theoraenc keyframe-freq=25" oggmux
clip ball.webm 10 ball 660 "vp8enc keyframe-max-dist=25 deadline=1" webmmux

cat >"$out/catalogue.json.part" <<'JSON'
{"groups": [
  {"name": "Samples", "parts": [
    {"name": "Test cards", "titles": [
      {"name": "Bouncing ball", "length": 10, "file": "ball.webm"},
      {"name": "Colour bars", "length": 5, "file": "bars.ogg"}]}]}]}
JSON
mv "$out/catalogue.json.part" "$out/catalogue.json"
