#!/usr/bin/env bash
# Set-up, build and the whole test suite: once as built for users, once under
# AddressSanitizer and UndefinedBehaviorSanitizer, then a short fuzzing run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
# --interop: also the test with LibreOffice Calc (installed only then).
interop=()
if [ "${1:-}" = "--interop" ]; then interop=(--interop); fi
"$root/scripts/setup.sh" "${interop[@]}"

"$root/scripts/build.sh" "$root/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo
(cd "$root/build" && ctest --output-on-failure -j2)
# The Debian package, made from the tree just built, checked, installed, run and removed.
"$root/scripts/package-check.sh" "$root/build"

"$root/scripts/build.sh" "$root/build-asan" -DCMAKE_BUILD_TYPE=Debug -DZORBO_SANITIZE=ON -DZORBO_BENCH=OFF
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:halt_on_error=1
export LSAN_OPTIONS=suppressions=$root/tests/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
(cd "$root/build-asan" && ctest --output-on-failure -j2)

if ((${#interop[@]})); then
  bash "$root/tests/players/calc-interop.sh" "$root/build/src/zorbo-cli" "$root/examples/beispielwelt"
fi

if [ -x "$root/scripts/fuzz-smoke.sh" ]; then
  "$root/scripts/fuzz-smoke.sh"
fi
echo "Alle Tests bestanden."
