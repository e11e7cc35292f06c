"""Every reply of the black-box tests follows the document, and the document allows nothing that no
reply has shown."""

from description import FIXED_ERRORS, REPOSITORY, SCHEMAS, commands, schema_of_reply
from exchanges import Checker, parse, read_exchanges
from tightness import Usage

FOLDER = REPOSITORY / "build/release/exchanges"


def replies():
    """Every reply with the name of its test."""
    for path in sorted(FOLDER.iterdir()):
        for exchange in read_exchanges(path):
            if exchange.output:
                yield path.name, exchange


def test_replies_follow_their_schemas():
    checker = Checker()
    wrong = []
    for test, exchange in replies():
        problems = checker.problems(exchange.reply)
        if exchange.may_break:
            continue
        if problems is None:
            problems = ["invalid JSON"]
        wrong += [f"{test}: {problem}: {exchange.reply[:300]}" for problem in problems]
    assert wrong == []
    assert checker.checked > 3000, "run the black-box tests first"
    expected = {f"{name}Response" for name in commands()} | {f"{error}Reply" for error in FIXED_ERRORS}
    assert set(checker.schemas) >= expected, "replies that no test has seen"


def test_replies_name_the_command_that_was_asked():
    for test, exchange in replies():
        if exchange.may_break or not exchange.body:
            continue
        requested = parse(exchange.reply)["Response"].get("Requested")
        if requested is not None:
            assert f'Command":"{requested}"'.encode() in exchange.body, test


def test_schemas_allow_nothing_that_no_reply_shows():
    usage = Usage()
    seen = set()
    for _, exchange in replies():
        if exchange.reply in seen or exchange.may_break:
            continue
        seen.add(exchange.reply)
        reply = parse(exchange.reply)
        if schema_of_reply(reply) in SCHEMAS:
            usage.add(reply)
    assert list(usage.unused()) == []
