#!/usr/bin/env bash
# Installs what is missing, builds a preset (default: "default") and runs every test, and says
# how long the build and the tests took.
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-default}"
scripts/bootstrap.sh
t0=$SECONDS
scripts/build.sh "$preset"
t1=$SECONDS
status=0
ctest --preset "$preset" -j2 || status=$?
echo "$preset: build $((t1 - t0))s, tests $((SECONDS - t1))s"
exit $status
