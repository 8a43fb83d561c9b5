#!/usr/bin/env bash
# Installs the Debian packages the project builds, tests and runs with.
# Idempotent and non-interactive: packages already present are not touched.
set -euo pipefail

PACKAGES=(
  cmake ninja-build pkg-config g++ clang libclang-rt-14-dev
  qtbase5-dev qtbase5-dev-tools
  libcpp-httplib-dev libbenchmark-dev
  xvfb xauth x11-utils imagemagick fonts-dejavu-core
  chromium
  libxcb1-dev libxcb-shm0-dev libjpeg62-turbo-dev ffmpeg
  ccache qttools5-dev qttools5-dev-tools
  xdotool x11vnc novnc websockify adwaita-icon-theme fonts-wqy-microhei qttranslations5-l10n
  libavformat-dev libavcodec-dev libswscale-dev libavutil-dev
  libgstreamer1.0-dev libgstrtspserver-1.0-dev gstreamer1.0-tools
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad
  gstreamer1.0-plugins-ugly gstreamer1.0-libav
)

missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
echo "bootstrap: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq "${missing[@]}" >/dev/null
