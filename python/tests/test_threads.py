import hashlib
import random
import subprocess
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor

import pytest

import pagerex
from pagerex._options import settings_of


def digest(conversion):
    parts = [conversion.content.encode(), *(asset.data for asset in conversion.assets.values())]
    return hashlib.sha256(b"".join(parts)).hexdigest()


def test_eight_threads_one_input(sample):
    formats = list(pagerex.formats())
    expected = {to: digest(pagerex.convert(sample, to)) for to in formats}

    def work(seed):
        order = formats * 3
        random.Random(seed).shuffle(order)
        return all(digest(pagerex.convert(sample, to)) == expected[to] for to in order)

    with ThreadPoolExecutor(8) as pool:
        assert all(pool.map(work, range(8)))


def test_eight_threads_one_document(sample):
    with pagerex.open(sample) as document, ThreadPoolExecutor(8) as pool:
        texts = list(pool.map(lambda _: "".join(p.text for p in document.paragraphs), range(8)))
        pictures = list(pool.map(lambda i: document.pictures[i % 3].data, range(24)))
        pages = list(pool.map(lambda _: document.convert().content, range(8)))
    assert len(set(texts)) == 1 and len(set(pictures)) == 2 and len(set(pages)) == 1


def test_other_threads_run_meanwhile(sample):
    """No thread gives the lock up by itself within the time of the test: the conversion does."""
    stop = threading.Event()
    counted = [0]

    def count():
        while not stop.is_set():
            counted[0] += 1
            time.sleep(0)

    thread = threading.Thread(target=count)
    interval = sys.getswitchinterval()
    sys.setswitchinterval(60)
    try:
        thread.start()
        document = pagerex.open(sample)
        went_on = False
        for _ in range(1000):
            if went_on:
                break
            before = counted[0]
            document._reading._document.write(None, "document.html", settings_of("html", {}))
            went_on = went_on or counted[0] > before
    finally:
        stop.set()
        sys.setswitchinterval(interval)
        thread.join()
    assert went_on


def run(code, sample):
    done = subprocess.run(
        [sys.executable, "-c", code], input=sample, capture_output=True, timeout=60, cwd="/", check=False
    )
    return done.returncode, done.stdout.decode(), done.stderr.decode()


def test_daemon_threads_do_not_disturb_the_end(sample):
    code = """
import sys, threading, time, pagerex
data = sys.stdin.buffer.read()
def work():
    while True:
        pagerex.convert(data, progress=lambda done: None)
for _ in range(4):
    threading.Thread(target=work, daemon=True).start()
time.sleep(0.2)
print("end", flush=True)
"""
    for _ in range(3):
        assert run(code, sample) == (0, "end\n", "")


def test_a_forked_process_converts(sample):
    code = """
import os, sys, pagerex
data = sys.stdin.buffer.read()
expected = pagerex.convert(data).content
child = os.fork()
if child == 0:
    os._exit(0 if pagerex.convert(data).content == expected else 1)
print(os.waitpid(child, 0)[1])
"""
    assert run(code, sample)[:2] == (0, "0\n")


SUBINTERPRETER = """
import sys, threading
try:
    import _interpreters as interpreters
    kinds = ["isolated", "legacy"]
except ImportError:
    import _xxsubinterpreters as interpreters
    kinds = [None]
data = sys.stdin.buffer.read()
code = '''
import pagerex
data = bytes.fromhex("%s")
text = pagerex.convert(data, "text", progress=lambda done: None).content
assert text.startswith("A Sampler")
assert pagerex.open(data).paragraphs[0].text == "A Sampler"
try:
    pagerex.convert(b"plain")
except pagerex.NotWordError as error:
    assert error.kind == "text"
print("converted", flush=True)
''' % data.hex()
import pagerex
for kind in kinds:
    for _ in range(3):
        number = interpreters.create(kind) if kind else interpreters.create()
        error = interpreters.run_string(number, code)
        if error is not None: print(error)
        interpreters.destroy(number)
told = []
thread = threading.Thread(target=lambda: pagerex.convert(data, progress=told.append))
thread.start()
thread.join()
assert told[-1] == 1
print("main", len(kinds))
"""


def test_subinterpreters(sample):
    returned, out, err = run(SUBINTERPRETER, sample)
    lines = out.splitlines()
    assert returned == 0, err
    assert lines[-1].startswith("main ") and lines[:-1] == ["converted"] * 3 * int(lines[-1].split()[1]), err


@pytest.mark.skipif(sys.version_info < (3, 13), reason="a lock for each interpreter can be had by name from 3.13 on")
def test_interpreters_side_by_side(sample):
    """The native module by itself: the standard library of 3.13.0 does not hold up to being imported side by side."""
    code = """
import _interpreters, sys, threading
import pagerex
from pagerex._options import settings_of
data = sys.stdin.buffer.read()
code = '''
import sys
package = type(sys)("pagerex")
package.__path__ = %r
sys.modules["pagerex"] = package
from pagerex import _native
data = bytes.fromhex("%s")
for _ in range(20):
    outcome, files = _native.convert(data, None, "a.txt", %r)
    assert files[0][2].startswith("A Sampler")
''' % (list(pagerex.__path__), data.hex(), settings_of("text", {}))
def work():
    number = _interpreters.create("isolated")
    error = _interpreters.run_string(number, code)
    if error is not None: print(error)
    _interpreters.destroy(number)
threads = [threading.Thread(target=work) for _ in range(4)]
for thread in threads: thread.start()
for thread in threads: thread.join()
print("end")
"""
    assert run(code, sample)[:2] == (0, "end\n")
