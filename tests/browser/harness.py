"""What all tests of pages need: documents converted into a folder, and one browser that shows them.

Exits with 77 where there is no browser to see them with."""

import subprocess
import sys
import tempfile
import unittest

import browser

PIXELS_PER_POINT = 96 / 72


def page(document, view="normal", number=1):
    return f"{document}-{view}.files/{number}.htm"


class Pages(unittest.TestCase):
    """One browser for all tests."""

    folder = None
    browser = None

    def setUp(self):
        self.b = Pages.browser

    def assertNear(self, expected, actual, pixels=1.0):
        self.assertLessEqual(abs(expected - actual), pixels, f"{actual} is not near {expected}")

    def assertStyle(self, element, **properties):
        for name, value in properties.items():
            self.assertEqual(value, self.b.style(element, name.replace("_", "-")), name)

    def assertPoints(self, points, element, name):
        self.assertNear(points * PIXELS_PER_POINT, float(self.b.style(element, name).removesuffix("px")), 0.05)


def convert(pagerex, make_documents, folder, conversions):
    subprocess.run([make_documents, folder], check=True)
    for document, view, *options in conversions:
        subprocess.run([pagerex, "--view", view, *options, f"{folder}/{document}.doc",
                        f"{folder}/{document}-{view}.html"], check=True)


def main(conversions):
    """Runs the tests of the module that was started: TEST_FILE PAGEREX MAKE_DOCUMENTS [TEST...]"""
    pagerex, make_documents, *tests = sys.argv[1:]
    missing = browser.what_is_missing()
    if missing:
        print("Skipped: the pages were not looked at in a browser, for want of", ", ".join(missing))
        return 77
    with tempfile.TemporaryDirectory() as folder:
        Pages.folder = folder
        convert(pagerex, make_documents, folder, conversions)
        Pages.browser = browser.Browser(folder)
        try:
            return not unittest.main(argv=[sys.argv[0], *tests], exit=False, verbosity=2).result.wasSuccessful()
        finally:
            Pages.browser.close()
