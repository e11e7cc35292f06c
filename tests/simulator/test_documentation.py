"""docs/simulator.md: its commands work, and its table lists every member of the state."""

import re
import shlex
import subprocess

from world import REPOSITORY

PAGE = (REPOSITORY / "docs" / "simulator.md").read_text()
COMMANDS = re.findall(r"^    (curl .*)$", PAGE, re.MULTILINE)


def members(value, path=""):
    if isinstance(value, dict) and value and not path.startswith("settings"):
        for name, member in value.items():
            yield from members(member, f"{path}.{name}" if path else name)
    else:
        yield path


def test_there_are_commands():
    assert len(COMMANDS) >= 8


def test_the_commands_work(world):
    for command in COMMANDS:
        command = command.replace("http://127.0.0.1:8080", world.url)
        shown = subprocess.run([*shlex.split(command), "--fail", "--silent", "--show-error"],
                               capture_output=True, text=True)
        assert shown.returncode == 0, (command, shown.stderr)
    entry = world.simulator("GET", "journal")[1]["entries"][-1]
    assert (entry["command"], entry["result"]) == ("MonitorStart", "DisableError")


def test_every_member_of_the_state_is_documented(world):
    documented = set(re.findall(r"`([a-z_]+(?:\.[A-Za-z0-9_]+)*)`", PAGE))
    for path in members(world.simulator("GET", "state")[1]):
        parent = re.match(r"user\.\w+|upload\.servers\.\w+", path)
        if parent is None:
            assert path in documented, path
        else:
            assert f"`{path.rsplit('.', 1)[1]}`" in PAGE, path
