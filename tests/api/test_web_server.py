"""The HTTP answers that a web server gives in the handler's place."""

import socket
import urllib.parse

import pytest
from description import DOCUMENT
from world import HANDLER_PATH, World

RESPONSES = DOCUMENT["paths"][HANDLER_PATH]["post"]["responses"]
MONITOR_START = '{"Request":{"Command":"MonitorStart","SessionID":"rv130-session"}}'


@pytest.fixture(scope="module")
def world():
    with World() as one:
        yield one


def status_of(world, head):
    """The status of a request that no HTTP library would send."""
    address = urllib.parse.urlsplit(world.url)
    with socket.create_connection((address.hostname, address.port), timeout=10) as connection:
        connection.sendall(f"{head}\r\nHost: camera\r\n\r\n".encode())
        return connection.makefile("rb").readline().split()[1].decode()


def test_statuses_are_those_of_the_document(world):
    assert world.simulator("POST", "faults", {"fault": "absent", "daemon": "quonta_cp"})[0] == 200
    post = f"POST {HANDLER_PATH} HTTP/1.1"
    answers = {
        "a folder": str(world.request("POST", "/cgi-bin/", b"{}")[0]),
        "a wrong path": str(world.request("POST", "/cgi-bin/other.cgi", b"{}")[0]),
        "no length": status_of(world, post),
        "a huge body": status_of(world, f"{post}\r\nContent-Length: 99999999999999"),
        "no daemon": str(world.post(MONITOR_START)[0]),
        "no POST": str(world.request("GET", HANDLER_PATH)[0]),
        "an unknown method": status_of(world, f"BREW {HANDLER_PATH} HTTP/1.1"),
        "an unknown encoding": status_of(world, f"{post}\r\nTransfer-Encoding: gzip"),
    }
    assert answers == {"a folder": "403", "a wrong path": "404", "no length": "411",
                       "a huge body": "413", "no daemon": "500", "no POST": "500",
                       "an unknown method": "501", "an unknown encoding": "501"}
    # The web server of ./run passes every method to the handler, so it has no 405. It is not nginx, which
    # has 502 for 500, and it waits longer than the camera's daemons may take, so it has no 504.
    assert set(answers.values()) | {"200", "405", "502", "504"} == set(RESPONSES)
