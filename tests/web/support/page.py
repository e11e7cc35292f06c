"""The web remote as its users see it: its controls are found by role and name."""

import json
import re
import time

from selenium.common.exceptions import JavascriptException, WebDriverException
from selenium.webdriver.support.ui import Select

# How long a condition may take to come true on a busy machine.
PATIENCE_S = 20
DESKTOP = (1280, 900)


def eventually(condition, what="the condition", patience=PATIENCE_S):
    """Waits until `condition()` is true and returns its value; an AssertionError counts as false."""
    end = time.monotonic() + patience
    while True:
        failure = None
        try:
            value = condition()
            if value:
                return value
        except (AssertionError, WebDriverException, StopIteration) as error:
            failure = error
        if time.monotonic() > end:
            raise AssertionError(f"{what} did not come true within {patience} s") from failure
        time.sleep(0.05)


class Page:
    def __init__(self, browser, world):
        self.browser = browser
        self.world = world
        # Opening icon.svg makes the browser ask for it; the page names an icon of its own.
        self.allowed = [r"/favicon\.ico "]
        self._first_window = browser.current_window_handle

    # --- Opening and navigating

    def open(self, logged_in=False):
        """Opens the page in front of a camera that has just been switched on. Nothing is left of the
        previous test. With `logged_in` the page has a session, as after a reload."""
        self.resize(*DESKTOP)
        self.browser.get(self.world.url + "/icon.svg")
        self.browser.execute_script("localStorage.clear(); sessionStorage.clear()")
        assert self.world.simulator("POST", "reset", {})[0] == 200
        if logged_in:
            self.browser.execute_script(
                "sessionStorage.setItem('session-id', arguments[0])", self.new_session())
        self._forget_logs()
        self.browser.get(self.world.url)

    def new_session(self):
        status, login = self.world.simulator("POST", "login", {})
        assert status == 200, login
        return login["SessionID"]

    def close_other_windows(self):
        for window in self.browser.window_handles:
            if window != self._first_window:
                self.browser.switch_to.window(window)
                self.browser.close()
        self.browser.switch_to.window(self._first_window)

    def log_in(self):
        dialog = eventually(lambda: self.find("dialog", "Log in"), "the login dialog")
        eventually(lambda: self.find("button", "Log in", within=dialog), "its button").click()
        eventually(self.is_live, "a live connection")

    def session(self):
        return self.browser.execute_script("return sessionStorage.getItem('session-id')")

    def is_live(self):
        """Whether the page is connected, logged in and has shown a status: only then are the buttons
        enabled that the camera can use."""
        return (self.text_of("#connection") == "live" and self.text_of("#session") == "logged in"
                and self.text_of("#rec-state") != "–")

    def go_to(self, view):
        """Follows a link of the navigation."""
        self.link(view).click()
        eventually(lambda: self.find("heading", view).is_displayed(), f"the view {view}")

    def resize(self, width, height, scale=1):
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": scale, "mobile": False})

    # --- Finding by role and name, in the browser's own accessibility tree

    def find_all(self, role, name=None, within=None):
        root = self._object_id(within)
        query = {"objectId": root, "role": role}
        if name is not None:
            query["accessibleName"] = name
        nodes = self.browser.execute_cdp_cmd("Accessibility.queryAXTree", query)["nodes"]
        return self._elements([node for node in nodes if not node.get("ignored")])

    def find(self, role, name, within=None):
        found = self.find_all(role, name, within)
        assert len(found) == 1, f"{len(found)} elements of role {role} are named {name!r}"
        return found[0]

    def button(self, name, within=None):
        return eventually(lambda: self.find("button", name, within), f"the button {name!r}")

    def link(self, name):
        return self.find("link", name)

    def field(self, name, role="textbox", within=None):
        return eventually(lambda: self.find(role, name, within), f"the {role} {name!r}")

    def press(self, name, within=None):
        """Presses a button as soon as it can be used."""
        button = self.button(name, within)
        eventually(button.is_enabled, f"the button {name!r} to be enabled")
        self.click(button)

    def tick(self, name):
        """Changes a check box."""
        self.click(self.field(name, "checkbox"))

    def click(self, element):
        """Clicks an element in the middle of the window, where no fixed element covers it."""
        self.browser.execute_script("arguments[0].scrollIntoView({block: 'center'})", element)
        element.click()

    def fill(self, name, text, role="textbox", within=None):
        field = self.field(name, role, within)
        field.clear()
        field.send_keys(text)

    def choose(self, name, option):
        select = self.field(name, "combobox")
        eventually(lambda: option in self._options(select), f"the choice {option!r}")
        Select(select).select_by_visible_text(option)

    def options_of(self, name):
        return self._options(self.field(name, "combobox"))

    def _options(self, select):
        return self.browser.execute_script(
            "return [...arguments[0].options].map((option) => option.text)", select)

    def is_pressed(self, name):
        return self.button(name).get_attribute("aria-pressed") == "true"

    def text_of(self, selector):
        return self.browser.execute_script(
            "return document.querySelector(arguments[0]).textContent.trim()", selector)

    def text(self):
        return self.browser.execute_script("return document.querySelector('main').innerText")

    def message(self):
        return self.text_of("[role=alert]")

    def slide(self, name, value):
        """Moves a range as its user's pointer does."""
        self.browser.execute_script(
            "const [range, value] = arguments; range.value = value;"
            "range.dispatchEvent(new Event('input', {bubbles: true}));"
            "range.dispatchEvent(new Event('change', {bubbles: true}));",
            eventually(lambda: self.find("slider", name)), value)

    # --- The pointer. The driver's own actions forget a pressed button from one call to the next.

    def hold(self, name):
        """Presses a button in its middle and keeps it pressed."""
        button = self.button(name)
        eventually(button.is_enabled, f"the button {name!r} to be enabled")
        self.browser.execute_script("arguments[0].scrollIntoView({block: 'center'})", button)
        self.point("mouseMoved", button, buttons=0)
        self.point("mousePressed", button)
        return button

    def drag(self, element, right=0.5, down=0.5):
        """Moves the pressed pointer to a place on an element: 0 to 1 from its left and its top."""
        self.point("mouseMoved", element, right, down)

    def release(self, element):
        self.point("mouseReleased", element, buttons=0)

    def point(self, event, element, right=0.5, down=0.5, buttons=1):
        box = self.browser.execute_script("return arguments[0].getBoundingClientRect()", element)
        self.browser.execute_cdp_cmd("Input.dispatchMouseEvent", {
            "type": event, "button": "left", "buttons": buttons, "clickCount": 1,
            "x": box["x"] + right * box["width"], "y": box["y"] + down * box["height"]})

    def key(self, event, key, code):
        self.browser.execute_cdp_cmd("Input.dispatchKeyEvent", {
            "type": event, "key": key, "text": key if event == "keyDown" else "",
            "windowsVirtualKeyCode": code})

    # --- The camera's side

    def state(self):
        status, state = self.world.simulator("GET", "state")
        assert status == 200, state
        return state

    def set_state(self, **members):
        status, reply = self.world.simulator("PATCH", "state", members)
        assert status == 200, reply

    def load_scene(self, scene):
        """Resets the camera, which ends the session, and logs in again."""
        status, reply = self.world.simulator("POST", "reset", {"scene": scene})
        assert status == 200, reply
        eventually(lambda: self.text_of("#session") == "lost", "the end of the session")
        self.log_in()

    def fault(self, fault, **members):
        status, reply = self.world.simulator("POST", "faults", {"fault": fault, **members})
        assert status == 200, reply

    def clear_faults(self):
        self.world.simulator("DELETE", "faults")

    def journal_position(self):
        return self.world.simulator("GET", "journal")[1]["last"]

    def journal(self, *commands, after=0):
        """The entries of some commands; of all without any."""
        entries = self.world.simulator("GET", f"journal?after={after}")[1]["entries"]
        return [entry for entry in entries if not commands or entry["command"] in commands]

    def received(self, *commands, after=0):
        """The messages that the camera has received because of some commands, in words."""
        return [message["decoded"] for entry in self.journal(*commands, after=after)
                for message in entry["messages"]]

    # --- Health

    def check_health(self):
        errors = [entry["message"] for entry in self.browser.get_log("browser")
                  if entry["level"] in ("SEVERE", "WARNING")]
        errors = [error for error in errors
                  if not any(re.search(allowed, error) for allowed in self.allowed)]
        assert errors == [], errors
        foreign = [url for url in self._requested() if not self._is_ours(url)]
        assert foreign == [], foreign

    def allow_errors(self, pattern):
        """Allows lines of the console that a test provokes."""
        self.allowed.append(pattern)

    def _is_ours(self, url):
        return url.startswith((self.world.url + "/", "data:", "about:", "blob:"))

    def _requested(self):
        messages = [json.loads(entry["message"])["message"] for entry in self.browser.get_log("performance")]
        return [message["params"]["request"]["url"] for message in messages
                if message["method"] == "Network.requestWillBeSent"]

    def _forget_logs(self):
        self.browser.get_log("browser")
        self.browser.get_log("performance")

    # --- Between the driver and the browser's tools

    def _object_id(self, element):
        self.browser.execute_script("window.found = arguments[0]", element)
        expression = "window.found ?? document"
        result = self.browser.execute_cdp_cmd("Runtime.evaluate", {"expression": expression})
        return result["result"]["objectId"]

    def _elements(self, nodes):
        if not nodes:
            return []
        objects = [self.browser.execute_cdp_cmd(
            "DOM.resolveNode", {"backendNodeId": node["backendDOMNodeId"]})["object"]["objectId"]
            for node in nodes]
        self.browser.execute_cdp_cmd("Runtime.callFunctionOn", {
            "objectId": objects[0], "arguments": [{"objectId": one} for one in objects],
            "functionDeclaration": "function (...found) { window.found = found; }"})
        try:
            return self.browser.execute_script("return window.found")
        except JavascriptException as error:
            raise AssertionError("the elements have gone") from error
