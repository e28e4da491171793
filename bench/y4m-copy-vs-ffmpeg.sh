#!/usr/bin/env bash
# A Y4M copy by mox against the same copy by ffmpeg, on one generated file.
#   bench/y4m-copy-vs-ffmpeg.sh [BUILD_DIR]
# Generates a 1080p, 120-frame 4:2:0 Y4M (not kept), warms the page cache,
# then times both jobs and prints wall time, peak memory and the ratios.
set -euo pipefail
build=${1:-build/Release}
work=$(mktemp -d /tmp/mox-copy-XXXXXX)
trap 'rm -rf "$work"' EXIT
ffmpeg -v error -f lavfi -i testsrc2=size=1920x1080:rate=25 -frames:v 120 -pix_fmt yuv420p "$work/in.y4m"
cat "$work/in.y4m" > /dev/null
echo "file: $(stat -c %s "$work/in.y4m") bytes"

source "$(dirname "$0")/timing.sh"
read -r mox_s mox_kb _ < <(best "$build/bin/mox" convert "$work/in.y4m" "$work/mox.y4m" -q)
# ffmpeg 5.1 refuses "-c copy" into yuv4mpegpipe ("Codec not supported"); its
# own Y4M copy passes the pictures through its wrapped-frame encoder.
read -r ff_s ff_kb _ < <(best ffmpeg -v error -y -i "$work/in.y4m" -f yuv4mpegpipe "$work/ffmpeg.y4m")
echo "mox convert:  ${mox_s} s, peak ${mox_kb} kB"
echo "ffmpeg:       ${ff_s} s, peak ${ff_kb} kB"
awk "BEGIN{printf \"ratio (mox / ffmpeg): time %.2fx, peak memory %.2fx\n\", $mox_s / ($ff_s > 0 ? $ff_s : 0.01), $mox_kb / $ff_kb}"
a=$(ffmpeg -v error -i "$work/in.y4m" -f framemd5 - | grep -v '^#' | md5sum)
b=$(ffmpeg -v error -i "$work/mox.y4m" -f framemd5 - | grep -v '^#' | md5sum)
[ "$a" = "$b" ] && echo "frames identical" || { echo "frames differ" >&2; exit 1; }
