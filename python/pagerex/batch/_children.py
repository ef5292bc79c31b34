"""Child processes as a run has them."""

from __future__ import annotations

import collections
import json
import os
import signal
import socket
import struct
import subprocess
import sys
import time
from typing import Any, Deque, Dict, List, NamedTuple, Optional, Sequence, Tuple

from . import _wire
from ._desk import BEGUN, Desk, OnDesk
from ._rows import Item, RowAsset, RowWarning
from ._told import Told

#: How a child is started that finds all that its host finds. Its arguments are those of `_child.main` and `sys.path`.
COMMAND = ("-c", "import sys; sys.path[:] = sys.argv[4:]; from pagerex.batch._child import main; main(sys.argv[1:4])")

#: Later than that, a process that should have ended itself is ended.
_GRACE_FACTOR, _GRACE_SECONDS = 1.1, 1.0
#: That a process may take until it begins.
_MOST_STARTING = 120.0
#: That an answer may have beside its output.
_MOST_BESIDE = 64 << 20
NO_MARK = bytes(32)


class Job:
    """A document on its way."""

    __slots__ = ("item", "number", "attempts", "seen", "mark")

    def __init__(self, item: Item, number: int, seen: str = "", mark: bytes = NO_MARK) -> None:
        self.item = item
        self.number = number
        self.attempts = 0
        #: What tells whether it has changed, and all that tells it from others: of a journal.
        self.seen = seen
        self.mark = mark


class Reply(NamedTuple):
    """What a child tells of the document at hand, with its content."""

    told: Told
    content: Optional[str]
    assets: List[RowAsset]
    warnings: List[RowWarning]


def path_bytes(path: str) -> Optional[bytes]:
    """As the system takes it; None of what no file can be called."""
    try:
        encoded = os.fsencode(path)
    except UnicodeEncodeError:
        return None
    return encoded if len(encoded) <= _wire.INLINE and b"\0" not in encoded else None


class Broken(Exception):
    """A child says what no sound child says."""


class Child:
    """One process. It is told of the next document while it is at one, so that it never waits."""

    def __init__(self, command: Sequence[str], asked: Dict[str, Any], desks: int, place: int, desk: Desk) -> None:
        self.jobs: Deque[Job] = collections.deque()
        self.given = 0
        #: Takes no more.
        self.is_ending = False
        self.was_late = False
        self._desk = desk
        self._started = time.monotonic()
        self._timeout: Optional[float] = asked["timeout"]
        self._most = None if asked["output_bytes"] is None else asked["output_bytes"] + _MOST_BESIDE
        desk.clear()
        self._errors = _wire.nameless_file()
        self._end, theirs = _wire.pair()
        try:
            self._process = _start(command, [theirs.fileno(), desks], place, self._errors)
        except BaseException:
            self._end.close()
            os.close(self._errors)
            raise
        finally:
            theirs.close()
        self._say([json.dumps({**asked, "host": os.getpid()}).encode()])

    def fileno(self) -> int:
        """Of the socket."""
        return self._end.fileno()

    def _say(self, parts: List[Any], descriptor: Optional[int] = None) -> bool:
        try:
            _wire.send(self._end, parts, descriptor, socket.MSG_DONTWAIT | socket.MSG_NOSIGNAL)
        except BlockingIOError:
            return False
        except ConnectionError:  # its end is told of where its answers are read
            pass
        return True

    def give(self, job: Job) -> bool:
        """False if it cannot take it now."""
        content = job.item.content
        if content is None:
            path = path_bytes(job.item.path) or b""
            done = self._say([_wire.TASK.pack(_wire.NO_CONTENT, job.number, job.mark), path])
        elif len(content) <= _wire.INLINE:
            done = self._say([_wire.TASK.pack(_wire.INLINE_CONTENT, job.number, job.mark), content])
        else:
            descriptor = _wire.nameless_file([content])
            try:
                done = self._say([_wire.TASK.pack(_wire.FILE_CONTENT, job.number, job.mark)], descriptor)
            finally:
                os.close(descriptor)
        if done:
            self.jobs.append(job)
            self.given += 1
        return done

    def take(self) -> Optional[Tuple[Job, Reply]]:
        """The answer that is there; None if the child has come to its end."""
        try:
            message = _wire.receive(self._end, socket.MSG_DONTWAIT)
        except ConnectionError:
            return None
        try:
            if not message.data:
                return None
            try:
                reply = _read(message, self.jobs[0].number if self.jobs else None, self._most)
            except (ValueError, TypeError, LookupError, ArithmeticError, struct.error) as error:
                raise Broken from error
        finally:
            if message.descriptor is not None:
                os.close(message.descriptor)
        return self.jobs.popleft(), reply

    def is_late(self) -> bool:
        """It has ended neither the document nor itself."""
        now, at = time.monotonic(), self._desk.look()
        if self.jobs and at.number == self.jobs[0].number:
            limit = self._timeout
            return at.state == BEGUN and limit is not None and now > at.begun + limit * _GRACE_FACTOR + _GRACE_SECONDS
        return self.given == len(self.jobs) > 0 and now > self._started + _MOST_STARTING

    def end(self) -> int:
        """Ends it, and returns how it ended."""
        self._process.kill()
        status = self._process.wait()
        self._end.close()
        assert self._process.stdin is not None
        self._process.stdin.close()
        return status

    def guilty(self) -> Optional[OnDesk]:
        """After its end: what it was at."""
        at = self._desk.look()
        return at if self.jobs and at.number == self.jobs[0].number else None

    def last_words(self) -> str:
        """What it said before it began."""
        words = os.pread(self._errors, 1 << 16, 0).decode(errors="replace").strip()
        return words.splitlines()[-1] if words else "nothing was said"

    def close(self) -> None:
        """After its end."""
        os.close(self._errors)


def timed_out(child: Child, status: int) -> bool:
    """Whether it ended because its time was over."""
    return child.was_late or status == -signal.SIGALRM


def _start(command: Sequence[str], descriptors: List[int], place: int, errors: int) -> subprocess.Popen[bytes]:
    if not sys.executable:
        raise RuntimeError("sys.executable does not tell which Python to start")
    arguments = [sys.executable, *command, *(str(number) for number in [*descriptors, place]), *sys.path]
    return subprocess.Popen(
        arguments, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=errors, pass_fds=descriptors
    )


def is_below(name: str) -> bool:
    """Whether a file of this name lies in the folder that it is put into."""
    return "\0" not in name and not any(part in ("", ".", "..") for part in name.split("/"))


def _read(message: _wire.Message, expected: Optional[int], most: Optional[int]) -> Reply:
    how, number, head, total = _wire.REPLY.unpack_from(message.data)
    if number != expected or head > total or (most is not None and total > most):
        raise ValueError("an answer to something else")
    data = memoryview(message.data)[_wire.REPLY.size :]
    if how == _wire.FILE_CONTENT:
        if message.descriptor is None:
            raise ValueError("an answer without its content")
        data = memoryview(_wire.read_all(message.descriptor, total))
    if len(data) != total:
        raise ValueError("an answer of another length")
    told = Told(*json.loads(bytes(data[:head])))
    end = head + told.content_length
    content = str(data[head:end], "utf-8", "replace") if told.content_sha256 else None
    assets = []
    for name, media_type, length in told.assets:
        if not is_below(name):
            raise ValueError("a file that would lie elsewhere")
        assets.append(RowAsset(name, media_type, bytes(data[end : end + length])))
        end += length
    return Reply(told, content, assets, [RowWarning(*warning) for warning in told.warnings])
