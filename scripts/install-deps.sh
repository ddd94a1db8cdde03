#!/usr/bin/env bash
# Installs every Debian package (Debian 12 or 13) that building, testing and running
# Quillbox2 need.
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
  dpkg-dev file fakeroot man-db
  qt6-translations-l10n
)
# Packages that only some releases have: Debian 13 ships Qt's SVG icon engine apart from
# the library, and without it the application has no icon.
optional=(qt6-svg-plugins)

installed() { [[ $(dpkg-query -W -f='${Status}' "$1" 2>/dev/null) == "install ok installed" ]]; }
available() { apt-cache show --no-all-versions "$1" >/dev/null 2>&1; }
addAvailableOptional() {
  for pkg in "${optional[@]}"; do
    if ! installed "$pkg" && available "$pkg" && [[ " ${missing[*]} " != *" $pkg "* ]]; then
      missing+=("$pkg")
    fi
  done
}

missing=()
for pkg in "${packages[@]}"; do
  installed "$pkg" || missing+=("$pkg")
done
addAvailableOptional
[[ ${#missing[@]} -eq 0 ]] && exit 0

sudo=""
[[ $(id -u) -ne 0 ]] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
# A fresh system knows which optional packages exist only now.
addAvailableOptional
echo "Installing: ${missing[*]}"
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
