#!/usr/bin/env bash
# Runs clang-tidy (naming scheme and bug-prone patterns, see .clang-tidy) over the library and the
# tools, using the compile commands of a configured build (default build/release).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/release}
run-clang-tidy -quiet -j 2 -p "$build" "$root/(src|tools|apps)/.*\.cpp$" >"$build/clang-tidy.log" 2>&1 || {
  grep -E 'error:|warning:' "$build/clang-tidy.log" | sort -u >&2
  echo "clang-tidy found problems (full log: $build/clang-tidy.log)" >&2
  exit 1
}
echo "clang-tidy: clean"
