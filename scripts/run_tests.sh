#!/usr/bin/env bash
# Runs all tests of a build folder through ctest and closes with "N passed, N failed":
#   scripts/run_tests.sh build [further arguments of ctest ...]
set -uo pipefail
build=${1:?usage: run_tests.sh build-folder [ctest arguments]}; shift
log=$(mktemp)
trap 'rm -f "$log"' EXIT

(cd "$build" && ctest --output-on-failure -j "$(nproc)" "$@" </dev/null) 2>&1 | tee "$log"
status=${PIPESTATUS[0]}

# ctest's own count: "98% tests passed, 4 tests failed out of 212"
counts=$(sed -n 's/^[0-9]*% tests passed, \([0-9]*\) tests failed out of \([0-9]*\)$/\1 \2/p' "$log")
read -r failed total <<<"$counts"
if [ -z "${total:-}" ] || [ "$total" = 0 ]; then
  echo "run_tests: no test ran" >&2
  exit 1
fi
echo "$((total - failed)) passed, $failed failed"
exit "$status"
