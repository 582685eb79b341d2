#!/usr/bin/env bash
# Installs what is missing to build, test or measure on Debian 12:
#   scripts/install_dependencies.sh [build] [test] [bench] [package] [site] [clang] [fuzz]     (default: build test)
# With everything in place it does nothing and needs neither root nor a network.
set -euo pipefail

declare -A packages=(
  [build]="g++ make cmake libssl-dev libstb-dev libedit-dev pkg-config libsqlite3-dev libpq-dev libpython3-dev duktape-dev"
  [test]="libgtest-dev libgmock-dev python3 python3-numpy zbar-tools qrencode zint binutils-riscv64-unknown-elf binutils-aarch64-linux-gnu gcc-aarch64-linux-gnu libc6-dev-arm64-cross qemu-user openssl procps iverilog verilator yosys postgresql dpkg-dev file"
  [bench]="libbenchmark-dev zlib1g-dev python3 python3-numpy libopenblas0-serial lua5.4 perl time zbar-tools curl openssl"
  [package]="dpkg-dev file"
  [site]="mkdocs python3-pygments"
  [clang]="clang"
  [fuzz]="clang libclang-rt-14-dev"
)

say() { echo "install_dependencies: $*" >&2; }

[ $# -gt 0 ] || set -- build test
wanted=()
for group; do
  if [ -z "${packages[$group]:-}" ]; then
    say "no group '$group'; known: ${!packages[*]}"
    exit 1
  fi
  read -ra names <<<"${packages[$group]}"
  wanted+=("${names[@]}")
done

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  say "this system has no apt-get; make sure that it has the like of: ${wanted[*]}"
  exit 0
fi

installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }
missing=()
for package in "${wanted[@]}"; do
  installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" != 0 ]; then
  if ! command -v sudo >/dev/null; then
    say "missing: ${missing[*]}"
    say "neither root nor sudo here; as root run: apt-get install ${missing[*]}"
    exit 1
  fi
  as_root=(sudo)
fi

say "installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "$@" </dev/null; }
if ! apt install -y --no-install-recommends "${missing[@]}" >/dev/null 2>&1; then
  # The usual cause on a fresh image: no package lists yet.
  apt update >&2 || say "apt-get update failed; trying with the lists at hand"
  if ! apt install -y --no-install-recommends "${missing[@]}" >&2; then
    say "could not install: ${missing[*]}"
    say "is there a network, and does /etc/apt name a Debian 12 mirror?"
    exit 1
  fi
fi
