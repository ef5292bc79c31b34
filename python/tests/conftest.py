import os
import pathlib
import sys

import pytest

# How an interpreter is started that runs under an emulator.
sys.executable = os.environ.get("PAGEREX_TEST_PYTHON", sys.executable)

HERE = pathlib.Path(__file__).resolve().parent


def _found(*places):
    return next(place for place in places if place.exists())


#: In the repository, or in the source archive.
SAMPLE = _found(HERE.parent.parent / "samples" / "sample.doc", HERE / "sample.doc")


@pytest.fixture(scope="session")
def sample_path():
    return SAMPLE


@pytest.fixture(scope="session")
def sample():
    return SAMPLE.read_bytes()


@pytest.fixture
def document(sample):
    import pagerex

    with pagerex.open(sample) as opened:
        yield opened
