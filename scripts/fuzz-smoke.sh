#!/usr/bin/env bash
# Builds the fuzz targets with clang under the sanitizers and runs each one
# briefly on a copy of its corpus. Fails on any finding.
#   FUZZ_SECONDS  time per target (default: 20 for the binary readers, 10
#                 for the text readers, about a minute and a half in all)
#   FUZZ_BUILD    build folder (default build-fuzz)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${FUZZ_BUILD:-$root/build-fuzz}
targets=(resfdir gfp tga tmcfg spcfg tea profile aet)
declare -A budget=([resfdir]=20 [gfp]=20 [tga]=20 [tmcfg]=10 [spcfg]=10 [tea]=10 [profile]=10 [aet]=10)

if ! ls /usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a >/dev/null 2>&1; then
    echo "fuzz-smoke: libFuzzer is missing (Debian package libclang-rt-14-dev)" >&2
    exit 1
fi

CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja \
    -DZORBO_FUZZ=ON -DZORBO_SANITIZE=ON -DZORBO_BENCH=OFF -DBUILD_TESTING=OFF >/dev/null
cmake --build "$build" -j2 --target "${targets[@]/#/fuzz-}"

for target in "${targets[@]}"; do
    seconds=${FUZZ_SECONDS:-${budget[$target]}}
    # New inputs go into a scratch copy, so the corpus in the tree stays small.
    work=$(mktemp -d)
    cp "$root/fuzz/corpus/$target/." "$work/" -r
    echo "fuzz-smoke: $target for ${seconds}s"
    if ! "$build/fuzz/fuzz-$target" -max_total_time="$seconds" -max_len=65536 -rss_limit_mb=2048 \
        -timeout=10 -artifact_prefix="$build/finding-$target-" "$work" 2>"$build/fuzz-$target.log"; then
        tail -n 40 "$build/fuzz-$target.log" >&2
        echo "fuzz-smoke: $target found a fault; the input is in $build/finding-$target-*" >&2
        rm -rf "$work"
        exit 1
    fi
    grep -E "^Done|stat::number_of_executed_units" "$build/fuzz-$target.log" || tail -n 1 "$build/fuzz-$target.log"
    rm -rf "$work"
done
echo "fuzz-smoke: no findings"
