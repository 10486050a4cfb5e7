#!/usr/bin/env bash
# Kills crest imports of 1,000 crests at random moments. After each kill the
# next run of the tool must find the crest folder holding either all old or
# all new crests, and nothing else: no staging, no half-written file.
#   crest-kill-test.sh ZORBO_CLI [TRIES]
set -euo pipefail
cli=$1
tries=${2:-6}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

names=()
for i in $(seq 0 999); do names+=("vereins_wappen_$i.tga"); done

# An 8 x 8 TGA of one grey value, in the editor's own form.
tga() { printf '\0\0\2\0\0\0\0\0\0\0\0\0\10\0\10\0\30\0'; head -c 192 /dev/zero | tr '\0' "$1"; }
# Writes the same picture under every crest name of a folder.
fill() { (cd "$1" && tga "$2" | tee "${names[@]}" >/dev/null); }

# The new crests come from an archive packed by the tool itself.
"$cli" --dir "$work/neu" export-crests "$work/leer.res" >/dev/null 2>&1
fill "$work/neu/wappen" '\100'
"$cli" --dir "$work/neu" export-crests "$work/neu.res" >/dev/null 2>&1

"$cli" --dir "$work/alt" export-crests "$work/leer.res" >/dev/null 2>&1
wappen=$work/alt/wappen
expected=$( (ls -A "$wappen"; printf '%s\n' "${names[@]}") | sort -u)

# How long a whole import takes here, so that the kills fall inside one.
fill "$wappen" '\200'
start=$(date +%s%N)
"$cli" --dir "$work/alt" import-crests "$work/neu.res" >/dev/null 2>&1
span=$(( ($(date +%s%N) - start) / 1000000 ))
[ "$span" -gt 0 ] || span=1

old=0 new=0
for try in $(seq 1 "$tries"); do
    fill "$wappen" '\200'
    "$cli" --dir "$work/alt" import-crests "$work/neu.res" >/dev/null 2>&1 &
    pid=$!
    at=$(( RANDOM % span ))
    sleep "$(printf '%d.%03d' $((at / 1000)) $((at % 1000)))"
    kill -9 "$pid" 2>/dev/null || true
    wait "$pid" || true
    # The next run finishes or drops what the killed one left.
    "$cli" --dir "$work/alt" export-crests "$work/probe.res" >/dev/null 2>&1
    if [ "$(ls -A "$wappen" | sort)" != "$expected" ]; then
        echo "try $try: the crest folder holds other files:" >&2
        diff <(echo "$expected") <(ls -A "$wappen" | sort) >&2 || true
        exit 1
    fi
    kinds=$(cd "$wappen" && md5sum "${names[@]}" | cut -d' ' -f1 | sort | uniq -c)
    if [ "$(echo "$kinds" | wc -l)" -ne 1 ]; then
        echo "try $try: old and new crests mixed:" >&2
        echo "$kinds" >&2
        exit 1
    fi
    if cmp -s "$wappen/vereins_wappen_0.tga" <(tga '\200'); then old=$((old + 1)); else new=$((new + 1)); fi
done
echo "crest-kill-test: $tries kills within ${span} ms runs, $old left all old, $new all new crests"
