"""Worlds start, stay apart, and leave nothing behind."""

import socket
import subprocess
import urllib.parse

import pytest
from world import World


def test_a_world_serves_the_handler():
    with World() as world:
        reply = world.command("GetSystemInfo")
        assert reply["Response"]["Data"]["Model"] == "RV130"
        assert world.command("MonitorStart", session=None) == {"Response": {"Result": "FormatError"}}


def test_worlds_stand_side_by_side_with_states_of_their_own():
    with World() as one, World("--session", "another-one") as other:
        assert one.url != other.url
        assert other.session == "another-one"
        one.command("SetStudioTallyWithoutSession", {"Indication": "Program"})
        assert one.command("HeartbeatConfirmation")["Response"]["Data"]["StudioTally"] == "Program"
        assert other.command("HeartbeatConfirmation")["Response"]["Data"]["StudioTally"] == "Off"


def test_a_world_leaves_no_process_and_no_listener():
    with World("--session", "find-me-by-this") as world:
        address = urllib.parse.urlsplit(world.url)
        assert processes_with("find-me-by-this") != []
    assert processes_with("find-me-by-this") == []
    with pytest.raises(ConnectionRefusedError):
        socket.create_connection((address.hostname, address.port)).close()


def test_a_world_that_cannot_start_says_why():
    with pytest.raises(RuntimeError, match="--session needs a session id"):
        with World("--session", "two words"):
            pass


def processes_with(text):
    listing = subprocess.run(["ps", "-eo", "args"], check=True, capture_output=True, text=True)
    return [line for line in listing.stdout.splitlines() if text in line]
