#!/usr/bin/env bash
# The package check of the test script: builds the Debian package from the
# already built tree, checks it the way Debian does (lintian, the desktop
# entry, the AppStream metadata), installs it with apt-get, runs the
# installed programs as a user would, and removes it again, also when a step
# fails. Needs root or sudo; a zorbo-editor package installed before is left
# alone and the installing steps are skipped.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$root/build"}
sudo=()
if [ "$(id -u)" -ne 0 ]; then sudo=(sudo); fi

work=$(mktemp -d)
installed=0
cleanup() {
  local rc=$?
  if [ "$installed" = 1 ]; then
    DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get purge -y -q zorbo-editor >/dev/null || rc=1
  fi
  rm -rf "$work"
  if [ "$rc" -ne 0 ]; then echo "Paketprüfung: fehlgeschlagen" >&2; fi
  exit "$rc"
}
trap cleanup EXIT
trap 'exit 1' INT TERM

deb=$("$root/scripts/package.sh" "$build" "$work" | tail -n 1)
echo "Paketprüfung: $(basename "$deb")"
lintian --fail-on error --tag-display-limit 0 "$deb"
desktop-file-validate "$root/packaging/zorbo-editor.desktop"
appstreamcli validate --no-net "$build/packaging/de.zorbo.ZorboEditor.metainfo.xml"
# Homepage and screenshots come only with a public address (ZORBO_WEB_URL):
# the metadata once more with a test address, without a second package, and
# every screenshot named lies in docs/.
version=$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' "$build/packaging/de.zorbo.ZorboEditor.metainfo.xml")
mkdir "$work/web"
cmake -DZORBO_WEB_URL=https://zorbo-editor.example.org -DPROJECT_VERSION="$version" \
  -DZORBO_METAINFO_FILE="$work/web/de.zorbo.ZorboEditor.metainfo.xml" -P "$root/packaging/metainfo.cmake"
appstreamcli validate --no-net "$work/web/de.zorbo.ZorboEditor.metainfo.xml"
shots=$(sed -n 's|.*<image>https://zorbo-editor.example.org/\(docs/[^<]*\)</image>.*|\1|p' "$work/web/de.zorbo.ZorboEditor.metainfo.xml")
if [ -z "$shots" ]; then
  echo "Paketprüfung: die Metadaten mit Adresse nennen keine Bildschirmfotos" >&2
  exit 1
fi
for shot in $shots; do
  if [ ! -f "$root/$shot" ]; then
    echo "Paketprüfung: das Bildschirmfoto $shot der Metadaten fehlt" >&2
    exit 1
  fi
done

# Every command zorbo-cli knows has its place in the man page.
for command in $("$build/src/zorbo-cli" --help | sed -n 's/^  \([a-z][a-z-]*\).*/\1/p'); do
  if ! grep -q -- "^\.B[I]* $command\b" "$root/packaging/zorbo-cli.1"; then
    echo "Paketprüfung: zorbo-cli.1 kennt den Befehl $command nicht" >&2
    exit 1
  fi
done

if dpkg-query -W -f='${Status}' zorbo-editor 2>/dev/null | grep -q "install ok installed"; then
  echo "Paketprüfung: zorbo-editor ist schon installiert; Installation übersprungen" >&2
  exit 0
fi
installed=1
DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -q --no-install-recommends "$deb" >/dev/null

# As a user: a home of its own, no display.
export HOME="$work/home" QT_QPA_PLATFORM=offscreen
unset XDG_DATA_HOME
mkdir -p "$HOME"
data="$HOME/.local/share/zorbo-editor"
welt=$(mktemp -d -p "$work")
/usr/bin/zorbo-cli --dir "$welt" init >/dev/null
/usr/bin/zorbo-cli --dir "$welt" check >/dev/null
/usr/bin/zorbo-editor --help | grep -q "^Aufruf: zorbo-editor"
/usr/bin/zorbo-editor --version | grep -q "^zorbo-editor "
zcat /usr/share/man/man1/zorbo-cli.1.gz | grep -q "^\.SH RÜCKGABEWERT"

# The editor on an empty folder and with no folder at all: each fills its
# world (pictures from /usr/share/zorbo-editor, database), then it is ended.
runeditor() {
  local folder=$1
  shift
  /usr/bin/zorbo-editor "$@" >"$work/editor.log" 2>&1 &
  local pid=$! tries=0
  until [ -f "$folder/zorbo.mdb" ] && [ -f "$folder/wappen/default.tga" ]; do
    if ! kill -0 "$pid" 2>/dev/null || [ $((tries += 1)) -gt 600 ]; then
      cat "$work/editor.log" >&2
      echo "Paketprüfung: der Editor hat in $folder keine Welt angelegt" >&2
      kill "$pid" 2>/dev/null || true
      exit 1
    fi
    sleep 0.1
  done
  kill "$pid"
  wait "$pid" || true
}
leer=$(mktemp -d -p "$work")
runeditor "$leer" --dir "$leer"
runeditor "$data"
# The command-line tool finds the same world without --dir.
/usr/bin/zorbo-cli info | grep -q .
if [ -e /usr/bin/zorbo.mdb ] || [ -e /usr/bin/zorboeditor.ini ]; then
  echo "Paketprüfung: die Welt liegt im Programmordner /usr/bin" >&2
  exit 1
fi
echo "Paketprüfung: bestanden"
