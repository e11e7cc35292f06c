"""An operator's day at high speed, while four clients poll.

The camera's clock is paused and stepped, so that a slow machine loses neither the session nor a phase.
"""

import threading

from world import World


class Poller(threading.Thread):
    """A client that polls ten times a second, or as often as it gets replies."""

    def __init__(self, world, command, stop):
        super().__init__()
        self.world, self.command, self.stop = world, command, stop
        self.count = 0
        self.words = set()

    def run(self):
        while not self.stop.wait(0.1):
            reply = self.world.command(self.command)  # fails unless it is valid JSON
            self.words.add(reply["Response"]["Result"])
            self.count += 1


class Operator:
    def __init__(self, world):
        self.world = world
        self.count = 0

    def do(self, command, params=None, expected="Success"):
        reply = self.world.command(command, params)
        self.count += 1
        assert reply["Response"]["Result"] == expected, (command, params, reply)
        return reply["Response"].get("Data")

    def wait_until(self, condition):
        """Lets the camera's time pass in half seconds, two minutes at most."""
        for _ in range(240):
            status = self.do("GetCamStatus")
            if condition(status):
                return
            renew(self)
            self.world.simulator("POST", "clock", {"step_ms": 500})
        raise AssertionError(f"the camera does not get there: {status}")

    def log_in(self):
        self.world.session = self.world.simulator("POST", "login")[1]["SessionID"]


def test_an_operators_day():
    with World() as world:
        operator = Operator(world)
        operator.log_in()
        world.simulator("POST", "clock", {"paused": True})
        stop = threading.Event()
        pollers = [Poller(world, command, stop)
                   for command in ("GetCamStatus", "GetCamStatus", "HeartbeatConfirmation",
                                   "GetSystemInfo")]
        for poller in pollers:
            poller.start()
        try:
            shoot(operator)
            upload(operator)
            stream(operator)
            go_to_the_cloud(operator)
            meet_a_fault(operator)
            lose_the_session(operator)
        finally:
            stop.set()
            for poller in pollers:
                poller.join()
        assert all(poller.count > 0 for poller in pollers)
        for poller in pollers:
            assert poller.words <= {"Success", "SessionError"}, poller.words
        page = world.simulator("GET", "journal")[1]
        numbers = [entry["number"] for entry in page["entries"]]
        assert numbers == list(range(numbers[0], numbers[-1] + 1))
        assert page["last"] == operator.count + sum(poller.count for poller in pollers)
        assert page["dropped"] == 0 or len(page["entries"]) == 1000


def renew(operator):
    operator.do("SessionRenewal", {"Update": 1})


def shoot(operator):
    operator.do("SetWebKeyEvent", {"Kind": "Iris", "Key": "Close1"})
    operator.do("SetWebKeyEvent", {"Kind": "Whb", "Key": "A"})
    operator.do("ZoomSwitchOperation", {"Direction": "Tele", "Speed": 5})
    operator.do("SetCamCtrl", {"CamCtrl": "Rec"})
    operator.wait_until(lambda status: status["ZoomPosition"] != "0")
    operator.do("ZoomSwitchOperation", {"Direction": "Stop", "Speed": 0})
    operator.do("SetWebFtpUploadAll", {"Server": 1, "Slot": 0}, "DisableError")
    renew(operator)
    operator.do("SetCamCtrl", {"CamCtrl": "Stop"})
    operator.do("SetClipInfo", {"Slot": "A", "IndexNo": 13, "OKMark": "Mark"})
    clips = operator.do("GetClipInfo", {"Slot": "A", "StartIndexNo": 13, "ClipNum": 1})
    assert clips["ClipInfo"][0]["OKMark"] == "Mark"


def upload(operator):
    operator.do("SetWebFtpUploadOkMarked", {"Server": 1, "Slot": 0})
    operator.wait_until(lambda status: status["Ftp"]["Phase1"] == "TRUST")
    renew(operator)
    operator.do("WebFtpOperateResponse", {"Response": 1})
    operator.wait_until(lambda status: status["Ftp"]["Phase1"] == "OFF")
    renew(operator)


def stream(operator):
    operator.do("SetStreamingServerSettingsRTMP",
                {"ID": 1, "Alias": "Studio", "DstUrl": "rtmp://a/b", "StreamKey": "k"})
    operator.do("SetCurrentStreamingServerID", {"ID": 1})
    operator.do("SetStreamingSettings", {"Resolution": "1280x720", "Bitrate": "3.0M"})
    operator.do("SetStreamingCtrl", {"Streaming": "On"})
    renew(operator)


def go_to_the_cloud(operator):
    operator.do("SetCldstrmLogin", {"Username": "u", "Password": "p", "ServerURL": "https://c"})
    operator.wait_until(lambda status: status["CloudStreaming"]["LoginStatus"] == "Finished")
    operator.do("SetCldstrmEventListObtain")
    operator.wait_until(lambda status: status["CloudStreaming"]["GetEventListStatus"] == "Finished")
    assert operator.do("GetCldstrmEventList")["EventNum"] == 3
    renew(operator)
    operator.do("SetCldstrmStreamInfoObtain", {"EventID": 2})
    operator.wait_until(lambda status: status["CloudStreaming"]["GetStreamInfoStatus"] == "Finished")
    operator.do("SetCldstrmStreamInfoToStrmsrv", {"EventID": 2, "StrmsrvID": 0})
    renew(operator)


def meet_a_fault(operator):
    operator.world.simulator("POST", "faults",
                             {"fault": "disable_error", "command": "SetZoomCtrl", "count": 1})
    operator.do("SetZoomCtrl", {"Position": 5}, "DisableError")
    operator.do("SetZoomCtrl", {"Position": 5})
    renew(operator)


def lose_the_session(operator):
    operator.world.simulator("POST", "clock", {"step_ms": 31000})
    operator.do("GetCamStatus", expected="SessionError")
    operator.log_in()
    operator.do("GetCamStatus")
