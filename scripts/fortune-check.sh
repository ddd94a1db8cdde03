#!/usr/bin/env bash
# Compares, for every fortune data file under a folder, the number of quotes
# `quillbox2 --import FILE --dry-run` finds with the number of strings `strfile` counts.
# Prints one line per file that differs (or cannot be imported), then the totals.
#
# Usage: scripts/fortune-check.sh [fortune folder] [quillbox2 binary]
#   folder default: /usr/share/games/fortunes; binary default: build/bin/quillbox2.
# To try Debian's whole set without installing it:
#   mkdir -p /tmp/f/debs && cd /tmp/f/debs &&
#   apt-get download fortunes fortunes-min fortunes-de ... && \
#   for d in *.deb; do dpkg-deb -x "$d" ../root; done
#   scripts/fortune-check.sh /tmp/f/root/usr/share/games/fortunes
#
# Data files are the regular files that are not strfile indexes (".dat"). Symbolic
# links are skipped (".u8" links to the file itself, and links such as cz/ -> cs/ name
# a file counted already); a ".u8" that is a file of its own (a UTF-8 copy of a file in
# a legacy encoding) is checked like any other; an empty file is only counted.
# VERBOSE=1 prints every file.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
folder="${1:-/usr/share/games/fortunes}"
binary="${2:-$root/build/bin/quillbox2}"
command -v strfile >/dev/null || { echo "strfile is missing (package fortune-mod)" >&2; exit 2; }
[[ -x "$binary" ]] || { echo "no $binary; build first" >&2; exit 2; }

home="$(mktemp -d)"; trap 'rm -rf "$home"' EXIT
export HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" \
       XDG_STATE_HOME="$home/state" XDG_CACHE_HOME="$home/cache" \
       XDG_RUNTIME_DIR="$home/run" LC_ALL=C.UTF-8 LANG=C.UTF-8 LANGUAGE=
mkdir -p "$XDG_RUNTIME_DIR"

files=0 agree=0 differ=0 failed=0 empty=0 strfile_total=0 import_total=0 bytes=0
while IFS= read -r -d '' file; do
  files=$((files + 1))
  bytes=$((bytes + $(stat -c %s "$file")))
  name="${file#"$folder"/}"
  if [[ ! -s "$file" ]]; then
    # strfile counts no string; the import refuses an empty file.
    empty=$((empty + 1))
    continue
  fi
  expected=$(strfile "$file" "$home/index.dat" 2>/dev/null |
             sed -n 's/^There w[a-z]* \([0-9]*\) string.*/\1/p')
  expected=${expected:-0}
  strfile_total=$((strfile_total + expected))
  if ! answer=$("$binary" --import "$file" --dry-run 2>&1); then
    failed=$((failed + 1))
    printf 'FAILED\t%s\tstrfile %s\t%s\n' "$name" "$expected" "${answer//$'\n'/ }"
    continue
  fi
  count=$(sed -n 's/.*: \([0-9,]*\) quotes\{0,1\}, separator .*/\1/p' <<<"$answer" | tr -d ,)
  separator=$(sed -n 's/.*, separator “\(.*\)”$/\1/p' <<<"$answer")
  count=${count:-0}
  import_total=$((import_total + count))
  if [[ "$count" == "$expected" ]]; then
    agree=$((agree + 1))
    [[ -n "${VERBOSE:-}" ]] && printf 'same\t%s\t%s\t%s\n' "$name" "$count" "$separator"
  else
    differ=$((differ + 1))
    printf 'DIFFERS\t%s\tstrfile %s\timport %s\tseparator %s\n' \
      "$name" "$expected" "$count" "$separator"
  fi
done < <(find "$folder" -type f ! -name '*.dat' -print0 | sort -z)

printf '%s files (%s bytes): %s agree, %s differ, %s cannot be imported, %s empty\n' \
  "$files" "$bytes" "$agree" "$differ" "$failed" "$empty"
printf 'strings counted by strfile: %s; quotes found by the import: %s\n' \
  "$strfile_total" "$import_total"
[[ $differ -eq 0 && $failed -eq 0 ]]
