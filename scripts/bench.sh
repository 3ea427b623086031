#!/usr/bin/env bash
# Builds the optimised flavour and runs every benchmark with full repetitions; these are the figures.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh" release
for bench in "$root"/build/release/bench/bench_*; do
  [[ -f "$bench" && -x "$bench" ]] || continue
  "$bench" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@"
done
