#!/usr/bin/env bash
# Builds the optimised flavour and runs every benchmark with full repetitions; these are the figures.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh" release
ran=0
for bench in "$root"/build/release/bench/bench_*; do
  [[ -f "$bench" && -x "$bench" ]] || continue
  echo "== $(basename "$bench")"
  "$bench" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@"
  ran=$((ran + 1))
done
if ((ran == 0)); then
  echo "no benchmark programs were built" >&2
  exit 1
fi
