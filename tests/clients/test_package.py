"""The Python package: complete, typed, installable without a network."""

import ast
import re
import subprocess
import venv

import pytest
from conftest import REPOSITORY

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


def test_installs_from_the_source_tree_without_a_network(tmp_path):
    # A copy, for the build leaves files behind.
    source = tmp_path / "source"
    subprocess.run(["cp", "-r", PACKAGE, source], check=True)
    environment = tmp_path / "environment"
    venv.create(environment, system_site_packages=True, with_pip=False)
    python = environment / "bin/python"
    subprocess.run(["unshare", "--user", "--map-root-user", "--net", python, "-m", "pip", "install",
                    "--quiet", "--no-index", "--no-build-isolation", "--no-deps", source],
                   check=True)
    program = environment / "bin/camera-remote"
    result = subprocess.run([program, "commands"], check=True, capture_output=True, text=True)
    assert "SetZoomCtrl\n    Position: a whole number from 0 to 65535\n" in result.stdout
    typed = subprocess.run([python, "-c", "import camera_remote; print(camera_remote.__file__)"],
                           check=True, capture_output=True, text=True, cwd=tmp_path)
    installed = typed.stdout.strip()
    assert installed.startswith(str(environment))
    assert (REPOSITORY / installed).with_name("py.typed").exists()
