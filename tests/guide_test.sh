#!/bin/sh
# guide_test.sh TRANSCRIPTS GUIDE: plays the examples of the guide, its indented lines, as a transcript.
set -eu
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
awk '/^## / || /^    / { sub(/^    /, ""); print; blank = 0; next }
     /^$/ { if (!blank) print; blank = 1 }' "$2" >"$folder/guide.txt"
"$1" "$folder/guide.txt"
