#!/usr/bin/env bash
# Builds everything and runs every check: unit tests (plain and under ASan+UBSan), the installed
# package, formatting, a short smoke of each fuzz target and one pass of each benchmark.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"

bash scripts/install-deps.sh

echo "== Formatting and module boundaries"
bash scripts/check-format.sh
python3 scripts/check-includes.py

echo "== Unit tests under AddressSanitizer and UndefinedBehaviorSanitizer"
bash scripts/build.sh asan
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build/asan --output-on-failure -j2 -E package_client

echo "== Device links and workers under ThreadSanitizer"
bash scripts/build.sh tsan test_Devices test_Usb
TSAN_OPTIONS=halt_on_error=1 ctest --test-dir build/tsan --output-on-failure -j2 -R '^(Devices|Usb)\.'

echo "== Fuzz smoke"
bash scripts/build.sh fuzz
bash scripts/fuzz.sh "${NORVA_FUZZ_SECONDS:-15}"

echo "== Benchmarks (one short pass; figures come from scripts/bench.sh)"
bash scripts/build.sh release
for bench in build/release/bench/bench_*; do
  [[ -f "$bench" && -x "$bench" ]] || continue
  "$bench" --benchmark_min_time=0.05 >/dev/null
done

echo "== Static checks (clang-tidy)"
bash scripts/lint.sh build/release

echo "== Unit tests"
ctest --test-dir build/release --output-on-failure -j2
