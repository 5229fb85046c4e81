#!/bin/sh
# program_test.sh PROGRAM: exit statuses and streams of the program.
set -u
program=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
export XDG_STATE_HOME="$folder/state"
failures=0

# check NAME STATUS STDOUT STDERR COMMAND...: the texts exact, but for a final line feed; * in STDERR stands for anything.
check() {
  name=$1 status=$2 out=$3 err=$4
  shift 4
  got_out=$("$@" 2>err; echo "status $?")
  got_err=$(cat err)
  expected=$(printf '%s\nstatus %s' "$out" "$status")
  [ -n "$out" ] || expected="status $status"
  # shellcheck disable=SC2254  # a pattern
  case $got_err in
    $err) matches=yes ;;
    *) matches=no ;;
  esac
  if [ "$got_out" != "$expected" ] || [ $matches = no ]; then
    printf '%s\n  out: %s\n  err: %s\n' "$name" "$got_out" "$got_err"
    failures=$((failures + 1))
  fi
}
with_input() { # with_input TEXT COMMAND...
  text=$1
  shift
  printf "$text" | "$@"
}

without_input() { "$@" <&-; }
folder_as_input() { "$@" <folder; }
without_output() { "$@" >&-; }
full_disk() { "$@" >/dev/full; }

blank='
'
mkdir folder
printf 'x = 2;\nx + 1\n' >good.m
printf 'y = 1\nnope\n' >folder/bad.m
printf 'x = "\377"\n' >latin.m

check 'values and errors' 1 "x = ${blank} 5.0000${blank}${blank}ans = ${blank} 6.0000" \
  "${blank}Error at Line 1(1) of the console. *\"nope\"*." "$program" -e 'x = 5' -e 'x + 1' -e nope
check 'one blank line between items' 0 "s =${blank} struct with field:${blank}    a: Double [1 x 1]  1.0000${blank}${blank}x = ${blank} 2.0000" \
  '' "$program" -e 's.a = 1' -e 'x = 2'
check 'texts of disp in a row' 0 " 1.0000${blank}ab${blank}${blank}x = ${blank} 2.0000${blank}${blank} 3.0000" '' \
  "$program" -e "disp(1), disp('ab'), x = 2" -e 'disp(3)'
check 'text that begins with a dash' 0 "ans = ${blank}-2.0000" '' "$program" -e '-5 + 3'
check 'silence' 0 '' '' "$program" -e 'x = 5;' -e ''
check 'figures cross threads' 0 "ans = ${blank} 0.0000   9.0000" '' "$program" -e 'plot(0:9)' -e ylim
check 'file' 0 "ans = ${blank} 3.0000" '' "$program" good.m
check 'file in a folder' 1 "y = ${blank} 1.0000" "${blank}Error at Line 2(1) of bad.m. *" "$program" folder/bad.m
check 'work directory' 1 "y = ${blank} 1.0000" "${blank}Error at *" "$program" --workdir folder bad.m
check 'standard input' 0 "x = ${blank} 1.0000" '' with_input 'x = 1\n' "$program"
check 'dash' 0 "x = ${blank} 1.00000000000" '' with_input 'x = 1' "$program" --digits 12 -
check 'json' 1 '{"contentType":"doubleArray","varName":"x","text":"x = \n 1.0000"}
{"contentType":"error","varName":null,"text":"Error at Line 1(1) of the console. Variable or function named \"nope\" not found."}' \
  '' "$program" --json -e 'x = 1' -e nope
for name in sin polyfit plot; do
  "$program" --functions | grep -q "^  $name " && "$program" --functions "$name" | grep -q '^See also' && continue
  echo "help on $name is missing"
  failures=$((failures + 1))
done
check 'no such function' 1 '' 'kelo: there is no help on "nope"' "$program" --functions nope
check 'tokens' 0 "    1:1    LSQB           \"[\"
    1:2    INT            \"1\"
    1:3    COMMA          \" \"
    1:4    MINUS          \"-\"
    1:5    INT            \"2\"
    1:6    RSQB           \"]\"
    1:7    NEWLINE        \"\\n\"
    2:1    EOF            \"\"" '' "$program" --tokens -e '[1 -2]'
check 'tree' 0 'Prog_stat_list
  Stat_list
    Assignment
      Var_assignment
        Id_names "x"
        "="
        Int "2"
      Stat_separator ";"
      Stat_separator "\n"
    Expression
      BinaryOps
        Id
          Id_names "x"
        "+"
        Int "1"
      Stat_separator "\n"
      Stat_separator "\n"
  "<EOF>"' '' "$program" --tree good.m
check 'tokens of a text that does not parse' 1 '    1:1    EQ             "="
    1:2    NEWLINE        "\n"
    2:1    EOF            ""' 'Syntax error at Line 1(1) of the console. Unexpected character "=".' "$program" --tokens -e =
"$program" --code good.m | grep -q '2 | x + 1' || { echo 'code is missing'; failures=$((failures + 1)); }
check 'missing file' 1 '' 'Error in no.m. Failed to load "no.m".' "$program" no.m
check 'not UTF-8' 1 '' '*error*latin.m. *' "$program" latin.m
check 'not UTF-8 on standard input' 1 '' '*error*. *' with_input 'x = \377' "$program"
check 'NUL' 1 '' '*error*. *' with_input 'x\000y' "$program"
check 'closed standard input' 1 '' 'kelo: standard input cannot be read: *' without_input "$program" -
check 'folder as standard input' 1 '' 'kelo: standard input cannot be read: *' folder_as_input "$program"
check 'input from a closed standard input' 1 '' '*' without_input "$program" -e 'x = input("n")'
check 'full disk' 1 '' 'kelo: standard output cannot be written: *' full_disk "$program" -e 'x = 1'
check 'closed standard output' 1 '' 'kelo: standard output cannot be written: *' without_output "$program" -e "csvwrite('kept.csv', [1 2])" -e 'x = 1'
check 'file written while standard output was closed' 0 '1,2' '' cat kept.csv
check 'fatal fault' 70 '' 'kelo: the run was ended by a fatal fault: *' "$program" -e 'x = 1:1e30;' -e 1
for wrong in --nonsense '--digits 7' '--width 0' '--workdir none' '-e 1 good.m' --figure=f.gif '--figure=f.png --figure-size=0x9' --theme=blue folder 'good.m good.m' -e; do
  # shellcheck disable=SC2086  # one word an argument
  check "wrong usage: $wrong" 2 '' 'kelo: *' "$program" $wrong
  [ "$(wc -l <err)" = 1 ] || { echo "wrong usage: $wrong: more than one line"; failures=$((failures + 1)); }
done

check 'end of the input of input' 1 'n? ' \
  'kelo: the run waits for standard input, which has ended*Terminated by user interruption.' \
  with_input '' "$program" -e "n = input('n? ');"
check 'no home' 0 "x = ${blank} 1.0000" '' env -u XDG_STATE_HOME HOME='' "$program" -e 'rng(1), x = 1'
[ ! -e /.local/state/kelo ] || { echo 'no home: wrote below /'; failures=$((failures + 1)); }
check 'answers of a pipe' 0 "? ${blank}${blank}? " '' \
  with_input '3\n4\n' "$program" -e "rng(1), x = input('? ') + input('? ');"
if grep -q consoleHistory state/kelo/settings.json; then
  echo 'answers of a pipe are kept in the history'
  failures=$((failures + 1))
fi
# A timer that goes off is not taken for a wait that the end of the input could stop.
for k in 1 2 3 4 5; do
  check 'timed pause without input' 0 '' '' with_input '' "$program" -e 'pause(0.01)' -e 'y = 1;'
done

# With little memory a run fails in one line, and the next one goes on with the workspace.
limited() { (ulimit -v "$1" && shift && "$@"); }
if limited 900000 "$program" -e 'x = 1;' 2>/dev/null; then  # not under a sanitizer
  check 'no memory for many small things' 1 "${blank} 2.0000${blank} 12.000" '*Unexpected error occurred*' \
    limited 900000 "$program" -e 'x = 3; y = 4; c.a = 1; while 1, d.n = c; d.v = [1 2 3]; c = d; end' -e 'disp(2), disp(x*y)'
  [ "$(grep -c . err)" = 1 ] || { echo 'no memory: more than one line'; failures=$((failures + 1)); }
  check 'matrix products in little memory' 0 ' 400.00' '' limited 400000 "$program" -e 'x = ones(400); y = x*x; disp(y(1))'
  check 'no matrix products in very little memory' 1 '' 'Error*' limited 250000 "$program" -e 'x = ones(400); x = x*x;'
fi

# Figures: every kind of file, whole or not at all.
check 'figure files' 0 '' '' "$program" -e 'plot(1:3)' --figure f.png --figure f.svg --figure f.pdf --figure f.kfig --theme dark
for kind in 'f.png PNG' 'f.svg <svg' 'f.pdf %PDF' 'f.kfig "plotData"'; do
  grep -qa "${kind#* }" "${kind%% *}" || { echo "figure file $kind"; failures=$((failures + 1)); }
done
check 'no figure to write' 1 '' 'kelo: There is no figure to write to none.svg' "$program" -e 1\; --figure none.svg
check 'figure to a folder that is missing' 1 '' 'kelo: away/f.svg cannot be written: *' "$program" -e 'plot(1)' --figure away/f.svg
check 'figure with NaN as a document' 1 '' 'kelo: nan.kfig cannot be written: *' "$program" -e 'plot([1 NaN])' --figure nan.kfig
[ ! -e none.svg ] && [ ! -e nan.kfig ] || { echo 'a figure was half written'; failures=$((failures + 1)); }

# Random numbers go on where the last program left them; where nothing can be saved, they go on within the program.
second="ans = 1e-1 × ${blank} 4.1119"
check 'seed' 0 '' '' "$program" -e 'rng(1), x = rand;'
check 'random numbers go on' 0 "$second" '' "$program" -e rand
check 'random numbers without a place for them' 0 "$second" 'kelo: the settings cannot be saved in *' \
  env XDG_STATE_HOME="$folder/good.m" "$program" -e 'rng(1), x = rand;' -e rand

# Where the stack runs out depends on the build; one line is said all the same.
printf 'function y = inside(n)\nx = 1:5;\ny = 1 + x(inside(n));\nend\n' >inside.m
check 'recursion inside an index' 1 '' 'Error in inside() at Line * of inside.m. The recursion is too deep.' \
  "$program" -e 'inside(inside(1))'
[ "$(wc -l <err)" = 1 ] || { echo 'recursion inside an index: more than one line'; failures=$((failures + 1)); }

# Ctrl-C ends an endless loop, and the commands behind it do not run.
"$program" -e 'while 1, x = 1; end' -e 'y = 2' >out 2>err &
sleep 0.5
kill -INT $!
wait $!
status=$?
if [ $status != 1 ] || [ -s out ] || ! grep -q 'Terminated by user interruption' err; then
  echo "Ctrl-C: status $status"
  cat out err
  failures=$((failures + 1))
fi

# A second press ends the program where the first goes unanswered.
"$program" -e 'x = rand(1, 2e7); disp(1), for k = 1:100, sort(x); end' >out 2>err &
for _ in $(seq 400); do
  grep -q 1 out && break
  sleep 0.05
done
kill -INT $!
sleep 0.2
kill -INT $!
wait $!
status=$?
[ $status = 130 ] || { echo "Ctrl-C twice: status $status"; failures=$((failures + 1)); }
[ $failures = 0 ]
