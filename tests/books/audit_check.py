"""The audit export read as an auditor's import would read it: xmllint checks index.xml against the DTD beside
it, xml.etree and csv read the index and every table it names, and each value is checked against its declared
type.

audit_check.py FOLDER                  prints every record of every table as a JSON line
audit_check.py --cli ZETTELWERK-CLI    runs `ledger gdpdu` on a program folder of its own and checks the result
"""
import csv
import json
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
from datetime import datetime
from pathlib import Path


def read_export(folder):
    folder = Path(folder)
    # Names relative to the folder: xmllint loses the DOCTYPE's DTD below a folder whose path is not ASCII.
    check = subprocess.run(["xmllint", "--noout", "--dtdvalid", "gdpdu-01-08-2002.dtd", "index.xml"], cwd=folder,
                           capture_output=True, text=True)
    assert check.returncode == 0, check.stderr
    records = []
    for table in ET.parse(folder / "index.xml").getroot().iter("Table"):
        assert table.find("UTF8") is not None and table.findtext("DecimalSymbol") == ",", table.findtext("URL")
        layout = table.find("VariableLength")
        assert layout.findtext("RecordDelimiter") == "\r\n"
        columns = []
        for column in layout:
            kind = next((child for child in column if child.tag in ("Numeric", "AlphaNumeric", "Date")), None)
            if kind is not None:
                columns.append((column.findtext("Name"), kind))
        raw = (folder / table.findtext("URL")).read_bytes()
        assert raw.count(b"\n") == raw.count(b"\r\n"), "a record ends without CR LF"
        with open(folder / table.findtext("URL"), encoding="utf-8", newline="") as data:
            rows = list(csv.reader(data, delimiter=layout.findtext("ColumnDelimiter"),
                                   quotechar=layout.findtext("TextEncapsulator")))
        header_rows = int(table.findtext("Range/From")) - 1
        assert rows[0] == [name for name, _ in columns], (rows[0], columns)
        for row in rows[header_rows:]:
            assert len(row) == len(columns), row
            for value, (name, kind) in zip(row, columns):
                if value and kind.tag == "Numeric":
                    places = int(kind.findtext("Accuracy"))
                    pattern = r"-?\d+" + (r",\d{%d}" % places if places else "")
                    assert re.fullmatch(pattern, value), (name, value)
                if value and kind.tag == "Date":
                    strftime = kind.findtext("Format").replace("DD", "%d").replace("MM", "%m").replace("YYYY", "%Y")
                    datetime.strptime(value, strftime)
            records.append([table.findtext("URL")] + row)
    return records


def check_cli(cli):
    with tempfile.TemporaryDirectory() as folder:
        home, config, out = Path(folder) / "home", Path(folder) / "config", Path(folder) / "pruefung"
        (home / "daten").mkdir(parents=True)
        config.mkdir()
        (home / "daten" / "belege.dat").write_bytes(
            "02.01.2020;1048;;-35,50;EUR;7;33,18;2,32;;Post;;Porto \"Eilbrief\";Bonn;;Ausgabebeleg\r\n"
            "31.12.2019;1047;119,00;;EUR;19;100,00;19,00;;Jürgen;;Beratung;Bonn;;Quittung\r\n".encode("cp1252"))

        def run(*arguments):
            done = subprocess.run([cli, "--home", str(home), "--config", str(config), "ledger", "gdpdu", *arguments],
                                  capture_output=True)
            return done.returncode, done.stdout.decode(), done.stderr.decode()

        code, output, error = run("--from", "31.01.2020", "--to", "01.01.2020", str(out))
        assert code == 2 and "endet vor seinem Beginn" in error and not out.exists(), (code, output, error)
        code, output, error = run("--from", "01.01.2020", "--to", "31.01.2020", str(out))
        assert code == 0 and output.startswith("Exportiert: 1 Beleg, 0 Einträge"), (code, output, error)
        records = read_export(out)
        assert ["belege.csv", "1", "02.01.2020", "1048", "", "-35,50", "EUR", "7", "33,18", "2,32", "", "Post", "",
                "Porto \"Eilbrief\"", "Bonn", "", "Ausgabebeleg"] in records, records
        assert len(records) == 1, records


if __name__ == "__main__":
    if sys.argv[1] == "--cli":
        check_cli(sys.argv[2])
    else:
        for record in read_export(sys.argv[1]):
            print(json.dumps(record, ensure_ascii=False))
