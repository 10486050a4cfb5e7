#!/usr/bin/env bash
# LibreOffice Calc reads the player file as we mean it, and a file it saves
# is read back: umlauts, quotes, a semicolon and a line break in a name,
# strengths as numbers with a decimal comma. Needs libreoffice-calc-nogui
# (scripts/test.sh --interop installs it); not part of the normal run.
# Usage: calc-interop.sh ZORBO-CLI EXAMPLE-FOLDER
set -euo pipefail
cli=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "calc-interop: $*" >&2; exit 1; }

"$cli" --dir "$work/welt" init >/dev/null
"$cli" --dir "$work/welt" import-teams "$examples/1_tm.cfg" >/dev/null
"$cli" --dir "$work/welt" import-players "$examples/1_sp.cfg" >/dev/null
"$cli" --dir "$work/welt" players set --filter "text=müller" 'Vorname=Zé; "Bola"' >/dev/null
"$cli" --dir "$work/welt" players set --filter "text=strauß" 'Stärke=1,25' >/dev/null
"$cli" --dir "$work/welt" players export-csv "$work/spieler.csv" >/dev/null

# Calc as a German user opens the file: ";" (59), quotes (34), UTF-8 (76), German (1031).
export HOME=$work/home
in='CSV:59,34,76,1,,1031'
soffice --headless --nologo --norestore --infilter="$in" --convert-to fods --outdir "$work" "$work/spieler.csv" >/dev/null 2>&1 \
  || fail "Calc konnte die Datei nicht öffnen"
sheet=$work/spieler.fods
[ -f "$sheet" ] || fail "Calc hat keine Tabelle geschrieben"
grep -q 'Zé; &quot;Bola&quot;' "$sheet" || fail "der Vorname mit Anführungszeichen und Semikolon kam nicht als ein Feld an"
grep -q 'Größe' "$sheet" || fail "die Überschrift mit Umlaut kam nicht an"
grep -q 'office:value-type="float" office:value="1.25"' "$sheet" || fail "1,25 Sterne kamen nicht als Zahl 1,25 an"

# Calc saves it again as CSV (";" and UTF-8), and the editor reads it back: nothing changes.
soffice --headless --nologo --norestore --infilter="$in" --convert-to 'csv:Text - txt - csv (StarCalc):59,34,76,1,,1031,true,true' \
  --outdir "$work/calc" "$work/spieler.csv" >/dev/null 2>&1 || fail "Calc konnte die Datei nicht speichern"
out=$("$cli" --dir "$work/welt" players import-csv "$work/calc/spieler.csv") || fail "die von Calc gespeicherte Datei wurde abgelehnt"
echo "$out" | grep -q 'keine Änderung' || fail "die von Calc gespeicherte Datei ändert etwas: $out"
echo "calc-interop: Calc liest und schreibt die Spielerdatei wie gemeint."
