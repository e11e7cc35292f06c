"""A simulated camera for tests: `./run` of this checkout, on a port of its own.

    with World("--quiet") as world:
        reply = world.command("GetSystemInfo")
        assert reply["Response"]["Result"] == "Success"

Several worlds may run simultaneously, in one process or in many.
"""

import ctypes
import http.client
import json
import pathlib
import re
import signal
import subprocess
import threading
import urllib.parse

REPOSITORY = pathlib.Path(__file__).resolve().parents[2]
HANDLER_PATH = "/cgi-bin/camera_remote.cgi"

# A first start may install packages and build everything.
_START_TIMEOUT_S = 600
_STOP_TIMEOUT_S = 20
# Longer than the handler waits for a daemon that stays silent (5 s, 20 s for a clip list).
_REPLY_TIMEOUT_S = 30

_build_lock = threading.Lock()
_is_built = False

_libc = ctypes.CDLL(None)
_PR_SET_PDEATHSIG = 1


def _end_with_the_parent():
    """Run in the child: SIGTERM for it when its parent dies, however that happens."""
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGTERM)


class World:
    """Starts `./run --port 0` and stops it again; a context manager.

    `options` are further options of `./run`. It runs with "--quiet" unless `verbose`.
    `wrapper` is put in front of the command. `program`, an installed camera-simulator, is started in
    place of `./run`; nothing is built then. Otherwise the first world of a process builds what is
    missing, and the others use that. Enter it in a thread that lives as long as the world: the
    simulated camera ends with that thread.

    Attributes, from entering on:
      url      where the web server is, for example "http://127.0.0.1:23456", without a "/"
      session  the session id of the client that is logged in at the start
      output   every line that `./run` has printed so far, standard error included
    """

    def __init__(self, *options, verbose=False, wrapper=(), program=None):
        self.options = options
        self.verbose = verbose
        self.wrapper = wrapper
        self.program = program
        self.url = None
        self.session = None
        self.output = []
        self._ended = False
        self._process = None
        self._reader = None
        self._news = threading.Condition()

    def __enter__(self):
        global _is_built
        if self.program:
            self._serve(build=True)
            return self
        with _build_lock:
            if not _is_built:
                self._serve(build=True)
                _is_built = True
                return self
        self._serve(build=False)
        return self

    def __exit__(self, *exception):
        self.stop()

    def post(self, body, headers=None):
        """Posts a request to the handler unchanged.

        `body` is bytes, or str, which is sent as UTF-8. Returns (status, headers, body): the HTTP
        status as a number, an `http.client.HTTPMessage`, and the reply's bytes.
        """
        if isinstance(body, str):
            body = body.encode()
        return self.request("POST", HANDLER_PATH, body,
                            {"Content-Type": "application/json", **(headers or {})})

    def command(self, name, params=None, session=...):
        """Sends one command and returns its reply as a dict.

        `params`: the members of "Params"; None leaves "Params" out. `session`: the session id;
        left out it is that of the world, None sends none.
        """
        request = {"Command": name}
        if session is ...:
            session = self.session
        if session is not None:
            request["SessionID"] = session
        if params is not None:
            request["Params"] = params
        body = json.dumps({"Request": request}, separators=(",", ":"), ensure_ascii=False)
        status, _, reply = self.post(body)
        if status != 200:
            raise AssertionError(f"{name}: HTTP status {status}: {reply!r}")
        return json.loads(reply)

    def simulator(self, method, path, body=None):
        """Sends a request to the control interface.

        `path` is relative to /simulator/, for example "state" or "journal?after=5". `body` is sent
        as JSON unless it is None; bytes are sent unchanged. Returns (status, reply as a dict).
        """
        if body is not None and not isinstance(body, bytes):
            body = json.dumps(body).encode()
        headers = {} if body is None else {"Content-Type": "application/json"}
        status, _, reply = self.request(method, "/simulator/" + path.lstrip("/"), body, headers)
        return status, json.loads(reply)

    def request(self, method, path, body=None, headers=None):
        """One HTTP request on a connection of its own; returns what `post` does."""
        address = urllib.parse.urlsplit(self.url)
        connection = http.client.HTTPConnection(address.hostname, address.port,
                                                timeout=_REPLY_TIMEOUT_S)
        try:
            connection.request(method, path, body, headers or {})
            response = connection.getresponse()
            return response.status, response.headers, response.read()
        finally:
            connection.close()

    def processes(self, name):
        """The ids of the processes of this world whose program has that file name."""
        parents, found = {}, []
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                pid = int(folder.name)
                parents[pid] = int((folder / "stat").read_text().rsplit(")", 1)[1].split()[1])
                if (folder / "comm").read_text().strip() == name[:15]:
                    found.append(pid)
            except OSError:  # it has ended
                pass

        def is_in_this_world(pid):
            while pid in parents and pid != self._process.pid:
                pid = parents[pid]
            return pid == self._process.pid

        return [pid for pid in found if is_in_this_world(pid)]

    def stop(self):
        """Ends the simulated camera and everything in its world; returns its exit status."""
        if self._process is None:
            return None
        self._process.terminate()
        try:
            status = self._process.wait(_STOP_TIMEOUT_S)
        except subprocess.TimeoutExpired:
            self._process.kill()
            status = self._process.wait()
        self._reader.join()
        self._process.stdout.close()
        self._process = None
        return status

    def _serve(self, build):
        self._start(build)
        try:
            self._wait_until_it_serves()
        except BaseException:
            self.stop()
            raise

    def _start(self, build):
        command = [*self.wrapper, str(self.program or REPOSITORY / "run"), "--port", "0"]
        if not build:
            command.append("--no-build")
        if not self.verbose:
            command.append("--quiet")
        command += self.options
        self._process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                         stderr=subprocess.STDOUT, text=True, errors="replace",
                                         preexec_fn=_end_with_the_parent)
        self._reader = threading.Thread(target=self._read, args=(self._process.stdout,), daemon=True)
        self._reader.start()

    def _read(self, stream):
        for line in stream:
            with self._news:
                self.output.append(line.rstrip("\n"))
                self._news.notify_all()
        with self._news:
            self._ended = True
            self._news.notify_all()

    def _wait_until_it_serves(self):
        with self._news:
            self._news.wait_for(lambda: self._serves() or self._ended, _START_TIMEOUT_S)
        if not self._serves():
            raise RuntimeError("./run does not serve:\n" + "\n".join(self.output))

    def cameras(self):
        """All that serve so far, with the option --cameras: a list of (url, session)."""
        urls = self._values(r"The simulated camera answers at +(http://[^/]+)/")
        return list(zip(urls, self._values(r"Session id +(\S+)")))

    def wait_for(self, condition, timeout_s=10):
        """Waits for a condition on `output`, which is asked again whenever a line is printed."""
        with self._news:
            if not self._news.wait_for(condition, timeout_s):
                raise AssertionError("not to be seen in:\n" + "\n".join(self.output))

    def _serves(self):
        if self.session is None and self.cameras():
            self.url, self.session = self.cameras()[0]
        return self.session is not None

    def _values(self, pattern):
        return [match[1] for line in self.output if (match := re.match(pattern, line))]
