"""How the page copes with a camera that is slow, away, or taken by another client."""

import pytest

from tests.web.support.page import eventually


def test_slow_replies_do_not_queue_up(page):
    page.fault("slow", command="SetWebKeyEvent", ms=700)
    position = page.journal_position()
    button = page.button("Iris open, small step")
    page.browser.execute_script("for (let i = 0; i < 10; ++i) arguments[0].click()", button)
    eventually(lambda: len(page.journal("SetWebKeyEvent", after=position)) == 2)
    page.clear_faults()
    page.press("Gain up")
    eventually(lambda: page.received("SetWebKeyEvent", after=position)[-1] == "gain up")
    assert len(page.journal("SetWebKeyEvent", after=position)) == 3


def test_polls_never_overlap(page):
    page.fault("slow", command="GetCamStatus", ms=600)
    position = page.journal_position()
    entries = eventually(lambda: (lambda found: len(found) >= 3 and found)(
        page.journal("GetCamStatus", after=position)))
    slow = [entry for entry in entries if entry["ms"] >= 600]
    assert len(slow) >= 2
    page.clear_faults()
    eventually(page.is_live)


def test_says_how_old_the_last_answer_is_and_the_tally_is_unknown_then(page):
    page.press("Studio tally program")
    eventually(lambda: page.text_of("#tally") == "Program")
    page.fault("slow", command="GetCamStatus", ms=4000, count=1)
    eventually(lambda: page.text_of("#connection").startswith("last answer "))
    assert page.text_of("#tally") == "unknown"
    eventually(lambda: page.text_of("#tally") == "Program")
    assert page.is_live()


def test_a_daemon_disappears_and_returns(page):
    page.allow_errors("500")
    page.press("Studio tally program")
    eventually(lambda: page.text_of("#tally") == "Program")
    page.fault("absent", daemon="quonta_cp")
    eventually(lambda: page.text_of("#connection").startswith("lost and retrying"))
    assert "HTTP status 500" in page.text_of("#connection")
    assert page.text_of("#tally") == "unknown"
    page.press("Record")
    eventually(lambda: "HTTP status 500" in page.message())
    page.clear_faults()
    eventually(page.is_live)
    eventually(lambda: page.text_of("#tally") == "Program")
    assert page.state()["recording"]["status"] == "Stop"


def test_a_silent_daemon_is_no_live_camera(page):
    page.world.simulator("POST", "clock", {"paused": True})  # the battery stays as it is
    page.set_state(battery={"info": "Time", "value": 42, "level": 3})
    eventually(lambda: page.text_of("#battery") == "42 min, level 3")
    page.fault("silent", command="GetCamStatus", count=1)
    eventually(lambda: page.text_of("#connection").startswith("lost and retrying"))
    assert page.text_of("#battery") == "42 min, level 3"
    eventually(page.is_live)


@pytest.mark.parametrize("cause", ["logout", "login"])
def test_a_lost_session_and_a_new_login(page, cause):
    position = page.journal_position()
    page.world.simulator("POST", cause, {})
    dialog = eventually(lambda: page.find("dialog", "Log in"))
    assert page.text_of("#session") == "lost"
    assert [entry["result"] for entry in page.journal(after=position)].count("SessionError") >= 1
    eventually(lambda: quiet(page), "the end of the polls")
    # The tally needs no session.
    eventually(lambda: page.text_of("#tally") == "Off")
    page.press("Log in", within=dialog)
    eventually(page.is_live)


def test_a_session_id_can_be_entered(fresh_page):
    page = fresh_page
    dialog = eventually(lambda: page.find("dialog", "Log in"))
    page.fill("Session id", "wrong", within=dialog)
    page.press("Use this session", within=dialog)
    eventually(lambda: "does not know this session id" in page.text_of("#login-reason"))
    page.fill("Session id", page.new_session(), within=dialog)
    page.press("Use this session", within=dialog)
    eventually(page.is_live)
    page.browser.refresh()
    eventually(page.is_live)


def test_what_may_have_changed_since_is_dimmed(page):
    opacity = "return getComputedStyle(document.querySelector('#timecode')).opacity"
    eventually(lambda: page.browser.execute_script(opacity) == "1")
    page.allow_errors("500")
    page.fault("absent", daemon="quonta_cp")
    eventually(lambda: page.browser.execute_script(opacity) == "0.6")
    page.clear_faults()
    eventually(lambda: page.browser.execute_script(opacity) == "1")
    page.world.simulator("POST", "logout", {})
    eventually(lambda: page.browser.execute_script(opacity) == "0.6")


def test_log_out_ends_the_session_in_the_camera(page):
    session = page.session()
    page.press("Log out")
    eventually(lambda: page.find("dialog", "Log in"))
    eventually(lambda: page.world.command("GetSystemInfo", session=session)["Response"]["Result"] == "SessionError")


def test_the_session_is_renewed(page):
    eventually(lambda: page.journal("SessionRenewal"))
    renewals = page.journal("SessionRenewal")
    assert {entry["request"]["Request"]["Params"]["Update"] for entry in renewals} == {1}


def test_a_hidden_page_does_not_poll(page):
    page.browser.switch_to.new_window("tab")
    position = eventually(lambda: quiet(page))
    page.browser.switch_to.window(page.browser.window_handles[0])
    eventually(lambda: page.journal("GetCamStatus", after=position))
    eventually(page.is_live)


def quiet(page):
    """The position of the journal, if the page has not polled while many polls were due."""
    position = page.journal_position()
    for _ in range(40):
        page.world.command("HeartbeatConfirmation", session=None)
    polls = [entry for entry in page.journal("GetCamStatus", after=position)]
    return position if not polls else None


def test_refusals_are_told_in_words(page):
    page.fault("disable_error", command="SetCamCtrl", count=1)
    page.press("Record")
    eventually(lambda: page.message() == "Record: The camera cannot do this in its present state.")
