#!/usr/bin/env bash
# Starts the built application; on a machine without a display it starts it under a
# virtual X server and says so.
set -euo pipefail
app="$1"; shift
if [[ -z "${DISPLAY:-}" && -z "${WAYLAND_DISPLAY:-}" ]]; then
  echo "No display found: starting Quillbox2 on a virtual display (Xvfb)."
  exec xvfb-run -a -s "-screen 0 1280x800x24" "$app" "$@"
fi
exec "$app" "$@"
