"""zettelwerk-cli ledger chart: the picture of a year as PNG, read back by Python's PIL; the bars show in their
colours where the year has rows and only as the legend's marks where it has none."""
import subprocess
import sys
import tempfile
from pathlib import Path

from PIL import Image

cli = sys.argv[1]
TAKINGS, PAYOUTS, BALANCE = (0x3C, 0x9A, 0x5C), (0xD9, 0x54, 0x4D), (0x1F, 0x5F, 0xBF)

with tempfile.TemporaryDirectory() as folder:
    home, config = Path(folder) / "home", Path(folder) / "config"
    (home / "daten").mkdir(parents=True)
    ledger = home / "daten" / "belege.dat"
    ledger.write_bytes("02.01.2025;1;1.190,00;;EUR;19;1.000,00;190,00;;Jürgen;;Beratung;Bonn;;Quittung\r\n"
                       "03.02.2025;2;;-535,00;EUR;7;500,00;35,00;;Post;;Porto;Bonn;;Ausgabebeleg\r\n"
                       "04.03.2025;3;2.000,00;;EUR;0;2.000,00;0,00;;Anna;;Verkauf;Bonn;;Quittung\r\n".encode("cp1252"))

    def chart(*arguments):
        return subprocess.run([cli, "--home", str(home), "--config", str(config), "ledger", "chart", *arguments],
                              capture_output=True, text=True)

    for year, size, with_bars in (("2025", "900x600", True), ("2026", None, False)):
        out = Path(folder) / f"{year}.png"
        done = chart("--year", year, *(["--size", size] if size else []), str(out))
        assert done.returncode == 0, done
        with Image.open(out) as picture:
            assert picture.size == ((900, 600) if size else (1280, 800)), picture.size
            colours = {colour: count for count, colour in picture.convert("RGB").getcolors(1 << 20)}
        for colour in (TAKINGS, PAYOUTS, BALANCE):
            count = colours.get(colour, 0)
            assert (count > 1500) == with_bars or colour == BALANCE, (year, colour, count)
            assert count > 20, (year, colour, count)  # the legend's mark at least

    for arguments, code, message in ((["--year", "25", "x.png"], 2, "Aufruf:"),
                                     (["--year", "2025", "--size", "90x60", "x.png"], 2, "Aufruf:"),
                                     (["--year", "2025", str(Path(folder) / "nicht" / "da.png")], 1, "Fehler 76")):
        done = chart(*arguments)
        assert done.returncode == code and message in done.stderr, (arguments, done)

    ledger.write_bytes(b"02.01.2025;1;11,9O;;EUR;19;10,00;1,90;;A;;B;C;;Quittung\r\n")
    done = chart("--year", "2025", str(Path(folder) / "bad.png"))
    assert done.returncode == 1 and "Zeile 1 der Belegliste, \"11,9O\"" in done.stderr, done
print("ok")
