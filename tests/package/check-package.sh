#!/usr/bin/env bash
# Installs the built library into a scratch prefix, then configures, builds and runs a client
# project that finds it with find_package(NorvaRuntime).
set -euo pipefail
build_dir=$1
client_src=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build_dir" --prefix "$scratch/prefix" >/dev/null
cmake -S "$client_src" -B "$scratch/client" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/prefix" >/dev/null
cmake --build "$scratch/client" >/dev/null
"$scratch/client/norva-client"
