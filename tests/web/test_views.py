"""The views: the browser's history, reloads and several tabs."""

from tests.web.support.page import eventually

# What the camera is told when a view appears.
CAMERA = "page change to 3"
CLIPS = "page change to 1"


def is_shown(page, view):
    return page.find("heading", view).is_displayed() and page.browser.title.startswith(view)


def test_back_and_forward_lead_through_the_views(page):
    page.go_to("Clips")
    eventually(lambda: page.received("PageChange") == [CAMERA, CLIPS])
    page.browser.back()
    eventually(lambda: is_shown(page, "Camera"))
    eventually(lambda: page.received("PageChange") == [CAMERA, CLIPS, CAMERA])
    page.browser.forward()
    eventually(lambda: is_shown(page, "Clips"))
    eventually(lambda: page.received("PageChange") == [CAMERA, CLIPS, CAMERA, CLIPS])


def test_a_reload_keeps_view_session_and_recording(page):
    page.press("Record")
    eventually(lambda: page.is_pressed("Record"))
    session = page.session()
    page.go_to("Clips")
    page.browser.refresh()
    eventually(page.is_live)
    assert page.session() == session
    assert is_shown(page, "Clips")
    assert page.state()["recording"]["status"] == "Rec"
    page.go_to("Camera")
    eventually(lambda: page.is_pressed("Record"))
    page.press("Record")
    eventually(lambda: page.state()["recording"]["status"] == "Stop")


def test_two_tabs_share_a_session(page):
    session = page.session()
    page.browser.execute_script("window.open(location.href)")
    first, second = page.browser.window_handles
    page.browser.switch_to.window(second)
    eventually(page.is_live)
    assert page.session() == session
    page.press("Record")
    page.browser.switch_to.window(first)
    eventually(lambda: page.is_pressed("Record"))
    assert page.is_live()


def test_a_login_in_another_tab_ends_the_session_of_the_first_one(page):
    page.browser.switch_to.new_window("tab")
    page.browser.get(page.world.url)
    page.log_in()
    page.browser.switch_to.window(page.browser.window_handles[0])
    eventually(lambda: "another client has logged in" in page.text_of("#login-reason"))
    assert page.text_of("#session") == "lost"
