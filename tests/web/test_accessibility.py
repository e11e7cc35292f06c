"""The accessibility of every view: with axe-core, by keyboard, on small and zoomed screens."""

import pathlib

import pytest

from tests.web.support.page import eventually

AXE = pathlib.Path(__file__).parents[2] / "build/web_tests/node_modules/axe-core/axe.min.js"
VIEWS = ["Camera", "Clips", "Streaming", "Cloud", "Settings", "API"]
SMALLEST_TARGET = 44


def serious_findings(page, rules):
    if not page.browser.execute_script("return window.axe !== undefined"):
        page.browser.execute_script(AXE.read_text() + "; window.axe = axe;")
    result = page.browser.execute_async_script("""
        const [rules, done] = arguments;
        axe.run(document, {resultTypes: ['violations'], ...(rules && {runOnly: rules})})
          .then(done, (error) => done({error: String(error)}));""", rules)
    assert "error" not in result, result
    return [(finding["id"], [node["html"][:120] for node in finding["nodes"]])
            for finding in result["violations"] if finding["impact"] in ("serious", "critical")]


def fully_shown(page):
    """Without transitions, whose intermediate colors do not count."""
    return page.browser.execute_script("return document.getAnimations().length === 0")


# The looks differ in their colors only.
@pytest.mark.parametrize("look, rules", [("Dark", None), ("Light", ["color-contrast"])],
                         ids=["Dark", "Light"])
def test_axe_has_no_serious_finding(page, look, rules):
    page.choose("Look", look)
    for view in VIEWS:
        page.go_to(view)
        eventually(lambda: fully_shown(page))
        assert serious_findings(page, rules) == [], view
    page.press("Simulator")
    eventually(lambda: fully_shown(page))
    assert serious_findings(page, rules) == []
    page.press("Log out")
    eventually(lambda: page.find("dialog", "Log in"))
    eventually(lambda: fully_shown(page))
    assert serious_findings(page, rules) == []


@pytest.mark.parametrize("width, height", [(360, 740), (640, 450), (1280, 900)],
                         ids=["360 px", "200 % zoom", "desktop"])
def test_fits_without_scrolling_sideways(page, width, height):
    page.resize(width, height)
    for view in VIEWS:
        page.go_to(view)
        overflow = page.browser.execute_script(
            "return document.documentElement.scrollWidth - document.documentElement.clientWidth")
        assert overflow <= 0, view


@pytest.mark.parametrize("width, columns", [(899, 1), (900, 2)])
def test_two_columns_from_900_px(page, width, columns):
    page.resize(width, 900)
    lefts = page.browser.execute_script(
        "return [...document.querySelectorAll('#camera .panel')].map((p) => p.getBoundingClientRect().left)")
    assert len(set(lefts)) == columns


def test_targets_are_large_enough(page):
    for view in VIEWS:
        page.go_to(view)
        small = page.browser.execute_script("""
            const tooSmall = ({width, height}) => width < arguments[0] || height < arguments[0];
            const target = (control) => /^(checkbox|radio)$/.test(control.type) ? control.closest('label') : control;
            return [...document.querySelectorAll('button, a, select, input, summary')]
              .filter((control) => control.checkVisibility() && !control.matches('.skip'))
              .filter((control) => tooSmall(target(control).getBoundingClientRect()))
              .map((control) => control.outerHTML.slice(0, 100));""", SMALLEST_TARGET)
        assert small == [], view


def test_everything_can_be_reached_and_operated_by_keyboard(page):
    page.browser.execute_script("document.activeElement.blur(); scrollTo(0, 0)")
    seen = []
    for _ in range(200):
        page.key("rawKeyDown", "Tab", 9)
        page.key("keyUp", "Tab", 9)
        focused = page.browser.switch_to.active_element
        if focused.tag_name == "body" and seen:
            break
        outline = page.browser.execute_script("return getComputedStyle(arguments[0]).outlineStyle", focused)
        assert outline == "solid", focused.get_attribute("outerHTML")[:100]
        seen.append(focused)
    reachable = page.browser.execute_script(
        "return [...document.querySelectorAll('button, a, select, input')]"
        ".filter((c) => c.checkVisibility() && !c.disabled && c.tabIndex >= 0)")
    missing = [control for control in reachable if control not in seen]
    assert [control.get_attribute("outerHTML")[:100] for control in missing] == []
    record = page.button("Record")
    page.browser.execute_script("arguments[0].focus()", record)
    page.key("keyDown", " ", 32)
    page.key("keyUp", " ", 32)
    eventually(lambda: page.is_pressed("Record"))


def test_live_regions_tell_of_changes_of_state_only(page):
    eventually(lambda: page.text_of("#tally") == "Off")
    page.browser.execute_script("""
        window.told = [];
        const note = ({addedNodes}) => window.told.push(...[...addedNodes].map((node) => node.textContent));
        new MutationObserver((changes) => changes.forEach(note))
          .observe(document.querySelector('[role=log]'), {childList: true, characterData: true, subtree: true});""")
    before = len(page.journal("GetCamStatus"))
    eventually(lambda: len(page.journal("GetCamStatus")) > before + 8)
    assert page.browser.execute_script("return window.told") == []
    # Both come with the same status.
    page.set_state(recording={"status": "Rec"}, battery={"level": 1})
    eventually(lambda: page.browser.execute_script("return window.told") ==
               ["Recording status: rec", "Warning: Battery low"])


def test_the_looks(page):
    background = "return getComputedStyle(document.body).backgroundColor"
    assert page.browser.execute_script(background) == "rgb(13, 17, 21)"
    page.choose("Look", "Light")
    eventually(lambda: page.browser.execute_script(background) == "rgb(238, 241, 244)")
    page.browser.refresh()
    eventually(page.is_live)
    assert page.browser.execute_script(background) == "rgb(238, 241, 244)"
    page.choose("Look", "System")
    for scheme, color in (("dark", "rgb(13, 17, 21)"), ("light", "rgb(238, 241, 244)")):
        page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})
        eventually(lambda: page.browser.execute_script(background) == color)
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": []})
