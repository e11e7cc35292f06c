"""The limits that the samples and the simulated camera's web server have in common."""

import re

import pytest
from samples import SAMPLES, TREE


@pytest.mark.parametrize("path, limit", [
    (SAMPLES / "lighttpd.conf", r'"read-timeout" => (\d+)'),
    (SAMPLES / "nginx.conf", r"fastcgi_read_timeout (\d+)s;"),
    (SAMPLES / "apache.conf", r"CGIDScriptTimeout (\d+)"),
    (TREE / "simulator/lighttpd.conf", r'"read-timeout" => (\d+)'),
    (TREE / "docs/integration.md", r"Handler that prints nothing \| given up after (\d+) s"),
    (TREE / "docs/security.md", r"time-out for the handler, (\d+) s in the samples"),
], ids=lambda value: getattr(value, "name", ""))
def test_a_handler_may_take_five_minutes(path, limit):
    assert re.findall(limit, path.read_text()) == ["300"]
