"""The tap between the web server and the handler."""

import signal
import subprocess

import pytest
from world import REPOSITORY

TAP = REPOSITORY / "build/release/camera_tap"


@pytest.mark.parametrize("ending", [signal.SIGTERM, signal.SIGKILL])
def test_a_web_server_that_ends_the_tap_ends_the_handler(running_world, ending):
    handler = ["/bin/sh", "-c", "echo started >&2; exec sleep 60"]
    with subprocess.Popen([TAP, *handler], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.PIPE) as tap:
        assert tap.stderr.readline() == b"started\n"
        tap.send_signal(ending)
        # The end of the file: neither of the two processes holds it open any more.
        assert tap.communicate(timeout=20) == (None, b"")
    assert tap.returncode == -ending
