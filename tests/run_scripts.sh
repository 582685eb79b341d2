#!/usr/bin/env bash
# Runs each script NAME.c below a folder and compares what it prints with NAME.out:
#   run_scripts.sh path/to/vorc folder [topic ...]
# NAME.args holds further arguments for the program (default: -morv -morvquiet), NAME.status the
# exit status (default: 0), NAME.err what must stand on standard error (default: not looked at).
# As many run at a time as there are processors.
set -u
vorc=$(readlink -f "${1:?usage: run_scripts.sh path/to/vorc folder [topic ...]}")
root=$(readlink -f "${2:?}"); shift 2
reports=$(mktemp -d)
trap 'rm -rf "$reports"' EXIT
export vorc root reports

# Prints nothing when the case passes.
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
    echo "FAIL $name: output"; diff "$base.out" "$work/.stdout" | head -10; head -c 500 "$work/.stderr"
  elif [ "$status" != "$expected" ]; then
    echo "FAIL $name: exit status $status, expected $expected"; head -c 500 "$work/.stderr"
  elif [ -f "$base.err" ] && ! cmp -s "$work/.stderr" "$base.err"; then
    echo "FAIL $name: standard error"; diff "$base.err" "$work/.stderr" | head -10
  fi >"$reports/case-${name//\//__}"
  rm -rf "$work"
}
export -f run_case

[ $# -gt 0 ] || set -- .
cases=()
for topic; do
  while IFS= read -r source; do cases+=("$source"); done \
    < <(find "$root/$topic" -name '*.c' ! -path '*/include/*' | sort)
done
[ ${#cases[@]} -gt 0 ] || { echo "no case found"; exit 1; }
printf '%s\0' "${cases[@]}" | xargs -0 -P "$(nproc)" -n 8 bash -c 'for source; do run_case "$source"; done' run_cases

failed=$(find "$reports" -type f -size +0 | wc -l)
passed=$(find "$reports" -type f -empty | wc -l)
# A case that left no report at all didn't run.
[ $((passed + failed)) = ${#cases[@]} ] || failed=$((${#cases[@]} - passed))
cat "$reports"/*
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
