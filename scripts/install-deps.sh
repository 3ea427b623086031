#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the fuzzers need, when any is missing.
# Safe to run again: it does nothing when everything is there.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config git python3 ccache
  qt6-base-dev qt6-serialport-dev libgl-dev
  libpugixml-dev
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev clang-format clang-tidy
  libusb-1.0-0-dev umockdev libumockdev-dev
  libvips-dev fonts-dejavu-core
  lirc-compat-remotes  # remote definitions nobody here wrote, for the lircd.conf reader's tests
)

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$package")
done

if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "Installing: ${missing[*]}"
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then
  sudo_cmd=(sudo)
fi
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
