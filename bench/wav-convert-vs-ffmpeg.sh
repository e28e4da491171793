#!/usr/bin/env bash
# WAV sample-format conversion by mox against the same job by ffmpeg, on one
# generated file: 300 s of 8-channel 24-bit 48 kHz audio (about 330 MB, not
# kept) converted to 16-bit integers and to 32-bit floats.
#   bench/wav-convert-vs-ffmpeg.sh [BUILD_DIR] [SECONDS]
# Prints wall time and peak memory of each job (the best of three runs, with
# the page cache warm) and the ratios, then checks that both outputs decode
# to the same audio.
set -euo pipefail
build=${1:-build/Release}
seconds=${2:-300}
work=$(mktemp -d /tmp/mox-wav-XXXXXX)
trap 'rm -rf "$work"' EXIT
ffmpeg -v error -f lavfi -i "anoisesrc=color=pink:sample_rate=48000:amplitude=0.5:duration=$seconds" \
  -filter_complex "[0]asplit=8[a][b][c][d][e][f][g][h];[a][b][c][d][e][f][g][h]amerge=inputs=8" \
  -c:a pcm_s24le "$work/in.wav"
cat "$work/in.wav" > /dev/null
echo "file: $(stat -c %s "$work/in.wav") bytes, $seconds s, 8 channels, 24-bit"

source "$(dirname "$0")/timing.sh"
status=0
for pair in "sowt pcm_s16le" "23lf pcm_f32le"; do
  read -r code codec <<<"$pair"
  read -r mox_s mox_kb _ < <(best "$build/bin/mox" convert "$work/in.wav" "$work/mox-$code.wav" --audio-format "$code" -q)
  read -r ff_s ff_kb _ < <(best ffmpeg -v error -y -i "$work/in.wav" -c:a "$codec" "$work/ffmpeg-$code.wav")
  echo "to $codec:"
  echo "  mox convert:  ${mox_s} s, peak ${mox_kb} kB"
  echo "  ffmpeg:       ${ff_s} s, peak ${ff_kb} kB"
  awk "BEGIN{printf \"  ratio (mox / ffmpeg): time %.2fx, peak memory %.2fx\n\", $mox_s / ($ff_s > 0 ? $ff_s : 0.01), $mox_kb / $ff_kb}"
  a=$(ffmpeg -v error -i "$work/mox-$code.wav" -c:a "$codec" -f md5 -)
  b=$(ffmpeg -v error -i "$work/ffmpeg-$code.wav" -c:a "$codec" -f md5 -)
  if [ "$a" = "$b" ]; then echo "  decoded audio identical"; else echo "  decoded audio differs" >&2; status=1; fi
  rm -f "$work/mox-$code.wav" "$work/ffmpeg-$code.wav"
done
exit $status
