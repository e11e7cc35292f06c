"""The command ./run and its options."""

import fcntl
import json
import os
import pty
import re
import socket
import struct
import subprocess
import termios

import pytest
from world import REPOSITORY, World

RUN = str(REPOSITORY / "run")


def run(*options, timeout=60):
    return subprocess.run([RUN, *options], capture_output=True, text=True, timeout=timeout)


@pytest.mark.parametrize("option", ["-h", "--help"])
def test_help(option):
    outcome = run(option)
    assert outcome.returncode == 0
    assert outcome.stdout.startswith("Usage: ./run [OPTION...]")


def test_doctor_finds_nothing_missing_where_tests_run():
    outcome = run("--doctor")
    assert (outcome.returncode, outcome.stdout) == (0, "nothing is missing\n")


@pytest.mark.parametrize("options, error", [
    (["--port", "65536"], "--port needs a port number"),
    (["--port"], "--port needs a port number"),
    (["--listen", "camera"], "--listen needs an address"),
    (["--cameras", "0"], "--cameras needs a number from 1 to 16"),
    (["--cameras", "many"], "--cameras needs a number from 1 to 16"),
    (["--port", "65535", "--cameras", "2"], "--port: there are not 2 ports from 65535 on"),
    (["--session-lifetime", "soon"], "--session-lifetime needs a number of seconds"),
    (["--journal", ""], "--journal needs a file"),
    (["--nothing"], "unknown option --nothing"),
])
def test_options_that_make_no_sense(options, error):
    outcome = run(*options)
    assert outcome.returncode == 2
    assert outcome.stderr == f"run: {error}; ./run --help lists the options\n"


def test_an_address_of_another_machine():
    outcome = run("--no-build", "--listen", "203.0.113.9")
    assert outcome.returncode == 1
    assert outcome.stderr.startswith(
        "run: --listen: this machine does not have the address 203.0.113.9; it has 127.0.0.1 ")


def test_a_port_in_use_names_the_next_free_one():
    with socket.create_server(("127.0.0.1", 0)) as taken:
        port = taken.getsockname()[1]
        outcome = run("--no-build", "--port", str(port))
    assert outcome.returncode == 1
    match = re.fullmatch(rf"run: port {port} is in use; the next free one is (\d+): "
                         r"./run --port \1\n", outcome.stderr)
    assert match and int(match[1]) > port


def test_a_file_that_the_private_world_would_hide_is_refused():
    outcome = run("--no-build", "--journal", "/var/tmp/journal")
    assert outcome.returncode == 1
    assert outcome.stderr == ("run: --journal: the simulated camera has /var/tmp for itself; "
                              "use another folder\n")


@pytest.mark.parametrize("text, error", [
    ('{"iris": 5', ": syntax error while parsing object - unexpected end of input"),
    (None, ": cannot be read"),
])
def test_a_scene_that_cannot_be_read_is_named(tmp_path, text, error):
    file = tmp_path / "my.json"
    if text is None:
        file.mkdir()
    else:
        file.write_text(text)
    with pytest.raises(RuntimeError, match=f"{re.escape(str(file))}.*{re.escape(error)}"):
        with World("--scene", str(file)):
            pass


@pytest.mark.parametrize("scene, error", [
    ({"iris": {"stopp": "F4.0"}}, "iris.stopp: no such member"),
    ({"aperture": 4}, "aperture: no such member"),
    ({"battery": {"level": 256}}, "battery.level: must be a whole number from 0 to 255"),
    ([], "the state must be an object"),
])
def test_a_scene_with_a_mistake_is_named(tmp_path, scene, error):
    file = tmp_path / "my.json"
    file.write_text(json.dumps(scene))
    with pytest.raises(RuntimeError, match=re.escape(error)):
        with World("--scene", str(file)):
            pass


def test_a_scene_from_a_file_is_what_a_reset_returns_to(tmp_path):
    file = tmp_path / "my.json"
    file.write_text('{"iris":{"stop":"F8.0"},"serial":"4711"}')
    with World("--scene", str(file)) as world:
        world.simulator("PATCH", "state", {"iris": {"stop": "F11"}})
        world.simulator("POST", "reset", {"scene": "field"})
        world.simulator("POST", "reset", {})
        assert world.simulator("GET", "state")[1]["iris"]["stop"] == "F8.0"
        assert world.command("GetSystemInfo")["Response"]["Data"]["Serial"] == "4711"


def test_cameras_side_by_side_have_worlds_of_their_own():
    with World("--cameras", "2") as world:
        world.wait_for(lambda: len(world.cameras()) == 2)
        (one, first), (other, second) = world.cameras()  # in the order in which they were ready
        assert {first, second} == {"rv130-session", "rv130-session-2"}
        assert one != other
        serials = {}
        for url, session in world.cameras():
            world.url, world.session = url, session
            serials[session] = world.command("GetSystemInfo")["Response"]["Data"]["Serial"]
            world.command("SetNTPServer", {"Address": f"{session}.example"})
        assert serials == {"rv130-session": "13250042", "rv130-session-2": "13250043"}
        ways = [line.split("  ")[-1].strip() for line in world.output
                if line.startswith("Into its private world")]
        for way, (_, session) in zip(ways, world.cameras()):
            shown = subprocess.run([*way.split(), "cat", "/var/tmp/lighttpd/ntp"], check=True,
                                   capture_output=True, text=True)
            assert shown.stdout == f"address\t{session}.example\ntc_sync\t1\n"


def test_listening_elsewhere_warns():
    with World("--listen", "127.0.0.2") as world:
        assert world.url.startswith("http://127.0.0.2:")
        assert world.command("GetSystemInfo")["Response"]["Result"] == "Success"
        assert not any("warning" in line for line in world.output)
    with World("--listen", "0.0.0.0") as world:
        assert ("run: warning: whoever reaches 0.0.0.0 can operate the camera and its control "
                "interface") in world.output


def test_an_ipv6_address():
    with World("--listen", "::1") as world:
        assert world.url.startswith("http://[::1]:")
        assert world.command("GetSystemInfo")["Response"]["Result"] == "Success"
        assert world.simulator("GET", "faults") == (200, [])
        assert not any("warning" in line for line in world.output)


def test_listening_everywhere_tells_other_devices_where():
    with World("--listen", "0.0.0.0") as world:
        assert ("run: warning: whoever reaches 0.0.0.0 can operate the camera and its control "
                "interface") in world.output
        assert world.url.startswith("http://127.0.0.1:")
        port = world.url.rsplit(":", 1)[1]
        world.wait_for(lambda: "Ctrl-C stops it." in world.output)
        addresses = subprocess.run(["hostname", "--all-ip-addresses"], capture_output=True, text=True)
        shown = [line.split()[-1] for line in world.output if line.startswith("From other devices")]
        assert shown == [f"http://{address}:{port}/" for address in addresses.stdout.split()
                         if ":" not in address]
        for url in shown:
            world.url = url.rstrip("/")
            assert world.command("GetSystemInfo")["Response"]["Result"] == "Success"


AS_NOBODY = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]


def test_another_user_than_root(running_world):
    """With what was built for the camera of the other tests."""
    if os.geteuid() != 0:
        pytest.skip("these tests run as another user than root anyway")
    for needed, why in [(["test", "-x", RUN], "another user cannot read this folder"),
                        (["unshare", "--user", "--map-root-user", "--mount", "true"],
                         "this machine allows user namespaces to root only")]:
        if subprocess.run([*AS_NOBODY, *needed], capture_output=True).returncode != 0:
            pytest.skip(why)
    with World("--no-build", wrapper=AS_NOBODY) as world:
        assert world.command("SetNTPServer", {"Address": "10.0.0.9"})["Response"]["Result"] == "Success"
        assert world.command("GetNTPStatus")["Response"]["Data"]["Address"] == "10.0.0.9"
        for fault, status in [("absent", 500), ("settings_read_only", 200), ("disk_full", 200)]:
            world.simulator("POST", "faults", {"fault": fault, "count": 1})
            body = f'{{"Request":{{"Command":"GetCamStatus","SessionID":"{world.session}"}}}}'
            assert world.post(body)[0] == status
            assert world.simulator("GET", "journal")[1]["entries"][-1]["faults"] == [fault]


def test_root_without_the_right_to_mount_gets_a_user_namespace():
    drop = ["setpriv", "--bounding-set=-sys_admin", "--inh-caps=-sys_admin"]
    with World(wrapper=drop) as world:
        assert world.command("GetSystemInfo")["Response"]["Result"] == "Success"


def test_requests_are_shown_and_polls_are_counted():
    with World("--log", verbose=True) as world:
        world.wait_for(lambda: "Ctrl-C stops it." in world.output)
        before = len(world.output)
        for _ in range(5):
            world.command("HeartbeatConfirmation", session=None)
        world.command("SetWebKeyEvent", {"Kind": "Iris", "Key": "Close3"})
        world.command("SetWebKeyEvent", {"Kind": "Whb", "Key": "Adjust"})
        world.command("GetSystemInfo", session="other-session")
        world.wait_for(lambda: any("other-session" in line for line in world.output[before:]))
        lines = [re.sub(r"^[\d:.]{12}|[\d.]+ ms", "_", line) for line in world.output[before:]
                 if "log:" not in line]
    assert lines[0].strip() == "HeartbeatConfirmation x 5"
    assert [line.strip() for line in lines[1:7]] == [
        "_  SetWebKeyEvent  Success  _",
        "iris.stop F2.8 -> F5.6",
        "_  SetWebKeyEvent  DisableError  _",
        "the daemon quonta_cp refused: white adjust: the white balance is neither A nor B",
        "_  GetSystemInfo  SessionError  _",
        '"other-session" is not the session\'s id',
    ]
    logged = [line for line in world.output if "log:" in line]
    assert any("rcv post_data = " in line and "Close3" in line for line in logged)


def test_the_terminal_begins_with_the_camera():
    with World() as world:
        assert world.output[0].startswith("The simulated camera answers at  ")


def test_what_the_web_server_refuses_is_shown():
    with World() as world:
        assert world.post(b"x" * 70000)[0] == 413
        world.wait_for(lambda: any(line.endswith("request-size too long: 70000 -> 413")
                                   for line in world.output))


def test_several_cameras_tell_which_one_was_asked():
    with World("--cameras", "2", verbose=True) as world:
        world.wait_for(lambda: len(world.cameras()) == 2)
        for url, session in world.cameras():
            world.url, world.session = url, session
            world.command("GetCamStatus")
            world.command("GetSystemInfo")
            world.wait_for(lambda: any(f"  {session}  GetSystemInfo  Success  " in line
                                       for line in world.output))
            assert f"              {session}  GetCamStatus x 1  " in world.output


def test_what_comes_from_outside_does_not_control_the_terminal():
    with World("--log", verbose=True) as world:
        world.post(b'{"Request":{"Command":"\x1b[2J\x07\x7f","SessionID":"rv130-session"}}')
        world.wait_for(lambda: any("log: err" in line for line in world.output))
        assert any(r"  \x1b[2J\x07\x7f  CommandError  " in line for line in world.output)
        assert not any(control in line for line in world.output for control in "\x1b\x07\x7f")


class Terminal:
    """`./run` on a terminal of its own; `text` is everything that it has written there."""

    def __init__(self, environment, columns=0):
        self.text = ""
        self.columns = columns
        self.world = World("--no-build", verbose=True)
        self._environment = environment

    def __enter__(self):
        self._terminal, inside = pty.openpty()
        fcntl.ioctl(inside, termios.TIOCSWINSZ, struct.pack("4H", 24, self.columns, 0, 0))
        self._process = subprocess.Popen([RUN, "--no-build", "--port", "0"], stdin=subprocess.DEVNULL,
                                         stdout=inside, stderr=inside, env=self._environment)
        os.close(inside)
        self.read_until("Ctrl-C stops it.")
        self.world.url = re.search(r"at +(http://[^/]+)/", self.text)[1]
        self.world.session = "rv130-session"
        return self

    def __exit__(self, *exception):
        self._process.terminate()
        self._process.wait()
        os.close(self._terminal)

    def read_until(self, text):
        while text not in self.text:
            self.text += os.read(self._terminal, 4096).decode()


def with_color(no_color):
    environment = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
    return {**environment, "NO_COLOR": "1"} if no_color else environment


@pytest.mark.parametrize("no_color", [False, True])
def test_a_terminal_shows_color_unless_told_not_to(running_world, no_color):
    with Terminal(with_color(no_color)) as terminal:
        key = {"Kind": "Iris", "Key": "Close3"}
        terminal.world.command("SetWebKeyEvent", key)
        terminal.read_until("iris.stop F2.8 -> F5.6")
        terminal.world.simulator("PATCH", "state", {"full_auto": True})
        terminal.world.command("SetWebKeyEvent", key)
        terminal.read_until("full auto is on")
        terminal.world.command("GetSystemInfo", session="other")
        terminal.read_until("is not the session's id")
        colors = ["\033[32mSuccess\033[0m", "\033[33mDisableError\033[0m",
                  "\033[31mSessionError\033[0m"]
        if no_color:
            assert "\033[3" not in terminal.text
        else:
            assert all(color in terminal.text for color in colors)


def test_a_terminal_counts_polls_in_place(running_world):
    with Terminal(with_color(True)) as terminal:
        for number in range(1, 4):
            terminal.world.command("GetCamStatus")
            terminal.read_until(f"GetCamStatus x {number}")
        terminal.world.command("GetSystemInfo")
        terminal.read_until("GetSystemInfo  Success")
    lines = terminal.text.split("\r\n")
    (counter,) = [line for line in lines if "GetCamStatus x" in line]
    assert [part.strip() for part in counter.split("\r\033[K")] == [
        "", "GetCamStatus x 1", "GetCamStatus x 2", "GetCamStatus x 3"]


def test_a_narrow_terminal_does_not_wrap_the_counter(running_world):
    with Terminal(with_color(True), columns=40) as terminal:
        terminal.world.command("GetCamStatus")
        terminal.read_until("GetCamStatus x 1")
        terminal.world.command("HeartbeatConfirmation", session=None)
        terminal.read_until("Heart")
        terminal.world.command("GetSystemInfo")
        terminal.read_until("GetSystemInfo  Success")
    (counter,) = [line for line in terminal.text.split("\r\n") if "GetCamStatus x" in line]
    assert counter.split("\r\033[K") == [
        "",
        "              GetCamStatus x 1  ",
        "              GetCamStatus x 1  Heartbe",
        "              GetCamStatus x 1  HeartbeatConfirmation x 1  ",
    ]


def test_there_are_no_escape_codes_without_a_terminal(running_world):
    with World(verbose=True) as world:
        world.command("GetCamStatus")
        world.command("SetWebKeyEvent", {"Kind": "Iris", "Key": "Close3"})
        world.wait_for(lambda: any("iris.stop" in line for line in world.output))
        assert "\033" not in "".join(world.output)


def test_the_smoke_test_passes():
    outcome = run("--no-build", "--smoke")
    assert outcome.returncode == 0, outcome.stdout
    assert outcome.stdout.endswith("every reply is as expected\n")
