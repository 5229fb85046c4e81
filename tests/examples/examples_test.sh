#!/bin/sh
# examples_test.sh PROGRAM NAME: runs examples/NAME.m as a user does and compares what it prints with NAME.txt beside this
# script. KELO_ACCEPT=1 writes the file anew.
set -u
here=$(cd "$(dirname "$0")" && pwd)
program=$1
name=$2
cd "$here/../.." || exit 1
received=$(mktemp)
trap 'rm -f "$received"' EXIT

"$program" "examples/$name.m" >"$received" 2>&1 || { cat "$received"; exit 1; }
if [ -n "${KELO_ACCEPT:-}" ]; then
  cp "$received" "$here/$name.txt"
fi
diff -u "$here/$name.txt" "$received"
