"""The modules of the page that need no browser, in Node."""

import pathlib
import re
import subprocess

import pytest

HERE = pathlib.Path(__file__).parent
WEB = HERE.parents[1] / "web"
LARGEST_BYTES = 150_000


@pytest.mark.parametrize("program", sorted((HERE / "unit").glob("*.test.js")), ids=lambda path: path.stem)
def test_module(program):
    run = subprocess.run(["node", "--test", "--test-reporter=tap", program],
                         capture_output=True, text=True, timeout=60)
    assert run.returncode == 0, run.stdout + run.stderr
    assert int(re.search(r"^# pass (\d+)", run.stdout, re.M)[1]) > 0


def test_the_client_can_be_installed_as_a_package(tmp_path):
    def npm(*arguments):
        subprocess.run(["npm", *arguments, "--offline", "--silent", f"--cache={tmp_path}/cache"],
                       check=True, cwd=tmp_path, timeout=120)

    npm("pack", WEB)
    package, = tmp_path.glob("camera-remote-*.tgz")
    npm("install", package)
    installed = tmp_path / "node_modules/camera-remote"
    assert sorted(path.name for path in installed.iterdir()) == [
        "camera_client.js", "camera_commands.js", "package.json"]
    (tmp_path / "program.mjs").write_text(
        'import { Camera } from "camera-remote"; console.log(typeof new Camera().getCamStatus);')
    run = subprocess.run(["node", tmp_path / "program.mjs"], capture_output=True, text=True, timeout=60)
    assert (run.stdout, run.stderr) == ("function\n", "")


def test_the_page_is_small():
    assert sum(path.stat().st_size for path in WEB.rglob("*") if path.is_file()) < LARGEST_BYTES


def test_texts_only_become_text():
    for path in WEB.glob("*.js"):
        text = path.read_text()
        for forbidden in ("innerHTML", "outerHTML", "insertAdjacentHTML", "document.write", "eval("):
            assert forbidden not in text, f"{path.name} uses {forbidden}"


def test_the_markup_has_no_inline_script_or_style():
    html = (WEB / "index.html").read_text()
    assert not re.search(r"<style|\sstyle=|\son\w+=|javascript:", html)
    assert re.findall(r"<script[^>]*>", html) == ['<script type="module" src="app.js">']
    assert 'http-equiv="Content-Security-Policy" content="default-src \'self\';' in html
