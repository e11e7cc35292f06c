"""The client: one camera, its commands and its polls."""

from __future__ import annotations

import http.client
import socket
import threading
import time
import urllib.parse
from dataclasses import dataclass
from typing import Any, Callable, Dict, Iterator, Mapping, Optional, TypeVar

from camera_remote.commands import COMMANDS_BY_NAME, Commands
from camera_remote.errors import CameraError, CameraUnreachable, InvalidValue
from camera_remote.wire import Value, read_reply, serialize_request

PATH = "/cgi-bin/camera_remote.cgi"

# Seconds; longer than the camera waits for its own parts (5 s).
DEFAULT_TIMEOUT = 10.0

Result = TypeVar("Result")


@dataclass
class Exchange:
    """One request and its outcome. The texts may contain passwords."""

    command: str
    request: str
    reply: Optional[str] = None
    status: Optional[int] = None  # of HTTP
    seconds: float = 0.0
    error: Optional[CameraError] = None  # what the method raises


class Camera(Commands):
    """One camera: `Camera("http://127.0.0.1:8080", "rv130-session")`.

    There is one method for each command; see `Commands`. A method returns the data of the reply as
    plain dictionaries, lists, texts and numbers, and raises a CameraError, or an InvalidValue if a
    value cannot be sent. The object keeps nothing but the session id, so threads may share it.
    """

    def __init__(
        self,
        url: str,
        session_id: str = "",
        *,
        timeout: Optional[float] = None,
        on_exchange: Optional[Callable[[Exchange], None]] = None,
    ) -> None:
        """
        url: address of the camera's web server. session_id: as issued by the login; may also be
        set later. timeout: for how many seconds the camera may stay silent; by default a time that
        suits the command. on_exchange: called after each exchange.
        """
        self._address = _parse_address(url)
        self.session_id = session_id
        self.timeout = timeout
        self.on_exchange = on_exchange

    def send(
        self,
        command: str,
        params: Optional[Mapping[str, Value]] = None,
        *,
        timeout: Optional[float] = None,
    ) -> Dict[str, Any]:
        """Sends any command, even one without a method. `command` and the keys of `params` are names
        of the API. Returns the reply's data, {} if it has none."""
        row = COMMANDS_BY_NAME.get(command)
        if row is not None and row.parameters:
            # Always with "Params": without it the camera checks nothing and stores zeros.
            given = params or {}
            known = {name: given[name] for name in row.wire_names if name in given}
            params = {**known, **given}
        session_id = None if row is not None and not row.needs_session else self.session_id
        exchange = Exchange(command, serialize_request(command, session_id, params))
        wait = next(
            seconds
            for seconds in (timeout, self.timeout, row.timeout if row else None, DEFAULT_TIMEOUT)
            if seconds is not None
        )
        start = time.monotonic()
        try:
            self._post(exchange, wait)
            return read_reply(command, exchange.reply or "")
        except CameraError as error:
            exchange.error = error
            raise
        finally:
            exchange.seconds = time.monotonic() - start
            if self.on_exchange is not None:
                self.on_exchange(exchange)

    def poll(
        self,
        function: Callable[[], Result],
        *,
        interval: float = 1.0,
        max_interval: float = 5.0,
        on_error: Optional[Callable[[CameraError], None]] = None,
        stop: Optional[threading.Event] = None,
    ) -> Iterator[Result]:
        """Calls `function` again and again and yields its results.

            for status in camera.poll(camera.get_cam_status, interval=0.5):
                print(status["TC"])

        The next call begins `interval` seconds after the loop has dealt with a result, so calls
        never overlap; while the camera is unreachable that time doubles, up to `max_interval`.
        Errors go to `on_error`, which may raise them to end the loop. Without it the poll goes on
        while the camera is unreachable and raises any other error. `stop` ends the loop from
        another thread.
        """
        stop = stop or threading.Event()
        delay = interval
        while not stop.is_set():
            try:
                result = function()
            except CameraError as error:
                lost = isinstance(error, CameraUnreachable)
                delay = min(delay * 2, max_interval) if lost else interval
                if on_error is not None:
                    on_error(error)
                elif not lost:
                    raise
            else:
                delay = interval
                yield result
            stop.wait(delay)

    def _call(
        self, command: str, params: Dict[str, Any], timeout: Optional[float]
    ) -> Dict[str, Any]:
        wire_parameters = COMMANDS_BY_NAME[command].wire_parameters(params)
        return self.send(command, wire_parameters, timeout=timeout)

    def _post(self, exchange: Exchange, timeout: float) -> None:
        connection = self._connection(timeout)
        try:
            connection.request(
                "POST",
                self._address.path.rstrip("/") + PATH,
                exchange.request.encode(),
                {"Content-Type": "application/json", "Connection": "close"},
            )
            response = connection.getresponse()
            exchange.status = response.status
            exchange.reply = response.read().decode(errors="replace")
        except socket.timeout as error:
            message = f"no reply within {timeout:g} s"
            raise CameraUnreachable(exchange.command, "timeout", message) from error
        except (OSError, http.client.HTTPException) as error:
            message = f"no connection to {self._address.netloc} ({error})"
            raise CameraUnreachable(exchange.command, "network", message) from error
        finally:
            connection.close()
        if exchange.status != 200:
            message = f"the web server answers with HTTP status {exchange.status}"
            raise CameraUnreachable(exchange.command, "http", message, exchange.status)

    def _connection(self, timeout: float) -> http.client.HTTPConnection:
        host, port = self._address.hostname or "", self._address.port
        if self._address.scheme == "https":
            return http.client.HTTPSConnection(host, port, timeout=timeout)
        return http.client.HTTPConnection(host, port, timeout=timeout)


def _parse_address(url: str) -> urllib.parse.SplitResult:
    try:
        address = urllib.parse.urlsplit(url)
        valid = address.scheme in ("http", "https") and address.hostname and address.port != 0
    except ValueError:
        valid = False
    if not valid:
        raise InvalidValue(f'{url!r} is not an address such as "http://127.0.0.1:8080"')
    return address
