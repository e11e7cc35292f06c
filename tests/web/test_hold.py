"""Seesaws: they run as long as they are held, and the stop is never lost."""

import pytest

from tests.web.support.page import eventually

SWITCHES = ("ZoomSwitchOperation", "SeesawSwitchOperation")


def directions(page, position):
    """What the camera has received: the seesaw and its direction, without the speed."""
    return [decoded.split(",")[0] for decoded in page.received(*SWITCHES, after=position)]


def stops(page, position, seesaw="zoom"):
    eventually(lambda: directions(page, position)[-1:] == [f"{seesaw} seesaw stop"], "the stop to arrive")


def test_the_zoom_runs_while_it_is_held(page):
    position = page.journal_position()
    button = page.hold("Zoom tele")
    eventually(lambda: page.state()["zoom"]["position"] > 0)
    assert directions(page, position) == ["zoom seesaw tele"]
    page.release(button)
    stops(page, position)
    where = page.state()["zoom"]["position"]
    assert page.state()["zoom"]["position"] == where


@pytest.mark.parametrize("name, words", [
    ("Zoom wide", "zoom seesaw wide"), ("Iris open", "iris seesaw open"),
    ("Iris close", "iris seesaw close"), ("Focus near", "focus seesaw near"),
    ("Focus far", "focus seesaw far"), ("Master black up", "master black seesaw up"),
    ("Master black down", "master black seesaw down"),
])
def test_every_seesaw_runs_and_stops(page, name, words):
    position = page.journal_position()
    button = page.hold(name)
    eventually(lambda: directions(page, position)[:1] == [words])
    page.release(button)
    stops(page, position, words.split(" seesaw")[0])


def test_dragging_off_the_button_stops(page):
    position = page.journal_position()
    button = page.hold("Zoom tele")
    eventually(lambda: directions(page, position) == ["zoom seesaw tele"])
    page.drag(button, down=1.2)
    stops(page, position)
    page.release(button)


def test_farther_out_is_faster(page):
    position = page.journal_position()
    button = page.hold("Zoom tele")
    eventually(lambda: page.received(*SWITCHES, after=position))
    page.drag(button, right=0.99)
    eventually(lambda: page.received(*SWITCHES, after=position)[-1] == "zoom seesaw tele, speed 255")
    page.drag(button, right=0.01)
    eventually(lambda: page.received(*SWITCHES, after=position)[-1] == "zoom seesaw tele, speed 32")
    page.release(button)
    stops(page, position)


def test_hiding_the_page_stops_the_zoom_and_the_polls(page):
    position = page.journal_position()
    button = page.hold("Zoom tele")
    eventually(lambda: page.state()["zoom"]["position"] > 0)
    page.browser.switch_to.new_window("tab")
    stops(page, position)
    page.browser.switch_to.window(page.browser.window_handles[0])
    eventually(page.is_live)


def test_leaving_the_page_stops_the_zoom(page):
    position = page.journal_position()
    button = page.hold("Zoom tele")
    eventually(lambda: page.state()["zoom"]["position"] > 0)
    page.browser.get(page.world.url + "/icon.svg")
    stops(page, position)


def test_a_touch_that_the_browser_takes_away_stops_it(page):
    position = page.journal_position()
    button = page.button("Zoom tele")
    eventually(button.is_enabled)
    page.browser.execute_script("arguments[0].scrollIntoView({block: 'center'})", button)
    box = page.browser.execute_script("return arguments[0].getBoundingClientRect()", button)
    place = {"x": box["x"] + 40, "y": box["y"] + 20}
    touch = "Input.dispatchTouchEvent"
    page.browser.execute_cdp_cmd(touch, {"type": "touchStart", "touchPoints": [place]})
    eventually(lambda: directions(page, position) == ["zoom seesaw tele"])
    page.browser.execute_cdp_cmd(touch, {"type": "touchCancel", "touchPoints": []})
    stops(page, position)


def test_losing_the_focus_stops_it(page):
    position = page.journal_position()
    button = page.hold("Zoom tele")
    eventually(lambda: directions(page, position) == ["zoom seesaw tele"])
    page.browser.execute_script("document.activeElement.blur(); window.dispatchEvent(new Event('blur'))")
    stops(page, position)


def test_the_keyboard_runs_it_too(page):
    position = page.journal_position()
    button = page.button("Zoom tele")
    eventually(button.is_enabled)
    page.browser.execute_script("arguments[0].focus()", button)
    page.key("keyDown", " ", 32)
    eventually(lambda: page.received(*SWITCHES, after=position) == ["zoom seesaw tele, speed 128"])
    page.key("keyUp", " ", 32)
    stops(page, position)


def test_a_stop_overtakes_slow_replies(page):
    page.fault("slow", command="ZoomSwitchOperation", ms=3000, count=1)
    position = page.journal_position()
    button = page.hold("Zoom tele")
    for right in (0.6, 0.7, 0.8, 0.9):
        page.drag(button, right)
    page.release(button)
    # The first stop overtakes it; another one follows it.
    eventually(lambda: directions(page, position) ==
               ["zoom seesaw stop", "zoom seesaw tele", "zoom seesaw stop"])
    assert page.state()["zoom"]["speed"] == 0


def test_a_stop_is_repeated_until_it_is_answered(page):
    page.allow_errors("500")
    button = page.hold("Zoom tele")
    eventually(lambda: page.state()["zoom"]["position"] > 0)
    position = page.journal_position()
    page.fault("absent", command="ZoomSwitchOperation")
    page.release(button)
    eventually(lambda: len(page.journal("ZoomSwitchOperation", after=position)) >= 2)
    assert directions(page, position) == []
    page.clear_faults()
    stops(page, position)


def test_a_control_that_is_disabled_while_it_is_held_stops(page):
    position = page.journal_position()
    button = page.hold("Iris close")
    eventually(lambda: directions(page, position)[:1] == ["iris seesaw close"])
    page.set_state(full_auto=True)
    eventually(lambda: page.journal("SeesawSwitchOperation", after=position)[-1]["request"]
               ["Request"]["Params"]["Direction"] == "Stop")
    page.release(button)
