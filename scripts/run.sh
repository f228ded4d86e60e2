#!/usr/bin/env bash
# Installs what Tolvane needs, builds it and starts it. With no file named it opens
# the bundled sample figure, with the bundled samples folder standing in for Poser's.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$ROOT/scripts/install-deps.sh"
"$ROOT/scripts/build.sh" -DTOLVANE_TESTS=OFF -DTOLVANE_BENCH=OFF
APP="${TOLVANE_BUILD_DIR:-$ROOT/build}/src/gui/tolvane"

ARGS=("$@")
if [ ${#ARGS[@]} -eq 0 ]; then
  # A settings file of the demo's own, so the first start needs no Poser installation.
  DEMO="${TOLVANE_BUILD_DIR:-$ROOT/build}/demo"
  mkdir -p "$DEMO/work"
  if [ ! -f "$DEMO/settings.ini" ]; then
    printf '[Startup]\nPLoc=%s/samples/\nVer=5.0\nTolvaneLoc=%s\n' "$ROOT" "$DEMO/work" > "$DEMO/settings.ini"
  fi
  export TOLVANE_SETTINGS="${TOLVANE_SETTINGS:-$DEMO/settings.ini}"
  export TOLVANE_WORKDIR="${TOLVANE_WORKDIR:-$DEMO/work}"
  ARGS=("$ROOT/samples/Runtime/Libraries/Character/Tolvane/Ava.cr2")
fi

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "No display: starting Tolvane under Xvfb (close it with Ctrl+C)."
  exec xvfb-run -a -s '-screen 0 1280x1024x24' "$APP" "${ARGS[@]}"
fi
exec "$APP" "${ARGS[@]}"
