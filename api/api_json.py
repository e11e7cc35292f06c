"""How the JSON files of this folder are written: what fits goes on one line."""

import json

WIDTH = 100


def compact(value):
    """The bytes that go over the wire: no white space, members in their order."""
    return json.dumps(value, ensure_ascii=False, separators=(",", ":"))


def dump(value):
    """The text of a file: one line for whatever fits, otherwise one line per member."""
    return _dump(value, "", 0) + "\n"


def _dump(value, indent, used):
    line = json.dumps(value, ensure_ascii=False)
    if not isinstance(value, (dict, list)) or not value or len(indent) + used + len(line) < WIDTH:
        return line
    deeper = indent + "  "
    if isinstance(value, dict):
        opening, closing = "{", "}"
        keys = [json.dumps(key, ensure_ascii=False) + ": " for key in value]
        items = [key + _dump(item, deeper, len(key)) for key, item in zip(keys, value.values())]
    else:
        opening, closing = "[", "]"
        items = [_dump(item, deeper, 0) for item in value]
    return f"{opening}\n{deeper}" + f",\n{deeper}".join(items) + f"\n{indent}{closing}"
