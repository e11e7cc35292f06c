"""The systemd unit and the handler's list of system calls allow all that is needed, and nothing else.

Runs in the world of tests/servers/world.sh: the handler is installed, a simulated camera answers.
"""

import http.client
import json
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

import pytest

TREE = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TREE / "tests/support"))

from system_calls import calls_of_the_handler  # noqa: E402

UNIT = TREE / "packaging/systemd/camera-remote-web.service"
TMPFILES = TREE / "packaging/systemd/camera-remote.tmpfiles.conf"
FILTER = TREE / "build/under_filter"
SESSION = "server-test"
HANDLERS = {preset: TREE / f"build/{preset}/camera_remote.cgi" for preset in ("release", "small")}
AS_WEB_SERVER = ["setpriv", "--reuid", "www-data", "--regid", "www-data", "--clear-groups",
                 "--bounding-set", "-all", "--inh-caps", "-all", "--no-new-privs"]


def run(*command, **options):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True,
                          text=True, **options).stdout


def unit_values(key):
    lines = UNIT.read_text().splitlines()
    return [line.partition("=")[2] for line in lines if line.startswith(key + "=")]


def members(group):
    """The system calls of a group of systemd, and those of the groups in it."""
    calls = set()
    for line in run("systemd-analyze", "syscall-filter", group).splitlines()[1:]:
        word = line.strip()
        if word.startswith("@"):
            calls |= members(word)
        elif word and not word.startswith("#"):
            calls.add(word)
    return calls


def calls_of_the_unit():
    """The system calls that the unit's lines SystemCallFilter= allow; "~" removes calls."""
    allowed = members("@default")
    for value in unit_values("SystemCallFilter"):
        remove = value.startswith("~")
        for word in value.lstrip("~").split():
            named = members(word) if word.startswith("@") else {word}
            allowed = allowed - named if remove else allowed | named
    return sorted(allowed | members("@default"))


def every_command():
    script = "source simulator/smoke_every_command.sh; every_command"
    lines = run("bash", "-c", script, cwd=TREE).splitlines()
    return [line.partition(" ")[::2] for line in lines]


def body(command, params=""):
    params = ',"Params":{' + params + "}" if params else ""
    return f'{{"Request":{{"Command":"{command}","SessionID":"{SESSION}"{params}}}}}'


def post(handler, calls, text):
    """Runs the handler as the web server's user without capabilities, under a filter."""
    environment = {"PATH": "/usr/sbin:/usr/bin:/bin", "GATEWAY_INTERFACE": "CGI/1.1",
                   "REQUEST_METHOD": "POST", "CONTENT_LENGTH": str(len(text))}
    return subprocess.run([*AS_WEB_SERVER, str(FILTER), *calls, "--", str(handler)], input=text,
                          env=environment, capture_output=True, text=True, check=False)


@pytest.mark.parametrize("preset", HANDLERS)
@pytest.mark.parametrize("calls", [calls_of_the_unit, calls_of_the_handler])
def test_every_command_works_under_the_filter(preset, calls):
    # A folder that the web server's user can reach.
    handler = Path("/run") / f"{preset}.cgi"
    shutil.copy(HANDLERS[preset], handler)
    allowed = calls()
    commands = every_command()
    assert len(commands) == 68
    for command, params in commands:
        result = post(handler, allowed, body(command, params))
        assert result.returncode == 0, f"{command}: status {result.returncode} {result.stderr}"
        response = json.loads(result.stdout.partition("\n\n")[2])["Response"]
        assert response["Requested"] == command
        assert response["Result"] in ("Success", "RequestedError", "DisableError")


def test_a_system_call_that_is_not_listed_ends_the_handler():
    calls = [call for call in calls_of_the_handler() if call != "connect"]
    result = post("/usr/lib/cgi-bin/camera_remote.cgi", calls, body("MonitorStart"))
    assert result.returncode == -signal.SIGSYS


def test_the_filter_of_the_unit_has_nothing_that_takes_rights():
    calls = calls_of_the_unit()
    assert not {"setuid", "chroot", "mount", "ptrace", "bpf", "init_module"} & set(calls)


def test_the_web_server_works_under_the_filter_of_the_unit():
    # Where its user can read it, even if this tree belongs to root alone.
    configuration = shutil.copy(TREE / "packaging/servers/lighttpd.conf", "/run/lighttpd.conf")
    environment = {"PATH": "/usr/sbin:/usr/bin:/bin"}
    caps = ["--inh-caps", "+net_bind_service", "--ambient-caps", "+net_bind_service"]
    command = ["setpriv", "--reuid", "www-data", "--regid", "www-data", "--clear-groups", *caps,
               "--no-new-privs", str(FILTER), *calls_of_the_unit(), "--",
               "/usr/sbin/lighttpd", "-D", "-f", str(configuration)]
    server = subprocess.Popen(command, env=environment)
    try:
        assert answer_of(server) == {"Requested": "GetSystemInfo", "Result": "Success"}
    finally:
        server.terminate()
        server.wait(20)


def answer_of(server):
    text = body("GetSystemInfo")
    deadline = time.monotonic() + 20
    while time.monotonic() < deadline and server.poll() is None:
        connection = http.client.HTTPConnection("127.0.0.1", 80, timeout=20)
        try:
            connection.request("POST", "/cgi-bin/camera_remote.cgi", text)
            response = json.loads(connection.getresponse().read())["Response"]
            return {key: response[key] for key in ("Requested", "Result")}
        except ConnectionRefusedError:
            time.sleep(0.1)
        finally:
            connection.close()
    raise AssertionError(f"the web server does not answer; its status is {server.poll()}")


def test_systemd_accepts_the_unit(tmp_path):
    unit = tmp_path / UNIT.name
    shutil.copy(UNIT, unit)
    result = subprocess.run(["systemd-analyze", "verify", "--man=no", str(unit)],
                            capture_output=True, text=True, check=False)
    complaints = [line for line in result.stderr.splitlines() if UNIT.name in line]
    assert (complaints, result.returncode) == ([], 0)


def test_the_boot_makes_the_folder():
    shutil.move("/var/tmp/lighttpd", "/var/tmp/away")
    try:
        run("systemd-tmpfiles", "--create", TMPFILES)
        folder = Path("/var/tmp/lighttpd")
        assert (folder.owner(), folder.group()) == ("www-data", "www-data")
        assert folder.stat().st_mode & 0o7777 == 0o750
        folder.rmdir()
    finally:
        shutil.move("/var/tmp/away", "/var/tmp/lighttpd")
