#!/usr/bin/env bash
# The data backup against a peer in the same run: Info-ZIP's `zip -6 -r` packs the same daten/ folder (a 100 MB
# ledger of receipt rows and the small list files). Both are timed with their process start; prints both times,
# the ratio and both archive sizes.
# Usage: bench/backup_vs_zip.sh [BUILD_DIR]   (default: build)
set -euo pipefail
build=${1:-build}
cli="$build/tools/zettelwerk-cli"
if [ ! -x "$cli" ]; then
  echo "missing $cli: build the target zettelwerk-cli first" >&2
  exit 1
fi
command -v zip >/dev/null || { echo "missing the peer: apt-get install zip" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/home/daten" "$work/ours" "$work/peer" "$work/config"
/usr/bin/python3 - "$work/home/daten" <<'PY'
import random, sys
random.seed(5)
names = ["Müller", "Schmidt", "Schneider", "Fischer", "Weber", "Meyer", "Wagner", "Becker"]
with open(sys.argv[1] + "/belege.dat", "w", encoding="cp1252", newline="\r\n") as out:
    written, n = 0, 0
    while written < 100 * 1024 * 1024:
        n += 1
        row = (f"{n};{random.randint(1, 28):02}.{random.randint(1, 12):02}.2026;{random.choice(names)};"
               f"Büromaterial {random.randint(1, 999)};{random.randint(1, 99999) / 100:.2f};19;Einnahme\n")
        written += out.write(row) + 1
for name in ("von_liste.txt", "artikel_fuer.txt", "adressbuch.dat"):
    open(sys.argv[1] + "/" + name, "w").write("Eintrag;1\n" * 200)
PY
seconds() { /usr/bin/python3 -c 'import subprocess,sys,time; t=time.perf_counter(); subprocess.run(sys.argv[2:], check=True, stdout=subprocess.DEVNULL, cwd=sys.argv[1]); print(f"{time.perf_counter()-t:.3f}")' "$@"; }
ours=$(seconds "$work" "$(realpath "$cli")" --home "$work/home" --config "$work/config" backup "$work/ours")
peer=$(seconds "$work/home" zip -6 -q -r "$work/peer/backup_zw6.zip" daten)
echo "zettelwerk-cli backup: ${ours} s, $(stat -c %s "$work/ours/backup_zw6.zip") bytes"
echo "zip -6 -r:             ${peer} s, $(stat -c %s "$work/peer/backup_zw6.zip") bytes"
/usr/bin/python3 -c "import sys; print(f'ratio ours/zip: {float(sys.argv[1]) / float(sys.argv[2]):.2f}')" "$ours" "$peer"
