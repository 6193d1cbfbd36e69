"""The cash book from the command line: Storno, daily close, the report again and the journal's check, against
Python's own SHA-256 and pdftotext."""
import hashlib
import subprocess
import sys
import tempfile
from pathlib import Path

cli = sys.argv[1]


def run(*arguments):
    done = subprocess.run([cli, "--home", str(home), "--config", str(config), *arguments], capture_output=True)
    return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8")


def pdf_text(pdf):
    return subprocess.run(["pdftotext", "-layout", str(pdf), "-"], capture_output=True, check=True).stdout.decode()


with tempfile.TemporaryDirectory() as folder:
    home = Path(folder) / "home"
    config = Path(folder) / "config"
    daten = home / "daten"
    daten.mkdir(parents=True)
    config.mkdir()
    ledger = daten / "belege.dat"
    ledger.write_bytes("02.01.2020;1048;;-35,50;EUR;7;33,18;2,32;;Post;;Porto;Bonn;;Ausgabebeleg\r\n"
                       "02.01.2020;1047;119,00;;EUR;19;100,00;19,00;;Jürgen;;Beratung;Bonn;;Quittung\r\n"
                       "01.01.2020;1046;100,00;;EUR;0;100,00;0,00;;Anna;;Verkauf;Bonn;;Quittung\r\n".encode("cp1252"))
    code, out, err = run("journal", "verify")
    assert code == 1 and "Es gibt kein Änderungsprotokoll" in err, (code, out, err)

    code, out, err = run("ledger", "storno", "1047")
    assert code == 0 and out == "Beleg 1047 storniert mit Beleg 1049.\n", (code, out, err)
    code, out, err = run("ledger", "storno", "1047")
    assert code == 1 and "Der Beleg 1047 ist bereits storniert (Beleg 1049)." in err, (code, out, err)
    last = (daten / "journal.dat").read_bytes().split(b"\r\n")[-2].split(b";")
    assert last[8].decode() == hashlib.sha256(ledger.read_bytes()).hexdigest(), last

    # Opening 100,00 (the day before) + 119,00 - 35,50 = 183,50; the Storno is dated today, outside the day.
    code, out, err = run("ledger", "close", "02.01.2020", "--counted", "180,00")
    assert code == 1 and "weicht um -3,50 EUR vom Kassensoll ab" in err, (code, out, err)
    code, out, err = run("ledger", "close", "02.01.2020", "--counted", "180,00", "--note", "Wechselgeld")
    assert code == 0 and "Kassensoll: 183,50\n" in out and "Differenz: -3,50\n" in out, (code, out, err)
    report = daten / "archiv" / "2020" / "kassenbericht-2020-01-02.pdf"
    text = pdf_text(report)
    for expected in ("Kassenbericht", "02.01.2020", "183,50 EUR", "180,00 EUR", "-3,50 EUR", "Wechselgeld"):
        assert expected in text, (expected, text)
    code, out, err = run("ledger", "close", "01.01.2020", "--counted", "0")
    assert code == 1 and "ist bereits abgeschlossen" in err, (code, out, err)
    code, out, err = run("ledger", "close", "--counted", "zehn")
    assert code == 1 and "\"zehn\" ist kein Betrag" in err, (code, out, err)

    again = Path(folder) / "nochmal.pdf"
    code, out, err = run("ledger", "report", "--day", "02.01.2020", str(again))
    assert code == 0 and "-3,50 EUR" in pdf_text(again), (code, out, err)
    code, out, err = run("ledger", "report", "--day", "03.01.2020", str(again))
    assert code == 1 and "Für den 03.01.2020 gibt es keinen Tagesabschluss." in err, (code, out, err)

    code, out, err = run("journal", "verify")
    assert (code, out) == (0, "Journal in Ordnung: 4 Einträge\n"), (code, out, err)
    code, out, err = run("journal", "show")
    assert "Beleg storniert (Zeile 1)" in out and "Tagesabschluss" in out and "Kassendifferenz" in out, out
    code, out, err = run("journal", "show", "--to", "01.01.2000")
    assert (code, out) == (0, "Keine Einträge.\n"), (code, out, err)
    code, out, err = run("journal", "show", "--from", "32.01.2020")
    assert code == 2 and "kein Datum" in err, (code, out, err)

    # A damaged journal fails the command (the findings themselves: JournalTest).
    journal = (daten / "journal.dat").read_bytes()
    (daten / "journal.dat").write_bytes(journal[:-20])
    code, out, err = run("journal", "verify")
    assert code == 1 and err.startswith("Eintrag 4: das Journal endet mitten in diesem Eintrag"), (code, out, err)
    (daten / "journal.dat").write_bytes(journal)

    # ledger file: the row on top as before, its PDF/A copy in the archive, both in the journal.
    receipt = Path(folder) / "q.ZW5"
    # Type, number, currency, rate, net, share, gross, words, from (two lines), for, place, date, notes.
    receipt.write_bytes("\r\n".join(["Quittung", "2001", "EUR", "19", "10,00", "1,90", "11,90", "elf", "Max Müller",
                                     "", "Beratung", "Bonn", "03.01.2020", ""]).encode("cp1252") + b"\r\n")
    code, out, err = run("ledger", "file", str(receipt))
    assert code == 0, (code, out, err)
    assert ledger.read_bytes().split(b"\r\n")[0].split(b";")[1] == b"2001", ledger.read_bytes()[:80]
    copies = list((daten / "archiv").glob("*/2001-*.pdf"))
    assert len(copies) == 1 and (copies[0].stat().st_mode & 0o777) == 0o444, copies
    text = pdf_text(copies[0])
    assert "2001" in text and "11,90" in text and "Max Müller" in text, text
    # A small PDF/A-1b that qpdf finds nothing to warn about.
    meta = subprocess.run(["pdfinfo", "-meta", str(copies[0])], capture_output=True, check=True).stdout.decode()
    assert 'pdfaid:part="1" pdfaid:conformance="B"' in meta and copies[0].stat().st_size < 60 * 1024, meta
    assert subprocess.run(["qpdf", "--check", str(copies[0])], capture_output=True).returncode == 0
    code, out, err = run("journal", "verify")
    assert (code, out) == (0, "Journal in Ordnung: 5 Einträge\n"), (code, out, err)
