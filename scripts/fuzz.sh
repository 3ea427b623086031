#!/usr/bin/env bash
# Runs every fuzz target for the given number of seconds (default 20), starting from its seed corpus.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-20}
for target in "$root"/build/fuzz/fuzz/fuzz_*; do
  name=$(basename "$target")
  name=${name#fuzz_}
  corpus=$(mktemp -d)
  if [[ -d "$root/fuzz/corpus/$name" ]]; then
    cp "$root/fuzz/corpus/$name"/* "$corpus"/ 2>/dev/null || true
  fi
  echo "-- $name for ${seconds}s"
  "$target" -max_total_time="$seconds" -print_final_stats=1 "$corpus" 2>&1 | grep -E '^(stat::number_of_executed_units|==|SUMMARY)' || true
  status=${PIPESTATUS[0]}
  rm -rf "$corpus"
  if [[ $status -ne 0 ]]; then
    echo "fuzz target $name failed" >&2
    exit 1
  fi
done
