#!/usr/bin/env bash
# Video format conversions by mox against the same conversions by ffmpeg, on
# one generated file, side by side.
#   bench/video-convert-vs-ffmpeg.sh [BUILD_DIR]
# Generates a 1080p, 120-frame 4:2:0 8-bit Y4M (testsrc2; not kept), warms
# the page cache, then converts it to UYVY and to 24-bit RGB (elementary
# video writer, raw frames) and to 10-bit 4:2:2 (Y4M writer and raw frames),
# printing wall time, processor time (user + system), peak memory and the
# ratios. The outputs differ because chroma is upsampled differently: mox
# interpolates linearly, ffmpeg's 4:2:0 to UYVY path repeats chroma lines and
# its scaler filters with a bicubic kernel by default. RUNS (default 3) sets how
# many runs each job gets; the fastest counts.
set -euo pipefail
build=${1:-build/Release}
mox="$build/bin/mox"
work=$(mktemp -d /tmp/mox-vfc-XXXXXX)
trap 'rm -rf "$work"' EXIT
ffmpeg -v error -f lavfi -i testsrc2=size=1920x1080:rate=25 -frames:v 120 -pix_fmt yuv420p "$work/in.y4m"
cat "$work/in.y4m" > /dev/null
echo "input: $(stat -c %s "$work/in.y4m") bytes, 1920x1080, 120 frames, 4:2:0 8-bit; $(nproc) cores"

source "$(dirname "$0")/timing.sh"
compare() {  # label, mox output, mox format, ffmpeg output, ffmpeg options...
  local label=$1 out=$2 code=$3 ffout=$4
  shift 4
  read -r mox_s mox_kb mox_cpu < <(best "$mox" convert "$work/in.y4m" "$work/$out" --video-format "$code" -q)
  read -r ff_s ff_kb ff_cpu < <(best ffmpeg -v error -y -i "$work/in.y4m" "$@" "$work/$ffout")
  local same="differs"
  cmp -s "$work/$out" "$work/$ffout" && same="identical"
  printf "%-28s mox %5.2f s (cpu %5.2f s) %6d kB | ffmpeg %5.2f s (cpu %5.2f s) %6d kB | ratio time %.2fx memory %.2fx | output %s\n" \
    "$label" "$mox_s" "$mox_cpu" "$mox_kb" "$ff_s" "$ff_cpu" "$ff_kb" \
    "$(awk "BEGIN{print $mox_s / ($ff_s > 0 ? $ff_s : 0.01)}")" "$(awk "BEGIN{print $mox_kb / $ff_kb}")" "$same"
  rm -f "$work/$out" "$work/$ffout"
}

compare "4:2:0 -> UYVY (raw)" mox-uyvy.raw UYVY ff-uyvy.raw -pix_fmt uyvy422 -f rawvideo
compare "4:2:0 -> BGR 24-bit (raw)" mox-bgr.raw 24BG ff-bgr.raw -pix_fmt bgr24 -f rawvideo
compare "4:2:0 -> 10-bit 4:2:2 (raw)" mox-i2al.raw I2AL ff-i2al.raw -pix_fmt yuv422p10le -f rawvideo
compare "4:2:0 -> 10-bit 4:2:2 (Y4M)" mox-i2al.y4m I2AL ff-i2al.y4m -pix_fmt yuv422p10le -f yuv4mpegpipe -strict -1
