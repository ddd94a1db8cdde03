#!/usr/bin/env bash
# Renders the PNG sizes of the application icon from its SVG into the hicolor tree under
# resources/icons. The PNGs are committed, so building needs no SVG renderer; run this
# again after changing the SVG (it needs rsvg-convert: apt-get install librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")/../resources/icons/hicolor"
id=org.quillbox2.Quillbox2
for size in 16 32 48 64 128 256; do
  mkdir -p "${size}x${size}/apps"
  rsvg-convert -w "$size" -h "$size" "scalable/apps/$id.svg" -o "${size}x${size}/apps/$id.png"
done
