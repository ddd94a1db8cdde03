#!/usr/bin/env bash
# Opens a compose window of Claws Mail, Evolution and KMail, each set up as README.md
# tells users to connect it, under Xvfb in a temporary home, and keeps a screenshot of
# each for a look: the signature below "-- " should be the template's line and a quote.
# Not part of the test suite; needs xvfb-run, openbox, dbus-run-session, ImageMagick's
# `import`, python3 and the mail clients (none of them are build dependencies):
#   apt-get install --no-install-recommends claws-mail evolution kmail openbox xvfb imagemagick
#
#   scripts/try-desktop-mail-clients.sh [path/to/quillbox2-helper]
#
# QB_MAIL_CLIENTS picks the tries (default: all of "claws-command claws-file
# evolution-script evolution-html kmail-command kmail-file kmail-html"); the screenshots go to
# $QB_SHOTS (default: a new folder under /tmp, printed at the end).
#
# The clients' first-run assistants are kept away by their configuration files, written
# here as each client writes them: Claws Mail's accountrc and folderlist.xml, Evolution's
# sources, KMail's emailidentities. KMail's Akonadi runs a MariaDB server, which refuses
# to run as root: run as root, this script runs KMail as the user "nobody".
set -euo pipefail

root="$(cd "$(dirname "$0")/.." && pwd)"
helper="$(realpath "${1:-$root/build/bin/quillbox2-helper}")"
[[ -x "$helper" ]] || { echo "No helper at '$helper': run 'make build' first." >&2; exit 2; }
tries="${QB_MAIL_CLIENTS:-claws-command claws-file evolution-script evolution-html kmail-command kmail-file kmail-html}"
shots="${QB_SHOTS:-$(mktemp -d -t quillbox2-desktop-mail.XXXXXX)}"
mkdir -p "$shots"
chmod 755 "$shots"
seconds=${QB_WAIT_SECONDS:-30}

# A home of its own with a collection, the template, the limits and a chosen signature
# file ($2) recorded as the application records it (the path and its bookmark).
make_home() { # folder signature-file-name
  local work=$1
  rm -rf "$work"
  mkdir -p "$work/home" "$work/run"
  chmod 700 "$work/run"
  export HOME="$work/home" XDG_RUNTIME_DIR="$work/run"
  export XDG_DATA_HOME="$HOME/.local/share" XDG_CONFIG_HOME="$HOME/.config"
  export XDG_STATE_HOME="$HOME/.local/state" XDG_CACHE_HOME="$HOME/.cache"
  export LANG=C.UTF-8 LC_ALL=C.UTF-8
  local container="$XDG_DATA_HOME/group.Q8B2X4K7LM.org.quillbox2/Library/Application Support"
  mkdir -p "$container" "$container/../Preferences" "$HOME/Mail"
  cp "$root/resources/signatures.json" "$container/quotes.db"
  signature_file="$HOME/Mail/$2"
  : >"$signature_file"
  local bookmark
  bookmark=$(python3 - "$signature_file" "$container/quotes.db" <<'PY'
import json, os, sys
target, base = sys.argv[1], sys.argv[2]
status = os.stat(target)
bookmark = {"version": 1, "relativePath": os.path.relpath(target, os.path.dirname(base)),
            "absolutePath": target, "device": str(status.st_dev), "inode": str(status.st_ino)}
text = json.dumps(bookmark, separators=(",", ":"))
print(text.replace("\\", "\\\\").replace('"', '\\"'))
PY
)
  printf '[General]\nQBDefaultsSignatureTemplate="Jane Doe \xc2\xb7 +1 555 0100 \xc2\xb7 example.org\\n{quote}"\nQBDefaultsSignatureWrapColumn=72\nQBDefaultsSignatureMaxLines=4\nQBDefaultsSignatureOutputPath=%s\nQBPrivateDefaultsOutputFileSSB="@ByteArray(%s)"\n' \
    "$signature_file" "$bookmark" >"$container/../Preferences/group.Q8B2X4K7LM.org.quillbox2.conf"
  # The command line users put in their configuration names the helper without a folder.
  PATH="$(dirname "$helper"):$PATH"
  export PATH
  "$helper" --next >/dev/null
}

# Runs a client under Xvfb with a window manager, screenshots it after $seconds.
shoot() { # name command...
  local name=$1
  shift
  dbus-run-session -- xvfb-run -a -s "-screen 0 1280x900x24" bash -c '
    openbox >/dev/null 2>&1 &
    sleep 1
    "$@" >"$QB_CLIENT_LOG" 2>&1 &
    client=$!
    sleep "$QB_SECONDS"
    import -window root "$QB_SHOT"
    kill "$client" 2>/dev/null || true' bash "$@" 2>/dev/null || true
  echo "$name: $shots/$name.png"
}

claws() { # file|command
  mkdir -p "$HOME/.claws-mail" "$HOME/ClawsMail"/{inbox,sent,queue,draft,trash}
  local type=0 path="$signature_file"
  [[ $1 == command ]] && type=1 path="quillbox2-helper --print"
  cat >"$HOME/.claws-mail/accountrc" <<EOF
[Account: 1]
account_name=Jane Doe
is_default=1
name=Jane Doe
address=jane@example.invalid
protocol=5
smtp_server=localhost
auto_signature=1
signature_type=$type
signature_path=$path
signature_separator=-- 
EOF
  cat >"$HOME/.claws-mail/folderlist.xml" <<EOF
<?xml version="1.0" encoding="UTF-8"?>
<folderlist>
<folder type="mh" name="Mailbox" path="$HOME/ClawsMail" collapsed="0">
<folderitem type="inbox" name="inbox" path="inbox"/>
<folderitem type="outbox" name="sent" path="sent"/>
<folderitem type="queue" name="queue" path="queue"/>
<folderitem type="draft" name="draft" path="draft"/>
<folderitem type="trash" name="trash" path="trash"/>
</folder>
</folderlist>
EOF
  # No dictionaries here: the spelling check would open an error window over the composer.
  printf '[Common]\nenable_aspell=0\n' >"$HOME/.claws-mail/clawsrc"
}

# Evolution takes a script (a file it runs, no arguments) as a signature; the script
# below is the one README.md tells users to make. With "html" it prints the .html file.
evolution_sources() { # script|html
  local sources="$XDG_CONFIG_HOME/evolution/sources" script="$HOME/quillbox2-signature"
  mkdir -p "$sources" "$XDG_CONFIG_HOME/evolution/signatures"
  if [[ $1 == html ]]; then
    printf '#!/bin/sh\ncat "%s"\n' "$signature_file" >"$script"
  else
    printf '#!/bin/sh\nexec quillbox2-helper --print\n' >"$script"
  fi
  chmod +x "$script"
  ln -s "$script" "$XDG_CONFIG_HOME/evolution/signatures/qb-signature"
  printf '[Data Source]\nDisplayName=jane@example.invalid\nEnabled=true\nParent=\n\n[Mail Account]\nBackendName=none\nIdentityUid=qb-identity\nNeedsInitialSetup=false\n' \
    >"$sources/qb-account.source"
  printf '[Data Source]\nDisplayName=jane@example.invalid\nEnabled=true\nParent=qb-account\n\n[Mail Identity]\nAddress=jane@example.invalid\nName=Jane Doe\nSignatureUid=qb-signature\n\n[Mail Submission]\nTransportUid=qb-transport\n' \
    >"$sources/qb-identity.source"
  printf '[Data Source]\nDisplayName=jane@example.invalid\nEnabled=true\nParent=qb-account\n\n[Mail Transport]\nBackendName=sendmail\n' \
    >"$sources/qb-transport.source"
  printf '[Data Source]\nDisplayName=Quillbox2\nEnabled=true\nParent=\n\n[Mail Signature]\nMimeType=%s\n' \
    "$([[ $1 == html ]] && echo text/html || echo text/plain)" >"$sources/qb-signature.source"
  if [[ $1 == html ]]; then
    mkdir -p "$XDG_CONFIG_HOME/glib-2.0/settings"
    printf "[org/gnome/evolution/mail]\ncomposer-mode='html'\n" \
      >"$XDG_CONFIG_HOME/glib-2.0/settings/keyfile"
    export GSETTINGS_BACKEND=keyfile
  fi
}

kmail_identity() { # file|command
  mkdir -p "$XDG_CONFIG_HOME"
  cat >"$XDG_CONFIG_HOME/emailidentities" <<EOF
[Default]
Default Identity=1234

[Identity #0]
Identity=Jane Doe
Name=Jane Doe
Email Address=jane@example.invalid
uoid=1234
Signature Enabled=true
Signature Type=$1
Signature Command=quillbox2-helper --print
Signature File=$signature_file
EOF
}

for try in $tries; do
  work="$shots/$try"
  export QB_SHOT="$shots/$try.png" QB_CLIENT_LOG="$shots/$try.log" QB_SECONDS=$seconds
  unset GSETTINGS_BACKEND
  case $try in
    claws-command | claws-file)
      make_home "$work" CurrentSignature.txt
      claws "${try#claws-}"
      shoot "$try" claws-mail --compose "mailto:friend@example.invalid"
      ;;
    evolution-script | evolution-html)
      if [[ $try == evolution-html ]]; then
        make_home "$work" CurrentSignature.html
      else
        make_home "$work" CurrentSignature.txt
      fi
      evolution_sources "${try#evolution-}"
      shoot "$try" evolution "mailto:friend@example.invalid"
      ;;
    kmail-command | kmail-file | kmail-html)
      if [[ $try == kmail-html ]]; then
        make_home "$work" CurrentSignature.html
      else
        make_home "$work" CurrentSignature.txt
      fi
      kmail_identity "$([[ $try == kmail-command ]] && echo command || echo file)"
      if [[ $(id -u) == 0 ]]; then
        # The screenshot and the log are made in the home "nobody" owns, then moved.
        chown -R nobody:nogroup "$work"
        QB_SHOT="$work/shot.png" QB_CLIENT_LOG="$work/client.log" \
          setpriv --reuid=65534 --regid=65534 --clear-groups \
          bash -c "$(declare -f shoot); shots='$shots'; shoot \"\$@\"" \
          bash "$try" kmail --composer "mailto:friend@example.invalid"
        mv "$work/shot.png" "$QB_SHOT" || true
        mv "$work/client.log" "$QB_CLIENT_LOG" || true
      else
        shoot "$try" kmail --composer "mailto:friend@example.invalid"
      fi
      ;;
    *) echo "Unknown try '$try'" >&2 ;;
  esac
  echo "   the signature file held: $(tr '\n' '|' <"$signature_file")"
done
echo "Screenshots and logs in $shots"
