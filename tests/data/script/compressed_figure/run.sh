#!/bin/sh
# The runner opens a compressed figure, reorders a part's channels and saves it under its
# own name; the file must still be gzip and unpack with zcat to the text the same steps
# give on the plain figure.
set -eu
RUNNER="$1"
DATA="$2"
W="$(mktemp -d)"
trap 'rm -rf "$W"' EXIT
gzip -c "$DATA/morph/figures/dest.cr2" > "$W/dest.crz"
"$RUNNER" --cwd "$W" "$DATA/script/compressed_figure/session.tvs"
[ "$(head -c 2 "$W/dest.crz" | od -An -tx1 | tr -d ' ')" = "1f8b" ] || { echo "not gzip any more"; exit 1; }
zcat "$W/dest.crz" | cmp - "$DATA/morph/reorder/expected.cr2"
[ "$(ls "$W")" = "dest.crz" ] || { echo "left beside it: $(ls "$W")"; exit 1; }
echo "compressed figure: saved packed, unpacks to the expected text"
