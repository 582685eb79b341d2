#!/usr/bin/env bash
# Runs each script NAME.c below a folder and compares what it prints with NAME.out:
#   run_scripts.sh path/to/vorc folder [topic ...]
# NAME.args holds further arguments for the program (default: -morv -morvquiet), NAME.status the
# exit status (default: 0), NAME.err what must stand on standard error (default: not looked at).
set -u
vorc=$(readlink -f "${1:?usage: run_scripts.sh path/to/vorc folder [topic ...]}")
root=$(readlink -f "${2:?}"); shift 2
passed=0 failed=0
fail() { failed=$((failed + 1)); echo "FAIL $1: $2"; }

run_case() {
  local source=$1 base=${1%.c} name work args expected status
  name=${base#"$root"/}
  work=$(mktemp -d)
  cp -r "$(dirname "$source")/." "$work"
  cp "$source" "$work/s.c"
  args="-morv -morvquiet"; [ -f "$base.args" ] && args=$(cat "$base.args")
  expected=0; [ -f "$base.status" ] && expected=$(cat "$base.status")
  # shellcheck disable=SC2086
  (cd "$work" && timeout 60 "$vorc" $args s.c >.stdout 2>.stderr </dev/null)
  status=$?
  if ! cmp -s "$work/.stdout" "$base.out"; then
    fail "$name" "output"; diff "$base.out" "$work/.stdout" | head -10; head -c 500 "$work/.stderr"
  elif [ "$status" != "$expected" ]; then
    fail "$name" "exit status $status, expected $expected"; head -c 500 "$work/.stderr"
  elif [ -f "$base.err" ] && ! cmp -s "$work/.stderr" "$base.err"; then
    fail "$name" "standard error"; diff "$base.err" "$work/.stderr" | head -10
  else
    passed=$((passed + 1))
  fi
  rm -rf "$work"
}

[ $# -gt 0 ] || set -- .
for topic; do
  while IFS= read -r source; do run_case "$source"; done \
    < <(find "$root/$topic" -name '*.c' ! -path '*/include/*' | sort)
done
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
