#!/usr/bin/env bash
# The main job: builds the tools and decodes the sample bus capture shipped in samples/, as an
# installer would read a capture taken on site.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh" release
norva="$root/build/release/tools/norva/norva"
echo "== norva packet decode samples/amplifier-capture.txt"
"$norva" packet decode "$root/samples/amplifier-capture.txt"
echo "== norva packet decode --usb-notifications samples/usb-notifications.bin"
"$norva" packet decode --usb-notifications "$root/samples/usb-notifications.bin"
