import io
import os
import signal
import subprocess
import sys
import threading
import time

import pytest

import pagerex


def test_each_cause_has_its_exception(sample):
    cases = [
        (lambda: pagerex.convert(b"%PDF-1.4"), pagerex.NotWordError, "not_word"),
        (lambda: pagerex.convert("/nowhere.doc"), pagerex.SourceNotFoundError, "unreadable"),
        (lambda: pagerex.convert("/"), pagerex.SourceIsDirectoryError, "unreadable"),
        (lambda: pagerex.convert("/dev/null"), pagerex.SourceError, "unreadable"),
        (lambda: pagerex.convert(sample, input_bytes=100), pagerex.InputLimitError, "too_large"),
        (lambda: pagerex.convert(sample, output_bytes=100), pagerex.OutputLimitError, "output_limit"),
        (lambda: pagerex.convert(sample, memory=1000), pagerex.MemoryLimitError, "memory_limit"),
        (lambda: pagerex.convert(sample[:600]), pagerex.PagerexError, None),
    ]
    for call, error, code in cases:
        with pytest.raises(error) as raised:
            call()
        assert isinstance(raised.value, pagerex.PagerexError) and str(raised.value)
        assert code is None or raised.value.code == code


def test_not_word_tells_its_kind():
    with pytest.raises(pagerex.NotWordError) as raised:
        pagerex.convert(b"{\\rtf1 Hello}")
    assert raised.value.kind == "rtf" and "Rich Text" in raised.value.kind.sentence


def test_file_errors_are_those_of_python():
    with pytest.raises(FileNotFoundError) as raised:
        pagerex.open("/nowhere.doc")
    assert raised.value.errno == 2 and raised.value.filename == "/nowhere.doc"


def encrypted(sample):
    """The flag in the FIB, which is at the beginning of the stream in the sample."""
    data = bytearray(sample)
    place = data.index(b"\xec\xa5")
    data[place + 11] |= 1
    return bytes(data)


def test_encrypted(sample):
    data = encrypted(sample)
    with pytest.raises(pagerex.EncryptedError):
        pagerex.convert(data)
    with pytest.raises(pagerex.EncryptedError):
        pagerex.open(data)
    assert pagerex.info(data).kind == "word-encrypted" and not pagerex.info(data).convertible


def test_an_interrupted_conversion_has_what_was_written(sample):
    with pytest.raises(pagerex.LimitError) as raised:
        pagerex.convert(sample, page_size=500, output_bytes=20000)
    partial = raised.value.result
    assert not partial.complete and 0 < partial.output_bytes <= 20000
    assert (
        partial.content.startswith("<!doctype html>")
        and len(partial.assets) >= 1
        and partial.metadata.title == "A Sampler"
    )


def test_cancel_from_another_thread(sample):
    cancel = pagerex.Cancel()
    began = threading.Event()

    class Slow(io.BytesIO):
        def read(self, size=-1):
            began.set()
            while not cancel.canceled:
                time.sleep(0.001)
            return super().read(size)

    thread = threading.Thread(target=lambda: (began.wait(), cancel.cancel()))
    thread.start()
    with pytest.raises(pagerex.CanceledError):
        pagerex.convert(Slow(sample), cancel=cancel)
    thread.join()
    with pytest.raises(pagerex.CanceledError):
        pagerex.convert(sample, cancel=cancel)


def test_deadline(sample):
    class Slow(io.BytesIO):
        def read(self, size=-1):
            time.sleep(0.02)
            return super().read(size)

    with pytest.raises(pagerex.DeadlineError) as raised:
        pagerex.convert(Slow(sample), deadline=0.005)
    assert isinstance(raised.value, TimeoutError)


class Odd(Exception):
    pass


def test_exceptions_of_progress_arrive_unchanged(sample):
    error = Odd("here")

    def progress(done):
        raise error

    for call in (
        lambda: pagerex.convert(sample, progress=progress),
        lambda: list(pagerex.pages(sample, progress=progress)),
        lambda: pagerex.open(sample).convert(progress=progress),
    ):
        with pytest.raises(Odd) as raised:
            call()
        assert raised.value is error
        assert "progress" in [entry.name for entry in raised.traceback]


def test_exceptions_of_files_arrive_unchanged(sample):
    error = Odd("here")

    class Broken(io.BytesIO):
        def read(self, size=-1):
            raise error

    for call in (pagerex.convert, pagerex.open, pagerex.info):
        with pytest.raises(Odd) as raised:
            call(Broken(sample))
        assert raised.value is error


def test_files_that_give_nonsense(sample):
    class Text(io.BytesIO):
        def read(self, size=-1):
            return "text"

    class Nothing(io.BytesIO):
        def read(self, size=-1):
            return b""

    class TooMuch(io.BytesIO):
        def read(self, size=-1):
            return super().read(-1) + bytes(10)

    with pytest.raises(TypeError):
        pagerex.convert(Text(sample))
    with pytest.raises(pagerex.PagerexError):
        pagerex.convert(Nothing(sample))
    assert pagerex.convert(TooMuch(sample), "text").content == pagerex.convert(sample, "text").content


def test_progress_rises_from_0_to_1(sample):
    told = []
    pagerex.convert(sample, progress=told.append)
    assert told[0] == 0 and told[-1] == 1 and told == sorted(told) and len(told) <= 102


def test_progress_may_convert_too(sample):
    inner = []

    def progress(done):
        if not inner:
            inner.append(pagerex.convert(sample, "text").content)

    pagerex.convert(sample, progress=progress)
    assert inner == [pagerex.convert(sample, "text").content]


def test_a_document_is_not_used_within_its_own_call(sample):
    with pagerex.open(sample) as document:
        with pytest.raises(RuntimeError):
            document.convert(progress=lambda done: document.convert())
        with pytest.raises(RuntimeError):
            document.convert(progress=lambda done: document.close())
        assert document.convert("text").content


def test_keyboard_interrupt_ends_a_conversion(sample):
    # A shell's background job ignores the signal, and so does what it starts.
    before = signal.signal(signal.SIGINT, signal.default_int_handler)

    def progress(done):
        os.kill(os.getpid(), signal.SIGINT)
        for _ in range(100):
            time.sleep(0.001)  # where the interpreter looks at signals

    try:
        with pytest.raises(KeyboardInterrupt):
            pagerex.convert(sample, progress=progress)
    finally:
        signal.signal(signal.SIGINT, before)


def test_keyboard_interrupt_ends_a_conversion_without_callbacks(sample):
    """Nothing of Python runs in it: the library asks the interpreter now and then."""
    code = """
import os, signal, sys, threading, time
import pagerex
signal.signal(signal.SIGINT, signal.default_int_handler)
data = sys.stdin.buffer.read()
document = pagerex.open(data)
def interrupt():
    time.sleep(0.3)
    os.kill(os.getpid(), signal.SIGINT)
threading.Thread(target=interrupt).start()
begin = time.monotonic()
try:
    while time.monotonic() - begin < 20:
        document.convert()
except KeyboardInterrupt:
    print("interrupted")
"""
    done = subprocess.run([sys.executable, "-c", code], input=sample, capture_output=True, check=False, cwd="/")
    assert done.stdout == b"interrupted\n", done.stderr


def test_closed_documents_keep_their_text(sample):
    document = pagerex.open(sample)
    assert document.text
    document.close()
    document.close()
    assert document.paragraphs[0].text == "A Sampler"
    with pytest.raises(ValueError):
        document.convert()
    other = pagerex.open(sample)
    other.close()
    with pytest.raises(ValueError):
        other.text  # noqa: B018


def test_native_objects_are_not_made_by_hand(document):
    from pagerex import _native

    for kind in (_native.Tree, _native.Document, type(document.paragraphs[0]._facts)):
        with pytest.raises(TypeError):
            kind()
    with pytest.raises(IndexError):
        document._view.tree.kind(10**6)
    with pytest.raises((IndexError, OverflowError)):
        document._view.tree.text(-1)
