"""The Python client against the simulated camera and against a web server that misbehaves."""

import threading
import time

import pytest
from calls import every_call, expected_request
from world import World

import camera_remote
from camera_remote import (Camera, CameraUnreachable, CommandError, DisableError, FormatError,
                           InvalidReply, InvalidValue, RequestedError, SessionError)

SUCCESS = '{"Response":{"Requested":"MonitorStart","Result":"Success"}}'


@pytest.mark.parametrize("call", every_call(), ids=lambda call: call.command)
def test_sends_exactly_the_bytes_of_a_command(server, call):
    server.answer('{"Response":{"Requested":"%s","Result":"Success"}}' % call.command)
    camera = Camera(server.url, "some-id")
    eval(f"camera.{call.python}")
    assert server.bodies == [expected_request(call, "some-id")]
    assert server.paths == ["/cgi-bin/camera_remote.cgi"]


@pytest.mark.parametrize("call", every_call(), ids=lambda call: call.command)
def test_the_camera_takes_every_command(world, call):
    if call.state:
        assert world.simulator("PATCH", "state", call.state.encode())[0] == 200
    exchanges = []
    camera = Camera(world.url, world.session, on_exchange=exchanges.append)
    result = eval(f"camera.{call.python}")
    has_data = call.command.startswith(("Get", "Available", "PageChange", "Heartbeat"))
    assert bool(result) == has_data
    exchange, = exchanges
    assert exchange.status == 200
    assert exchange.request == expected_request(call, world.session)
    assert exchange.reply.startswith(
        '{"Response":{"Requested":"%s","Result":"Success"' % call.command)
    assert exchange.seconds > 0


def test_every_command_has_a_call():
    assert (sorted(call.command for call in every_call())
            == sorted(row.name for row in camera_remote.COMMANDS))
    assert len(every_call()) == 68


def test_what_was_set_is_read_back():
    with World() as world:
        camera = Camera(world.url + "/", world.session)
        camera.set_streaming_server_settings_udp(id=2, alias="Bühne", dst_address="10.0.0.5",
                                                 dst_port=6000, pcr_jitter=0)
        assert camera.get_streaming_server_settings(id=2) == {
            "Alias": "Bühne", "Type": "UDP",
            "Udp": {"DstAddress": "10.0.0.5", "DstPort": 6000, "PcrJitter": 0}}
        assert camera.set_cam_ctrl(cam_ctrl="Rec") is None
        assert camera.get_cam_status()["Status"] == "Rec"


def test_refusals_of_the_handler(world):
    camera = Camera(world.url, world.session)
    with pytest.raises(RequestedError) as refusal:
        camera.set_web_key_event(kind="Iris", key="Sideways")
    assert not refusal.value.by_camera
    assert refusal.value.command == "SetWebKeyEvent"
    assert refusal.value.data is None
    with pytest.raises(CommandError, match="^NoSuchCommand: the camera does not know"):
        camera.send("NoSuchCommand")
    with pytest.raises(SessionError):
        Camera(world.url).monitor_start()
    with pytest.raises(SessionError):
        Camera(world.url, "of-yesterday").get_cam_status()
    assert Camera(world.url).heartbeat_confirmation()["VideoOutput"] == "On"


def test_a_command_with_parameters_never_goes_without_them(world):
    with pytest.raises(RequestedError):
        Camera(world.url, world.session).send("SetNTPServer")


REFUSALS = [
    ("RequestedError", RequestedError),
    ("DisableError", DisableError),
    ("SessionError", SessionError),
    ("FormatError", FormatError),
    ("CommandError", CommandError),
]


@pytest.mark.parametrize("word, error", REFUSALS, ids=[row[0] for row in REFUSALS])
def test_a_refusal_is_an_exception_of_its_name(server, word, error):
    server.answer('{"Response":{"Result":"%s"}}' % word)
    server.answer('{"Response":{"Requested":"GetCamStatus","Result":"%s","Data":{"A":1}}}' % word)
    for by_camera, data in ((False, None), (True, {"A": 1})):
        with pytest.raises(camera_remote.Refusal) as refusal:
            Camera(server.url, "id").get_cam_status()
        assert type(refusal.value) is error
        assert refusal.value.by_camera == by_camera
        assert refusal.value.data == data


BROKEN_LABEL = ('{"Response":{"Requested":"GetCamStatus","Result":"Success",'
                '"Data":{"Iris":{"Letter":"F"2"}}}}')

NO_ANSWERS = [
    ("an error page", ("<h1>Internal Server Error</h1>", 500), "http", 500),
    ("a page that is not there", ("", 404), "http", 404),
    ("success with another number", (SUCCESS, 201), "http", 201),
    ("nothing", ("", 200), "empty", None),
    ("another page", ("<html></html>", 200), "reply", None),
    ("other JSON", ('{"status":"ok"}', 200), "reply", None),
    ("a list", ("[]", 200), "reply", None),
    ("no object", ('{"Response":"Success"}', 200), "reply", None),
    ("data that are no object", ('{"Response":{"Result":"Success","Data":[]}}', 200), "reply", None),
    ("another word", ('{"Response":{"Result":"Sucess"}}', 200), "reply", None),
    ("a word that is none", ('{"Response":{"Result":["Success"]}}', 200), "reply", None),
    ("bytes", (b"\xff\xfe", 200), "reply", None),
]


@pytest.mark.parametrize("answer, reason, status", [row[1:] for row in NO_ANSWERS],
                         ids=[row[0] for row in NO_ANSWERS])
def test_what_is_no_answer_of_the_camera(server, answer, reason, status):
    server.answer(*answer)
    with pytest.raises(CameraUnreachable) as error:
        Camera(server.url, "id").get_cam_status()
    assert (error.value.reason, error.value.status) == (reason, status)


def test_a_label_that_breaks_the_json_is_told_apart(server):
    server.answer(BROKEN_LABEL)
    server.answer(BROKEN_LABEL.replace("Success", "DisableError"))
    camera = Camera(server.url, "id")
    with pytest.raises(InvalidReply) as error:
        camera.get_cam_status()
    assert error.value.reply == BROKEN_LABEL
    with pytest.raises(DisableError):
        camera.get_cam_status()


def test_connections_that_fail(server):
    camera = Camera(server.url, "id")
    for fail in (server.hang_up, server.break_off):
        fail()
        with pytest.raises(CameraUnreachable) as error:
            camera.monitor_start()
        assert error.value.reason == "network"
    server.__exit__()
    with pytest.raises(CameraUnreachable, match="no connection to 127.0.0.1:") as error:
        camera.monitor_start()
    assert error.value.reason == "network"


@pytest.mark.parametrize("of_camera, of_call", [(0.2, None), (None, 0.2), (60, 0.2)])
def test_a_silent_camera_times_out(server, of_camera, of_call):
    server.stay_silent()
    start = time.monotonic()
    with pytest.raises(CameraUnreachable, match="no reply within 0.2 s") as error:
        Camera(server.url, "id", timeout=of_camera).monitor_start(timeout=of_call)
    assert error.value.reason == "timeout"
    assert 0.2 <= time.monotonic() - start < 5


def test_the_hook_sees_what_went_wrong(server):
    server.answer("no", 500)
    exchanges = []
    with pytest.raises(CameraUnreachable) as error:
        Camera(server.url, "id", on_exchange=exchanges.append).monitor_start()
    exchange, = exchanges
    assert exchange.error is error.value
    assert (exchange.command, exchange.status, exchange.reply) == ("MonitorStart", 500, "no")


def test_the_order_of_the_members_is_fixed(server):
    for _ in range(3):
        server.answer(SUCCESS)
    camera = Camera(server.url, "id")
    camera.send("SetPresetZoomPosition", {"Position": 5, "Other": "x", "ID": "A"})
    camera.send("SetWebFtp1UploadASelect", {"block10": 1, "block2": -1})
    camera.send("Unknown", {"B": 1, "A": 2})
    assert server.bodies == [
        '{"Request":{"Command":"SetPresetZoomPosition","SessionID":"id",'
        '"Params":{"ID":"A","Position":5,"Other":"x"}}}',
        '{"Request":{"Command":"SetWebFtp1UploadASelect","SessionID":"id",'
        '"Params":{"block2":-1,"block10":1}}}',
        '{"Request":{"Command":"Unknown","SessionID":"id","Params":{"B":1,"A":2}}}',
    ]


FORBIDDEN_TEXTS = ["a b", " a", "a\t", "a\n", "a\r", "a\v", "a\f", 'a"', "a,b", "a}", "a\\", "\0",
                   "a\x01", "\x1f", "\x7f", "\ud800"]


@pytest.mark.parametrize("text", FORBIDDEN_TEXTS, ids=ascii)
def test_a_text_that_the_wire_cannot_carry_is_not_sent(server, text):
    camera = Camera(server.url, "id")
    with pytest.raises(InvalidValue, match="Address cannot hold"):
        camera.set_ntp_server(address=text)
    with pytest.raises(InvalidValue, match="SessionID cannot hold"):
        Camera(server.url, text).get_cam_status()
    with pytest.raises(InvalidValue, match="Command cannot hold"):
        camera.send(text)
    assert server.bodies == []


FORBIDDEN_VALUES = [
    ("another type", lambda camera: camera.set_zoom_ctrl(position="500"), "Position must be a whole"),
    ("a fraction", lambda camera: camera.set_zoom_ctrl(position=2.5), "not 2.5"),
    ("a truth value", lambda camera: camera.set_zoom_ctrl(position=True), "not True"),
    ("nothing", lambda camera: camera.set_ntp_server(address=None), "Address must be a text"),
    ("too large", lambda camera: camera.set_zoom_ctrl(position=65536), "from 0 to 65535"),
    ("too small", lambda camera: camera.set_zoom_ctrl(position=-1), "from 0 to 65535"),
    ("too long", lambda camera: camera.set_ntp_server(address="ü" * 16), "at most 30 bytes"),
    ("another word", lambda camera: camera.set_cam_ctrl(cam_ctrl="Stpo"), 'one of "Rec", "Stop"'),
    ("beyond 32 bits", lambda camera: camera.send("X", {"A": 2**31}), "A must be"),
    ("a list", lambda camera: camera.send("X", {"A": [1]}), "A must be"),
    ("clip 0", lambda camera: camera.set_web_ftp1_upload_a_select(clips=[0]), "from 1 to 4000"),
    ("clip 4001", lambda camera: camera.set_web_ftp1_upload_a_select(clips=[4001]), "not 4001"),
    ("no clips", lambda camera: camera.set_web_ftp1_upload_a_select(clips=5), "a list of clip"),
]


@pytest.mark.parametrize("call, message", [row[1:] for row in FORBIDDEN_VALUES],
                         ids=[row[0] for row in FORBIDDEN_VALUES])
def test_a_value_that_would_be_taken_for_another_is_not_sent(server, call, message):
    with pytest.raises(InvalidValue, match=message):
        call(Camera(server.url, "id"))
    assert server.bodies == []


def test_a_value_that_holds_the_name_of_a_later_parameter_is_not_sent(server):
    server.answer(SUCCESS)
    camera = Camera(server.url, "id")
    rest = {"dst_port": 1, "pcr_jitter": 0}
    with pytest.raises(InvalidValue, match='DstPort cannot be sent: .* would read "10.0.0.1"'):
        camera.set_streaming_server_settings_udp(id=1, alias="DstPort", dst_address="10.0.0.1", **rest)
    # Here the camera reads what is meant.
    camera.set_streaming_server_settings_udp(id=1, alias="ID", dst_address="DstAddress", **rest)
    assert len(server.bodies) == 1


def test_the_camera_reads_what_passes_the_check():
    with World() as world:
        camera = Camera(world.url, world.session)
        for alias in ("ID:Alias", "DstAddress", "{[:]}"[:4], "Type", "é", "'"):
            camera.set_streaming_server_settings_udp(id=1, alias=alias, dst_address="10.0.0.1",
                                                     dst_port=1, pcr_jitter=2)
            assert camera.get_streaming_server_settings(id=1) == {
                "Alias": alias, "Type": "UDP",
                "Udp": {"DstAddress": "10.0.0.1", "DstPort": 1, "PcrJitter": 2}}


@pytest.mark.parametrize("url", ["", "127.0.0.1:8080", "ftp://camera", "http://",
                                 "http://camera:99999", "http://camera:x", "http://[::1"])
def test_an_address_that_is_none(url):
    with pytest.raises(InvalidValue, match="http://127.0.0.1:8080"):
        Camera(url)


class FakeClock:
    """In place of the event that `poll` waits with."""

    def __init__(self, rounds):
        self.rounds = rounds
        self.waits = []

    def is_set(self):
        return len(self.waits) >= self.rounds

    def wait(self, seconds):
        self.waits.append(seconds)


def poll(outcomes, **options):
    """Polls a function that returns or raises these; returns the results and the waits."""
    def call():
        outcome = outcomes[len(clock.waits)]
        if isinstance(outcome, Exception):
            raise outcome
        return outcome

    clock = FakeClock(len(outcomes))
    results = list(Camera("http://camera").poll(call, stop=clock, **options))
    return results, clock.waits


def lost():
    return CameraUnreachable("GetCamStatus", "network", "gone")


def test_a_poll_waits_after_each_answer():
    assert poll([1, 2, 3], interval=0.5) == ([1, 2, 3], [0.5, 0.5, 0.5])


def test_a_poll_backs_off_while_the_camera_is_unreachable():
    outcomes = [1, lost(), lost(), lost(), lost(), 2, lost()]
    assert poll(outcomes, interval=1) == ([1, 2], [1, 2, 4, 5, 5, 1, 2])


def test_a_poll_reports_errors_and_does_not_slow_down_for_refusals():
    refusal = DisableError("GetCamStatus", True, None)
    broken = InvalidReply("GetCamStatus", "")
    errors = []
    assert poll([refusal, broken, 1], interval=1, on_error=errors.append) == ([1], [1, 1, 1])
    assert errors == [refusal, broken]


def test_a_poll_without_an_error_handler_raises_what_will_not_pass():
    with pytest.raises(SessionError):
        poll([lost(), SessionError("GetCamStatus", False, None)])


def test_a_poll_never_overlaps_and_stops(world):
    camera = Camera(world.url, world.session)
    stop = threading.Event()
    seen = []

    def follow():
        for status in camera.poll(camera.get_cam_status, interval=0.01, stop=stop):
            seen.append(status["TC"])
            if len(seen) == 5:
                stop.set()

    thread = threading.Thread(target=follow)
    thread.start()
    thread.join(30)
    assert not thread.is_alive()
    assert len(seen) == 5
