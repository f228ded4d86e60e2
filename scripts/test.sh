#!/usr/bin/env bash
# Installs what Tolvane needs, builds everything and runs every test under Xvfb.
# In CI (CI=true) the tests also run in a second build with AddressSanitizer and
# UndefinedBehaviorSanitizer, and every fuzz target runs for a few seconds
# ($TOLVANE_FUZZ_SECONDS, default 4; 0 skips them) where clang links libFuzzer.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$ROOT/scripts/install-deps.sh"
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-/tmp/runtime-$(id -u)}"
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"

run_ctest() {
  local build="$1"
  (cd "$build" && xvfb-run -a -s '-screen 0 1280x1024x24' env QT_QPA_PLATFORM=xcb \
     ctest --output-on-failure --timeout 300 -j2)
}

BUILD="${TOLVANE_BUILD_DIR:-$ROOT/build}"
TOLVANE_BUILD_DIR="$BUILD" "$ROOT/scripts/build.sh" -DTOLVANE_WERROR="${TOLVANE_WERROR:-OFF}"

if [ "${CI:-}" = "true" ] || [ "${TOLVANE_SANITIZE:-}" = "1" ]; then
  SAN="$ROOT/build-sanitize"
  TOLVANE_BUILD_DIR="$SAN" TOLVANE_BUILD_TYPE=Debug "$ROOT/scripts/build.sh" \
    -DTOLVANE_SANITIZE=ON -DTOLVANE_BENCH=OFF
  echo "== tests with AddressSanitizer and UndefinedBehaviorSanitizer =="
  ASAN_OPTIONS=detect_leaks=0 run_ctest "$SAN"
fi

echo "== tests =="
run_ctest "$BUILD"

echo "== the installed program and its Debian package =="
DEB="$("$ROOT/scripts/package.sh" "$BUILD")"
"$ROOT/scripts/check-install.sh" "$BUILD" "$DEB"

if [ "${CI:-}" = "true" ] && [ "${TOLVANE_FUZZ_SECONDS:-4}" != "0" ]; then
  echo "== a short run of every fuzz target =="
  rc=0
  "$ROOT/scripts/fuzz.sh" "${TOLVANE_FUZZ_SECONDS:-4}" || rc=$?
  if [ "$rc" -eq 77 ]; then
    echo "(no clang with libFuzzer here: the corpora ran as tests only)"
  elif [ "$rc" -ne 0 ]; then
    exit "$rc"
  fi
fi
