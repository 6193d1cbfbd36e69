"""zettelwerk-cli ledger datev against Python's own cp1252 codec and csv reader."""
import csv
import io
import subprocess
import sys
import tempfile
from pathlib import Path

cli = sys.argv[1]

with tempfile.TemporaryDirectory() as folder:
    home, config = Path(folder) / "home", Path(folder) / "config"
    (home / "daten").mkdir(parents=True)
    config.mkdir()
    (home / "daten" / "belege.dat").write_bytes(
        "03.01.2026;1048;;-35,50;EUR;7;33,18;2,32;;Post;;Porto \"Eilbrief\";Bonn;;Ausgabebeleg\r\n"
        "02.01.2026;1047;119,00;;EUR;19;100,00;19,00;;Jürgen;;Beratung;Bonn;;Quittung\r\n"
        "31.12.2025;1046;100,00;;EUR;0;100,00;0,00;;Anna;;Verkauf;Bonn;;Quittung\r\n".encode("cp1252"))
    target = Path(folder) / "EXTF_Januar.csv"

    def run(*arguments):
        done = subprocess.run([cli, "--home", str(home), "--config", str(config), "ledger", "datev", *arguments],
                              capture_output=True)
        return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8")

    code, out, err = run("--from", "01.01.2026", "--to", "31.01.2026", str(target))
    assert code == 1 and "Bitte tragen Sie die Beraternummer ein" in err and not target.exists(), (code, out, err)
    (config / "zettelwerk.ini").write_text("[DATEV]\r\nBeraternummer=29098\r\nMandantennummer=55003\r\n"
                                           "Kontenrahmen=SKR04\r\n")
    code, out, err = run("--from", "01.01.2026", "--to", "31.01.2026", str(target))
    assert (code, out) == (0, f"2 Buchungen nach {target} geschrieben.\n"), (code, out, err)

    data = target.read_bytes()
    assert data.endswith(b"\r\n") and b"\n" not in data.replace(b"\r\n", b""), data[:200]
    rows = list(csv.reader(io.StringIO(data.decode("cp1252"), newline=""), delimiter=";", quotechar='"'))
    assert len(rows[0]) == 31 and rows[0][:5] == ["EXTF", "700", "21", "Buchungsstapel", "13"], rows[0]
    assert rows[0][10:16] == ["29098", "55003", "20260101", "4", "20260101", "20260131"] and rows[0][26] == "04"
    assert all(len(row) == 125 for row in rows[1:]), [len(row) for row in rows]
    assert rows[2][:14] == ["35,50", "H", "EUR", "", "", "", "1600", "6820", "8", "0301", "1048", "", "",
                            'Post, Porto "Eilbrief"'], rows[2][:14]
    assert rows[3][:14] == ["119,00", "S", "EUR", "", "", "", "1600", "4400", "", "0201", "1047", "", "",
                            "Jürgen, Beratung"], rows[3][:14]

    code, out, err = run("--from", "01.12.2025", "--to", "31.01.2026", str(target))
    assert code == 1 and "reicht über zwei Wirtschaftsjahre" in err, (code, out, err)
    code, out, err = run("--from", "1.1.26", "--to", "31.01.2026", str(target))
    assert code == 2 and "kein Datum" in err, (code, out, err)
print("ok")
