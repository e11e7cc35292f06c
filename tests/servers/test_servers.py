"""Each web server sample serves the page and passes POST requests, and nothing else, to the handler."""

import http.client
import json
import os
import subprocess
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import pytest
from samples import API, SAMPLES, SERVERS, TREE, command, exchange, raw_exchange, running

HANDLER_HEADERS = {
    "pragma": "no-cache",
    "cache-control": "no-cache",
    "expires": "Thu, 01 Dec 1994 16:00:00 GMT",
}
FORMAT_ERROR = b'{"Response":{"Result":"FormatError"}}'


@pytest.fixture(name="server", scope="module", params=SERVERS)
def fixture_server(request, tmp_path_factory):
    """The name of a web server that is running as its sample says."""
    with running(request.param, tmp_path_factory.mktemp(request.param)):
        yield request.param


def every_command():
    script = "source simulator/smoke_every_command.sh; every_command"
    lines = subprocess.run(["bash", "-c", script], cwd=TREE, text=True, capture_output=True,
                           check=True).stdout.splitlines()
    return [tuple((line + " ").split(" ", 1)) for line in lines]


def test_serves_the_page(server):
    status, headers, body = exchange("GET", "/")
    assert status == 200
    assert body == (TREE / "web/index.html").read_bytes()
    assert headers["content-type"].startswith("text/html")


@pytest.mark.parametrize("path, content_type", [
    ("/camera_client.js", "text/javascript"),
    ("/style.css", "text/css"),
    ("/icon.svg", "image/svg+xml"),
    ("/api/openapi.json", "application/json"),
])
def test_serves_the_files_of_the_page_with_their_types(server, path, content_type):
    status, headers, _ = exchange("GET", path)
    assert status == 200
    assert headers["content-type"].split(";")[0] == content_type


def test_answers_every_command_once(server):
    commands = every_command()
    assert len(commands) == 68
    for name, params in commands:
        status, headers, body = exchange("POST", API, command(name, params.strip()))
        assert status == 200, name
        assert headers["content-type"] == "application/json", name
        assert {key: headers[key] for key in HANDLER_HEADERS} == HANDLER_HEADERS, name
        response = json.loads(body)["Response"]
        assert response["Requested"] == name
        assert response["Result"] in ("Success", "RequestedError", "DisableError"), name


def test_passes_an_error_reply_on(server):
    status, _, body = exchange("POST", API, command("NoSuchCommand"))
    assert (status, body) == (200, b'{"Response":{"Result":"CommandError"}}')


@pytest.mark.parametrize("method", ["GET", "HEAD", "OPTIONS", "PUT", "DELETE"])
def test_keeps_other_methods_from_the_handler(server, method):
    if server == "busybox":
        # It starts the handler for every method. The handler prints nothing, and the server closes
        # the connection.
        with pytest.raises(http.client.RemoteDisconnected):
            exchange(method, API)
        return
    status, headers, _ = exchange(method, API)
    assert status == 405
    # Apache adds an empty one of its own.
    assert headers["allow"].strip(", ") == "POST"


def test_a_query_string_does_not_reach_the_command_line(server):
    status, _, body = exchange("POST", API + "?0", command("GetSystemInfo").replace(b"server", b"x"))
    assert (status, body) == (200, b'{"Response":{"Result":"SessionError"}}')


def test_other_programs_of_the_folder_are_not_served(server):
    status, _, _ = exchange("POST", "/cgi-bin/", b"x")
    assert status in (403, 404, 405, 501)


def test_a_post_without_a_length_has_no_body(server):
    reply = raw_exchange(f"POST {API} HTTP/1.1\r\nHost: camera\r\nConnection: close\r\n\r\n".encode())
    if server == "lighttpd":
        assert reply.startswith(b"HTTP/1.1 411 ")
    else:
        assert reply.startswith((b"HTTP/1.1 200 ", b"HTTP/1.0 200 ")) and FORMAT_ERROR in reply


def test_a_chunked_body_arrives_or_is_refused(server):
    body = command("GetSystemInfo")
    reply = raw_exchange(
        f"POST {API} HTTP/1.1\r\nHost: camera\r\nConnection: close\r\n"
        "Transfer-Encoding: chunked\r\n\r\n".encode()
        + b"%x\r\n%s\r\n0\r\n\r\n" % (len(body), body))
    if server == "apache":
        assert reply.startswith(b"HTTP/1.1 411 ")
    elif server == "busybox":
        assert FORMAT_ERROR in reply  # it knows nothing of chunks, and the body has no length
    else:
        assert b'"Requested":"GetSystemInfo","Result":"Success"' in reply


def test_a_body_of_60_kilobytes_arrives_whole(server):
    padding = b'"Padding":"' + b"x" * 60_000 + b'",'
    body = command("GetSystemInfo").replace(b'{"Command"', b"{" + padding + b'"Command"')
    status, _, reply = exchange("POST", API, body)
    assert status == 200
    assert b'"Requested":"GetSystemInfo","Result":"Success"' in reply


def test_a_body_of_5_megabytes_is_refused_or_answered(server):
    padding = b'"Padding":"' + b"x" * 5_000_000 + b'",'
    body = command("GetSystemInfo").replace(b'{"Command"', b"{" + padding + b'"Command"')
    try:
        status, _, reply = exchange("POST", API, body)
    except (BrokenPipeError, ConnectionResetError):
        assert server != "busybox"  # the others stop reading once they have refused it
        return
    if server == "busybox":
        assert status == 200 and b'"Requested":"GetSystemInfo"' in reply
    else:
        assert status == 413


def test_a_body_that_never_arrives_is_given_up(server):
    start = time.monotonic()
    reply = raw_exchange(f"POST {API} HTTP/1.1\r\nHost: camera\r\nContent-Length: 100\r\n"
                         "Connection: close\r\n\r\n".encode())
    assert time.monotonic() - start < 40
    assert reply == b"" or int(reply.split(b" ", 2)[1]) in (200, 400, 408, 500, 504)


def test_a_missing_daemon_is_a_server_error(server):
    os.rename("/run/quonta_cp.sock", "/run/away.sock")
    try:
        if server == "busybox":
            with pytest.raises(http.client.RemoteDisconnected):
                exchange("POST", API, command("GetCamStatus"))
        else:
            status, _, _ = exchange("POST", API, command("GetCamStatus"))
            assert status == {"lighttpd": 500, "nginx": 502, "apache": 500}[server]
    finally:
        os.rename("/run/away.sock", "/run/quonta_cp.sock")
    status, _, _ = exchange("POST", API, command("GetCamStatus"))
    assert status == 200


def test_50_clients_at_once_are_all_answered(server):
    start = threading.Barrier(50)

    def one_client(_):
        start.wait()
        for attempt in range(10):
            try:
                return exchange("POST", API, command("GetCamStatus"))
            except ConnectionResetError:
                # busybox resets some connections when more than some 20 arrive at once.
                assert server == "busybox" and attempt < 9
        return None

    with ThreadPoolExecutor(50) as clients:
        for status, _, body in clients.map(one_client, range(50)):
            assert status == 200
            assert json.loads(body)["Response"]["Result"] == "Success"


def test_the_handler_runs_as_the_web_servers_user(server):
    Path("/var/tmp/lighttpd/ntp").unlink(missing_ok=True)
    exchange("POST", API, command("SetNTPServer", '"Address":"10.0.0.9"'))
    assert Path("/var/tmp/lighttpd/ntp").read_text() == "address\t10.0.0.9\ntc_sync\t1\n"
    assert Path("/var/tmp/lighttpd/ntp").owner() == "www-data"


def test_without_the_option_no_origin_may(server):
    _, headers, _ = exchange("POST", API, command("GetSystemInfo"),
                             {"Origin": "https://control-room.example"})
    assert "access-control-allow-origin" not in headers


def test_each_sample_has_its_server_here():
    assert {path.name for path in SAMPLES.iterdir()} == {
        "lighttpd.conf", "nginx.conf", "apache.conf", "busybox-httpd"}
    assert len(SERVERS) == 4
