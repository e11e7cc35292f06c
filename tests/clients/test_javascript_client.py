"""Runs the tests of the JavaScript client."""

import os
import pathlib
import re
import subprocess

import pytest

HERE = pathlib.Path(__file__).parent


@pytest.mark.parametrize("program", ["camera_client_test.mjs", "camera_poll_test.mjs"])
def test_javascript_client(world, program):
    environment = {**os.environ, "CAMERA_URL": world.url, "CAMERA_SESSION": world.session}
    run = subprocess.run(["node", "--test", "--test-reporter=tap", HERE / program],
                         env=environment, capture_output=True, text=True, timeout=120)
    assert run.returncode == 0, run.stdout + run.stderr
    assert int(re.search(r"^# pass (\d+)", run.stdout, re.M)[1]) > 0
