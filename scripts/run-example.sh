#!/usr/bin/env bash
# Installs what is missing, builds Kavrel, builds the bundled example project and lists the items
# of the bundled C++ library.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DKV_BUILD_TESTS=OFF -DKV_BUILD_BENCH=OFF
cmake --build build/release --target kavrel kvcpp

out="build/example-output"
# The build tree's configuration folder: the sources' own, with the plug-ins built there.
export KAVREL_CONFIG_DIR="$PWD/build/release/config"
build/release/tools/kavrel/kavrel build examples/hello/hello.kvp --output "$out"
echo "Example output: $out"
# The bundled C++ library, as the kv.cpp doc type reads it.
build/release/tools/kavrel/kavrel items examples/cpplib/cpplib.kvp
