#!/usr/bin/env bash
# Takes the picture of the main window in docs/ anew: the sample figure open in a copy
# of the samples, under Xvfb and a window manager. Needs a build with the tests.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
BUILD="${TOLVANE_BUILD_DIR:-$ROOT/build}"
xvfb-run -a -s '-screen 0 1400x1000x24' env QT_QPA_PLATFORM=xcb \
  TOLVANE_SCREENSHOT="$ROOT/docs/main-window.png" "$BUILD/tests/gui/drag_gui_tests" screenshotOfTheMainWindow
