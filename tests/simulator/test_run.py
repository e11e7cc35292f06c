"""The command ./run and its options."""

import json
import re
import socket
import subprocess

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
    (["--session-lifetime", "soon"], "--session-lifetime needs a number of seconds"),
    (["--journal", ""], "--journal needs a file"),
    (["--nothing"], "unknown option --nothing"),
])
def test_options_that_make_no_sense(options, error):
    outcome = run(*options)
    assert outcome.returncode == 2
    assert outcome.stderr.startswith(f"run: {error}\n")


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


def test_root_without_the_right_to_mount_gets_a_user_namespace():
    drop = ["setpriv", "--bounding-set=-sys_admin", "--inh-caps=-sys_admin"]
    with World(wrapper=drop) as world:
        assert world.command("GetSystemInfo")["Response"]["Result"] == "Success"


def test_requests_are_shown_and_polls_are_counted():
    with World("--log", verbose=True) as world:
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


def test_the_smoke_test_passes():
    outcome = run("--no-build", "--smoke")
    assert outcome.returncode == 0, outcome.stdout
    assert outcome.stdout.endswith("every reply is as expected\n")
