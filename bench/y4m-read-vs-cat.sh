#!/usr/bin/env bash
# Indexing a 2 GB Y4M and reading it through the reader, against cat.
#   bench/y4m-read-vs-cat.sh [BUILD_DIR]
# Generates a sparse 2 GB 1080p Y4M (not kept), then prints:
#   - mox probe's wall time and peak memory (indexing the whole file),
#   - cat's time for the same cached file,
#   - the benchmark of reading every frame's bytes through the reader vs read(2).
set -euo pipefail
build=${1:-build/RelWithDebInfo}
file=$(mktemp /tmp/mox-y4m-XXXXXX.y4m)
trap 'rm -f "$file"' EXIT

python3 - "$file" <<'PY'
import os, sys
path = sys.argv[1]
size = 2 * 1000 ** 3
frame = 1920 * 1080 * 3 // 2
header = b"YUV4MPEG2 W1920 H1080 F25:1 Ip A1:1 C420\n"
with open(path, "wb") as f:
    f.write(header)
    position = len(header)
    while position + 6 + frame <= size:
        f.seek(position)
        f.write(b"FRAME\n")
        position += 6 + frame
    f.truncate(position)
PY
echo "file: $(stat -c %s "$file") bytes"
cat "$file" > /dev/null  # warm the page cache

source "$(dirname "$0")/timing.sh"
read -r probe_s probe_kb _ < <(measure "$build/bin/mox" probe "$file")
read -r cat_s cat_kb _ < <(measure cat "$file")
echo "index (mox probe): ${probe_s} s, peak ${probe_kb} kB"
echo "cat:               ${cat_s} s, peak ${cat_kb} kB"
MOX_Y4M_BENCH_FILE="$file" "$build/bench/bench_Y4m" --benchmark_min_time=1
