#!/usr/bin/env bash
# Removes the files that an install has listed, and the folders of its own that are empty then:
#   [DESTDIR=...] scripts/uninstall.sh build/install_manifest.txt
set -euo pipefail
manifest=${1:?usage: uninstall.sh build/install_manifest.txt}
[ -e "$manifest" ] || { echo "uninstall: nothing was installed from here" >&2; exit 1; }

while IFS= read -r file || [ -n "$file" ]; do rm -f -- "${DESTDIR:-}$file"; done <"$manifest"
# A folder goes if it bears the program's name and nothing is left in it, the deepest first.
sed 's|/[^/]*$||' "$manifest" | awk '{ while (match($0, "/vorc(/|$)")) { print; sub("/[^/]*$", "") } }' | sort -ru |
  while IFS= read -r folder; do rmdir -- "${DESTDIR:-}$folder" 2>/dev/null || true; done
rm -f -- "$manifest"
