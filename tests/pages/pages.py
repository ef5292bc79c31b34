"""What the tests of the page share: documents made and converted into a folder, and one engine that shows them.

Tests are written once and run for each engine: see run_tests.py."""

import contextlib
import functools
import http.server
import subprocess
import threading
import unittest

from pictures import Picture

PIXELS_PER_POINT = 96 / 72
PIXELS_PER_TWIP = PIXELS_PER_POINT / 20
WIDE = (1200, 900)
# As narrow as a phone, or as a window of the engine can be.
NARROW = {"Chromium": (390, 800), "Firefox": (390, 800), "WebKit": (450, 800)}

# What an engine cannot do, or cannot be asked: the test or the class of tests that it is not given, and why.
CANNOT = {
    ("Firefox", "Print"): "its driver does not print on the paper that a page names",
    ("WebKit", "Print"): "its driver does not print",
    ("WebKit", "test_have_turned_text_in_one_line"): "it breaks turned text in a cell wherever it can",
    ("Firefox", "test_browsers_have_nothing_to_complain_of"): "its driver does not tell what its console says",
    ("WebKit", "test_browsers_have_nothing_to_complain_of"): "its driver does not tell what its console says",
}


class _QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


@contextlib.contextmanager
def server(folder):
    """Serves a folder; the value is the address of its root."""
    with http.server.ThreadingHTTPServer(
            ("127.0.0.1", 0), functools.partial(_QuietHandler, directory=folder)) as serving:
        threading.Thread(target=serving.serve_forever, daemon=True).start()
        try:
            yield f"http://127.0.0.1:{serving.server_port}/"
        finally:
            serving.shutdown()


class Converter:
    """Makes the documents, and pages of them when they are asked for."""

    def __init__(self, pagerex, make_documents, folder):
        self.folder = folder
        self._pagerex = pagerex
        self._made = set()
        subprocess.run([make_documents, folder], check=True)

    def page(self, document, *options):
        """The name of the page of a document, with options of the command line."""
        name = "-".join([document, *(option.strip("-") for option in options)]) + ".html"
        if name not in self._made:
            subprocess.run([self._pagerex, "-t", "html", *options, "-o", f"{self.folder}/{name}",
                            f"{self.folder}/{document}.doc"], check=True)
            self._made.add(name)
        return name


class PageTest(unittest.TestCase):
    """Of one document, which is open in the engine when a test begins; questions are those of probe.js."""

    document = None
    options = ()
    size = WIDE

    scheme = "light"

    shelf = None
    converter = None
    root = None

    def setUp(self):
        self.engine = self.shelf.engine(self.scheme)
        for name in (self._testMethodName, type(self).__name__):
            if (self.engine.name, name) in CANNOT:
                self.skipTest(CANNOT[self.engine.name, name])
        self.show(self.size, self.document, *self.options)

    def show(self, size, document, *options):
        self.engine.size(*size)
        self.engine.open(self.root + self.converter.page(document, *options))

    def show_narrow(self, document, *options):
        self.show(NARROW[self.engine.name], document, *options)

    def ask(self, question):
        return self.engine.ask(question)

    # --- What is there ---

    def style(self, text, name):
        return self.ask(f"style({quoted(text)}, {quoted(name)})")

    def block_style(self, text, name):
        return self.ask(f"blockStyle({quoted(text)}, {quoted(name)})")

    def pixels(self, text, name):
        return float(self.style(text, name).removesuffix("px"))

    def box(self, text):
        return Box(self.ask(f"box({quoted(text)})"), text)

    def block_box(self, text):
        return Box(self.ask(f"blockBox({quoted(text)})"), text)

    def element_box(self, selector):
        return Box(self.ask(f"boxOf(document.querySelector({quoted(selector)}))"), selector)

    def drawn(self):
        """What the window shows."""
        path = f"{self.converter.folder}/window.png"
        self.engine.picture(path)
        with open(path, "rb") as file:
            return Picture(file.read())

    def text_area(self):
        return Box(self.ask("textArea()"), "main")

    # --- What must hold ---

    def assertStyle(self, text, **properties):
        for name, value in properties.items():
            self.assertEqual(value, self.style(text, name.replace("_", "-")), f"{name} of {text!r}")

    def assertNear(self, expected, actual, pixels=1.0, about=""):
        self.assertLessEqual(abs(expected - actual), pixels, f"{about}: {actual:.2f} is not near {expected:.2f}")

    def assertTwips(self, twips, actual, pixels=1.0, about=""):
        self.assertNear(twips * PIXELS_PER_TWIP, actual, pixels, about)

    def assertFits(self):
        """Nothing can be scrolled sideways but what has a box of its own for it."""
        wide, seen = self.ask("[document.documentElement.scrollWidth, innerWidth]")
        self.assertLessEqual(wide, seen)


class Box:
    """A rectangle in pixels of the page."""

    def __init__(self, rectangle, what):
        if rectangle is None:
            raise AssertionError(f"{what!r} is not in the page")
        self.__dict__.update(rectangle)

    @property
    def centre(self):
        return (self.left + self.right) / 2

    @property
    def middle(self):
        return (self.top + self.bottom) / 2


def quoted(text):
    """A string of JavaScript."""
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n").replace("\t", "\\t") + '"'
