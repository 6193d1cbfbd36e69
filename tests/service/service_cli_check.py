"""zettelwerk-cli backup, restore and update check against real peers: Python's zipfile, unzip -t, Info-ZIP's zip,
hostile archives made here, and an HTTP server on 127.0.0.1. Usage: service_cli_check.py CLI"""
import http.server
import os
import struct
import subprocess
import sys
import tempfile
import threading
import warnings
import zipfile
import zlib
from pathlib import Path

cli = sys.argv[1]
warnings.simplefilter("ignore")
failures = []


def check(condition, what):
    if not condition:
        failures.append(what)


def run(*args):
    return subprocess.run([cli, "--home", str(home), "--config", str(config), *args], capture_output=True, text=True)


def files_below(folder):
    return {p.relative_to(folder).as_posix(): p.read_bytes() for p in folder.rglob("*") if p.is_file()}


def bomb_archive(path):
    """One entry of 1 GB of zeros whose headers claim 10 bytes."""
    packer = zlib.compressobj(9, zlib.DEFLATED, -15)
    block = bytes(1 << 20)
    data = b"".join(packer.compress(block) for _ in range(1024)) + packer.flush()
    name = b"daten/belege.dat"
    crc = zlib.crc32(b"0123456789")
    local = struct.pack("<IHHHHHIIIHH", 0x04034B50, 20, 0, 8, 0, 0x21, crc, len(data), 10, len(name), 0) + name
    central = struct.pack("<IHHHHHHIIIHHHHHII", 0x02014B50, 20, 20, 0, 8, 0, 0x21, crc, len(data), 10, len(name),
                          0, 0, 0, 0, 0, 0) + name
    end = struct.pack("<IHHHHIIH", 0x06054B50, 0, 0, 1, 1, len(central), len(local) + len(data), 0)
    path.write_bytes(local + data + central + end)


with tempfile.TemporaryDirectory() as tmp:
    tmp = Path(tmp)
    home, config, store, outside = tmp / "home", tmp / "config", tmp / "sicherung", tmp / "outside"
    data = home / "daten"
    for folder in (data / "vorlagen", config, store, outside):
        folder.mkdir(parents=True)
    original = {
        "belege.dat": "1;Müller;12,50\r\n".encode("cp1252") * 5000,
        "adressbuch.dat": b"",
        "vorlagen/Größe & Preis.txt": "Überschrift\n".encode(),
        "logo.bmp": os.urandom(70000),
    }
    for name, content in original.items():
        (data / name).write_bytes(content)

    # Backup: other programs read the archive and find every file byte for byte, umlauts included.
    result = run("backup", str(store))
    archive = store / "backup_zw6.zip"
    check(result.returncode == 0 and result.stdout == "4 Datei(en) gesichert.\n", f"backup: {result}")
    check(subprocess.run(["unzip", "-t", str(archive)], capture_output=True).returncode == 0, "unzip -t")
    with zipfile.ZipFile(archive) as z:
        packed = {i.filename: z.read(i) for i in z.infolist()}
        check(all(i.compress_type == zipfile.ZIP_DEFLATED for i in z.infolist()), "deflated")
    check(packed == {"daten/" + k: v for k, v in original.items()}, f"archive holds {sorted(packed)}")

    # Restore: a changed and a deleted file come back; what the archive lacks stays.
    (data / "belege.dat").write_bytes(b"geaendert")
    (data / "logo.bmp").unlink()
    (data / "neu.txt").write_bytes(b"bleibt")
    result = run("restore", str(store))
    check(result.returncode == 0 and result.stdout == "4 Datei(en) rückgesichert.\n", f"restore: {result}")
    check(files_below(data) == {**original, "neu.txt": b"bleibt"}, "restored files")

    # An archive made by Info-ZIP's zip restores as well.
    archive.unlink()
    subprocess.run(["zip", "-qr", str(archive), "daten"], cwd=home, check=True)
    (data / "belege.dat").write_bytes(b"alt")
    check(run("restore", str(store)).returncode == 0 and (data / "belege.dat").read_bytes() == original["belege.dat"],
          "restore of zip's archive")

    # Hostile archives touch nothing outside daten/ and restore nothing they cannot read whole.
    (outside / "ziel.txt").write_bytes(b"unberuehrt")
    (data / "ausgang").symlink_to(outside, target_is_directory=True)
    before = files_below(data)
    hostile = [
        ("../evil.txt", b"x"),
        ("daten/../../evil.txt", b"x"),
        (f"{outside}/abs.txt", b"x"),
        ("daten\\..\\..\\evil.txt", b"x"),
        ("C:/evil.txt", b"x"),
        ("daten/ausgang/ziel.txt", b"ueberschrieben"),
        ("anderes/datei.txt", b"x"),
    ]
    for entry, content in hostile:
        with zipfile.ZipFile(archive, "w") as z:
            z.writestr(entry, content)
        result = run("restore", str(store))
        check(result.returncode == 1 and result.stdout == "0 Datei(en) rückgesichert.\n", f"{entry}: {result}")
    with zipfile.ZipFile(archive, "w") as z:
        link = zipfile.ZipInfo("daten/verweis")
        link.create_system, link.external_attr = 3, 0o120777 << 16
        z.writestr(link, str(outside / "ziel.txt"))
        z.writestr("daten/verweis", b"durch den Verweis")
    result = run("restore", str(store))
    check(result.stdout == "1 Datei(en) rückgesichert.\n" and not (data / "verweis").is_symlink(), f"link: {result}")
    (data / "verweis").unlink()
    bomb_archive(archive)
    check(run("restore", str(store)).stdout == "0 Datei(en) rückgesichert.\n", "bomb restored")
    (data / "ausgang").unlink()
    check(files_below(data) == before and files_below(outside) == {"ziel.txt": b"unberuehrt"}, "hostile changed")
    check(not (tmp / "evil.txt").exists() and not (home / "anderes").exists(), "written outside")
    check(not [p for p in data.rglob(".*")], "temporary files left")

    # A damaged archive restores nothing; a folder without an archive gives 0; an empty daten/ packs nothing.
    archive.write_bytes(b"PK\x03\x04 kaputt")
    check(run("restore", str(store)).returncode == 1, "damaged archive")
    archive.unlink()
    check(run("restore", str(store)).stdout == "0 Datei(en) rückgesichert.\n", "missing archive")
    empty = tmp / "leer"
    (empty / "daten").mkdir(parents=True)
    result = subprocess.run([cli, "--home", str(empty), "--config", str(config), "backup", str(store)],
                            capture_output=True, text=True)
    check(result.returncode == 1 and result.stdout == "0 Datei(en) gesichert.\n" and not archive.exists(),
          f"empty backup: {result}")

    # Update check against a local server: newer, equal (by text: 10.0.0 sorts before 6.0.0), short answers.
    answers = {}

    class Handler(http.server.BaseHTTPRequestHandler):
        def log_message(self, *args):
            pass

        def do_GET(self):
            body = answers.get(self.path)
            self.send_response(200 if body is not None else 404)
            self.send_header("Content-Length", str(len(body or b"")))
            self.end_headers()
            self.wfile.write(body or b"")

    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    (home / "vendor.ini").write_text(f"updateServer=http://127.0.0.1:{server.server_address[1]}/\n")
    path = "/update/quittung/webup.inf"
    for version, expected in [("6.0.1", "Es ist eine neue Version vorhanden!"), ("6.0.0", "Es ist kein neues Update "
                              "verfügbar!"), ("10.0.0", ""), ("5.9.9", "")]:
        answers[path] = f"xxxxFüller\r\nZettelwerk\r\n{version}\r\n4 MB\r\nhttp://h/zettelwerk.exe\r\n".encode()
        result = run("update", "check")
        check(result.returncode == 0 and result.stdout == f"{expected}\n{version}\n", f"{version}: {result}")
        check(not (home / "webup.inf").exists(), "local copy left")
    for body, number in [(b"", "5"), (b"abc", "5"), (b"xxxxnur\r\nvier\r\nZeilen\r\n6.0.1\r\n", "62")]:
        answers[path] = body
        result = run("update", "check")
        check(result.returncode == 1 and result.stderr.startswith(f"Laufzeitfehler {number}:"), f"{body}: {result}")
    server.shutdown()

if failures:
    print("\n".join(failures))
    sys.exit(1)
