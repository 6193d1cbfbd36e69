"""zettelwerk-cli backup, restore and update check against real peers: Python's zipfile, unzip -t, Info-ZIP's zip,
hostile archives made here, and an HTTP server on 127.0.0.1. Usage: service_cli_check.py CLI"""
import os
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import warnings
import zipfile
import zlib
from pathlib import Path

cli = sys.argv[1]
# Under AddressSanitizer memory figures mean nothing, and LeakSanitizer refuses to run under strace.
sanitized = b"__asan_init" in Path(cli).read_bytes()
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

    # The change journal and the archived documents only grow: a restore brings the ledger back, never an older
    # journal or archive copy over what was recorded after the backup.
    (data / "archiv").mkdir()
    (data / "journal.dat").write_bytes(b"1 vor der Sicherung\r\n")
    (data / "archiv" / "beleg.pdf").write_bytes(b"alt")
    check(run("backup", str(store)).returncode == 0, "backup with a journal")
    (data / "journal.dat").write_bytes(b"1 vor der Sicherung\r\n2 danach\r\n")
    (data / "archiv" / "beleg.pdf").write_bytes(b"neu")
    (data / "belege.dat").write_bytes(b"geaendert")
    check(run("restore", str(store)).returncode == 0 and (data / "belege.dat").read_bytes() == original["belege.dat"],
          "ledger restored beside a journal")
    check((data / "journal.dat").read_bytes().endswith(b"2 danach\r\n") and
          (data / "archiv" / "beleg.pdf").read_bytes() == b"neu", "journal or archive set back by a restore")
    for name in ("journal.dat", "archiv/beleg.pdf"):
        (data / name).unlink()
    (data / "archiv").rmdir()
    check(run("backup", str(store)).returncode == 0, "backup again")

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
        ("daten/ausgang/neu/datei.txt", b"x"),
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
    check(not (outside / "neu").exists(), "folder made outside daten/ through a link")
    check(not [p for p in data.rglob(".*")], "temporary files left")

    # A data file kept elsewhere through a link is packed with its content under its own name, and the program's
    # leftovers of interrupted writes are not packed. A restore writes through a link inside the program folder
    # (which keeps its owner-only mode) and leaves one leading out of it alone, naming it.
    elsewhere, kept = tmp / "anderswo", home / "ablage"
    elsewhere.mkdir()
    kept.mkdir()
    (elsewhere / "belege.dat").write_bytes(b"1;extern\r\n")
    (kept / "adressbuch.dat").write_bytes(b"Meier;meier@example.org\r\n")
    (kept / "adressbuch.dat").chmod(0o600)
    for name, link in (("belege.dat", elsewhere / "belege.dat"), ("adressbuch.dat", Path("../ablage/adressbuch.dat"))):
        (data / name).unlink()
        (data / name).symlink_to(link)
    leftovers = [".belege.dat.zwtmp-Ab12Cd", ".backup_zw6.zip.zwtmp-Ef34Gh.ij56kl", ".belege.dat.lock"]
    for name in leftovers:
        (data / name).write_bytes(b"halb")
    check(run("backup", str(store)).returncode == 0, "backup with links")
    with zipfile.ZipFile(archive) as z:
        packed = {i.filename: z.read(i) for i in z.infolist()}
    check(packed.get("daten/belege.dat") == b"1;extern\r\n" and
          packed.get("daten/adressbuch.dat") == b"Meier;meier@example.org\r\n", f"links packed as {sorted(packed)}")
    check(not [name for name in packed if "zwtmp" in name or name.endswith(".lock")],
          f"temporary or lock files packed: {sorted(packed)}")
    for name in leftovers:
        (data / name).unlink()
    (elsewhere / "belege.dat").write_bytes(b"anders")
    (kept / "adressbuch.dat").write_bytes(b"anders")
    result = run("restore", str(store))
    check((kept / "adressbuch.dat").read_bytes() == b"Meier;meier@example.org\r\n" and
          (data / "adressbuch.dat").is_symlink() and (kept / "adressbuch.dat").stat().st_mode & 0o777 == 0o600,
          "restore through a link inside the program folder")
    check((elsewhere / "belege.dat").read_bytes() == b"anders" and (data / "belege.dat").is_symlink() and
          f"daten/belege.dat ist eine Verknüpfung nach {elsewhere / 'belege.dat'}" in result.stderr,
          f"link out of the program folder: {result}")

    # Durability, as the system calls show it: the archive and its folder are synced before the rename and the
    # folder after it; a restore syncs what it unpacked before any rename and then each folder it changed.
    def traced(*args):
        log = tmp / "strace.log"
        subprocess.run(["strace", "-f", "-qq", "-y", "-o", str(log), "-e", "trace=fsync,syncfs,rename,renameat,renameat2",
                        cli, "--home", str(home), "--config", str(config), *args], capture_output=True, check=True,
                       env={**os.environ, "ASAN_OPTIONS": "detect_leaks=0"})
        return log.read_text().splitlines()

    if shutil.which("strace"):
        calls = traced("backup", str(store))
        last = max(i for i, c in enumerate(calls) if "rename" in c and c.split('"')[3].endswith("/backup_zw6.zip"))
        check(any(".backup_zw6.zip.zwtmp-" in c for c in calls[:last] if "fsync" in c) and
              any(f"fsync(3<{store}>)" in c for c in calls[:last]) and
              any(f"<{store}>" in c for c in calls[last:] if "fsync" in c), "backup not synced:\n" + "\n".join(calls))
        calls = traced("restore", str(store))
        renames = [i for i, c in enumerate(calls) if "rename" in c]
        check(renames and any("syncfs" in c for c in calls[:renames[0]]) and
              any(f"fsync" in c and f"<{data}>" in c for c in calls[renames[-1]:]), "restore not synced:\n" +
              "\n".join(calls))
    else:
        print("strace is missing: the syncs of backup and restore are not checked")

    # An archive that would write far more than it holds restores nothing and says why.
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED) as z, z.open("daten/flut.dat", "w") as packed_file:
        for _ in range(96):
            packed_file.write(bytes(1 << 20))
    result = run("restore", str(store))
    check(result.returncode == 1 and "Es wurde nichts wiederhergestellt." in result.stderr and
          not (data / "flut.dat").exists(), f"flood restored: {result}")
    for name in ("belege.dat", "adressbuch.dat"):
        (data / name).unlink()

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

    # Update check against tests/net/peer.py serving a folder: newer, equal (by text: 10.0.0 sorts before 6.0.0),
    # short answers. Its /slow path drips a body for the Ctrl-C case.
    served = tmp / "served"
    (served / "update" / "quittung").mkdir(parents=True)
    (served / "gross").mkdir()
    installer = os.urandom(8192 * 4 + 100)
    (served / "zettelwerk.exe").write_bytes(installer)
    big = 64 << 20
    with open(served / "gross" / "zettelwerk.exe", "wb") as sparse:
        sparse.truncate(big)
    peer = subprocess.Popen(["/usr/bin/python3", str(Path(__file__).parent.parent / "net" / "peer.py"), "http",
                             str(served)], stdout=subprocess.PIPE)
    try:
        base = f"http://127.0.0.1:{int(peer.stdout.readline())}"
        (home / "vendor.ini").write_text(f"updateServer={base}/\n")
        description = served / "update" / "quittung" / "webup.inf"

        def describe(version, url=f"{base}/zettelwerk.exe"):
            description.write_bytes(f"xxxxFüller\r\nZettelwerk\r\n{version}\r\n4 MB\r\n{url}\r\n".encode())

        for version, expected in [("6.0.1", "Es ist eine neue Version vorhanden!"), ("6.0.0", "Es ist kein neues "
                                  "Update verfügbar!"), ("10.0.0", ""), ("5.9.9", "")]:
            describe(version)
            result = run("update", "check")
            check(result.returncode == 0 and result.stdout == f"{expected}\n{version}\n", f"{version}: {result}")
            check(not (home / "webup.inf").exists(), "local copy left")
        for body, number in [(b"", "5"), (b"abc", "5"), (b"xxxxnur\r\nvier\r\nZeilen\r\n6.0.1\r\n", "62")]:
            description.write_bytes(body)
            result = run("update", "check")
            check(result.returncode == 1 and result.stderr.startswith(f"Laufzeitfehler {number}:"), f"{body}: {result}")
        # The fetch prints the window's status lines and renames the installer as the window does.
        target = tmp / "download"
        target.mkdir()
        describe("6.1.0")
        result = run("update", "fetch", str(target))
        lines = result.stdout.splitlines()
        check(result.returncode == 0 and lines[:2] == ["Es ist eine neue Version vorhanden!",
                                                        "Status: Download wird gestartet. Bitte warten ..."] and
              lines[-3:] == ["Status: Download läuft 100,0% empfangen", "Status: Update ist runtergeladen!",
                             str(target / "zettelwerk_6_0_0.exe")], f"fetch: {result}")
        check(sorted(p.name for p in target.iterdir()) == ["zettelwerk_6_0_0.exe"] and
              (target / "zettelwerk_6_0_0.exe").read_bytes() == installer, "fetched installer")
        result = run("update", "fetch", str(target))
        check(result.returncode == 1 and result.stderr.startswith("Laufzeitfehler 58:"), f"second fetch: {result}")
        for name in ("zettelwerk.exe", "zettelwerk_6_0_0.exe"):
            (target / name).unlink(missing_ok=True)
        describe("6.0.0")
        result = run("update", "fetch", str(target))
        check(result.returncode == 0 and result.stdout == "Es ist kein neues Update verfügbar!\n", f"same: {result}")

        # A missing installer fails the command and leaves nothing (the download's other failures: WebUpdateTest).
        describe("6.1.0", f"{base}/fehlt/zettelwerk.exe")
        result = run("update", "fetch", str(target))
        check(result.returncode == 1 and result.stdout.splitlines()[-1] == "Status: Fehler 404, Datei nicht gefunden"
              and not list(target.iterdir()), f"missing installer: {result}")

        # Ctrl-C ends a running fetch as the window's close does: no file, no part of one.
        describe("6.1.0", f"{base}/slow")
        fetching = subprocess.Popen([cli, "--home", str(home), "--config", str(config), "update", "fetch",
                                     str(target)], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        for line in fetching.stdout:
            if "Download läuft" in line:
                break
        fetching.send_signal(signal.SIGINT)
        try:
            out, err = fetching.communicate(timeout=30)
            check(fetching.returncode == 130 and err == "Die Übertragung wurde abgebrochen.\n", f"interrupted: {err}")
        except subprocess.TimeoutExpired:
            fetching.kill()
            check(False, "Ctrl-C did not end the fetch")
        check(not list(target.iterdir()), f"interrupted fetch left {list(target.iterdir())}")

        # The installer streams to its file: 64 MiB cost the program no more than a check of the description
        # costs it, give or take 16 MiB (the whole file held once would be four times that).
        def peak_kib(*args):
            child = subprocess.Popen([cli, "--home", str(home), "--config", str(config), *args],
                                     stdout=subprocess.DEVNULL)
            _, status, usage = os.wait4(child.pid, 0)
            return os.waitstatus_to_exitcode(status), usage.ru_maxrss
        describe("6.1.0", f"{base}/gross/zettelwerk.exe")
        _, checking = peak_kib("update", "check")
        status, fetching = peak_kib("update", "fetch", str(target))
        check(status == 0 and (target / "zettelwerk_6_0_0.exe").stat().st_size == big, f"large fetch: {status}")
        check(sanitized or fetching - checking < 16 * 1024, f"large fetch took {fetching} KiB, the check {checking} KiB")
    finally:
        peer.terminate()
        peer.wait()

if failures:
    print("\n".join(failures))
    sys.exit(1)
