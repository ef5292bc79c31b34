"""Tables."""

from __future__ import annotations

from typing import Dict, Iterator, List, Optional, Tuple, cast

from . import _native
from ._items import CELL, CHANGES, ROW, TABLE, Blocks, Item, Length, colour_text, item_class
from ._text import ALIGNMENTS, Style

# Sound tables have 63 columns. Filling the grid of a damaged one with far more would take more time than it is worth.
_MOST_COLUMNS = 1000


@item_class(TABLE)
class Table(Item):
    """A table.

    >>> import pagerex
    >>> table = pagerex.open("sample.doc").tables[0]
    >>> [cell.text for cell in table.rows[0].cells]
    ['Kind', 'Example', 'Remark']
    """

    __slots__ = ()

    @property
    def _table(self) -> _native.TableFacts:
        facts: _native.TableFacts = self._facts
        return facts

    @property
    def rows(self) -> List[Row]:
        """From top to bottom."""
        return self._children(ROW)

    @property
    def columns(self) -> List[Column]:
        """From the start on."""
        count = 0 if self._table.column_count > _MOST_COLUMNS else self._table.column_count
        return [Column(self, index) for index in range(count)]

    @property
    def cells(self) -> List[Cell]:
        """Each cell once, row by row; not those within tables in cells."""
        return [cell for row in self.rows for cell in row.own_cells if not cell.is_merged_up]

    def cell(self, row: int, column: int) -> Cell:
        """The cell that covers this place."""
        return self.rows[row].cells[column]

    @property
    def text(self) -> str:
        """A line for each row, its cells parted by tabs."""
        return super().text.rstrip("\n")

    @property
    def style(self) -> Style:
        """The table style; its name may be empty."""
        return Style(self._table.style)

    @property
    def depth(self) -> int:
        """1 for a table of the text, 2 for one in its cell, and so on."""
        return self._table.depth

    @property
    def header_row_count(self) -> int:
        """Rows at its top that are repeated on each page."""
        return self._table.header_row_count

    @property
    def alignment(self) -> str:
        """Of the table on the page."""
        return ALIGNMENTS[self._table.alignment % len(ALIGNMENTS)]

    @property
    def column_widths(self) -> List[Length]:
        """Of the grid."""
        return [Length.of_twips(width) for width in self._table.column_widths]

    @property
    def is_regular(self) -> bool:
        """Whether its cells stand below each other, in rows that begin and end where the others do."""
        return self._table.is_regular

    def _grid(self) -> Dict[int, List[Tuple[int, int]]]:
        """By row: which cell, by its number, is at which column."""
        key = f"grid {self._number}"
        grid = cast("Optional[Dict[int, List[Tuple[int, int]]]]", self._view.found.get(key))
        if grid is None:
            grid = self._view.found[key] = self._make_grid()
        return grid

    def _make_grid(self) -> Dict[int, List[Tuple[int, int]]]:
        above: Dict[int, int] = {}
        grid = {}
        for row in self.rows:
            column, places, here = row._row.columns_before, [], {}
            for cell in row.own_cells:
                number = cell._number
                if cell.is_merged_up:
                    number = above.get(column, number)
                places.append((column, number))
                here[column] = number
                column += max(1, cell.column_span)
            grid[row._number] = places
            above = here
        return grid

    def __iter__(self) -> Iterator[Row]:
        return iter(self.rows)


@item_class(ROW)
class Row(Item):
    """A row of a table."""

    __slots__ = ()

    @property
    def _row(self) -> _native.RowFacts:
        facts: _native.RowFacts = self._facts
        return facts

    @property
    def table(self) -> Table:
        """That it belongs to."""
        return Table(self._view, self._view.tree.parent(self._number))

    @property
    def own_cells(self) -> List[Cell]:
        """Those that the document has in this row, each once: also those that are merged with the one above."""
        return self._children(CELL)

    @property
    def cells(self) -> List[Cell]:
        """One for each column of the table: a cell that reaches over several stands at each of them, and one that
        reaches over several rows in each. A row that begins late, or ends early, has fewer."""
        table = self.table
        wide = table._table.column_count > _MOST_COLUMNS
        cells: List[Cell] = []
        for _, number in table._grid()[self._number]:
            cell = Cell(self._view, number)
            cells.extend([cell] * (1 if wide else max(1, cell.column_span)))
        return cells

    @property
    def is_header(self) -> bool:
        """Whether it is repeated on each page."""
        return self._row.is_header

    @property
    def height(self) -> Length:
        """0 for that of its text."""
        return Length.of_twips(abs(self._row.height))

    @property
    def change(self) -> str:
        """What a tracked change did to it."""
        return CHANGES[self._row.change % len(CHANGES)]


@item_class(CELL)
class Cell(Blocks):
    """A cell. It has paragraphs, and may have tables."""

    __slots__ = ()

    @property
    def _cell(self) -> _native.CellFacts:
        facts: _native.CellFacts = self._facts
        return facts

    @property
    def row(self) -> Row:
        """The row that it begins in."""
        return Row(self._view, self._view.tree.parent(self._number))

    @property
    def column_index(self) -> int:
        """The column of the table that it begins at."""
        row = self.row
        for column, number in row.table._grid()[row._number]:
            if number == self._number:
                return column
        return 0

    @property
    def column_span(self) -> int:
        """Columns that it reaches over."""
        return self._cell.column_span

    @property
    def row_span(self) -> int:
        """Rows that it reaches over; 0 of one that belongs to the cell above."""
        return self._cell.row_span

    @property
    def is_merged_up(self) -> bool:
        """Whether it belongs to the cell above, which is the one that shows."""
        return self._cell.row_span == 0

    @property
    def width(self) -> Length:
        """Of the cell."""
        return Length.of_twips(self._cell.width)

    @property
    def vertical_alignment(self) -> str:
        """``"top"``, ``"center"``, ``"bottom"``."""
        return ("top", "center", "bottom")[self._cell.vertical_alignment % 3]

    @property
    def background(self) -> Optional[str]:
        """The colour under it, or None."""
        return colour_text(self._cell.background)


class Column:
    """A column of a table's grid."""

    __slots__ = ("_table", "index")

    def __init__(self, table: Table, index: int) -> None:
        self._table = table
        self.index = index

    @property
    def width(self) -> Length:
        """Of the column."""
        return self._table.column_widths[self.index]

    @property
    def cells(self) -> List[Cell]:
        """From top to bottom; rows that do not reach it are left out."""
        return [row.cells[self.index] for row in self._table.rows if self.index < len(row.cells)]
