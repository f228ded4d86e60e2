#!/usr/bin/env bash
# Installs what Tolvane needs, builds it and starts it. With no file named it opens the
# sample figure in a per-user copy of the bundled samples (made once; TOLVANE_DEMO_DIR
# names another place), with that copy standing in for Poser's folder.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$ROOT/scripts/install-deps.sh"
"$ROOT/scripts/build.sh" -DTOLVANE_TESTS=OFF -DTOLVANE_BENCH=OFF
APP="${TOLVANE_BUILD_DIR:-$ROOT/build}/src/gui/tolvane"

ARGS=("$@")
if [ ${#ARGS[@]} -eq 0 ]; then
  # The demo works on a copy of the bundled samples in a folder of the user's own, made
  # once, so trying the tools never changes the repository's samples or the tests'
  # fixtures. The copy stands in for Poser's folder, and the demo has its own settings.
  DEMO="${TOLVANE_DEMO_DIR:-${XDG_DATA_HOME:-$HOME/.local/share}/Tolvane/demo}"
  if [ ! -d "$DEMO/samples" ]; then
    mkdir -p "$DEMO"
    rm -rf "$DEMO/samples.partial"
    cp -R "$ROOT/samples" "$DEMO/samples.partial"
    mv "$DEMO/samples.partial" "$DEMO/samples"
    echo "The demo works on a copy of the samples in $DEMO/samples."
  fi
  mkdir -p "$DEMO/work"
  if [ ! -f "$DEMO/settings.ini" ]; then
    printf '[Startup]\nPLoc=%s/samples/\nVer=5.0\nTolvaneLoc=%s\n' "$DEMO" "$DEMO/work" > "$DEMO/settings.ini"
  fi
  export TOLVANE_SETTINGS="${TOLVANE_SETTINGS:-$DEMO/settings.ini}"
  export TOLVANE_WORKDIR="${TOLVANE_WORKDIR:-$DEMO/work}"
  ARGS=("$DEMO/samples/Runtime/Libraries/Character/Tolvane/Ava.cr2")
fi

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "No display: starting Tolvane under Xvfb (close it with Ctrl+C)."
  exec xvfb-run -a -s '-screen 0 1280x1024x24' "$APP" "${ARGS[@]}"
fi
exec "$APP" "${ARGS[@]}"
