#!/usr/bin/env bash
# Checks Tolvane as installed: installs the build folder ($1, default build/) into a
# DESTDIR, checks the file list, validates the desktop entry, the file types and the
# AppStream data with the validators that are installed, and runs the installed
# tolvane-script on an installed sample (a plain and a compressed copy of the figure).
# With a package ($2) it checks the package's file list the same way.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
BUILD="${1:-$ROOT/build}"
DEB="${2:-}"
DEST="$(mktemp -d)"
trap 'rm -rf "$DEST"' EXIT
fail() { echo "check-install: $*" >&2; exit 1; }

DESTDIR="$DEST/root" cmake --install "$BUILD" --prefix /usr > /dev/null
U="$DEST/root/usr"

EXPECTED=(
  bin/tolvane bin/tolvane-script
  share/tolvane/Quillmere3.wav
  share/tolvane/samples/Runtime/Libraries/Character/Tolvane/Ava.cr2
  share/tolvane/samples/Runtime/Geometries/Tolvane/ava.obj
  share/applications/org.tolvane.Tolvane.desktop
  share/metainfo/org.tolvane.Tolvane.metainfo.xml
  share/mime/packages/tolvane.xml
  share/icons/hicolor/scalable/apps/tolvane.svg
  share/icons/hicolor/48x48/apps/tolvane.png
  share/icons/hicolor/256x256/apps/tolvane.png
  share/man/man1/tolvane.1.gz share/man/man1/tolvane-script.1.gz
  share/doc/tolvane/copyright share/doc/tolvane/changelog.Debian.gz
)
for f in "${EXPECTED[@]}"; do [ -e "$U/$f" ] || fail "not installed: usr/$f"; done
# Nothing outside the prefix.
extra="$(cd "$DEST/root" && find . -mindepth 1 -maxdepth 1 ! -name usr)"
[ -z "$extra" ] || fail "installed outside /usr: $extra"

if [ -n "$DEB" ]; then
  listed="$(dpkg-deb -c "$DEB" | awk '{print $6}')"
  for f in "${EXPECTED[@]}"; do
    grep -qx "./usr/$f" <<< "$listed" || fail "not in the package: usr/$f"
  done
  grep -v '^\./usr/' <<< "$listed" | grep -vx '\./' && fail "the package writes outside /usr"
  dpkg-deb -f "$DEB" Depends | grep -q 'libqt6widgets6' || fail "the package does not depend on Qt"
  echo "package file list: ok ($(wc -l <<< "$listed") entries)"
fi

if command -v desktop-file-validate > /dev/null; then
  desktop-file-validate "$U/share/applications/org.tolvane.Tolvane.desktop"
  echo "desktop entry: valid"
fi
if command -v appstreamcli > /dev/null; then
  appstreamcli validate --no-net --explain "$U/share/metainfo/org.tolvane.Tolvane.metainfo.xml"
fi
if command -v update-mime-database > /dev/null; then
  cp -r "$U/share/mime" "$DEST/mime"
  # It notes that the scratch folder is not searched; anything else is a fault of the XML.
  update-mime-database "$DEST/mime" > "$DEST/mime.log" 2>&1 || fail "the file types do not load"
  ! grep -Ei 'error|warning|invalid|unknown' "$DEST/mime.log" || fail "the file types do not load"
  grep -q 'application/x-poser-figure-compressed:\*\.crz' "$DEST/mime/globs2" || fail "no *.crz type"
  grep -q 'application/x-poser-figure-compressed application/gzip' "$DEST/mime/subclasses" ||
    fail "CRZ is no gzip subclass"
  grep -aq 'application/x-poser-document' "$DEST/mime/magic" || fail "no type by first bytes"
  echo "file types: valid"
fi
for page in tolvane tolvane-script; do gzip -t "$U/share/man/man1/$page.1.gz"; done

# The installed runner, on the installed sample, plain and compressed.
"$U/bin/tolvane-script" --version | grep -qx 'tolvane-script [0-9.]*' || fail "no --version"
"$U/bin/tolvane-script" --help | grep -q -- '--work DIR' || fail "no --help"
gzip -c "$U/share/tolvane/samples/Runtime/Libraries/Character/Tolvane/Ava.cr2" > "$DEST/ava.crz"
cat > "$DEST/installed.tvs" <<'TVS'
setting Startup PLoc $SAMPLES/
msg "ALERT!" "There is more than one texture map used in this CR2." -> OK
open $SAMPLES/Runtime/Libraries/Character/Tolvane/Ava.cr2
check-entry ListActors 1 "    hip:1 * 12"
msg "ALERT!" "There is more than one texture map used in this CR2." -> OK
open $CWD/ava.crz
check-entry ListActors 1 "    hip:1 * 12"
TVS
(cd / && "$U/bin/tolvane-script" "$DEST/installed.tvs") || fail "the installed runner failed on the sample"
echo "installed runner on the installed sample: ok"
