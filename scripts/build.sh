#!/usr/bin/env bash
# Configures and builds one flavour of the project into build/<flavour>:
#   scripts/build.sh FLAVOUR [-DCMAKE_OPTION=...] [TARGET...]
#   release  optimised with debug information (default)
#   asan     AddressSanitizer + UndefinedBehaviorSanitizer
#   tsan     ThreadSanitizer
#   fuzz     clang with libFuzzer targets
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
flavour=${1:-release}
shift || true

args=(-G Ninja -S "$root" -B "$root/build/$flavour" -DNORVA_WERROR=ON)
# Compilations are cached in the user's cache folder (ccache), keyed on paths relative to the
# clone, so a fresh clone on the same machine reuses what an earlier build compiled.
if command -v ccache >/dev/null; then
  args+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
  export CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}"
  export CCACHE_MAXSIZE="${CCACHE_MAXSIZE:-20G}"
fi
case "$flavour" in
  release) args+=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DNORVA_BUILD_BENCH=ON -DNORVA_BUILD_TESTS=ON -DNORVA_BUILD_TOOLS=ON) ;;
  asan) args+=(-DCMAKE_BUILD_TYPE=Debug -DNORVA_SANITIZE=address,undefined -DNORVA_BUILD_BENCH=OFF) ;;
  tsan) args+=(-DCMAKE_BUILD_TYPE=Debug -DNORVA_SANITIZE=thread -DNORVA_BUILD_BENCH=OFF) ;;
  fuzz) args+=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DNORVA_BUILD_FUZZ=ON
               -DNORVA_BUILD_TESTS=OFF -DNORVA_BUILD_BENCH=OFF -DNORVA_BUILD_TOOLS=OFF) ;;
  *) echo "unknown flavour: $flavour (release, asan, tsan, fuzz)" >&2; exit 2 ;;
esac

targets=()
for argument in "$@"; do
  if [[ "$argument" == -D* ]]; then args+=("$argument"); else targets+=("$argument"); fi
done

cmake "${args[@]}" >/dev/null
ninja -C "$root/build/$flavour" -j2 "${targets[@]}"
