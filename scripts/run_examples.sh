#!/usr/bin/env bash
# Runs every example with the built program and shows what it prints:
#   scripts/run_examples.sh path/to/vorc examples-folder
# A first line "// args: a b" in an example holds the arguments that its script gets. Those in the folder
# compiled/ are compiled, vorc-sim beside vorc makes the calls of their first line, "// calls: f(1); g(2)", and
# vorc-objdump shows the header of their object file.
# Those in rtl/ become Verilog, which iverilog simulates where it is at hand. Those in network/ reach a service that
# is started for them.
set -u
vorc=$(readlink -f "${1:?usage: run_examples.sh path/to/vorc folder}")
folder=$(readlink -f "${2:?usage: run_examples.sh path/to/vorc folder}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

failed=0
for example in "$folder"/*.c; do
  [ -e "$example" ] || { echo "run_examples: no example in $folder" >&2; exit 1; }
  name=$(basename "$example")
  # Outputs are written beside a source, so each example runs on a copy of the folder.
  mkdir "$work/$name"
  cp -r "$folder/." "$work/$name"
  read -ra args < <(sed -n '1s|^// args: *||p' "$example")
  echo "== $name${args[*]:+ ${args[*]}}"
  (cd "$work/$name" && "$vorc" -morv -morvquiet "$name" ${args[@]+"${args[@]}"} </dev/null) || {
    echo "run_examples: $name failed with exit status $?" >&2
    failed=1
  }
  echo
done

for example in "$folder"/compiled/*.c; do
  name=$(basename "$example" .c)
  cp "$example" "$work"
  sed -n '1s|^// calls: *||p' "$example" | sed 's/; */\n/g' >"$work/calls"
  echo "== compiled/$name.c"
  { "$vorc" -morvquiet "$work/$name.c" && "$(dirname "$vorc")/vorc-sim" --calls "$work/calls" "$work/$name.asm" &&
    chmod u+r "$work/$name.obj" && "$(dirname "$vorc")/vorc-objdump" --headers "$work/$name.obj"; } || {
    echo "run_examples: compiled/$name.c failed" >&2
    failed=1
  }
  echo
done
for example in "$folder"/rtl/*.c; do
  name=$(basename "$example" .c)
  mkdir "$work/rtl-$name"
  cp "$example" "$work/rtl-$name"
  echo "== rtl/$name.c"
  (
    cd "$work/rtl-$name" && "$vorc" -morv -morvquiet -rtl "$name.c" || exit 1
    command -v iverilog >/dev/null || { echo "run_examples: no iverilog, so nothing is simulated" >&2; exit 0; }
    iverilog -g2001 -o "$name.vvp" "$name.v" "${name}_tb.v" && vvp "$name.vvp"
  ) || {
    echo "run_examples: rtl/$name.c failed" >&2
    failed=1
  }
  echo
done

cp -r "$folder/network" "$work/network"
(cd "$work/network" && exec python3 service.py >"$work/port") &
service=$!
trap 'kill "$service" 2>/dev/null; rm -rf "$work"' EXIT
for _ in $(seq 100); do { [ -s "$work/port" ] || ! kill -0 "$service" 2>/dev/null; } && break; sleep 0.1; done
[ -s "$work/port" ] || echo "run_examples: no python3, so the examples in network/ have nothing to reach" >&2
for output in "$folder"/network/*.out; do
  [ -s "$work/port" ] || break
  name=$(basename "$output" .out)
  echo "== network/$name.c"
  (cd "$work/network" && MORV_HTTPS_ALLOW_PRIVATE=1 "$vorc" -morv -morvquiet "$name.c" \
    "http://localhost:$(cat "$work/port")" </dev/null) || {
    echo "run_examples: network/$name.c failed" >&2
    failed=1
  }
  echo
done
exit "$failed"
