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
