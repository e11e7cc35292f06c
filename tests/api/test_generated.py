"""The files that are generated from the description and the examples are up to date."""

import re
import subprocess
import sys
import textwrap

from description import DOCUMENT, REPOSITORY, commands
from test_tables import TABLES
from world import World

REFERENCE = (REPOSITORY / "docs/api.md").read_text()


def chapter(title):
    return REFERENCE.partition(f"\n## {title}\n")[2].partition("\n## ")[0]


def test_generated_files_are_up_to_date():
    check = subprocess.run([REPOSITORY / "api/generate", "--check"], capture_output=True, text=True)
    assert (check.returncode, check.stdout, check.stderr) == (0, "", "")


def test_the_reference_has_a_section_for_each_command():
    assert sorted(re.findall(r"^### (\w+)$", REFERENCE, re.MULTILINE)) == sorted(commands())


def test_the_reference_has_the_table_of_controls_and_keys():
    expected = {}
    for row in TABLES["events"]:
        keys = expected.setdefault((row["kind"], row["kind_code"]), [])
        if row["key"]:
            keys.append((row["key"], row["key_code"]))
    rows = re.findall(r'^\| "(\w+)" \| (\d+) \| (.*) \|$', chapter("Controls and keys"),
                      re.MULTILINE)
    described = {(kind, int(code)): [(key, int(key_code)) for key, key_code
                                     in re.findall(r'"(\w+)" (\d+)', keys)]
                 for kind, code, keys in rows}
    assert described == expected


def test_the_reference_names_the_answers_of_the_web_server():
    statuses = re.findall(r"^\| (\d{3}) \|", chapter("Replies"), re.MULTILINE)
    responses = DOCUMENT["paths"]["/cgi-bin/camera_remote.cgi"]["post"]["responses"]
    assert statuses == [status for status in responses if status != "200"]


def test_links_within_the_reference_lead_somewhere():
    headings = re.findall(r"^#+ (.*)$", REFERENCE, re.MULTILINE)
    anchors = {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in headings}
    assert set(re.findall(r"\]\(#([^)]*)\)", REFERENCE)) <= anchors
    for path in re.findall(r"\]\((\.\./[^)#]*)", REFERENCE):
        assert (REPOSITORY / "docs" / path).exists(), path


def test_the_shortest_client_works():
    code = textwrap.dedent(chapter("Writing a client").partition("library:\n")[2]
                           .partition("\nA client")[0])
    assert code.count("http://127.0.0.1:8080") == 1
    with World() as world:
        code = code.replace("http://127.0.0.1:8080", world.url)
        client = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True)
    assert client.stderr == ""
    assert re.fullmatch(r"Success\n\d\d:\d\d:\d\d[.:]\d\d\n", client.stdout)
