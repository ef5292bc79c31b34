"""What scripts of documents come to in safe pages: safety_test.py PAGEREX MAKE_DOCUMENTS [TEST...]"""

import sys
from pathlib import Path

import harness
from harness import Pages

# Those of tests/safety/script_documents.cpp.
DOCUMENTS = ("Stories AddressesOfFields TipsOfFields Fonts AuthorsOfComments LabelsOfLists Bullets "
             "HeadingsAndBookmarks AddressesOfShapes TextsOfShapes Pictures TextBoxes").split()
# Where what a document brings runs as soon as the page is shown, if nobody prevents it.
RUNNING = ("AuthorsOfComments", "LabelsOfLists", "Bullets")
CONVERSIONS = (
    *((name, "normal", "--safe") for name in DOCUMENTS),
    *((name, "phone", "--safe", "--links", "none", "--pagesize", "300") for name in DOCUMENTS),
    *((name, "mulpages", "--pagesize", "10000") for name in DOCUMENTS),
)

# All that the documents' scripts do is to show a message.
WATCH = """window.shown = 0;
window.alert = window.msgbox = () => { ++window.shown; };"""
# A browser of today has no expressions in styles, and nobody follows links here: these are looked at.
POKE = """for (const element of document.querySelectorAll("*"))
    for (const event of ["mouseover", "mouseout", "focus", "click", "error", "load"])
        element.dispatchEvent(new Event(event));
return window.shown"""


def pages_of(name, view):
    folder = Path(Pages.folder, f"{name}-{view}.files")
    return [str(path.relative_to(Pages.folder)) for path in sorted(folder.glob("*.htm*"))]


class SafePages(Pages):
    def setUp(self):
        super().setUp()
        self.b.before_scripts(WATCH)

    def each_page(self, view):
        for name in DOCUMENTS:
            pages = pages_of(name, view)
            self.assertTrue(pages, name)
            for path in pages:
                with self.subTest(path):
                    self.b.open(path)
                    yield name

    def test_show_no_message_of_the_document(self):
        for view in ("normal", "phone"):
            for _ in self.each_page(view):
                self.assertEqual(0, self.b.run(POKE))

    def test_lead_nowhere_but_by_harmless_schemes(self):
        schemes = set()
        for _ in self.each_page("normal"):
            schemes.update(self.b.run("return [...document.links].map(link => link.protocol)"))
        self.assertEqual({"http:"}, schemes)

    def test_lead_nowhere_without_links(self):
        for _ in self.each_page("phone"):
            self.assertEqual([], self.b.all("a[href]"))

    def test_load_nothing_of_the_document(self):
        for view in ("normal", "phone"):
            for _ in self.each_page(view):
                loaded = self.b.run("return performance.getEntriesByType('resource').map(e => e.name)")
                names = {name.rsplit("/", 1)[1] for name in loaded}
                self.assertLessEqual({n for n in names if not n.startswith("image")}, {"style.css", "shapejs.js"})


class OtherPages(Pages):
    def test_show_them(self):
        self.b.before_scripts(WATCH)
        for name in RUNNING:
            with self.subTest(name):
                self.b.open(pages_of(name, "mulpages")[0])
                self.assertGreater(self.b.run(POKE), 0)


if __name__ == "__main__":
    sys.exit(harness.main(CONVERSIONS))
