"""A document as a stream of blocks, and cut into pieces."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Generator, Iterator, List, Tuple, cast

from ._items import CELL, PARAGRAPH, PICTURE, SECTION, TABLE, TEXT_BOX, Item, View
from ._parts import Picture
from ._tables import Table
from ._text import Paragraph


@dataclass(frozen=True)
class Block:
    """A part of a document that stands for itself."""

    #: ``"heading"``, ``"paragraph"``, ``"list_item"``, ``"table"`` or ``"picture"``.
    kind: str
    #: ``document.text[start:end]``, with the label of what has one; of a picture its description.
    text: str
    #: Where it begins and ends in ``document.text``.
    start: int
    end: int
    #: The headings that it stands under, from the highest on.
    heading_path: Tuple[str, ...]
    #: Of a heading 1 to 9, of a list item 0 to 8, otherwise 0.
    level: int
    #: The :class:`Paragraph`, :class:`Table` or :class:`Picture` itself.
    item: Item

    @property
    def markdown(self) -> str:
        """As Markdown that is easy on readers and language models: not all of its looks."""
        if self.kind == "heading":
            return "#" * min(self.level, 6) + " " + " ".join(self.text.split())
        if self.kind == "list_item":
            label = "" if cast(Paragraph, self.item).is_bullet else cast(Paragraph, self.item).list_label
            return "  " * self.level + " ".join(part for part in ("-", label, self._own_text()) if part)
        if self.kind == "table":
            return _table_markdown(cast(Table, self.item))
        if self.kind == "picture":
            return f"![{self.text}]()"
        return self._own_text()

    def _own_text(self) -> str:
        return " ".join(self.item.text.split())


def _table_markdown(table: Table) -> str:
    rows = [[_cell_markdown(cell.text) for cell in row.cells] for row in table.rows]
    width = max((len(row) for row in rows), default=0)
    lines = ["| " + " | ".join(row + [""] * (width - len(row))) + " |" for row in rows]
    lines.insert(1, "|" + " --- |" * width)
    return "\n".join(lines)


def _cell_markdown(text: str) -> str:
    return " ".join(text.replace("|", "\\|").split())


class _BlockReader:
    """Goes through the body once."""

    def __init__(self, view: View) -> None:
        self._view = view
        self._headings: List[Tuple[int, str]] = []

    def read(self) -> Iterator[Block]:
        for section in self._view.tree.find(0, SECTION):
            yield from self._within(section)

    def _within(self, number: int) -> Iterator[Block]:
        tree = self._view.tree
        for child in tree.children(number):
            kind = tree.kind(child)
            if kind == PARAGRAPH:
                yield from self._paragraph(child)
            elif kind == TABLE:
                yield self._block("table", child, 0)
                yield from self._pictures(child)
            elif kind in (TEXT_BOX, CELL):
                yield from self._within(child)

    def _paragraph(self, number: int) -> Iterator[Block]:
        paragraph = Paragraph(self._view, number)
        level = paragraph.heading_level
        first, end = self._view.tree.span(number)
        if not self._view.text[first:end].isspace() and first < end:
            if level is not None:
                yield self._heading(number, level)
            elif paragraph.is_list_item:
                yield self._block("list_item", number, paragraph.list_level)
            else:
                yield self._block("paragraph", number, 0)
        yield from self._pictures(number)

    def _heading(self, number: int, level: int) -> Block:
        while self._headings and self._headings[-1][0] >= level:
            self._headings.pop()
        block = self._block("heading", number, level)
        self._headings.append((level, " ".join(block.text.split())))
        return block

    def _block(self, kind: str, number: int, level: int) -> Block:
        item = cast(Item, self._view.item(number))
        start, end = self._view.tree.span(number)
        if kind != "table":
            start -= item._facts.label_characters
        return Block(kind, self._view.text[start:end], start, end, self._path(), level, item)

    def _pictures(self, number: int) -> Iterator[Block]:
        for picture in self._view.tree.find(number, PICTURE):
            place = self._view.tree.span(picture)[0]
            item = Picture(self._view, picture)
            if not item.is_drawing or item.description:
                yield Block("picture", item.description, place, place, self._path(), 0, item)

    def _path(self) -> Tuple[str, ...]:
        return tuple(text for _, text in self._headings)


def blocks_of(view: View) -> Iterator[Block]:
    """In the order of the document; paragraphs without text are left out."""
    return _BlockReader(view).read()


@dataclass(frozen=True)
class Chunk:
    """A piece of a document for a reader of limited size."""

    #: ``document.text[start:end]``.
    text: str
    start: int
    end: int
    #: The headings that its beginning stands under.
    heading_path: Tuple[str, ...]


@dataclass(frozen=True)
class _Unit:
    """What is not cut any more."""

    start: int
    end: int
    is_heading: bool
    heading_path: Tuple[str, ...]


def chunks_of(view: View, most: int) -> Iterator[Chunk]:
    """Of at most `most` characters."""
    held: List[_Unit] = []
    for unit in _units(view, most):
        is_full = held and unit.end - held[0].start > most
        begins_part = held and unit.is_heading and held[-1].end - held[0].start >= most // 2
        if is_full or begins_part:
            held = yield from _flush(view, held, unit, most)
        held.append(unit)
    if held:
        yield _chunk(view, held)


def _flush(view: View, held: List[_Unit], coming: _Unit, most: int) -> Generator[Chunk, None, List[_Unit]]:
    """A chunk of what is held. Headings at its end go with what they stand above: they are given back."""
    count = len(held)
    while count > 1 and held[count - 1].is_heading and coming.end - held[count - 1].start <= most:
        count -= 1
    if held[count - 1].is_heading and coming.end - held[count - 1].start <= most:
        return held
    yield _chunk(view, held[:count])
    return held[count:]


def _chunk(view: View, units: List[_Unit]) -> Chunk:
    start, end = units[0].start, units[-1].end
    return Chunk(view.text[start:end], start, end, units[0].heading_path)


def _units(view: View, most: int) -> Iterator[_Unit]:
    for block in blocks_of(view):
        if block.kind == "picture":
            continue
        start = block.start
        while block.end - start > most:
            cut = _cut(view.text, start, start + most)
            yield _Unit(start, cut, False, block.heading_path)
            start = cut
            while start < block.end and view.text[start].isspace():
                start += 1
        if start < block.end:
            yield _Unit(start, block.end, block.kind == "heading", block.heading_path)


def _cut(text: str, start: int, end: int) -> int:
    """Where what is too long may end best: behind a line, a sentence, a word."""
    for mark, length in (("\n", 0), (". ", 1), ("? ", 1), ("! ", 1), ("。", 1), (" ", 0)):
        place = text.rfind(mark, start + (end - start) // 2, end)
        if place > start:
            return place + length
    return end
