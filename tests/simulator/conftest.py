import pathlib
import sys

import pytest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))

from world import World  # noqa: E402


@pytest.fixture(scope="session")
def running_world():
    with World() as world:
        yield world


@pytest.fixture
def world(running_world):
    """A camera as it is after the start, shared by the tests one after the other."""
    assert running_world.simulator("POST", "reset", {}) == (200, {})
    return running_world
