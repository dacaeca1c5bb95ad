#!/usr/bin/env bash
# Installs the Debian packages that building and testing Kavrel needs, skipping those present.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config clang clang-format-14 libclang-rt-14-dev
  libxml2-dev libxslt1-dev libsource-highlight-dev libtidy-dev libpcre2-dev libgd-dev libsqlite3-dev
  libsimpleini-dev libcli11-dev libgtest-dev libgmock-dev libbenchmark-dev
  fp-utils libchm-bin libchm-dev libclang-16-dev
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && { echo "All build packages are installed."; exit 0; }

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
