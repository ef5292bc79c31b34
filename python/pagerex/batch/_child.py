"""The process that converts: one document after the other, each within its limits. Started by :mod:`._children`."""

from __future__ import annotations

import hashlib
import json
import mmap
import os
import signal
import socket
import stat
import struct
import sys
import time
from typing import Any, Dict, List, NoReturn, Optional, Tuple

from .. import _native
from .._results import _SUMMARY_FIELDS, _WARNING_NAMES, Kind
from .._source import opened
from . import _wire
from ._desk import Desk
from ._fence import Fence, be_modest, be_quiet, end_with_host, set_signals
from ._plan import key_with
from ._rows import CONVERTED, STATUS_OF_RESULT, TOO_LARGE
from ._told import Told

_OK, _OUT_OF_MEMORY = 0, 10
#: How often a child without work looks whether its host is still there.
_LOOK_SECONDS = 20
_NO_MEMORY = "The conversion needs more memory than it was given."


def convert(data: Any, name: str, settings: Tuple[Any, ...]) -> Tuple[_native.Outcome, List[_native.File]]:
    """All that touches what is in a document."""
    return _native.convert(data, True, name, settings)


class NotRead(Exception):
    """Its status and sentence are those of the row."""

    def __init__(self, status: str, sentence: str) -> None:
        super().__init__(sentence)
        self.status = status
        self.sentence = sentence


class Worker:
    """Answers tasks until there are no more."""

    def __init__(self, end: socket.socket, desk: Desk, asked: Dict[str, Any]) -> None:
        self._end = end
        self._host: int = asked["host"]
        self._desk = desk
        self._name: str = asked["name"]
        self._settings = tuple(asked["settings"])
        self._timeout: float = asked["timeout"] or 0
        self._input_bytes: Optional[int] = asked["input_bytes"]
        self._prefix: str = asked["prefix"]
        self._fence = Fence(asked["memory"])

    def run(self) -> None:
        while True:
            try:
                message = _wire.receive(self._end)
            except BlockingIOError:
                # The host may be gone, and a copy of it that knows nothing of this may hold its end of the socket.
                if os.getppid() != self._host:
                    return
                continue
            if not message.data:
                return
            how, number, mark = _wire.TASK.unpack_from(message.data)
            begun = time.monotonic()
            self._desk.begin(number, begun, mark)
            signal.setitimer(signal.ITIMER_REAL, self._timeout)
            told, parts = self._answer(how, message, begun)
            signal.setitimer(signal.ITIMER_REAL, 0)
            self._desk.done()
            self._send(number, told, parts)
            if told.may_differ:
                return

    def _answer(self, how: int, message: _wire.Message, begun: float) -> Tuple[Told, List[bytes]]:
        try:
            told, parts = self._convert(how, message)
        except MemoryError:
            self._fence.take_down()
            told, parts = self._without("memory", _NO_MEMORY, True), []
        except NotRead as error:
            told, parts = self._without(error.status, error.sentence, False), []
        return told._replace(milliseconds=round((time.monotonic() - begun) * 1000, 3)), parts

    def _without(self, status: str, sentence: str, may_differ: bool) -> Told:
        known = self._desk.look()
        key = key_with(self._prefix, known.sha256) if known.is_read else None
        return Told(status, sentence, known.kind, known.size, known.sha256, key, 0, 0, "", [], [], {}, {}, may_differ)

    # What is read.

    def _convert(self, how: int, message: _wire.Message) -> Tuple[Told, List[bytes]]:
        content = memoryview(message.data)[_wire.TASK.size :]
        if how == _wire.INLINE_CONTENT:
            return self._of_bytes(content)
        if how == _wire.FILE_CONTENT:
            assert message.descriptor is not None
            try:
                size = os.fstat(message.descriptor).st_size
                self._fence.put_up(size)
                with mmap.mmap(message.descriptor, size, access=mmap.ACCESS_READ) as mapped:
                    return self._of_bytes(mapped)
            finally:
                os.close(message.descriptor)
        return self._of_bytes(self._read(os.fsdecode(bytes(content))))

    def _read(self, path: str) -> bytes:
        try:
            if "://" in path and not os.path.exists(path):
                return self._read_remote(path)
            return self._read_local(path)
        except OSError as error:
            why = os.strerror(error.errno) if error.errno else str(error)
            raise NotRead("unreadable", f"The input could not be read: {why}.") from None

    def _read_local(self, path: str) -> bytes:
        # Opening a pipe waits for its other end, and a folder can be opened.
        descriptor = os.open(path, os.O_RDONLY | os.O_NONBLOCK | os.O_NOCTTY | os.O_CLOEXEC)
        try:
            facts = os.fstat(descriptor)
            if not stat.S_ISREG(facts.st_mode):
                why = "Is a directory" if stat.S_ISDIR(facts.st_mode) else "It is no regular file"
                raise NotRead("unreadable", f"The input could not be read: {why}.")
            self._check_size(facts.st_size)
            self._fence.put_up(facts.st_size)
            return _read_up_to(descriptor, facts.st_size)
        finally:
            os.close(descriptor)

    def _read_remote(self, path: str) -> bytes:
        self._fence.take_down()
        try:
            held = opened(path)
            try:
                source = held.native
                if isinstance(source, bytes):
                    return source
                self._check_size(source.byte_count())
                return bytes(source.read_at(0, source.byte_count()))
            finally:
                held.close()
        except (NotRead, OSError, MemoryError):
            raise
        except Exception as error:
            why = str(error).encode("utf-8", "replace").decode()
            raise NotRead("unreadable", f"The input could not be read: {why}") from None
        finally:
            self._fence.rebase()

    def _check_size(self, size: int) -> None:
        self._desk.tell_size(size)
        if self._input_bytes is not None and size > self._input_bytes:
            raise NotRead("too_large", TOO_LARGE)

    # What comes of it.

    def _of_bytes(self, content: Any) -> Tuple[Told, List[bytes]]:
        size = len(content)
        self._desk.tell_size(size)
        self._fence.put_up(size)
        digest = hashlib.sha256(content)
        kind = Kind.of(_native.detect(content))
        self._desk.tell(digest.digest(), kind)
        native, files = convert(content, self._name, self._settings)
        if native[0] == _OUT_OF_MEMORY:
            raise MemoryError
        return self._told(native, files, size, digest.hexdigest(), kind)

    def _told(
        self, native: _native.Outcome, files: List[_native.File], size: int, sha256: str, kind: str
    ) -> Tuple[Told, List[bytes]]:
        status = STATUS_OF_RESULT.get(native[0], "damaged")
        if native[0] == _OK and not native[3]:
            status = "partial"
        parts, assets = [b""], []
        has_content = status in CONVERTED
        for name, media_type, data, _ in files if has_content else ():
            assert isinstance(data, bytes)
            if name == self._name:
                parts[0] = data
            else:
                assets.append((name, media_type, len(data)))
                parts.append(data)
        warnings = [
            (_WARNING_NAMES.get(code, str(code)), sentence, where, count)
            for code, _, count, where, sentence in native[8]
        ]
        told = Told(
            status,
            native[4],
            Kind.of(native[1]) if native[1] else kind,
            size,
            sha256,
            key_with(self._prefix, sha256),
            0,
            len(parts[0]),
            hashlib.sha256(parts[0]).hexdigest() if has_content else "",
            assets,
            warnings,
            _metadata(native[10]),
            dict(zip(_COUNTS, native[5])) if has_content else {},
            False,
        )
        return told, parts

    def _send(self, number: int, told: Told, parts: List[bytes]) -> None:
        if _wire.byte_length(parts) > _wire.INLINE:
            # Less than the document has taken, but on top of it.
            self._fence.take_down()
        head = _spelled(told).encode()
        total = len(head) + _wire.byte_length(parts)
        if total <= _wire.INLINE:
            _wire.send(self._end, [_wire.REPLY.pack(_wire.INLINE_CONTENT, number, len(head), total), head, *parts])
            return
        descriptor = _wire.nameless_file([head, *parts])
        try:
            _wire.send(self._end, [_wire.REPLY.pack(_wire.FILE_CONTENT, number, len(head), total)], descriptor)
        finally:
            os.close(descriptor)


def _read_up_to(descriptor: int, size: int) -> bytes:
    pieces: List[bytes] = []
    left = size
    while left > 0:
        piece = os.read(descriptor, left)
        if not piece:
            break
        pieces.append(piece)
        left -= len(piece)
    return pieces[0] if len(pieces) == 1 else b"".join(pieces)


_spelled = json.JSONEncoder(ensure_ascii=False, check_circular=False, separators=(",", ":")).encode
_COUNTS = ("characters", "paragraphs", "tables", "pictures", "pages")


def _metadata(summary: _native.Summary) -> Dict[str, str]:
    told = {name: str(value) for name, value in zip(_SUMMARY_FIELDS, summary[:23]) if value}
    for name, value, _ in summary[23]:
        told["custom:" + name] = value
    return told


def main(arguments: List[str]) -> NoReturn:
    """With the descriptors of the socket and of the desks, and the desk's number."""
    end, desks, place = (int(argument) for argument in arguments)
    set_signals()
    end_with_host()
    be_modest()
    with socket.socket(fileno=end) as taken:
        taken.setsockopt(socket.SOL_SOCKET, socket.SO_RCVTIMEO, struct.pack("ll", _LOOK_SECONDS, 0))
        asked = json.loads(_wire.receive(taken).data)
        desk = Desk(desks, place)
        os.close(desks)
        be_quiet()
        status = 1
        try:
            Worker(taken, desk, asked).run()
            status = 0
        except (ConnectionError, KeyboardInterrupt):
            status = 0
        finally:
            # What the interpreter does at its end is of no use to anybody here.
            os._exit(status)


if __name__ == "__main__":
    main(sys.argv[1:])
