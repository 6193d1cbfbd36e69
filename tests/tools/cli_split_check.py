"""zettelwerk-cli runs the arithmetic, words and ledger commands without loading the toolkit, libcurl or libzip,
and hands every other command, with the same command line, to zettelwerk-cli-full: beside it in the build, in
libexec/zettelwerk of an installed tree, which then still finds the program folder beside zettelwerk-cli."""
import os
import shutil
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

cli = Path(sys.argv[1])
full = cli.with_name("zettelwerk-cli-full")
heavy = ("libQt6Gui", "libQt6PrintSupport", "libcurl", "libzip")


def run(program, *arguments, home):
    """The run, with the libraries the dynamic loader initialised (its LD_DEBUG lines taken out of stderr)."""
    env = {"PATH": os.environ.get("PATH", "/usr/bin:/bin"), "HOME": str(home), "XDG_DATA_HOME": str(home / "data"),
           "XDG_CONFIG_HOME": str(home / "config"), "LD_DEBUG": "libs"}
    done = subprocess.run([str(program), *map(str, arguments)], capture_output=True, env=env, timeout=120)
    lines = done.stderr.decode("utf-8", "replace").splitlines()
    libraries = [line.split("calling init:")[1].strip() for line in lines if "calling init:" in line]
    stderr = "\n".join(line for line in lines if not line.lstrip().split(":")[0].isdigit())
    return done.returncode, done.stdout.decode("utf-8"), stderr, libraries


with tempfile.TemporaryDirectory() as folder:
    folder = Path(folder)
    home = folder / "home"
    ledger = folder / "belege.dat"
    ledger.write_bytes("12.03.2011;1047;119,00;;EUR;19;;;einhundertneunzehn;Jürgen\r\n".encode("cp1252"))
    program = folder / "programmordner"
    lean = [
        (["words", "--rounding", "1234,56"], 0, "eintausendzweihundertfünfunddreißig\n"),
        (["gross", "119", "--rate", "19"], 0, "100,00\n19,00\n119,00\n"),
        (["ledger", "totals", ledger], 0, "Einnahmen: 119,00\n"),
        (["--home", program, "journal", "show"], 0, "Keine Einträge.\n"),
        (["ledger"], 2, ""),
        (["--help"], 0, "Aufruf: zettelwerk-cli [--home ORDNER] [--config ORDNER] BEFEHL ...\n"),
    ]
    for arguments, code, output in lean:
        got, stdout, stderr, libraries = run(cli, *arguments, home=home)
        assert got == code and stdout.startswith(output), (arguments, got, stdout, stderr)
        assert libraries, "the loader named no library: the check would see nothing"
        loaded = [library for library in libraries if any(name in library for name in heavy)]
        assert not loaded, (arguments, loaded)

    # A command of the full command line: the same usage text and exit code, with the toolkit loaded there.
    got, stdout, stderr, libraries = run(cli, "export", home=home)
    assert got == 2 and stderr.startswith("Aufruf: zettelwerk-cli export pdf|xml|rtf"), (got, stderr)
    assert any("libQt6Gui" in library for library in libraries), libraries

    # An installed tree with a portable program folder beside bin/zettelwerk-cli: the backup, run by the full
    # command line from libexec/zettelwerk, packs that folder's data.
    tree = folder / "tree"
    (tree / "bin" / "daten").mkdir(parents=True)
    (tree / "libexec" / "zettelwerk").mkdir(parents=True)
    shutil.copy2(cli, tree / "bin" / "zettelwerk-cli")
    shutil.copy2(full, tree / "libexec" / "zettelwerk" / "zettelwerk-cli-full")
    (tree / "bin" / "daten" / "mwst.dat").write_bytes(b"42\r\n")
    (folder / "sicherung").mkdir()
    got, stdout, stderr, _ = run(tree / "bin" / "zettelwerk-cli", "backup", folder / "sicherung", home=home)
    assert got == 0, (got, stdout, stderr)
    with zipfile.ZipFile(folder / "sicherung" / "backup_zw6.zip") as backup:
        assert backup.testzip() is None
        packed = {Path(name).name: backup.read(name) for name in backup.namelist()}
    assert packed.get("mwst.dat") == b"42\r\n", sorted(packed)

    # Without the full command line, zettelwerk-cli names what it misses.
    (tree / "libexec" / "zettelwerk" / "zettelwerk-cli-full").unlink()
    got, stdout, stderr, _ = run(tree / "bin" / "zettelwerk-cli", "export", home=home)
    assert got == 1 and "zettelwerk-cli-full" in stderr, (got, stderr)
