"""Every control: what the status report shows after it, and when it cannot be used."""

import pytest

OPERATED = "SetWebKeyEvent"


def status(world):
    return world.command("GetCamStatus")["Response"]["Data"]


def key(world, kind, name):
    return world.command(OPERATED, {"Kind": kind, "Key": name})["Response"]["Result"]


def patch(world, members):
    code, reply = world.simulator("PATCH", "state", members)
    assert code == 200, reply


def at(data, path):
    for name in path.split("."):
        data = data[name]
    return data


# Each row: what was before (a patch), kind, key, member of the status report, its value after it.
# Without a patch it is the camera as after the start: F2.8, 0 dB, 1/100, 3200K preset, MF at 2.5 m.
KEYS = [
    ({}, "Fullauto", "On", "Fullauto", "On"),
    ({"full_auto": True}, "Fullauto", "Off", "Fullauto", "Off"),
    ({"iris": {"mode": "Auto"}}, "Iris", "Manual", "Iris.Status", "Manual"),
    ({}, "Iris", "Auto", "Iris.Status", "Auto"),
    ({}, "Iris", "Open1", "Iris.Letter", "F2.5"),
    ({}, "Iris", "Open2", "Iris.Letter", "F2.0"),
    ({}, "Iris", "Open3", "Iris.Letter", "OPEN"),
    ({}, "Iris", "Close1", "Iris.Letter", "F3.2"),
    ({}, "Iris", "Close2", "Iris.Letter", "F4.0"),
    ({}, "Iris", "Close3", "Iris.Letter", "F5.6"),
    ({"iris": {"stop": "F22"}}, "Iris", "Close2", "Iris.Letter", "CLOSE"),
    ({"iris": {"stop": "F22"}}, "Iris", "PushAuto", "Iris.Letter", "F2.8"),
    ({"gain": {"mode": "Alc"}}, "Gain", "Manual", "Gain.Status", "ManualL"),
    ({}, "Gain", "Alc", "Gain.Status", "Alc"),
    ({}, "Gain", "Lolux", "Gain", {"Status": "Lolux", "Letter": "LOLUX"}),
    ({"gain": {"mode": "ManualH"}}, "Gain", "L", "Gain", {"Status": "ManualL", "Letter": "0dB"}),
    ({}, "Gain", "M", "Gain", {"Status": "ManualM", "Letter": "9dB"}),
    ({}, "Gain", "H", "Gain", {"Status": "ManualH", "Letter": "18dB"}),
    ({}, "Gain", "Up1", "ButtonLetter.Gain.L", "3dB"),
    ({}, "Gain", "Down1", "Gain.Letter", "-3dB"),
    ({"gain": {"L": 30}}, "Gain", "Up1", "Gain.Letter", "30dB"),
    ({"gain": {"L": -6}}, "Gain", "Down1", "Gain.Letter", "-6dB"),
    ({"iris": {"mode": "Auto"}}, "AeLevel", "AeLevelUp", "AeLevel",
     {"Status": "AeOn", "Letter": "+0.3"}),
    ({"iris": {"mode": "Auto"}}, "AeLevel", "Down", "AeLevel.Letter", "-0.3"),
    ({"iris": {"mode": "Auto"}, "ae": {"level": 6}}, "AeLevel", "Up", "AeLevel.Letter", "+2.0"),
    ({}, "Shutter", "Off", "Shutter", {"Status": "Off", "Letter": "OFF"}),
    ({"shutter": {"mode": "Off"}}, "Shutter", "Manual", "Shutter",
     {"Status": "Manual", "Letter": "1/100"}),
    ({}, "Shutter", "Step", "Shutter", {"Status": "Step", "Letter": "1/100"}),
    ({}, "Shutter", "Variable", "Shutter", {"Status": "Variable", "Letter": "1/60.2"}),
    ({}, "Shutter", "Eei", "Shutter.Status", "Eei"),
    ({}, "Shutter", "Faster", "Shutter.Letter", "1/120"),
    ({}, "Shutter", "Slower", "Shutter.Letter", "1/60"),
    ({"shutter": {"mode": "Variable"}}, "Shutter", "Faster", "Shutter.Letter", "1/60.3"),
    ({"shutter": {"mode": "Variable", "variable_hz": 200}}, "Shutter", "Slower",
     "Shutter.Letter", "1/199"),
    ({"white_balance": {"mode": "Faw"}}, "Whb", "Manual", "Whb.Status", "Preset"),
    ({}, "Whb", "Faw", "Whb.Status", "Faw"),
    ({}, "Whb", "Faw", "Whb.Letter", "5600K"),
    ({"white_balance": {"mode": "A"}}, "Whb", "Preset", "Whb.Letter", "3200K"),
    ({}, "Whb", "A", "Whb.Letter", "4300K"),
    ({"light": {"kelvin": 2900}}, "Whb", "B", "Whb.Letter", "5600K"),
    ({"light": {"kelvin": 2900}, "white_balance": {"mode": "B"}}, "Whb", "Adjust",
     "ButtonLetter.Whb.B", "2900K"),
    ({}, "Whb", "WhPaintRP", "Whb.WhPaintRPosition", 1),
    ({}, "Whb", "WhPaintRM", "Whb.WhPaintRLetter", "R: -1"),
    ({}, "Whb", "WhPaintBP", "Whb.WhPaintBLetter", "B: +1"),
    ({"white_balance": {"paint_blue": -32}}, "Whb", "WhPaintBM", "Whb.WhPaintBPosition", -32),
    ({}, "Focus", "Auto", "Focus.Status", "AF"),
    ({"focus": {"mode": "Auto"}}, "Focus", "Manual", "Focus.Status", "MF"),
    ({"face_detection": True}, "Focus", "Auto", "Focus.Status", "AFFace"),
    ({}, "Focus", "Far2", "Focus.Letter", "2.6m"),
    ({}, "Focus", "Far3", "Focus.Letter", "3.3m"),
    ({}, "Focus", "Near3", "Focus.Letter", "2.0m"),
    ({}, "Focus", "Infinity", "Focus.Letter", "INF"),
    ({"focus": {"unit": "ft"}}, "Focus", "Near1", "Focus.Letter", "8.2ft"),
    ({}, "Focus", "PushAuto", "Focus.Status", "MFOnePush"),
    ({}, "MasterBlack", "Up1", "MasterBlack.Letter", "+1"),
    ({}, "MasterBlack", "Up2", "MasterBlack.Letter", "+3"),
    ({}, "MasterBlack", "Up3", "MasterBlack.Letter", "+10"),
    ({}, "MasterBlack", "Down1", "MasterBlack.Letter", "-1"),
    ({}, "MasterBlack", "Down2", "MasterBlack.Letter", "-3"),
    ({"master_black": {"level": -45}}, "MasterBlack", "Down3", "MasterBlack.Letter", "-50"),
    ({}, "Detail", "Up", "Detail.Letter", "+1"),
    ({"detail": {"level": -10}}, "Detail", "Down", "Detail.Letter", "-10"),
    ({}, "Disptv", "Off", "Disptv", "Off"),
    ({"display": {"on": False}}, "Disptv", "On", "Disptv", "On"),
    ({}, "Disptv", "Sdi", "CharMix.Sdi", "Off"),
    ({}, "Disptv", "Hdmi", "CharMix.Hdmi", "On"),
    ({}, "Disptv", "Video", "CharMix.Video", "On"),
    ({}, "Menu", "Menu", "Enable.Disptv.Up", 1),
    ({"display": {"menu": True}}, "Disptv", "Cancel", "Enable.Disptv.Up", 0),
    ({"iris": {"mode": "Auto"}}, "User", "Sw8", "Iris.Status", "AutoAELock"),
    ({"iris": {"mode": "Auto"}}, "User", "Sw9", "AeLevel.Status", "AeOnFace"),
    ({}, "User", "Sw6", "Mode", "Play"),
    ({}, "Rec", "Start", "Status", "Rec"),
    ({}, "Rec", "Start", "SlotA.Status", "SelectRec"),
    ({"recording": {"dual": True}}, "Rec", "Start", "SlotB.Status", "NoSelectRec"),
    ({"recording": {"status": "Rec"}}, "Rec", "Stop", "SlotA.ClipNum", 13),
    ({"recording": {"status": "Rec", "mode": "Clip"}}, "Rec", "Stop", "Status", "RecPause"),
]


@pytest.mark.parametrize("before, kind, name, member, value", KEYS)
def test_a_key_shows_in_the_status(world, before, kind, name, member, value):
    patch(world, {"clock": {"paused": True}, **before})
    assert key(world, kind, name) == "Success"
    assert at(status(world), member) == value


ZOOM_KEYS = [("Tele1", 510), ("Tele2", 530), ("Tele3", 590), ("Wide1", 490), ("Wide2", 470),
             ("Wide3", 410)]


@pytest.mark.parametrize("name, position", ZOOM_KEYS)
def test_a_zoom_key_moves_the_zoom_in_time(world, name, position):
    patch(world, {"clock": {"paused": True}, "zoom": {"position": 500}})
    assert key(world, "Zoom", name) == "Success"
    assert status(world)["ZoomStatus"] == "Zoom"
    world.simulator("POST", "clock", {"step_ms": 1000})
    assert (status(world)["ZoomStatus"], status(world)["ZoomPosition"]) == ("Idol", str(position))


# Slider kind, position, member, value.
SLIDERS = [
    ("FocusBar", 0, "Focus.Letter", "0.5m"),
    ("FocusBar", 999, "Focus.Letter", "INF"),
    ("IrisBar", 0, "Iris.Letter", "OPEN"),
    ("IrisBar", 999, "Iris.Letter", "CLOSE"),
    ("IrisBar", 500, "Iris.Letter", "F5.6"),
    ("WhPaintR", -12, "Whb.WhPaintRPosition", -12),
    ("WhPaintR", 500, "Whb.WhPaintRPosition", 32),
    ("WhPaintB", 7, "Whb.WhPaintBLetter", "B: +7"),
]


@pytest.mark.parametrize("kind, position, member, value", SLIDERS)
def test_a_slider_shows_in_the_status(world, kind, position, member, value):
    reply = world.command("SetWebSliderEvent", {"Kind": kind, "Position": position})
    assert reply["Response"]["Result"] == "Success"
    assert at(status(world), member) == value


def test_the_paint_field_runs_around_its_middle(world):
    world.command("SetWebXYFieldEvent", {"Kind": "WhPaintRB", "XPosition": 32, "YPosition": 0})
    white = status(world)["Whb"]
    assert (white["WhPaintRPosition"], white["WhPaintBPosition"]) == (0, -32)
    assert (white["WhPaintRScale"], white["WhPaintBScale"]) == (32, 32)


# Seesaw, direction, speed, member, what it holds after a second, what it holds at the end.
SEESAWS = [
    ("IrisSeesaw", "Close", 3, "Iris.Letter", "F4.0", "CLOSE"),
    ("IrisSeesaw", "Open", 3, "Iris.Letter", "F2.0", "OPEN"),
    ("MasterBlackSeesaw", "Up", 5, "MasterBlack.Letter", "+5", "+50"),
    ("MasterBlackSeesaw", "Down", 5, "MasterBlack.Letter", "-5", "-50"),
    ("FocusSeesaw", "Far", 5, "Focus.Letter", "5.0m", "INF"),
    ("FocusSeesaw", "Near", 5, "Focus.Letter", "1.7m", "0.5m"),
    ("ZoomSeesaw", "Tele", 5, "ZoomPosition", "600", "999"),
    ("ZoomSeesaw", "Wide", 5, "ZoomPosition", "400", "0"),
]


@pytest.mark.parametrize("kind, direction, speed, member, after_a_second, at_the_end", SEESAWS)
def test_a_seesaw_runs_until_it_is_stopped(world, kind, direction, speed, member, after_a_second,
                                           at_the_end):
    patch(world, {"clock": {"paused": True}, "zoom": {"position": 500}})
    tilt = {"Kind": kind, "Direction": direction, "Speed": speed}
    assert world.command("SeesawSwitchOperation", tilt)["Response"]["Result"] == "Success"
    world.simulator("POST", "clock", {"step_ms": 1000})
    assert at(status(world), member) == after_a_second
    world.command("SeesawSwitchOperation", {**tilt, "Direction": "Stop"})
    world.simulator("POST", "clock", {"step_ms": 5000})
    assert at(status(world), member) == after_a_second
    world.command("SeesawSwitchOperation", tilt)
    world.simulator("POST", "clock", {"step_ms": 60000})
    assert at(status(world), member) == at_the_end


def test_the_zoom_switch_and_an_absolute_position(world):
    patch(world, {"clock": {"paused": True}})
    world.command("ZoomSwitchOperation", {"Direction": "Tele", "Speed": 10})
    world.simulator("POST", "clock", {"step_ms": 500})
    world.command("ZoomSwitchOperation", {"Direction": "Stop", "Speed": 0})
    assert status(world)["ZoomPosition"] == "100"
    world.command("SetZoomCtrl", {"Position": 600})
    world.simulator("POST", "clock", {"step_ms": 1000})
    assert (status(world)["ZoomPosition"], status(world)["ZoomDisplayValue"]) == ("600", 59)
    world.command("SetZoomCtrl", {"Position": 5000})
    world.simulator("POST", "clock", {"step_ms": 1000})
    assert status(world)["ZoomPosition"] == "999"


def test_the_exposure_follows_the_light_until_it_is_locked(world):
    patch(world, {"clock": {"paused": True}, "full_auto": True})
    bright = {"light": {"ev": 13, "kelvin": 7000}}
    assert status(world)["Iris"]["Letter"] == "F3.5"  # the shutter is open at 1/60
    patch(world, {**bright, "ae": {"lock": True}})
    locked = status(world)
    assert (locked["Iris"], locked["Whb"]["Status"]) == (
        {"Status": "AutoAELock", "Letter": "F3.5"}, "FawAELock")
    assert (locked["Gain"]["Status"], locked["Shutter"]["Status"]) == ("AlcAELock", "EeiAELock")
    patch(world, {"ae": {"lock": False}})
    assert (status(world)["Iris"]["Letter"], status(world)["Whb"]["Letter"]) == ("F10", "7000K")
    patch(world, {"light": {"ev": 4}})
    assert (status(world)["Iris"]["Letter"], status(world)["Gain"]["Letter"]) == ("F1.6", "24dB")


# What the camera is doing, a control that cannot be used then, its flag.
DISABLED = [
    ({"full_auto": True}, "Iris", "Close1", "Iris.Close1"),
    ({"full_auto": True}, "Gain", "Up1", "Gain.Up1"),
    ({"full_auto": True}, "Shutter", "Off", "Shutter.Off"),
    ({"full_auto": True}, "Whb", "A", "Whb.A"),
    ({"iris": {"mode": "Auto"}}, "Iris", "Open3", "Iris.Open3"),
    ({"gain": {"mode": "Alc"}}, "Gain", "Down1", "Gain.Down1"),
    ({"shutter": {"mode": "Off"}}, "Shutter", "Faster", "Shutter.Faster"),
    ({"white_balance": {"mode": "Faw"}}, "Whb", "WhPaintRP", "Whb.WhPaintBM"),
    ({}, "Whb", "Adjust", "Whb.Adjust"),
    ({"focus": {"mode": "Auto"}}, "Focus", "Near2", "Focus.Near2"),
    ({}, "AeLevel", "Up", "AeLevel.AeLevelUp"),
    ({"mode": "Play"}, "Iris", "Auto", "Iris.Auto"),
    ({"mode": "Thumbnail"}, "Zoom", "Tele1", "Zoom.Tele1"),
    ({"suspended": True}, "Disptv", "Off", "Disptv.Off"),
    ({}, "Disptv", "Up", "Disptv.Up"),
    ({"recording": {"status": "Rec"}}, "Menu", "Menu", "Disptv.Menu"),
    ({}, "User", "Sw11", "User.Sw11"),
    ({"slots": {"A": {"card": "None"}, "B": {"card": "None"}}}, "User", "Sw7", "User.Sw7"),
    ({"upload": {"phase": "TRUST", "files": ["A.MOV"]}}, "User", "Sw6", "User.Sw6"),
]


@pytest.mark.parametrize("before, kind, name, flag", DISABLED)
def test_a_control_that_cannot_be_used_shows_0_and_is_disabled(world, before, kind, name, flag):
    patch(world, {"clock": {"paused": True}, **before})
    assert at(status(world)["Enable"], flag) == 0
    _, state = world.simulator("GET", "state")
    assert key(world, kind, name) == "DisableError"
    assert world.simulator("GET", "state") == (200, state)


def test_what_is_not_disabled_is_enabled(world):
    enable = status(world)["Enable"]
    off = [f"{group}.{name}" for group, flags in enable.items() for name, flag in flags.items()
           if not flag]
    assert off == ["AeLevel.Status", "AeLevel.AeLevelUp", "AeLevel.AeLevelDown", "Whb.Adjust",
                   "Zoom.Preset1", "Zoom.Preset2", "Zoom.Preset3", "User.Sw11", "Disptv.Set",
                   "Disptv.Cancel", "Disptv.Up", "Disptv.Left", "Disptv.Down", "Disptv.Right"]


def test_a_zoom_preset_can_be_used_once_it_is_set(world):
    world.command("SetPresetZoomPosition", {"ID": "B", "Position": 321})
    zoom = status(world)["Enable"]["Zoom"]
    assert (zoom["Preset1"], zoom["Preset2"], zoom["Preset3"]) == (0, 1, 0)


# What makes recording impossible.
NO_RECORDING = [
    {"slots": {"A": {"card": "None"}, "B": {"card": "Invalid"}}},
    {"slots": {"A": {"protect": True}, "B": {"protect": True}}},
    {"slots": {"A": {"remain": 0}, "B": {"remain": 0}}},
    {"mode": "Play"},
    {"suspended": True},
    {"battery": {"value": 0}},
    {"upload": {"phase": "PUT_FILE", "files": ["A.MOV"]}},
]


@pytest.mark.parametrize("before", NO_RECORDING)
def test_recording_is_disabled(world, before):
    patch(world, {"clock": {"paused": True}, **before})
    assert key(world, "Rec", "Start") == "DisableError"
    assert world.command("SetCamCtrl", {"CamCtrl": "Rec"})["Response"]["Result"] == "DisableError"


def test_tally(world):
    lamp = lambda: world.simulator("GET", "state")[1]["tally"]  # noqa: E731
    result = lambda command, params: world.command(command, params)["Response"]["Result"]  # noqa: E731
    assert result("SetTallyLampCtrl", {"Sw": "On"}) == "DisableError"
    assert result("SetTallyLampPriority", {"Priority": "Web"}) == "Success"
    assert result("SetTallyLampCtrl", {"Sw": "On"}) == "Success"
    assert lamp() == {"lamp": True, "control": "Web", "studio": "Off"}
    assert result("SetTallyLampPriority", {"Priority": "Camera"}) == "Success"
    assert result("SetTallyControlWithPriority", {"Sw": "Off"}) == "Success"
    assert result("SetStudioTally", {"Indication": "Preview"}) == "Success"
    assert lamp() == {"lamp": False, "control": "Web", "studio": "Preview"}
    heartbeat = world.command("HeartbeatConfirmation", session=None)["Response"]["Data"]
    assert heartbeat["StudioTally"] == "Preview"


def test_return_audio_changes_the_bit_rates(world):
    def offered():
        params = {"Type": "UDP", "Resolution": "1280x720", "Framerate": "60p"}
        rates = world.command("AvailableStreamingBitrateSettings", params)["Response"]["Data"]
        return [rate for rate, is_offered in rates["AvailableBitrate"].items() if is_offered]

    assert offered() == ["3.0M", "5.0M", "8.0M", "12M"]
    assert world.command("SetIFBCtrl", {"Streaming": "Start"})["Response"]["Result"] == "Success"
    assert offered() == ["3.0M"]
    patch(world, {"ifb": {"reachable": False}})
    assert offered() == ["3.0M", "5.0M", "8.0M", "12M"]


def test_resume_wakes_the_camera(world):
    patch(world, {"suspended": True})
    assert world.command("SystemRequest", {"Request": "Resume"})["Response"]["Result"] == "Success"
    assert key(world, "Iris", "Auto") == "Success"


def test_the_monitor_and_the_page_show_in_the_state(world):
    world.command("MonitorStart")
    world.command("PageChange", {"Page": 3})
    _, state = world.simulator("GET", "state")
    assert (state["monitor"], state["page"]) == (True, 3)
    world.command("JpegEncode", {"Operate": "Stop"})
    assert world.simulator("GET", "state")[1]["monitor"] is False


def test_gps(world):
    patch(world, {"gps": {"antenna": "0", "location": "no fix"}})
    assert world.command("GetGPSInfo")["Response"]["Data"] == {"AntennaLevel": "0",
                                                               "Location": "no fix"}
    patch(world, {"model": "RV110"})
    assert world.command("GetGPSInfo")["Response"]["Result"] == "DisableError"


# Fields of the state, a value, and the status report's member that shows it.
REPORTED = [
    ("mode", "USB", "Mode"), ("mode", "EditMetadata", "Mode"),
    ("recording.mode", "Interval", "RecMode"), ("recording.mode", "Frame", "RecMode"),
    ("recording.aspect", "4:3", "AspectRatio"), ("recording.status", "Standby", "Status"),
    ("battery.info", "Capacity", "Battery.Info"),
    ("upload.second_job", "RESUME", "Ftp.Phase2"), ("upload.second_job", "?????", "Ftp.Phase2"),
    ("cloud.error", "Other", "CloudStreaming.Error"), ("cloud.error", "Ssl", "CloudStreaming.Error"),
    ("cloud.login", "Failed", "CloudStreaming.LoginStatus"),
    ("user.Sw3.label", "Peaking", "ButtonLetter.User.Sw3"),
    ("user.LensRet.label", "Return", "ButtonLetter.User.LenzRet"),
]


@pytest.mark.parametrize("path, value, member", REPORTED)
def test_a_field_of_the_state_shows_in_the_status(world, path, value, member):
    members = value
    for name in reversed(path.split(".")):
        members = {name: members}
    patch(world, {"clock": {"paused": True}, **members})
    assert at(status(world), member) == value


# Adaptor, connected, status and type as reported.
ADAPTORS = [
    ("Off", False, "Off", "Unknown"), ("None", False, "None", "Unknown"),
    ("Mismatch", False, "Mismatch", "Unknown"),
    ("WLAN_AP", False, "Connecting", "WLAN_AP"), ("WLAN_AP", True, "Connected", "WLAN_AP"),
    ("WLAN_P2P", False, "Connecting", "WLAN_P2P"), ("WLAN_P2P", True, "Connected", "WLAN_P2P"),
    ("Ethernet", False, "Connecting", "Ethernet"), ("Ethernet", True, "Connected", "Ethernet"),
    ("Cellular", False, "Connecting", "Cellular"), ("Cellular", True, "Connected", "Cellular"),
]


@pytest.mark.parametrize("adaptor, connected, reported, kind", ADAPTORS)
def test_network_adaptors(world, adaptor, connected, reported, kind):
    patch(world, {"clock": {"paused": True},
                  "network": {"adaptor": adaptor, "connected": connected}})
    data = status(world)
    assert (data["NetAdaptorStatus"], data["NetAdaptorType"]) == (reported, kind)


# Card, slot status as reported.
@pytest.mark.parametrize("card, reported", [("None", "NoCard"), ("Ok", "NoSelect"),
                                            ("Invalid", "Invalid"), ("Unknown", "Unknown")])
def test_cards(world, card, reported):
    patch(world, {"slots": {"B": {"card": card}}})
    assert status(world)["SlotB"]["Status"] == reported


def test_a_remaining_time_that_is_unknown(world):
    patch(world, {"slots": {"A": {"remain": None}}})
    assert status(world)["SlotA"]["Remain"] == "-1"


@pytest.mark.parametrize("model", ["RV130/140", "RV110", "RV120", "RV130", "RV140", "RV150",
                                   "RV160", "RV170", "RV180", "RV190", "RV210", "RV220"])
def test_models(world, model):
    patch(world, {"model": model})
    assert world.command("GetSystemInfo")["Response"]["Data"]["Model"] == model
    starts = world.command("SetStreamingCtrl", {"Streaming": "On"})["Response"]["Result"]
    assert starts == ("Success" if model in ("RV130", "RV140") else "DisableError")


@pytest.mark.parametrize("firmware, cloud, audio", [("1.02", "DisableError", "DisableError"),
                                                    ("1.04", "DisableError", "Success"),
                                                    ("1.10", "Success", "Success")])
def test_firmware(world, firmware, cloud, audio):
    patch(world, {"firmware": firmware})
    assert world.command("SetCldstrmLogout")["Response"]["Result"] == cloud
    assert world.command("SetIFBCtrl", {"Streaming": "Start"})["Response"]["Result"] == audio


# What the camera is doing; for each, every flag is compared with what the command does.
MODES = [
    {}, {"full_auto": True}, {"suspended": True}, {"mode": "Thumbnail"}, {"mode": "Play"},
    {"mode": "USB"}, {"iris": {"mode": "Auto"}}, {"gain": {"mode": "Alc"}},
    {"gain": {"mode": "Lolux"}}, {"shutter": {"mode": "Off"}}, {"shutter": {"mode": "Eei"}},
    {"white_balance": {"mode": "Faw"}}, {"white_balance": {"mode": "A"}},
    {"focus": {"mode": "Auto"}}, {"recording": {"status": "Rec"}}, {"display": {"menu": True}},
    {"upload": {"phase": "PUT_FILE", "files": ["A.MOV"]}},
    {"slots": {"A": {"card": "None"}, "B": {"card": "None"}}},
]

# Flags that belong to a whole control, or to the presets of the zoom.
WITHOUT_KEY = {"Status", "Tele", "Wide", "Preset", "Clear", "Preset1", "Preset2", "Preset3"}


@pytest.mark.parametrize("mode", MODES, ids=str)
def test_a_flag_is_0_exactly_if_its_command_is_disabled(world, mode):
    patch(world, {"clock": {"paused": True}, **mode})
    _, before = world.simulator("GET", "state")
    compared = 0
    for kind, flags in status(world)["Enable"].items():
        for name, flag in flags.items():
            if name in WITHOUT_KEY and kind != "Disptv":
                continue
            name = {"LenzRet": "LensRet"}.get(name, name)
            result = key(world, kind, name)
            assert (kind, name, result) == (kind, name, "Success" if flag else "DisableError")
            if flag:
                patch(world, before)
            compared += 1
    assert compared > 80
