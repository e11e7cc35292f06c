"""Every example is a real exchange: it follows the schemas, and the handler's reply is the same byte
by byte, in the example's scene of the simulated camera, whose clock stands still.

An example may also have a "state", which is laid over the scene (PATCH /simulator/state). Where scene
or state are special, "when" tells readers what it is about."""

import json
import sys

import pytest
from description import API, commands, reply_violations, violations
from world import World

sys.path.insert(0, str(API))
from api_json import compact, dump  # noqa: E402

FILES = sorted((API / "examples").glob("*.json"))
IDS = [path.stem for path in FILES]


def read(path):
    return json.loads(path.read_text())


@pytest.fixture(scope="module")
def worlds():
    world = Worlds()
    yield world
    world.close()


class Worlds:
    """One world, put into the scene and state of each example."""

    def __init__(self):
        self._world = None

    def for_example(self, example):
        if self._world is None:
            self._world = World().__enter__()
        reset = {"paused": True}
        if example["scene"] != "default":
            reset["scene"] = example["scene"]
        assert self._world.simulator("POST", "reset", reset)[0] == 200
        if "state" in example:
            assert self._world.simulator("PATCH", "state", example["state"])[0] == 200
        return self._world

    def close(self):
        if self._world is not None:
            self._world.stop()


def test_there_is_an_example_of_every_command():
    assert set(commands()) <= set(IDS)
    assert {name.partition("-")[0] for name in IDS} == set(commands())


@pytest.mark.parametrize("path", FILES, ids=IDS)
def test_example_is_about_its_command_and_well_formed(path):
    example = read(path)
    command = path.stem.partition("-")[0]
    is_special = example["scene"] != "default" or "state" in example
    assert [key for key in example if key != "state"] == [
        "scene", *(["when"] if is_special else []), "requests", "replies"]
    assert len(example["requests"]) == len(example["replies"]) > 0
    assert command in [request["Request"]["Command"] for request in example["requests"]]
    assert path.read_text() == dump(example), "run api/generate"


@pytest.mark.parametrize("path", FILES, ids=IDS)
def test_example_follows_the_schemas(path):
    example = read(path)
    for request, reply in zip(example["requests"], example["replies"]):
        assert reply_violations(reply) == []
        if "Requested" in reply["Response"]:
            command = request["Request"]["Command"]
            assert reply["Response"]["Requested"] == command
            assert violations(command + "Request", request) == []


@pytest.mark.parametrize("path", FILES, ids=IDS)
def test_example_is_what_the_handler_answers(path, worlds):
    example = read(path)
    world = worlds.for_example(example)
    for request, reply in zip(example["requests"], example["replies"]):
        status, _, body = world.post(compact(request))
        assert (status, body.decode()) == (200, compact(reply)), compact(request)
