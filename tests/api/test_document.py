"""The OpenAPI document is valid, complete and strict."""

import jsonschema
import pytest
from description import DOCUMENT, FIXED_ERRORS, SCHEMAS, commands, request_members, resolved

OPERATION = DOCUMENT["paths"]["/cgi-bin/camera_remote.cgi"]["post"]


def subschemas(schema, path):
    """A schema and all schemas in it, each with its path."""
    yield path, schema
    for key, member in schema.get("properties", {}).items():
        yield from subschemas(member, f"{path}.{key}")
    if "items" in schema:
        yield from subschemas(schema["items"], f"{path}[]")
    for number, one in enumerate(schema.get("oneOf", [])):
        # Alternatives without a type only list the pairs of controls and keys.
        if "type" in one or "$ref" in one:
            yield from subschemas(one, f"{path}|{number}")


def references(value):
    if isinstance(value, dict):
        if "$ref" in value:
            yield value["$ref"]
        for member in value.values():
            yield from references(member)
    elif isinstance(value, list):
        for item in value:
            yield from references(item)


def test_the_document_has_the_members_that_openapi_requires():
    assert DOCUMENT["openapi"].startswith("3.1.")
    assert set(DOCUMENT["info"]) >= {"title", "version", "description"}
    assert list(DOCUMENT["paths"]) == ["/cgi-bin/camera_remote.cgi"]
    assert list(DOCUMENT["paths"]["/cgi-bin/camera_remote.cgi"]) == ["post"]
    assert set(OPERATION) == {"operationId", "summary", "requestBody", "responses"}
    for status, response in OPERATION["responses"].items():
        assert 100 <= int(status) <= 599
        assert response["description"]


@pytest.mark.parametrize("name", SCHEMAS)
def test_schema_is_valid(name):
    jsonschema.Draft202012Validator.check_schema(SCHEMAS[name])
    # Misspelled keywords would be ignored.
    known = {"$ref", "type", "description", "properties", "required", "additionalProperties",
             "oneOf", "const", "enum", "minimum", "maximum", "minLength", "maxLength", "pattern",
             "items", "minItems", "maxItems", "format", "writeOnly", "default",
             "x-chapter", "x-refused", "x-altered", "x-lasts"}
    for path, schema in subschemas(SCHEMAS[name], name):
        assert set(schema) <= known, path


def test_references_lead_to_schemas_and_every_schema_is_used():
    used = set(references(DOCUMENT))
    assert used == {f"#/components/schemas/{name}" for name in SCHEMAS}


def test_every_command_has_a_request_and_a_response():
    names = commands()
    assert len(names) == 68
    expected = {name + end for name in names for end in ("Request", "Response")}
    assert expected <= set(SCHEMAS)
    request = OPERATION["requestBody"]["content"]["application/json"]["schema"]["oneOf"]
    response = OPERATION["responses"]["200"]["content"]["application/json"]["schema"]["oneOf"]
    prefix = "#/components/schemas/"
    assert [one["$ref"] for one in request] == [f"{prefix}{name}Request" for name in names]
    assert [one["$ref"] for one in response] == (
        [f"{prefix}{name}Response" for name in names] +
        [f"{prefix}{error}Reply" for error in FIXED_ERRORS])


@pytest.mark.parametrize("command", commands())
def test_request_and_response_name_the_command(command):
    request = SCHEMAS[command + "Request"]
    members = request["properties"]["Request"]
    assert members["properties"]["Command"]["const"] == command
    assert list(members["properties"])[:2] == ["Command", "SessionID"], "the order on the wire"
    assert ("Params" in members["properties"]) == ("Params" in members["required"])
    assert {"description", "x-chapter", "x-refused", "x-altered", "x-lasts"} <= set(request)
    response = SCHEMAS[command + "Response"]["properties"]["Response"]
    assert response["properties"]["Requested"]["const"] == command
    assert response["required"] == list(response["properties"])


KEY_NAMES = ("Key", "Button", "Direction")  # whose words depend on the control


@pytest.mark.parametrize("name", SCHEMAS)
def test_schema_is_strict_and_described(name):
    for path, schema in subschemas(SCHEMAS[name], name):
        whole = resolved(schema)
        assert whole.get("description"), path
        if whole.get("type") == "object":
            assert whole["additionalProperties"] is False, path
            members = list(whole.get("properties", {}))
            optional = set(members) - set(whole.get("required", []))
            assert all(key == "SessionID" or key.startswith("block") for key in optional), path
        if whole.get("type") == "integer":
            assert {"enum", "const", "minimum"} & set(whole), path
            assert ("minimum" in whole) == ("maximum" in whole), path
        if whole.get("type") == "string" and path.rpartition(".")[2] not in KEY_NAMES:
            assert {"enum", "const", "maxLength", "pattern"} & set(whole), path
        if whole.get("type") == "array":
            assert "maxItems" in whole, path


def test_only_three_commands_need_no_session():
    free = [name for name in commands()
            if "SessionID" not in SCHEMAS[name + "Request"]["properties"]["Request"]["required"]]
    assert sorted(free) == ["HeartbeatConfirmation", "SetStudioTallyWithoutSession",
                            "SetTallyControlWithPriority"]


def test_secrets_are_marked():
    def is_secret(key):
        return key == "StreamKey" or "Password" in key
    secrets = [(path, resolved(schema)) for name in SCHEMAS
               for path, schema in subschemas(SCHEMAS[name], name)
               if is_secret(path.rpartition(".")[2])]
    assert len(secrets) == 7
    for path, schema in secrets:
        assert schema["format"] == "password", path
        assert schema.get("writeOnly", False) == ("Params" in path), path


@pytest.mark.parametrize("command", commands())
def test_texts_of_requests_exclude_what_the_wire_cannot_carry(command):
    for key, member in request_members(command).get("Params", {}).get("properties", {}).items():
        if member.get("type") == "string" and "enum" not in member and "pattern" not in member:
            assert key in KEY_NAMES
