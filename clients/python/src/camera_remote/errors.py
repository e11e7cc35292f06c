"""What can go wrong between a client and the camera."""

from __future__ import annotations

from typing import Any, Dict, Optional, Type


class InvalidValue(ValueError):
    """A value that cannot be sent: of the wrong type, or a text with a character that the camera
    does not read. Raised before anything is sent."""


class CameraError(Exception):
    """Base of all errors of an exchange with the camera; `command` names the command."""

    def __init__(self, command: str, message: str) -> None:
        super().__init__(f"{command}: {message}")
        self.command = command


class Refusal(CameraError):
    """Base of the refusals.

    `by_camera` is true if the camera itself has refused. Otherwise the checks in front of it have,
    and nothing was sent or stored. `data` is the data of the reply, if it has any; do not rely on
    it.
    """

    reason = ""

    def __init__(self, command: str, by_camera: bool, data: Optional[Dict[str, Any]]) -> None:
        super().__init__(command, self.reason)
        self.by_camera = by_camera
        self.data = data


class RequestedError(Refusal):
    """The request makes no sense to the camera (`by_camera`), or a parameter is missing or
    refused."""

    reason = "the camera refuses the request or one of its parameters"


class DisableError(Refusal):
    """The camera refuses the request in its present state; try again later."""

    reason = "not available in the camera's present state"


class SessionError(Refusal):
    """The session is not the one that is logged in: log in again and set `camera.session_id`."""

    reason = "not logged in, or another client has logged in since"


class FormatError(Refusal):
    """The camera finds no command or no session id in the request."""

    reason = "the camera finds no command or no session id in the request"


class CommandError(Refusal):
    """The camera does not know the command."""

    reason = "the camera does not know this command"


REFUSALS: Dict[str, Type[Refusal]] = {
    "RequestedError": RequestedError,
    "DisableError": DisableError,
    "SessionError": SessionError,
    "FormatError": FormatError,
    "CommandError": CommandError,
}


class InvalidReply(CameraError):
    """The camera has answered, but a text in the reply (a label with a quote or a backslash, for
    example) makes it invalid JSON. The command was carried out; its data cannot be read. `reply`
    is the text."""

    def __init__(self, command: str, reply: str) -> None:
        super().__init__(command, "a text in the camera's reply makes it invalid JSON")
        self.reply = reply


class CameraUnreachable(CameraError):
    """The camera has not answered.

    `reason` says why: "network" (no connection), "timeout", "http" (the web server answers with an
    error; `status` is its number, 500 if the camera's own parts are down), "empty" (no reply text)
    or "reply" (a text that is not a reply of this API).
    """

    def __init__(
        self, command: str, reason: str, message: str, status: Optional[int] = None
    ) -> None:
        super().__init__(command, message)
        self.reason = reason
        self.status = status
