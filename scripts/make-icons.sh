#!/usr/bin/env bash
# Renders the hicolor PNG icons from packaging/icons/tolvane.svg (needs rsvg-convert,
# Debian librsvg2-bin). The PNGs are kept in the repository, so a build does not need it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../packaging/icons"
for size in 16 32 48 64 128 256; do
  rsvg-convert -w "$size" -h "$size" tolvane.svg -o "tolvane-$size.png"
done
