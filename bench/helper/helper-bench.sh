#!/usr/bin/env bash
# Times quillbox2-helper as a whole process with a collection of $QUOTES quotes (10,000
# unless set); SIGNATURE=1 adds a template, a wrap column of 72 and a limit of 4 lines:
#   - `--print` (a mail client waits for it on every message): median of 21 runs;
#   - the running helper's resident memory after several rotations, and its wake-ups
#     over 10 s with a 60 s interval (voluntary context switches, from /proc).
# Usage: bench/helper/helper-bench.sh [path/to/quillbox2-helper]
set -euo pipefail
helper=${1:-build-bench/bin/quillbox2-helper}
helper=$(realpath "$helper")
home=$(mktemp -d)
trap 'kill "${pid:-}" 2>/dev/null || true; rm -rf "$home"' EXIT
export HOME=$home XDG_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config \
       XDG_STATE_HOME=$home/state XDG_CACHE_HOME=$home/cache
container="$XDG_DATA_HOME/group.Q8B2X4K7LM.org.quillbox2/Library"
mkdir -p "$container/Application Support" "$container/Preferences" "$home/Mail"

# A collection as the application writes it (four-space indentation, raw UTF-8), and
# the same quotes as one compact line, which --print reads through the full parser.
quotes=${QUOTES:-10000}
python3 - "$container/Application Support" "$quotes" <<'PY'
import json, sys, uuid
quotes = [{"UID": str(uuid.uuid4()),
           "Content": f"Quote number {i}: " + "words of some length " * 8 + "\n— Someone"}
          for i in range(int(sys.argv[2]))]
folder = sys.argv[1]
with open(f"{folder}/quotes.db", "w", encoding="utf-8") as db:
    json.dump({"Quotes": quotes}, db, indent=4, ensure_ascii=False)
    db.write("\n")
json.dump({"Quotes": quotes}, open(f"{folder}/compact.db", "w", encoding="utf-8"),
          ensure_ascii=False)
PY

median_ms() { sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }
time_print() {
  for i in $(seq 21); do
    # $EPOCHREALTIME needs no process of its own, unlike $(date): only the helper is timed.
    start=${EPOCHREALTIME/./}; "$helper" --print >/dev/null; end=${EPOCHREALTIME/./}
    echo $(( end - start ))
  done | median_ms | awk -v what="$1" -v n="$quotes" '{printf "--print, %d quotes, %s: median %.1f ms (21 runs)\n", n, what, $1 / 1000}'
}
suite="$container/Preferences/group.Q8B2X4K7LM.org.quillbox2.conf"
if [[ ${SIGNATURE:-0} == 1 ]]; then
  printf '[General]\nQBDefaultsSignatureTemplate="Jane Doe, +1 555 0100\\n{quote}"\nQBDefaultsSignatureWrapColumn=72\nQBDefaultsSignatureMaxLines=4\n' > "$suite"
fi
db="$container/Application Support/quotes.db"
time_print "the application's layout"
mv "$db" "$db.app" && mv "$container/Application Support/compact.db" "$db"
time_print "compact layout"
mv "$db.app" "$db"

# The suite as the application writes it, with a bookmark made by the app's own code
# path being unavailable here: the helper then logs the missing bookmark once and keeps
# reading the collection at every interval, which is what costs memory.
printf '[General]\nQBDefaultsAutoRandomize=true\nQBDefaultsRandomizeInterval=1\n' \
  > "$container/Preferences/group.Q8B2X4K7LM.org.quillbox2.conf"
"$helper" >/dev/null 2>&1 & pid=$!
sleep 5
echo "running helper after 5 rotations: $(awk '/VmRSS/ {print $2 / 1024 " MB resident"}' /proc/$pid/status)"
kill $pid; wait $pid 2>/dev/null || true

printf '[General]\nQBDefaultsAutoRandomize=true\nQBDefaultsRandomizeInterval=60\n' \
  > "$container/Preferences/group.Q8B2X4K7LM.org.quillbox2.conf"
"$helper" >/dev/null 2>&1 & pid=$!
sleep 1
before=$(awk '/voluntary_ctxt_switches/ && !/non/ {print $2}' /proc/$pid/status)
sleep 10
after=$(awk '/voluntary_ctxt_switches/ && !/non/ {print $2}' /proc/$pid/status)
echo "wake-ups in 10 s between quotes (60 s interval): $((after - before))"
