"""zettelwerk-cli ledger totals against hand-added figures of a mixed ledger."""
import os
import subprocess
import sys
import tempfile
import threading
from pathlib import Path

cli = sys.argv[1]
# Under AddressSanitizer memory figures mean nothing; the checks of them are passed over there.
sanitized = b"__asan_init" in Path(cli).read_bytes()
with tempfile.TemporaryDirectory() as folder:
    ledger = Path(folder) / "belege.dat"
    # Income 119,00 + 1.000,50; expense 135,50 + 12,25 typed without minus; a USD row counts like the others.
    ledger.write_bytes("12.03.2011;1047;119,00;;EUR;19;;;einhundertneunzehn;Jürgen\r\n"
                       "13.03.2011;1048;;-135,50;USD\r\n"
                       "14.03.2011;1049;1.000,50;;EUR\r\n"
                       "15.03.2011;1050;;12,25;EUR\r\n".encode("cp1252"))
    config = Path(folder) / "config"
    config.mkdir()
    run = subprocess.run([cli, "--config", str(config), "ledger", "totals", str(ledger)], capture_output=True)
    expected = ["Einnahmen: 1119,50", "Ausgaben: - 147,75", "Differenz: 971,75", "Aktuelle Währung: EUR",
                "Einnahmen 1119,50 EUR", "Ausgaben -147,75 EUR", "+/- 971,75 EUR"]
    assert run.returncode == 0, run.stderr
    assert run.stdout.decode("utf-8").splitlines() == expected, run.stdout.decode("utf-8")

    # A settings file that cannot be read is named on standard error; the totals still come, from the defaults.
    unreadable = Path(folder) / "unlesbar"
    (unreadable / "zettelwerk.ini").mkdir(parents=True)
    run = subprocess.run([cli, "--config", str(unreadable), "ledger", "totals", str(ledger)], capture_output=True)
    told = run.stderr.decode("utf-8")
    assert run.returncode == 0 and str(unreadable / "zettelwerk.ini") in told and "nicht gelesen" in told, told
    assert run.stdout.decode("utf-8").splitlines() == expected

    # The totals pass over the rows as they are read: a long ledger costs no more memory than half its size
    # beyond what a one-line ledger costs (the whole file held once, let alone twice, would be more).
    def peak_kib(*arguments, home=None):
        options = ["--home", str(home)] if home else []
        child = subprocess.Popen([cli, *options, "--config", str(config), "ledger", *map(str, arguments)],
                                 stdout=subprocess.DEVNULL)
        _, status, usage = os.wait4(child.pid, 0)
        assert status == 0, status
        return usage.ru_maxrss
    long_ledger = Path(folder) / "lang.dat"
    with long_ledger.open("wb") as out:
        for number in range(300000):
            out.write(b"12.03.2011;%d;119,00;;EUR;19;100,00;19,00;einhundertneunzehn;Max Muster;;Beratung;Bonn;;"
                      b"Quittung\r\n" % number)
    growth = peak_kib("totals", long_ledger) - peak_kib("totals", ledger)
    assert sanitized or growth * 1024 < long_ledger.stat().st_size / 2, (growth, long_ledger.stat().st_size)
    long_ledger.unlink()

    missing = subprocess.run([cli, "--config", str(config), "ledger", "totals", str(Path(folder) / "fehlt.dat")],
                             capture_output=True)
    assert missing.returncode == 1 and "Datei nicht gefunden" in missing.stderr.decode("utf-8"), missing

    ledger.write_bytes(b"1;2;zehn;\r\n")
    word = subprocess.run([cli, "--config", str(config), "ledger", "totals", str(ledger)], capture_output=True)
    assert word.returncode == 1 and "Typen unvertr" in word.stderr.decode("utf-8"), word
    # ledger file: the receipt goes on top of the program folder's ledger.
    home = Path(folder) / "home"
    (home / "daten").mkdir(parents=True)
    (home / "daten" / "belege.dat").write_bytes(b"alt\r\n")
    receipt = Path(folder) / "q.ZW5"
    receipt.write_bytes("\r\n".join(["1047", "Max Muster"] + [""] * 12).encode("cp1252") + b"\r\n")
    filed = subprocess.run([cli, "--home", str(home), "--config", str(config), "ledger", "file", str(receipt)],
                           capture_output=True)
    assert filed.returncode == 0, filed
    rows = (home / "daten" / "belege.dat").read_bytes().split(b"\r\n")
    assert len(rows) == 3 and rows[1] == b"alt" and rows[0].count(b"\t") + rows[0].count(b";") >= 1, rows
    # Filing copies the ledger below the new row in pieces as well.
    short_filing = peak_kib("file", receipt, home=home)
    (home / "daten" / "belege.dat").write_bytes(b"alt\r\n" * 2000000)
    # The first filing after that hand-made ledger journals it as a change made outside and archives a copy.
    peak_kib("file", receipt, home=home)
    growth = peak_kib("file", receipt, home=home) - short_filing
    assert sanitized or growth * 1024 < 10000000 / 2, growth
    (home / "daten" / "belege.dat").write_bytes(b"alt\r\n")

    # Two programs filing at once into one ledger: every filing re-reads the file under its lock, so none is lost.
    failures = []

    def file_many(count):
        for _ in range(count):
            run = subprocess.run([cli, "--home", str(home), "--config", str(config), "ledger", "file", str(receipt)],
                                 capture_output=True)
            if run.returncode != 0:
                failures.append(run)
    filers = [threading.Thread(target=file_many, args=(100,)) for _ in range(2)]
    for filer in filers:
        filer.start()
    for filer in filers:
        filer.join()
    assert not failures, failures[0]
    rows = (home / "daten" / "belege.dat").read_bytes().split(b"\r\n")
    assert len(rows) == 200 + 1 + 1 and rows[-2] == b"alt", len(rows)
print("ok")
