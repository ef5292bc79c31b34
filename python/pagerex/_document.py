"""Documents that are open."""

from __future__ import annotations

from types import TracebackType
from typing import TYPE_CHECKING, Any, Dict, Iterator, List, Optional, Tuple, Type, cast

from . import _native
from ._blocks import Block, Chunk, blocks_of, chunks_of
from ._items import (
    BOOKMARK_START,
    COMMENT,
    FORM_FIELD,
    LINK,
    NOTE,
    PARAGRAPH,
    PICTURE,
    REVISION,
    SECTION,
    TABLE,
    TEXT_BOX,
    View,
)
from ._parts import Bookmark, Comment, Link, Note, Picture, Revision, Section
from ._reading import Reading
from ._results import Conversion, Counts, Info, Kind, Metadata, Outcome, Warning
from ._tables import Table
from ._text import Paragraph, TextBox

if TYPE_CHECKING:
    from typing_extensions import Literal, Unpack

    from ._options import Format, Options
    from ._source import Source


class Document:
    """A document to read. :func:`pagerex.open` makes it.

    Objects of it are equal if they stand for the same thing. Any thread may use it, one at a time.
    """

    def __init__(self, reading: Reading) -> None:
        self._reading = reading
        self._views: Dict[str, Tuple[View, Outcome]] = {}

    # What it is.

    @property
    def _info(self) -> Info:
        return self._reading.info()

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
        return self._reading.convert(to, options)

    def close(self) -> None:
        """Lets go of what it is read from. What has been read of its text stays; its pictures do not."""
        self._reading.close()

    def __enter__(self) -> Document:
        return self

    def __exit__(
        self, kind: Optional[Type[BaseException]], value: Optional[BaseException], trace: Optional[TracebackType]
    ) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<Document {self._reading.name!r}>" if self._reading.name else "<Document>"

    # How it is read.

    @property
    def _view(self) -> View:
        return self._read()[0]

    def _read(self, revisions: Optional[str] = None) -> Tuple[View, Outcome]:
        """One state of its text."""
        state = revisions or self._reading.revisions
        read = self._views.get(state)
        if read is None:
            with self._reading.lock:
                if state not in self._views:
                    self._views[state] = self._reading.walk(state)
                read = self._views[state]
        return read

    def _in_sections(self, *kinds: int) -> List[Any]:
        view = self._view
        tree = view.tree
        return [
            view.item(number)
            for section in tree.find(0, SECTION)
            for number in tree.children(section)
            if tree.kind(number) in kinds
        ]


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
    return Document(Reading(source, options))
