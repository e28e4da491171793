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
for script in examples/wfl/*.wfl; do
  echo "-- mox run $script"
  "$build/bin/mox" run "$script"
done
echo
echo "== what this build can create"
"$build/bin/mox" catalog | head -5
