"""Faults, each through the handler."""

import time

import pytest

SOCKET_FAULTS = ["absent", "refused"]


def add(world, fault):
    code, reply = world.simulator("POST", "faults", fault)
    assert code == 200, reply
    return reply


def ask(world, command="GetCamStatus"):
    """HTTP status, reply."""
    body = f'{{"Request":{{"Command":"{command}","SessionID":"{world.session}"}}}}'
    status, _, reply = world.post(body)
    return status, reply.decode()


def last_entry(world):
    return world.simulator("GET", "journal")[1]["entries"][-1]


@pytest.mark.parametrize("fault", SOCKET_FAULTS)
@pytest.mark.parametrize("command, daemon", [("GetCamStatus", "quonta_cp"),
                                             ("GetCldstrmEventList", "streaming")])
def test_a_daemon_that_cannot_be_connected(world, fault, command, daemon):
    add(world, {"fault": fault, "daemon": daemon, "count": 1})
    assert ask(world, command)[0] == 500
    entry = last_entry(world)
    assert (entry["status"], entry["result"], entry["faults"]) == (500, None, [fault])
    assert entry["reason"] == ("the handler ended with status 1 and without a reply: "
                               "it could not connect to a daemon")
    assert ask(world, command)[0] == 200


@pytest.mark.parametrize("fault, command, daemon, status, fragment", [
    ("busy", "GetCamStatus", "quonta_cp", 500, ""),
    ("busy", "MonitorStart", "quonta_cp", 500, ""),
    ("busy", "GetCldstrmEventList", "streaming", 500, ""),
    ("silent", "GetCamStatus", "quonta_cp", 200,
     '"Result":"Success","Data":{"Status":"NoCard","Mode":"Camera"'),
])
def test_a_daemon_that_does_not_answer_in_time(world, fault, command, daemon, status, fragment):
    add(world, {"fault": fault, "daemon": daemon, "count": 1})
    begin = time.monotonic()
    reply = ask(world, command)
    assert time.monotonic() - begin >= 4.9
    assert reply[0] == status and fragment in reply[1]


# Fault, part of the reply to GetCamStatus.
REPLIES = [
    ({"fault": "slow", "ms": 300}, '"Result":"Success","Data":{"Status":"Stop"'),
    ({"fault": "pieces"}, '"Result":"Success","Data":{"Status":"Stop"'),
    ({"fault": "short", "bytes": 15}, '"Result":"Success","Data":{"Status":"Stop","Mode":"Camera",'
                                      '"RecMode":"Normal","ZoomStatus":"Idol"'),
    ({"fault": "short", "bytes": 5}, '"Result":"Success","Data":{"Status":"NoCard"'),
    ({"fault": "closed"}, '"Result":"Success","Data":{"Status":"NoCard"'),
    ({"fault": "garbage"}, '"Requested":"GetCamStatus","Result":"Success"'),
    ({"fault": "requested_error"}, '"Requested":"GetCamStatus","Result":"RequestedError"'),
    ({"fault": "disable_error"}, '"Requested":"GetCamStatus","Result":"DisableError"'),
    ({"fault": "result", "code": 2}, '"Result":"DisableError","Data":{"Status":"Stop"'),
    ({"fault": "result", "code": 77}, '"Result":"Success","Data":{"Status":"Stop"'),
]


@pytest.mark.parametrize("fault, fragment", REPLIES)
def test_a_reply_that_is_not_as_it_should_be(world, fault, fragment):
    add(world, {**fault, "command": "GetCamStatus", "count": 2})
    for _ in range(2):
        status, reply = ask(world)
        assert status == 200 and fragment in reply
        assert last_entry(world)["messages"][0]["fault"] == fault["fault"]
    assert world.simulator("GET", "faults") == (200, [])
    assert '"Result":"Success","Data":{"Status":"Stop"' in ask(world)[1]


@pytest.mark.parametrize("fault, is_carried_out", [
    ({"fault": "requested_error"}, False), ({"fault": "disable_error"}, False),
    ({"fault": "closed"}, False), ({"fault": "garbage"}, False),
    ({"fault": "slow", "ms": 10}, True), ({"fault": "pieces"}, True),
    ({"fault": "short", "bytes": 0}, True), ({"fault": "result", "code": 1}, True),
])
def test_whether_a_daemon_at_fault_does_what_it_is_told(world, fault, is_carried_out):
    add(world, {**fault, "daemon": "quonta_cp"})
    world.command("SetWebKeyEvent", {"Kind": "Iris", "Key": "Close3"})
    stop = world.simulator("GET", "state")[1]["iris"]["stop"]
    assert stop == ("F5.6" if is_carried_out else "F2.8")


# Fault, command, parameters, part of the reply.
ENVIRONMENT = [
    ("no_status_block", "GetSystemInfo", None, '"Model":"RV130/140","Destination":"JP"'),
    ("short_status_block", "GetSystemInfo", None, '"Model":"RV130/140"'),
    ("short_status_block", "GetSystemInfo", None, '"Serial":"13250042"'),
    ("no_session", "GetSystemInfo", None, '{"Response":{"Result":"SessionError"}}'),
    ("no_log", "GetSystemInfo", None, '"Model":"RV130","Destination":"US"'),
    ("settings_read_only", "SetNTPServer", {"Address": "10.9.9.9"}, '"Result":"Success"'),
    ("settings_read_only", "SessionRenewal", {"Update": 1}, '"Result":"RequestedError"'),
    ("disk_full", "SetNTPServer", {"Address": "10.9.9.9"}, '"Result":"Success"'),
]


@pytest.mark.parametrize("fault, command, params, fragment", ENVIRONMENT)
def test_an_environment_that_is_not_as_it_should_be(world, fault, command, params, fragment):
    add(world, {"fault": fault, "command": command})
    before = world.simulator("GET", "state")[1]["settings"]
    reply = world.post(_body(world, command, params))
    assert reply[0] == 200 and fragment in reply[2].decode()
    assert last_entry(world)["faults"] == [fault]
    assert world.simulator("GET", "state")[1]["settings"] == before
    world.simulator("DELETE", "faults")
    reply = world.post(_body(world, command, params))
    assert '"Result":"Success"' in reply[2].decode()


def _body(world, command, params):
    members = ",".join(f'"{name}":"{value}"' for name, value in (params or {}).items())
    tail = f',"Params":{{{members}}}' if params else ""
    return f'{{"Request":{{"Command":"{command}","SessionID":"{world.session}"{tail}}}}}'


@pytest.mark.parametrize("fault, is_logged", [("disk_full", True), ("settings_read_only", True)])
def test_a_setting_that_cannot_be_written_is_logged(world, fault, is_logged):
    add(world, {"fault": fault})
    world.command("SetIFBSettings", {"Function": "Enable", "Address": "10.0.0.1", "Port": 1,
                                     "Mountpoint": "M"})
    lines = [line for line in last_entry(world)["log"] if "cannot write" in line]
    assert (lines != []) == is_logged, last_entry(world)["log"]


def test_without_a_log_nothing_is_logged(world):
    assert ask(world)[0] == 200
    world.command("GetSystemInfo", session="wrong")
    assert last_entry(world)["log"] != []
    add(world, {"fault": "no_log"})
    world.command("GetSystemInfo", session="wrong")
    assert last_entry(world)["log"] == []


def test_a_fault_of_one_command_leaves_others_alone(world):
    add(world, {"fault": "absent", "command": "GetClipInfo"})
    assert ask(world)[0] == 200
    with pytest.raises(AssertionError, match="HTTP status 500"):
        world.command("GetClipInfo", {"Slot": "A", "StartIndexNo": 1, "ClipNum": 1})


def test_a_fault_counts_only_requests_that_can_meet_it(world):
    add(world, {"fault": "disable_error", "daemon": "streaming", "count": 1})
    world.command("GetSystemInfo")
    world.command("MonitorStart")
    assert world.simulator("GET", "faults")[1][0]["count"] == 1
    assert world.command("SetCldstrmLogout")["Response"]["Result"] == "DisableError"
    assert world.command("SetCldstrmLogout")["Response"]["Result"] == "Success"


def test_faults_are_listed_and_removed(world):
    one = add(world, {"fault": "slow", "ms": 5, "daemon": "quonta_cp"})
    other = add(world, {"fault": "no_log", "count": 7})
    assert world.simulator("GET", "faults") == (200, [one, other])
    assert {**one, "id": 0} == {"id": 0, "fault": "slow", "daemon": "quonta_cp", "ms": 5}
    assert world.simulator("DELETE", f"faults?id={one['id']}") == (200, {})
    assert world.simulator("GET", "faults") == (200, [other])
    assert world.simulator("DELETE", f"faults?id={one['id']}") == (
        404, {"error": f"there is no fault with the id {one['id']}"})
    assert world.simulator("DELETE", "faults") == (200, {})
    assert world.simulator("GET", "faults") == (200, [])


@pytest.mark.parametrize("fault, error", [
    ({}, "fault: must be one of absent, refused, busy, silent, slow, pieces, short, closed, garbage, "
         "requested_error, disable_error, result, no_status_block, short_status_block, "
         "settings_read_only, disk_full, no_session, no_log"),
    ({"fault": "slow"}, "ms: must be a number from 0 to 60000"),
    ({"fault": "slow", "ms": 60001}, "ms: must be a number from 0 to 60000"),
    ({"fault": "absent", "ms": 1}, 'ms: "absent" has no such member'),
    ({"fault": "result", "code": 256}, "code: must be a number from 0 to 255"),
    ({"fault": "silent", "command": "GetStatus"}, 'command: there is no "GetStatus"'),
    ({"fault": "silent", "command": "GetSystemInfo"},
     'command: "GetSystemInfo" does not talk to any daemon'),
    ({"fault": "silent", "command": "GetCamStatus", "daemon": "streaming"},
     'command: "GetCamStatus" does not talk to streaming'),
    ({"fault": "silent", "daemon": "quonta_usb"},
     "daemon: must be one of quonta_cp, streaming; no command talks to others"),
    ({"fault": "no_log", "daemon": "quonta_cp"}, 'daemon: "no_log" has no such member'),
    ({"fault": "silent", "count": 0}, "count: must be a number from 1 to 1000000"),
])
def test_a_fault_that_makes_no_sense_is_not_added(world, fault, error):
    assert world.simulator("POST", "faults", fault) == (400, {"error": error})
    assert world.simulator("GET", "faults") == (200, [])
