"""zettelwerk-cli export: every format from one receipt file, judged by ImageMagick, qpdf, poppler and by hand."""
import shutil
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

cli, dist = sys.argv[1], sys.argv[2]
# Von_Zeile_2 stays empty: an empty field still gets its three lines.
FIELDS = [("Belegart", "Quittung"), ("Nummer", "00000042"), ("Waehrung", "EUR"), ("MwSt", "19"),
          ("Netto", "100,00"), ("MwSt_Anteil", "19,00"), ("Brutto", "119,00"),
          ("Betrag_in_Worte", "einhundertneunzehn"), ("Von_Zeile_1", "Erika Mustermann"),
          ("Von_Zeile_2", ""), ("Fuer", "Miete März & <Nebenkosten>"), ("Ort", "Köln"),
          ("Datum", "23.11.2026"), ("Buchungsvermerk", "Kasse 1")]


def run(*arguments):
    return subprocess.run([cli, "--home", str(home), "--config", str(config), *arguments], capture_output=True)


def exported(kind, name, *extra):
    target = folder / name
    result = run("export", kind, str(receipt), str(target), *extra)
    assert result.returncode == 0, (kind, result.stderr)
    assert result.stderr == b"", (kind, result.stderr)
    return target


with tempfile.TemporaryDirectory() as temporary:
    folder = Path(temporary)
    home = folder / "home"
    shutil.copytree(dist, home)
    config = folder / "config"
    config.mkdir()
    receipt = folder / "q.ZW5"
    receipt.write_bytes("".join(value + "\r\n" for _, value in FIELDS).encode("cp1252"))

    # XML: the declaration, the generator, then every field unescaped, three lines each.
    lines = ['<?xml version="1.0"?>', "<GENERATOR>Zettelwerk V6.0.0 (https://www.zettelwerk.example/)</GENERATOR>",
             "<Quittung>"]
    for tag, value in FIELDS:
        lines += ["     <%s>" % tag, "     " + value, "     </%s>" % tag]
    lines.append("</Quittung>")
    assert exported("xml", "q.xml").read_bytes() == "".join(l + "\r\n" for l in lines).encode("cp1252")

    # BMP: a 24-bit bottom-up file of the capture's size, rows padded to four bytes.
    bmp = exported("bmp", "q.bmp").read_bytes()
    offset, header, width, height, planes, bits = struct.unpack_from("<I I i i H H", bmp, 10)
    assert (bmp[:2], offset, header, width, height, planes, bits) == (b"BM", 54, 40, 570, 429, 1, 24)
    assert len(bmp) == 54 + (570 * 3 + 3) // 4 * 4 * 429

    # PNG holds the same pixels as the BMP; JPEG of quality 0 and 100 are both valid and clearly differ.
    png = exported("png", "q.png")
    same = subprocess.run(["/usr/bin/compare", "-metric", "AE", str(folder / "q.bmp"), str(png), "null:"],
                          capture_output=True)
    assert same.returncode == 0 and same.stderr.strip() == b"0", same
    sizes = {}
    for quality in ("0", "100"):
        jpg = exported("jpg", "q%s.jpg" % quality, "--quality", quality)
        identify = subprocess.run(["/usr/bin/identify", "-format", "%m %w %h", str(jpg)], capture_output=True)
        assert identify.stdout == b"JPEG 570 429", identify
        sizes[quality] = jpg.stat().st_size
    assert sizes["100"] > 3 * sizes["0"], sizes

    # RTF: the view's document, its one picture a PNG of the same pixels.
    rtf = exported("rtf", "q.rtf").read_bytes().decode("ascii")
    start = rtf.index("{\\pict\\pngblip")
    hex_digits = "".join(rtf[start:rtf.index("}", start)].split("\n", 1)[1].split())
    (folder / "from-rtf.png").write_bytes(bytes.fromhex(hex_digits))
    same = subprocess.run(["/usr/bin/compare", "-metric", "AE", str(folder / "q.bmp"), str(folder / "from-rtf.png"),
                           "null:"], capture_output=True)
    assert same.returncode == 0 and same.stderr.strip() == b"0", same

    # PDF: poppler sees one picture of the capture's size; qpdf judges the writer's documents in its own tests.
    pdf = exported("pdf", "q.pdf")
    images = subprocess.run(["pdfimages", "-list", str(pdf)], capture_output=True, text=True).stdout.splitlines()
    assert len(images) == 3 and images[2].split()[3:5] == ["570", "429"], images
    assert (home / "temp.bmp").read_bytes() == bmp, "temp.bmp is the same capture"

    # Faults: the program's German message and exit 1; a wrong call exits 2 and writes nothing.
    missing = run("export", "xml", str(folder / "fehlt.ZW5"), str(folder / "x.xml"))
    assert missing.returncode == 1 and "Datei nicht gefunden" in missing.stderr.decode(), missing
    nowhere = run("export", "png", str(receipt), str(folder / "fehlt" / "x.png"))
    assert nowhere.returncode == 1 and nowhere.stderr.decode() == "File Not Found. GDI+ Error:10\n", nowhere
    nowhere = run("export", "pdf", str(receipt), str(folder / "fehlt" / "x.pdf"))
    assert nowhere.returncode == 1 and nowhere.stderr.decode() == f"Fehler 76: Pfad nicht gefunden: {folder / 'fehlt'}\n", \
        nowhere
    for wrong in (["export", "gif", str(receipt), str(folder / "x.gif")],
                  ["export", "jpg", str(receipt), str(folder / "x.jpg"), "--quality", "101"],
                  ["export", "pdf", str(receipt)]):
        assert run(*wrong).returncode == 2, wrong
    assert not list(folder.glob("x.*"))
print("ok")
