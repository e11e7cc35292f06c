"""Client of a camera's remote-control API.

    from camera_remote import Camera

    camera = Camera("http://127.0.0.1:8080", "rv130-session")
    camera.set_zoom_ctrl(position=500)
    print(camera.get_cam_status()["TC"])
"""

from camera_remote.client import Camera, Exchange
from camera_remote.commands import COMMANDS
from camera_remote.errors import (
    CameraError,
    CameraUnreachable,
    CommandError,
    DisableError,
    FormatError,
    InvalidReply,
    InvalidValue,
    Refusal,
    RequestedError,
    SessionError,
)

__all__ = [
    "COMMANDS",
    "Camera",
    "CameraError",
    "CameraUnreachable",
    "CommandError",
    "DisableError",
    "Exchange",
    "FormatError",
    "InvalidReply",
    "InvalidValue",
    "Refusal",
    "RequestedError",
    "SessionError",
]
