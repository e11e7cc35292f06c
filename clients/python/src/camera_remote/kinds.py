"""Kinds of parameters: what may be sent for each of them."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Any, Dict, Iterable, List, Mapping, Optional, Sequence, Union

from camera_remote.errors import InvalidValue
from camera_remote.wire import BLOCK_NAMES, Value, clip_blocks

# The upload selection is one parameter here, and 125 on the wire.
CLIPS = "Clips"


class Number:
    """A whole number in a range."""

    def __init__(self, smallest: int, largest: int) -> None:
        self.smallest = smallest
        self.largest = largest

    def __str__(self) -> str:
        return f"a whole number from {self.smallest} to {self.largest}"

    def allows(self, value: Any) -> bool:
        return type(value) is int and self.smallest <= value <= self.largest

    def parse(self, text: str) -> Any:
        try:
            return int(text)
        except ValueError:
            return text


class Word:
    """One of a few words. The camera accepts other words, too, but gives them another meaning."""

    def __init__(self, *words: str) -> None:
        self.words = words

    def __str__(self) -> str:
        return "one of " + ", ".join(f'"{word}"' for word in self.words)

    def allows(self, value: Any) -> bool:
        return value in self.words

    def parse(self, text: str) -> Any:
        return text


class Text:
    """A text with at most `longest` bytes; the camera truncates longer ones."""

    def __init__(self, longest: Optional[int] = None) -> None:
        self.longest = longest

    def __str__(self) -> str:
        return "a text" if self.longest is None else f"a text of at most {self.longest} bytes"

    def allows(self, value: Any) -> bool:
        if not isinstance(value, str):
            return False
        length = len(value.encode(errors="surrogatepass"))
        return self.longest is None or length <= self.longest

    def parse(self, text: str) -> Any:
        return text


class Clips:
    """A list of clip numbers, sent as the bitmap block0 to block124."""

    def __str__(self) -> str:
        return "a list of clip numbers"

    def allows(self, value: Any) -> bool:
        return isinstance(value, Iterable) and not isinstance(value, (str, bytes))

    def parse(self, text: str) -> Any:
        """A list such as 1,5,7-9."""
        clips: List[int] = []
        for part in filter(None, text.split(",")):
            first, dash, last = part.partition("-")
            if not first.isdecimal() or (dash and not last.isdecimal()):
                raise InvalidValue(f"{part!r} is neither a clip nor a range; write 1,5,7-9")
            clips += range(int(first), int(last or first) + 1)
        return clips


Kind = Union[Number, Word, Text, Clips]


@dataclass(frozen=True)
class Command:
    """A row of the table of commands."""

    name: str
    # By their names in the API, in the order in which they are sent.
    parameters: Mapping[str, Kind] = field(default_factory=dict)
    needs_session: bool = True
    # Seconds to wait for a reply that may take longer than usual.
    timeout: Optional[float] = None

    @property
    def wire_names(self) -> Sequence[str]:
        """The names of the parameters on the wire, in the order in which they are sent."""
        return BLOCK_NAMES if CLIPS in self.parameters else list(self.parameters)

    def wire_parameters(self, params: Mapping[str, Any]) -> Optional[Dict[str, Value]]:
        """The parameters as they are sent, or None for a command that has none."""
        if not self.parameters:
            return None
        for name, kind in self.parameters.items():
            if not kind.allows(params[name]):
                raise InvalidValue(f"{self.name}: {name} must be {kind}, not {params[name]!r}")
        if CLIPS in self.parameters:
            return {**clip_blocks(params[CLIPS])}
        return dict(params)
