#!/usr/bin/env bash
# Fails when a source file differs from what clang-format makes of it.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
mapfile -t files < <(git ls-files -- 'src/*.h' 'src/*.cpp' 'tools/*.h' 'tools/*.cpp' 'tests/*.h' \
                                       'tests/*.cpp' 'bench/*.cpp' 'fuzz/*.cpp' 'examples/*.h' 'examples/*.cpp' 'apps/*.h' 'apps/*.cpp' 2>/dev/null)
((${#files[@]})) || exit 0
clang-format --dry-run -Werror "${files[@]}"
