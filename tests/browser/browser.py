"""A headless Chromium that shows the files of a folder, through a server on this machine."""

import contextlib
import functools
import http.server
import shutil
import tempfile
import threading

try:
    from selenium import webdriver
    from selenium.webdriver.common.by import By
    from selenium.webdriver.chrome.service import Service
except ImportError:
    webdriver = None

BROWSERS = ("chromium", "chromium-browser", "google-chrome")
FLAGS = (
    "--headless --no-sandbox --disable-gpu --disable-quic --disable-dev-shm-usage --no-first-run --no-proxy-server "
    "--disable-background-networking --disable-component-update --disable-sync --disable-extensions "
    "--force-device-scale-factor=1 --window-size=1200,800"
).split()


def what_is_missing():
    """What must be installed before a Browser can be made; empty if nothing."""
    missing = []
    if webdriver is None:
        missing.append("python3-selenium")
    if not _browser():
        missing.append("chromium")
    if not shutil.which("chromedriver"):
        missing.append("chromium-driver")
    return missing


def _browser():
    return next(filter(None, map(shutil.which, BROWSERS)), None)


class _QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


class Browser:
    """Shows pages and says what is to be seen of them. Elements are found in the frame entered last."""

    def __init__(self, folder):
        self._stack = contextlib.ExitStack()
        with self._stack:
            # Pages of "file://" would be strangers to each other, frames included.
            self._server = http.server.ThreadingHTTPServer(
                ("127.0.0.1", 0), functools.partial(_QuietHandler, directory=folder))
            self._stack.callback(self._server.server_close)
            threading.Thread(target=self._server.serve_forever, daemon=True).start()
            self._stack.callback(self._server.shutdown)
            profile = self._stack.enter_context(tempfile.TemporaryDirectory(ignore_cleanup_errors=True))
            self._driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=_options(profile))
            self._stack.callback(self._driver.quit)
            self._stack = self._stack.pop_all()

    def close(self):
        self._stack.close()

    # --- Where we are ---

    def open(self, path):
        """Loads a page, with its frames, and lets its load script run."""
        self._driver.get(f"http://127.0.0.1:{self._server.server_port}/{path}")
        self.settle()

    def before_scripts(self, script):
        """Runs a script in each page and frame that is loaded from now on, before any of its own."""
        self._driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": script})

    def settle(self):
        """Waits until timers that the page has started, and a frame drawn since, are through."""
        self._driver.execute_async_script(
            "const done = arguments[0]; setTimeout(() => requestAnimationFrame(() => setTimeout(done, 0)), 0)")

    def frame(self, name):
        """Enters a frame of the page."""
        self._driver.switch_to.default_content()
        self._driver.switch_to.frame(name)

    def leave_frame(self):
        self._driver.switch_to.default_content()

    # --- What is there ---

    def all(self, css):
        return self._driver.find_elements(By.CSS_SELECTOR, css)

    def one(self, css):
        return self._driver.find_element(By.CSS_SELECTOR, css)

    def with_text(self, text, tag):
        """The first element with this tag and exactly this text, but for spaces around it."""
        return self._driver.find_element(By.XPATH, f"//{tag}[normalize-space(.)={text!r}]")

    def text(self, element):
        """All text, hidden or not, as the document has it."""
        return self.run("return arguments[0].textContent", element)

    def box(self, element):
        """Where an element lies in its frame: left, top, right, bottom, width, height in CSS pixels."""
        return _Box(self.run("return arguments[0].getBoundingClientRect().toJSON()", element))

    def style(self, element, name):
        return element.value_of_css_property(name)

    def run(self, script, *arguments):
        return self._driver.execute_script(script, *arguments)

    def show(self, element):
        """Scrolls the page until the element stands in the middle of the window."""
        self.run("arguments[0].scrollIntoView({block: 'center'})", element)

    def colours(self, points):
        """The colours of points of the window, as (red, green, blue), from a picture of what is drawn."""
        return [tuple(colour) for colour in self._driver.execute_async_script(
            """const [png, points, done] = arguments, picture = new Image();
            picture.onload = () => {
                const canvas = document.createElement("canvas");
                [canvas.width, canvas.height] = [picture.width, picture.height];
                const drawing = canvas.getContext("2d");
                drawing.drawImage(picture, 0, 0);
                done(points.map(([x, y]) => [...drawing.getImageData(x, y, 1, 1).data].slice(0, 3)));
            };
            picture.src = "data:image/png;base64," + png;""",
            self._driver.get_screenshot_as_base64(), points)]

    # --- What a reader does ---

    def rest_pointer(self):
        """In the lower right corner of the window, where the tests' pages show nothing."""
        actions = webdriver.ActionChains(self._driver, duration=0)
        width, height = self.run("return [document.documentElement.clientWidth, window.innerHeight]")
        actions.w3c_actions.pointer_action.move_to_location(width - 4, height - 4)
        actions.perform()

    def hover(self, element):
        webdriver.ActionChains(self._driver, duration=0).move_to_element(element).perform()
        self.settle()

    def click(self, element):
        element.click()
        self.settle()


def _options(profile):
    options = webdriver.ChromeOptions()
    options.binary_location = _browser()
    for flag in (*FLAGS, f"--user-data-dir={profile}"):
        options.add_argument(flag)
    return options


class _Box:
    def __init__(self, rectangle):
        self.__dict__.update(rectangle)

    def contains(self, other):
        """Whether the other box lies inside, to half a pixel."""
        return (self.left <= other.left + 0.5 and self.top <= other.top + 0.5
                and self.right >= other.right - 0.5 and self.bottom >= other.bottom - 0.5)
