"""Takes the pictures of the README into the folder that is named as the argument."""

import io
import pathlib
import sys

from PIL import Image

from tests.support.world import World
from tests.web.support.browser import start_browser
from tests.web.support.page import Page, eventually

DESKTOP = (1440, 900)
PHONE = (390, 844)


def arrange(page):
    """A production under way: on air, recording, zoomed in, the return audio on."""
    page.set_state(
        iris={"stop": "F2.8"}, zoom={"position": 260, "target": 260},
        battery={"info": "Time", "value": 84, "level": 4}, tally={"studio": "Program"},
        gps={"location": "35.4437N 139.6380E"})
    page.press("Record")
    eventually(lambda: page.is_pressed("Record"))
    eventually(lambda: page.text_of("#tally") == "Program")


def take(page, path):
    eventually(lambda: page.browser.execute_script("return document.getAnimations().length === 0"))
    page.browser.execute_script("document.activeElement.blur(); scrollTo(0, 0)")
    picture = Image.open(io.BytesIO(page.browser.get_screenshot_as_png())).convert("RGB")
    # A palette makes small files. It is dithered, since the paint field runs through many colors.
    picture.quantize(palette=picture.quantize(method=Image.Quantize.FASTOCTREE)).save(path, optimize=True)


def take_all(page, folder):
    arrange(page)
    for look in ("Dark", "Light"):
        page.resize(*DESKTOP)
        page.choose("Look", look)
        page.press("Simulator")
        take(page, folder / f"web-remote-desktop-{look.lower()}.png")
        page.press("Simulator")
        page.resize(*PHONE)
        take(page, folder / f"web-remote-phone-{look.lower()}.png")


def main():
    folder = pathlib.Path(sys.argv[1])
    with World() as world, start_browser() as browser:
        page = Page(browser, world)
        page.open()
        page.log_in()
        take_all(page, folder)


if __name__ == "__main__":
    main()
