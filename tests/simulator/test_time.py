"""What time does to the camera. Every test pauses the clock and steps it."""

import pytest

SECOND = 1000
MINUTE = 60 * SECOND


@pytest.fixture
def camera(world):
    assert world.simulator("POST", "reset", {"paused": True}) == (200, {})
    return Camera(world)


class Camera:
    def __init__(self, world):
        self.world = world

    def step(self, ms):
        code, reply = self.world.simulator("POST", "clock", {"step_ms": ms})
        assert code == 200, reply

    def patch(self, **members):
        code, reply = self.world.simulator("PATCH", "state", members)
        assert code == 200, reply

    def state(self):
        return self.world.simulator("GET", "state")[1]

    def status(self):
        return self.world.command("GetCamStatus")["Response"]["Data"]

    def do(self, command, params=None):
        return self.world.command(command, params)["Response"]["Result"]


def test_a_paused_clock_stands_still_and_a_running_one_runs(camera):
    assert camera.status()["TC"] == camera.status()["TC"] == camera.state()["timecode"]["value"]
    camera.step(1010)
    assert camera.state()["clock"]["date"] == "2026-05-04T09:30:01"


def test_time_code_runs_freely_or_with_the_recording(camera):
    camera.patch(timecode={"value": "10:00:00.00"})
    camera.step(1001 * 10)
    assert camera.status()["TC"] == "10:00:10.00"
    camera.patch(timecode={"run": "RecRun"})
    camera.step(10 * SECOND)
    assert camera.status()["TC"] == "10:00:10.00"
    camera.do("SetCamCtrl", {"CamCtrl": "Rec"})
    camera.step(10 * SECOND)
    assert camera.status()["TC"] == "10:00:19.29"


def test_time_code_without_drop_frame(camera):
    camera.patch(timecode={"value": "00:00:59:29", "drop_frame": False})
    camera.step(40)
    assert camera.status()["TC"] == "00:01:00:00"


def test_recording_uses_up_the_card_and_makes_a_clip(camera):
    assert camera.do("SetCamCtrl", {"CamCtrl": "Rec"}) == "Success"
    camera.step(90 * SECOND)
    assert (camera.status()["SlotA"]["Remain"], camera.state()["slots"]["A"]["remain"]) == ("93", 93.5)
    assert camera.do("SetCamCtrl", {"CamCtrl": "Stop"}) == "Success"
    clips = camera.world.command("GetClipInfo", {"Slot": "A", "StartIndexNo": 13, "ClipNum": 5})
    assert clips["Response"]["Data"]["ClipInfo"] == [{
        "IndexNo": 13, "Name": "A001C013", "TC": "01:00:00.00-01:01:29.29",
        "DateTime": "2026-05-04 T09:31:30", "OKMark": "NoMark", "AspectRaotp": "16:9",
        "Edit": "Enable"}]


def test_a_full_card_hands_over_to_the_other_one(camera):
    camera.patch(slots={"A": {"remain": 1}, "B": {"remain": 1}})
    camera.do("SetCamCtrl", {"CamCtrl": "Rec"})
    camera.step(70 * SECOND)
    status = camera.status()
    assert (status["Status"], status["SlotA"]["Status"], status["SlotB"]["Status"]) == (
        "Rec", "NoSelect", "SelectRec")
    assert (status["SlotA"]["ClipNum"], status["SlotA"]["RemainWarn"]) == (13, 2)
    assert (status["SlotB"]["Remain"], status["SlotB"]["RemainWarn"]) == ("0", 1)
    camera.step(60 * SECOND)
    assert (camera.status()["Status"], camera.status()["SlotB"]["ClipNum"]) == ("Stop", 34)


def test_the_recording_modes(camera):
    camera.patch(recording={"mode": "Interval", "status": "Standby"})
    camera.do("SetCamCtrl", {"CamCtrl": "Rec"})
    seen = []
    for _ in range(6):
        seen.append(camera.status()["Status"])
        camera.step(SECOND)
    assert seen == ["Rec", "RecPause", "RecPause", "RecPause", "RecPause", "Rec"]
    camera.do("SetCamCtrl", {"CamCtrl": "Stop"})
    assert camera.status()["Status"] == "Standby"
    camera.patch(recording={"mode": "Frame"})
    camera.do("SetCamCtrl", {"CamCtrl": "Rec"})
    camera.step(200)
    assert camera.status()["Status"] == "RecPause"
    camera.do("SetCamCtrl", {"CamCtrl": "Stop"})
    camera.patch(recording={"mode": "Pre"}, timecode={"value": "10:00:00.00"})
    camera.do("SetCamCtrl", {"CamCtrl": "Rec"})
    camera.step(SECOND)
    camera.do("SetCamCtrl", {"CamCtrl": "Stop"})
    assert camera.state()["slots"]["A"]["clips"][-1]["first"] == "09:59:55.01"


# What the battery reports, a time, what it reports after that time.
@pytest.mark.parametrize("before, minutes, level, value", [
    ({"info": "Time", "level": 5, "value": 137}, 30, "4", "107"),
    ({"info": "Capacity", "level": 5, "value": 100}, 70, "3", "50"),
    ({"info": "Voltage", "level": 5, "value": 166}, 25, "5", "156"),
    ({"info": "Time", "level": 1, "value": 2}, 10, "0", "0"),
])
def test_the_battery_empties(camera, before, minutes, level, value):
    camera.patch(battery=before)
    camera.step(minutes * MINUTE)
    assert camera.status()["Battery"] == {"Info": before["info"], "Level": level, "Value": value}


def test_an_empty_battery_ends_the_recording(camera):
    camera.patch(battery={"value": 1})
    camera.do("SetCamCtrl", {"CamCtrl": "Rec"})
    camera.step(MINUTE)
    assert camera.status()["Status"] == "Stop"
    assert camera.status()["SlotA"]["ClipNum"] == 13


def phases(camera, steps, step=100):
    """The upload's phases one after the other, without repetition."""
    seen = []
    for _ in range(steps):
        phase = camera.status()["Ftp"]["Phase1"]
        if seen[-1:] != [phase]:
            seen.append(phase)
        camera.step(step)
    return seen


BEGIN = ["START", "OCCUPY_SLOT", "CLEAR", "MOUNT", "PARSE", "TRANS"]
END = ["UNMOUNT", "RELEASE_SLOT", "OFF"]


def test_an_upload_asks_twice_and_goes_through_its_phases(camera):
    camera.patch(upload={"servers": {"FTP3": {"asks_to_overwrite": True}}})
    assert camera.do("SetWebFtp3UploadASelect", {"block0": 5}) == "Success"
    assert phases(camera, 50) == [*BEGIN, "TRUST"]
    camera.step(60 * MINUTE)
    ftp = camera.status()["Ftp"]
    assert (ftp["Phase1"], ftp["Server"], ftp["TotalNo"], ftp["NowNo"]) == ("TRUST", "FTP3", 2, 0)
    assert camera.do("WebFtpOperateResponse", {"Response": 1}) == "Success"
    assert camera.status()["Ftp"]["Phase1"] == "PROMPT"
    camera.step(60 * MINUTE)
    assert camera.do("WebFtpOperateResponse", {"Response": 1}) == "Success"
    ftp = camera.status()["Ftp"]
    assert (ftp["Phase1"], ftp["NowNo"], ftp["Percent"], ftp["Remain"], ftp["Message"]) == (
        "PUT_FILE", 1, 0, 6, "A001C001.MOV")
    camera.step(4500)
    ftp = camera.status()["Ftp"]
    assert (ftp["NowNo"], ftp["Percent"], ftp["Remain"], ftp["Message"]) == (2, 75, 2, "A001C003.MOV")
    assert phases(camera, 40) == ["PUT_FILE", *END]
    assert camera.do("WebFtpOperateResponse", {"Response": 1}) == "DisableError"
    assert camera.status()["Ftp"]["Err"] == 0


# What the server or the user does, phases after TRANS, the error that is reported.
@pytest.mark.parametrize("server, answer, after, error", [
    ({"answer": "Unreachable"}, None, END, 2),
    ({"answer": "LoginRefused"}, None, END, 3),
    ({"trusted": True, "answer": "NoSpace"}, None, ["PUT_FILE", *END], 4),
    ({}, 0, END, 1),
    ({"trusted": True, "asks_to_overwrite": True}, 0, END, 0),
])
def test_an_upload_that_fails(camera, server, answer, after, error):
    camera.patch(upload={"servers": {"FTP1": server}})
    camera.do("SetWebFtpUploadAll", {"Server": 0, "Slot": 0})
    camera.step(4200)
    if answer is not None:
        assert camera.status()["Ftp"]["Phase1"] in ("TRUST", "PROMPT")
        assert camera.do("WebFtpOperateResponse", {"Response": answer}) == "Success"
    assert phases(camera, 60) == after
    assert camera.status()["Ftp"]["Err"] == error


@pytest.mark.parametrize("key_type, message", [
    (1, "25:4A:6F:94:B9:DE:03:28:4D:72: 97:BC:E1:06:2B:50:75:9A:BF:E4"),
    (2, "25:4A:6F:94:B9:DE:03:28: 4D:72:97:BC:E1:06:2B:50"),
    (3, "25:4A:6F:94: B9:DE:03:28: 4D:72:97:BC: E1:06:2B:50: 75:9A:BF:E4"),
])
def test_keys_of_servers(camera, key_type, message):
    camera.patch(upload={"phase": "TRUST", "files": ["A.MOV"],
                         "servers": {"FTP1": {"key_type": key_type}}})
    ftp = camera.status()["Ftp"]
    assert (ftp["Type"], ftp["Message"]) == (key_type, message)


def test_an_upload_recovers_when_the_network_comes_back(camera):
    camera.patch(upload={"phase": "PUT_FILE", "files": ["A.MOV"]})
    camera.patch(network={"link": False})
    assert phases(camera, 100) == ["PUT_FILE", "RECOVER"]
    camera.patch(network={"link": True})
    assert phases(camera, 90) == ["RECOVER", "RESUME", "PUT_FILE", *END]


def test_an_upload_gives_up_without_a_network(camera):
    camera.patch(upload={"phase": "PUT_FILE", "files": ["A.MOV"]}, network={"link": False})
    camera.step(35 * SECOND)
    assert (camera.status()["Ftp"]["Phase1"], camera.status()["Ftp"]["Err"]) == ("OFF", 5)


def test_a_network_connects_in_three_seconds(camera):
    camera.patch(network={"adaptor": "WLAN_AP", "connected": False})
    camera.step(2990)
    assert camera.status()["NetAdaptorStatus"] == "Connecting"
    camera.step(10)
    assert camera.status()["NetAdaptorStatus"] == "Connected"


def streaming(camera):
    return camera.state()["streaming"]["status"]


def test_streaming_connects_runs_and_reconnects(camera):
    assert camera.do("SetStreamingCtrl", {"Streaming": "On"}) == "Success"
    assert streaming(camera) == "Connecting"
    camera.step(2 * SECOND)
    assert streaming(camera) == "Running"
    camera.patch(network={"link": False})
    camera.step(10 * SECOND)
    assert streaming(camera) == "Reconnecting"
    camera.patch(network={"link": True})
    camera.step(5 * SECOND)
    assert streaming(camera) == "Running"
    assert camera.do("SetStreamingBitrate", {"Bitrate": "5.0M"}) == "Success"
    assert streaming(camera) == "Reconnecting"
    camera.step(2 * SECOND)
    assert streaming(camera) == "Running"
    assert camera.do("SetStreamingCtrl", {"Streaming": "Off"}) == "Success"
    assert streaming(camera) == "Stopped"


def test_a_server_that_cannot_be_reached_keeps_streaming_connecting(camera):
    camera.patch(streaming={"reachable": False})
    camera.do("SetStreamingCtrl", {"Streaming": "On"})
    camera.step(MINUTE)
    assert streaming(camera) == "Connecting"


def ntp(camera):
    return camera.world.command("GetNTPStatus")["Response"]["Data"]["Status"]


def test_ntp_looks_for_a_new_server_and_sets_the_time_code(camera):
    assert ntp(camera) == "Syncronized"
    camera.do("SetNTPServer", {"Address": "10.1.0.1"})
    assert ntp(camera) == "Not Syncronized"
    camera.step(4990)
    assert ntp(camera) == "Not Syncronized"
    camera.step(10)
    assert (ntp(camera), camera.status()["TC"]) == ("Syncronized", "09:30:05.00")


def test_ntp_leaves_the_time_code_alone_if_told_so(camera):
    camera.do("SetNTPSettings", {"TcSync": "Off"})
    camera.step(5 * SECOND)
    assert ntp(camera) == "Syncronized"
    assert camera.status()["TC"].startswith("01:00:0")


def test_ntp_loses_a_server(camera):
    camera.patch(ntp={"reachable": False})
    camera.step(9990)
    assert ntp(camera) == "Syncronized"
    camera.step(10)
    assert ntp(camera) == "Not Syncronized"
    camera.patch(ntp={"status": "Master"})
    camera.step(MINUTE)
    assert ntp(camera) == "Master"


def cloud(camera):
    return camera.status()["CloudStreaming"]


LOGIN = {"Username": "studio", "Password": "secret", "ServerURL": "https://cloud.example"}


def test_the_cloud_answers_after_its_delay(camera):
    camera.patch(cloud={"delay_ms": 800})
    for command, params, member in [
            ("SetCldstrmLogin", LOGIN, "LoginStatus"),
            ("SetCldstrmEventListObtain", None, "GetEventListStatus"),
            ("SetCldstrmStreamInfoObtain", {"EventID": 1}, "GetStreamInfoStatus")]:
        assert camera.do(command, params) == "Success"
        camera.step(790)
        assert cloud(camera)[member] == "Doing"
        camera.step(10)
        assert (cloud(camera)[member], cloud(camera)["Error"]) == ("Finished", "None")
    assert camera.do("SetCldstrmStreamInfoToStrmsrv", {"EventID": 1, "StrmsrvID": 2}) == "Success"
    server = camera.world.command("GetStreamingServerSettings", {"ID": 2})["Response"]["Data"]
    assert server["Rtmp"] == {"DstUrl": "rtmp://ingest.example/live", "StreamKey": "city-7730-bbbb"}


# What is wrong, the login, how long it takes to fail, the error.
@pytest.mark.parametrize("before, login, after, error", [
    ({"cloud": {"service": "Ssl"}}, {}, 500, "Ssl"),
    ({"cloud": {"service": "Timeout"}}, {}, 5000, "Timeout"),
    ({"cloud": {"service": "Authorization"}}, {}, 500, "Authorization"),
    ({"cloud": {"service": "Server"}}, {}, 500, "Server"),
    ({"cloud": {"service": "Url"}}, {}, 500, "Url"),
    ({"cloud": {"service": "Other"}}, {}, 500, "Other"),
    ({"cloud": {"password": "right"}}, {}, 500, "Authorization"),
    ({}, {"Password": ""}, 500, "Authorization"),
    ({}, {"ServerURL": "ftp://cloud.example"}, 500, "Url"),
    ({"network": {"link": False, "connected": False}}, {}, 5000, "Timeout"),
])
def test_a_cloud_login_that_fails(camera, before, login, after, error):
    camera.patch(**before)
    assert camera.do("SetCldstrmLogin", {**LOGIN, **login}) == "Success"
    camera.step(after - 10)
    assert cloud(camera)["LoginStatus"] == "Doing"
    camera.step(10)
    assert (cloud(camera)["LoginStatus"], cloud(camera)["Error"]) == ("Failed", error)


def test_the_cloud_refuses_those_who_are_not_logged_in(camera):
    camera.do("SetCldstrmEventListObtain")
    camera.step(500)
    assert cloud(camera) == {"LoginStatus": "Idle", "GetEventListStatus": "Failed",
                             "GetStreamInfoStatus": "Idle", "Error": "Authorization"}


def test_a_fast_clock(world):
    """Not stepped: a thousand times as fast as the machine's clock."""
    world.simulator("POST", "clock", {"speed": 1000})
    begin = world.simulator("GET", "clock")[1]["uptime_ms"]
    while world.simulator("GET", "clock")[1]["uptime_ms"] < begin + 10 * SECOND:
        pass
    assert world.simulator("GET", "clock")[1]["speed"] == 1000


@pytest.mark.parametrize("change, error", [
    ({"step_ms": 15}, "step_ms: must be a multiple of 10 from 0 to 86400000"),
    ({"step_ms": -10}, "step_ms: must be a multiple of 10 from 0 to 86400000"),
    ({"step_ms": 86400010}, "step_ms: must be a multiple of 10 from 0 to 86400000"),
    ({"step_ms": "10"}, "step_ms: must be a multiple of 10 from 0 to 86400000"),
    ({"speed": 0}, "clock.speed: must be a number from 0.1 to 1000"),
    ({"paused": 1}, "clock.paused: must be true or false"),
    ({"stop": True}, "stop: no such member"),
])
def test_a_clock_that_makes_no_sense(camera, change, error):
    before = camera.state()
    assert camera.world.simulator("POST", "clock", change) == (400, {"error": error})
    assert camera.state() == before


def test_a_whole_day_passes_at_once(camera):
    camera.step(86400000)
    assert camera.state()["clock"]["date"] == "2026-05-05T09:30:00"
