#!/usr/bin/env bash
# Times `quillbox2-helper --print` as a whole process with hyperfine, at $QUOTES quotes
# (100,000 unless set), with a template, a wrap column of 72 and a limit of 4 lines:
#   - "order kept": every mail while the collection stays as it is;
#   - "after a save": the first --print after the collection changed, when the round's
#     order is made again from the whole collection (each run is preceded, untimed, by
#     a save as the application makes it: a new file renamed over quotes.db).
# Several executables may be given to compare them on the same collection.
# Usage: bench/helper/print-after-change.sh [path/to/quillbox2-helper ...]
# Needs hyperfine and python3 (neither is a build dependency).
set -euo pipefail
(($#)) || set -- build-bench/bin/quillbox2-helper
command -v hyperfine >/dev/null || { echo "hyperfine is needed (apt-get install hyperfine)" >&2; exit 2; }
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config \
       XDG_STATE_HOME=$home/state XDG_CACHE_HOME=$home/cache
container="$XDG_DATA_HOME/group.Q8B2X4K7LM.org.quillbox2/Library"
mkdir -p "$container/Application Support" "$container/Preferences"
db="$container/Application Support/quotes.db"
python3 - "$db" "${QUOTES:-100000}" <<'PY'
import json, sys, uuid
quotes = [{"UID": str(uuid.uuid4()),
           "Content": f"Quote number {i}: " + "words of some length " * 8 + "\n— Someone"}
          for i in range(int(sys.argv[2]))]
with open(sys.argv[1], "w", encoding="utf-8") as db:
    json.dump({"Quotes": quotes}, db, indent=4, ensure_ascii=False)
    db.write("\n")
PY
printf '[General]\nQBDefaultsSignatureTemplate="Jane Doe, +1 555 0100\\n{quote}"\nQBDefaultsSignatureWrapColumn=72\nQBDefaultsSignatureMaxLines=4\n' \
  >"$container/Preferences/group.Q8B2X4K7LM.org.quillbox2.conf"
echo "$(nproc) CPUs, $(uptime)"
save="cp '$db' '$db.new' && mv '$db.new' '$db'"
for helper in "$@"; do
  helper=$(realpath "$helper")
  hyperfine -N --warmup 3 --runs "${RUNS:-30}" -n "order kept: $helper" "$helper --print"
  hyperfine --warmup 2 --runs "${RUNS:-30}" --prepare "$save" \
    -n "after a save: $helper" "$helper --print"
done
uptime
