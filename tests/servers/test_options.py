"""The options of the web server samples: other origins, an access list, encryption."""

import http.client
import os
import ssl
import subprocess

import pytest
from samples import API, SERVERS, command, exchange, running

# The origins that each sample lists. busybox cannot.
ORIGINS = {
    "lighttpd": ["https://control-room.example"],
    "nginx": ["https://control-room.example", "https://gallery.example"],
    "apache": ["https://control-room.example", "https://gallery.example"],
}
PREFLIGHT = {"Access-Control-Request-Method": "POST",
             "Access-Control-Request-Headers": "content-type"}


@pytest.fixture(name="cors_server", params=ORIGINS)
def fixture_cors_server(request, tmp_path):
    with running(request.param, tmp_path, "CORS"):
        yield request.param


def test_listed_origins_may_use_the_api(cors_server):
    for origin in ORIGINS[cors_server]:
        status, headers, _ = exchange("OPTIONS", API, headers=PREFLIGHT | {"Origin": origin})
        assert status == 204
        assert headers["access-control-allow-origin"] == origin
        assert headers["access-control-allow-methods"] == "POST"
        assert headers["access-control-allow-headers"] == "Content-Type"
        status, headers, body = exchange("POST", API, command("GetSystemInfo"), {"Origin": origin})
        assert status == 200 and b'"Result":"Success"' in body
        assert headers["access-control-allow-origin"] == origin
        assert "Origin" in headers["vary"].split(",")


@pytest.mark.parametrize("origin", ["https://elsewhere.example", "https://control-room.example.org"])
def test_other_origins_may_not(cors_server, origin):
    status, headers, _ = exchange("OPTIONS", API, headers=PREFLIGHT | {"Origin": origin})
    assert (cors_server, status) == (cors_server, 405)
    assert "access-control-allow-origin" not in headers
    _, headers, _ = exchange("POST", API, command("GetSystemInfo"), {"Origin": origin})
    assert "access-control-allow-origin" not in headers


@pytest.mark.parametrize("name", SERVERS)
def test_the_access_list_lets_only_listed_addresses_in(name, tmp_path):
    with running(name, tmp_path, "ACCESS"):
        for path, method in (("/", "GET"), (API, "POST")):
            for source, admitted in (("127.0.0.2", True), ("127.0.0.1", False)):
                assert is_served(method, path, source) == admitted, (path, source)


def is_served(method, path, source):
    """Whether a request from that address of this machine is answered with 200."""
    connection = http.client.HTTPConnection("127.0.0.1", 80, timeout=30, source_address=(source, 0))
    try:
        connection.request(method, path, body=command("GetSystemInfo") if method == "POST" else None)
        return connection.getresponse().status == 200
    except (BrokenPipeError, ConnectionResetError):
        return False  # the server did not wait for the body
    finally:
        connection.close()


@pytest.mark.parametrize("name", ["lighttpd", "nginx", "apache"])
def test_the_encrypted_port_serves_the_same(name, tmp_path):
    os.makedirs("/run/etc-ssl", exist_ok=True)
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=camera",
         "-keyout", "/run/etc-ssl/camera.key", "-out", "/run/etc-ssl/camera.crt"],
        check=True, capture_output=True)
    subprocess.run(["mount", "--bind", "/run/etc-ssl", "/etc/ssl"], check=True)
    try:
        with running(name, tmp_path, "TLS"):
            context = ssl.create_default_context(cafile="/run/etc-ssl/camera.crt")
            context.check_hostname = False
            connection = http.client.HTTPSConnection("127.0.0.1", 443, context=context, timeout=30)
            connection.request("POST", API, body=command("GetSystemInfo"))
            response = connection.getresponse()
            assert response.status == 200
            assert b'"Result":"Success"' in response.read()
            connection.close()
    finally:
        subprocess.run(["umount", "/etc/ssl"], check=True)
