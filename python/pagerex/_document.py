"""Documents that are open."""

from __future__ import annotations

import threading
from types import TracebackType
from typing import TYPE_CHECKING, Any, Dict, Iterator, List, Mapping, Optional, Tuple, Type, cast

from . import _native
from ._blocks import Block, Chunk, blocks_of, chunks_of
from ._convert import conversion_of, info_of
from ._items import (
    BOOKMARK_START,
    COMMENT,
    FORM_FIELD,
    LINK,
    NOTE,
    NOTE_REFERENCE,
    PARAGRAPH,
    PICTURE,
    REVISION,
    SECTION,
    TABLE,
    TEXT_BOX,
    View,
)
from ._options import main_name_of, settings_of
from ._parts import Bookmark, Comment, Link, Note, Picture, Revision, Section
from ._results import Conversion, Counts, Info, Kind, Metadata, Outcome, Warning
from ._source import Opened, opened
from ._tables import Table
from ._text import Paragraph, TextBox
from .errors import raise_for

if TYPE_CHECKING:
    from typing_extensions import Literal, Unpack

    from ._options import Format, Options
    from ._source import Source

_OPTIONS = frozenset(("revisions", "hidden_text", "memory", "input_bytes", "deadline", "cancel"))
#: Pictures are read a few megabytes at a time, so that a document of many is gone through a few times only.
_PICTURE_BYTES = 1 << 24


class Document:
    """A document to read. :func:`pagerex.open` makes it.

    Objects of it are equal if they stand for the same thing. Any thread may use it, one at a time.
    """

    def __init__(self, native: _native.Document, held: Opened, options: Mapping[str, Any]) -> None:
        self._native = native
        self._held = held
        self._settings = settings_of("html", options, _OPTIONS)
        self._options = dict(options)
        self._lock = threading.RLock()
        self._views: Dict[str, Tuple[View, Outcome]] = {}
        self._known: Optional[Info] = None
        self._pictures: Dict[int, Tuple[int, int, bytes]] = {}
        self._pictures_of: Optional[View] = None

    # What it is.

    @property
    def _info(self) -> Info:
        with self._lock:
            if self._known is None:
                self._known = info_of(self._native)
            return self._known

    @property
    def kind(self) -> Kind:
        """``"word97"``."""
        return self._info.kind

    @property
    def metadata(self) -> Metadata:
        """What it says of itself."""
        return cast(Metadata, self._info.metadata)

    @property
    def core_properties(self) -> Metadata:
        """The same as ``metadata``."""
        return self.metadata

    @property
    def counts(self) -> Counts:
        """Characters, paragraphs, tables, pictures."""
        return cast(Counts, self._info.counts)

    @property
    def complete(self) -> bool:
        """Whether all of it could be read."""
        return self._read()[1].complete

    @property
    def warnings(self) -> List[Warning]:
        """What could not be read, or was mended."""
        return self._read()[1].warnings

    # What it says.

    @property
    def text(self) -> str:
        """The whole text: a line for each paragraph, with its label, and for each row of a table, with tabs between its
        cells. Headers, notes and comments are not in it."""
        return self._view.text

    @property
    def paragraphs(self) -> List[Paragraph]:
        """Those of the text; not those in tables, text boxes, headers, notes and comments."""
        return self._in_sections(PARAGRAPH)

    @property
    def tables(self) -> List[Table]:
        """Those of the text; not those in others."""
        return self._in_sections(TABLE)

    @property
    def text_boxes(self) -> List[TextBox]:
        """All of them, wherever they are anchored."""
        return self._view.all(TEXT_BOX)

    @property
    def sections(self) -> List[Section]:
        """At least one."""
        return self._view.all(SECTION)

    def iter_inner_content(self) -> Iterator[Paragraph | Table]:
        """Paragraphs and tables, in their order."""
        return iter(self._in_sections(PARAGRAPH, TABLE))

    @property
    def headings(self) -> List[Paragraph]:
        """The paragraphs that are headings."""
        return [paragraph for paragraph in self.paragraphs if paragraph.heading_level is not None]

    @property
    def notes(self) -> List[Note]:
        """Footnotes, then endnotes."""
        return self._view.all(NOTE)

    @property
    def footnotes(self) -> List[Note]:
        """In the order of the document."""
        return [note for note in self.notes if note.kind == "footnote"]

    @property
    def endnotes(self) -> List[Note]:
        """In the order of the document."""
        return [note for note in self.notes if note.kind == "endnote"]

    @property
    def comments(self) -> List[Comment]:
        """In the order of the document."""
        return self._view.all(COMMENT)

    @property
    def revisions(self) -> List[Revision]:
        """Tracked changes of text, whichever state of the document was opened. Their places are those of
        ``revisions="all"``."""
        return self._read("all")[0].all(REVISION)

    @property
    def links(self) -> List[Link]:
        """All of them; headers, notes and comments have some too."""
        return self._view.all(LINK)

    @property
    def bookmarks(self) -> List[Bookmark]:
        """Named places."""
        return self._view.all(BOOKMARK_START)

    @property
    def pictures(self) -> List[Picture]:
        """All of them; headers, notes and comments have some too. Shapes that are drawn are ``drawings``."""
        return [picture for picture in self._all_pictures if not picture.is_drawing]

    @property
    def drawings(self) -> List[Picture]:
        """Shapes that are drawn: they have places, sizes and descriptions, but no bytes."""
        return [picture for picture in self._all_pictures if picture.is_drawing]

    @property
    def _all_pictures(self) -> List[Picture]:
        return self._view.all(PICTURE)

    @property
    def form_fields(self) -> List[Tuple[str, str | bool]]:
        """Names of form fields, with the choice that was made, or whether a box is checked. The text of text fields
        stands in the document."""
        tree = self._view.tree
        told: List[_native.FormFieldFacts] = [tree.facts(number) for number in tree.find(0, FORM_FIELD)]
        return [(facts.name, bool(facts.is_checked) if facts.kind == 1 else facts.value) for facts in told]

    def blocks(self) -> Iterator[Block]:
        """Headings, paragraphs, list items, tables and pictures, each with the headings it stands under and its place
        in ``document.text``.

        >>> import pagerex
        >>> with pagerex.open("sample.doc") as document:
        ...     block = next(block for block in document.blocks() if block.kind == "table")
        ...     document.text[block.start:block.end] == block.text
        True
        """
        return blocks_of(self._view)

    def chunks(self, max_characters: int = 2000) -> Iterator[Chunk]:
        """Pieces of ``document.text``: whole blocks, as many as fit, and a heading with what stands under it. Blocks
        that are too long are cut behind a line, a sentence or a word.

        >>> import pagerex
        >>> with pagerex.open("sample.doc") as document:
        ...     all(len(chunk.text) <= 300 for chunk in document.chunks(300))
        True
        """
        if isinstance(max_characters, bool) or not isinstance(max_characters, int) or max_characters < 1:
            raise ValueError(f"max_characters must be a whole number above 0, not {max_characters!r}")
        return chunks_of(self._view, max_characters)

    # What becomes of it.

    def convert(self, to: Format = "html", **options: Unpack[Options]) -> Conversion:
        """As :func:`pagerex.convert`, as often as wanted."""
        settings = settings_of(to, options)
        name = main_name_of(to, options)
        with self._lock:
            native, files = self._native.write(None, name, settings)
        conversion = conversion_of(native, files, to, name)
        if native[0] != 0:
            raise_for(conversion, self._held.name)
        return conversion

    def close(self) -> None:
        """Lets go of what it is read from. What has been read of its text stays; its pictures do not."""
        with self._lock:
            self._native.close()
            self._held.close()

    def __enter__(self) -> Document:
        return self

    def __exit__(
        self, kind: Optional[Type[BaseException]], value: Optional[BaseException], trace: Optional[TracebackType]
    ) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<Document {self._held.name!r}>" if self._held.name else "<Document>"

    # How it is read.

    @property
    def _view(self) -> View:
        return self._read()[0]

    def _read(self, revisions: Optional[str] = None) -> Tuple[View, Outcome]:
        """One state of its text."""
        state = revisions or self._options.get("revisions", "final")
        read = self._views.get(state)
        if read is not None:
            return read
        with self._lock:
            if state not in self._views:
                settings = settings_of("html", dict(self._options, revisions=state), _OPTIONS)
                native, tree = self._native.walk(settings)
                outcome = Outcome(native)
                if native[0] != 0:
                    raise_for(outcome, self._held.name)
                self._views[state] = View(tree, self), outcome
            return self._views[state]

    def _in_sections(self, *kinds: int) -> List[Any]:
        view = self._view
        tree = view.tree
        return [
            view.item(number)
            for section in tree.find(0, SECTION)
            for number in tree.children(section)
            if tree.kind(number) in kinds
        ]

    def _note_of(self, view: View, reference: int) -> Optional[Note]:
        """That a reference stands for."""
        notes = cast("Optional[Dict[Tuple[int, int], Note]]", view.found.get("notes"))
        if notes is None:
            notes = {(note._note.kind, note._note.index): note for note in view.all(NOTE)}
            view.found["notes"] = notes
        facts: _native.NoteFacts = view.tree.facts(reference)
        return notes.get((facts.kind, facts.index))

    def _reference_of(self, view: View, note: Note) -> Optional[int]:
        """That stands for a note."""
        references = cast("Optional[Dict[Tuple[int, int], int]]", view.found.get("references"))
        if references is None:
            references = {}
            for number in view.tree.find(0, NOTE_REFERENCE):
                facts: _native.NoteFacts = view.tree.facts(number)
                references.setdefault((facts.kind, facts.index), number)
            view.found["references"] = references
        return references.get((note._note.kind, note._note.index))

    def _picture(self, view: View, order: int) -> Tuple[int, int, bytes]:
        """Kind, whether it is packed, and bytes of a picture."""
        with self._lock:
            if self._pictures_of is not view or order not in self._pictures:
                state = next(state for state, (known, _) in self._views.items() if known is view)
                settings = settings_of("html", dict(self._options, revisions=state), _OPTIONS)
                _, read = self._native.pictures(order, _PICTURE_BYTES, settings)
                self._pictures = {number: (kind, packed, data) for number, kind, packed, data in read}
                self._pictures_of = view
            return self._pictures.get(order, (0, 0, b""))

    def _picture_settings(self) -> Any:
        limits: Dict[str, Any] = {name: self._options[name] for name in ("memory", "deadline", "cancel") if name in self._options}
        return settings_of("html", limits, _OPTIONS)


def open(
    source: Source,
    *,
    revisions: Literal["final", "original", "all"] = "final",
    hidden_text: bool = False,
    memory: Optional[int] = None,
    input_bytes: Optional[int] = None,
    deadline: Optional[float] = None,
    cancel: Optional[_native.Cancel] = None,
) -> Document:
    """Opens a document to read what it says.

    >>> import pagerex
    >>> with pagerex.open("sample.doc") as document:
    ...     [paragraph.text for paragraph in document.headings][:2]
    ['Characters', 'Paragraphs']

    ``source`` is what :func:`pagerex.convert` takes; bytes that can be changed are copied, and files are read from
    until the document is closed. ``revisions`` says in which state of its tracked changes it is read, ``hidden_text``
    whether with text that Word hides. The limits are those of :func:`pagerex.convert`, ``deadline`` counts anew for
    each reading.
    """
    options: Dict[str, Any] = {
        "revisions": revisions,
        "hidden_text": hidden_text,
        "memory": memory,
        "input_bytes": input_bytes,
        "deadline": deadline,
        "cancel": cancel,
    }
    settings = settings_of("html", options, _OPTIONS)
    held = opened(source, keeps=True)
    try:
        native, document = _native.open(held.native, settings)
        if native[0] != 0:
            raise_for(Outcome(native), held.name)
    except BaseException:
        held.close()
        raise
    return Document(document, held, options)
