"""The handler on an emulated board with 64 MB, a kernel and busybox.

The board boots once; its first process, `init`, posts the requests and prints what the tests look at.
"""

import base64
import collections
import json
import re
import shutil
import subprocess
import sys
from datetime import datetime, timezone
from pathlib import Path

import pytest

TREE = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TREE / "tests/support"))

from system_calls import calls_of_the_handler  # noqa: E402

HERE = TREE / "tests/board"
DEBIAN = TREE / "build/debian-armhf"
WORK = TREE / "build/board"  # what the board boots, and what its console has shown
SESSION = "board-test"
TIME_LIMIT_S = 300  # it takes some 20 seconds on an idle machine
START = int(datetime(2026, 3, 5, 20, 30, tzinfo=timezone.utc).timestamp())
BEYOND_2038 = 2214536800

# Where in the shared memory of the camera the status block is.
BLOCK_OFFSET = 0x21E9D400 - 0x21E80000
MODEL_RV130 = 3
DESTINATION_US = 1

# Posted after a restart of the web server: commands that report what others have set.
READ_SETTINGS = {
    "GetNTPStatus": ("", '{"Address":"10.0.0.1","TcSync":"Off","Status":"Master"}'),
    "GetIFBSettings": (
        "", '{"Function":"Enable","Address":"10.0.0.1","Port":5000,"Mountpoint":"STUDIO"}'),
    "GetPresetZoomPosition": ("", '{"A":500,"B":-1,"C":-1}'),
    "GetStreamingSettings": (
        "", '{"Resolution":"1920x1080","Framerate":"60i","Bitrate":"8.0M"}'),
    "GetStreamingServerSettings": (
        '"ID":0',
        '{"Alias":"Morning","Type":"RTMP",'
        '"Rtmp":{"DstUrl":"rtmp://cloud.example/live","StreamKey":"cloud-key"}}'),
}

# What every_command leaves in the settings files. The last command that sets a value wins; for the
# streaming server this is the one that copies the stream information of the cloud. The RTP command
# stores its address under udp_dst_address, deliberately.
SETTINGS_FILES = {
    "ifb": """
        ifb_function 1
        ifb_address 10.0.0.1
        ifb_port 5000
        ifb_mountpoint STUDIO
        ifb_type 0
        ifb_codec 0
        ifb_channel 1
        ifb_sample_rate 48000
        ifb_username
        ifb_password
        """,
    "ntp": """
        address 10.0.0.1
        tc_sync 0
        """,
    "streaming": """
        resolution 0
        quality 34
        server 0
        rfresolution 0
        cldstrmusername 0
        cldstrmpassword 0
        serverurl 0
        """,
    "streaming_server0": """
        str_alias Morning
        type 4
        udp_dst_address 10.0.0.1
        udp_dst_port 5000
        udp_pcr_jitter 0
        tcp_dst_address 0.0.0.0
        tcp_dst_port 0
        zixi_dst_address 10.0.0.1
        zixi_dst_port 2088
        zixi_stream_id s
        zixi_username 0
        zixi_password p
        zixi_latency 100
        zixi_adaptive_bitrate 1
        rtsp_dst_port 0
        rtsp_stream_id 0
        rtsp_username 0
        rtsp_password p
        rtmp_destination_url rtmp://cloud.example/live
        rtmp_stream_key cloud-key
        rtp_dst_address 0
        rtp_dst_port 5004
        rtp_smpte2022_fec 0
        rtp_fec_matrix_l 10
        rtp_fec_matrix_d 10
        """,
    "web_zoom_preset": """
        preset_a 500
        preset_b 65535
        preset_c 65535
        """,
}


def run(*command, **options):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True,
                          **options).stdout


def every_command():
    """The commands with the members of their parameters, as ./run --smoke posts them."""
    lines = run("bash", "-c", "source simulator/smoke_every_command.sh; every_command", cwd=TREE)
    return [line.partition(" ")[::2] for line in lines.decode().splitlines()]


def body(command, params=""):
    params = ',"Params":{' + params + "}" if params else ""
    return f'{{"Request":{{"Command":"{command}","SessionID":"{SESSION}"{params}}}}}'


def bodies(commands):
    """A file for init's post_each."""
    return "".join(f"{command} {body(command, params)}\n" for command, params in commands)


def success(command, data=""):
    data = ',"Data":' + data if data else ""
    return f'{{"Response":{{"Requested":"{command}","Result":"Success"{data}}}}}'


def camera_memory():
    block = bytearray(1024)
    block[516] = MODEL_RV130
    block[517] = DESTINATION_US
    block[228:236] = b"13250042"
    return bytes(BLOCK_OFFSET) + block


def install(preset, component, root):
    run("cmake", "--install", TREE / "build" / preset, "--prefix", "/usr", "--component", component,
        env={"PATH": "/usr/bin:/bin", "DESTDIR": str(root)})


def make_root(root):
    """The files of the board."""
    for folder in ("bin", "etc", "board"):
        (root / folder).mkdir(parents=True)
    shutil.copy(DEBIAN / "bin/busybox", root / "bin")
    shutil.copy(HERE / "init", root)
    (root / "etc/passwd").write_text("root:x:0:0::/:/bin/sh\nwww-data:x:33:33::/:/bin/false\n")
    (root / "etc/group").write_text("root:x:0:\nwww-data:x:33:\n")
    board = root / "board"
    handler = root / "usr/lib/cgi-bin/camera_remote.cgi"
    install("arm", "runtime", root)
    shutil.copy(handler, board / "arm.cgi")
    install("arm-small", "runtime", root)
    shutil.copy(handler, board / "arm-small.cgi")
    install("arm-small", "web", root)
    shutil.copy(TREE / "packaging/servers/busybox-httpd", board)
    for program in ("daemons", "set_clock", "time_requests"):
        shutil.copy(TREE / f"build/arm-small/board_{program}", board / program)
    shutil.copy(TREE / "build/arm/under_filter", board)
    (board / "system_calls").write_text(" ".join(calls_of_the_handler()))
    (board / "camera_memory").write_bytes(camera_memory())
    (board / "session").write_text(f"ID\t{SESSION}\nlifetime\t0\nsessiontime\t0\n")
    (board / "heartbeat").write_text(body("HeartbeatConfirmation"))
    (board / "status").write_text(body("GetCamStatus"))
    (board / "every_command").write_text(bodies(every_command()))
    (board / "read_settings").write_text(
        bodies((command, params) for command, (params, _) in READ_SETTINGS.items()))
    (board / "renewal").write_text(bodies([("SessionRenewal", '"Update":1')]))


def make_initramfs(root):
    """The archive that the kernel unpacks into its first file system."""
    names = "".join(f"./{path.relative_to(root)}\n" for path in sorted(root.rglob("*")))
    return run("cpio", "--create", "--quiet", "--format=newc", "--owner=0:0", cwd=root,
               input=names.encode())


def boot(initramfs):
    """Runs the board until it switches itself off, and returns what its console has shown.

    An instruction takes a nanosecond of the board's time, however busy this machine is.
    """
    kernel = max(DEBIAN.glob("boot/vmlinuz-*"))
    command = ["qemu-system-arm", "-M", "virt", "-cpu", "cortex-a7", "-m", "64", "-nographic",
               "-nic", "none", "-no-reboot", "-icount", "shift=0,sleep=off",
               "-kernel", str(kernel), "-initrd", str(initramfs),
               "-append", "console=ttyAMA0 quiet panic=-1"]
    try:
        output = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, check=False, timeout=TIME_LIMIT_S).stdout
    except subprocess.TimeoutExpired as expired:
        output = (expired.stdout or b"") + f"\nstopped after {TIME_LIMIT_S} s\n".encode()
    return output.decode(errors="replace").replace("\r", "")


@pytest.fixture(name="board", scope="session")
def fixture_board(tmp_path_factory):
    """The results that the board has printed: by name, a list of the values of each line."""
    root = tmp_path_factory.mktemp("root")
    make_root(root)
    WORK.mkdir(exist_ok=True)
    (WORK / "initramfs").write_bytes(make_initramfs(root))
    console = boot(WORK / "initramfs")
    (WORK / "console").write_text(console)
    results = collections.defaultdict(list)
    for line in console.splitlines():
        if line.startswith("@"):
            name, *values = line[1:].split("\t")
            results[name].append(values)
    assert "end" in results, "the board did not finish; its console:\n" + console
    return results


@pytest.fixture(name="replies")
def fixture_replies(board):
    return dict(board["every_command"])


def test_the_page_is_served(board):
    [[page]] = board["page"]
    assert base64.b64decode(page) == (TREE / "web/index.html").read_bytes()


def test_every_command_succeeds(board):
    names = [command for command, _ in every_command()]
    assert len(names) == 68
    assert [command for command, _ in board["every_command"]] == names
    for command, reply in board["every_command"]:
        response = json.loads(reply)["Response"]
        assert (response["Requested"], response["Result"]) == (command, "Success")


def test_every_command_succeeds_under_the_filter_of_system_calls(board):
    results = {command: json.loads(reply)["Response"]["Result"] for command, reply in board["filtered"]}
    assert results == {command: "Success" for command, _ in every_command()}


@pytest.mark.parametrize("command, data", [
    ("MonitorStart", ""),
    ("GetSystemInfo",
     '{"Model":"RV130","Destination":"US","ApiVersion":"1.08.0","Serial":"13250042"}'),
    ("PageChange",
     '{"AllowedPage":{"PlanningMetadata":1,"EditMetadata":1,"ViewRemote":1,"CameraControl":0,'
     '"Setting":0}}'),
    ("GetClipInfo",
     '{"ClipNum":1,"ClipInfo":[{"IndexNo":1,"Name":"CLIP000001","TC":"01:02:03:04-01:02:04:05",'
     '"DateTime":"2026-06-14 T09:30:59","OKMark":"Mark","AspectRaotp":"16:9","Edit":"Enable"}]}'),
    ("GetGPSInfo", '{"AntennaLevel":"GOOD","Location":"35N139E"}'),
    ("GetCldstrmEventList", '{"EventNum":1,"EventInfo":[{"Title":"Morning show"}]}'),
])
def test_what_the_daemons_and_the_status_block_say_is_reported(replies, command, data):
    assert replies[command] == success(command, data)


@pytest.mark.parametrize("name", SETTINGS_FILES)
def test_settings_are_stored(board, name):
    files = {name: base64.b64decode(content) for name, _, content in board["file"]}
    lines = [line.strip().partition(" ") for line in SETTINGS_FILES[name].strip().splitlines()]
    expected = "".join(f"{key}\t{value}\n" for key, _, value in lines)
    assert files[name].decode() == expected


def test_the_settings_folder_has_no_other_files(board):
    names = {name for name, _, _ in board["file"]}
    assert names == {".session"} | SETTINGS_FILES.keys()


def test_files_belong_to_the_user_of_the_web_server_and_are_closed_to_others(board):
    owners = {owner for _, owner, _ in board["file"]}
    assert owners == {"640 www-data www-data"}


@pytest.mark.parametrize("command", READ_SETTINGS)
def test_settings_are_reported_after_a_restart_of_the_web_server(board, command):
    assert dict(board["read_settings"])[command] == success(command, READ_SETTINGS[command][1])


@pytest.mark.parametrize("when, earliest", [("2026", START), ("2040", BEYOND_2038)])
def test_a_renewal_stores_the_time(board, when, earliest):
    content = base64.b64decode(dict(board["session"])[when]).decode()
    match = re.fullmatch(f"ID\t{SESSION}\nlifetime\t(\\d+)\nsessiontime\t(\\d+)\n", content)
    lifetime, renewed = int(match[1]), int(match[2])
    assert earliest <= renewed <= earliest + 60
    assert lifetime == renewed + 30


def test_the_system_log_has_requests_and_replies_at_the_local_time(board):
    # Nine hours after the START, which is in UTC.
    lines = [re.sub(r"^Mar  6 05:30:\d\d ", "", line) for [line] in board["log"]]
    assert lines == [
        'board user.err camera_remote.cgi: rcv post_data = ' + body("MonitorStart"),
        'board user.err camera_remote.cgi: send res_str = ' + success("MonitorStart"),
    ]


def test_20_requests_at_once_are_all_answered(board, replies):
    assert [reply for [reply] in board["concurrent"]] == [replies["GetCamStatus"]] * 20


def test_no_handler_is_left(board):
    assert board["handlers_left"] == [[""]]


def test_the_requests_leave_the_memory_free(board):
    free = {when: int(size) for when, size in board["memory"]}
    # The log and the settings files are in memory, and the kernel keeps some for its own.
    assert free["started"] - free["end"] < 2048


@pytest.mark.parametrize("request_name, command", [
    ("heartbeat", "HeartbeatConfirmation"),
    ("status", "GetCamStatus"),
])
def test_the_small_build_takes_less_time_and_memory(board, replies, request_name, command):
    figures = {}
    for name, handler, median, _, _, memory, reply in board["time"]:
        if name == request_name:
            assert reply == replies[command]
            figures[handler] = (int(median), int(memory))
    small, large = figures["/board/arm-small.cgi"], figures["/board/arm.cgi"]
    assert small[0] < large[0] and small[1] < large[1]
