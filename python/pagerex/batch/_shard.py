"""Many documents, each in a process that may die of it."""

from __future__ import annotations

import collections
import contextlib
import os
import select
import time
from typing import TYPE_CHECKING, Any, Deque, Dict, Generator, Iterable, Iterator, List, Optional, Sequence, Tuple

from .. import _native, errors
from . import _wire
from ._children import COMMAND, Broken, Child, Job, Reply, path_bytes, timed_out
from ._desk import SIZE, Desk, OnDesk
from ._plan import Plan, key_with, plan_of
from ._rows import TOO_LARGE, Item, Row

if TYPE_CHECKING:
    from ._rows import Given

#: Documents that a process has: the one it is at, and the next.
_DEPTH = 2
#: Rows that wait to be taken, while more items are drawn.
_MOST_ROWS = 64
_LOOK_SECONDS = 0.5
#: Processes that ended one after the other before they came to a document.
_MOST_IDLE_DEATHS = 3

_NO_PATH = "The input could not be read: Invalid argument."
_CRASH = "The conversion ended its process."
_TIMEOUT = "The conversion took longer than it was given."


def convert_shard(
    items: Iterable[Given], to: str = "html", *, slots: Optional[int] = None, strikes: int = 2, recycle: int = 10000,
    **options: Any,
) -> Generator[Row, None, None]:  # fmt: skip
    """Converts many documents in processes of their own. Yields a :class:`Row` for each, as they end.

    >>> for row in convert_shard(["sample.doc", Item("hello", b"Hello, world"), "missing.doc"], "text", slots=1):
    ...     print(row.path, row.status, row.kind)
    sample.doc ok word97
    hello not_word text
    missing.doc unreadable unknown

    ``items`` are paths, or :class:`Item` or tuples like it; they are drawn as they are needed. Each gets one row,
    whatever it is and whatever it does. Closing the generator ends the processes, and so does the end of this one.

    * ``slots``: processes; as many as there are cores, if it is not given
    * ``timeout``: seconds for a document, 60
    * ``memory``: bytes that it may take, 1 GiB
    * ``input_bytes``, ``output_bytes``: of it, and of what is made of it, 256 MiB each
    * ``strikes``: processes that may die of a document before it is given up; the second has nothing else
      to do
    * ``recycle``: documents that a process lives for
    * all else: options of :func:`pagerex.convert`

    Options that make no sense raise :class:`pagerex.OptionError` here, and not later. A limit that is None is none.
    """
    command = options.pop("_child", COMMAND)
    plan = plan_of(to, options)
    count = core_count() if slots is None else slots
    check_numbers(slots=count, strikes=strikes, recycle=recycle)
    jobs = (Job(item_of(given), number) for number, given in enumerate(items, 1))
    return _rows_of(Shard(jobs, plan, count, strikes, recycle, command))


def _rows_of(shard: Shard) -> Generator[Row, None, None]:
    with contextlib.closing(shard.rows()) as rows:
        for _, row in rows:
            yield row


def check_numbers(**options: int) -> None:
    """Of what is no option of the library."""
    for name, value in options.items():
        if isinstance(value, bool) or not isinstance(value, int) or value < 1:
            raise errors.OptionError(f"{name} must be a whole number above 0, not {value!r}")


def core_count() -> int:
    """That this process may use."""
    return len(os.sched_getaffinity(0))


def item_of(given: Given) -> Item:
    """Of anything that stands for a document."""
    if isinstance(given, Item):
        item = given
    elif isinstance(given, tuple):
        item = Item(*given)
    else:
        item = Item(os.fspath(given))
    if not isinstance(item.path, str):
        path = os.fspath(item.path)
        if not isinstance(path, str):
            raise TypeError(f"an item is a path, or a tuple that begins with one, not {given!r:.60}")
        item = item._replace(path=path)
    if item.content is not None and type(item.content) is not bytes:
        view = memoryview(item.content)
        item = item._replace(content=view.cast("B") if view.c_contiguous and view.nbytes else view.tobytes())
    return item


class Shard:
    """Hands documents out and takes rows in."""

    def __init__(
        self, jobs: Iterator[Job], plan: Plan, slots: int, strikes: int, recycle: int, command: Sequence[str],
        desks: Optional[int] = None,
    ) -> None:  # fmt: skip
        self._jobs = jobs
        self._plan = plan
        self._asked = plan.for_child()
        self._strikes = strikes
        self._recycle = recycle
        self._command = command
        self._given_desks = desks
        self._children: List[Optional[Child]] = [None] * slots
        self._desks: List[Optional[Desk]] = [None] * slots
        self._poll = select.poll()
        self._slot_of: Dict[int, int] = {}
        #: Given back by a child that died of another one.
        self._returned: Deque[Job] = collections.deque()
        #: Whose child died of them.
        self._suspects: Deque[Job] = collections.deque()
        self._rows: Deque[Tuple[Job, Row]] = collections.deque()
        self._is_drawn = False
        self._error: Optional[BaseException] = None
        self._idle_deaths = 0
        self._next_look = 0.0

    def rows(self) -> Generator[Tuple[Job, Row], None, None]:
        """All of them."""
        slots = len(self._children)
        self._file = os.dup(self._given_desks) if self._given_desks is not None else _wire.nameless_file()
        try:
            os.ftruncate(self._file, slots * SIZE)
            while True:
                self._feed()
                while self._rows:
                    yield self._rows.popleft()
                if any(child is not None and child.jobs for child in self._children):
                    self._wait()
                elif self._is_drawn and not self._returned and not self._suspects:
                    break
        finally:
            self._end_all()
        if self._error is not None:
            raise self._error

    # Work goes out.

    def _feed(self) -> None:
        while self._suspects and self._give_alone(self._suspects[0]):
            self._suspects.popleft()
        for depth in range(1, _DEPTH + 1):
            for slot in range(len(self._children)):
                if not self._fill(slot, depth):
                    return

    def _give_alone(self, job: Job) -> bool:
        """To a fresh child. False if all are at work."""
        for slot, child in enumerate(self._children):
            if child is not None and child.jobs:
                continue
            if child is not None:
                self._end(slot)
            fresh = self._start(slot)
            fresh.is_ending = True  # until it has shown what comes of this one
            fresh.give(job)
            return True
        return False

    def _fill(self, slot: int, depth: int) -> bool:
        """False if there is nothing to be given now. While a suspect waits for a child, none gets a second one."""
        child = self._children[slot]
        if child is not None and (child.is_ending or len(child.jobs) >= depth):
            return True
        if self._suspects and (child is None or child.jobs):
            return True
        job = self._next()
        if job is None:
            return False
        if not (child or self._start(slot)).give(job):
            self._returned.appendleft(job)
        return True

    def _next(self) -> Optional[Job]:
        """One that is to be converted, if there is one now; those that are not get their rows."""
        if self._returned:
            return self._returned.popleft()
        while not self._is_drawn and len(self._rows) < _MOST_ROWS:
            try:
                job = next(self._jobs, None)
            except Exception as error:  # what is at hand still ends
                self._error, job = error, None
            if job is None:
                self._is_drawn = True
            elif not self._is_told_without_reading(job):
                return job
        return None

    def _is_told_without_reading(self, job: Job) -> bool:
        item, most = job.item, self._plan.input_bytes
        size = len(item.content) if item.content is not None else item.length
        if most is not None and size is not None and size > most:
            status, sentence = "too_large", TOO_LARGE
        elif item.content is None and path_bytes(item.path) is None:
            status, sentence, size = "unreadable", _NO_PATH, 0
        else:
            return False
        job.attempts += 1
        self._put(job, status, sentence, OnDesk(0, 0, False, size or 0, 0, b"", "", "unknown"), False)
        return True

    def _start(self, slot: int) -> Child:
        desk = self._desks[slot]
        if desk is None:
            desk = self._desks[slot] = Desk(self._file, slot)
        child = Child(self._command, self._asked, self._file, slot, desk)
        self._children[slot] = child
        self._slot_of[child.fileno()] = slot
        self._poll.register(child.fileno(), select.POLLIN)
        return child

    # Rows come in.

    def _wait(self) -> None:
        for descriptor, _ in self._poll.poll(_LOOK_SECONDS * 1000):
            self._receive(self._slot_of[descriptor])
        # What has arrived counts, however late it is looked at.
        if time.monotonic() > self._next_look:
            self._end_late()
            self._next_look = time.monotonic() + _LOOK_SECONDS

    def _receive(self, slot: int) -> None:
        child = self._children[slot]
        assert child is not None
        try:
            taken = child.take()
        except Broken:
            return self._bury(slot)
        if taken is None:
            return self._bury(slot)
        self._idle_deaths = 0
        job, reply = taken
        job.attempts += 1
        may_differ = reply.told.may_differ
        if may_differ and job.attempts < self._strikes:
            self._suspects.append(job)
        else:
            self._rows.append((job, self._row_of(job, reply)))
        if may_differ or child.given >= self._recycle:
            child.is_ending = True
        elif not child.jobs:
            child.is_ending = False
        if child.is_ending and (may_differ or not child.jobs):
            self._end(slot)

    def _end_late(self) -> None:
        for slot, child in enumerate(self._children):
            if child is not None and child.is_late():
                child.was_late = True
                self._bury(slot)

    # Children go.

    def _bury(self, slot: int) -> None:
        """One that died."""
        child = self._children[slot]
        assert child is not None
        status = self._end(slot, keeps=True)
        at = child.guilty()
        if at is None:
            self._idle_deaths += 1
            if self._idle_deaths >= _MOST_IDLE_DEATHS:
                raise RuntimeError(f"child processes end before they come to a document: {child.last_words()}")
        else:
            self._idle_deaths = 0
            self._blame(child.jobs.popleft(), at, "timeout" if timed_out(child, status) else "crash")
        self._take_back(child)

    def _blame(self, job: Job, at: OnDesk, status: str) -> None:
        job.attempts += 1
        if job.attempts < self._strikes:
            self._suspects.append(job)
        else:
            self._put(job, status, _TIMEOUT if status == "timeout" else _CRASH, at, True)

    def _end(self, slot: int, keeps: bool = False) -> int:
        """Ends a child; the documents that it has not come to go back."""
        child = self._children[slot]
        assert child is not None
        self._children[slot] = None
        self._poll.unregister(child.fileno())
        del self._slot_of[child.fileno()]
        status = child.end()
        if not keeps:
            self._take_back(child)
        return status

    def _take_back(self, child: Child) -> None:
        for job in reversed(child.jobs):
            (self._suspects if job.attempts else self._returned).appendleft(job)
        child.close()

    def _end_all(self) -> None:
        for slot, child in enumerate(self._children):
            if child is not None:
                self._end(slot)
        for desk in self._desks:
            if desk is not None:
                desk.close()
        os.close(self._file)

    # Rows.

    def _row_of(self, job: Job, reply: Reply) -> Row:
        told = reply.told
        return Row(
            job.item.path, told.key, told.status, told.sentence, told.kind, told.size, told.sha256, told.milliseconds,
            _native.version(), self._plan.to, reply.content, told.content_sha256, reply.assets, reply.warnings,
            told.metadata, told.counts, job.attempts, told.may_differ,
        )  # fmt: skip

    def _put(self, job: Job, status: str, sentence: str, at: OnDesk, quarantined: bool) -> None:
        self._rows.append((job, blamed_row(self._plan, job, status, sentence, at, quarantined)))


def blamed_row(plan: Plan, job: Job, status: str, sentence: str, at: OnDesk, quarantined: bool) -> Row:
    """Of a document that no child tells of."""
    key = key_with(plan.prefix, at.sha256) if at.is_read else None
    return Row(
        job.item.path, key, status, sentence, at.kind, at.size, at.sha256, 0.0, _native.version(), plan.to,
        None, "", [], [], {}, {}, job.attempts, quarantined,
    )  # fmt: skip
