#!/usr/bin/env bash
# Times the launch of the real application to its first painted window, with a quotes
# database of N quotes, against a bare Qt window started the same way, on a virtual
# display. Prints the medians of R runs each and their ratio.
# Usage: scripts/launch-time.sh [build dir] [N ...]   (default: build, 10000 100000)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "${1:-$root/build}" && pwd)"; shift || true
counts=("$@"); [[ ${#counts[@]} -eq 0 ]] && counts=(10000 100000)
runs="${RUNS:-7}"

if [[ -z "${QB_LAUNCH_XVFB:-}" ]]; then
  QB_LAUNCH_XVFB=1 exec xvfb-run -a -s "-screen 0 1280x800x24" "$0" "$build" "${counts[@]}"
fi

home="$(mktemp -d)"; trap 'rm -rf "$home"' EXIT
export HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" \
       XDG_STATE_HOME="$home/state" XDG_CACHE_HOME="$home/cache" QB_LAUNCH_PROBE=1
db="$XDG_DATA_HOME/group.Q8B2X4K7LM.org.quillbox2/Library/Application Support/quotes.db"
mkdir -p "$(dirname "$db")"

# Milliseconds from start to exit of one run of the given command.
run_ms() {
  local start end
  start=$(date +%s%N)
  "$@" >/dev/null 2>&1
  end=$(date +%s%N)
  echo $(( (end - start) / 1000000 ))
}
median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

for count in "${counts[@]}"; do
  python3 - "$db" "$count" <<'PY'
import json, sys, uuid
path, count = sys.argv[1], int(sys.argv[2])
quotes = [{"UID": str(uuid.UUID(int=n + 1, version=4)),
           "Content": f"Quote number {n}: the best way to predict the future is to invent it, "
                      "said someone once, and wrote it down for the rest of us."}
          for n in range(count)]
with open(path, "w", encoding="utf-8") as f:
    json.dump({"Quotes": quotes}, f, indent=4, ensure_ascii=False)
PY
  run_ms "$build/bin/quillbox2" >/dev/null # warm the page cache
  app=$(for _ in $(seq "$runs"); do run_ms "$build/bin/quillbox2"; done | median)
  bare=$(for _ in $(seq "$runs"); do run_ms "$build/bench/launch/bare_window"; done | median)
  awk -v n="$count" -v a="$app" -v b="$bare" \
    'BEGIN { printf "%7d quotes: application %4d ms, bare window %4d ms, ratio %.2f, difference %4d ms\n", n, a, b, a / b, a - b }'
done
