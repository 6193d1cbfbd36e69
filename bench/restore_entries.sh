#!/usr/bin/env bash
# A restore's cost against the entry count, with Info-ZIP's unzip in the same run as the peer: archives of 16,384
# and 65,536 small files below daten/ are restored into an empty program folder. Prints both times per count and
# the growth from the smaller to the larger count (4.0 is linear).
# Usage: bench/restore_entries.sh [BUILD_DIR]   (default: build)
set -euo pipefail
build=${1:-build}
cli="$build/tools/zettelwerk-cli"
if [ ! -x "$cli" ]; then
  echo "missing $cli: build the target zettelwerk-cli first" >&2
  exit 1
fi
command -v unzip >/dev/null || { echo "missing the peer: apt-get install unzip" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
seconds() { /usr/bin/python3 -c 'import subprocess,sys,time; t=time.perf_counter(); subprocess.run(sys.argv[2:], check=True, stdout=subprocess.DEVNULL, cwd=sys.argv[1]); print(f"{time.perf_counter()-t:.3f}")' "$@"; }
declare -A ours peer
for count in 16384 65536; do
  mkdir -p "$work/$count/store" "$work/$count/home" "$work/$count/peer" "$work/config"
  /usr/bin/python3 - "$work/$count/store/backup_zw6.zip" "$count" <<'PY'
import sys, zipfile
with zipfile.ZipFile(sys.argv[1], "w", zipfile.ZIP_DEFLATED) as z:
    for i in range(int(sys.argv[2])):
        z.writestr(f"daten/teil{i % 64}/datei{i}.txt", f"{i};Eintrag\r\n")
PY
  ours[$count]=$(seconds "$work" "$(realpath "$cli")" --home "$work/$count/home" --config "$work/config" restore "$work/$count/store")
  peer[$count]=$(seconds "$work/$count/peer" unzip -q -o "$work/$count/store/backup_zw6.zip")
  echo "$count entries: zettelwerk-cli restore ${ours[$count]} s, unzip ${peer[$count]} s"
done
/usr/bin/python3 -c "import sys; o1,o2,p1,p2 = map(float, sys.argv[1:]); print(f'growth 16,384 -> 65,536: ours {o2/o1:.2f}, unzip {p2/p1:.2f}; ratio ours/unzip at 65,536: {o2/p2:.2f}')" \
  "${ours[16384]}" "${ours[65536]}" "${peer[16384]}" "${peer[65536]}"
