#!/usr/bin/env bash
# Runs each script NAME.c below a folder and compares what it prints with NAME.out:
#   run_scripts.sh path/to/vorc folder [topic ...]
# Both roads of the interpreter are taken, the fast one and the walker of VORC_WALK. Lines in the source may say
#   // args: ...     the program's arguments (default: -morv -morvquiet)
#   // status: N     the exit status (default: 1 when an error is among what is expected, else 0)
#   // turns: N      NAME.out is printed N times
# NAME.err is what must stand on standard error (default: not looked at).
# As many cases run at a time as there are processors.
set -u
vorc=$(readlink -f "${1:?usage: run_scripts.sh path/to/vorc folder [topic ...]}")
root=$(readlink -f "${2:?}"); shift 2
reports=$(mktemp -d)
trap 'rm -rf "$reports"' EXIT
export vorc root reports

# Sets `word` to what the source says behind `// KEY: `, else to the default. Bash alone does it, as for hundreds of
# cases each process counts.
said() { if [[ $text =~ (^|$'\n')"// $1: "([^$'\n']*) ]]; then word=${BASH_REMATCH[2]}; else word=$2; fi; }

# Reports nothing when the case passes.
run_case() {
  local source=$1 base=${1%.c} name road text printed word turns args expected=0
  name=${base#"$root"/} text=$(<"$source") printed=$(<"$base.out")
  [[ $printed =~ (^|$'\n')('<'[^$'\n']*'>: ')?('Fatal ')?'Error '[0-9]+ ]] && expected=1
  said status "$expected"; expected=$word
  said args "-morv -morvquiet"; args=$word
  said turns 1; turns=$word
  for road in fast walker; do run_road $road || break; done >"$reports/case-${name//\//__}"
}

run_road() {
  local work status
  work=$(mktemp -d)
  cp -r "${source%/*}/." "$work"
  sed -E '/^\/\/ (args|status|turns): /d' "$source" >"$work/s.c"
  for ((turn = 0; turn < turns; turn++)); do cat "$base.out"; done >"$work/.expected"
  # shellcheck disable=SC2086
  (cd "$work" && { [ "$1" = fast ] || export VORC_WALK=1; } &&
    timeout 60 "$vorc" $args s.c >.stdout 2>.stderr </dev/null)
  status=$?
  if ! cmp -s "$work/.stdout" "$work/.expected"; then
    echo "FAIL $name ($1): output"; diff "$work/.expected" "$work/.stdout" | head -10; head -c 500 "$work/.stderr"
  elif [ "$status" != "$expected" ]; then
    echo "FAIL $name ($1): exit status $status, expected $expected"; head -c 500 "$work/.stderr"
  elif [ -f "$base.err" ] && ! cmp -s "$work/.stderr" "$base.err"; then
    echo "FAIL $name ($1): standard error"; diff "$base.err" "$work/.stderr" | head -10
  else rm -rf "$work"; return 0
  fi
  rm -rf "$work"
  return 1
}
export -f run_case run_road said

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
