#!/usr/bin/env bash
# Checks of the installed tree and the Debian package; CTest runs one step per test.
# Usage: check-package.sh <step> <build dir> <source dir> <version>
set -euo pipefail
step=$1 build=$2 source=$3 version=$4
work=$build/package-check
root=$work/root
id=org.quillbox2.Quillbox2
fail() { echo "FAIL: $*" >&2; exit 1; }

case $step in
install-tree)
  rm -rf "$root"
  DESTDIR=$root cmake --install "$build" --prefix /usr >/dev/null
  ;;
desktop-entries)
  # The app's entry as installed, and any entry template kept in the sources.
  mapfile -t entries < <(find "$root/usr/share/applications" "$source/resources" -name '*.desktop')
  [[ -f $root/usr/share/applications/$id.desktop ]] || fail "no $id.desktop installed"
  for entry in "${entries[@]}"; do
    out=$(desktop-file-validate "$entry" 2>&1) || fail "$entry: $out"
    [[ -z $out ]] || fail "$entry: $out"
    echo "valid: $entry"
  done
  ;;
metainfo)
  appstreamcli validate --no-net "$root/usr/share/metainfo/$id.metainfo.xml"
  ;;
icons)
  hicolor=$root/usr/share/icons/hicolor
  [[ -s $hicolor/scalable/apps/$id.svg ]] || fail "no scalable icon"
  for size in 16 32 48 64 128 256; do
    png=$hicolor/${size}x${size}/apps/$id.png
    file "$png" | grep -q "PNG image data, $size x $size," || fail "$png is not a ${size}px PNG"
  done
  echo "all icon sizes present"
  ;;
man-pages)
  for page in quillbox2 quillbox2-helper; do
    file=$root/usr/share/man/man1/$page.1.gz
    warnings=$(MANWIDTH=80 man --warnings -l "$file" 2>&1 >/dev/null)
    [[ -z $warnings ]] || fail "$page: $warnings"
    text=$(MANWIDTH=80 man -l "$file" 2>/dev/null)
    grep -q "^NAME" <<<"$text" || fail "$page does not render"
    grep -q "$version" <<<"$text" || fail "$page does not name version $version"
    ! grep -q "@" <<<"$text" || fail "$page has an unfilled @VARIABLE@"
    ! grep -q "share/quillbox2" <<<"$text" || grep -q "/usr/share/quillbox2" <<<"$text" ||
      fail "$page names a data folder outside the installed /usr tree"
    echo "renders: $page"
  done
  ;;
version)
  # No display: --version must answer on a bare terminal.
  out=$(env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb "$root/usr/bin/quillbox2" --version)
  [[ $out == "quillbox2 $version" ]] || fail "quillbox2 --version said '$out'"
  helper=$root/usr/bin/quillbox2-helper
  if [[ -e $helper ]]; then
    helperOut=$("$helper" --version)
    grep -q "$version" <<<"$helperOut" || fail "quillbox2-helper --version said '$helperOut'"
  fi
  [[ -s $root/usr/share/quillbox2/signatures.json ]] || fail "no seed collection installed"
  [[ -s $root/usr/share/doc/quillbox2/copyright ]] || fail "no copyright file installed"
  echo "$out"
  ;;
deb)
  rm -rf "$work/deb"
  cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/deb" >/dev/null
  deb=$(ls "$work"/deb/quillbox2_"$version"-*.deb)
  depends=$(dpkg-deb -f "$deb" Depends)
  echo "Depends: $depends"
  needs=(libqt6widgets6 libqt6svg6 libboost-log)
  # Where Qt's SVG plug-ins come in a package of their own, the icons need it too.
  dpkg-query -W -f='${Status}' qt6-svg-plugins 2>/dev/null | grep -q "install ok installed" &&
    needs+=(qt6-svg-plugins)
  for needed in "${needs[@]}"; do
    grep -q "$needed" <<<"$depends" || fail "Depends lacks $needed"
  done
  contents=$(dpkg-deb -c "$deb")
  for path in usr/bin/quillbox2 usr/share/applications/$id.desktop usr/share/metainfo/$id.metainfo.xml \
              usr/share/icons/hicolor/48x48/apps/$id.png usr/share/man/man1/quillbox2.1.gz \
              usr/share/quillbox2/signatures.json usr/share/doc/quillbox2/copyright \
              usr/share/doc/quillbox2/changelog.Debian.gz; do
    grep -q "\./$path\$" <<<"$contents" || fail "package lacks $path"
  done
  ;;
lintian)
  if ! command -v lintian >/dev/null; then
    echo "SKIPPED: lintian is not installed (apt-get install lintian)"
    exit 77
  fi
  deb=$(ls "$work"/deb/quillbox2_"$version"-*.deb)
  # Errors and warnings fail; informational tags are only shown. lintian's own cache
  # files go into the check's folder, not into /tmp, where it leaves them.
  mkdir -p "$work/lintian-tmp"
  TMPDIR="$work/lintian-tmp" lintian --fail-on error,warning --tag-display-limit 0 "$deb"
  echo "lintian: no errors or warnings"
  ;;
apt-install)
  if [[ ${QB_TEST_PACKAGE_INSTALL:-} != 1 ]]; then
    echo "SKIPPED: installs the package on this machine; set QB_TEST_PACKAGE_INSTALL=1 to run it"
    exit 77
  fi
  deb=$(ls "$work"/deb/quillbox2_"$version"-*.deb)
  sudo=""
  [[ $(id -u) -ne 0 ]] && sudo="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "$deb" >/dev/null
  out=$(env -u DISPLAY -u WAYLAND_DISPLAY /usr/bin/quillbox2 --version)
  [[ $out == "quillbox2 $version" ]] || fail "installed quillbox2 --version said '$out'"
  desktop-file-validate /usr/share/applications/$id.desktop || fail "menu entry not valid"
  dpkg-query -W -f='${Status}\n' libqt6svg6 | grep -q "install ok installed" || fail "no Qt SVG"
  echo "installed: $out"
  ;;
*)
  fail "unknown step $step"
  ;;
esac
