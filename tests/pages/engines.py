"""Three browser engines behind one face: each opens a page and answers questions about it in JSON.

    engine = WebKit(packages); engine.open(address); engine.size(390, 800); engine.ask("document.title")

What is asked is an expression of JavaScript, in which the functions of probe.js are known."""

import base64
import contextlib
import json
import os
import shutil
import socket
import subprocess
import tempfile
import time
from pathlib import Path

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service as ChromiumService
    from selenium.webdriver.remote.remote_connection import RemoteConnection
except ImportError:
    webdriver = None

HERE = Path(__file__).resolve().parent
PROBE = (HERE / "probe.js").read_text(encoding="utf-8")
MOST_SECONDS = 60  # for one answer
CHROMIUM_FLAGS = (
    "--headless --no-sandbox --disable-gpu --disable-quic --disable-dev-shm-usage --no-first-run --no-proxy-server "
    "--disable-background-networking --disable-component-update --disable-sync --disable-extensions "
    "--hide-scrollbars --force-device-scale-factor=1 --window-size=1200,800"
).split()


def first_program(*names):
    return next(filter(None, map(shutil.which, names)), None)


class Engine:
    """What all have in common. `missing` tells which packages it would need, none if it can be made."""

    name = None

    def __init__(self):
        self._stack = contextlib.ExitStack()

    def close(self):
        self._stack.close()

    def ask(self, expression):
        """The value of an expression in the page, as JSON gives it back."""
        return json.loads(self._run(f"(() => {{ {PROBE}\nreturn JSON.stringify(({expression}) ?? null); }})()"))


class _Driven(Engine):
    """By a driver of Selenium, whose answers are not waited for without end."""

    def open(self, address):
        self._driver.get(address)

    def _run(self, script):
        return self._driver.execute_script(f"return {script}")

    def picture(self, path):
        self._driver.save_screenshot(str(path))


class Chromium(_Driven):
    name = "Chromium"

    @staticmethod
    def missing(_packages):
        return [package for package, found in (
            ("python3-selenium", webdriver), ("chromium", first_program("chromium", "chromium-browser")),
            ("chromium-driver", first_program("chromedriver"))) if not found]

    def __init__(self, _packages, scheme="light"):
        super().__init__()
        with self._stack:
            profile = self._stack.enter_context(tempfile.TemporaryDirectory(ignore_cleanup_errors=True))
            options = webdriver.ChromeOptions()
            options.binary_location = first_program("chromium", "chromium-browser")
            for flag in (*CHROMIUM_FLAGS, f"--user-data-dir={profile}"):
                options.add_argument(flag)
            options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
            RemoteConnection.set_timeout(MOST_SECONDS)
            service = ChromiumService(first_program("chromedriver"))
            self._driver = webdriver.Chrome(service=service, options=options)
            self._stack.callback(self._driver.quit)
            self.media(scheme=scheme)
            self._stack = self._stack.pop_all()

    def size(self, width, height):
        self._cdp("Emulation.setDeviceMetricsOverride",
                  {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def media(self, scheme="light", kind=""):
        """The colours that the reader prefers, and "print" for the looks of a printed page."""
        self._cdp("Emulation.setEmulatedMedia",
                  {"media": kind, "features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def complaints(self):
        """What the console told since it was last asked."""
        return [entry["message"] for entry in self._driver.get_log("browser")]

    def printed(self):
        """The page as a PDF, on the paper that it names."""
        made = self._cdp("Page.printToPDF", {"preferCSSPageSize": True, "printBackground": True})
        return base64.b64decode(made["data"])

    def shot(self):
        """The window as a PNG file in base64."""
        return self._cdp("Page.captureScreenshot", {"format": "png"})["data"]

    def script(self, source):
        """Runs a script of the tests' own in the page; a promise is waited for."""
        answer = self._cdp("Runtime.evaluate",
                           {"expression": source, "awaitPromise": True, "returnByValue": True})
        if "exceptionDetails" in answer:
            raise RuntimeError(answer["exceptionDetails"])
        return answer["result"].get("value")

    def _cdp(self, command, arguments):
        return self._driver.execute_cdp_cmd(command, arguments)


class Firefox(Engine):
    name = "Firefox"

    @staticmethod
    def missing(packages):
        return [package for package, found in (
            ("firefox-esr", first_program("firefox-esr", "firefox")), ("nodejs", first_program("node")),
            ("puppeteer-core (tools/npm-setup)", Path(packages, "node_modules/puppeteer-core").is_dir()))
            if not found]

    def __init__(self, packages, scheme="light"):
        super().__init__()
        firefox = first_program("firefox-esr", "firefox")
        self._process = subprocess.Popen(
            ["node", HERE / "firefox.mjs", packages, firefox, scheme], stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, encoding="utf-8")
        self._stack.callback(self._end)

    def _end(self):
        self._process.stdin.close()
        self._process.wait(30)
        self._process.stdout.close()

    def open(self, address):
        self._order("open", address=address)

    def size(self, width, height):
        self._order("size", width=width, height=height)

    def picture(self, path):
        self._order("picture", path=str(path))

    def _run(self, script):
        return self._order("ask", script=script)

    def _order(self, order, **rest):
        print(json.dumps({"order": order, **rest}), file=self._process.stdin, flush=True)
        answer = json.loads(self._process.stdout.readline() or '{"error": "Firefox has ended"}')
        if "error" in answer:
            raise RuntimeError(answer["error"])
        return answer.get("value")


def mini_browser():
    """WebKit's own little browser lies beside its library, not in the path."""
    return next(map(str, sorted(Path("/usr/lib").glob("*/webkit2gtk-4.*/MiniBrowser"))), None)


def free_port():
    with socket.socket() as any_one:
        any_one.bind(("127.0.0.1", 0))
        return any_one.getsockname()[1]


def wait_for(port):
    for _ in range(100):
        with socket.socket() as caller:
            if caller.connect_ex(("127.0.0.1", port)) == 0:
                return
        time.sleep(0.1)
    raise RuntimeError(f"nobody answers at {port}")


class WebKit(_Driven):
    name = "WebKit"

    @staticmethod
    def missing(_packages):
        return [package for package, found in (
            ("python3-selenium", webdriver), ("webkit2gtk-driver", first_program("WebKitWebDriver")),
            ("libwebkit2gtk-4.1-0", mini_browser()), ("xvfb", first_program("Xvfb"))) if not found]

    def __init__(self, _packages, scheme="light"):
        super().__init__()
        with self._stack:
            environment = {**os.environ, "DISPLAY": self._screen(), "GTK_THEME": _GTK_THEMES[scheme],
                           "GDK_BACKEND": "x11"}
            address = self._start_driver(environment)
            RemoteConnection.set_timeout(MOST_SECONDS)
            options = webdriver.WebKitGTKOptions()
            options.binary_location = mini_browser()
            options.add_argument("--automation")
            self._driver = webdriver.Remote(address, options=options)
            self._stack.callback(self._driver.quit)
            self._stack = self._stack.pop_all()

    def _start_driver(self, environment):
        port = free_port()
        driver = subprocess.Popen([first_program("WebKitWebDriver"), f"--port={port}"], env=environment,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self._stack.callback(driver.wait, 30)
        self._stack.callback(driver.terminate)
        wait_for(port)
        return f"http://127.0.0.1:{port}"

    def _screen(self):
        """A screen that nobody sees; the server picks its number."""
        read, write = os.pipe()
        with contextlib.closing(os.fdopen(read)) as numbers:
            server = subprocess.Popen(
                [first_program("Xvfb"), "-displayfd", str(write), "-screen", "0", "1600x1200x24", "-nolisten", "tcp"],
                pass_fds=[write], stderr=subprocess.DEVNULL)
            os.close(write)
            self._stack.callback(server.wait, 30)
            self._stack.callback(server.terminate)
            return f":{numbers.readline().strip()}"

    def size(self, width, height):
        """The window, which takes its size in its own time, is larger by its bars."""
        for _ in range(40):
            if self.ask("[innerWidth, innerHeight]") == [width, height]:
                return
            bars = self.ask("[outerWidth - innerWidth, outerHeight - innerHeight]")
            self._driver.set_window_size(width + max(bars[0], 0), height + max(bars[1], 0))
            time.sleep(0.05)
        raise RuntimeError(f"the window does not take the size {width} x {height}")


_GTK_THEMES = {"light": "Adwaita", "dark": "Adwaita:dark"}

ALL = (Chromium, Firefox, WebKit)


class Shelf:
    """The engines of a kind, each made when it is first asked for: by the colours that the reader prefers."""

    def __init__(self, kind, packages):
        self._kind, self._packages, self._made = kind, packages, {}

    @property
    def name(self):
        return self._kind.name

    def engine(self, scheme="light"):
        if scheme not in self._made:
            self._made[scheme] = self._kind(self._packages, scheme)
        return self._made[scheme]

    def close(self):
        for engine in self._made.values():
            engine.close()
