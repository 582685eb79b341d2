#!/usr/bin/env bash
# Installs the published tool server that one of the tests talks to, by npm:
#   scripts/install_tool_server.sh build/tool-server
# It is no part of the program. Without node, or without a network, the test is left out.
set -uo pipefail
folder=${1:?usage: install_tool_server.sh folder}
server="@modelcontextprotocol/server-everything"
version=2026.8.31

say() { echo "install_tool_server: $*" >&2; }

if ! command -v node >/dev/null || ! command -v npm >/dev/null; then
  say "no node here, so the test with $server is left out"
  exit 0
fi
[ -e "$folder/node_modules/$server/dist/index.js" ] && exit 0
mkdir -p "$folder"
if ! npm install --prefix "$folder" --no-package-lock --no-audit --no-fund --ignore-scripts --silent --fetch-retries=1 --fetch-timeout=20000 "$server@$version" \
  </dev/null >/dev/null 2>&1; then
  say "npm could not install $server, so the test with it is left out"
fi
