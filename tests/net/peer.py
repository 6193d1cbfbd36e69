"""Local peers for the transfer tests: prints its port, serves until terminated.
peer.py http DIR | silent | smtp-open OUTFILE | smtp-log LOGFILE [mute]"""
import functools, http.server, socket, struct, sys, time, warnings
warnings.simplefilter("ignore")

mode = sys.argv[1]
if mode == "http":
    class Handler(http.server.SimpleHTTPRequestHandler):
        def log_message(self, *args):
            pass
        def do_GET(self):
            if self.path in ("/zero", "/chunked", "/reset"):
                self.send_response(200)
                if self.path != "/chunked":
                    self.send_header("Content-Length", "0" if self.path == "/zero" else "100000")
                self.end_headers()
                if self.path == "/reset":  # a part, then the connection drops hard
                    self.wfile.write(b"x" * 20000)
                    self.wfile.flush()
                    self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
                    self.connection.close()
                elif self.path == "/chunked":
                    self.close_connection = True
                    self.wfile.write(b"ohne Laenge")
                return
            if self.path.startswith("/loop/"):  # ten redirects, then the answer
                hops = int(self.path[6:])
                self.send_response(200 if hops >= 10 else 302)
                if hops < 10:
                    self.send_header("Location", "/loop/%d" % (hops + 1))
                self.send_header("Content-Length", "4")
                self.end_headers()
                self.wfile.write(b"ende")
                return
            if self.path == "/drip":  # ten bytes a second, forty in all
                self.send_response(200)
                self.send_header("Content-Length", "40")
                self.end_headers()
                try:
                    for _ in range(40):
                        self.wfile.write(b"x")
                        self.wfile.flush()
                        time.sleep(0.1)
                except (BrokenPipeError, ConnectionResetError):
                    pass
                return
            if self.path == "/garbage":  # no HTTP at all
                self.wfile.write(b"Hallo Welt\r\n")
                self.close_connection = True
                return
            if self.path != "/slow":
                return super().do_GET()
            self.send_response(200)
            self.send_header("Content-Length", "100000")
            self.end_headers()
            try:
                for _ in range(1000):  # 100 bytes every 50 ms: twenty seconds in all
                    self.wfile.write(b"x" * 100)
                    self.wfile.flush()
                    time.sleep(0.05)
            except (BrokenPipeError, ConnectionResetError):
                pass  # the client aborted, as the test wants
    server = http.server.ThreadingHTTPServer(
        ("127.0.0.1", 0), functools.partial(Handler, directory=sys.argv[2]))
    server.daemon_threads = True
    print(server.server_address[1], flush=True)
    server.serve_forever()
elif mode == "silent":
    listener = socket.socket()
    listener.bind(("127.0.0.1", 0))
    listener.listen()
    print(listener.getsockname()[1], flush=True)
    held = []
    while True:
        held.append(listener.accept()[0])
elif mode == "smtp-open":  # no login, no TLS
    from aiosmtpd.controller import Controller
    class Handler:
        async def handle_RCPT(self, server, session, envelope, address, options):
            if address.startswith("niemand@"):
                return "550 5.1.1 Empfänger unbekannt"
            envelope.rcpt_tos.append(address)
            return "250 OK"
        async def handle_DATA(self, server, session, envelope):
            with open(sys.argv[2], "wb") as out:
                out.write(envelope.original_content)
            return "250 OK"
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        port = probe.getsockname()[1]
    controller = Controller(Handler(), hostname="127.0.0.1", port=port)
    controller.start()
    print(port, flush=True)
    while True:
        time.sleep(1)
elif mode == "smtp-log":  # a plain SMTP server that notes each connection, command and end in LOGFILE
    import threading
    mute = len(sys.argv) > 3 and sys.argv[3] == "mute"  # silent once the message data arrived
    log_lock = threading.Lock()
    def note(text):
        with log_lock, open(sys.argv[2], "a") as log:
            log.write(text + "\n")
    def serve(connection):
        reader = connection.makefile("rb")
        def answer(text):
            connection.sendall(text.encode() + b"\r\n")
        silent = False
        try:
            note("connect")
            answer("220 peer ESMTP")
            while True:
                line = reader.readline()
                if not line:
                    break
                command = line.decode("latin-1").rstrip("\r\n")
                note(command)
                verb = command.split(" ")[0].upper()
                if verb == "EHLO":
                    answer("250-peer\r\n250 8BITMIME")
                elif verb == "RCPT" and "niemand@" in command:
                    answer("550 5.1.1 Empfaenger unbekannt")
                elif verb == "DATA":
                    answer("354 go ahead")
                    while reader.readline() not in (b".\r\n", b""):
                        pass
                    note("data")
                    silent = mute
                    if not silent:
                        answer("250 2.0.0 angenommen")
                elif silent:
                    continue
                elif verb == "QUIT":
                    answer("221 Bye")
                    break
                else:
                    answer("250 OK")
        except OSError:
            pass
        note("closed")
        connection.close()
    listener = socket.socket()
    listener.bind(("127.0.0.1", 0))
    listener.listen()
    print(listener.getsockname()[1], flush=True)
    while True:
        threading.Thread(target=serve, args=(listener.accept()[0],), daemon=True).start()
