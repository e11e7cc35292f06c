"""Operates a camera from the command line."""

from __future__ import annotations

import argparse
import difflib
import json
import os
import sys
from typing import Any, Dict, List, Optional, Sequence

from camera_remote.client import Camera
from camera_remote.commands import COMMANDS, COMMANDS_BY_NAME
from camera_remote.errors import (
    CameraError,
    CameraUnreachable,
    InvalidReply,
    InvalidValue,
    SessionError,
)
from camera_remote.kinds import Command
from camera_remote.watch import watch

DEFAULT_URL = "http://127.0.0.1:8080"

SUCCESS = 0
REFUSED = 1
MISUSED = 2
NO_SESSION = 3
UNREACHABLE = 4
INVALID_REPLY = 5

EPILOG = """\
examples:
  camera-remote GetCamStatus
  camera-remote SetZoomCtrl Position=500
  camera-remote SetWebFtp1UploadASelect Clips=1,5,7-9
  camera-remote watch
  camera-remote commands

Without --url the camera is that of CAMERA_URL, or else http://127.0.0.1:8080; without
--session the session is that of CAMERA_SESSION.

exit status:
  0  success
  1  the camera refuses the command
  2  wrong use: an unknown command or parameter, or a value that cannot be sent
  3  not logged in
  4  no answer from the camera
  5  a reply that is invalid JSON
"""


def main(arguments: Optional[Sequence[str]] = None) -> int:
    """Runs the program; returns its exit status."""
    options = read_options(arguments)
    try:
        return run(options)
    except InvalidValue as error:
        return fail(str(error), MISUSED)
    except CameraError as error:
        return fail(f"{error}{advice(error)}", exit_status(error))
    except BrokenPipeError:
        # The reader has gone; Python would complain when it flushes on exit.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        return SUCCESS
    except KeyboardInterrupt:
        return 130


def read_options(arguments: Optional[Sequence[str]]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        prog="camera-remote",
        description="Sends one command to a camera and prints what it reports, as JSON.",
        epilog=EPILOG,
        formatter_class=argparse.RawDescriptionHelpFormatter,
    )
    parser.add_argument(
        "words",
        nargs="*",
        metavar=("COMMAND", "NAME=VALUE"),
        help="a command of the API with its parameters, watch, or commands",
    )
    parser.add_argument(
        "--url",
        default=os.environ.get("CAMERA_URL") or DEFAULT_URL,
        help="address of the camera's web server",
    )
    parser.add_argument(
        "--session",
        default=os.environ.get("CAMERA_SESSION", ""),
        metavar="ID",
        help="session id, as issued by the login",
    )
    parser.add_argument(
        "--timeout",
        type=positive_number,
        metavar="SECONDS",
        help="how long the camera may stay silent (default: 10; 25 for GetClipInfo)",
    )
    parser.add_argument(
        "--interval",
        type=positive_number,
        default=1.0,
        metavar="SECONDS",
        help="watch: time between two status requests (default: 1)",
    )
    options = parser.parse_intermixed_args(arguments)
    if not options.words:
        parser.error('a command is missing; "camera-remote commands" lists them')
    return options


def positive_number(text: str) -> float:
    try:
        number = float(text)
    except ValueError:
        number = 0
    if not 0 < number < 1e6:
        raise argparse.ArgumentTypeError(f"{text!r} is not a number of seconds above 0")
    return number


def run(options: argparse.Namespace) -> int:
    name, *texts = options.words
    if name == "commands":
        list_commands()
        return SUCCESS
    camera = Camera(options.url, options.session, timeout=options.timeout)
    if name == "watch":
        watch(camera, options.interval, sys.stdout)
        return SUCCESS
    command = find_command(name)
    params = command.wire_parameters(read_parameters(command, texts))
    data = camera.send(command.name, params)
    print(json.dumps(data, indent=2, ensure_ascii=False) if data else "Success")
    return SUCCESS


def list_commands() -> None:
    for command in COMMANDS:
        print(command.name)
        for name, kind in command.parameters.items():
            print(f"    {name}: {kind}")


def find_command(name: str) -> Command:
    if name not in COMMANDS_BY_NAME:
        raise InvalidValue(
            f"there is no command {name}{similar(name, list(COMMANDS_BY_NAME))}; "
            '"camera-remote commands" lists them'
        )
    return COMMANDS_BY_NAME[name]


def read_parameters(command: Command, texts: List[str]) -> Dict[str, Any]:
    """The parameters from NAME=VALUE texts; exactly those of the command."""
    names = list(command.parameters)
    params: Dict[str, Any] = {}
    for text in texts:
        name, sign, value = text.partition("=")
        if not sign:
            raise InvalidValue(f"{text!r} is not a parameter; write NAME=VALUE")
        if name not in names:
            known = f"its parameters are {', '.join(names)}" if names else "it has none"
            raise InvalidValue(f"{command.name} has no parameter {name}; {known}")
        if name in params:
            raise InvalidValue(f"{name} is given twice")
        params[name] = command.parameters[name].parse(value)
    missing = [name for name in names if name not in params]
    if missing:
        wanted = " ".join(f"{name}=..." for name in missing)
        raise InvalidValue(f"{command.name} also needs {wanted}")
    return params


def similar(name: str, names: List[str]) -> str:
    by_lower_case = {other.lower(): other for other in names}
    found = difflib.get_close_matches(name.lower(), by_lower_case, 1)
    return f" (did you mean {by_lower_case[found[0]]}?)" if found else ""


def advice(error: CameraError) -> str:
    """What can be done about it."""
    if isinstance(error, SessionError):
        return "; give the session id of a login with --session"
    if isinstance(error, InvalidReply):
        return f":\n{error.reply}"
    if isinstance(error, CameraUnreachable):
        if error.reason == "timeout":
            return "; try again, or give it more time with --timeout"
        if error.reason == "http" and error.status == 500:
            return "; the camera's own parts do not answer"
        return "; check the address (--url) and the camera"
    return ""


def exit_status(error: CameraError) -> int:
    if isinstance(error, SessionError):
        return NO_SESSION
    if isinstance(error, InvalidReply):
        return INVALID_REPLY
    return UNREACHABLE if isinstance(error, CameraUnreachable) else REFUSED


def fail(message: str, status: int) -> int:
    print(f"camera-remote: {message}", file=sys.stderr)
    return status
