"""zettelwerk-cli mail against aiosmtpd on 127.0.0.1: what arrives, read with Python's email package, and the
failures a user meets. Usage: mail_cli_check.py CLI DIST"""
import base64
import email
import email.policy
import os
import shutil
import socket
import signal
import ssl
import subprocess
import sys
import tempfile
import time
import warnings
import zipfile
import io
from pathlib import Path

from aiosmtpd.controller import Controller
from aiosmtpd.smtp import AuthResult

cli, dist = sys.argv[1], sys.argv[2]
warnings.simplefilter("ignore")
PASSWORD = "Geh€im-42"


class Handler:
    def __init__(self):
        self.messages = []

    async def handle_RCPT(self, server, session, envelope, address, options):
        if address.startswith("niemand@"):
            return "550 5.1.1 Empfänger unbekannt"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        self.messages.append((list(envelope.rcpt_tos), envelope.original_content))
        return "250 OK"


def authenticator(server, session, envelope, mechanism, auth_data):
    return AuthResult(success=auth_data.login == b"kasse" and auth_data.password == PASSWORD.encode(), handled=False)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def run(*arguments):
    env = dict(os.environ, ZETTELWERK_SMTP_CA=str(folder / "cert.pem"), QT_QPA_PLATFORM="offscreen")
    return subprocess.run([cli, "--home", str(home), "--config", str(config), "mail", str(receipt), *arguments],
                          capture_output=True, env=env, timeout=60)


def account(port, auth, password=PASSWORD):
    (config / "zettelwerk.ini").write_text(
        "[EMail]\nName=Kasse Müller\nFirma=Bäckerei Schröder\nEMail=kasse@example.org\n"
        f"SMTP=localhost:{port}\nAuth={1 if auth else 0}\nBenutzername=kasse\nPasswort={password}\n"
        "[Steuer]\nSteuer_Check=0\n", encoding="utf-8")


with tempfile.TemporaryDirectory() as temporary:
    folder = Path(temporary)
    # A program folder that does not exist yet: the command fills it as the program's first start does.
    home = folder / "home"
    config = folder / "config"
    config.mkdir()
    receipt = folder / "q.ZW5"
    # Only the number matters here: it names the attachment.
    receipt.write_bytes(b"Quittung\r\n00000042\r\n" + b"\r\n" * 12)
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "1", "-subj",
                    "/CN=localhost", "-addext", "subjectAltName=DNS:localhost", "-keyout", str(folder / "key.pem"),
                    "-out", str(folder / "cert.pem")], check=True, capture_output=True)
    context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    context.load_cert_chain(folder / "cert.pem", folder / "key.pem")

    handler = Handler()
    port = free_port()
    server = Controller(handler, hostname="127.0.0.1", port=port, authenticator=authenticator,
                        auth_required=True, auth_require_tls=True, tls_context=context, require_starttls=True)
    server.start()
    try:
        # STARTTLS and login; the receipt's picture as the first attachment, both alternatives, umlauts.
        account(port, True)
        result = run("--to", "chef@example.org", "--cc", "buero@example.org", "--subject", "Quittung März €",
                     "--message", "Grüße\nanbei die Quittung.", "--verbose")
        assert result.returncode == 0, result.stderr.decode()
        assert (home / "daten" / "adressbuch.dat").is_file(), sorted(home.iterdir())
        transcript = result.stderr.decode()
        assert "STARTTLS" in transcript and "AUTH" in transcript, transcript
        # The login in every encoding it may travel in: user and password alone (LOGIN) or together (PLAIN).
        secrets = [PASSWORD] + [base64.b64encode(s).decode().rstrip("=")
                                for s in (b"kasse", PASSWORD.encode(), b"\0kasse\0" + PASSWORD.encode())]
        assert not [s for s in secrets if s in transcript], transcript
        recipients, raw = handler.messages[-1]
        assert recipients == ["chef@example.org", "buero@example.org"], recipients
        message = email.message_from_bytes(raw, policy=email.policy.default)
        assert message["Subject"] == "Quittung März €", message["Subject"]
        assert message["From"].addresses[0].display_name == "Kasse Müller"
        assert message["Organization"] == "Bäckerei Schröder"
        assert message["X-Mailer"].startswith("Zettelwerk V6.0.0  (")
        assert message["X-Priority"].startswith("3") and message["Cc"].addresses[0].addr_spec == "buero@example.org"
        assert message["Date"] and message["Message-ID"]
        plain = message.get_body(("plain",)).get_content()
        html = message.get_body(("html",)).get_content()
        assert plain == "Grüße\r\nanbei die Quittung." or plain == "Grüße\nanbei die Quittung.", repr(plain)
        assert "Grüße<br>" in html, html
        attachments = list(message.iter_attachments())
        assert [a.get_filename() for a in attachments] == ["00000042.bmp"], attachments
        assert attachments[0].get_content_type() == "image/bmp"
        assert attachments[0].get_content() == (home / "temp" / "00000042.bmp").read_bytes()

        # A missing folder is named in the message.
        shutil.rmtree(home / "temp")
        result = run("--to", "chef@example.org")
        assert result.returncode == 1 and str(home / "temp") in result.stderr.decode(), result.stderr.decode()
        (home / "temp").mkdir()

        # Zipped: one archive holding the picture byte for byte.
        result = run("--to", "chef@example.org", "--zip")
        assert result.returncode == 0, result.stderr.decode()
        message = email.message_from_bytes(handler.messages[-1][1], policy=email.policy.default)
        (archive,) = list(message.iter_attachments())
        assert archive.get_filename() == "00000042.zip"
        with zipfile.ZipFile(io.BytesIO(archive.get_content())) as packed:
            assert packed.read("00000042.bmp") == (home / "temp" / "00000042.bmp").read_bytes()

        # Failures in the window's words (a refused recipient: SmtpSessionTest): no login where one is required,
        # a wrong password.
        account(port, False)
        result = run("--to", "chef@example.org")
        assert result.returncode == 1 and "Fehler beim Versenden der Nachricht" in result.stderr.decode(), \
            result.stderr.decode()
        account(port, True, password="falsch")
        result = run("--to", "chef@example.org")
        assert result.returncode == 1, result.stderr.decode()
        assert "Fehler beim Verbinden mit dem Mailserver\nDer Server hat die Anmeldung abgelehnt." in \
            result.stderr.decode(), result.stderr.decode()
    finally:
        server.stop()

    # Ctrl-C while the server keeps silent after the message: the command ends as Abort does.
    log = folder / "smtp.log"
    peer = subprocess.Popen(["/usr/bin/python3", str(Path(__file__).parent.parent / "net" / "peer.py"), "smtp-log",
                             str(log), "mute"], stdout=subprocess.PIPE)
    try:
        account(int(peer.stdout.readline()), False)
        env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
        sending = subprocess.Popen([cli, "--home", str(home), "--config", str(config), "mail", str(receipt), "--to",
                                    "chef@example.org"], stderr=subprocess.PIPE, env=env)
        for _ in range(500):
            if log.exists() and "data\n" in log.read_text():
                break
            time.sleep(0.02)
        sending.send_signal(signal.SIGINT)
        stderr = sending.communicate(timeout=30)[1].decode()
        # That Abort closes without a goodbye is SmtpSessionTest's matter.
        assert sending.returncode == 130 and "abgebrochen" in stderr, (sending.returncode, stderr)
    finally:
        peer.terminate()
        peer.wait()

    # Nobody listening.
    account(free_port(), False)
    result = run("--to", "chef@example.org")
    assert result.returncode == 1 and "Keine Verbindung zum Server" in result.stderr.decode(), result.stderr

    # A number that cannot be a file name writes nothing outside temp.
    receipt.write_bytes(b"Quittung\r\n../../x\r\n" + b"\r\n" * 12)
    result = run("--to", "chef@example.org")
    assert result.returncode == 1 and "Fehler 76" in result.stderr.decode(), result.stderr
    assert not (folder / "x.bmp").exists() and not (home / "x.bmp").exists()
print("ok")
