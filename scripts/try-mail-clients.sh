#!/usr/bin/env bash
# Composes real messages with mutt and/or neomutt set up as README.md tells users, and
# checks that each message carries a Quillbox2 quote as its signature. Nothing is sent:
# the clients hand the message to a script that saves it. Not part of the test suite;
# needs tmux, python3, jq and the mail clients (none of them are build dependencies).
#
#   scripts/try-mail-clients.sh [path/to/quillbox2-helper]
#
# QB_MAIL_CLIENTS="mutt neomutt" picks the clients; QB_KEEP_MAIL_TRY=1 keeps the
# temporary folder (messages, screens, configuration) for a look afterwards;
# QB_TRY_TEMPLATE=1 sets a template line above the quote, a wrap column of 40 and a
# limit of 3 lines, and checks the messages for those.
#
# The clients send nothing in batch mode with a signature (`mutt -s subject addr <
# body` leaves it out), so each message is composed interactively inside a detached
# tmux session, the way a user would: the editor is `true`, the compose screen is
# answered with "y".
set -euo pipefail

root="$(cd "$(dirname "$0")/.." && pwd)"
helper="$(realpath "${1:-$root/build/bin/quillbox2-helper}")"
clients="${QB_MAIL_CLIENTS:-mutt neomutt}"
[[ -x "$helper" ]] || { echo "No helper at '$helper': run 'make build' first." >&2; exit 2; }
for tool in tmux python3 jq; do
  command -v "$tool" >/dev/null || { echo "$tool is needed" >&2; exit 2; }
done

work="$(mktemp -d -t quillbox2-mail.XXXXXX)"
socket="$work/tmux.socket" # inside $work, so it goes with it
cleanup() {
  tmux -S "$socket" kill-server 2>/dev/null || true
  if [[ "${QB_KEEP_MAIL_TRY:-0}" == 1 ]]; then echo "Kept $work"; else rm -rf "$work"; fi
}
trap cleanup EXIT

# A home of its own: the clients and the helper see nothing of the real one.
export HOME="$work/home"
export XDG_DATA_HOME="$HOME/.local/share" XDG_CONFIG_HOME="$HOME/.config"
export XDG_STATE_HOME="$HOME/.local/state" XDG_CACHE_HOME="$HOME/.cache"
export LANG=C.UTF-8 LC_ALL=C.UTF-8
unset MAILRC MUTT_HOME NEOMUTT_HOME
# The command line users put in their configuration names the helper without a folder.
PATH="$(dirname "$helper"):$PATH"
export PATH
container="$XDG_DATA_HOME/group.Q8B2X4K7LM.org.quillbox2/Library/Application Support"
mkdir -p "$container" "$HOME/Mail" "$work/outbox"
quotes="$container/quotes.db"
cp "$root/resources/signatures.json" "$quotes"
template_line="Jane Doe · example.org"
if [[ "${QB_TRY_TEMPLATE:-0}" == 1 ]]; then
  # The suite as the application mirrors it (an INI file in UTF-8).
  mkdir -p "$container/../Preferences"
  printf '[General]\nQBDefaultsSignatureTemplate="%s\\n{quote}"\nQBDefaultsSignatureWrapColumn=40\nQBDefaultsSignatureMaxLines=3\n' \
    "$template_line" \
    >"$container/../Preferences/group.Q8B2X4K7LM.org.quillbox2.conf"
fi
export QB_TEMPLATE_LINE="$template_line"

cat >"$work/fake-sendmail" <<'EOF'
#!/bin/sh
# Stands in for sendmail: keeps the message, sends nothing.
# QB_MESSAGE names the file; the client passes its environment on.
outbox="$(dirname "$0")/outbox"
cat >"$outbox/.$QB_MESSAGE" && mv "$outbox/.$QB_MESSAGE" "$outbox/$QB_MESSAGE.eml"
EOF
chmod +x "$work/fake-sendmail"

# What the test needs from the client, kept apart from the user's configuration.
cat >"$work/harness.rc" <<EOF
set sendmail="$work/fake-sendmail"
set from="tester@example.invalid"
set folder="$HOME/Mail"
set record=""
set postpone=no
set editor="true"
set edit_headers
set autoedit
set abort_unmodified=no
EOF
echo "Body text" >"$work/body.txt"

# The signature file as Quillbox2 writes it. One round of the cycle shows every quote
# once, so within that many calls a quote with non-ASCII letters comes up; such a quote
# shows whether the client keeps UTF-8 intact.
signature_file="$HOME/Mail/CurrentSignature.txt"
rounds=$(jq '.Quotes | length' "$quotes")
for ((i = 0; i < rounds; i++)); do
  "$helper" --print >"$signature_file"
  LC_ALL=C grep -q '[^ -~]' "$signature_file" && break
done

# Checks a saved message: the body, the "-- " line, then one of the quotes as the
# signature (with a file given, that file's text).
# Keeps the signature beside the message (.signature) and prints its first line.
check_message() { # message expected-signature-file-or-empty
  python3 - "$1" "$2" "$quotes" <<'EOF'
import email, email.policy, json, os, sys
path, expected_file, quotes_path = sys.argv[1:]
with open(path, "rb") as f:
    body = email.message_from_binary_file(f, policy=email.policy.default).get_content()
if not body.startswith("Body text\n") or "\n-- \n" not in body:
    sys.exit(f"{path}: no body or no '-- ' line:\n{body}")
signature = body.split("\n-- \n", 1)[1].rstrip("\n")
with open(quotes_path, encoding="utf-8") as f:
    contents = {q["Content"] for q in json.load(f)["Quotes"]}
quote = signature
if os.environ.get("QB_TRY_TEMPLATE") == "1":
    # The template's line, then the quote in at most 3 lines of at most 40 characters
    # (a longer word alone on its line), the same words as a quote of the collection.
    head, _, quote = signature.partition("\n")
    if head != os.environ["QB_TEMPLATE_LINE"]:
        sys.exit(f"{path}: signature {signature!r} does not start with the template")
    lines = quote.split("\n")
    if len(lines) > 3 or any(len(l) > 40 and " " in l.strip() for l in lines):
        sys.exit(f"{path}: quote {quote!r} breaks the limits")
    contents = {" ".join(c.split()) for c in contents}
    quote = " ".join(quote.split())
if quote not in contents:
    sys.exit(f"{path}: signature {signature!r} is not a quote of the collection")
if expected_file:
    with open(expected_file, encoding="utf-8") as f:
        expected = f.read().rstrip("\n")
    if signature != expected:
        sys.exit(f"{path}: signature {signature!r}, expected the file's {expected!r}")
with open(path + ".signature", "w", encoding="utf-8") as f:
    f.write(signature)
print(signature.splitlines()[-1] if os.environ.get("QB_TRY_TEMPLATE") == "1" else signature.splitlines()[0])
EOF
}

wait_for() { # seconds description command...
  local seconds=$1 what=$2
  shift 2
  for ((tenth = 0; tenth < seconds * 10; tenth++)); do
    "$@" && return 0
    sleep 0.1
  done
  echo "Timed out waiting for $what" >&2
  return 1
}
screen_shows() { tmux -S "$socket" capture-pane -p -t "$1" 2>/dev/null | grep -q "$2"; }
session_gone() { ! tmux -S "$socket" has-session -t "$1" 2>/dev/null; }

sent=0
message=""
# Composes one message in a terminal and waits until the client has handed it over;
# sets $message to the saved file.
compose() { # client subject
  local session="$1-$sent"
  sent=$((sent + 1))
  message="$work/outbox/$session.eml"
  cat >"$work/$session.sh" <<EOF
#!/bin/sh
export QB_MESSAGE="$session"
exec $1 -e "source '$work/harness.rc'" -s "$2" -i "$work/body.txt" -- someone@example.invalid
EOF
  chmod +x "$work/$session.sh"
  tmux -S "$socket" new-session -d -s "$session" -x 120 -y 40 "$work/$session.sh"
  if wait_for 15 "the compose screen of $1" screen_shows "$session" "Compose"; then
    tmux -S "$socket" capture-pane -p -t "$session" >"$work/$session.screen"
    tmux -S "$socket" send-keys -t "$session" y
    wait_for 15 "$1 to send '$2'" test -f "$message" &&
      wait_for 10 "$1 to exit" session_gone "$session" && return 0
  fi
  tmux -S "$socket" capture-pane -p -t "$session" >&2 || true
  tmux -S "$socket" kill-session -t "$session" 2>/dev/null || true
  return 1
}

# Writes only the given client's user configuration, so it is certain which file was read.
configure() { # client line
  rm -f "$HOME/.muttrc" "$HOME/.config/neomutt/neomuttrc"
  if [[ "$1" == neomutt ]]; then
    mkdir -p "$HOME/.config/neomutt"
    echo "$2" >"$HOME/.config/neomutt/neomuttrc"
  else
    echo "$2" >"$HOME/.muttrc"
  fi
}

failures=0
tried=0
for client in $clients; do
  if ! command -v "$client" >/dev/null; then
    echo "$client: not installed, skipped"
    continue
  fi
  tried=$((tried + 1))
  echo "== $client ($("$client" -v | head -1))"

  file_line="set signature=\"~/Mail/CurrentSignature.txt\""
  configure "$client" "$file_line"
  echo "   $file_line"
  if compose "$client" "signature from a file" &&
    first=$(check_message "$message" "$signature_file"); then
    echo "   ok: the message ends with '-- ' and the file's quote: $first"
  else
    failures=$((failures + 1))
  fi

  command_line="set signature=\"$(basename "$helper") --print|\""
  configure "$client" "$command_line"
  echo "   $command_line"
  signatures=()
  for n in 1 2; do
    if compose "$client" "signature from a command $n" &&
      first=$(check_message "$message" ""); then
      signatures+=("$message.signature")
      echo "   ok: message $n ends with '-- ' and a quote: $first"
    else
      failures=$((failures + 1))
    fi
  done
  if ((${#signatures[@]} < 2)); then
    : # already counted as failed
  elif cmp -s "${signatures[@]}"; then
    echo "   FAILED: both messages got the same quote" >&2
    failures=$((failures + 1))
  else
    echo "   ok: the two messages got different quotes"
  fi
done

if ((tried == 0)); then
  echo "None of the clients ($clients) is installed." >&2
  exit 2
fi
echo "$sent messages tried, $failures failed"
((failures == 0))
