#!/usr/bin/env bash
# Runs every fuzz target for the given number of seconds (default 20), starting from its seed corpus.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-20}
for target in "$root"/build/fuzz/fuzz/fuzz_*; do
  [[ -f "$target" && -x "$target" ]] || continue  # skip the build's own folders
  name=$(basename "$target")
  name=${name#fuzz_}
  work=$(mktemp -d)
  mkdir -p "$work/corpus"
  if [[ -d "$root/fuzz/corpus/$name" ]]; then
    cp "$root/fuzz/corpus/$name"/* "$work/corpus"/ 2>/dev/null || true
  fi
  status=0
  "$target" -max_total_time="$seconds" -print_final_stats=1 "$work/corpus" >"$work/log" 2>&1 || status=$?
  runs=$(grep -o 'stat::number_of_executed_units: [0-9]*' "$work/log" | awk '{print $2}')
  echo "-- $name: ${runs:-0} runs in ${seconds}s"
  if [[ $status -ne 0 ]]; then
    tail -40 "$work/log" >&2
    echo "fuzz target $name failed" >&2
    rm -rf "$work"
    exit 1
  fi
  rm -rf "$work"
done
