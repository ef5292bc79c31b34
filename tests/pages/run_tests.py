"""The tests of the page in one engine: run_tests.py ENGINE PAGEREX MAKE_DOCUMENTS PACKAGES [TEST...]

PACKAGES is the folder that tools/npm-setup fills. Exits with 77 where the engine is not installed, but not in
continuous integration (CI=true), which must have it."""

import importlib
import os
import sys
import tempfile
import unittest
from pathlib import Path

import engines
import pages


def cases():
    """All classes of tests, of the files beside this one."""
    for path in sorted(Path(__file__).parent.glob("*_test.py")):
        module = importlib.import_module(path.stem)
        for each in vars(module).values():
            if isinstance(each, type) and issubclass(each, pages.PageTest) and each.__module__ == path.stem:
                yield each


def suite(names):
    loader = unittest.defaultTestLoader
    tests = [test for each in cases() for test in loader.loadTestsFromTestCase(each)]
    chosen = [test for test in tests if not names or any(name in test.id() for name in names)]
    return unittest.TestSuite(chosen)


def main():
    name, pagerex, make_documents, packages, *names = sys.argv[1:]
    kind = next(each for each in engines.ALL if each.name == name)
    missing = kind.missing(packages)
    if missing:
        print(f"{name}: no page was looked at, for want of", ", ".join(missing))
        return 1 if os.environ.get("CI") == "true" else 77
    with tempfile.TemporaryDirectory() as folder, pages.server(folder) as root:
        case = pages.PageTest
        case.converter, case.root = pages.Converter(pagerex, make_documents, folder), root
        case.shelf = engines.Shelf(kind, packages)
        try:
            return not unittest.TextTestRunner(verbosity=2).run(suite(names)).wasSuccessful()
        finally:
            case.shelf.close()


if __name__ == "__main__":
    sys.exit(main())
