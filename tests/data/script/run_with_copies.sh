#!/bin/sh
# Runs a session script on a fresh copy of its case's files/ folder, so that tools that
# change a file in place or write beside it never touch the test data. The script gets
# the copy as $FILES and starts in it.
set -eu
RUNNER="$1"
CASE="$2"
SAMPLES="$3"
W="$(mktemp -d /tmp/tolvaneXXXXXX)"  # no dot: the backups are cut at the first dot
trap 'rm -rf "$W"' EXIT
cp -R "$CASE/files/." "$W/"
"$RUNNER" --cwd "$W" --var FILES="$W" --var CASE="$CASE" --var SAMPLES="$SAMPLES" "$CASE/session.tvs"
