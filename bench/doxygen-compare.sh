#!/usr/bin/env bash
# Times Kavrel's kv.cpp doc type against plain Doxygen on the same header trees: the bundled
# example, Kavrel's own src/, libxml2's headers and LLVM 14's Support headers, each into an HTML
# site. Kavrel runs "kavrel build --no-compile" (parse, model, every page, the table of contents
# and index, the frames site); Doxygen runs with its own parser, HTML only, no diagrams, every
# entity extracted. Each figure is the median of five runs of the whole process
# (wall seconds, peak resident memory) after one warm-up run, measured with /usr/bin/time.
# Kavrel is timed twice: a first build, with its cache folder emptied before each run (the
# standard library that the build of Kavrel precompiled stays, as it does for a user), and a
# rebuild, with the cache of precompiled headers and declarations that the warm-up fills (what a
# user's second build of unchanged headers costs). Doxygen keeps nothing between runs.
#
# Usage: bench/doxygen-compare.sh [BUILD_DIR]     (default build/release; needs doxygen,
#        llvm-14-dev and libxml2-dev for their trees; a tree that is missing is skipped)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build/release}" && pwd)
kavrel=$build/tools/kavrel/kavrel
export KAVREL_CONFIG_DIR=$build/config
command -v doxygen > /dev/null || { echo "doxygen is not installed (apt-get install doxygen)" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CACHE_HOME=$work/cache
runs=5

# Runs the command with Kavrel's cache folder emptied first.
uncached=$work/uncached
printf '#!/bin/sh\nrm -rf "$XDG_CACHE_HOME"\nexec "$@"\n' > "$uncached"
chmod +x "$uncached"

# name | sources | include folders | language standard
trees=(
  "example|$root/examples/cpplib/include||c++20"
  "kavrel src/|$root/src|$root/include|c++20"
  "libxml2|/usr/include/libxml2/libxml||c++20"
  "LLVM Support|/usr/include/llvm-14/llvm/Support|/usr/include/llvm-14 /usr/include/llvm-c-14|c++17"
)

# Prints "seconds megabytes": the medians over the runs of the command.
measure() {
  local out=$work/times
  : > "$out"
  "$@" > /dev/null 2>&1 || true  # warm-up: file caches, and Kavrel's precompiled system headers
  for ((i = 0; i < runs; i++)); do
    /usr/bin/time -f "%e %M" -a -o "$out" "$@" > /dev/null 2>&1 || true
  done
  local secs kb
  secs=$(cut -d' ' -f1 "$out" | sort -n | sed -n "$((runs / 2 + 1))p")
  kb=$(cut -d' ' -f2 "$out" | sort -n | sed -n "$((runs / 2 + 1))p")
  echo "$secs $((kb / 1024))"
}

printf '%-14s %10s %10s %10s %10s %10s %10s\n' tree "first s" "rebuild s" "doxygen s" "first MB" "rebuild MB" \
  "doxygen MB"
for tree in "${trees[@]}"; do
  IFS='|' read -r name sources includes standard <<< "$tree"
  [ -d "$sources" ] || { echo "$name: $sources is missing, skipped" >&2; continue; }
  slug=${name//[^A-Za-z0-9]/_}
  args=(new "$work/$slug.kvp" --sources "$sources" --std "$standard")
  [ -n "$includes" ] && args+=(--include $includes)
  "$kavrel" "${args[@]}" > /dev/null

  cat > "$work/$slug.doxyfile" <<DOXY
INPUT = $sources
RECURSIVE = YES
FILE_PATTERNS = *.h *.hh *.hpp *.hxx *.inc *.def
OUTPUT_DIRECTORY = $work/$slug-doxygen
EXTRACT_ALL = YES
GENERATE_LATEX = NO
HAVE_DOT = NO
CLASS_GRAPH = NO
QUIET = YES
WARNINGS = NO
WARN_IF_UNDOCUMENTED = NO
DOXY

  build=("$kavrel" build "$work/$slug.kvp" --output "$work/$slug-kavrel" --no-compile)
  read -r fs fm <<< "$(measure "$uncached" "${build[@]}")"
  read -r ks km <<< "$(measure "${build[@]}")"
  read -r ds dm <<< "$(measure doxygen "$work/$slug.doxyfile")"
  printf '%-14s %10s %10s %10s %10s %10s %10s\n' "$name" "$fs" "$ks" "$ds" "$fm" "$km" "$dm"
done
