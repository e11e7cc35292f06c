import pathlib
import signal
import sys

import pytest

sys.dont_write_bytecode = True
REPOSITORY = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(REPOSITORY / "tests/support"), str(REPOSITORY / "clients/python/src")]

from fake_server import FakeServer  # noqa: E402
from world import World  # noqa: E402


def heed_interrupts():
    """For a child process: SIGINT ends it, also where a shell started the tests in the background."""
    signal.signal(signal.SIGINT, signal.SIG_DFL)


@pytest.fixture(scope="session")
def world():
    """The simulated camera; tests that change its state or its session take one of their own."""
    with World() as world:
        yield world


@pytest.fixture
def server():
    """A web server that answers what the test tells it to."""
    with FakeServer() as server:
        yield server
