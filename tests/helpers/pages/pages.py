"""Web servers on the loopback for tests: well-behaved pages and all the others.

Prints one line of JSON: the ports of a server, of one behind TLS with a certificate that nobody signed, and
one on which nobody listens. Ends when its standard input does.
"""

import gzip
import http.server
import json
import pathlib
import select
import socket
import ssl
import subprocess
import sys
import tempfile
import threading
import urllib.parse

MIB = 1024 * 1024


class Pages(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, format, *args):
        pass

    def do_GET(self):
        url = urllib.parse.urlsplit(self.path)
        self.query = dict(urllib.parse.parse_qsl(url.query))
        try:
            getattr(self, "page_" + url.path.strip("/").replace("-", "_"))()
        except (BrokenPipeError, ConnectionResetError):
            self.close_connection = True

    def answer(self, body, status=200, headers=()):
        self.send_response(status)
        for name, value in headers:
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def client_left(self, seconds):
        """Whether the client closes, or says anything more, within that time; None waits for it."""
        return bool(select.select([self.connection], [], [], seconds)[0])

    def page_plain(self):
        self.answer(b"<title>plain</title>", headers=[("Content-Type", "text/html")])

    def page_headers(self):
        self.answer(json.dumps({name.lower(): value for name, value in self.headers.items()}).encode())

    def page_missing(self):
        self.answer(b"<title>missing</title>", status=404)

    def page_failing(self):
        self.answer(b"<title>failing</title>", status=500)

    def page_empty(self):
        self.answer(b"")

    def page_latin1(self):
        self.answer("café".encode("latin-1"), headers=[("Content-Type", "text/html; charset=utf-8")])

    def page_gzip(self):
        self.answer(gzip.compress(b"packed " * 1000), headers=[("Content-Encoding", "gzip")])

    def page_bomb(self):
        self.answer(gzip.compress(bytes(64 * MIB)), headers=[("Content-Encoding", "gzip")])

    def page_broken_gzip(self):
        self.answer(b"this was never packed", headers=[("Content-Encoding", "gzip")])

    def page_silent(self):
        self.client_left(None)
        self.close_connection = True

    def page_stalled(self):
        """Begins and never goes on."""
        self.send_response(200)
        self.send_header("Content-Length", "1000")
        self.end_headers()
        self.wfile.write(b"x")
        self.page_silent()

    def page_dripping(self):
        """Never silent for long, and never done."""
        self.send_response(200)
        self.end_headers()
        while not self.client_left(0.01):
            self.wfile.write(b"x")
        self.close_connection = True

    def page_endless(self):
        self.send_response(200)
        self.end_headers()
        while True:
            self.wfile.write(b"<title>endless</title>" + bytes(MIB))

    def page_huge(self):
        self.answer(b"<title>huge</title>" + bytes(32 * MIB))

    def page_exact(self):
        self.answer(b"x" * int(self.query["length"]))

    def page_cut_off(self):
        """Ends before what it has announced."""
        self.send_response(200)
        self.send_header("Content-Length", "1000")
        self.end_headers()
        self.wfile.write(b"x" * 10)
        self.close_connection = True

    def page_redirect(self):
        self.answer(
            b"", status=int(self.query.get("status", "302")), headers=[("Location", self.query["to"])]
        )

    def page_loop(self):
        self.answer(b"", status=302, headers=[("Location", "/loop")])

    def page_cookie(self):
        self.answer(b"", headers=[("Set-Cookie", "taste=sweet"), ("Cache-Control", "max-age=1000")])

    def page_private(self):
        """Asks for a password, as long as none comes with the request."""
        if self.headers["Authorization"]:
            self.page_headers()
        else:
            self.answer(b"who are you", status=401, headers=[("WWW-Authenticate", 'Basic realm="tests"')])

    def page_garbage(self):
        self.wfile.write(b"\0\xff not the protocol\r\n\r\n")
        self.close_connection = True


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, request, client_address):
        """Clients that leave in the middle are what these pages are for."""


def serve(context=None):
    server = Server(("127.0.0.1", 0), Pages)
    if context:
        server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_port


def self_signed(folder):
    key, certificate = folder / "key.pem", folder / "certificate.pem"
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1"]
        + ["-nodes", "-keyout", key, "-out", certificate, "-days", "2"]
        + ["-subj", "/CN=localhost", "-addext", "subjectAltName=DNS:localhost,IP:127.0.0.1"],
        check=True,
        capture_output=True,
    )
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    return context


def main():
    with tempfile.TemporaryDirectory() as folder:
        context = self_signed(pathlib.Path(folder))
    with socket.socket() as unused:
        # Bound, so that nobody else gets the port, and not listening.
        unused.bind(("127.0.0.1", 0))
        ports = {"http": serve(), "https": serve(context), "refused": unused.getsockname()[1]}
        print(json.dumps(ports), flush=True)
        sys.stdin.read()


main()
