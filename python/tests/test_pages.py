import gc
import io
import subprocess
import sys
import threading
import time

import pytest

import pagerex


def converting():
    return [thread for thread in threading.enumerate() if thread.name == "pagerex.pages"]


@pytest.fixture(autouse=True)
def no_thread_stays():
    yield
    gc.collect()
    assert converting() == []


def test_pieces_make_up_the_page(sample):
    pieces = list(pagerex.pages(sample, page_size=500))
    assert [piece.number for piece in pieces] == [1, 2, 3, 4, 5]
    assert pieces[1].name == "document.files/2.html"
    whole = pagerex.convert(sample, page_size=500)
    assert "".join(piece.content for piece in pieces) == whole.content + "".join(
        asset.data.decode() for asset in whole.assets.values()
    )


@pytest.mark.parametrize("to", ["mulpages", "phone", "normal"])
def test_pages_are_those_of_the_view(sample, to):
    whole = pagerex.convert(sample, to, page_size=500)
    files = {}
    for page in pagerex.pages(sample, to, page_size=500):
        if page.number:
            files[page.name] = page.content.encode()
        files.update((name, asset.data) for name, asset in page.assets.items())
    assert files.pop(whole.name).decode() == whole.content
    assert files == {name: asset.data for name, asset in whole.assets.items()}


@pytest.mark.parametrize("to", ["markdown", "text", "preview"])
def test_other_formats_are_one_page(sample, to):
    whole = pagerex.convert(sample, to)
    (page,) = pagerex.pages(sample, to)
    assert (page.number, page.content, page.assets) == (1, whole.content, whole.assets)


def test_closing_stops_the_conversion(sample):
    pages = pagerex.pages(sample, page_size=100)
    next(pages)
    assert len(converting()) == 1
    pages.close()
    assert converting() == []


def test_letting_go_stops_it_too(sample):
    pages = pagerex.pages(sample, page_size=100)
    next(pages)
    del pages
    gc.collect()
    assert converting() == []


def test_nothing_runs_before_the_first_page_is_asked_for(sample):
    pages = pagerex.pages(sample)
    assert converting() == []
    pages.close()


def test_few_pages_are_made_ahead(sample):
    told = []
    pages = pagerex.pages(sample, page_size=100, progress=told.append)
    next(pages)
    time.sleep(0.3)
    waiting = len(told)
    time.sleep(0.3)
    assert len(told) == waiting and told[-1] < 1
    list(pages)
    assert told[-1] == 1


def test_failures_arrive(sample):
    with pytest.raises(pagerex.NotWordError):
        list(pagerex.pages(b"%PDF-1.4"))
    with pytest.raises(FileNotFoundError):
        list(pagerex.pages("/nowhere.doc"))
    with pytest.raises(pagerex.OutputLimitError):
        list(pagerex.pages(sample, page_size=500, output_bytes=20000))
    with pytest.raises(pagerex.OptionError):
        pagerex.pages(sample, "docx")


def test_files_are_let_go_of(sample):
    file = io.BytesIO(sample)
    file.seek(7)
    pages = pagerex.pages(file, page_size=100)
    next(pages)
    pages.close()
    assert file.tell() == 7


def test_cancel(sample):
    cancel = pagerex.Cancel()
    pages = pagerex.pages(sample, page_size=100, cancel=cancel)
    next(pages)
    cancel.cancel()
    with pytest.raises(pagerex.CanceledError):
        list(pages)


def test_an_unfinished_conversion_does_not_hold_the_interpreter_up(sample):
    code = "import sys, pagerex; pages = pagerex.pages(sys.stdin.buffer.read(), page_size=50); next(pages); print(1)"
    done = subprocess.run(
        [sys.executable, "-c", code], input=sample, capture_output=True, timeout=30, cwd="/", check=False
    )
    assert (done.returncode, done.stdout) == (0, b"1\n"), done.stderr
