"""A document page by page, while it is being converted."""

from __future__ import annotations

import queue
import threading
from typing import TYPE_CHECKING, Any, Dict, Generator, List, NamedTuple, Optional, Tuple, Union

from . import _native
from ._convert import conversion_of
from ._options import main_name_of, settings_of
from ._results import Asset
from ._source import Opened, opened
from .errors import raise_for

if TYPE_CHECKING:
    from typing_extensions import Unpack

    from ._options import Format, Options, Settings
    from ._source import Source


class Page(NamedTuple):
    """A page, or a piece of one."""

    #: From 1.
    number: int
    #: Its path; other files name it so.
    name: str
    content: str
    #: Other files that were finished since the page before: pictures, style sheets, lists of pages.
    assets: Dict[str, Asset]


#: Finished pages that wait for their reader.
_AHEAD = 2
_LOOK_SECONDS = 0.1

_File = Tuple[str, str, Union[str, bytes], bool]


class _Ended(NamedTuple):
    native: Optional[_native.Outcome]
    error: Optional[BaseException]


class _Stopped(Exception):
    """Nobody reads any more."""


class _Conversion:
    """One that runs on a thread of its own, and waits while as many pages wait as may."""

    def __init__(self, held: Opened, name: str, settings: Settings, cancel: _native.Cancel) -> None:
        self._held = held
        self._name = name
        self._settings = settings
        self._cancel = cancel
        self._stopped = False
        self._files: List[_File] = []
        self._queue: queue.Queue[Union[Tuple[int, str, List[_File]], _Ended]] = queue.Queue(_AHEAD)
        # Not a daemon, which would be ended in the midst of the library with the interpreter.
        self._thread = threading.Thread(target=self._run, name="pagerex.pages")

    def _run(self) -> None:
        native, error = None, None
        try:
            native, _ = _native.convert(self._held.native, (self._file, self._page), self._name, self._settings)
        except BaseException as raised:
            error = raised
        try:
            if self._files:
                self._put((0, "", self._files))
            self._put(_Ended(native, error))
        except _Stopped:
            pass

    def _put(self, entry: Union[Tuple[int, str, List[_File]], _Ended]) -> None:
        while not self._stopped and threading.main_thread().is_alive():
            try:
                return self._queue.put(entry, timeout=_LOOK_SECONDS)
            except queue.Full:
                pass
        raise _Stopped

    def _file(self, name: str, media_type: str, content: Union[str, bytes], complete: bool) -> None:
        if complete:
            self._files.append((name, media_type, content, complete))

    def _page(self, number: int, name: str) -> None:
        files, self._files = self._files, []
        self._put((number, name, files))

    def entries(self) -> Generator[Tuple[int, str, List[_File]], None, _Ended]:
        self._thread.start()
        while True:
            entry = self._queue.get()
            if isinstance(entry, _Ended):
                return entry
            yield entry

    def stop(self) -> None:
        self._stopped = True
        if self._thread.is_alive():
            self._cancel.cancel()
            self._thread.join()
        self._held.close()


def pages(source: Source, to: Format = "html", **options: Unpack[Options]) -> Generator[Page, None, None]:
    """Yields a document's pages as they are finished, while the next ones are being made.

    >>> import pagerex
    >>> pieces = list(pagerex.pages("sample.doc", page_size=1000))
    >>> pieces[0].content[:15], pieces[-1].content[-8:]
    ('<!doctype html>', '</html>\\n')

    ``"html"`` comes in pieces of ``page_size`` characters, which put together are its page; the views ``"normal"``,
    ``"phone"`` and ``"mulpages"`` come page by page. Other files stand in the ``assets`` of the page that was finished
    behind them; those behind the last page come with a page of number 0. Other formats are one page.

    No more than a few pages are made ahead. Closing the generator, or no longer referring to it, stops the conversion,
    for which it sets the ``cancel`` that it was given, if any.
    ``source`` and options are those of :func:`pagerex.convert`.
    """
    told: Dict[str, Any] = dict(options)
    if told.get("cancel") is None:
        told["cancel"] = _native.Cancel()
    settings = settings_of(to, told)
    return _pages(source, to, main_name_of(to, told), settings, told["cancel"])


def _pages(
    source: Source, to: str, name: str, settings: Settings, cancel: _native.Cancel
) -> Generator[Page, None, None]:
    conversion = _Conversion(opened(source, keeps=True), name, settings, cancel)
    try:
        ended = yield from _told(conversion, name)
    finally:
        conversion.stop()
    if ended.error is not None:
        raise ended.error
    if ended.native is not None and ended.native[0] != 0:
        raise_for(conversion_of(ended.native, [], to, name), conversion._held.name)


def _told(conversion: _Conversion, main_name: str) -> Generator[Page, None, _Ended]:
    entries = conversion.entries()
    count = 0
    while True:
        try:
            number, name, files = next(entries)
        except StopIteration as stop:
            ended: _Ended = stop.value
            return ended
        if not number and not count:
            number, name = 1, main_name  # a format without pages
        count += 1
        yield _page_of(number, name, files)


def _page_of(number: int, name: str, files: List[_File]) -> Page:
    content, assets = "", {}
    for path, media_type, data, _ in files:
        if number and path == name:
            content = data if isinstance(data, str) else data.decode("utf-8", "replace")
        else:
            assets[path] = Asset(media_type, data.encode() if isinstance(data, str) else data)
    return Page(number, name, content, assets)
