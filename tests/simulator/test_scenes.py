"""Scenes: each puts the camera into what it is named after, as the API reports it."""

import pytest

SCENES = ["cards-full", "clips-500", "cloud", "drop-frame", "field", "locked-card", "no-cards",
          "no-streaming", "offline", "pal", "studio", "upload"]


def test_every_scene_is_listed(world):
    assert world.simulator("GET", "scenes") == (200, SCENES)


def reset(world, scene):
    assert world.simulator("POST", "reset", {"scene": scene, "paused": True}) == (200, {})
    return world.command("GetCamStatus")["Response"]["Data"]


def test_studio(world):
    status = reset(world, "studio")
    assert world.command("HeartbeatConfirmation")["Response"]["Data"]["StudioTally"] == "Program"
    assert status["Battery"] == {"Info": "Voltage", "Level": "5", "Value": "162"}
    assert status["CharMix"] == {"Sdi": "Off", "Hdmi": "On", "Video": "Off"}
    assert world.command("GetNTPStatus")["Response"]["Data"] == {
        "Address": "10.1.0.1", "TcSync": "On", "Status": "Syncronized"}
    server = world.command("GetStreamingServerSettings", {"ID": 0})["Response"]["Data"]
    assert server["Type"] == "RTP" and server["Rtp"]["DstAddress"] == "10.1.0.20"


def test_field(world):
    status = reset(world, "field")
    assert status["Battery"] == {"Info": "Time", "Level": "1", "Value": "17"}
    assert status["SlotA"] == {"Status": "Select", "Protect": "Unlock", "Remain": "3",
                               "ClipNum": 48, "RemainWarn": 1}
    assert status["NetAdaptorType"] == "Cellular"
    assert status["Iris"] == {"Status": "Manual", "Letter": "F11"}


def test_no_cards(world):
    status = reset(world, "no-cards")
    empty = {"Status": "NoCard", "Protect": "Unlock", "Remain": "0", "ClipNum": 0, "RemainWarn": 0}
    assert (status["Status"], status["SlotA"], status["SlotB"]) == ("NoCard", empty, empty)
    assert world.command("SetCamCtrl", {"CamCtrl": "Rec"})["Response"]["Result"] == "DisableError"


def test_cards_full(world):
    status = reset(world, "cards-full")
    assert (status["SlotA"]["Remain"], status["SlotA"]["RemainWarn"]) == ("0", 2)
    assert (status["SlotB"]["Remain"], status["SlotB"]["RemainWarn"]) == ("0", 2)
    assert world.command("SetCamCtrl", {"CamCtrl": "Rec"})["Response"]["Result"] == "DisableError"


def test_clips_500(world):
    assert reset(world, "clips-500")["SlotA"]["ClipNum"] == 500
    clips = world.command("GetClipInfo", {"Slot": "A", "StartIndexNo": 1, "ClipNum": 600})
    names = [clip["Name"] for clip in clips["Response"]["Data"]["ClipInfo"]]
    assert len(names) == 500 and names[0] == "A001C001" and names[499] == "A001C500"


def test_upload_waits_with_a_question(world):
    ftp = reset(world, "upload")["Ftp"]
    assert (ftp["Phase1"], ftp["Server"], ftp["TotalNo"], ftp["Type"]) == ("TRUST", "FTP2", 3, 1)
    assert ftp["Message"] == ("65:8A:AF:D4:F9:1E:43:68:8D:B2: "
                              "D7:FC:21:46:6B:90:B5:DA:FF:24")
    assert world.command("WebFtpOperateResponse", {"Response": 1})["Response"]["Result"] == "Success"
    assert world.command("GetCamStatus")["Response"]["Data"]["Ftp"]["Phase1"] == "PUT_FILE"


def test_no_streaming(world):
    reset(world, "no-streaming")
    assert world.command("GetSystemInfo")["Response"]["Data"]["Model"] == "RV150"
    offered = world.command("AvailableStreamingResolutionSettings")["Response"]["Data"]
    assert set(offered["AvailableResolution"].values()) == {0}
    for command, params in [("SetStreamingCtrl", {"Streaming": "On"}),
                            ("SetIFBCtrl", {"Streaming": "Start"}),
                            ("SetCldstrmEventListObtain", None)]:
        assert world.command(command, params)["Response"]["Result"] == "DisableError", command


def test_drop_frame_leaves_out_two_numbers_each_minute(world):
    assert reset(world, "drop-frame")["TC"] == "00:59:58.00"
    world.simulator("POST", "clock", {"step_ms": 62000})
    # 62 s later; no number is left out at the full hour, two are at the next minute.
    assert world.command("GetCamStatus")["Response"]["Data"]["TC"] == "01:00:59.28"
    world.simulator("POST", "clock", {"step_ms": 70})
    assert world.command("GetCamStatus")["Response"]["Data"]["TC"] == "01:01:00.02"


def test_cloud_has_its_event_list(world):
    status = reset(world, "cloud")["CloudStreaming"]
    assert status == {"LoginStatus": "Finished", "GetEventListStatus": "Finished",
                      "GetStreamInfoStatus": "Idle", "Error": "None"}
    assert world.command("GetCldstrmEventList")["Response"]["Data"]["EventNum"] == 3


def test_pal_counts_25_frames_and_offers_its_formats(world):
    assert reset(world, "pal")["TC"] == "10:00:00:00"
    world.simulator("POST", "clock", {"step_ms": 1960})
    assert world.command("GetCamStatus")["Response"]["Data"]["TC"] == "10:00:01:24"
    offered = world.command("AvailableStreamingFramerateSettings", {"Resolution": "1920x1080"})
    rates = offered["Response"]["Data"]["AvailableFramerate"]
    assert [rate for rate, is_offered in rates.items() if is_offered] == ["50i"]


def test_offline(world):
    status = reset(world, "offline")
    assert status["NetAdaptorStatus"] == "Connecting"
    upload = world.command("SetWebFtpUploadAll", {"Server": 0, "Slot": 0})
    assert upload["Response"]["Result"] == "DisableError"


def test_locked_card(world):
    assert reset(world, "locked-card")["SlotA"]["Protect"] == "Lock"
    mark = world.command("SetClipInfo", {"Slot": "A", "IndexNo": 1, "OKMark": "Mark"})
    assert mark["Response"]["Result"] == "DisableError"


@pytest.mark.parametrize("scene", SCENES)
def test_what_a_scene_shows_is_a_scene_itself(world, scene):
    reset(world, scene)
    _, state = world.simulator("GET", "state")
    world.simulator("POST", "reset", {"paused": True})
    assert world.simulator("PATCH", "state", state) == (200, state)


@pytest.mark.parametrize("scene, error", [
    ("nowhere", 'scene: there is no "nowhere"; there are cards-full, clips-500, cloud, drop-frame, '
                "field, locked-card, no-cards, no-streaming, offline, pal, studio, upload"),
    ("../scenes/field", 'scene: there is no "../scenes/field"; there are cards-full, clips-500, '
                        "cloud, drop-frame, field, locked-card, no-cards, no-streaming, offline, "
                        "pal, studio, upload"),
    (5, "scene: must be a text"),
])
def test_a_scene_that_is_not_there_changes_nothing(world, scene, error):
    world.simulator("POST", "clock", {"paused": True})
    before = world.simulator("GET", "state")
    assert world.simulator("POST", "reset", {"scene": scene}) == (400, {"error": error})
    assert world.simulator("GET", "state") == before
