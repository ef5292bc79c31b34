"""How an open document is read."""

from __future__ import annotations

import threading
from typing import TYPE_CHECKING, Any, Dict, Mapping, Optional, Tuple

from . import _native
from ._convert import conversion_of, info_of
from ._items import View
from ._options import Settings, main_name_of, settings_of
from ._results import Conversion, Info, Outcome
from ._source import opened
from .errors import raise_for

if TYPE_CHECKING:
    from ._source import Source

_OPTIONS = frozenset(("revisions", "hidden_text", "memory", "input_bytes", "deadline", "cancel"))
_OF_PICTURES = ("memory", "deadline", "cancel")
#: Pictures are read a few megabytes at a time, so that a document of many is gone through a few times only.
_PICTURE_BYTES = 1 << 24

Stored = Tuple[int, int, bytes]


class Reading:
    """A document of the library, what it is read from, and the options it was opened with. The objects that it is
    shown as refer to it, and it to none of them: they go with the last reference to them."""

    def __init__(self, source: Source, options: Mapping[str, Any]) -> None:
        self._options = dict(options)
        self.lock = threading.RLock()
        self._info: Optional[Info] = None
        self._pictures: Dict[int, Stored] = {}
        self._pictures_of = ""
        settings = self._settings()
        self._held = opened(source, keeps=True)
        try:
            native, self._document = _native.open(self._held.native, settings)
            if native[0] != 0:
                raise_for(Outcome(native), self._held.name)
        except BaseException:
            self._held.close()
            raise

    @property
    def revisions(self) -> str:
        """The state that it was opened in."""
        return str(self._options["revisions"])

    @property
    def name(self) -> Optional[str]:
        """For people."""
        return self._held.name

    def _settings(self, **changed: Any) -> Settings:
        return settings_of("html", {**self._options, **changed}, _OPTIONS)

    def info(self) -> Info:
        """What it says of itself."""
        with self.lock:
            if self._info is None:
                self._info = info_of(self._document)
            return self._info

    def walk(self, revisions: str) -> Tuple[View, Outcome]:
        """Its text in one state."""
        with self.lock:
            native, tree = self._document.walk(self._settings(revisions=revisions))
        outcome = Outcome(native)
        if native[0] != 0:
            raise_for(outcome, self._held.name)
        return View(tree, self, revisions), outcome

    def convert(self, to: str, options: Mapping[str, Any]) -> Conversion:
        """Into memory."""
        settings = settings_of(to, options)
        name = main_name_of(to, options)
        with self.lock:
            native, files = self._document.write(None, name, settings)
        conversion = conversion_of(native, files, to, name)
        if native[0] != 0:
            raise_for(conversion, self._held.name)
        return conversion

    def picture(self, view: View, order: int) -> Stored:
        """Kind, whether it is packed, and bytes of a picture."""
        with self.lock:
            if self._pictures_of != view.revisions or order not in self._pictures:
                _, read = self._document.pictures(order, _PICTURE_BYTES, self._settings(revisions=view.revisions))
                self._pictures = {number: (kind, packed, data) for number, kind, packed, data in read}
                self._pictures_of = view.revisions
            return self._pictures.get(order, (0, 0, b""))

    def picture_settings(self) -> Settings:
        """For converting one."""
        return settings_of("html", {name: self._options[name] for name in _OF_PICTURES}, _OPTIONS)

    def close(self) -> None:
        """Lets go of all but what objects hold."""
        with self.lock:
            self._document.close()
            self._pictures.clear()
            self._held.close()
