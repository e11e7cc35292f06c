"""Every row of the handler's table of remote events, as the handler sends it and the camera shows it.

The rows come from the description of the API, which tests/api compares with the handler's table.
"""

import json

import pytest
from world import REPOSITORY

SCHEMAS = json.loads((REPOSITORY / "api" / "openapi.json").read_text())["components"]["schemas"]


def rows():
    params = SCHEMAS["SetWebKeyEventRequest"]["properties"]["Request"]["properties"]["Params"]
    keys = {control["properties"]["Kind"]["const"]: control["properties"]["Key"]["enum"]
            for control in params["oneOf"]}
    for kind in SCHEMAS["Kind"]["enum"]:
        for key in keys.get(kind, [""]):  # bars and the field have none
            yield kind, key


ROWS = list(rows())

# What the camera has to be before, so that the control has something to change; by kind, or by kind
# and key where the keys differ.
AUTO_IRIS = {"iris": {"mode": "Auto"}}
MENU = {"display": {"menu": True}}
BEFORE = {
    ("Rec", "Stop"): {"recording": {"status": "Rec"}},
    ("Fullauto", "Off"): {"full_auto": True},
    ("Iris", "Manual"): AUTO_IRIS,
    ("Iris", "PushAuto"): {"iris": {"stop": "F22"}},
    ("Gain", "Manual"): {"gain": {"mode": "Alc"}},
    ("Gain", "L"): {"gain": {"mode": "ManualH"}},
    "AeLevel": AUTO_IRIS,
    ("Shutter", "Manual"): {"shutter": {"mode": "Off"}},
    ("Whb", "Manual"): {"white_balance": {"mode": "Faw"}},
    ("Whb", "Preset"): {"white_balance": {"mode": "A"}},
    ("Whb", "Adjust"): {"white_balance": {"mode": "A"}},
    "Zoom": {"zoom": {"position": 500}},
    ("Focus", "Manual"): {"focus": {"mode": "Auto"}},
    ("Focus", "Far1"): {"focus": {"position": 990}},
    ("Focus", "Near1"): {"focus": {"position": 990}},
    ("User", "Sw8"): AUTO_IRIS,
    ("User", "Sw9"): AUTO_IRIS,
    ("User", "Sw11"): {"user": {"Sw11": {"label": "Peaking"}}},
    ("Disptv", "On"): {"display": {"on": False}},
    **{(kind, key): MENU for kind in ("Disptv", "Menu")
       for key in ("Cancel", "Set", "Up", "Down", "Left", "Right")},
    ("Tally", "Camera"): {"tally": {"control": "Web"}},
    ("Tally", "On"): {"tally": {"control": "Web"}},
    ("Tally", "Off"): {"tally": {"control": "Web", "lamp": True}},
    ("Tally", "OffWeb"): {"tally": {"lamp": True}},
    ("StudioTally", "Off"): {"tally": {"studio": "Program"}},
    ("Streaming", "Stop"): {"streaming": {"status": "Running"}},
    ("IFBStreaming", "Stop"): {"ifb": {"on": True}},
    "ZoomSeesaw": {"zoom": {"position": 500}},
    ("System", "Resume"): {"suspended": True},
}

# Rows that no reply of the handler shows, with the member of the state that does (docs/simulator.md
# names them).
ONLY_IN_THE_STATE = {
    **{("User", f"Sw{number}"): f"user.Sw{number}.on" for number in (1, 2, 3, 4, 5, 10, 11)},
    ("User", "LensRet"): "user.LensRet.on",
    ("Disptv", "Display"): "display.information",
    ("Menu", "Display"): "display.information",
    ("Disptv", "Status"): "display.status_screen",
    ("Menu", "Status"): "display.status_screen",
    ("Tally", "Camera"): "tally.control",
    ("Tally", "Web"): "tally.control",
    ("Tally", "On"): "tally.lamp",
    ("Tally", "Off"): "tally.lamp",
    ("Tally", "OnWeb"): "tally.lamp",
    ("Tally", "OffWeb"): "tally.lamp",
    ("Streaming", "Start"): "streaming.status",
    ("Streaming", "Stop"): "streaming.status",
}

# Rows that change nothing: the pages of the menu are not simulated.
WITHOUT_EFFECT = {(kind, key) for kind in ("Disptv", "Menu")
                  for key in ("Set", "Up", "Down", "Left", "Right")}

POSITIONS = {"ZoomBar": 700, "FocusBar": 100, "IrisBar": 900, "WhPaintR": 5, "WhPaintB": -5}


def test_the_table_has_133_rows():
    assert len(ROWS) == 133


def send(world, kind, key):
    if kind in POSITIONS:
        reply = world.command("SetWebSliderEvent", {"Kind": kind, "Position": POSITIONS[kind]})
    elif kind == "WhPaintRB":
        reply = world.command("SetWebXYFieldEvent", {"Kind": kind, "XPosition": 40, "YPosition": 20})
    elif kind.endswith("Seesaw"):
        reply = world.command("SeesawSwitchOperation", {"Kind": kind, "Direction": key, "Speed": 5})
    else:
        reply = world.command("SetWebKeyEvent", {"Kind": kind, "Key": key})
    assert reply["Response"]["Result"] == "Success"


def step(world):
    assert world.simulator("POST", "clock", {"step_ms": 1000})[0] == 200


def report(world):
    """What a client can read, but for the time code, which runs."""
    rates = {"Type": "UDP", "Resolution": "1280x720", "Framerate": "60p"}
    replies = [world.command("GetCamStatus"), world.command("HeartbeatConfirmation"),
               world.command("AvailableStreamingBitrateSettings", rates)]
    del replies[0]["Response"]["Data"]["TC"]
    return replies


def state(world):
    return world.simulator("GET", "state")[1]


def at(value, path):
    for name in path.split("."):
        value = value[name]
    return value


@pytest.mark.parametrize("kind, key", ROWS)
def test_a_row_shows(world, kind, key):
    before = BEFORE.get((kind, key), BEFORE.get(kind, {}))
    patch = {"clock": {"paused": True}, **before}
    assert world.simulator("PATCH", "state", patch)[0] == 200
    if key == "Stop" and kind.endswith("Seesaw"):
        send(world, kind, next(other for row, other in ROWS if row == kind))
        step(world)
    reported, whole = report(world), state(world)
    send(world, kind, key)
    if kind.startswith("Zoom") or kind.endswith("Seesaw"):
        step(world)
        whole["clock"] = state(world)["clock"]
        whole["timecode"] = state(world)["timecode"]
    if (kind, key) in ONLY_IN_THE_STATE:
        assert report(world) == reported
        member = ONLY_IN_THE_STATE[kind, key]
        assert at(state(world), member) != at(whole, member)
    elif (kind, key) in WITHOUT_EFFECT:
        assert state(world) == whole
    elif key == "Stop" and kind.endswith("Seesaw"):
        stopped = report(world)
        step(world)
        assert report(world) == stopped
    else:
        assert report(world) != reported
