"""Reads calls.table."""

import pathlib
from typing import NamedTuple


class Call(NamedTuple):
    command: str
    params: str
    python: str
    javascript: str
    state: str = ""


WITHOUT_SESSION = ("HeartbeatConfirmation", "SetTallyControlWithPriority",
                   "SetStudioTallyWithoutSession")


def every_call():
    lines = (pathlib.Path(__file__).parent / "calls.table").read_text().splitlines()
    return [Call(*(part.strip() for part in line.split("|")))
            for line in lines if not line.startswith("#")]


def expected_request(call, session):
    members = [f'"Command":"{call.command}"']
    if call.command not in WITHOUT_SESSION:
        members.append(f'"SessionID":"{session}"')
    if call.params:
        members.append(f'"Params":{call.params}')
    return '{"Request":{' + ",".join(members) + "}}"
