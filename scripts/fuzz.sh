#!/usr/bin/env bash
# Runs every fuzz target for the given number of seconds (default 20), starting from its seed
# corpus, two at a time (one per core).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-20}
jobs=${NORVA_FUZZ_JOBS:-2}

# Runs one target; prints its line, and its log's tail when it failed.
run_target() {
  local target=$1 name work status=0 runs
  name=$(basename "$target")
  name=${name#fuzz_}
  work=$(mktemp -d)
  mkdir -p "$work/corpus"
  if [[ -d "$root/fuzz/corpus/$name" ]]; then
    cp "$root/fuzz/corpus/$name"/* "$work/corpus"/ 2>/dev/null || true
  fi
  "$target" -max_total_time="$seconds" -print_final_stats=1 "$work/corpus" >"$work/log" 2>&1 || status=$?
  runs=$(grep -o 'stat::number_of_executed_units: [0-9]*' "$work/log" | awk '{print $2}')
  echo "-- $name: ${runs:-0} runs in ${seconds}s"
  if [[ $status -ne 0 ]]; then
    tail -40 "$work/log" >&2
    echo "fuzz target $name failed" >&2
  fi
  rm -rf "$work"
  return "$status"
}
export -f run_target
export root seconds

targets=()
for target in "$root"/build/fuzz/fuzz/fuzz_*; do
  [[ -f "$target" && -x "$target" ]] && targets+=("$target")  # skip the build's own folders
done
((${#targets[@]})) || { echo "no fuzz targets were built" >&2; exit 1; }
printf '%s\0' "${targets[@]}" | xargs -0 -n 1 -P "$jobs" bash -c 'run_target "$0"'
