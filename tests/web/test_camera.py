"""The camera view: what it shows, and what the camera receives from its controls."""

import pytest

from tests.web.support.page import eventually

# Each button and what the camera receives, in the camera's words.
KEYS = [
    ("Iris manual", "iris manual"), ("Iris open, small step", "iris open 1"),
    ("Iris open, medium step", "iris open 2"), ("Iris open, large step", "iris open 3"),
    ("Iris close, small step", "iris close 1"), ("Iris close, medium step", "iris close 2"),
    ("Iris close, large step", "iris close 3"), ("Iris push auto", "iris push auto"),
    ("Focus manual", "focus manual"), ("Focus far, small step", "focus far 1"),
    ("Focus far, medium step", "focus far 2"), ("Focus far, large step", "focus far 3"),
    ("Focus near, small step", "focus near 1"), ("Focus near, medium step", "focus near 2"),
    ("Focus near, large step", "focus near 3"), ("Focus infinity", "focus infinity"),
    ("Zoom tele, small step", "zoom tele 1"), ("Zoom tele, medium step", "zoom tele 2"),
    ("Zoom tele, large step", "zoom tele 3"), ("Zoom wide, small step", "zoom wide 1"),
    ("Zoom wide, medium step", "zoom wide 2"), ("Zoom wide, large step", "zoom wide 3"),
    ("Gain up", "gain up"), ("Gain down", "gain down"), ("Gain manual", "gain manual"),
    ("Gain low light", "gain low light"), ("Gain M 9dB", "gain M"), ("Gain H 18dB", "gain H"),
    ("Gain L 0dB", "gain L"),
    ("Shutter off", "shutter off"), ("Shutter manual", "shutter manual"),
    ("Shutter faster", "shutter faster"), ("Shutter slower", "shutter slower"),
    ("Shutter variable", "shutter variable"), ("Shutter step", "shutter step"),
    ("White balance A 4300K", "white A"), ("White balance B 5600K", "white B"),
    ("White balance Preset 3200K", "white preset"), ("White balance manual", "white manual"),
    ("White balance more red", "white paint red up"), ("White balance less red", "white paint red down"),
    ("White balance more blue", "white paint blue up"),
    ("White balance less blue", "white paint blue down"),
    ("Master black up, small step", "master black up 1"),
    ("Master black up, medium step", "master black up 2"),
    ("Master black up, large step", "master black up 3"),
    ("Master black down, small step", "master black down 1"),
    ("Master black down, medium step", "master black down 2"),
    ("Master black down, large step", "master black down 3"),
    ("Detail up", "detail up"), ("Detail down", "detail down"),
    ("Display off", "display off"), ("Display on", "display on"),
    ("Display display", "display information"), ("Display status", "status screen"),
    ("Display SDI", "character mix SDI"), ("Display HDMI", "character mix HDMI"),
    ("Display video", "character mix video"), ("Menu menu", "menu"),
    ("Menu up", "menu up"), ("Menu down", "menu down"), ("Menu left", "menu left"),
    ("Menu right", "menu right"), ("Menu set", "menu set"), ("Menu cancel", "menu cancel"),
    ("Zebra", "user switch 2"),
    ("Tally lamp by web", "tally by the web"), ("Tally lamp on", "tally on"),
    ("Tally lamp off", "tally off"), ("Tally lamp by camera", "tally by the camera"),
    ("Studio tally preview", "studio tally preview"), ("Studio tally off", "studio tally off"),
    ("Shutter EEI", "shutter EEI"), ("Gain ALC", "gain ALC"), ("AE level up", "AE level up"),
    ("AE level down", "AE level down"), ("White balance full auto", "white FAW"),
    ("Iris auto", "iris auto"), ("Focus auto", "focus auto"),
    ("Full auto on", "full auto on"), ("Full auto off", "full auto off"),
]

CONTROLS = ("SetWebKeyEvent", "SetWebButtonEvent", "SetTallyLampPriority", "SetTallyLampCtrl",
            "SetStudioTally", "SetTallyControlWithPriority")


def test_asks_for_a_login_and_shows_the_camera_then(fresh_page):
    page = fresh_page
    eventually(lambda: page.find("dialog", "Log in"))
    assert page.find_all("textbox", "Session id")
    page.log_in()
    state = page.state()
    eventually(lambda: page.text_of("#model") == state["model"])
    assert page.text_of("#serial") == state["serial"]
    assert page.text_of("#latency").endswith(" ms")
    assert page.find("heading", "Camera").is_displayed()
    assert page.browser.find_element("id", "simulated").is_displayed()


def test_status_is_live(page):
    first = page.text_of("#timecode")
    eventually(lambda: page.text_of("#timecode") != first)
    page.set_state(battery={"info": "Time", "value": 42}, iris={"mode": "Manual", "stop": "F5.6"})
    eventually(lambda: "42 min" in page.text_of("#battery"))
    eventually(lambda: "F5.6" in page.text())


def test_every_key_reaches_the_camera(page):
    for name, decoded in KEYS:
        button = page.button(name)
        position = page.journal_position()
        eventually(button.is_enabled, f"{name} to be enabled")
        page.click(button)
        eventually(lambda: page.received(*CONTROLS, after=position) == [decoded], f"{name} to arrive")
        assert [entry["result"] for entry in page.journal(*CONTROLS, after=position)] == ["Success"], name


def test_records_and_stops(page):
    position = page.journal_position()
    page.press("Record")
    eventually(lambda: page.is_pressed("Record"))
    assert page.state()["recording"]["status"] == "Rec"
    eventually(lambda: page.text_of("#rec-state") == "rec")
    page.press("Record")
    eventually(lambda: not page.is_pressed("Record"))
    assert page.state()["recording"]["status"] == "Stop"
    assert page.received("SetCamCtrl", after=position) == ["record start", "record stop"]


def test_without_a_card_nothing_can_be_recorded(page):
    page.load_scene("no-cards")
    eventually(lambda: not page.button("Record").is_enabled())
    eventually(lambda: "no card" in page.text_of("#slot-a"))


def test_a_control_that_the_camera_disables_cannot_be_used(page):
    names = ["Iris open", "Iris open, small step", "Gain up", "Shutter faster"]
    page.press("Full auto on")
    for name in names:
        eventually(lambda: not page.button(name).is_enabled(), f"{name} to be disabled")
    assert not eventually(lambda: page.find("slider", "Iris bar")).is_enabled()
    page.press("Full auto off")
    for name in names:
        eventually(lambda: page.button(name).is_enabled(), f"{name} to be enabled")


@pytest.mark.parametrize("word", ["Program", "Preview"])
def test_tally_shows_as_word_shape_and_frame(page, word):
    frame = "return getComputedStyle(document.body).borderTopColor"
    shape = "return getComputedStyle(document.querySelector('.tally .shape')).%s"
    before = page.browser.execute_script(frame)
    page.press(f"Studio tally {word.lower()}")
    eventually(lambda: page.text_of("#tally") == word)
    assert page.state()["tally"]["studio"] == word
    assert page.is_pressed(f"Studio tally {word.lower()}")
    eventually(lambda: page.browser.execute_script(frame) != before)
    assert page.browser.execute_script(shape % "borderRadius") == "0px"


def test_the_zoom_slider_moves_the_zoom_and_follows_it(page):
    page.slide("Zoom position", 400)
    eventually(lambda: page.state()["zoom"]["position"] == 400)
    slider = page.find("slider", "Zoom position")
    eventually(lambda: slider.get_property("value") == "400")
    page.set_state(zoom={"position": 700, "target": 700})
    eventually(lambda: slider.get_property("value") == "700")


@pytest.mark.parametrize("name, position, member", [
    ("Focus bar", 300, lambda state: state["focus"]["position"] == 300),
    ("Iris bar", 999, lambda state: state["iris"]["stop"] == "CLOSE"),
    ("Red paint", 12, lambda state: state["white_balance"]["paint_red"] == 12),
    ("Blue paint", -7, lambda state: state["white_balance"]["paint_blue"] == -7),
    ("Red paint", -32, lambda state: state["white_balance"]["paint_red"] == -32),
])
def test_a_bar_moves_its_value(page, name, position, member):
    page.slide(name, position)
    eventually(lambda: member(page.state()))
    params = page.journal("SetWebSliderEvent")[-1]["request"]["Request"]["Params"]
    assert params["Position"] == position


def test_the_paint_pad_sets_red_and_blue_and_shows_them(page):
    def field_position():
        entries = page.journal("SetWebXYFieldEvent")
        params = entries[-1]["request"]["Request"]["Params"] if entries else {}
        return params.get("XPosition"), params.get("YPosition")

    def paint():
        white = page.state()["white_balance"]
        return white["paint_red"], white["paint_blue"]

    pad = page.browser.find_element("id", "paint-pad")
    page.browser.execute_script("arguments[0].scrollIntoView({block: 'center'})", pad)
    page.point("mousePressed", pad, right=0.75, down=0.25)
    # Red grows to the right, blue upwards. The field runs from 0 to 64, the paint from -32 to 32.
    eventually(lambda: (field_position(), paint()) == ((48, 48), (16, 16)))
    page.drag(pad, right=-0.5, down=-0.5)
    eventually(lambda: (field_position(), paint()) == ((0, 64), (-32, 32)))
    page.drag(pad, right=0.5, down=0.5)
    eventually(lambda: (field_position(), paint()) == ((32, 32), (0, 0)))
    page.drag(pad, right=1.5, down=0.75)
    eventually(lambda: (field_position(), paint()) == ((64, 16), (32, -16)))
    page.release(pad)
    for name, value in {"Red paint": 32, "Blue paint": -16}.items():
        slider = page.find("slider", name)
        eventually(lambda: slider.get_property("value") == str(value))
        assert (slider.get_property("min"), slider.get_property("max")) == ("-32", "32")


def test_preset_zoom_is_stored_recalled_and_cleared(page):
    page.set_state(zoom={"position": 321, "target": 321})
    eventually(lambda: page.find("slider", "Zoom position").get_property("value") == "321")
    page.press("Store B")
    page.button("Preset B 321")
    assert page.world.command("GetPresetZoomPosition", session=page.session())["Response"]["Data"]["B"] == 321
    page.set_state(zoom={"position": 0, "target": 0})
    page.press("Preset B 321")
    eventually(lambda: page.state()["zoom"]["position"] == 321)
    page.press("Clear B")
    eventually(lambda: not page.button("Preset B –").is_enabled())


def test_a_label_with_a_quote_breaks_nothing(page):
    page.set_state(user={"Sw1": {"label": 'Focus "A"'}})
    page.button('Focus "A"')
    page.set_state(battery={"info": "Time", "value": 41})
    eventually(lambda: "41 min" in page.text_of("#battery"))
    assert page.is_live()


def test_warnings(page):
    page.load_scene("field")
    eventually(lambda: "Battery low" in page.text_of("#warnings"))


def test_live_picture(page):
    page.press("Start live picture")
    eventually(lambda: page.state()["monitor"] is True)
    page.press("Stop live picture")
    eventually(lambda: page.state()["monitor"] is False)
