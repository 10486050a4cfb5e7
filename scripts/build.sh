#!/usr/bin/env bash
# Configures and builds into the given folder; further arguments go to cmake.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir=${1:-"$root/build"}
shift || true
cmake -S "$root" -B "$dir" -G Ninja "$@"
cmake --build "$dir" -j"$(nproc)"
