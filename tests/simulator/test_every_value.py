"""The simulated camera can report every value that the description of the API allows in a reply. The
values come from api/openapi.json, the states from the control interface."""

import itertools
import json
import re

import pytest
from world import REPOSITORY

SCHEMAS = json.loads((REPOSITORY / "api" / "openapi.json").read_text())["components"]["schemas"]
COMMANDS = sorted(name[:-len("Response")] for name in SCHEMAS if f"{name[:-8]}Request" in SCHEMAS)


# --- What replies may hold -----------------------------------------------------------------------

def listed(schema, path):
    """Every (path, value) that a schema names in an enumeration."""
    if "$ref" in schema:
        yield from listed(SCHEMAS[schema["$ref"].rsplit("/", 1)[1]], path)
    for part in itertools.chain(*(schema.get(word, []) for word in ("oneOf", "anyOf", "allOf"))):
        yield from listed(part, path)
    for value in schema.get("enum", [schema["const"]] if "const" in schema else []):
        yield path, value
    for name, member in schema.get("properties", {}).items():
        yield from listed(member, (*path, name))
    if "items" in schema:
        yield from listed(schema["items"], (*path, "[]"))


def held(value, path):
    """Every (path, value) of a reply."""
    if isinstance(value, dict):
        for name, member in value.items():
            yield from held(member, (*path, name))
    elif isinstance(value, list):
        for member in value:
            yield from held(member, (*path, "[]"))
    else:
        yield path, value


EXPECTED = {found for command in COMMANDS for found in listed(SCHEMAS[f"{command}Response"], (command,))}


def test_the_description_lists_values():
    assert len(COMMANDS) == 68 and len(EXPECTED) > 400


# --- The explorer --------------------------------------------------------------------------------

class Explorer:
    def __init__(self, world):
        self.world = world
        self.seen = set()

    def reset(self, *patches):
        assert self.world.simulator("POST", "reset", {"paused": True})[0] == 200
        for patch in patches:
            status, reply = self.world.simulator("PATCH", "state", patch)
            assert status == 200, (patch, reply)

    def ask(self, command, params=None):
        self.post({"Request": {"Command": command, "SessionID": self.world.session,
                               **({"Params": params} if params else {})}})

    def post(self, request):
        body = json.dumps(request, separators=(",", ":"), ensure_ascii=False)
        status, _, reply = self.world.post(body)
        if status == 200:
            reply = json.loads(reply)
            self.seen.update(held(reply, (request["Request"]["Command"],)))

    def look(self):
        for command in ("GetCamStatus", "GetSystemInfo", "HeartbeatConfirmation", "GetNTPStatus"):
            self.ask(command)


def nested(path, value):
    for name in reversed(path.split(".")):
        value = {name: value}
    return value


def leaves(value, path=""):
    for name, member in value.items():
        if isinstance(member, dict):
            yield from leaves(member, f"{path}{name}.")
        else:
            yield path + name, member


def words_of(world, path):
    """The words that a member of the state takes, from the error that names them."""
    _, reply = world.simulator("PATCH", "state", nested(path, {}))
    return re.findall(r'"([^"]*)"', reply["error"]) if "one of" in reply["error"] else []


def each_word_of_the_state(explorer):
    explorer.reset()
    state = explorer.world.simulator("GET", "state")[1]
    files = {"upload": {"files": ["A.MOV"]}}
    for path, value in leaves(state):
        words = [True, False] if isinstance(value, bool) else words_of(explorer.world, path)
        for word in words:
            explorer.reset(files, nested(path, word))
            explorer.look()


FULL_AUTO = {"full_auto": True}
TOGETHER = [
    [FULL_AUTO, {"ae": {"lock": True}}],
    [FULL_AUTO, {"face_detection": True}],
    [{"iris": {"mode": "Auto"}, "face_detection": True}],
    [{"focus": {"mode": "Auto"}, "face_detection": True}],
    [{"focus": {"mode": "Manual"}, "face_detection": True}],
    [{"zoom": {"position": 0, "target": 500, "speed": 1}}],
    [{"recording": {"status": "Rec", "dual": True, "slot": "A"}}],
    [{"recording": {"status": "Rec", "dual": True, "slot": "B"}}],
    [{"slots": {"A": {"card": "None"}, "B": {"card": "None"}}}],
    [{"network": {"adaptor": "WLAN_AP", "connected": False}}],
]


def members_together(explorer):
    for patches in TOGETHER:
        explorer.reset(*patches)
        explorer.look()


# What some commands need first: control of the tally, a question of an upload, a login to the cloud.
READY = {"tally": {"control": "Web"}, "upload": {"phase": "TRUST", "files": ["A.MOV"]},
         "cloud": {"logged_in": True, "has_events": True, "stream_event": 2}}


def each_example_with_each_result(explorer):
    for command in COMMANDS:
        example = json.loads((REPOSITORY / "api" / "examples" / f"{command}.json").read_text())
        for patch in ({}, READY):
            explorer.reset(patch)
            for request in example["requests"]:
                explorer.post(request)
        for fault in ("requested_error", "disable_error", "settings_read_only"):
            explorer.reset()
            explorer.world.simulator("POST", "faults", {"fault": fault, "command": command})
            for request in example["requests"]:
                explorer.post(request)


def clips(explorer):
    explorer.reset()
    clip = {"name": "A001C001", "first": "00:00:00.00", "last": "00:00:01.00",
            "date": "2026-05-04T09:30:00"}
    several = [{**clip, "ok_mark": True, "aspect": "4:3", "edit_lock": True}, clip]
    explorer.reset({"slots": {"A": {"clips": several}}})
    explorer.ask("GetClipInfo", {"Slot": "A", "StartIndexNo": 1, "ClipNum": 2})


def settings_of_streaming(explorer):
    names = {"resolution": [*range(8), "999"], "quality": [*range(128), "999"]}
    for key, values in names.items():
        for value in values:
            explorer.reset({"settings": {"streaming": {key: str(value)}}})
            explorer.ask("GetStreamingSettings")
    for kind in range(10):
        explorer.reset({"settings": {"streaming_server0": {"type": str(kind)}}})
        explorer.ask("GetStreamingServerSettings", {"ID": 0})
    for function in ("0", "1"):
        explorer.reset({"settings": {"ifb": {"ifb_function": function}}})
        explorer.ask("GetIFBSettings")
    for follows in ("0", "1"):
        explorer.reset({"settings": {"ntp": {"tc_sync": follows}}})
        explorer.ask("GetNTPStatus")


def what_can_be_streamed(explorer):
    params = SCHEMAS["AvailableStreamingBitrateSettingsRequest"]["properties"]["Request"][
        "properties"]["Params"]["properties"]
    types, resolutions, rates = ([value for _, value in listed(params[name], ())]
                                 for name in ("Type", "Resolution", "Framerate"))
    for recording_format in [*range(12), 255]:
        explorer.reset({"recording": {"format": recording_format}})
        explorer.ask("AvailableStreamingResolutionSettings")
        for resolution in resolutions:
            explorer.ask("AvailableStreamingFramerateSettings", {"Resolution": resolution})
            for rate in rates:
                explorer.ask("AvailableStreamingBitrateSettings",
                             {"Type": "RTMP", "Resolution": resolution, "Framerate": rate})
    for kind in types:
        explorer.ask("AvailableStreamingBitrateSettings",
                     {"Type": kind, "Resolution": "1280x720", "Framerate": "60p"})


@pytest.fixture(scope="module")
def seen(running_world):
    explorer = Explorer(running_world)
    for explore in (each_word_of_the_state, members_together, each_example_with_each_result, clips,
                    settings_of_streaming, what_can_be_streamed):
        explore(explorer)
    return explorer.seen


@pytest.mark.parametrize("command", COMMANDS)
def test_every_value_of_a_reply_can_be_reached(seen, command):
    missing = sorted((path, value) for path, value in EXPECTED - seen if path[0] == command)
    assert missing == []
