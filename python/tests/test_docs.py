import doctest
import importlib
import pathlib
import pkgutil
import shutil

import pytest

import pagerex

MODULES = sorted(
    name
    for _, name, _ in pkgutil.walk_packages(pagerex.__path__, "pagerex.")
    if not {"_native", "__main__", "langchain", "llama_index", "markitdown_plugin", "spark"} & set(name.split("."))
)


@pytest.fixture
def beside_the_sample(sample_path, tmp_path, monkeypatch):
    shutil.copy(sample_path, tmp_path / "sample.doc")
    monkeypatch.chdir(tmp_path)


@pytest.mark.parametrize("name", ["pagerex", *MODULES])
def test_examples_of_docstrings(name, beside_the_sample):
    assert doctest.testmod(importlib.import_module(name)).failed == 0


def test_examples_are_there(beside_the_sample):
    assert sum(doctest.testmod(importlib.import_module(name)).attempted for name in MODULES) > 30


def test_examples_of_the_readme(beside_the_sample):
    readme = pathlib.Path(__file__).resolve().parent.parent / "README.md"
    outcome = doctest.testfile(str(readme), module_relative=False)
    assert outcome.failed == 0 and outcome.attempted > 5


def test_everything_public_is_told_of():
    for name in pagerex.__all__:
        shown = getattr(pagerex, name)
        assert shown.__doc__, name
        for attribute, value in vars(shown).items() if isinstance(shown, type) else ():
            if not attribute.startswith("_") and (callable(value) or isinstance(value, property)):
                assert value.__doc__, f"{name}.{attribute}"
