#!/usr/bin/env bash
# Installs what is missing, builds, and starts the demo: virtual decoders on loopback addresses
# (demo/decoders.conf) and the operator program with the demo TV wall. Without a display the
# program runs on a virtual screen that a browser shows through noVNC on loopback.
# Ctrl-C stops everything this script started.
#
#   scripts/run.sh                      decoders and the operator program
#   scripts/run.sh --lang zh_CN         the same in Simplified Chinese
#   scripts/run.sh --decoders-only      only the decoders (also --no-gui)
#
# Each part is one start_* function that records what it started in `pids`; a new part (e.g.
# a camera simulator) is one more function and one more line in main.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
bin="$root/build/default/bin"
data="$root/run"
gui=1
lang=""

usage() { sed -n '7,9p' "$0" | sed 's/^# \{0,1\}//'; }

while [ $# -gt 0 ]; do
  case "$1" in
    --no-gui|--decoders-only) gui=0 ;;
    --lang) lang="${2:?--lang needs a code, e.g. zh_CN}"; shift ;;
    --lang=*) lang="${1#--lang=}" ;;
    -h|--help) usage; exit 0 ;;
    *) echo "run.sh: unknown option $1" >&2; usage >&2; exit 2 ;;
  esac
  shift
done

pids=()
cleanup() {
  trap - EXIT INT TERM
  for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done
  wait 2>/dev/null || true
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# First free TCP port on loopback from $1 upwards.
free_port() {
  local port=$1
  while (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; do port=$((port + 1)); done
  echo "$port"
}

decoder_lines() { grep -v -E '^[[:space:]]*(#|$)' demo/decoders.conf; }

start_decoders() {
  mkdir -p "$data/decoders"
  while read -r address port udp devid password; do
    "$bin/virtual-decoder" --address "$address" --port "$port" --udp-port "$udp" \
      --device-id "$devid" --password "$password" --state-dir "$data/decoders/$address" \
      >"$data/decoders/$address.log" 2>&1 &
    pids+=($!)
  done < <(decoder_lines)
}

# A virtual screen when there is no display, shown to a browser on loopback through noVNC.
start_display() {
  [ -z "${DISPLAY:-}" ] || return 0
  local n=99
  while [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ]; do n=$((n + 1)); done
  Xvfb ":$n" -screen 0 1600x900x24 -nolisten tcp >"$data/xvfb.log" 2>&1 &
  pids+=($!)
  export DISPLAY=":$n"
  for _ in $(seq 50); do [ -e "/tmp/.X11-unix/X$n" ] && break; sleep 0.1; done
  local vnc web
  vnc=$(free_port 5900)
  x11vnc -display "$DISPLAY" -localhost -rfbport "$vnc" -nopw -forever -shared -quiet \
    >"$data/x11vnc.log" 2>&1 &
  pids+=($!)
  web=$(free_port 6080)
  websockify --web /usr/share/novnc "127.0.0.1:$web" "127.0.0.1:$vnc" >"$data/websockify.log" 2>&1 &
  pids+=($!)
  novnc_url="http://127.0.0.1:$web/vnc.html?autoconnect=1&resize=scale"
}

# The operator program in a data directory of its own, seeded with the demo wall on first run.
start_client() {
  local dir="$data/client"
  mkdir -p "$dir"
  for f in demo/client/*; do
    [ -e "$dir/$(basename "$f")" ] || cp "$f" "$dir/"
  done
  local targets
  targets=$(decoder_lines | awk '{ printf "%s%s:%s", sep, $1, $3; sep = "," }')
  local args=(--data-dir "$dir" --catalogue "$root/demo/catalogue.json" --discovery-targets "$targets")
  [ -z "$lang" ] || args+=(--lang "$lang")
  "$bin/kvms-client" "${args[@]}" >"$data/client.log" 2>&1 &
  pids+=($!)
}

scripts/bootstrap.sh
scripts/build.sh default
mkdir -p "$data"
novnc_url=""

start_decoders
if [ "$gui" -eq 1 ]; then
  start_display
  start_client
fi

sleep 1
echo
echo "Virtual decoders are running:"
while read -r address port udp devid password; do
  echo "  $devid  control tcp://$address:$port  discovery udp://$address:$udp  user admin / $password"
done < <(decoder_lines)
echo "Decoder state is kept in $data/decoders."
if [ "$gui" -eq 1 ]; then
  echo "The operator program runs with its files in $data/client (log: $data/client.log)."
  if [ -n "$novnc_url" ]; then
    echo
    echo "Open the operator program in a browser: $novnc_url"
  fi
fi
echo "Ctrl-C stops everything."
wait
