#!/usr/bin/env bash
# The Debian package as a user gets it: built, unpacked into a temporary folder (never installed on this
# machine), started from there with a fresh program folder, and checked by the desktop's and Debian's validators.
#   PackageCheck.sh SOURCE_FOLDER BUILD_FOLDER
set -euo pipefail
source_folder=$1
build_folder=$2
work=$(mktemp -d)
running=()
cleanup() {
  for pid in "${running[@]}"; do kill "$pid" 2>/dev/null || true; wait "$pid" 2>/dev/null || true; done
  rm -rf "$work"
}
trap cleanup EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
# A generous cap on waits for the program, so a hang fails instead of blocking the run; no speed is checked.
wait_for() { local i; for ((i = 0; i < 600; i++)); do eval "$1" && return 0; sleep 0.1; done; return 1; }

deb=$(bash "$source_folder/scripts/package.sh" --build-dir "$build_folder" --output "$work" | tail -1)
[[ "$(basename "$deb")" =~ ^zettelwerk_6\.0\.0_[a-z0-9]+\.deb$ ]] || fail "package name $deb"
echo "package: $(basename "$deb"), $(stat -c %s "$deb") bytes"
depends=$(dpkg-deb -f "$deb" Depends)
echo "Depends: $depends"
[[ "$depends" == *libqt6widgets6* && "$depends" == *libcurl4* ]] || fail "dependencies not computed from the binaries"

root=$work/root
dpkg-deb -x "$deb" "$root"
share=$root/usr/share
for file in bin/zettelwerk bin/zettelwerk-cli libexec/zettelwerk/zettelwerk-cli-full share/zettelwerk/daten/mwst.dat share/zettelwerk/hilfe/index.html \
            share/doc/zettelwerk/copyright share/doc/zettelwerk/changelog.gz \
            share/man/man1/zettelwerk.1.gz share/man/man1/zettelwerk-cli.1.gz \
            share/applications/example.zettelwerk.Zettelwerk.desktop share/metainfo/example.zettelwerk.Zettelwerk.metainfo.xml \
            share/mime/packages/zettelwerk.xml share/icons/hicolor/scalable/apps/zettelwerk.svg; do
  [[ -f "$root/usr/$file" ]] || fail "missing /usr/$file"
done
for size in 16 22 24 32 48 64 128 256; do
  read -r width height < <(/usr/bin/python3 -c 'import struct,sys; d=open(sys.argv[1],"rb").read(24); print(*struct.unpack(">II", d[16:24]))' \
    "$share/icons/hicolor/${size}x${size}/apps/zettelwerk.png")
  [[ "$width $height" == "$size $size" ]] || fail "icon ${size}x${size} is ${width}x${height}"
done
/usr/bin/python3 -c 'import sys, xml.dom.minidom as d; assert d.parse(sys.argv[1]).documentElement.tagName == "svg"' \
  "$share/icons/hicolor/scalable/apps/zettelwerk.svg" || fail "the scalable icon is no SVG"

# The unpacked program, with a home of its own; one data file is taken out of the unpacked tree, so a program
# folder without it shows that the data came from beside the program and not from the build folder.
rm "$share/zettelwerk/daten/waehrung.dat"
export HOME=$work/home XDG_DATA_HOME=$work/home/data XDG_CONFIG_HOME=$work/home/config XDG_RUNTIME_DIR=$work/run
unset ZETTELWERK_HOME ZETTELWERK_DIST ZETTELWERK_CONFIG
mkdir -p "$HOME" "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
info=$("$root/usr/bin/zettelwerk-cli" info)
echo "$info"
[[ "$info" == *"Programmordner: $XDG_DATA_HOME/zettelwerk"* ]] || fail "program folder"
[[ -f "$XDG_DATA_HOME/zettelwerk/daten/mwst.dat" ]] || fail "the program folder was not filled"
[[ ! -e "$XDG_DATA_HOME/zettelwerk/daten/waehrung.dat" ]] || fail "the program folder was filled from the build tree"
# The backup is run by the full command line, which zettelwerk-cli finds in libexec.
mkdir "$work/backup"
"$root/usr/bin/zettelwerk-cli" backup "$work/backup" || fail "zettelwerk-cli backup"
[[ -f "$work/backup/backup_zw6.zip" ]] || fail "no backup from the full command line"

# The window, offscreen. A tax number choice and no tip keep the start free of modal questions; the load has run
# through when it wrote the carried income.
mkdir -p "$XDG_CONFIG_HOME/Zettelwerk"
printf '[Steuer]\nSteuer_Check=0\n[Options]\nShow Tips at Startup=0\n' >"$XDG_CONFIG_HOME/Zettelwerk/zettelwerk.ini"
QT_QPA_PLATFORM=offscreen "$root/usr/bin/zettelwerk" >"$work/window.log" 2>&1 &
running+=($!)
ini=$XDG_CONFIG_HOME/Zettelwerk/zettelwerk.ini
wait_for "grep -q '^Einnahme=0' '$ini'" || { cat "$work/window.log"; fail "the window did not load"; }
kill -0 "${running[0]}" || fail "the window ended"
# A second start with a receipt file hands it to the running window and ends instead of opening a window of its own.
printf 'Quittung\r\n42\r\nEUR\r\n19\r\n\r\n\r\n119\r\n\r\nM\xfcller\r\n\r\nB\xfcro\r\nBerlin\r\n01.02.2026\r\n\r\n' \
  >"$work/Beleg 42.ZW5"
(cd "$work" && QT_QPA_PLATFORM=offscreen timeout 60 "$root/usr/bin/zettelwerk" "Beleg 42.ZW5" >"$work/second.log" 2>&1) ||
  { cat "$work/second.log"; fail "the second start did not hand its file over"; }
kill -0 "${running[0]}" || fail "the window ended after the hand-over"

applications=$share/applications
desktop-file-validate "$applications/example.zettelwerk.Zettelwerk.desktop" || fail "desktop-file-validate"
appstreamcli validate --no-net "$share/metainfo/example.zettelwerk.Zettelwerk.metainfo.xml" || fail "appstreamcli"
# The file types: the database builds from the package's definition, and the desktop entry takes both types.
update-mime-database "$share/mime"
grep -q '^50:application/x-zettelwerk-receipt:\*\.zw5$' "$share/mime/globs2" || fail "no .ZW5 type"
grep -q '^50:application/x-zettelwerk-receipt-old:\*\.zwi$' "$share/mime/globs2" || fail "no .ZWI type"
update-desktop-database "$applications"
grep -q '^application/x-zettelwerk-receipt=example.zettelwerk.Zettelwerk.desktop;$' "$applications/mimeinfo.cache" ||
  fail "the desktop entry does not open .ZW5"

lintian --fail-on error --tag-display-limit 0 "$deb" >"$work/lintian.log" 2>&1 || { cat "$work/lintian.log"; fail "lintian"; }
echo "lintian:"
grep -v '^running with root' "$work/lintian.log" || true
echo "package check passed"
