"""The control interface: state, sessions, journal, repeatability."""

import concurrent.futures
import json
import os
import signal

import pytest
from world import World


def result(world, command, params=None, session=...):
    return world.command(command, params, session)["Response"]["Result"]


# --- State ---------------------------------------------------------------------------------------

@pytest.mark.parametrize("patch, error", [
    ({"iriss": {}}, "iriss: no such member"),
    ({"iris": {"aperture": 4}}, "iris.aperture: no such member"),
    ({"iris": "F4.0"}, "iris: must be an object"),
    ({"iris.stop": "F4.0"}, "iris.stop: no such member"),
    ({"gain": {"L": 31}}, "gain.L: must be a whole number from -6 to 30"),
    ({"gain": {"L": 1.5}}, "gain.L: must be a whole number from -6 to 30"),
    ({"full_auto": 1}, "full_auto: must be true or false"),
    ({"tally": {"control": "web"}}, 'tally.control: must be one of "Camera", "Web"'),
    ({"serial": "1234567890"}, "serial: must have at most 9 bytes, without control characters"),
    ({"serial": "12\n"}, "serial: must have at most 9 bytes, without control characters"),
    ({"recording": {"format": 12}}, "recording.format: must be a number from 0 to 11, or 255"),
    ({"timecode": {"value": "24:00:00:00"}},
     "timecode.value: must be a time code, hh:mm:ss:ff or hh:mm:ss.ff"),
    ({"clock": {"date": "2026-02-30T00:00:00"}},
     'clock.date: must be a date and time like "2026-05-04T09:30:00"'),
    ({"slots": {"A": {"remain": -1}}}, "slots.A.remain: must be minutes from 0 to 65534, or null"),
    ({"slots": {"A": {"clips": 4001}}},
     "slots.A.clips: must be a list of at most 4000 clips, or the number of clips to make up"),
    ({"slots": {"A": {"clips": [{"name": "A"}]}}}, 'slots.A.clips[0]: has no member "first"'),
    ({"slots": {"A": None}}, "slots.A: must be an object"),
    ({"upload": {"phase": "TRANS"}},
     "upload.phase: an upload needs files; give upload.files, too"),
    ({"settings": {"passwd": {}}}, "settings.passwd: no such file; there are ntp, ifb, "
                                   "web_zoom_preset, streaming, streaming_server0 and so on"),
    ({"settings": {"ntp": {"adress": ""}}}, "settings.ntp.adress: no such key"),
    ({"settings": {"ntp": {"address": 5}}},
     "settings.ntp.address: must be a text of at most 1000 bytes without line feeds"),
    ({"settings": {"ntp": {"address": "10.0.0.1\nx\ty"}}},
     "settings.ntp.address: must be a text of at most 1000 bytes without line feeds"),
    ({"upload": {"files": ["A.MOV", 5]}}, "upload.files[1]: must be a text"),
    ({"cloud": {"events": [{"title": "A", "url": "u", "stream_key": "k"}, {"title": "B"}]}},
     'cloud.events[1]: has no member "url"'),
    ({"battery": {"level": 1}, "iris": {"stop": "F99"}}, "iris.stop: must be one of"),
])
def test_a_patch_that_makes_no_sense_changes_nothing(world, patch, error):
    world.simulator("POST", "clock", {"paused": True})
    before = world.simulator("GET", "state")
    status, reply = world.simulator("PATCH", "state", patch)
    assert status == 400 and reply["error"].startswith(error)
    assert world.simulator("GET", "state") == before


@pytest.mark.parametrize("method, path, body, status, error", [
    ("GET", "nothing", None, 404, "there is no /simulator/nothing; there are /simulator/state, "
     "/simulator/scenes, /simulator/reset, /simulator/faults, /simulator/clock, /simulator/journal, "
     "/simulator/login, /simulator/logout"),
    ("PUT", "state", {}, 405, "/simulator/state knows GET, PATCH only"),
    ("DELETE", "clock", None, 405, "/simulator/clock knows GET, POST only"),
    ("GET", "login", None, 405, "/simulator/login knows POST only"),
    ("PATCH", "state", b'{"iris":\n{"stop":F11}}', 400,
     "the body is not valid JSON: line 2, column 9: syntax error while parsing value - "
     "invalid literal; last read: '\"stop\":F'"),
    ("POST", "reset", [], 400, "the body must be a JSON object"),
    ("POST", "reset", {"name": "field"}, 400, "name: no such member"),
    ("POST", "login", {"user": "me"}, 400, "user: no such member"),
    ("GET", "journal?after=x", None, 400, "after: must be a number"),
    ("GET", "journal?last=5", None, 400, "last: no such parameter; there is after"),
    ("GET", "state?member=iris", None, 400, "member: no such parameter"),
])
def test_requests_that_make_no_sense(world, method, path, body, status, error):
    assert world.simulator(method, path, body) == (status, {"error": error})


@pytest.mark.parametrize("raw", [b"\xff", b"{", b"{} {}", b"[" * 200000])
def test_a_body_that_is_not_valid_json(world, raw):
    status, reply = world.simulator("PATCH", "state", raw)
    assert status == 400 and reply["error"].startswith("the body is not valid JSON: line 1, column ")


@pytest.mark.parametrize("path, body, status, error", [
    ("faults?ID=1", None, 400, "ID: no such parameter; there is id"),
    ("faults?id=0", None, 404, "there is no fault with the id 0"),
    ("faults?id=4294967297", None, 404, "there is no fault with the id 4294967297"),
    ("faults", {"id": 1}, 400, "id: no such member"),
    ("journal?after=1", None, 400, "after: no such parameter"),
    ("journal", {"after": 1}, 400, "after: no such member"),
])
def test_a_deletion_that_makes_no_sense_removes_nothing(world, path, body, status, error):
    world.command("GetSystemInfo")
    world.simulator("POST", "faults", {"fault": "no_log"})
    before = world.simulator("GET", "faults"), world.simulator("GET", "journal")
    assert world.simulator("DELETE", path, body) == (status, {"error": error})
    assert (world.simulator("GET", "faults"), world.simulator("GET", "journal")) == before


FORM = {"Content-Type": "application/x-www-form-urlencoded"}


def test_a_state_that_was_saved_can_be_patched_back_whatever_its_size(world):
    """With the type that `curl --data @FILE` sends."""
    world.simulator("POST", "reset", {"scene": "clips-500", "paused": True})
    long_alias = {"ID": 1, "Alias": "x" * 250, "DstUrl": "u", "StreamKey": "k"}
    assert result(world, "SetStreamingServerSettingsRTMP", long_alias) == "Success"
    saved = world.simulator("GET", "state")[1]
    body = json.dumps(saved)
    assert len(body) > 50000
    world.simulator("POST", "reset", {"paused": True})
    status, _, _ = world.request("PATCH", "/simulator/state", body, FORM)
    assert (status, world.simulator("GET", "state")[1]) == (200, saved)


@pytest.mark.parametrize("headers", [{"Content-Type": "multipart/form-data; boundary=x"},
                                     {"Content-Encoding": "gzip"}])
def test_a_body_that_is_wrapped_is_refused(world, headers):
    status, _, reply = world.request("PATCH", "/simulator/state", b"{}", headers)
    assert (status, json.loads(reply)) == (400, {
        "error": "the body cannot be read: it must be JSON of at most 8 MiB, as it is"})


def test_settings_are_those_of_the_handler(world):
    world.command("SetNTPServer", {"Address": "10.0.0.9"})
    assert world.simulator("GET", "state")[1]["settings"] == {
        "ntp": {"address": "10.0.0.9", "tc_sync": "1"}}
    world.simulator("PATCH", "state", {"settings": {"ntp": None, "web_zoom_preset": {"preset_c": "7"}}})
    assert world.command("GetNTPStatus")["Response"]["Data"]["Address"] == "192.168.0.100"
    assert world.command("GetPresetZoomPosition")["Response"]["Data"] == {"A": -1, "B": -1, "C": 7}
    world.simulator("POST", "reset", {})
    assert world.simulator("GET", "state")[1]["settings"] == {}


# --- Sessions ------------------------------------------------------------------------------------

def test_a_login_issues_the_only_session(world):
    _, reply = world.simulator("POST", "login")
    one = reply["SessionID"]
    assert result(world, "GetSystemInfo", session=one) == "Success"
    assert result(world, "GetSystemInfo") == "SessionError"
    _, reply = world.simulator("POST", "login", {})
    assert reply["SessionID"] != one
    assert result(world, "GetSystemInfo", session=one) == "SessionError"
    assert world.simulator("POST", "logout") == (200, {})
    assert result(world, "GetSystemInfo", session=reply["SessionID"]) == "SessionError"
    entry = world.simulator("GET", "journal")[1]["entries"][-1]
    assert entry["reason"] == "no client is logged in"


def test_a_session_ends_with_its_lifetime_unless_it_is_renewed(world):
    world.simulator("POST", "clock", {"paused": True})
    session = world.simulator("POST", "login")[1]["SessionID"]
    world.simulator("POST", "clock", {"step_ms": 29000})
    assert result(world, "SessionRenewal", {"Update": 1}, session) == "Success"
    world.simulator("POST", "clock", {"step_ms": 29990})
    assert result(world, "GetSystemInfo", session=session) == "Success"
    world.simulator("POST", "clock", {"step_ms": 10})
    assert result(world, "GetSystemInfo", session=session) == "SessionError"


def test_the_initial_session_does_not_expire_but_can_be_ended(world):
    world.simulator("POST", "clock", {"paused": True})
    assert result(world, "SessionRenewal", {"Update": 1}) == "Success"
    world.simulator("POST", "clock", {"step_ms": 3600000})
    assert result(world, "GetSystemInfo") == "Success"
    assert result(world, "SessionRenewal", {"Update": 0}) == "Success"
    assert result(world, "GetSystemInfo") == "SessionError"
    world.simulator("POST", "reset", {})
    assert result(world, "GetSystemInfo") == "Success"


def test_a_lifetime_can_be_given():
    with World("--session-lifetime", "100") as world:
        world.simulator("POST", "reset", {"paused": True})
        world.simulator("POST", "clock", {"step_ms": 99990})
        assert result(world, "GetSystemInfo") == "Success"
        world.simulator("POST", "clock", {"step_ms": 10})
        assert result(world, "GetSystemInfo") == "SessionError"


# --- Journal -------------------------------------------------------------------------------------

def journal(world, after):
    return world.simulator("GET", f"journal?after={after}")[1]


@pytest.fixture
def after(world):
    return journal(world, 0)["last"]


# Body, command, result, reason.
REFUSED = [
    (b"", None, "FormatError",
     "the body holds no Command or no SessionID, or white space before them"),
    (b'{"Request":{"Command":"GetSystemInfo","SessionID":"x"}}', "GetSystemInfo", "SessionError",
     '"x" is not the session\'s id'),
    (b'{"Request":{"Command":"GetAll","SessionID":"rv130-session"}}', "GetAll", "CommandError",
     'there is no command "GetAll"'),
    (b'{"Request":{"Command":"SetZoomCtrl","SessionID":"rv130-session","Params":{}}}',
     "SetZoomCtrl", "RequestedError",
     "a parameter is missing, or has a value that the command does not take"),
    (b'{"Request":{"Command":"SetWebKeyEvent","SessionID":"rv130-session","Params":{"Kind":"Whb",'
     b'"Key":"Adjust"}}}', "SetWebKeyEvent", "DisableError",
     "the daemon quonta_cp refused: white adjust: the white balance is neither A nor B"),
]


@pytest.mark.parametrize("body, command, word, reason", REFUSED)
def test_refused_requests_are_in_the_journal_with_their_reason(world, after, body, command, word,
                                                               reason):
    world.post(body)
    (entry,) = journal(world, after)["entries"]
    assert (entry["command"], entry["result"], entry["reason"]) == (command, word, reason)


# What was before (a patch), command, parameters, why it is disabled.
DISABLED = [
    ({"full_auto": True}, "SetWebKeyEvent", {"Kind": "Iris", "Key": "Close3"},
     "iris close 3: full auto is on"),
    ({"iris": {"mode": "Auto"}}, "SetWebKeyEvent", {"Kind": "Iris", "Key": "Close3"},
     "iris close 3: the iris is automatic"),
    ({"suspended": True, "full_auto": True}, "SetWebKeyEvent", {"Kind": "Gain", "Key": "L"},
     "gain L: the camera is suspended"),
    ({"mode": "Play"}, "SetZoomCtrl", {"Position": 300},
     "zoom to 300: the camera is in another mode than Camera"),
    ({"slots": {"A": {"card": "None"}, "B": {"card": "None"}}}, "SetCamCtrl", {"CamCtrl": "Rec"},
     "record start: there is no card that can be recorded on"),
    ({"battery": {"info": "Time", "value": 0}}, "SetWebKeyEvent", {"Kind": "Rec", "Key": "Start"},
     "rec start: the battery is empty"),
    ({"upload": {"phase": "PUT_FILE", "files": ["A.MOV"]}}, "SetCamCtrl", {"CamCtrl": "Rec"},
     "record start: an upload is running"),
    ({"model": "RV110"}, "GetGPSInfo", None, "GPS information: this model has no GPS"),
]


@pytest.mark.parametrize("before, command, params, why", DISABLED)
def test_the_journal_tells_why_a_control_is_disabled(world, after, before, command, params, why):
    assert refusal(world, after, before, command, params) == (
        "DisableError", "the daemon quonta_cp refused: " + why)


def refusal(world, after, before, command, params):
    """Result and reason."""
    world.simulator("POST", "clock", {"paused": True})
    assert world.simulator("PATCH", "state", before)[0] == 200
    word = result(world, command, params)
    return word, journal(world, after)["entries"][-1]["reason"]


UPLOAD = ("SetWebFtpUploadAll", {"Server": 0, "Slot": 0}, "upload all clips of slot A to FTP1")
NO_CARDS = {"slots": {"A": {"card": "None"}, "B": {"card": "Invalid"}}}
NO_CARD = "there is no card in the slot that can be read"
NO_CLOUD = "this model or firmware has no cloud streaming"

# What was before (a patch), command, parameters, result, message in words, why it is refused.
REFUSED_BY_A_DAEMON = [
    ({"model": "RV110"}, *UPLOAD[:2], "DisableError", UPLOAD[2], "this model has no upload"),
    ({"upload": {"phase": "TRUST", "files": ["A.MOV"]}}, *UPLOAD[:2], "DisableError", UPLOAD[2],
     "an upload is running"),
    ({"recording": {"status": "RecPause"}}, *UPLOAD[:2], "DisableError", UPLOAD[2],
     "the camera is recording"),
    ({"network": {"connected": False, "link": False}}, *UPLOAD[:2], "DisableError", UPLOAD[2],
     "the camera is not connected to a network"),
    (NO_CARDS, *UPLOAD[:2], "DisableError", UPLOAD[2], NO_CARD),
    (NO_CARDS, "SetWebFtpUploadOkMarked", {"Server": 3, "Slot": 1}, "DisableError",
     "upload the marked clips of slot B to FTP4", NO_CARD),
    (NO_CARDS, "SetWebFtp2UploadBSelect", {"block0": 1}, "DisableError", "FTP 2 upload from slot B",
     NO_CARD),
    ({}, "WebFtpOperateResponse", {"Response": 1}, "DisableError",
     "answer the upload's question with 1", "no upload waits for an answer"),
    (NO_CARDS, "GetClipInfo", {"Slot": "B", "StartIndexNo": 1, "ClipNum": 2}, "DisableError",
     "list 2 clips of slot B from 1", NO_CARD),
    (NO_CARDS, "SetClipInfo", {"Slot": "A", "IndexNo": 1, "OKMark": "Mark"}, "DisableError",
     "set the OK mark of clip 1 in slot A", NO_CARD),
    ({"slots": {"A": {"protect": True}}}, "SetClipInfo",
     {"Slot": "A", "IndexNo": 1, "OKMark": "Mark"}, "DisableError",
     "set the OK mark of clip 1 in slot A", "the card is locked"),
    ({}, "SetClipInfo", {"Slot": "A", "IndexNo": 13, "OKMark": "NoMark"}, "RequestedError",
     "clear the OK mark of clip 13 in slot A", "the card has no such clip"),
    ({"model": "RV150"}, "SetStreamingCtrl", {"Streaming": "On"}, "DisableError", "streaming start",
     "this model has no streaming"),
    ({"firmware": "1.02"}, "SetIFBCtrl", {"Streaming": "Start"}, "DisableError",
     "return audio start", "this model or firmware has no return audio"),
    ({}, "SetTallyLampCtrl", {"Sw": "On"}, "DisableError", "tally on",
     "the camera controls its tally lamp"),
    ({}, "SetWebKeyEvent", {"Kind": "IrisBar", "Key": ""}, "RequestedError",
     "key of unknown kind 19, code 255", "the camera has no such control"),
]


@pytest.mark.parametrize("before, command, params, word, decoded, why", REFUSED_BY_A_DAEMON)
def test_the_journal_tells_why_the_control_daemon_refuses(world, after, before, command, params,
                                                          word, decoded, why):
    assert refusal(world, after, before, command, params) == (
        word, f"the daemon quonta_cp refused: {decoded}: {why}")


LOGIN = {"Username": "u", "Password": "p", "ServerURL": "https://c"}
REFUSED_BY_THE_CLOUD = [
    ({"firmware": "1.04"}, "SetCldstrmLogin", LOGIN, "DisableError", "cloud login of u at https://c",
     NO_CLOUD),
    ({"model": "RV150"}, "SetCldstrmLogout", None, "DisableError", "cloud logout", NO_CLOUD),
    ({"model": "RV150"}, "SetCldstrmEventListObtain", None, "DisableError", "obtain event list",
     NO_CLOUD),
    ({"model": "RV150"}, "GetCldstrmEventList", None, "DisableError", "number of events", NO_CLOUD),
    ({"model": "RV150"}, "SetCldstrmStreamInfoObtain", {"EventID": 1}, "DisableError",
     "obtain stream information of event 1", NO_CLOUD),
    ({"model": "RV150"}, "SetCldstrmStreamInfoToStrmsrv", {"EventID": 1, "StrmsrvID": 0},
     "DisableError", "stream information of event 1", NO_CLOUD),
    ({}, "SetCldstrmStreamInfoToStrmsrv", {"EventID": 1, "StrmsrvID": 0}, "RequestedError",
     "stream information of event 1", "the stream information of this event was not obtained"),
]


@pytest.mark.parametrize("before, command, params, word, decoded, why", REFUSED_BY_THE_CLOUD)
def test_the_journal_tells_why_the_streaming_daemon_refuses(world, after, before, command, params,
                                                            word, decoded, why):
    assert refusal(world, after, before, command, params) == (
        word, f"the daemon streaming refused: {decoded}: {why}")


@pytest.mark.parametrize("fault, why", [
    ({"fault": "disable_error", "command": "SetZoomCtrl"},
     'the daemon quonta_cp refused: zoom to 5, because of the fault "disable_error"'),
    ({"fault": "result", "code": 1, "command": "SetZoomCtrl"},
     'the daemon quonta_cp refused: zoom to 5, because of the fault "result"'),
])
def test_the_journal_tells_which_fault_makes_a_daemon_refuse(world, after, fault, why):
    world.simulator("POST", "faults", fault)
    assert refusal(world, after, {}, "SetZoomCtrl", {"Position": 5})[1] == why


def test_the_journal_tells_why_a_session_cannot_be_renewed(world, after):
    world.simulator("POST", "faults", {"fault": "settings_read_only"})
    assert refusal(world, after, {}, "SessionRenewal", {"Update": 1}) == (
        "RequestedError",
        'the session file cannot be written, because of the fault "settings_read_only"')


def test_a_session_file_that_is_gone_is_the_reason(world, after):
    world.simulator("POST", "faults", {"fault": "no_session"})
    assert refusal(world, after, {}, "GetSystemInfo", None) == (
        "SessionError", 'there is no session file, because of the fault "no_session"')


def test_a_get_request_is_in_the_journal(world, after):
    assert world.request("GET", "/cgi-bin/camera_remote.cgi")[0] == 500
    (entry,) = journal(world, after)["entries"]
    assert (entry["method"], entry["status"], entry["reason"]) == (
        "GET", 500, "only POST requests are answered")


def test_messages_are_shown_as_bytes_and_in_words(world, after):
    world.command("SetWebKeyEvent", {"Kind": "Iris", "Key": "Close3"})
    world.command("SetNTPServer", {"Address": "10.0.0.9"})
    key, renewal = (entry["messages"] for entry in journal(world, after)["entries"])
    (message,) = key
    assert message["bytes"][:16] == "0005020011000000" and message["bytes"][24:] == "0307"
    assert (message["daemon"], message["decoded"], message["reply"], message["changes"]) == (
        "quonta_cp", "iris close 3", "00", ["iris.stop F2.8 -> F5.6"])
    (message,) = renewal
    assert message["bytes"][:16] == "0001010001010000" and message["bytes"][24:] == "00"
    assert (message["decoded"], message["reply"]) == ("settings renewal notice", None)
    assert message["changes"] == ["settings.ntp.address 192.168.0.100 -> 10.0.0.9",
                                  "ntp.status Synchronized -> NotSynchronized"]


# Command, parameters, words.
DECODED = [
    ("SetCamCtrl", {"CamCtrl": "Rec"}, "record start"),
    ("SetZoomCtrl", {"Position": -5}, "zoom to -5"),
    ("PageChange", {"Page": 4}, "page change to 4"),
    ("SetWebSliderEvent", {"Kind": "ZoomBar", "Position": 300}, "zoom bar to 300"),
    ("SetWebXYFieldEvent", {"Kind": "WhPaintRB", "XPosition": 3, "YPosition": 4},
     "white paint field to 3, 4"),
    ("SeesawSwitchOperation", {"Kind": "FocusSeesaw", "Direction": "Near", "Speed": 5},
     "focus seesaw near, speed 5"),
    ("ZoomSwitchOperation", {"Direction": "Wide", "Speed": 9}, "zoom seesaw wide, speed 9"),
    ("ZoomSwitchOperation", {"Direction": "Stop", "Speed": 9}, "zoom seesaw stop"),
    ("GetClipInfo", {"Slot": "B", "StartIndexNo": 3, "ClipNum": 2}, "list 2 clips of slot B from 3"),
    ("SetClipInfo", {"Slot": "A", "IndexNo": 2, "OKMark": "NoMark"},
     "clear the OK mark of clip 2 in slot A"),
    ("SetWebFtpUploadOkMarked", {"Server": 3, "Slot": 1},
     "upload the marked clips of slot B to FTP4"),
    ("SetCldstrmStreamInfoObtain", {"EventID": 2}, "obtain stream information of event 2"),
    ("GetGPSInfo", None, "GPS information"),
]


@pytest.mark.parametrize("command, params, words", DECODED)
def test_messages_in_words(world, after, command, params, words):
    world.command(command, params)
    assert [message["decoded"] for entry in journal(world, after)["entries"]
            for message in entry["messages"]] == [words]


SECRETS = ["hunter2-secret", "key-of-the-stream"]


def use_secrets(world):
    world.command("SetStreamingServerSettingsRTSP", {"ID": 1, "Alias": "a", "Password": SECRETS[0]})
    world.command("GetStreamingServerSettings", {"ID": 1})
    world.command("SetStreamingServerSettingsRTMP",
                  {"ID": 1, "Alias": "a", "DstUrl": "u", "StreamKey": SECRETS[1]})
    world.command("SetCldstrmLogin", {"Username": "u", "Password": SECRETS[0],
                                      "ServerURL": "https://cloud.example"})


def shown(world):
    text = json.dumps(journal(world, 0))
    return [secret for secret in SECRETS if secret in text or secret.encode().hex() in text]


def test_secrets_are_masked(world):
    use_secrets(world)
    assert shown(world) == []
    login = journal(world, 0)["entries"][-1]
    assert login["request"]["Request"]["Params"]["Password"] == "***"


def test_secrets_are_shown_if_told_so():
    with World("--show-secrets") as world:
        use_secrets(world)
        assert shown(world) == SECRETS


def test_the_journal_is_bounded_and_tells_what_it_has_dropped(world, after):
    body = b'{"Request":{"Command":"HeartbeatConfirmation"}}'
    with concurrent.futures.ThreadPoolExecutor(8) as clients:
        list(clients.map(lambda _: world.post(body), range(1003)))
    page = journal(world, after)
    assert (page["dropped"], page["last"], len(page["entries"])) == (3, after + 1003, 1000)
    assert [entry["number"] for entry in page["entries"]] == list(range(after + 4, after + 1004))
    assert journal(world, after + 1000)["dropped"] == 0
    assert world.simulator("DELETE", "journal") == (200, {})
    assert journal(world, after) == {"dropped": 0, "last": after + 1003, "entries": []}


def test_the_journal_goes_to_a_file_too(tmp_path):
    file = tmp_path / "journal.jsonl"
    with World("--journal", str(file)) as world:
        world.command("GetSystemInfo")
        world.post(b'{"Request":{"Command":"\xff","SessionID":"rv130-session"}}')
        entries = journal(world, 0)["entries"]
    assert [json.loads(line) for line in file.read_text().splitlines()] == entries


def test_the_journal_is_complete_under_four_clients(world, after):
    def work(client):
        for number in range(40):
            position = 100 * client + number
            assert result(world, "SetZoomCtrl", {"Position": position}) == "Success"

    with concurrent.futures.ThreadPoolExecutor(4) as clients:
        list(clients.map(work, range(4)))
    entries = journal(world, after)["entries"]
    assert [entry["number"] for entry in entries] == list(range(after + 1, after + 161))
    positions = [entry["request"]["Request"]["Params"]["Position"] for entry in entries]
    assert sorted(positions) == [100 * client + number for client in range(4) for number in range(40)]
    for entry, position in zip(entries, positions):
        assert [message["decoded"] for message in entry["messages"]] == [f"zoom to {position}"]
        assert entry["reply"] == {"Response": {"Requested": "SetZoomCtrl", "Result": "Success"}}


def test_a_handler_that_crashes_is_in_the_journal(world, after):
    world.simulator("POST", "faults", {"fault": "silent", "command": "GetCamStatus"})
    body = f'{{"Request":{{"Command":"GetCamStatus","SessionID":"{world.session}"}}}}'
    with concurrent.futures.ThreadPoolExecutor(1) as client:
        reply = client.submit(world.post, body)
        while not (handlers := world.processes("camera_remote.cgi")):
            assert not reply.done()
        os.kill(handlers[0], signal.SIGSEGV)
        assert reply.result()[0] == 500
    (entry,) = journal(world, after)["entries"]
    assert (entry["command"], entry["result"], entry["status"], entry["reason"]) == (
        "GetCamStatus", None, 500, "the handler was ended by a signal: Segmentation fault")


def test_what_the_request_was_is_shown_even_if_it_is_no_json(world, after):
    world.post(b"Command and so on")
    assert journal(world, after)["entries"][0]["request"] == "Command and so on"


# --- Repeatability -------------------------------------------------------------------------------

def session_of_work(world):
    """Every reply, byte for byte."""
    world.simulator("POST", "reset", {"scene": "field", "paused": True})
    replies = []

    def send(command, **params):
        members = ",".join(f'"{name}":"{value}"' for name, value in params.items())
        body = (f'{{"Request":{{"Command":"{command}","SessionID":"{world.session}",'
                f'"Params":{{{members}}}}}}}')
        replies.append(world.post(body)[2])

    send("SetCamCtrl", CamCtrl="Rec")
    send("ZoomSwitchOperation", Direction="Tele", Speed=7)
    for _ in range(20):
        world.simulator("POST", "clock", {"step_ms": 3330})
        send("GetCamStatus")
    send("SetCamCtrl", CamCtrl="Stop")
    send("SetWebFtpUploadAll", Server=1, Slot=1)
    for _ in range(20):
        world.simulator("POST", "clock", {"step_ms": 700})
        send("GetCamStatus")
        send("WebFtpOperateResponse", Response=1)
    send("SetCldstrmLogin", Username="u", Password="p", ServerURL="https://c")
    world.simulator("POST", "clock", {"step_ms": 1000})
    send("GetCamStatus")
    send("GetClipInfo", Slot="A", StartIndexNo=1, ClipNum=60)
    return replies


def test_the_same_requests_after_the_same_scene_give_the_same_bytes(world):
    assert session_of_work(world) == session_of_work(world)


def test_how_time_is_cut_into_steps_makes_no_difference(world):
    seen = []
    for steps in ([60000], [10] * 20 + [59800], [20000, 20000, 20000]):
        world.simulator("POST", "reset", {"paused": True})
        world.command("SetCamCtrl", {"CamCtrl": "Rec"})
        world.command("SeesawSwitchOperation", {"Kind": "ZoomSeesaw", "Direction": "Tele", "Speed": 1})
        for step in steps:
            world.simulator("POST", "clock", {"step_ms": step})
        seen.append(world.simulator("GET", "state"))
    assert seen[0] == seen[1] == seen[2]
