"""How far observed replies use what the schemas allow: words, ends of ranges, lengths of texts."""

from description import SCHEMAS, resolved, schema_of_reply


class Usage:
    """What was seen at each place of the replies, for example "GetNTPStatusResponse.Status"."""

    def __init__(self):
        self.seen = {}  # by place: the set of values, or of lengths for free texts

    def add(self, reply):
        name = schema_of_reply(reply)
        self._add(name, resolved_schema(name), reply)

    def _add(self, place, schema, value):
        if "oneOf" in schema:
            for number, one in enumerate(schema["oneOf"]):
                self._add_if_it_fits(f"{place}|{number}", one, value)
        elif isinstance(value, dict):
            for key, member in value.items():
                self._add(f"{place}.{key}", schema["properties"][key], member)
        elif isinstance(value, list):
            self.seen.setdefault(place, set()).add(len(value))
            for item in value:
                self._add(place + "[]", schema["items"], item)
        else:
            is_free_text = isinstance(value, str) and "enum" not in schema
            self.seen.setdefault(place, set()).add(len(value) if is_free_text else value)

    def _add_if_it_fits(self, place, schema, value):
        types = schema.get("properties", {}).get("Type", {}).get("const")
        if set(value) == set(schema.get("properties", {})) and types in (None, value.get("Type")):
            self._add(place, schema, value)

    def unused(self):
        """What the schemas allow and no reply has shown, as lines of text."""
        for name in SCHEMAS:
            if name.endswith(("Response", "Reply")):
                yield from self._unused(name, resolved_schema(name))

    def _unused(self, place, schema):
        seen = self.seen.get(place, set())
        for number, one in enumerate(schema.get("oneOf", [])):
            yield from self._unused(f"{place}|{number}", one)
        for key, member in schema.get("properties", {}).items():
            yield from self._unused(f"{place}.{key}", member)
        if "items" in schema:
            yield from self._unused(place + "[]", schema["items"])
        for word in schema.get("enum", []):
            if word not in seen:
                yield f"{place}: never {word!r}"
        for limit in ("minimum", "maximum", "maxLength", "minItems", "maxItems"):
            if limit in schema and schema[limit] not in seen:
                yield f"{place}: {limit} {schema[limit]} never reached: {sorted(seen)[:1]} to {sorted(seen)[-1:]}"


_resolved = {}


def resolved_schema(name):
    if name not in _resolved:
        _resolved[name] = resolved(SCHEMAS[name])
    return _resolved[name]
