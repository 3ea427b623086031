#!/usr/bin/env bash
# The main job: builds the tools, starts the device simulator (norva-sim) and runs a short live
# exchange with it over its serial line and over TCP, talks to the simulated USB amplifier, then
# decodes the sample bus captures.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh" release norva norva-sim
norva="$root/build/release/tools/norva/norva"
sim="$root/build/release/tools/norva-sim/norva-sim"

work=$(mktemp -d)
mkfifo "$work/control"
"$sim" --seconds 60 <"$work/control" >"$work/sim.out" 2>&1 &
sim_pid=$!
exec 3>"$work/control"
cleanup() {
  echo quit >&3 2>/dev/null || true
  exec 3>&-
  wait "$sim_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

for _ in $(seq 100); do
  grep -q '^tcp: ' "$work/sim.out" 2>/dev/null && break
  sleep 0.05
done
pty=$(sed -n 's/^pty: //p' "$work/sim.out")
port=$(sed -n 's/^tcp: //p' "$work/sim.out")
echo "norva-sim serves $pty and 127.0.0.1:$port"

run() {
  echo
  echo "\$ norva $*"
  "$norva" "$@"
}

run send --serial "$pty" 0x20 5 1              # a command: its echo, then the acknowledgement
run keypress --serial "$pty" 12 3 1            # a key press as a keypad sends it
run send --serial "$pty" 0x03 40               # a status request: the zone's status reports
run send --tcp "127.0.0.1:$port" 0x21 70 9     # over Ethernet: no echo, the acknowledgement

echo
echo "\$ norva monitor --tcp 127.0.0.1:$port --count 3    (while the simulator presses keys)"
"$norva" monitor --tcp "127.0.0.1:$port" --count 3 --seconds 10 &
monitor_pid=$!
sleep 0.5
printf 'keypress 3 4\nkeypress 3 4 1\nkeypress 17 9\n' >&3
wait "$monitor_pid"

echo
echo "== USB, against the simulated amplifier in norva's own process"
run usb --simulated
run send --usb --simulated 0x20 5 1
run monitor --usb --simulated --count 2 --seconds 10

run packet decode "$root/samples/amplifier-capture.txt"
run packet decode --usb-notifications "$root/samples/usb-notifications.bin"
