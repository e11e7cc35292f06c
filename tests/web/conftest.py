"""One browser for all tests of a worker, one simulated camera for each module, a fresh page for each
test."""

import contextlib
import pathlib
import sys

import pytest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]))

from tests.support.world import World  # noqa: E402
from tests.web.support.browser import start_browser  # noqa: E402
from tests.web.support.page import Page, eventually  # noqa: E402


@pytest.fixture(scope="session")
def browser():
    with start_browser() as browser:
        yield browser


@pytest.fixture(scope="module")
def world():
    with World() as world:
        yield world


@pytest.fixture
def fresh_page(browser, world):
    """The page before anybody has logged in, in front of a camera as it is switched on.

    Whatever a test does with it: no error in the console, no violation of the security policy, and
    no request to another origin.
    """
    with opened(browser, world, logged_in=False) as page:
        yield page


@pytest.fixture
def page(browser, world):
    """The same, logged in and live."""
    with opened(browser, world, logged_in=True) as page:
        eventually(page.is_live, "a live connection")
        yield page


@contextlib.contextmanager
def opened(browser, world, logged_in):
    page = Page(browser, world)
    page.open(logged_in)
    yield page
    page.check_health()
    page.close_other_windows()
