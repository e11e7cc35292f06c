"""The Python package: complete, typed, installable without a network."""

import ast
import json
import pathlib
import re
import shutil
import subprocess

import pytest
from conftest import REPOSITORY
from test_snippets import README_INSTALLATION

PACKAGE = REPOSITORY / "clients/python"
SOURCES = sorted((PACKAGE / "src").rglob("*.py"))


def test_what_follows_from_the_description_is_up_to_date():
    subprocess.run([REPOSITORY / "clients/generate", "--check"], check=True)


WRONG_USES = [
    ('camera.set_zoom_ctrl(position="500")', "arg-type"),
    ('camera.set_cam_ctrl(cam_ctrl="Go")', "arg-type"),
    ("camera.set_zoom_ctrl()", "call-arg"),
    ('camera.get_cam_status()["Iris"]["Lettre"]', "typeddict-item"),
    ("zoom: str = camera.set_zoom_ctrl(position=1)", "func-returns-value"),
]


def test_types_are_complete_and_catch_wrong_use(tmp_path):
    program = tmp_path / "program.py"
    program.write_text("\n".join([
        "from camera_remote import Camera",
        'camera = Camera("http://camera", "id")',
        'camera.set_cam_ctrl(cam_ctrl="Stop")',
        'address: str = camera.get_streaming_server_settings(id=1)["Udp"]["DstAddress"]',
        *(use for use, _ in WRONG_USES),
    ]))
    result = subprocess.run(["/usr/bin/mypy", "--config-file", PACKAGE / "pyproject.toml",
                             "--no-error-summary", "--cache-dir", tmp_path / "cache",
                             PACKAGE / "src/camera_remote", program],
                            env={"MYPYPATH": str(PACKAGE / "src")}, capture_output=True, text=True)
    found = re.findall(r"program\.py:(\d+): error: .* \[([a-z-]+)\]$", result.stdout, re.M)
    assert found == [(str(line), error) for line, (_, error) in enumerate(WRONG_USES, 5)]
    assert result.stdout.count("error:") == len(WRONG_USES), result.stdout


@pytest.mark.parametrize("source", SOURCES, ids=lambda path: path.name)
def test_the_oldest_python_reads_it(source):
    ast.parse(source.read_text(), feature_version=(3, 9))


def test_installs_as_the_readme_says(tmp_path):
    # A copy, because the build writes into the folder.
    shutil.copytree(PACKAGE, tmp_path / "clients/python")
    # No network: what builds the package is Debian's. (For pip, 0 turns the isolation off.)
    environment = {"PATH": "/usr/bin:/bin", "PIP_NO_INDEX": "1", "PIP_NO_BUILD_ISOLATION": "0"}
    installation = README_INSTALLATION.replace("-m venv", "-m venv --system-site-packages")
    assert installation != README_INSTALLATION
    subprocess.run(["unshare", "--user", "--map-root-user", "--net", "bash", "-ec", installation],
                   cwd=tmp_path, env=environment, check=True)
    programs = tmp_path / "build/python/bin"
    result = subprocess.run([programs / "camera-remote", "commands"], check=True, capture_output=True,
                            text=True)
    assert "SetZoomCtrl\n    Position: a whole number from 0 to 65535\n" in result.stdout
    typed = subprocess.run([programs / "python", "-c", "import camera_remote; print(camera_remote.__file__)"],
                           check=True, capture_output=True, text=True, cwd=tmp_path)
    installed = pathlib.Path(typed.stdout.strip())
    assert installed.is_relative_to(tmp_path / "build/python")
    assert installed.with_name("py.typed").exists()


def test_the_clients_have_the_version_of_the_api():
    api = json.loads((REPOSITORY / "api/openapi.json").read_text())["info"]["version"]
    expected = ".".join(str(int(number)) for number in api.split("."))
    assert f'version = "{expected}"' in (PACKAGE / "pyproject.toml").read_text()
    assert json.loads((REPOSITORY / "web/package.json").read_text())["version"] == expected
