#!/usr/bin/env bash
# Runs the examples against a build folder (default build/RelWithDebInfo).
set -euo pipefail
build=${1:-build/RelWithDebInfo}
cd "$(dirname "$0")/.."
echo "== mox --version"
"$build/bin/mox" --version
echo
echo "== a host program using <Mox.h>"
"$build/bin/mox_example_host"
echo
echo "== WFL scripts run by the mox host"
for script in examples/wfl/hello.wfl examples/wfl/timecode.wfl; do
  echo "-- mox run $script"
  "$build/bin/mox" run "$script"
done
echo
echo "== a media job: copy a YUV4MPEG clip, then describe the copy"
out="$build/demo"
mkdir -p "$out"
"$build/bin/mox" run examples/wfl/copy.wfl -D "input='examples/media/clip.y4m'" -D "output='$out/copy.y4m'"
"$build/bin/mox" probe "$out/copy.y4m"
"$build/bin/mox" convert examples/media/clip.y4m "$out/copy.raw" --print-script
if command -v ffmpeg >/dev/null 2>&1; then
  a=$(ffmpeg -v error -i examples/media/clip.y4m -f framemd5 - | grep -v '^#' | md5sum)
  b=$(ffmpeg -v error -i "$out/copy.y4m" -f framemd5 - | grep -v '^#' | md5sum)
  if [ "$a" = "$b" ]; then echo "ffmpeg: the copy's frames are identical to the source's"; else echo "ffmpeg: the frames differ" >&2; exit 1; fi
fi
echo
echo "== conversions: 24-bit WAV to 16-bit, 4:2:0 pictures to packed UYVY"
"$build/bin/mox" run examples/wfl/convert-audio.wfl -D "input='examples/media/tone.wav'" -D "output='$out/tone16.wav'"
# Whole outputs go to files first: under pipefail, head closing the pipe
# early would end the demo with mox's SIGPIPE.
"$build/bin/mox" probe "$out/tone16.wav" > "$out/tone16.probe"
head -6 "$out/tone16.probe"
"$build/bin/mox" run examples/wfl/convert-video.wfl -D "input='examples/media/clip.y4m'" -D "output='$out/clip-uyvy.raw'"
echo "clip-uyvy.raw: $(stat -c %s "$out/clip-uyvy.raw") bytes (25 pictures of 64x48 at 2 bytes a pixel)"
echo
echo "== what this build can create"
"$build/bin/mox" catalog > "$out/catalog.txt"
head -5 "$out/catalog.txt"
