#!/usr/bin/env bash
# Configures and builds Tolvane into build/ (or $TOLVANE_BUILD_DIR).
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
BUILD="${TOLVANE_BUILD_DIR:-$ROOT/build}"
TYPE="${TOLVANE_BUILD_TYPE:-RelWithDebInfo}"
export CCACHE_BASEDIR="$ROOT" CCACHE_NOHASHDIR=1
cmake -S "$ROOT" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE="$TYPE" \
  -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@" > "$BUILD.configure.log" 2>&1 \
  || { cat "$BUILD.configure.log"; exit 1; }
cmake --build "$BUILD" -j"$(nproc)"
