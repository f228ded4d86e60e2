#!/usr/bin/env bash
# Takes the AppStream screenshot (packaging/screenshots/main.png) from the running
# program under Xvfb, with the bundled figure opened. Needs a build (build/ or $1).
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
BUILD="${1:-$ROOT/build}"
OUT="$ROOT/packaging/screenshots/main.png"
mkdir -p "$(dirname "$OUT")"
WORK="$(mktemp -d)"
trap 'rm -rf "$WORK"' EXIT
# A settings file that names the sample Poser folder, so that the first start asks nothing.
printf '[Startup]\nPLoc=%s/\nVer=5.0\n' "$ROOT/samples" > "$WORK/settings.ini"
TOLVANE_WORKDIR="$WORK" TOLVANE_SETTINGS="$WORK/settings.ini" \
  xvfb-run -a -s '-screen 0 1280x1024x24' env QT_QPA_PLATFORM=xcb \
  "$BUILD/packaging/tolvane-screenshot" "$OUT" "$ROOT/samples/Runtime/Libraries/Character/Tolvane/Ava.cr2"
echo "$OUT"
