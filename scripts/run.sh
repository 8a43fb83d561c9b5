#!/usr/bin/env bash
# Installs what is missing, builds, and starts the demo: virtual decoders on loopback
# addresses (demo/decoders.conf). Stops everything on Ctrl-C.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
scripts/bootstrap.sh
scripts/build.sh default
bin="$root/build/default/bin"
data="$root/run"
mkdir -p "$data/decoders"

pids=()
cleanup() {
  for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done
  wait 2>/dev/null || true
}
trap cleanup EXIT INT TERM

# Cameras: RTSP on loopback (demo/cameras.conf); the first start encodes their clips
# into $XDG_CACHE_HOME/kvms-camera-sim (about a minute), later starts reuse them.
if [ -x "$bin/camera-sim" ]; then
  "$bin/camera-sim" --cameras demo/cameras.conf &
  pids+=($!)
fi

while read -r address port udp devid password; do
  case "$address" in ''|'#'*) continue ;; esac
  "$bin/virtual-decoder" --address "$address" --port "$port" --udp-port "$udp" \
    --device-id "$devid" --password "$password" --state-dir "$data/decoders/$address" &
  pids+=($!)
done < demo/decoders.conf

sleep 1
echo
echo "Virtual decoders are running (Ctrl-C stops them):"
while read -r address port udp devid password; do
  case "$address" in ''|'#'*) continue ;; esac
  echo "  $devid  control tcp://$address:$port  discovery udp://$address:$udp  user admin / $password"
done < demo/decoders.conf
echo "State is kept in $data/decoders."
wait
