"""Requests and replies as texts.

The camera does not parse a request as JSON but scans it: white space ends a request, a value ends
at the first quote, comma or brace, and a member is found by the first occurrence of its name. So
requests are compact, in a fixed order, and free of anything that the scan would misread.
"""

from __future__ import annotations

import json
import re
from typing import Any, Dict, Iterable, Mapping, Optional, Union

from camera_remote.errors import REFUSALS, CameraUnreachable, InvalidReply, InvalidValue

Value = Union[int, str]

# What a text cannot hold. The camera would take a backslash, but it prints texts as they are, so
# every reply with that text would be invalid JSON.
_FORBIDDEN = re.compile('[\x00-\x20\x7f",}\\\\\ud800-\udfff]')

_SMALLEST_NUMBER = -(2**31)
_LARGEST_NUMBER = 2**31 - 1
# The blocks of an upload selection may also be unsigned.
_LARGEST_BLOCK = 2**32 - 1

_CLIPS_PER_BLOCK = 32
_BLOCKS = 125
_LARGEST_CLIP = _BLOCKS * _CLIPS_PER_BLOCK
# In ascending order: the camera does not find a block after a higher one.
BLOCK_NAMES = tuple(f"block{block}" for block in range(_BLOCKS))


def serialize_request(
    command: str, session_id: Optional[str], params: Optional[Mapping[str, Value]]
) -> str:
    """The text of a request; `None` leaves a member out. Raises InvalidValue."""
    values = {name: _serialize_value(name, value) for name, value in (params or {}).items()}
    members = [f'"Command":{_serialize_value("Command", command)}']
    if session_id is not None:
        members.append(f'"SessionID":{_serialize_value("SessionID", session_id)}')
    if params is not None:
        texts = ",".join(f'"{name}":{text}' for name, text in values.items())
        members.append(f'"Params":{{{texts}}}')
        for name, text in values.items():
            _check_scan("{" + texts + "}", name, text.strip('"'))
    return '{"Request":{' + ",".join(members) + "}}"


def _serialize_value(name: str, value: Value) -> str:
    if isinstance(value, str):
        _check_text(name, value)
        return f'"{value}"'
    largest = _LARGEST_BLOCK if re.fullmatch(r"block\d+", name) else _LARGEST_NUMBER
    if type(value) is not int or not _SMALLEST_NUMBER <= value <= largest:
        raise InvalidValue(
            f"{name} must be a text or a whole number from {_SMALLEST_NUMBER} to {largest},"
            f" not {value!r}"
        )
    return str(value)


def _check_text(name: str, text: str) -> None:
    found = _FORBIDDEN.search(text)
    if found:
        raise InvalidValue(
            f"{name} cannot hold {found[0]!r} (character {found.start() + 1}): white space, control"
            ' characters, quote, comma, "}" and backslash cannot be sent'
        )


def _check_scan(params: str, name: str, text: str) -> None:
    """Checks that the camera's scan for a parameter finds this parameter, and not a value that
    contains its name."""
    after_name = params.split(name, 1)[1]
    read = re.split('[",}]', after_name.split(":", 1)[1].removeprefix('"'), 1)[0]
    if read != text:
        raise InvalidValue(
            f'{name} cannot be sent: another value holds the word "{name}", and the camera would'
            f' read "{read}"'
        )


def clip_blocks(clips: Iterable[int]) -> Dict[str, int]:
    """The bitmap of an upload selection: clip 1 is the lowest bit of block0, clip 33 that of
    block1. `clips` are numbers from 1 to 4000, in any order; blocks without a clip are left out."""
    blocks: Dict[int, int] = {}
    for clip in clips:
        if type(clip) is not int or not 1 <= clip <= _LARGEST_CLIP:
            raise InvalidValue(f"a clip is a whole number from 1 to {_LARGEST_CLIP}, not {clip!r}")
        block, bit = divmod(clip - 1, _CLIPS_PER_BLOCK)
        blocks[block] = blocks.get(block, 0) | 1 << bit
    return {f"block{block}": blocks[block] for block in sorted(blocks)}


_ENVELOPE = re.compile(r'\{"Response":\{(?:"Requested":"[^"]*",)?"Result":"([A-Za-z]+)"')


def read_reply(command: str, text: str) -> Dict[str, Any]:
    """The data of a reply that reports success; raises a CameraError for any other reply."""
    if not text:
        raise CameraUnreachable(command, "empty", "the reply is empty")
    try:
        reply = json.loads(text)
        response = reply.get("Response") if isinstance(reply, dict) else None
        is_json = True
    except ValueError:
        envelope = _ENVELOPE.match(text)
        response = {"Requested": command, "Result": envelope[1]} if envelope else None
        is_json = False
    response = response if isinstance(response, dict) else {}
    result = response.get("Result")
    data = response.get("Data", {})
    if isinstance(result, str) and result in REFUSALS:
        raise REFUSALS[result](command, "Requested" in response, response.get("Data"))
    if result != "Success" or not isinstance(data, dict):
        raise CameraUnreachable(command, "reply", "this is not a reply of the API")
    if not is_json:
        raise InvalidReply(command, text)
    return data
