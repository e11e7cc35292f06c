"""Starts the web server samples and talks to them."""

import contextlib
import http.client
import os
import shutil
import signal
import socket
import subprocess
import time
from pathlib import Path

TREE = Path(__file__).resolve().parents[2]
SAMPLES = TREE / "packaging/servers"
API = "/cgi-bin/camera_remote.cgi"
SESSION = "server-test"

# What starts each sample, as its first lines say. The last word is the sample.
FCGIWRAP = ["setpriv", "--reuid", "www-data", "--regid", "www-data", "--clear-groups",
            "fcgiwrap", "-c", "16", "-s", "unix:/run/fcgiwrap/socket"]
SERVERS = {
    "lighttpd": ["lighttpd", "-D", "-f", "lighttpd.conf"],
    "nginx": ["nginx", "-c", "nginx.conf"],
    "busybox": ["busybox-httpd"],
    "apache": ["apache2", "-DFOREGROUND", "-f", "apache.conf"],
}


def connect():
    return http.client.HTTPConnection("127.0.0.1", 80, timeout=90)


def exchange(method, path, body=None, headers=None):
    """One request; returns status, headers with names in lower case, and body."""
    connection = connect()
    try:
        connection.request(method, path, body=body, headers=headers or {})
        response = connection.getresponse()
        headers = {}
        for name, value in response.getheaders():
            headers[name.lower()] = ", ".join(filter(None, [headers.get(name.lower()), value]))
        return response.status, headers, response.read()
    finally:
        connection.close()


def raw_exchange(request):
    """Sends bytes as they are and returns all that comes back."""
    with socket.create_connection(("127.0.0.1", 80), timeout=90) as connection:
        connection.sendall(request)
        reply = b""
        while piece := connection.recv(65536):
            reply += piece
        return reply


def command(name, params=""):
    params = ',"Params":{' + params + "}" if params else ""
    return f'{{"Request":{{"Command":"{name}","SessionID":"{SESSION}"{params}}}}}'.encode()


def port_is_open():
    try:
        socket.create_connection(("127.0.0.1", 80), timeout=1).close()
        return True
    except OSError:
        return False


def wait_until(condition, description):
    deadline = time.monotonic() + 20
    while not condition():
        assert time.monotonic() < deadline, description
        time.sleep(0.05)


def wait_for_port():
    wait_until(port_is_open, "the web server does not listen")


def wait_until_the_port_is_free():
    wait_until(lambda: not port_is_open(), "the web server does not end")


@contextlib.contextmanager
def running(name, folder, option=None):
    """Starts a copy of a sample, with the lines of an option switched on as the sample says."""
    *words, sample = SERVERS[name]
    copy = folder / sample
    shutil.copy(SAMPLES / sample, copy)
    if option:
        subprocess.run(["sed", "-i", f"s/#{option}# //", copy], check=True)
        copy.write_text(copy.read_text().replace("192.168.0.0/24", "127.0.0.2/32")
                        .replace("192.168.0.", "127.0.0.2"))
    commands = [[*words, str(copy)] if words else [str(copy)]]
    if name == "nginx":
        commands.insert(0, FCGIWRAP)
    shutil.rmtree("/run/fcgiwrap", ignore_errors=True)
    os.makedirs("/run/fcgiwrap")
    shutil.chown("/run/fcgiwrap", "www-data")
    processes = [subprocess.Popen(command, start_new_session=True) for command in commands]
    try:
        wait_for_port()
        if name == "nginx":
            wait_until(lambda: os.path.exists("/run/fcgiwrap/socket"), "fcgiwrap does not listen")
        yield
    finally:
        for process in reversed(processes):
            os.killpg(process.pid, signal.SIGTERM)
            process.wait(20)
        wait_until_the_port_is_free()
