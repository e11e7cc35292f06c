"""The snippets of the documents do what they say."""

import os
import re
import signal
import subprocess
import textwrap
import time

import pytest
from conftest import REPOSITORY, heed_interrupts

PACKAGE = REPOSITORY / "clients/python"


def section(path, title):
    return re.search(rf"^#+ {title}\n(.*?)(?=^#|\Z)", path.read_text(), re.M | re.S)[1]


def snippets(text):
    """The indented blocks, each with its lines moved to the margin."""
    return [textwrap.dedent(block).strip() + "\n"
            for block in re.findall(r"(?:^(?: {4}.*)?\n)+", text, re.M) if block.strip()]


README_INSTALLATION, README_PYTHON, README_JAVASCRIPT, README_SHELL = snippets(
    section(REPOSITORY / "README.md", "Clients"))
PACKAGE_PYTHON, PACKAGE_SHELL = snippets(section(PACKAGE / "README.md", "camera-remote"))


@pytest.fixture
def program(tmp_path):
    """What the package installs as `camera-remote`."""
    path = tmp_path / "camera-remote"
    path.write_text('#!/bin/sh\nexec /usr/bin/python3 -m camera_remote "$@"\n')
    path.chmod(0o755)
    return path


@pytest.fixture
def environment(world, program):
    # The snippets name the session of `./run`, and some rely on its address.
    return {"PATH": f"{program.parent}:{os.environ['PATH']}", "PYTHONPATH": str(PACKAGE / "src"),
            "PYTHONDONTWRITEBYTECODE": "1", "CAMERA_URL": world.url}


def adapted(text, world):
    assert world.session == "rv130-session"
    return text.replace("http://127.0.0.1:8080", world.url)


def zoom_is_elsewhere(world):
    world.command("SetZoomCtrl", {"Position": 0})


def zoom_arrives(world):
    """Whether the zoom reaches position 500 within 30 seconds."""
    deadline = time.monotonic() + 30
    while world.command("GetCamStatus")["Response"]["Data"]["ZoomPosition"] != "500":
        if time.monotonic() > deadline:
            return False
    return True


@pytest.mark.parametrize("snippet", [README_PYTHON, PACKAGE_PYTHON], ids=["readme", "package"])
def test_python(world, environment, snippet):
    zoom_is_elsewhere(world)
    result = subprocess.run(["/usr/bin/python3", "-c", adapted(snippet, world)], env=environment,
                            capture_output=True, text=True, timeout=60)
    assert (result.returncode, result.stderr) == (0, "")
    assert re.search(r"^\d\d:\d\d:\d\d[:.]\d\d", result.stdout, re.M)
    assert zoom_arrives(world)


def test_javascript(world, environment, tmp_path):
    zoom_is_elsewhere(world)
    (tmp_path / "web").symlink_to(REPOSITORY / "web")
    program = tmp_path / "program.mjs"
    program.write_text(adapted(README_JAVASCRIPT, world))
    result = subprocess.run(["node", program], env=environment, capture_output=True, text=True,
                            timeout=60)
    assert (result.returncode, result.stderr) == (0, "")
    assert re.search(r"^\d\d:\d\d:\d\d[:.]\d\d Stop$", result.stdout, re.M)
    assert zoom_arrives(world)


@pytest.mark.parametrize("snippet", [README_SHELL, PACKAGE_SHELL], ids=["readme", "package"])
def test_command_line(world, environment, snippet):
    """Its last line, `camera-remote watch`, runs until it is interrupted."""
    zoom_is_elsewhere(world)
    *lines, last = snippet.strip().splitlines()
    assert last == "camera-remote watch"
    script = adapted("\n".join([*lines, f"exec {last}"]), world)
    shell = subprocess.Popen(["bash", "-ec", script], env=environment, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                             preexec_fn=heed_interrupts)
    assert shell.stdout.readline() == "Success\n"
    assert any(line.startswith("Stop  ") for line in shell.stdout)
    assert zoom_arrives(world)
    shell.send_signal(signal.SIGINT)
    _, errors = shell.communicate(timeout=30)
    assert (shell.returncode, errors) == (130, "")
