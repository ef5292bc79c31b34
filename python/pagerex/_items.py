"""What a document consists of, as objects made when they are asked for.

A walk over a document leaves a tree of items in native memory (``_native.Tree``), which are numbers here. An object of
this package is such a number and its view.
"""

from __future__ import annotations

import datetime
from typing import TYPE_CHECKING, Any, Callable, Dict, List, Optional, Tuple, Type, TypeVar, cast

from . import _native

if TYPE_CHECKING:
    from ._reading import Reading

# The numbers of ItemKind in native/tree.h.
(
    DOCUMENT,
    SECTION,
    HEADER,
    PARAGRAPH,
    TABLE,
    ROW,
    CELL,
    TEXT_BOX,
    NOTE,
    COMMENT,
    RUN,
    LINK,
    REVISION,
    BOOKMARK_START,
    BOOKMARK_END,
    PAGE_BREAK,
    COLUMN_BREAK,
    RULE,
    NOTE_REFERENCE,
    NOTE_MARK,
    COMMENT_START,
    COMMENT_END,
    COMMENT_REFERENCE,
    FORM_FIELD,
    PICTURE,
) = range(25)

CHANGES = ("none", "inserted", "deleted", "moved_here", "moved_away")

T = TypeVar("T", bound="Item")
_CLASSES: Dict[int, Type[Item]] = {}


def item_class(kind: int) -> Callable[[Type[T]], Type[T]]:
    """Names the class of a kind of items."""

    def register(cls: Type[T]) -> Type[T]:
        _CLASSES[kind] = cls
        return cls

    return register


class View:
    """One state of a document's text: a tree, and what has been found in it."""

    __slots__ = ("tree", "reading", "revisions", "text", "found")

    def __init__(self, tree: _native.Tree, reading: Reading, revisions: str) -> None:
        self.tree = tree
        self.reading = reading
        self.revisions = revisions
        self.text = tree.body()
        #: What some properties look up, made once.
        self.found: Dict[str, Any] = {}

    def item(self, number: int) -> Any:
        """Its object."""
        return _CLASSES[self.tree.kind(number)](self, number)

    def all(self, kind: int, within: int = 0) -> List[Any]:
        """The objects of a kind, however deep."""
        cls = _CLASSES[kind]
        return [cls(self, number) for number in self.tree.find(within, kind)]


class Item:
    """The base of all of them."""

    __slots__ = ("_view", "_number", "_told")
    _told: Any

    def __init__(self, view: View, number: int) -> None:
        self._view = view
        self._number = number

    @property
    def _facts(self) -> Any:
        try:
            return self._told
        except AttributeError:
            self._told = self._view.tree.facts(self._number)
            return self._told

    def __eq__(self, other: object) -> bool:
        return type(other) is type(self) and self._number == other._number and self._view is other._view

    def __hash__(self) -> int:
        return hash((self._number, id(self._view)))

    @property
    def text(self) -> str:
        """What stands in it."""
        return self._view.tree.text(self._number)

    @property
    def span(self) -> Optional[Tuple[int, int]]:
        """Where it begins and ends in ``document.text``; None in headers, notes and comments, which are not in it."""
        return None if self._view.tree.is_aside(self._number) else self._view.tree.span(self._number)

    def _above(self, kind: int) -> Optional[int]:
        """What it stands in."""
        tree, number = self._view.tree, self._number
        while number:
            number = tree.parent(number)
            if tree.kind(number) == kind:
                return number
        return None

    def _below(self, kind: int) -> List[Any]:
        """All of a kind within, however deep."""
        return self._view.all(kind, self._number)

    def _children(self, *kinds: int) -> List[Any]:
        tree = self._view.tree
        return [self._view.item(n) for n in tree.children(self._number) if tree.kind(n) in kinds]

    def __repr__(self) -> str:
        text = self.text
        return f"<{type(self).__name__} {text[:40] + '...' if len(text) > 40 else text!r}>"


class Length(int):
    """A length, in units of which there are 12700 to a point, as in other packages of this kind.

    >>> Length.of_twips(1440).inches, Length.of_twips(240).pt
    (1.0, 12.0)
    """

    @classmethod
    def of_twips(cls, twips: int) -> Length:
        """From twentieths of a point."""
        return cls(twips * 635)

    @property
    def pt(self) -> float:
        """In points."""
        return self / 12700

    @property
    def twips(self) -> int:
        """In twentieths of a point."""
        return round(self / 635)

    @property
    def inches(self) -> float:
        """In inches."""
        return self / 914400

    @property
    def cm(self) -> float:
        """In centimetres."""
        return self / 360000

    @property
    def mm(self) -> float:
        """In millimetres."""
        return self / 36000

    @property
    def emu(self) -> int:
        """As the number that it is."""
        return int(self)

    def __repr__(self) -> str:
        return f"<Length {self.pt:g} pt>"


def colour_text(rgb: Optional[int]) -> Optional[str]:
    """``"#ff0000"``."""
    return None if rgb is None else f"#{rgb:06x}"


def date_of(date: Optional[_native.Date]) -> Optional[datetime.datetime]:
    """Local to whoever wrote it, without a zone."""
    if date is None:
        return None
    try:
        return datetime.datetime(*date)
    except ValueError:
        return None


class Blocks(Item):
    """What paragraphs and tables stand in."""

    __slots__ = ()

    @property
    def paragraphs(self) -> List[Any]:
        """Those that stand directly in it, not those in tables."""
        return self._children(PARAGRAPH)

    @property
    def tables(self) -> List[Any]:
        """Those that stand directly in it."""
        return self._children(TABLE)

    def iter_inner_content(self) -> Any:
        """Paragraphs and tables, in their order."""
        return iter(self._children(PARAGRAPH, TABLE))

    @property
    def text(self) -> str:
        """That of its paragraphs and tables, a line for each."""
        return "\n".join(cast(str, block.text) for block in self._children(PARAGRAPH, TABLE, TEXT_BOX))
