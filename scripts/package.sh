#!/usr/bin/env bash
# Builds the Debian package zorbo-editor_<version>_amd64.deb with CPack from
# the install rules, in the given build folder (default build/, configured
# and built by scripts/build.sh or scripts/test.sh; only the programs are
# built again if they are out of date). The package lands in the folder given
# second (default: the build folder); its path is the last line printed.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$root/build"}
out=${2:-"$build"}
if [ ! -f "$build/CMakeCache.txt" ]; then
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
cmake --build "$build" -j"$(nproc)" --target zorbo-editor zorbo-cli packaging-files
mkdir -p "$out"
out=$(cd "$out" && pwd)
rm -f "$out"/zorbo-editor_*.deb
if ! (cd "$build" && cpack -G DEB -B "$out/_cpack" >"$out/cpack.log" 2>&1); then
  cat "$out/cpack.log" >&2
  exit 1
fi
rm -f "$out/cpack.log"
mv "$out"/_cpack/zorbo-editor_*.deb "$out"/
rm -rf "$out/_cpack"
ls "$out"/zorbo-editor_*.deb
