"""The system calls of the handler, as docs/integration.md lists them for a filter."""

import re
from pathlib import Path

GUIDE = Path(__file__).resolve().parents[2] / "docs/integration.md"


def calls_of_the_handler():
    match = re.search(r"^    SystemCallFilter=((?:.*\\\n)*.*)\n", GUIDE.read_text(), re.MULTILINE)
    return match[1].replace("\\\n", " ").split()
