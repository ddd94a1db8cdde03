#!/usr/bin/env bash
# Installs every Debian 12 package that building, testing and running Quillbox2 need.
# Idempotent: it says nothing and touches nothing when everything is present.
set -euo pipefail

packages=(
  g++ cmake make ninja-build pkg-config clang-format
  qt6-base-dev qt6-tools-dev qt6-l10n-tools qt6-tools-dev-tools libgl-dev
  libboost-dev libboost-log-dev libboost-filesystem-dev libboost-date-time-dev
  libboost-thread-dev libboost-system-dev
  libutfcpp-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libqt6svg6
  xvfb xauth xdotool qt6ct
  desktop-file-utils appstream
  libqt6svg6 dpkg-dev file fakeroot man-db
  qt6-translations-l10n
)

missing=()
for pkg in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[[ $(id -u) -ne 0 ]] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
