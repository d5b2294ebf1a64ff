#!/usr/bin/env bash
# Installs what the build, the tests and the demo need, with apt-get, and only
# what is missing. Safe to run again; needs root (or sudo) on Debian 12.
set -euo pipefail

packages=(
    cmake g++ make pkg-config
    qt6-base-dev qt6-base-dev-tools
    qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
    libqt6dbus6 libqt6test6
    libicu72  # Qt decodes EUC-KR through ICU
    dbus-daemon dbus-bin
    clang libclang-rt-14-dev valgrind
    fonts-dejavu-core fonts-dejavu-extra fonts-nanum
    # the real video manager, its sample media and the broadcast sender
    libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev
    gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-tools
)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
