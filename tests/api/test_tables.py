"""The document and the handler's tables name the same commands, controls, keys and formats."""

import json
import subprocess

import pytest
from description import REPOSITORY, SCHEMAS, commands, parameters, resolved

TABLES = json.loads(subprocess.run([REPOSITORY / "build/release/api_tables"], check=True,
                                   capture_output=True, text=True).stdout)


def test_commands():
    assert sorted(commands()) == sorted(row["name"] for row in TABLES["commands"])


def test_sessions():
    for row in TABLES["commands"]:
        request = SCHEMAS[row["name"] + "Request"]["properties"]["Request"]
        assert ("SessionID" in request["required"]) == row["needs_session"], row["name"]


def test_controls():
    kinds = list(dict.fromkeys(row["kind"] for row in TABLES["events"]))
    assert SCHEMAS["Kind"]["enum"] == kinds


@pytest.mark.parametrize("command, key", [("SetWebKeyEvent", "Key"),
                                          ("SetWebButtonEvent", "Button"),
                                          ("SeesawSwitchOperation", "Direction")])
def test_keys_of_controls(command, key):
    expected = {}
    for row in TABLES["events"]:
        if row["key"]:
            expected.setdefault(row["kind"], []).append(row["key"])
    params = SCHEMAS[command + "Request"]["properties"]["Request"]["properties"]["Params"]
    described = {one["properties"]["Kind"]["const"]: one["properties"][key]["enum"]
                 for one in params["oneOf"]}
    assert described == expected


@pytest.mark.parametrize("command, parameter, kind, suffix", [
    ("SetTallyLampPriority", "Priority", "Tally", ""),
    ("SetTallyLampCtrl", "Sw", "Tally", ""),
    ("SetTallyControlWithPriority", "Sw", "Tally", "Web"),
    ("SetStudioTally", "Indication", "StudioTally", ""),
    ("SetStudioTallyWithoutSession", "Indication", "StudioTally", ""),
    ("SystemRequest", "Request", "System", ""),
])
def test_keys_of_one_control(command, parameter, kind, suffix):
    keys = [row["key"] for row in TABLES["events"] if row["kind"] == kind]
    expected = {key.removesuffix(suffix) for key in keys if key.endswith(suffix)}
    assert set(parameters(command)[parameter]["enum"]) == expected


@pytest.mark.parametrize("schema, table", [("Resolution", "resolutions"),
                                           ("Framerate", "framerates"),
                                           ("Bitrate", "bitrates"),
                                           ("StreamingType", "streaming_types")])
def test_names(schema, table):
    assert SCHEMAS[schema]["enum"] == TABLES[table]


def data(command):
    return resolved(SCHEMAS[command + "Response"])["properties"]["Response"]["properties"]["Data"]


def test_names_of_the_stored_format():
    members = data("GetStreamingSettings")["properties"]
    for member, table in (("Resolution", "resolutions"), ("Framerate", "framerates"),
                          ("Bitrate", "bitrates")):
        assert members[member]["enum"] == TABLES[table] + [""]


@pytest.mark.parametrize("command, member, table", [
    ("AvailableStreamingResolutionSettings", "AvailableResolution", "resolutions"),
    ("AvailableStreamingFramerateSettings", "AvailableFramerate", "framerates"),
    ("AvailableStreamingBitrateSettings", "AvailableBitrate", "bitrates"),
])
def test_available_formats(command, member, table):
    flags = data(command)["properties"][member]["properties"]
    assert sorted(flags) == sorted(TABLES[table])


def test_server_types():
    shapes = data("GetStreamingServerSettings")["oneOf"]
    types = [shape["properties"]["Type"]["const"] for shape in shapes if "properties" in shape]
    assert types == TABLES["server_types"]


def test_enable_flags():
    enable = data("GetCamStatus")["properties"]["Enable"]["properties"]
    assert {group: list(flags["properties"]) for group, flags in enable.items()} == (
        TABLES["enable_flags"])
