"""What a run has done, for the one that goes on where it was ended."""

from __future__ import annotations

import collections
import fcntl
import hashlib
import json
import os
import re
from typing import Any, Counter, Dict, Iterator, List, NamedTuple, Optional
from urllib.parse import quote_from_bytes, unquote_to_bytes

from .. import errors
from ._children import path_bytes
from ._desk import BEGUN, SIZE, Desk, OnDesk
from ._plan import Plan, prefix_of
from ._rows import STATUSES, Row

#: What depends on the place and not on the document is tried again.
PASSING = frozenset(("unreadable", "write_failed", "refused"))
_ROWS = re.compile(r"rows-(\d{4,})\.jsonl")
_IN_HAND = re.compile(r"in-hand-(\d{4,})")
_KILLS = "kills.jsonl"


def mark_of(prefix: str, path: str, seen: str) -> bytes:
    """Of an input, as it was seen, under certain options."""
    return hashlib.sha256("\0".join((prefix, path, seen)).encode("utf-8", "surrogatepass")).digest()


class Done(NamedTuple):
    """What the journal has of an input."""

    status: str
    output: str


class Journal:
    """Lines of JSON in ``rows-0001.jsonl`` and so on, a file for each run, into which nobody else writes meanwhile."""

    def __init__(self, folder: str, plan: Plan, sync: bool) -> None:
        self._folder = folder
        self._plan = plan
        self._sync = sync
        os.makedirs(folder, exist_ok=True)
        self._lock = _locked(os.path.join(folder, "lock"))
        try:
            self._file: Optional[int] = None
            numbers = [int(found[1]) for found in map(_ROWS.fullmatch, os.listdir(folder)) if found]
            numbers += [int(found[1]) for found in map(_IN_HAND.fullmatch, os.listdir(folder)) if found]
            self._number = max(numbers, default=0) + 1
            #: The first half of a mark is enough, and there may be millions.
            self._done: Dict[bytes, bytes] = {}
            self._read()
            self._take_kills()
            self.in_hand = self._make_desks()
        except BaseException:
            os.close(self._lock)
            raise

    def _in_hand_path(self) -> str:
        return os.path.join(self._folder, f"in-hand-{self._number:04}")

    def _make_desks(self) -> Optional[int]:
        """None where files cannot be shared by processes, as on some that lie elsewhere: kills are not counted then."""
        path = self._in_hand_path()
        descriptor = os.open(path, os.O_RDWR | os.O_CREAT | os.O_EXCL | os.O_CLOEXEC, 0o666)
        try:
            os.ftruncate(descriptor, SIZE)
            Desk(descriptor, 0).close()
        except OSError:
            os.close(descriptor)
            os.unlink(path)
            return None
        return descriptor

    # What was before.

    def _read(self) -> None:
        for line in _lines(self._folder):
            status, output = line.get("status"), line.get("output")
            if status not in STATUSES or not isinstance(output, str):
                continue
            prefix = prefix_of(line.get("version"), line.get("format"), line.get("options"))
            mark = mark_of(prefix, _path_of(line), str(line.get("seen")))[:16]
            if status in PASSING:
                self._done.pop(mark, None)
            else:
                self._done[mark] = bytes([STATUSES.index(status)]) + output.encode()

    def done(self, mark: bytes) -> Optional[Done]:
        """What is still there of what was done."""
        found = self._done.get(mark[:16])
        if found is None:
            return None
        output = found[1:].decode()
        if output and not os.path.exists(os.path.join(self._folder, output)):
            return None
        return Done(STATUSES[found[0]], output)

    # What was at hand when a run was killed.

    def _take_kills(self) -> None:
        path = os.path.join(self._folder, _KILLS)
        self.kills: Counter[bytes] = collections.Counter()
        self.killers: Dict[bytes, OnDesk] = {}
        known = [told for told in _lines_of(path) if isinstance(told.get("mark"), str)]
        runs = {told.get("run") for told in known}
        for name in sorted(os.listdir(self._folder)):
            found = _IN_HAND.fullmatch(name)
            if not found:
                continue
            left = os.path.join(self._folder, name)
            if int(found[1]) not in runs:
                told = [_told_kill(int(found[1]), at) for at in _left_on_desks(left)]
                _append(path, told, self._sync)
                known += told
            os.unlink(left)
        for kill in known:
            mark = bytes.fromhex(kill["mark"])
            self.kills[mark] += 1
            self.killers[mark] = OnDesk(
                0, 0, bool(kill["sha256"]), kill["bytes"], 0, mark, kill["sha256"], kill["kind"]
            )
        self._unsettled = {mark for mark in self.kills if mark[:16] not in self._done}

    def kills_of(self, mark: bytes) -> int:
        """How often it was at hand then."""
        self._unsettled.discard(mark)
        return self.kills[mark]

    def forget_kills(self) -> None:
        """If all that were at hand have their rows."""
        if self.kills and not self._unsettled:
            os.unlink(os.path.join(self._folder, _KILLS))

    # What is now.

    def add(self, row: Row, output: str, seen: str) -> None:
        """One line, in one write."""
        if self._file is None:
            path = os.path.join(self._folder, f"rows-{self._number:04}.jsonl")
            self._file = os.open(path, os.O_WRONLY | os.O_CREAT | os.O_EXCL | os.O_APPEND | os.O_CLOEXEC, 0o666)
        told = row.as_dict()
        del told["content"], told["assets"]
        told.update(_spelled_path(row.path), output=output, options=self._plan.options, seen=seen)
        _write_line(self._file, told)
        if self._sync:
            os.fsync(self._file)

    def close(self) -> None:
        """Nothing is at hand any more."""
        if self.in_hand is not None:
            os.unlink(self._in_hand_path())
            os.close(self.in_hand)
        if self._file is not None:
            os.close(self._file)
        os.close(self._lock)


def rows(output: str) -> Iterator[Dict[str, Any]]:
    """What the journal of a folder of results tells: the last line of each path, as :meth:`Row.as_dict` has it, but for
    ``content`` and ``assets``; with ``output``, the path of the result in the folder."""
    last: Dict[str, Dict[str, Any]] = {}
    for line in _lines(output):
        path = _path_of(line)
        last.pop(path, None)
        last[path] = line
    for path, line in last.items():
        line["path"] = path
        line.pop("path_bytes", None)
        yield line


def _locked(path: str) -> int:
    descriptor = os.open(path, os.O_RDWR | os.O_CREAT | os.O_CLOEXEC, 0o666)
    try:
        fcntl.flock(descriptor, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        os.close(descriptor)
        raise errors.RefusedError(f"another run writes into {os.path.dirname(path)!r}") from None
    return descriptor


def _lines(folder: str) -> Iterator[Dict[str, Any]]:
    found = sorted((int(match[1]), match[0]) for match in map(_ROWS.fullmatch, os.listdir(folder)) if match)
    for _, name in found:
        yield from _lines_of(os.path.join(folder, name))


def _lines_of(path: str) -> Iterator[Dict[str, Any]]:
    """Without those that broke off."""
    if not os.path.exists(path):
        return
    with open(path, "rb") as file:
        for text in file:
            try:
                line = json.loads(text)
            except ValueError:
                continue
            if isinstance(line, dict) and text.endswith(b"\n"):
                yield line


_spelled = json.JSONEncoder(ensure_ascii=False, separators=(",", ":")).encode


def _write_line(descriptor: int, told: Dict[str, Any]) -> None:
    line = (_spelled(told) + "\n").encode()
    if os.write(descriptor, line) != len(line):
        raise OSError("the journal could not be written")


def _append(path: str, lines: List[Dict[str, Any]], sync: bool) -> None:
    if not lines:
        return
    descriptor = os.open(path, os.O_WRONLY | os.O_CREAT | os.O_APPEND | os.O_CLOEXEC, 0o666)
    try:
        text = "".join(_spelled(line) + "\n" for line in lines).encode()
        if os.write(descriptor, text) != len(text):
            raise OSError("the journal could not be written")
        if sync:
            os.fsync(descriptor)
    finally:
        os.close(descriptor)


def _spelled_path(path: str) -> Dict[str, str]:
    """As text, and in bytes where text cannot say it."""
    try:
        path.encode()
    except UnicodeEncodeError:
        spelled = path_bytes(path) or path.encode("utf-8", "surrogatepass")
        return {"path": spelled.decode("utf-8", "replace"), "path_bytes": quote_from_bytes(spelled)}
    return {"path": path}


def _path_of(line: Dict[str, Any]) -> str:
    if "path_bytes" in line:
        return os.fsdecode(unquote_to_bytes(str(line["path_bytes"])))
    return str(line.get("path"))


def _left_on_desks(path: str) -> Iterator[OnDesk]:
    with open(path, "r+b") as file:
        for place in range(os.fstat(file.fileno()).st_size // SIZE):
            desk = Desk(file.fileno(), place)
            at = desk.look()
            desk.close()
            if at.state == BEGUN and any(at.mark):
                yield at


def _told_kill(run: int, at: OnDesk) -> Dict[str, Any]:
    return {"run": run, "mark": at.mark.hex(), "bytes": at.size, "sha256": at.sha256, "kind": at.kind}
