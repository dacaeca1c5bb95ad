#!/usr/bin/env bash
# Installs what is missing, builds Kavrel, and documents the bundled C++ library
# (examples/cpplib) into an HTML site and a compiled help file, and Kavrel's own public headers
# (examples/kavrel-api) the same way.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DKV_BUILD_TESTS=OFF -DKV_BUILD_BENCH=OFF
cmake --build build/release --target kavrel kvcpp

# The build tree's configuration folder: the sources' own, with the plug-ins built there.
export KAVREL_CONFIG_DIR="$PWD/build/release/config"
kavrel=build/release/tools/kavrel/kavrel
for example in cpplib kavrel-api; do
  out="build/example-output/$example"
  "$kavrel" build "examples/$example/$example.kvp" --output "$out"
  echo "$example: open $out/webframe.html in a browser, or $out/*.chm in a CHM viewer (xchm, kchmviewer)"
done
