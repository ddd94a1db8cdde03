#!/usr/bin/env bash
# Takes the pictures in docs/screenshots/: the quotes window with the seed collection,
# one quote selected, in a light and in a dark desktop theme (qt6ct's "darker" colours),
# in German with the Quotes menu open, in German at 640x400 with the settings page, and
# right to left with Hebrew and Arabic quotes, on a virtual display.
# Usage: scripts/screenshots.sh [build dir]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
app="${1:-$root/build}/bin/quillbox2"
out="$root/docs/screenshots"
mkdir -p "$out"

# Optional: SIZE=WxH resizes the window, KEYS are pressed after the click, ARGS go to the
# application, IMPORT is a text file imported before the start.
shoot() { # theme name, the name of the picture, the language (default English)
  local theme="$1" picture="$2" home
  local -x LANGUAGE="${3:-en}" SIZE="${SIZE:-}" KEYS="${KEYS:-}" APP_ARGS="${ARGS:-}"
  home="$(mktemp -d)"
  export HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
         XDG_STATE_HOME="$home/.local/state" XDG_CACHE_HOME="$home/.cache"
  mkdir -p "$XDG_CONFIG_HOME/qt6ct"
  if [[ "$theme" == dark ]]; then
    printf '[Appearance]\ncolor_scheme_path=/usr/share/qt6ct/colors/darker.conf\ncustom_palette=true\nstyle=Fusion\n' \
      > "$XDG_CONFIG_HOME/qt6ct/qt6ct.conf"
  else
    printf '[Appearance]\ncustom_palette=false\nstyle=Fusion\n' > "$XDG_CONFIG_HOME/qt6ct/qt6ct.conf"
  fi
  # qt6ct answers "Sans Serif" for the fixed font unless told otherwise, as a desktop is.
  printf '[Fonts]\nfixed="Monospace,10,-1,5,50,0,0,0,0,0"\ngeneral="Sans Serif,10,-1,5,50,0,0,0,0,0"\n' \
    >> "$XDG_CONFIG_HOME/qt6ct/qt6ct.conf"
  if [[ -n "${IMPORT:-}" ]]; then "$app" --import "$IMPORT" >/dev/null; fi
  QT_QPA_PLATFORMTHEME=qt6ct xvfb-run -a -s "-screen 0 1280x800x24" bash -c '
    "$0" $APP_ARGS >/dev/null 2>&1 &
    pid=$!
    window=$(xdotool search --sync --onlyvisible --name "quillbox2")
    sleep 1
    if [[ -n "$SIZE" ]]; then xdotool windowsize "$window" ${SIZE/x/ }; sleep 0.7; fi
    # The seventh quote of the list (the list is on the right when mirrored).
    eval "$(xdotool getwindowgeometry --shell "$window")"
    x=120; [[ "$APP_ARGS" == *-reverse* ]] && x=$((WIDTH - 120))
    xdotool mousemove --window "$window" $x 150 click 1
    sleep 0.7
    for key in $KEYS; do xdotool key "$key"; sleep 0.7; done
    if [[ "$LANGUAGE" != en && -z "$KEYS" ]]; then # a menu shows more of the translation
      xdotool key --window "$window" alt+z
      sleep 0.7
      # The open menu is a window of its own: cut the area of the window out of the screen.
      eval "$(xdotool getwindowgeometry --shell "$window")"
      import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" +repage "$1"
    else
      import -window "$window" "$1"
    fi
    kill "$pid"; wait "$pid"' "$app" "$out/$picture"
  rm -rf "$home"
}

shoot light quotes-window-light.png
shoot dark quotes-window-dark.png
shoot light quotes-window-de.png de
SIZE=640x400 KEYS=ctrl+comma shoot light quotes-window-de-640x400.png de
rtl="$(mktemp)"
printf '%s\n%%\n%s\n%%\n%s\n' \
  "האדם הוא מה שהוא עושה, ולא מה שהוא אומר שיעשה, ולא מה שהוא חושב שהוא." \
  "اطلبوا العلم من المهد إلى اللحد، فإن العلم نور يهدي إلى كل خير." \
  "A left-to-right quote in a right-to-left window ends with an ellipsis, not at the edge." \
  > "$rtl"
IMPORT="$rtl" ARGS=-reverse KEYS=End SIZE=640x400 shoot light quotes-window-rtl.png
rm -f "$rtl"
echo "Pictures in $out"
