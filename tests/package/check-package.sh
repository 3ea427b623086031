#!/usr/bin/env bash
# Installs the built library into a scratch prefix, then configures, builds and runs one client
# project (tests/package/<client>/) that finds it with find_package(NorvaRuntime). A library built
# with sanitizers (third argument, e.g. address,undefined) needs a client linked with them too.
set -euo pipefail
build_dir=$1
client_src=$2
sanitize=${3:-}
client_args=()
if [[ -n "$sanitize" ]]; then
  client_args+=("-DCMAKE_CXX_FLAGS=-fsanitize=$sanitize" "-DCMAKE_EXE_LINKER_FLAGS=-fsanitize=$sanitize")
fi
# A fixed place in the build folder, so that the compiler cache knows the client again next time.
scratch="$build_dir/package-clients/$(basename "$client_src")"
rm -rf "$scratch"
mkdir -p "$scratch"
if command -v ccache >/dev/null; then
  client_args+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  CCACHE_BASEDIR=$(cd "$(dirname "$0")/../.." && pwd)
  export CCACHE_BASEDIR CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=include_file_mtime,include_file_ctime
fi
cmake --install "$build_dir" --prefix "$scratch/prefix" >/dev/null
# Only the configure and build output of a failure is shown, so a broken header is named.
if ! cmake -S "$client_src" -B "$scratch/client" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/prefix" \
     "${client_args[@]}" >"$scratch/log" 2>&1 || ! cmake --build "$scratch/client" >>"$scratch/log" 2>&1; then
  cat "$scratch/log" >&2
  exit 1
fi
"$scratch/client/norva-client"
