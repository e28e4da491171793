#!/usr/bin/env bash
# Runs every benchmark program of a build folder.
set -euo pipefail
build=${1:-build/Release}
status=0
for b in "$build"/bench/bench_*; do
  [ -x "$b" ] || continue
  echo "== $(basename "$b")"
  "$b" --benchmark_min_time=0.2 || status=1
done
exit $status
