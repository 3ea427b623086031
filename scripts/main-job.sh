#!/usr/bin/env bash
# The main job: builds the tools, starts the device simulator (norva-sim) and runs a short live
# exchange with it over its serial line and over TCP, talks to the simulated USB amplifier,
# decodes the sample bus captures, then takes the IR road: real codes imported into a scratch
# library, decoded, built from a protocol, a re-learnt code named, a model exported.
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

echo
echo "== IR codes: the real codes of tests/data/ir in a scratch library"
data="$root/tests/data/ir"
library="$work/library.xml"
run irdb "$library" import "$data/pronto-codes.tsv" --make Shared --model "Real codes"
echo
echo "\$ norva irdb library.xml import flipper-raw.ir --make Shared --model Learnt | tail -n 3"
"$norva" irdb "$library" import "$data/flipper-raw.ir" --make Shared --model Learnt | tail -n 3 || true
echo
echo "\$ head -n 6 pronto-codes.tsv | norva ir decode -"
head -n 6 "$data/pronto-codes.tsv" | "$norva" ir decode - || true
run ir encode NEC1 D=55 S=202 F=1 --hex

# The same button learnt again: every pulse 3 % longer and every gap 3 % shorter.
relearnt() {
  local i=0 word value out=()
  for word in $1; do
    value=$((16#$word))
    if ((i > 3)); then
      if ((i % 2)); then value=$(((value * 97 + 50) / 100)); else value=$(((value * 103 + 50) / 100)); fi
    fi
    out+=("$(printf %04X "$value")")
    i=$((i + 1))
  done
  echo "${out[*]}"
}
code=$(awk -F'\t' '$2 == "nec1" { print $7; exit }' "$data/girrlib-protocols.tsv")
run irdb "$library" name "$(relearnt "$code")"
echo
echo "\$ norva irdb library.xml export Shared \"Real codes\" --format girr | head -c 600"
"$norva" irdb "$library" export Shared "Real codes" --format girr | head -c 600 || true
echo
