"""The description of the API, api/openapi.json, and what checks replies against it."""

import functools
import json
import pathlib
import sys

import jsonschema

REPOSITORY = pathlib.Path(__file__).resolve().parents[2]
API = REPOSITORY / "api"

DOCUMENT = json.loads((API / "openapi.json").read_text())
SCHEMAS = DOCUMENT["components"]["schemas"]
FIXED_ERRORS = ("FormatError", "SessionError", "CommandError", "RequestedError")


def referred(schema):
    """The schema that a `$ref` names; the members next to the reference override its own."""
    if "$ref" not in schema:
        return schema
    own = {key: value for key, value in schema.items() if key != "$ref"}
    return {**referred(SCHEMAS[schema["$ref"].rpartition("/")[2]]), **own}


def resolved(schema):
    """The schema with every reference in it replaced by what it refers to."""
    if isinstance(schema, list):
        return [resolved(item) for item in schema]
    if not isinstance(schema, dict):
        return schema
    return {key: resolved(value) for key, value in referred(schema).items()}


def commands():
    """All commands, in the order of the document."""
    operation = DOCUMENT["paths"]["/cgi-bin/camera_remote.cgi"]["post"]
    one_of = operation["requestBody"]["content"]["application/json"]["schema"]["oneOf"]
    return [one["$ref"].rpartition("/")[2].removesuffix("Request") for one in one_of]


def request_members(command):
    """The members of "Request", each with its resolved schema."""
    return resolved(SCHEMAS[command + "Request"])["properties"]["Request"]["properties"]


def parameters(command):
    """The parameters of a command by name, with their resolved schemas, in their order."""
    return request_members(command).get("Params", {}).get("properties", {})


def required_parameters(command):
    return request_members(command).get("Params", {}).get("required", [])


@functools.lru_cache(maxsize=None)
def _validator(name):
    return jsonschema.Draft202012Validator(resolved(SCHEMAS[name]))


def violations(name, value):
    """What is wrong with a value by the schema of that name; nothing if it is valid."""
    return [f"{error.json_path}: {error.message}" for error in _validator(name).iter_errors(value)]


def schema_of_reply(reply):
    """The name of the schema that a reply has to follow."""
    response = reply.get("Response", {}) if isinstance(reply, dict) else {}
    if "Requested" in response:
        return f'{response["Requested"]}Response'
    return f'{response.get("Result")}Reply'


def reply_violations(reply):
    """What is wrong with a reply, by the schema of its command or of the fixed error replies."""
    name = schema_of_reply(reply)
    if name not in SCHEMAS:
        return [f"no schema {name}"]
    return violations(name, reply)
