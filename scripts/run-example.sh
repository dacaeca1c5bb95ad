#!/usr/bin/env bash
# Installs what is missing, builds Kavrel and builds the bundled example project.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DKV_BUILD_TESTS=OFF -DKV_BUILD_BENCH=OFF
cmake --build build/release --target kavrel

out="build/example-output"
export KAVREL_CONFIG_DIR="$PWD/config"
build/release/tools/kavrel/kavrel build examples/hello/hello.kvp --output "$out"
echo "Example output: $out"
