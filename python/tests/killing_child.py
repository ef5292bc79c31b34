"""A child that dies of documents that say so, in the place of the real one: see test_batch.py."""

import os
import signal
import sys
import time

sys.path[:] = sys.argv[4:]

from pagerex.batch import _child  # noqa: E402

_real = _child.convert


def _convert(data, name, settings):
    time.sleep(float(os.environ.get("EACH_SECONDS", 0)))
    text = bytes(data[:4096])
    if b"<crash>" in text:
        os.kill(os.getpid(), signal.SIGSEGV)
    if b"<exit>" in text:
        os._exit(0)
    if b"<hang>" in text:
        while True:
            pass
    if b"<sleep>" in text:
        time.sleep(1000)
    if b"<stop>" in text:
        os.kill(os.getpid(), signal.SIGSTOP)
    if b"<eat>" in text:
        return bytearray(1 << 40)
    if b"<eat slowly>" in text:
        pieces = []
        while True:
            pieces.append(bytearray(1 << 20))
    if b"<noise>" in text:
        for descriptor in (1, 2):
            os.write(descriptor, b"noise\n" * 100000)
    if b"<raise>" in text:
        raise RuntimeError("not what the library does")
    if b"<nonsense>" in text:
        _child._wire.REPLY = _child._wire.TASK
    if b"<host>" in text:
        os.kill(os.getppid(), signal.SIGKILL)
        time.sleep(1000)
    if b"<once " in text:
        mark = text.split(b"<once ")[1].split(b">")[0].decode()
        if not os.path.exists(mark):
            open(mark, "w").close()
            os.kill(os.getpid(), signal.SIGKILL)
    return _real(data, name, settings)


_child.convert = _convert
_child._LOOK_SECONDS = 1
_child.main(sys.argv[1:4])
