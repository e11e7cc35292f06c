"""The views of the settings, of the API, and the simulator's drawer."""

import json
import pathlib

import pytest

from tests.web.support.page import eventually

API = pathlib.Path(__file__).parents[2] / "api" / "openapi.json"


def test_time_settings(page):
    page.go_to("Settings")
    eventually(lambda: page.text_of("#ntp-status") == "synchronized")
    page.fill("Server address", "time.example")
    page.find("checkbox", "Time code follows the server").click()
    page.press("Save time settings")
    eventually(lambda: page.world.command("GetNTPStatus", session=page.session())["Response"]["Data"]["Address"]
               == "time.example")
    eventually(lambda: page.world.command("GetNTPStatus", session=page.session())["Response"]["Data"]["TcSync"]
               == "Off")


def test_system_information_position_and_resume(page):
    page.go_to("Settings")
    state = page.state()
    eventually(lambda: state["serial"] in page.text_of("#system-facts"))
    eventually(lambda: state["gps"]["location"] in page.text_of("#gps-facts"))
    page.set_state(gps={"location": "51.5N 0.1W"})
    page.press("Read the position")
    eventually(lambda: "51.5N 0.1W" in page.text_of("#gps-facts"))
    page.press("Resume the camera")
    eventually(lambda: page.received("SystemRequest") == ["resume"])


def test_every_command_can_be_picked_and_sent(page):
    page.go_to("API")
    commands = [schema["properties"]["Request"]["properties"]["Command"]["const"]
                for name, schema in json.loads(API.read_text())["components"]["schemas"].items()
                if name.endswith("Request") and name != "Request"]
    eventually(lambda: page.options_of("Command") == sorted(commands))
    assert len(commands) == 68
    page.choose("Command", "SetWebKeyEvent")
    page.choose("Kind", "Gain")
    page.choose("Key", "Up1")
    page.press("Send command")
    eventually(lambda: page.received("SetWebKeyEvent") == ["gain up"])
    eventually(lambda: page.text_of("#command-reply").startswith("Success"))
    page.choose("Command", "SetZoomCtrl")
    page.fill("Position", "250", "spinbutton")
    page.press("Send command")
    eventually(lambda: page.state()["zoom"]["position"] == 250)


def test_exchanges_are_shown_and_copied(page):
    page.press("Gain up")
    eventually(lambda: page.received("SetWebKeyEvent"))
    page.go_to("API")
    entry = eventually(lambda: [item for item in page.browser.find_elements("css selector", "#exchanges li")
                                if "SetWebKeyEvent" in item.text])[0]
    entry.find_element("tag name", "summary").click()
    request, reply = (pre.text for pre in entry.find_elements("tag name", "pre"))
    assert json.loads(request)["Request"]["Params"] == {"Kind": "Gain", "Key": "Up1"}
    assert json.loads(reply)["Response"]["Result"] == "Success"
    page.browser.execute_cdp_cmd("Browser.grantPermissions", {
        "permissions": ["clipboardReadWrite", "clipboardSanitizedWrite"], "origin": page.world.url})
    page.press("Copy as curl", within=entry)
    eventually(lambda: page.find_all("button", "Copied", within=entry))
    copied = page.browser.execute_async_script("navigator.clipboard.readText().then(arguments[0], arguments[0])")
    assert copied == f"curl --data '{request}' '{page.world.url}/cgi-bin/camera_remote.cgi'"


def test_polls_can_be_shown_up_to_100(page):
    page.go_to("API")
    page.find("checkbox", "without polls").click()
    eventually(lambda: "GetCamStatus" in page.text_of("#exchanges"))
    assert len(page.browser.find_elements("css selector", "#exchanges li")) <= 100


def test_the_simulator_drawer(page):
    page.press("Simulator")
    drawer = eventually(lambda: page.find("complementary", "Simulated camera"))
    picture = page.find("image", "Viewfinder", within=drawer)
    # What shows each of these in the picture.
    looks = {
        "zoom": ("vf-scene", "transform", {"zoom": {"position": 600, "target": 600}}),
        "iris": ("vf-light", "opacity", {"iris": {"stop": "F11"}}),
        "white balance": ("vf-tint", "opacity", {"white_balance": {"mode": "B"}}),
        "tally": ("vf-tally", "stroke", {"tally": {"studio": "Program"}}),
    }
    for what, (element, attribute, change) in looks.items():
        shown = picture.find_element("id", element)
        before = shown.get_attribute(attribute)
        page.set_state(**change)
        eventually(lambda: shown.get_attribute(attribute) != before, f"the {what} to show")
    page.press("Record")
    eventually(lambda: page.text_of("#vf-recording") == "● REC")
    page.press("Add fault", within=drawer)
    eventually(lambda: len(page.world.simulator("GET", "faults")[1]) == 1)
    page.allow_errors("500")
    page.press("Remove all faults", within=drawer)
    eventually(lambda: page.world.simulator("GET", "faults")[1] == [])
    page.press("Pause", within=drawer)
    eventually(lambda: page.state()["clock"]["paused"] is True)
    page.choose("Scene", "field")
    page.press("Load scene", within=drawer)
    eventually(lambda: page.state()["battery"]["level"] == 1)


# What is entered for a fault, and the fault that the camera has then: of sockets, of replies with
# and without a number, and around the handler. None of them is met by what the page polls.
FAULTS = [
    ({"Fault": "absent", "Daemon": "quonta_cp", "Command": "SetZoomCtrl"}, {},
     {"fault": "absent", "daemon": "quonta_cp", "command": "SetZoomCtrl"}),
    ({"Fault": "silent", "Daemon": "streaming"}, {}, {"fault": "silent", "daemon": "streaming"}),
    ({"Fault": "slow", "Command": "SetZoomCtrl"}, {"Milliseconds": 60000},
     {"fault": "slow", "command": "SetZoomCtrl", "ms": 60000}),
    ({"Fault": "short", "Command": "SetZoomCtrl"}, {"Bytes of the reply": 0, "Requests": 3},
     {"fault": "short", "command": "SetZoomCtrl", "bytes": 0, "count": 3}),
    ({"Fault": "result", "Command": "SetZoomCtrl"}, {"Result code": 255},
     {"fault": "result", "command": "SetZoomCtrl", "code": 255}),
    ({"Fault": "disk_full", "Command": "SetNTPServer"}, {"Requests": 1},
     {"fault": "disk_full", "command": "SetNTPServer", "count": 1}),
    ({"Fault": "no_log"}, {}, {"fault": "no_log"}),
]


@pytest.fixture
def drawer(page):
    page.press("Simulator")
    eventually(lambda: page.find("complementary", "Simulated camera"))
    return page


def faults(page):
    return [{name: value for name, value in fault.items() if name != "id"}
            for fault in page.world.simulator("GET", "faults")[1]]


def test_each_kind_of_fault_takes_its_own_fields(drawer):
    page = drawer
    for words, numbers, expected in FAULTS:
        for field, option in {"Command": "any", **words}.items():
            page.choose(field, option)
        for field, number in {"Requests": "", **numbers}.items():
            page.fill(field, str(number), "spinbutton")
        is_of_daemon = expected["fault"] not in ("disk_full", "no_log")
        assert len(page.find_all("combobox", "Daemon")) == int(is_of_daemon), expected
        shown = {"Milliseconds", "Bytes of the reply", "Result code"} & {
            field.accessible_name for field in page.find_all("spinbutton")}
        assert shown == numbers.keys() - {"Requests"}, expected
        page.press("Add fault")
        eventually(lambda: faults(page) == [expected], f"the fault {expected}")
        eventually(lambda: expected["fault"] in page.text_of("#faults"))
        page.clear_faults()
        if is_of_daemon:
            page.choose("Daemon", "any")


def test_a_fault_that_cannot_be_met_is_refused_in_words(drawer):
    page = drawer
    page.allow_errors("400")
    page.choose("Fault", "silent")
    page.choose("Command", "GetSystemInfo")
    page.press("Add fault")
    eventually(lambda: page.message() ==
               'Fault: command: "GetSystemInfo" does not talk to any daemon')
    assert faults(page) == []
