"""Runs that survive: of many documents into a folder."""

from __future__ import annotations

import contextlib
import dataclasses
import hashlib
import os
from typing import TYPE_CHECKING, Any, Callable, Dict, Iterable, Iterator, List, NamedTuple, Optional, Sequence

from ._children import COMMAND, Job
from ._journal import Journal, mark_of, rows
from ._plan import Plan, plan_of
from ._rows import STATUSES, Item, Row
from ._shard import Shard, blamed_row, check_numbers, core_count, item_of
from ._store import Store

if TYPE_CHECKING:
    from ._rows import Given

#: A run may be killed for other reasons.
_LEAST_KILLS = 2
_KILLER = "The run was killed each time when it was at this document."


__all__ = ["Summary", "rows", "run"]


class Summary(NamedTuple):
    """What came of a run."""

    #: Inputs by status, in the order of :data:`STATUSES`; those that were done before as they were then.
    counts: Dict[str, int]
    #: Those that were done before.
    kept: int


def run(
    items: Iterable[Given],
    output: str | os.PathLike[str],
    to: str = "html",
    *,
    slots: Optional[int] = None,
    strikes: int = 2,
    recycle: int = 10000,
    sync: bool = False,
    on_row: Optional[Callable[[Row], object]] = None,
    **options: Any,
) -> Summary:
    """Converts many documents into a folder, and goes on there when it is called again.

    >>> import tempfile
    >>> with tempfile.TemporaryDirectory() as folder:
    ...     first = run(["sample.doc", Item("letter", b"%PDF-1.7")], folder, "text")
    ...     again = run(["sample.doc", Item("letter", b"%PDF-1.7")], folder, "text")
    ...     sample = next(row for row in rows(folder) if row["path"] == "sample.doc")
    ...     text = open(os.path.join(folder, sample["output"])).read()
    >>> first.counts, again.kept, text.splitlines()[0]
    ({'ok': 1, 'not_word': 1}, 2, 'A Sampler')

    Options are those of :func:`convert_shard`. ``output`` gets

    * ``objects/ab/KEY.html``, results by the keys of their rows; with other files a folder, in which links hold:
      ``objects/ab/KEY/document.md`` and ``objects/ab/KEY/document.files/picture-1.png``
    * ``rows-0001.jsonl`` and so on, a line for each input: its :class:`Row` without content and assets, but with
      ``output``, the path of the result. :func:`rows` reads them.

    A result is there whole or not at all. A run that was killed has lost what was at hand, and no more. Inputs that
    have a line are not converted again if they are what they were (of files by size and time, of contents by their
    hash; other addresses are taken to hold what they held) and options, limits and version are the same. What was
    unreadable is tried again. A document that was being converted when a run was killed comes last, and alone; when
    that was so ``strikes`` times, or twice if that is less, it is given up (``quarantined``).

    ``sync`` waits until each result is on the disk, so that a power cut loses no more either. ``on_row`` hears each new
    row. Another run that writes into the same folder is refused (:class:`pagerex.RefusedError`).
    """
    command = options.pop("_child", COMMAND)
    plan = plan_of(to, options)
    count = core_count() if slots is None else slots
    check_numbers(slots=count, strikes=strikes, recycle=recycle)
    with contextlib.ExitStack() as stack:
        journal = Journal(os.fspath(output), plan, sync)
        stack.callback(journal.close)
        store = Store(os.fspath(output), plan.name, sync)
        stack.callback(store.close)
        return _Run(plan, journal, store, count, strikes, recycle, command, on_row).of(items)


class _Run:
    """From the first document to the last."""

    def __init__(
        self,
        plan: Plan,
        journal: Journal,
        store: Store,
        slots: int,
        strikes: int,
        recycle: int,
        command: Sequence[str],
        on_row: Optional[Callable[[Row], object]],
    ) -> None:
        self._plan = plan
        self._journal = journal
        self._store = store
        self._slots = slots
        self._strikes = strikes
        self._recycle = recycle
        self._command = command
        self._on_row = on_row
        self._counts = dict.fromkeys(STATUSES, 0)
        self._kept = 0
        #: At hand when a run was killed.
        self._suspects: List[Job] = []

    def of(self, items: Iterable[Given]) -> Summary:
        self._convert(self._jobs(items), self._slots)
        for job in self._suspects:
            self._convert(iter([job]), 1)
        self._journal.forget_kills()
        return Summary({status: count for status, count in self._counts.items() if count}, self._kept)

    def _jobs(self, items: Iterable[Given]) -> Iterator[Job]:
        """Those that are to be converted now."""
        for number, item in enumerate(map(item_of, items), 1):
            seen = _seen(item)
            mark = mark_of(self._plan.prefix, item.path, seen)
            done = self._journal.done(mark)
            if done is not None:
                self._kept += 1
                self._counts[done.status] += 1
                continue
            job = Job(item, number, seen, mark)
            job.attempts = self._journal.kills_of(mark)
            if job.attempts:
                self._suspects.append(job)
            else:
                yield job

    def _convert(self, jobs: Iterator[Job], slots: int) -> None:
        tried = self._without_killers(jobs)
        shard = Shard(tried, self._plan, slots, self._strikes, self._recycle, self._command, self._journal.in_hand)
        with contextlib.closing(shard.rows()) as rows:
            for job, row in rows:
                self._take(job, row)

    def _without_killers(self, jobs: Iterator[Job]) -> Iterator[Job]:
        for job in jobs:
            if job.attempts < max(self._strikes, _LEAST_KILLS):
                yield job
            else:
                self._take(job, blamed_row(self._plan, job, "crash", _KILLER, self._journal.killers[job.mark], True))

    def _take(self, job: Job, row: Row) -> None:
        try:
            output = self._store.put(row)
        except OSError as error:
            output, row = "", _not_written(row, error)
        self._journal.add(row, output, job.seen)
        self._counts[row.status] += 1
        if self._on_row is not None:
            self._on_row(row)


def _seen(item: Item) -> str:
    """What tells an input from what it was."""
    if item.content is not None:
        return hashlib.sha256(item.content).hexdigest()
    try:
        facts = os.stat(item.path)
    except (OSError, ValueError):
        return "address" if "://" in item.path else ""
    return f"{facts.st_size} {facts.st_mtime_ns}"


def _not_written(row: Row, error: OSError) -> Row:
    why = os.strerror(error.errno) if error.errno else str(error)
    sentence = f"The output could not be written: {why}."
    return dataclasses.replace(
        row, status="write_failed", sentence=sentence, content=None, content_sha256="", assets=[]
    )
