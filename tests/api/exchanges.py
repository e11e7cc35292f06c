"""Exchanges with the handler that the black-box tests have kept (tests/harness/exchanges.h)."""

import dataclasses
import json

from description import reply_violations, schema_of_reply


@dataclasses.dataclass
class Exchange:
    body: bytes
    output: bytes  # header and reply; empty where the handler gave none
    may_break: bool  # the reply need not be as the API describes it

    @property
    def reply(self):
        return self.output.partition(b"\n\n")[2]


def read_exchanges(path):
    """The exchanges of one test."""
    data = path.read_bytes()
    at = 0
    while at < len(data):
        end_of_line = data.index(b"\n", at)
        keyword, body_size, output_size, kind = data[at:end_of_line].split()
        assert keyword == b"exchange", path
        body_at = end_of_line + 1
        output_at = body_at + int(body_size) + 1
        at = output_at + int(output_size) + 1
        yield Exchange(data[body_at:output_at - 1], data[output_at:at - 1], kind == b"any")


class DuplicateMember(ValueError):
    pass


def _members(pairs):
    members = dict(pairs)
    if len(members) != len(pairs):
        raise DuplicateMember(str([key for key, _ in pairs]))
    return members


def parse(reply):
    """The reply as JSON. Raises ValueError when it is invalid or has a member twice."""
    def refuse(constant):
        raise ValueError(constant)
    return json.loads(reply.decode(), object_pairs_hook=_members, parse_constant=refuse)


class Checker:
    """Checks replies against the schemas of their commands. Equal replies are checked once."""

    def __init__(self):
        self.checked = 0
        self.invalid_json = 0
        self.schemas = {}  # how often each schema was used
        self._known = {}

    def problems(self, reply):
        """What is wrong with a reply's bytes: an empty list for nothing, None for invalid JSON."""
        if reply not in self._known:
            self._known[reply] = self._check(reply)
        schema, problems = self._known[reply]
        self.checked += 1
        if schema is None:
            self.invalid_json += 1
        else:
            self.schemas[schema] = self.schemas.get(schema, 0) + 1
        return problems

    @staticmethod
    def _check(reply):
        try:
            value = parse(reply)
        except ValueError:
            return None, None
        return schema_of_reply(value), reply_violations(value)
