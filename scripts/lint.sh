#!/usr/bin/env bash
# Runs clang-tidy (naming scheme and bug-prone patterns, see .clang-tidy) over the library, the
# tools and the studio, using the compile commands of a configured build (default build/release).
# A file whose preprocessed text, compile command, .clang-tidy and clang-tidy version were found
# clean before is not checked again (the record is kept in the user's cache folder).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/release}
exec python3 "$root/scripts/lint_files.py" "$root" "$build"
