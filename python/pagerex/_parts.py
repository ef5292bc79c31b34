"""Sections, notes, comments, links, pictures: what stands beside and in the text."""

from __future__ import annotations

import datetime
import zlib
from typing import Dict, List, Optional, Tuple, cast

from . import _native
from ._found import ranges_of, reference_of
from ._items import (
    BOOKMARK_END,
    BOOKMARK_START,
    CHANGES,
    COMMENT,
    HEADER,
    LINK,
    NOTE,
    PARAGRAPH,
    PICTURE,
    REVISION,
    SECTION,
    Blocks,
    Item,
    Length,
    View,
    date_of,
    item_class,
)
from ._results import Asset
from ._text import Paragraph

_STARTS = ("continuous", "new_column", "new_page", "even_page", "odd_page")
_EVEN, _DEFAULT, _FIRST = 0, 1, 2


@item_class(HEADER)
class HeaderFooter(Blocks):
    """A header or a footer."""

    __slots__ = ()

    @property
    def _header(self) -> _native.HeaderFacts:
        facts: _native.HeaderFacts = self._facts
        return facts

    @property
    def is_footer(self) -> bool:
        """Otherwise it is a header."""
        return bool(self._header.is_footer)

    @property
    def page_kind(self) -> str:
        """The pages that it stands on: ``"even"``, ``"default"`` or ``"first"``."""
        return ("even", "default", "first")[self._header.kind % 3]


@item_class(SECTION)
class Section(Blocks):
    """A part of the document with pages of one kind."""

    __slots__ = ()

    @property
    def _section(self) -> _native.SectionFacts:
        facts: _native.SectionFacts = self._facts
        return facts

    @property
    def index(self) -> int:
        """From 0."""
        return self._section.index

    @property
    def start_type(self) -> str:
        """``"continuous"``, ``"new_column"``, ``"new_page"``, ``"even_page"``, ``"odd_page"``."""
        return _STARTS[self._section.start % len(_STARTS)]

    @property
    def orientation(self) -> str:
        """``"portrait"`` or ``"landscape"``."""
        return "landscape" if self._section.is_landscape else "portrait"

    @property
    def page_width(self) -> Length:
        """Of the paper."""
        return Length.of_twips(self._section.page_width)

    @property
    def page_height(self) -> Length:
        """Of the paper."""
        return Length.of_twips(self._section.page_height)

    @property
    def top_margin(self) -> Length:
        """Above the text."""
        return Length.of_twips(abs(self._section.margin_top))

    @property
    def bottom_margin(self) -> Length:
        """Below it."""
        return Length.of_twips(abs(self._section.margin_bottom))

    @property
    def left_margin(self) -> Length:
        """On its left."""
        return Length.of_twips(self._section.margin_left)

    @property
    def right_margin(self) -> Length:
        """On its right."""
        return Length.of_twips(self._section.margin_right)

    @property
    def gutter(self) -> Length:
        """For the binding."""
        return Length.of_twips(self._section.gutter)

    @property
    def header_distance(self) -> Length:
        """From the paper's edge to the header."""
        return Length.of_twips(self._section.header_distance)

    @property
    def footer_distance(self) -> Length:
        """From the paper's edge to the footer."""
        return Length.of_twips(self._section.footer_distance)

    @property
    def column_count(self) -> int:
        """Columns of its pages."""
        return self._section.column_count

    @property
    def different_first_page_header_footer(self) -> bool:
        """Whether its first page has a header and footer of its own."""
        return self._section.has_title_page

    @property
    def header(self) -> Optional[HeaderFooter]:
        """The one that shows on its pages, which may be an earlier section's; None without one."""
        return self._shown(_DEFAULT, False)

    @property
    def footer(self) -> Optional[HeaderFooter]:
        """The same of footers."""
        return self._shown(_DEFAULT, True)

    @property
    def first_page_header(self) -> Optional[HeaderFooter]:
        """On its first page, if that has one of its own."""
        return self._shown(_FIRST, False)

    @property
    def first_page_footer(self) -> Optional[HeaderFooter]:
        """On its first page, if that has one of its own."""
        return self._shown(_FIRST, True)

    @property
    def even_page_header(self) -> Optional[HeaderFooter]:
        """On even pages, if they have one of their own."""
        return self._shown(_EVEN, False)

    @property
    def even_page_footer(self) -> Optional[HeaderFooter]:
        """On even pages, if they have one of their own."""
        return self._shown(_EVEN, True)

    @property
    def headers_and_footers(self) -> List[HeaderFooter]:
        """Those that it has itself."""
        return self._children(HEADER)

    def _shown(self, kind: int, is_footer: bool) -> Optional[HeaderFooter]:
        owner = self._section.header_sections[kind + (3 if is_footer else 0)]
        sections = self._view.tree.find(0, SECTION) if owner >= 0 else []
        if owner < 0 or owner >= len(sections):
            return None
        for header in Section(self._view, sections[owner]).headers_and_footers:
            if header._header.kind == kind and header.is_footer == is_footer:
                return header
        return None


@item_class(NOTE)
class Note(Blocks):
    """A footnote or an endnote."""

    __slots__ = ()

    @property
    def _note(self) -> _native.NoteFacts:
        facts: _native.NoteFacts = self._facts
        return facts

    @property
    def kind(self) -> str:
        """``"footnote"`` or ``"endnote"``."""
        return "endnote" if self._note.kind else "footnote"

    @property
    def label(self) -> str:
        """Its number in Word, or its mark."""
        return self._note.label

    @property
    def text(self) -> str:
        """Without its label."""
        return super().text.lstrip(" \t")

    @property
    def reference(self) -> Optional[int]:
        """Where it is referred to in ``document.text``; None outside of that."""
        number = reference_of(self._view, self._note)
        if number is None or self._view.tree.is_aside(number):
            return None
        return self._view.tree.span(number)[0]

    @property
    def paragraph(self) -> Optional[Paragraph]:
        """The one that refers to it."""
        number = reference_of(self._view, self._note)
        return None if number is None else _paragraph_of(self._view, number)


@item_class(COMMENT)
class Comment(Blocks):
    """A comment."""

    __slots__ = ()

    @property
    def _comment(self) -> _native.CommentFacts:
        facts: _native.CommentFacts = self._facts
        return facts

    @property
    def author(self) -> str:
        """Who wrote it."""
        return self._comment.author

    @property
    def initials(self) -> str:
        """Of the author."""
        return self._comment.initials

    @property
    def date(self) -> Optional[datetime.datetime]:
        """Local to the author, without a zone."""
        return date_of(self._comment.date)

    @property
    def text(self) -> str:
        """What it says."""
        return super().text.lstrip(" \t")

    @property
    def span(self) -> Optional[Tuple[int, int]]:
        """What it is about, in ``document.text``; None outside of that."""
        return ranges_of(self._view).get(self._comment.index)

    @property
    def quoted(self) -> str:
        """The text that it is about."""
        span = self.span
        return self._view.text[span[0] : span[1]] if span else ""


@item_class(LINK)
class Link(Item):
    """A link. It ends with its paragraph."""

    __slots__ = ()

    @property
    def _link(self) -> _native.LinkFacts:
        facts: _native.LinkFacts = self._facts
        return facts

    @property
    def address(self) -> str:
        """As the document has it: to be judged before anyone follows it. Empty for a place in the document."""
        return self._link.address

    @property
    def bookmark(self) -> str:
        """A place in the document, or below the address."""
        return self._link.bookmark

    @property
    def title(self) -> str:
        """What is shown when a pointer rests on it."""
        return self._link.title

    @property
    def target(self) -> str:
        """The frame."""
        return self._link.target

    @property
    def paragraph(self) -> Optional[Paragraph]:
        """That it stands in."""
        return _paragraph_of(self._view, self._number)


@item_class(BOOKMARK_START)
class Bookmark(Item):
    """A named place."""

    __slots__ = ()

    @property
    def name(self) -> str:
        """Its name."""
        return cast(str, self._facts)

    @property
    def span(self) -> Optional[Tuple[int, int]]:
        """In ``document.text``; None outside of that."""
        tree = self._view.tree
        if tree.is_aside(self._number):
            return None
        ends = cast("Optional[Dict[str, int]]", self._view.found.get("bookmarks"))
        if ends is None:
            ends = {tree.facts(n): tree.span(n)[0] for n in tree.find(0, BOOKMARK_END) if not tree.is_aside(n)}
            self._view.found["bookmarks"] = ends
        start = tree.span(self._number)[0]
        return start, max(start, ends.get(self.name, start))

    @property
    def text(self) -> str:
        """What it marks."""
        span = self.span
        return self._view.text[span[0] : span[1]] if span else ""

    @property
    def paragraph(self) -> Optional[Paragraph]:
        """That it begins in."""
        return _paragraph_of(self._view, self._number)


@item_class(REVISION)
class Revision(Item):
    """A tracked change of text. It ends with its paragraph."""

    __slots__ = ()

    @property
    def _revision(self) -> _native.RevisionFacts:
        facts: _native.RevisionFacts = self._facts
        return facts

    @property
    def kind(self) -> str:
        """``"inserted"``, ``"deleted"``, ``"moved_here"`` or ``"moved_away"``."""
        return CHANGES[self._revision.kind % len(CHANGES)]

    @property
    def author(self) -> str:
        """Who made it."""
        return self._revision.author

    @property
    def date(self) -> Optional[datetime.datetime]:
        """Local to the author, without a zone."""
        return date_of(self._revision.date)

    @property
    def paragraph(self) -> Optional[Paragraph]:
        """That it stands in."""
        return _paragraph_of(self._view, self._number)


def _paragraph_of(view: View, number: int) -> Optional[Paragraph]:
    found = Item(view, number)._above(PARAGRAPH)
    return None if found is None else Paragraph(view, found)


# By PAGEREX_PICTURE_...: extension and media type of what is a file by itself.
_PICTURE_KINDS = {
    2: (".emf", "image/emf"),
    3: (".wmf", "image/wmf"),
    4: (".pict", "image/x-pict"),
    5: (".jpg", "image/jpeg"),
    6: (".png", "image/png"),
    7: (".bmp", "image/bmp"),
    8: (".tiff", "image/tiff"),
}
_DIB = 7
#: A metafile that is larger than this when it is unpacked is left as it is.
_MOST_UNPACKED = 1 << 28


@item_class(PICTURE)
class Picture(Item):
    """A picture, in the line or floating.

    >>> import pagerex
    >>> with pagerex.open("sample.doc") as document:
    ...     picture = document.pictures[0]
    ...     picture.media_type, picture.for_web().media_type
    ('image/png', 'image/png')
    """

    __slots__ = ()

    @property
    def _picture(self) -> _native.PictureFacts:
        facts: _native.PictureFacts = self._facts
        return facts

    @property
    def description(self) -> str:
        """For those who do not see it."""
        return self._picture.description

    @property
    def name(self) -> str:
        """As the document calls it."""
        return self._picture.name

    @property
    def is_drawing(self) -> bool:
        """Whether it is a shape that is drawn: it has a place and a size, but no bytes."""
        return not self._picture.has_source and not self._picture.linked_address

    @property
    def linked_address(self) -> str:
        """Of one that is not in the document."""
        return self._picture.linked_address

    @property
    def identity(self) -> Optional[int]:
        """The same for each showing of one stored picture; None if not known."""
        return self._picture.identity or None

    @property
    def width(self) -> Length:
        """As shown."""
        return Length.of_twips(self._picture.width)

    @property
    def height(self) -> Length:
        """As shown."""
        return Length.of_twips(self._picture.height)

    @property
    def is_inline(self) -> bool:
        """Whether it stands in the line. Otherwise it floats."""
        return self._picture.is_inline

    @property
    def paragraph(self) -> Optional[Paragraph]:
        """That it stands in, or is anchored in."""
        return _paragraph_of(self._view, self._number)

    def _stored(self) -> Tuple[int, int, bytes]:
        if not self._picture.has_source:
            return 0, 0, b""
        return self._view.reading.picture(self._view, self._picture.order)

    @property
    def data(self) -> bytes:
        """The bytes of a file of its ``media_type``; empty for what is only linked, drawn, not there or
        damaged."""
        kind, is_packed, data = self._stored()
        if is_packed:
            data = _unpacked(data)
        return _with_file_header(data) if kind == _DIB else data

    @property
    def media_type(self) -> str:
        """``"image/png"``; empty where there is no ``data``."""
        return _PICTURE_KINDS.get(self._stored()[0], ("", ""))[1]

    @property
    def extension(self) -> str:
        """``".png"``; empty where there is no ``data``."""
        return _PICTURE_KINDS.get(self._stored()[0], ("", ""))[0]

    def for_web(self) -> Optional[Asset]:
        """As browsers read it: SVG of metafiles, PNG of bitmaps, others as they are. None where nothing can be made
        of it."""
        data = self.data
        if not data:
            return None
        settings = self._view.reading.picture_settings()
        _, files = _native.convert_picture(data, self.width.pt, self.height.pt, settings)
        for _, media_type, content, is_complete in files:
            if is_complete and isinstance(content, bytes) and content:
                return Asset(media_type, content)
        return None


def _unpacked(data: bytes) -> bytes:
    unpacker = zlib.decompressobj()
    try:
        plain = unpacker.decompress(data, _MOST_UNPACKED)
    except zlib.error:
        return b""
    return plain


def _with_file_header(dib: bytes) -> bytes:
    """A bitmap as a file: 14 bytes in front, which tell where its points begin."""
    header = int.from_bytes(dib[:4], "little")
    if header == 12:
        bits, colours, entry, masks = int.from_bytes(dib[10:12], "little"), 0, 3, 0
    else:
        bits, colours, entry = int.from_bytes(dib[14:16], "little"), int.from_bytes(dib[32:36], "little"), 4
        masks = 12 if header == 40 and int.from_bytes(dib[16:20], "little") == 3 else 0
    if not colours and bits <= 8:
        colours = 1 << bits
    offset = min(14 + header + masks + colours * entry, 14 + len(dib))
    return b"BM" + (14 + len(dib)).to_bytes(4, "little") + bytes(4) + offset.to_bytes(4, "little") + dib
