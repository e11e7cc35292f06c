"""The live status line of `camera-remote watch`."""

from __future__ import annotations

import os
import shutil
import time
from typing import Optional, TextIO

from camera_remote.client import Camera
from camera_remote.data import CardSlot, GetCamStatusData
from camera_remote.errors import CameraError, CameraUnreachable, DisableError, InvalidReply

RED = "\x1b[1;31m"
YELLOW = "\x1b[33m"
PLAIN = "\x1b[0m"
CLEAR_LINE = "\r\x1b[K"


def watch(camera: Camera, interval: float, out: TextIO) -> None:
    """Shows the camera's state until it is interrupted. On a terminal it updates one line; elsewhere
    it writes a new line for each change, except of the time code. Raises errors that do not pass by
    themselves."""
    screen = Screen(out)
    last_answer = time.monotonic()

    def show_error(error: CameraError) -> None:
        if isinstance(error, CameraUnreachable):
            silence = time.monotonic() - last_answer
            screen.show(f"no answer for {silence:.0f} s: {error}; retrying", "lost", YELLOW)
        elif isinstance(error, (InvalidReply, DisableError)):
            screen.show(f"no status: {error}", "no status", YELLOW)
        else:
            raise error

    try:
        polls = camera.poll(camera.get_cam_status, interval=interval, on_error=show_error)
        for status in polls:
            last_answer = time.monotonic()
            recording = status["Status"] == "Rec"
            screen.show(status_line(status), status_line(status, ""), RED if recording else None)
    finally:
        screen.close()


class Screen:
    """A line that changes: in place on a terminal, a new one elsewhere."""

    def __init__(self, out: TextIO) -> None:
        self._out = out
        self._is_terminal = out.isatty() and os.environ.get("TERM") != "dumb"
        self._has_color = self._is_terminal and not os.environ.get("NO_COLOR")
        self._shown: Optional[str] = None

    def show(self, line: str, content: str, color: Optional[str] = None) -> None:
        """Without a terminal, the line is written only if `content` has changed."""
        if self._is_terminal:
            line = line[: shutil.get_terminal_size().columns - 1]
            if color is not None and self._has_color:
                line = color + line + PLAIN
            self._out.write(CLEAR_LINE + line)
        elif content != self._shown:
            self._out.write(line + "\n")
        self._shown = content
        self._out.flush()

    def close(self) -> None:
        if self._is_terminal and self._shown is not None:
            self._out.write("\n")
            self._out.flush()


def status_line(status: GetCamStatusData, time_code: Optional[str] = None) -> str:
    """The state in one line, the most important facts first."""
    battery = status["Battery"]
    parts = [
        status["Status"].upper() if status["Status"] == "Rec" else status["Status"],
        status["TC"] if time_code is None else time_code,
        slot_text("A", status["SlotA"]),
        slot_text("B", status["SlotB"]),
        f"Battery {battery['Value']} ({battery['Info'].lower()})",
        status["Iris"]["Letter"],
        status["Gain"]["Letter"],
        status["Shutter"]["Letter"],
        status["Whb"]["Letter"],
        status["Focus"]["Letter"],
        f"Network {status['NetAdaptorStatus'].lower()}",
        upload_text(status),
    ]
    return "  ".join(part for part in parts if part)


def slot_text(name: str, slot: CardSlot) -> str:
    if slot["Status"] == "NoCard":
        return f"{name}: no card"
    selected = "*" if slot["Status"] in ("Select", "SelectRec") else ""
    remain = "?" if slot["Remain"] == "-1" else slot["Remain"]
    locked = " locked" if slot["Protect"] == "Lock" else ""
    return f"{name}{selected}: {remain} left, {slot['ClipNum']} clips{locked}"


def upload_text(status: GetCamStatusData) -> str:
    upload = status["Ftp"]
    if upload["Phase1"] == "OFF":
        return ""
    question = " (waits for an answer)" if upload["Phase1"] in ("TRUST", "PROMPT") else ""
    return f"{upload['Server']} {upload['Phase1']} {upload['Percent']} %{question}"
