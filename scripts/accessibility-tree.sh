#!/usr/bin/env bash
# Prints what a screen reader gets from the running application: the AT-SPI tree Qt
# publishes, for the editor page and the settings page, on a virtual display with its
# own accessibility bus, in a fresh temporary home.
# Usage: scripts/accessibility-tree.sh [build dir] [language]   (needs python3-pyatspi,
# at-spi2-core, xvfb and xdotool: sudo apt-get install python3-pyatspi at-spi2-core xvfb xdotool)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
app="${1:-$root/build}/bin/quillbox2"
home="$(mktemp -d)"
trap 'rm -rf "$home"' EXIT
export HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
       XDG_STATE_HOME="$home/.local/state" XDG_CACHE_HOME="$home/.cache" \
       XDG_RUNTIME_DIR="$home/run" LANGUAGE="${2:-en}"
mkdir -m 700 "$XDG_RUNTIME_DIR"
cat > "$home/tree.py" <<'PY'
import pyatspi
SHOWN = {"push button", "check box", "combo box", "text", "list", "radio button", "link",
         "menu item", "spin button", "alert", "status bar", "label", "frame", "dialog"}
def walk(node, depth=0):
    role, name = node.getRoleName(), node.name
    if not node.getState().contains(pyatspi.STATE_SHOWING) and depth > 2:
        return
    if role in SHOWN:
        labels = [r.getTarget(i).name for r in node.getRelationSet()
                  if r.getRelationType() == pyatspi.RELATION_LABELLED_BY
                  for i in range(r.getNTargets())]
        print("  " * min(depth, 6) + f"{role} {name!r}" + (f" labelled-by {labels}" if labels else ""))
    if role != "list":  # rows are the quotes' texts
        for child in node:
            walk(child, depth + 1)
app = next(a for a in pyatspi.Registry.getDesktop(0) if a and a.name == "quillbox2")
walk(app)
PY
xvfb-run -a -s "-screen 0 1280x800x24" dbus-run-session -- bash -c '
  /usr/libexec/at-spi-bus-launcher --launch-immediately & sleep 1.5
  QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 "$0" >/dev/null 2>&1 &
  pid=$!
  window=$(xdotool search --sync --onlyvisible --name quillbox2 | head -1); sleep 2
  xdotool mousemove --window "$window" 120 150 click 1; sleep 1
  echo "== The editor page"; /usr/bin/python3 "$1"
  xdotool key ctrl+comma; sleep 1
  echo "== The settings page"; /usr/bin/python3 "$1"
  kill "$pid"; wait "$pid" || true' "$app" "$home/tree.py" 2>/dev/null
