"""The program `camera-remote`."""

import json
import os
import pty
import re
import signal
import subprocess
import time
from typing import NamedTuple

import pytest
from conftest import REPOSITORY, heed_interrupts

from camera_remote import command_line

PROGRAM = ["/usr/bin/python3", "-m", "camera_remote"]
SUCCESS = '{"Response":{"Requested":"GetNTPStatus","Result":"Success","Data":{"Status":"é"}}}'


def environment(**variables):
    return {"PATH": os.environ["PATH"], "PYTHONPATH": str(REPOSITORY / "clients/python/src"),
            "PYTHONDONTWRITEBYTECODE": "1", "PYTHONUTF8": "1", **variables}


class Result(NamedTuple):
    returncode: int
    stdout: str
    stderr: str


@pytest.fixture
def run(monkeypatch, capsys):
    """Runs the program in this process: starting Python takes longer than the tests."""
    def run(*arguments, **variables):
        for name in ("CAMERA_URL", "CAMERA_SESSION"):
            monkeypatch.delenv(name, raising=False)
        for name, value in variables.items():
            monkeypatch.setenv(name, value)
        try:
            status = command_line.main(arguments)
        except SystemExit as end:
            status = end.code
        return Result(status, *capsys.readouterr())

    return run


def test_prints_data_as_json(world, run):
    result = run("GetSystemInfo", "--url", world.url, "--session", world.session)
    assert (result.returncode, result.stderr) == (0, "")
    assert json.loads(result.stdout) == {"Model": "RV130", "Destination": "US",
                                         "ApiVersion": "1.08.0", "Serial": "13250042"}


def test_sets_a_value(world, run):
    camera = {"CAMERA_URL": world.url, "CAMERA_SESSION": world.session}
    result = run("SetPresetZoomPosition", "Position=-7", "ID=B", **camera)
    assert (result.returncode, result.stdout, result.stderr) == (0, "Success\n", "")
    assert json.loads(run("GetPresetZoomPosition", **camera).stdout)["B"] == -7


def test_options_may_stand_anywhere(server, run):
    server.answer(SUCCESS)
    result = run("--timeout", "5", "SetWebFtp1UploadASelect", "--session", "me", "Clips=1,5,7-9",
                 "--url", server.url)
    assert result.returncode == 0
    assert server.bodies == ['{"Request":{"Command":"SetWebFtp1UploadASelect","SessionID":"me",'
                             '"Params":{"block0":465}}}']


def test_an_option_beats_the_environment(server, run):
    server.answer(SUCCESS)
    result = run("GetNTPStatus", "--url", server.url, "--session", "option",
                 CAMERA_URL="http://127.0.0.1:1", CAMERA_SESSION="environment")
    assert result.stdout == '{\n  "Status": "é"\n}\n'
    assert server.bodies == ['{"Request":{"Command":"GetNTPStatus","SessionID":"option"}}']


MISUSES = [
    ([], 'a command is missing; "camera-remote commands" lists them'),
    (["setZoomCtrl"], "there is no command setZoomCtrl (did you mean SetZoomCtrl?)"),
    (["xyzzy"], 'there is no command xyzzy; "camera-remote commands" lists them'),
    (["SetZoomCtrl"], "SetZoomCtrl also needs Position=..."),
    (["SetWebKeyEvent"], "SetWebKeyEvent also needs Kind=... Key=..."),
    (["SetZoomCtrl", "500"], "'500' is not a parameter; write NAME=VALUE"),
    (["SetZoomCtrl", "position=500"], "no parameter position; its parameters are Position"),
    (["GetCamStatus", "A=1"], "GetCamStatus has no parameter A; it has none"),
    (["SetZoomCtrl", "Position=1", "Position=2"], "Position is given twice"),
    (["SetZoomCtrl", "Position=x"], "Position must be a whole number from 0 to 65535, not 'x'"),
    (["SetCamCtrl", "CamCtrl=Go"], 'CamCtrl must be one of "Rec", "Stop", not \'Go\''),
    (["SetNTPServer", "Address=a b"], "Address cannot hold ' ' (character 2)"),
    (["SetWebFtp1UploadASelect", "Clips=1,x"], "'x' is neither a clip nor a range"),
    (["SetWebFtp1UploadASelect", "Clips=1-"], "'1-' is neither a clip nor a range"),
    (["SetWebFtp1UploadASelect", "Clips=4001"], "a clip is a whole number from 1 to 4000"),
    (["GetCamStatus", "--timeout", "0"], "'0' is not a number of seconds above 0"),
    (["watch", "--interval", "soon"], "'soon' is not a number of seconds above 0"),
    (["GetCamStatus", "--url", "camera"], "'camera' is not an address such as"),
]


@pytest.mark.parametrize("arguments, message", MISUSES, ids=[" ".join(row[0]) for row in MISUSES])
def test_wrong_use_sends_nothing_and_says_what_is_wrong(server, arguments, message, run):
    result = run(*arguments, CAMERA_URL=server.url)
    assert result.returncode == 2
    assert message in result.stderr
    assert result.stdout == ""
    assert server.bodies == []


FAILURES = [
    ("requested", ('{"Response":{"Result":"RequestedError"}}', 200), 1, "refuses the request"),
    ("disabled", ('{"Response":{"Result":"DisableError"}}', 200), 1, "present state"),
    ("session", ('{"Response":{"Result":"SessionError"}}', 200), 3, "with --session"),
    ("down", ("", 500), 4, "HTTP status 500; the camera's own parts do not answer"),
    ("elsewhere", ("", 404), 4, "HTTP status 404; check the address (--url)"),
    ("broken", ('{"Response":{"Result":"Success","Data":{"A":"""}}}', 200), 5, '{"A":"""}'),
]


@pytest.mark.parametrize("answer, status, message", [row[1:] for row in FAILURES],
                         ids=[row[0] for row in FAILURES])
def test_a_failure_has_its_exit_status_and_advice(server, answer, status, message, run):
    server.answer(*answer)
    result = run("GetNTPStatus", CAMERA_URL=server.url)
    assert result.returncode == status
    assert result.stderr.startswith("camera-remote: GetNTPStatus: ")
    assert message in result.stderr
    assert result.stdout == ""


def test_a_silent_camera(server, run):
    server.stay_silent()
    result = run("GetNTPStatus", "--timeout", "0.2", CAMERA_URL=server.url)
    assert result.returncode == 4
    assert "no reply within 0.2 s; try again, or give it more time with --timeout" in result.stderr


def test_lists_the_commands(run):
    result = run("commands")
    lines = result.stdout.splitlines()
    assert len([line for line in lines if not line.startswith(" ")]) == 68
    at = lines.index("SetZoomCtrl")
    assert lines[at + 1] == "    Position: a whole number from 0 to 65535"


def test_a_reader_that_goes_away_is_no_error():
    command = f"{' '.join(PROGRAM)} commands | head -n 1"
    result = subprocess.run(["bash", "-o", "pipefail", "-c", command], env=environment(),
                            capture_output=True, text=True, timeout=60)
    assert (result.returncode, result.stdout, result.stderr) == (0, "GetSystemInfo\n", "")


# The status line.

class Watch:
    """`camera-remote watch`, on a terminal or a pipe."""

    def __init__(self, world_or_server, terminal, *arguments, **variables):
        reader, writer = pty.openpty() if terminal else os.pipe()
        self._reader = reader
        self.text = ""
        session = getattr(world_or_server, "session", "id")
        variables = {"CAMERA_URL": world_or_server.url, "CAMERA_SESSION": session,
                     "TERM": "xterm", "COLUMNS": "200", **variables}
        self._process = subprocess.Popen([*PROGRAM, "watch", "--interval", "0.05", *arguments],
                                         env=environment(**variables), stdout=writer,
                                         stderr=subprocess.PIPE, text=True,
                                         preexec_fn=heed_interrupts)
        os.close(writer)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()
        self._process.stderr.close()
        os.close(self._reader)

    def wait_for(self, pattern):
        deadline = time.monotonic() + 30
        while not re.search(pattern, self.text):
            assert time.monotonic() < deadline, self.text
            self.text += os.read(self._reader, 10000).decode()

    def interrupt(self):
        self._process.send_signal(signal.SIGINT)
        return self._process.wait(30)

    def wait(self):
        _, errors = self._process.communicate(timeout=30)
        return self._process.returncode, errors


def test_watch_prints_a_line_for_each_change(world):
    world.command("SetCamCtrl", {"CamCtrl": "Stop"})
    with Watch(world, terminal=False) as watch:
        watch.wait_for(r"^Stop  \d\d:\d\d:\d\d[:.]\d\d  A\*: 95 left, 12 clips  B: 120 left, 33 clips"
                       r"  Battery 137 \(time\)  F2\.8  .*  Network connected")
        world.command("SetCamCtrl", {"CamCtrl": "Rec"})
        watch.wait_for(r"\nREC  ")
        world.command("SetCamCtrl", {"CamCtrl": "Stop"})
        watch.wait_for(r"\nStop  ")
        assert "\x1b" not in watch.text
        assert watch.interrupt() == 130


@pytest.mark.parametrize("variables, colored", [({}, True), ({"NO_COLOR": "1"}, False),
                                                ({"NO_COLOR": ""}, True)])
def test_watch_rewrites_one_line_on_a_terminal(world, variables, colored):
    world.command("SetCamCtrl", {"CamCtrl": "Rec"})
    with Watch(world, terminal=True, **variables) as watch:
        watch.wait_for("(?s)(\r\x1b\\[K.*REC  .*){3}")
        assert ("\x1b[1;31mREC" in watch.text) == colored
        assert "\n" not in watch.text
        assert watch.interrupt() == 130
    world.command("SetCamCtrl", {"CamCtrl": "Stop"})


def test_watch_cuts_the_line_at_the_edge_of_the_terminal(world):
    with Watch(world, terminal=True, COLUMNS="40") as watch:
        watch.wait_for("(\r\x1b\\[K[^\r]*){3}")
        lines = watch.text.split("\r\x1b[K")[1:-1]
        assert [len(line) for line in lines] == [39] * len(lines)


def test_watch_goes_on_while_the_camera_is_away(server):
    server.answer("", 500)
    server.answer('{"Response":{"Result":"Success","Data":{"A":"""}}}')
    server.answer('{"Response":{"Result":"SessionError"}}')
    with Watch(server, terminal=False) as watch:
        watch.wait_for(r"no answer for \d+ s: GetCamStatus: .* HTTP status 500; retrying\n")
        watch.wait_for(r"no status: GetCamStatus: a text in the camera's reply .*\n")
        status, errors = watch.wait()
        assert status == 3
        assert "with --session" in errors
