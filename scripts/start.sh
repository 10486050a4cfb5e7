#!/usr/bin/env bash
# Set-up, build and start of the editor. The first start creates the default
# world (settings, zorbo.mdb with the transfer market, picture folders) in the
# program's folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh" "$root/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo
exec "$root/build/src/zorbo-editor" "$@"
