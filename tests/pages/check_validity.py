"""Validators find nothing wrong with pages: check_validity.py PAGEREX MAKE_DOCUMENTS PACKAGES SAMPLES

Of the documents of these tests, and of the folder SAMPLES. Exits with 77 where a validator is not installed, but not in
continuous integration (CI=true), which must have it."""

import os
import sys
import tempfile
import unittest
from pathlib import Path

import engines
import pages
import validators

# These documents have no colours of their own, so that all contrasts are the page's. Those of others are theirs.
WITHOUT_COLOURS = ("changes", "contents", "lists", "notes", "sections", "small", "tabs")
# Options of the command line by which pages differ.
WAYS = ((), ("--revisions=all", "--headers", "--pictures=embedded"))


class Validity(unittest.TestCase):
    packages = None
    folder = None
    root = None

    def assertNothing(self, findings):
        self.assertFalse(findings, "\n" + "\n".join(f"{page}: {kind}: {example}" for kind, page, example in findings))

    def test_of_markup_and_style(self):
        made = sorted(Path(self.folder).glob("*.html"))
        self.assertGreater(len(made), 10)
        self.assertNothing(validators.markup_findings(self.packages, made))

    def test_for_all_readers(self):
        engine = engines.Chromium(self.packages)
        try:
            for page in sorted(Path(self.folder).glob("*.html")):
                with self.subTest(page.name):
                    contrast = page.stem.startswith(WITHOUT_COLOURS)
                    self.assertNothing(
                        validators.access_findings(self.packages, engine, self.root + page.name, contrast))
        finally:
            engine.close()


def make_pages(pagerex, make_documents, samples, folder):
    converter = pages.Converter(pagerex, make_documents, folder)
    for sample in Path(samples).glob("*.doc"):
        Path(folder, sample.name).write_bytes(sample.read_bytes())
    for document in sorted(Path(folder).glob("*.doc")):
        for options in WAYS:
            converter.page(document.stem, *options)


def main():
    pagerex, make_documents, packages, samples, *names = sys.argv[1:]
    missing = validators.missing(packages)
    if missing:
        print("No page was validated, for want of", ", ".join(missing))
        return 1 if os.environ.get("CI") == "true" else 77
    with tempfile.TemporaryDirectory() as folder, pages.server(folder) as root:
        make_pages(pagerex, make_documents, samples, folder)
        Validity.packages, Validity.folder, Validity.root = packages, folder, root
        return not unittest.main(argv=[sys.argv[0], *names], exit=False, verbosity=2).result.wasSuccessful()


if __name__ == "__main__":
    sys.exit(main())
