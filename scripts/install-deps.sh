#!/usr/bin/env bash
# Installs the Debian packages Tolvane needs to build, run and test.
# Idempotent: when every package is already present it returns at once.
set -euo pipefail

PACKAGES=(
  qt6-base-dev libqt6opengl6-dev libgl-dev libgl1-mesa-dri libglx-mesa0
  xvfb xauth fonts-dejavu-core
  libarchive-dev libzip-dev libpng-dev zlib1g-dev pkg-config
  # a small window manager and real pointer events for the drag and drop tests under Xvfb
  matchbox-window-manager xdotool
  libarchive-dev libzip-dev libpng-dev pkg-config
  libgtest-dev googletest libbenchmark-dev
  ccache cmake ninja-build g++
  # The Debian package and the checks of the desktop files: dpkg-shlibdeps and file for
  # CPack, the validators of the desktop entry, file types and AppStream data, lintian.
  dpkg-dev file desktop-file-utils shared-mime-info appstream lintian
  # clang with its runtimes (libFuzzer and the sanitizers) for the fuzz targets, scripts/fuzz.sh
  clang libclang-rt-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "Installing: ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends \
  -o DPkg::Lock::Timeout=300 "${missing[@]}"
