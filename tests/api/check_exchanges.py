#!/usr/bin/python3
"""Checks kept exchanges against the description of the API: check_exchanges.py FILE...

Prints how many replies follow their schema, how many are invalid JSON, and every violation. Exit
status 1 if there is one."""

import pathlib
import sys

sys.dont_write_bytecode = True

from exchanges import Checker, read_exchanges  # noqa: E402


def main():
    checker = Checker()
    violations = 0
    for path in sys.argv[1:]:
        for exchange in read_exchanges(pathlib.Path(path)):
            for problem in checker.problems(exchange.reply) or []:
                violations += 1
                print(f"{problem}: {exchange.reply[:500]!r}")
    followed = sum(checker.schemas.values()) - violations
    print(f"{checker.checked} replies: {followed} follow {len(checker.schemas)} schemas, "
          f"{checker.invalid_json} are invalid JSON, {violations} violate their schema")
    return 1 if violations or not checker.checked else 0


if __name__ == "__main__":
    sys.exit(main())
