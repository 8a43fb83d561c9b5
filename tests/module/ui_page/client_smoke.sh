#!/usr/bin/env bash
# The operator program as a user starts it: it loads the plug-in, shows the empty page in its
# data directory (with the module's log there), and quits cleanly on Ctrl+Q.
# Run under xvfb-run; $1 is the program.
set -euo pipefail
client="$1"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
"$client" --data-dir "$data" --discovery-targets 127.0.0.1:9 &
pid=$!
window=$(timeout 20 xdotool search --sync --onlyvisible --name "TV wall" | head -1)
[ -n "$window" ] || { echo "no main window"; kill "$pid"; exit 1; }
[ -d "$data/matrix/backgroud_images" ] || { echo "module not initialised in $data"; kill "$pid"; exit 1; }
xdotool windowfocus --sync "$window" key ctrl+q
for _ in $(seq 100); do
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
if kill -0 "$pid" 2>/dev/null; then echo "still running after Ctrl+Q"; kill "$pid"; exit 1; fi
wait "$pid"
