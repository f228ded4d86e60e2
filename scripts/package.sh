#!/usr/bin/env bash
# Builds the Debian package of Tolvane with CPack and checks it with lintian where
# lintian is installed; prints the package's path. Without an argument it makes a
# release build in build-package/; with one it packages that configured build folder.
# Install the package with:  sudo apt install ./build-package/tolvane_*.deb
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
if [ $# -ge 1 ]; then
  BUILD="$(cd "$1" && pwd)"
else
  BUILD="$ROOT/build-package"
  "$ROOT/scripts/install-deps.sh"
  mkdir -p "$BUILD"
  TOLVANE_BUILD_DIR="$BUILD" TOLVANE_BUILD_TYPE=Release "$ROOT/scripts/build.sh" \
    -DTOLVANE_TESTS=OFF -DTOLVANE_BENCH=OFF -DTOLVANE_FUZZ=OFF > /dev/null
fi
rm -f "$BUILD"/tolvane_*.deb
(cd "$BUILD" && cpack -G DEB > "$BUILD/cpack.log" 2>&1) || { cat "$BUILD/cpack.log" >&2; exit 1; }
DEB="$(ls "$BUILD"/tolvane_*.deb)"
if command -v lintian > /dev/null; then
  # Errors fail; warnings are shown.
  lintian --fail-on error "$DEB" >&2
fi
echo "$DEB"
