#!/bin/sh
# program_test.sh PROGRAM: what `kelo serve --stdio` does at the edges of its streams.
set -u
program=$1
state=$(mktemp -d)
trap 'rm -rf "$state"' EXIT
failed=0

serve() { timeout 60 "$program" serve --stdio --workdir "$state" --state "$state"; }

run() { printf '{"jsonrpc":"2.0","id":1,"method":"console/run","params":{"text":"%s"}}\n' "$1"; }

expect() { # NAME WHAT-CAME PATTERN
  if ! printf '%s\n' "$2" | grep -q -- "$3"; then
    printf '%s: "%s" is not in\n%.2000s\n' "$1" "$3" "$2"
    failed=1
  fi
}

expect "a run that goes on at the end of input is finished" "$(run 'pause(0.2); x = 1:3' | serve)" '"id":1,"result":{"status":"done"'
expect "its value is shown" "$(run 'x = 1:3' | serve)" '1.0000   2.0000   3.0000'
expect "one that waits for an answer is stopped" "$(run "x = input('x? ');" | serve)" '"status":"failed"'
expect "a last line without its end is a message" "$(printf '{"jsonrpc":"2.0","id":2,"method":"run/stop"}' | serve)" '"id":2,"result":{}'
expect "blank lines are none" "$(printf '\n \r\n' | serve; echo "status $?")" '^status 0'
expect "a line that is too long gets one answer" \
  "$( (head -c 70000000 /dev/zero | tr '\0' 'x'; echo; run '1') | serve | tr '\n' ' ')" 'longer than 64 MiB.*"status":"done"'
expect "a reader that leaves ends an endless run" "$( (run 'k = 0; while true, k = k + 1, end' | serve; echo "status $?" >"$state/end") | head -3 >/dev/null; cat "$state/end")" 'status 1'
expect "a wrong word is told" "$("$program" serve --stdoi 2>&1; echo "status $?")" 'status 2'
expect "a missing folder is told" "$("$program" serve --stdio --workdir /nowhere 2>&1; echo "status $?")" 'status 2'

# A reader that takes its time, and a loop that shows much: old items are dropped, the last ones come.
slow=$(run 'for k = 1:300000, disp(k); end' | serve | (sleep 2; cat))
expect "the last item comes to a slow reader" "$slow" '"index":300000'
lines=$(printf '%s\n' "$slow" | wc -l)
[ "$lines" -lt 200000 ] || { echo "$lines lines came to a slow reader"; failed=1; }
exit $failed
