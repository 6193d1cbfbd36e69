"""Local peers for the transfer tests: prints its port, serves until terminated.
peer.py http DIR | silent | smtp-open OUTFILE"""
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
