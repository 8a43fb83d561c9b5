#!/usr/bin/env bash
# Installs what is missing, builds a preset (default: "default") and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-default}"
scripts/bootstrap.sh
scripts/build.sh "$preset"
ctest --preset "$preset" -j2
