"""The five steps of the cloud view."""

import pytest

from tests.web.support.page import eventually

STEPS = ["Obtain events", "Obtain stream information", "Copy to server"]


@pytest.fixture
def cloud(page):
    page.go_to("Cloud")
    eventually(lambda: page.text_of("#cloud-login-state") == "not begun")
    return page


def enabled(page):
    return [name for name in STEPS if page.button(name).is_enabled()]


def log_in(page, password="secret"):
    form = page.browser.find_element("id", "cloud-login")
    page.fill("User name", "operator", within=form)
    page.fill("Password", password, within=form)
    page.fill("Service URL", "https://cloud.example/api", within=form)
    page.press("Log in to the service")


def test_the_five_steps_in_their_order(cloud):
    page = cloud
    titles = [event["title"] for event in page.state()["cloud"]["events"]]
    assert enabled(page) == []
    log_in(page)
    eventually(lambda: page.text_of("#cloud-login-state") == "finished")
    eventually(lambda: enabled(page) == STEPS[:1])
    page.press("Obtain events")
    eventually(lambda: page.text_of("#cloud-events-state") == "finished")
    list_of_events = page.browser.find_element("id", "cloud-event-list")
    eventually(lambda: [label.text for label in list_of_events.find_elements("tag name", "label")] == titles[:20])
    assert enabled(page) == STEPS[:1]
    page.find_all("radio", within=list_of_events)[1].click()
    page.press("Obtain stream information")
    eventually(lambda: page.text_of("#cloud-info-state") == "finished")
    page.browser.find_element("css selector", "#cloud-server").send_keys("Server 4")
    page.press("Copy to server")
    eventually(lambda: titles[1] in page.text_of("#cloud-copied"))
    current = page.world.command("GetCurrentStreamingServerID", session=page.session())
    assert current["Response"]["Data"] == {"ID": 3}
    server = page.world.command("GetStreamingServerSettings", {"ID": 3}, session=page.session())
    assert server["Response"]["Data"]["Rtmp"]["DstUrl"] == page.state()["cloud"]["events"][1]["url"]
    page.press("Log out of the service")
    eventually(lambda: enabled(page) == [])


def test_a_wrong_password_is_told_in_words(cloud):
    page = cloud
    page.set_state(cloud={"password": "other"})
    log_in(page)
    eventually(lambda: page.text_of("#cloud-login-state") == "failed")
    assert page.text_of("#cloud-error") == "The service refuses this user name or password."
    assert enabled(page) == []
    page.press("Clear the state of all steps")
    eventually(lambda: page.text_of("#cloud-login-state") == "not begun")


def test_the_password_is_masked(cloud):
    page = cloud
    form = page.browser.find_element("id", "cloud-login")
    assert page.field("Password", within=form).get_attribute("type") == "password"
    log_in(page, "very-secret")
    page.go_to("API")
    page.browser.find_element("css selector", "#exchanges summary").click()
    eventually(lambda: page.browser.find_elements("css selector", "#exchanges li"))
    assert "very-secret" not in page.browser.page_source
