"""The streaming view: format, servers, start and stop, return audio."""

import pytest

from tests.web.support.page import eventually

# Transport; its fields with what is typed and what the camera reports; the object in the reply.
SERVERS = [
    ("UDP", "Udp", [("Address", "10.0.0.5", "DstAddress"), ("Port", 6000, "DstPort"),
                    ("PCR jitter", 7, "PcrJitter")]),
    ("RTSP", "Rtsp", [("Password", "secret", "Password")]),
    ("ZIXI", "Zixi", [("Address", "zixi.example", "DstAddress"), ("Port", 2088, "DstPort"),
                      ("Stream id", "cam1", "StreamId"), ("Password", "secret", "Password"),
                      ("Latency", 500, "Latency"), ("Adaptive bit rate", 1, "AdaptiveBitrate")]),
    ("RTMP", "Rtmp", [("URL", "rtmp://live.example/app", "DstUrl"),
                      ("Stream key", "key-1", "StreamKey")]),
    ("RTP", "Rtp", [("Address (the camera does not report it)", "10.0.0.6", None),
                    ("Port", 5004, "DstPort"), ("SMPTE 2022 FEC", 1, "Smpte2022Fec"),
                    ("FEC matrix L", 5, "FecMatrixL"), ("FEC matrix D", 6, "FecMatrixD")]),
]
SECRETS = ("Password", "Stream key")


@pytest.fixture
def streaming(page):
    page.go_to("Streaming")
    eventually(lambda: page.text_of("#current-server").startswith("Server 1"))
    eventually(lambda: page.options_of("Resolution"))
    return page


def data(page, command, params=None):
    reply = page.world.command(command, params, session=page.session())["Response"]
    assert reply["Result"] == "Success"
    return reply["Data"]


def role_of(value):
    return "spinbutton" if isinstance(value, int) else "textbox"


@pytest.mark.parametrize("transport, member, fields", SERVERS, ids=[row[0] for row in SERVERS])
def test_a_server_is_set_and_read_back(streaming, transport, member, fields):
    page = streaming
    page.find("radio", "Server 3: not set").click()
    page.fill("Name", "Studio")
    page.choose("Transport", transport)
    form = page.browser.find_element("id", "server-form")
    for label, value, _ in fields:
        page.fill(label, str(value), role_of(value), within=form)
    for label in SECRETS:
        for field in page.find_all("textbox", label, within=form):
            assert field.get_attribute("type") == "password"
    page.press("Save server")
    eventually(lambda: page.find("radio", f"Server 3: Studio, {transport}"))
    stored = data(page, "GetStreamingServerSettings", {"ID": 2})
    assert (stored["Alias"], stored["Type"]) == ("Studio", transport)
    for label, value, name in fields:
        if name:
            assert stored[member][name] == value
            shown = page.field(label, role_of(value), within=form).get_property("value")
            assert shown == str(value)


def test_the_server_in_use(streaming):
    page = streaming
    page.find("radio", "Server 2: not set").click()
    page.press("Use this server")
    eventually(lambda: page.text_of("#current-server") == "Server 2: not set")
    assert data(page, "GetCurrentStreamingServerID") == {"ID": 1}


def test_a_value_that_cannot_be_sent_is_refused_in_words(streaming):
    page = streaming
    page.fill("Name", "Cup final")
    page.press("Save server")
    eventually(lambda: "white space" in page.message())
    assert page.journal("SetStreamingServerSettingsUDP") == []


def test_offers_only_what_the_camera_reports_and_sets_it(streaming):
    page = streaming
    flags = data(page, "AvailableStreamingResolutionSettings")["AvailableResolution"]
    assert page.options_of("Resolution") == [name for name, flag in flags.items() if flag]
    page.choose("Resolution", "1280x720")
    flags = data(page, "AvailableStreamingFramerateSettings", {"Resolution": "1280x720"})["AvailableFramerate"]
    eventually(lambda: page.options_of("Frame rate") == [name for name, flag in flags.items() if flag])
    page.choose("Bit rate", "5.0M")
    rate = page.field("Frame rate", "combobox").get_property("value")
    page.press("Set format")
    eventually(lambda: data(page, "GetStreamingSettings") ==
               {"Resolution": "1280x720", "Framerate": rate, "Bitrate": "5.0M"})
    eventually(lambda: page.text_of("#format-stored") == f"Stored: 1280x720, {rate}, 5.0M")


def test_a_model_that_cannot_stream_offers_nothing(page):
    page.load_scene("no-streaming")
    page.go_to("Streaming")
    eventually(lambda: "This camera cannot stream now" in page.text())
    assert page.browser.find_element("id", "format-form").get_property("inert") is True
    assert page.browser.find_elements("css selector", "#format-resolution option") == []


def test_starts_and_stops(streaming):
    page = streaming
    page.press("Start streaming")
    eventually(lambda: page.state()["streaming"]["status"] != "Stopped")
    page.press("Stop streaming")
    eventually(lambda: page.state()["streaming"]["status"] == "Stopped")
    assert page.received("SetStreamingCtrl") == ["streaming start", "streaming stop"]


def test_return_audio(streaming):
    page = streaming
    form = page.browser.find_element("id", "ifb-form")
    eventually(lambda: page.field("Mount point", within=form).get_property("value") == "DB90TX")
    page.find("checkbox", "Return audio enabled").click()
    page.fill("Address", "10.1.1.1", within=form)
    page.fill("Port", "8000", "spinbutton", within=form)
    page.fill("Mount point", "IFB1", within=form)
    page.press("Save return audio")
    eventually(lambda: data(page, "GetIFBSettings") == {
        "Function": "Enable", "Address": "10.1.1.1", "Port": 8000, "Mountpoint": "IFB1"})
    page.press("Start return audio")
    eventually(lambda: page.received("SetIFBCtrl") == ["return audio start"])
    page.press("Stop return audio")
    eventually(lambda: page.received("SetIFBCtrl") == ["return audio start", "return audio stop"])
