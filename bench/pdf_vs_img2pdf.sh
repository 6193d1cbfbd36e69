#!/usr/bin/env bash
# The picture page against a peer in the same run: img2pdf (Debian's img2pdf package) turns the same 570 x 429
# bitmap file into a one-page PDF. Both are timed inside their own process, file reading included, so neither
# pays for starting up. Prints both times and the ratio.
# Usage: bench/pdf_vs_img2pdf.sh [BUILD_DIR]   (default: build)
set -euo pipefail
build=${1:-build}
bench="$build/bench/zw_pdf_bench"
python=/usr/bin/python3
if [ ! -x "$bench" ]; then
  echo "missing $bench: build the target zw_pdf_bench first" >&2
  exit 1
fi
if ! "$python" -c 'import img2pdf, PIL' 2>/dev/null; then
  echo "missing the peer: apt-get install img2pdf" >&2
  exit 1
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
picture="$work/receipt.bmp"

# A receipt-like picture: white paper, a frame, rows of text.
"$python" - "$picture" <<'PY'
import sys
from PIL import Image, ImageDraw
image = Image.new("RGB", (570, 429), "white")
draw = ImageDraw.Draw(image)
draw.rectangle((5, 5, 564, 423), outline=(0, 0, 128), width=3)
for y in range(20, 400, 24):
    draw.text((20, y), "Quittung Nr. 2024-0815   Betrag 1.234,56 EUR   netto / brutto / MwSt 19 %", fill=(0, 0, 0))
image.save(sys.argv[1])
PY

ours=$(ZW_BENCH_PICTURE="$picture" "$bench" --benchmark_filter='^BM_PicturePageFromFile$' \
  --benchmark_min_time=1 --benchmark_format=json 2>/dev/null | "$python" -c '
import json, sys
run = json.load(sys.stdin)["benchmarks"][0]
scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}[run["time_unit"]]
print(run["real_time"] * scale, run["cpu_time"] * scale)')

peer=$("$python" - "$picture" "$work/peer.pdf" <<'PY'
import sys, time, img2pdf
picture, output = sys.argv[1], sys.argv[2]
with open(output, "wb") as out:
    out.write(img2pdf.convert(picture))
count, wall, cpu = 0, 0.0, 0.0
while wall < 2.0 or count < 10:
    w, c = time.perf_counter(), time.process_time()
    img2pdf.convert(picture)
    wall += time.perf_counter() - w
    cpu += time.process_time() - c
    count += 1
print(wall / count * 1000, cpu / count * 1000)
PY
)

read -r ours_wall ours_cpu <<<"$ours"
read -r peer_wall peer_cpu <<<"$peer"
"$python" - "$ours_wall" "$ours_cpu" "$peer_wall" "$peer_cpu" <<'PY'
import sys
ours_wall, ours_cpu, peer_wall, peer_cpu = map(float, sys.argv[1:])
print(f"picture page 570 x 429 from a bitmap file, per document (wall / cpu):")
print(f"  clsPDF   {ours_wall:8.3f} ms / {ours_cpu:8.3f} ms   (aim: under 5 ms)")
print(f"  img2pdf  {peer_wall:8.3f} ms / {peer_cpu:8.3f} ms")
print(f"ratio img2pdf / clsPDF: {peer_wall / ours_wall:.1f} x wall, {peer_cpu / ours_cpu:.1f} x cpu")
PY
