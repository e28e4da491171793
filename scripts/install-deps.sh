#!/usr/bin/env bash
# Installs the Debian packages that the build, the tests and the validators need.
# Idempotent: when every package is already present it does nothing at all.
set -euo pipefail

PACKAGES=(
  cmake ninja-build g++ make pkg-config ccache
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  libxml2-dev libjsoncpp-dev zlib1g-dev libssl-dev libgif-dev
  libgraphviz-dev libcli11-dev libhwy-dev
  ffmpeg mediainfo mkvtoolnix sox time
)

# Fuzz builds (make fuzz) also need clang and its sanitizer runtimes.
if [ "${1:-}" = "--fuzz" ]; then
  PACKAGES+=(clang libclang-rt-14-dev)
fi

missing=()
for pkg in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$pkg")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
if [ "$(id -u)" -ne 0 ]; then
  if command -v sudo >/dev/null 2>&1; then
    SUDO=sudo
  else
    echo "install-deps: missing packages (${missing[*]}) and not root; run as root:" >&2
    echo "  apt-get update && apt-get install -y ${missing[*]}" >&2
    exit 1
  fi
else
  SUDO=
fi

export DEBIAN_FRONTEND=noninteractive
if ! $SUDO apt-get update -qq || ! $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"; then
  echo "install-deps: apt-get could not install: ${missing[*]}" >&2
  echo "  check the network and apt sources, then run: apt-get install ${missing[*]}" >&2
  exit 1
fi
