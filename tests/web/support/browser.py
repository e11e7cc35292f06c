"""The browser of the tests: Debian's chromium without a window, with a profile of its own."""

import contextlib
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

OPTIONS = (
    "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
    "--disable-dev-shm-usage", "--lang=en", "--hide-scrollbars",
)


@contextlib.contextmanager
def start_browser():
    with tempfile.TemporaryDirectory(prefix="web-remote-browser-", ignore_cleanup_errors=True) as profile:
        options = webdriver.ChromeOptions()
        for option in (*OPTIONS, f"--user-data-dir={profile}"):
            options.add_argument(option)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        try:
            yield browser
        finally:
            browser.quit()
