"""A web server that answers what a test tells it to, and keeps what it was sent."""

import http.server
import threading


class FakeServer:
    """A context manager. `url` is its address, `bodies` and `paths` are what was posted."""

    def __init__(self):
        self.bodies = []
        self.paths = []
        self._answers = []
        self._end = threading.Event()
        fake = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_POST(self):
                length = int(self.headers["Content-Length"])
                fake.paths.append(self.path)
                fake.bodies.append(self.rfile.read(length).decode())
                fake._answers.pop(0)(self)

            def log_message(self, *_):
                pass

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.01,))
        self.url = f"http://127.0.0.1:{self._server.server_port}"

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._end.set()
        self._server.shutdown()
        self._thread.join()
        self._server.server_close()

    def answer(self, body, status=200):
        """Answers the next request with this text."""
        def send(handler):
            data = body.encode() if isinstance(body, str) else body
            handler.send_response(status)
            handler.send_header("Content-Length", str(len(data)))
            handler.end_headers()
            handler.wfile.write(data)

        self._answers.append(send)

    def stay_silent(self):
        """Does not answer the next request until the test ends."""
        self._answers.append(lambda handler: self._end.wait())

    def hang_up(self):
        """Closes the connection of the next request without an answer."""
        self._answers.append(lambda handler: handler.connection.close())

    def break_off(self):
        """Announces more of an answer than it sends to the next request."""
        def send(handler):
            handler.send_response(200)
            handler.send_header("Content-Length", "1000")
            handler.end_headers()
            handler.wfile.write(b'{"Response":{"Requested":"GetCamStatus","Result":"Success"')

        self._answers.append(send)
