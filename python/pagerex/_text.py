"""Paragraphs and what stands in them."""

from __future__ import annotations

from typing import List, NamedTuple, Optional, cast

from . import _native
from ._found import note_of
from ._items import (
    CHANGES,
    LINK,
    NOTE_REFERENCE,
    PAGE_BREAK,
    PARAGRAPH,
    PICTURE,
    REVISION,
    RUN,
    SECTION,
    TABLE,
    TEXT_BOX,
    Blocks,
    Item,
    Length,
    colour_text,
    item_class,
)

ALIGNMENTS = ("start", "center", "end", "justify", "distribute")
_UNDERLINES = {
    0: "none",
    1: "single",
    2: "words",
    3: "double",
    4: "dotted",
    6: "thick",
    7: "dash",
    9: "dot_dash",
    10: "dot_dot_dash",
    11: "wave",
}
_HIGHLIGHTS = (
    *(None, "black", "blue", "cyan", "green", "magenta", "red", "yellow", "white"),
    *("dark_blue", "dark_cyan", "dark_green", "dark_magenta", "dark_red", "dark_yellow", "dark_gray", "light_gray"),
)


class Style(NamedTuple):
    """A style, by its name: of built-in ones the English name."""

    name: str


class Font:
    """How a run looks: styles and what stands at the text itself are put together."""

    __slots__ = ("_facts",)

    def __init__(self, facts: _native.RunFacts) -> None:
        self._facts = facts

    @property
    def name(self) -> str:
        """Of Latin text."""
        return self._facts.font

    @property
    def east_asian_name(self) -> str:
        """Of Chinese, Japanese and Korean text."""
        return self._facts.east_asian_font

    @property
    def complex_script_name(self) -> str:
        """Of Arabic, Hebrew and the like."""
        return self._facts.complex_font

    @property
    def size(self) -> Length:
        """``font.size.pt`` is in points."""
        return Length.of_twips(self._facts.size_half_points * 10)

    @property
    def bold(self) -> bool:
        """Whether it is bold."""
        return self._facts.bold

    @property
    def italic(self) -> bool:
        """Whether it is italic."""
        return self._facts.italic

    @property
    def underline(self) -> bool:
        """Whether it is underlined, in whatever way."""
        return self._facts.underline != 0

    @property
    def underline_style(self) -> str:
        """``"none"``, ``"single"``, ``"double"``, ..."""
        return _UNDERLINES.get(self._facts.underline, "other")

    @property
    def strike(self) -> bool:
        """Whether it is struck through."""
        return self._facts.strike

    @property
    def double_strike(self) -> bool:
        """Whether it is struck through twice."""
        return self._facts.double_strike

    @property
    def all_caps(self) -> bool:
        """Whether small letters are shown as capitals; the text has them as they are."""
        return self._facts.caps

    @property
    def small_caps(self) -> bool:
        """The same with capitals of their size."""
        return self._facts.small_caps

    @property
    def superscript(self) -> bool:
        """Whether it is raised."""
        return self._facts.vertical_alignment == 1

    @property
    def subscript(self) -> bool:
        """Whether it is lowered."""
        return self._facts.vertical_alignment == 2

    @property
    def hidden(self) -> bool:
        """Whether Word hides it."""
        return self._facts.hidden

    @property
    def outline(self) -> bool:
        """Whether only the outlines of letters are drawn."""
        return self._facts.outline

    @property
    def shadow(self) -> bool:
        """Whether it has a shadow."""
        return self._facts.shadow

    @property
    def emboss(self) -> bool:
        """Whether it stands out."""
        return self._facts.emboss

    @property
    def imprint(self) -> bool:
        """Whether it is pressed in."""
        return self._facts.imprint

    @property
    def color(self) -> Optional[str]:
        """``"#ff0000"``; None for what can be read on what lies under it."""
        return colour_text(self._facts.colour)

    @property
    def background(self) -> Optional[str]:
        """The colour under it, or None."""
        return colour_text(self._facts.background)

    @property
    def highlight_color(self) -> Optional[str]:
        """``"yellow"``, or None."""
        return _HIGHLIGHTS[self._facts.highlight] if self._facts.highlight < len(_HIGHLIGHTS) else None

    @property
    def spacing(self) -> Length:
        """Between letters, more than usual."""
        return Length.of_twips(self._facts.spacing)

    @property
    def language_id(self) -> int:
        """The number that Windows has for its language; 0x400 for none."""
        return self._facts.language

    @property
    def rtl(self) -> bool:
        """Whether it runs from right to left."""
        return self._facts.is_right_to_left


@item_class(RUN)
class Run(Item):
    """Text of one look. Tabs are ``"\\t"``, line breaks ``"\\n"``."""

    __slots__ = ()

    @property
    def _run(self) -> _native.RunFacts:
        facts: _native.RunFacts = self._facts
        return facts

    @property
    def font(self) -> Font:
        """How it looks."""
        return Font(self._facts)

    @property
    def bold(self) -> bool:
        """Whether it is bold."""
        return self._run.bold

    @property
    def italic(self) -> bool:
        """Whether it is italic."""
        return self._run.italic

    @property
    def underline(self) -> bool:
        """Whether it is underlined."""
        return self._run.underline != 0

    @property
    def font_name(self) -> str:
        """Of Latin text."""
        return self._run.font

    @property
    def size(self) -> float:
        """In points."""
        return self._run.size_half_points / 2

    @property
    def color(self) -> Optional[str]:
        """``"#ff0000"``; None for the reader's own."""
        return colour_text(self._run.colour)

    @property
    def style(self) -> Style:
        """The character style."""
        return Style(self._run.character_style)

    @property
    def change(self) -> str:
        """What a tracked change did to it: ``"none"``, ``"inserted"``, ``"deleted"``, ``"moved_here"``,
        ``"moved_away"``."""
        return CHANGES[self._run.change % len(CHANGES)]

    @property
    def link(self) -> Optional[Item]:
        """The :class:`Link` that it stands in."""
        number = self._above(LINK)
        return None if number is None else cast(Item, self._view.item(number))

    @property
    def revision(self) -> Optional[Item]:
        """The :class:`Revision` that it stands in, of a document opened with ``revisions="all"``."""
        number = self._above(REVISION)
        return None if number is None else cast(Item, self._view.item(number))


class ParagraphFormat:
    """How a paragraph stands."""

    __slots__ = ("_facts",)

    def __init__(self, facts: _native.ParagraphFacts) -> None:
        self._facts = facts

    @property
    def alignment(self) -> str:
        """``"start"``, ``"center"``, ``"end"``, ``"justify"``, ``"distribute"``; the start is where lines begin."""
        return ALIGNMENTS[self._facts.alignment % len(ALIGNMENTS)]

    @property
    def left_indent(self) -> Length:
        """At the side where lines begin."""
        return Length.of_twips(self._facts.indent_start)

    @property
    def right_indent(self) -> Length:
        """At the side where they end."""
        return Length.of_twips(self._facts.indent_end)

    @property
    def first_line_indent(self) -> Length:
        """Of the first line, more than of the others."""
        return Length.of_twips(self._facts.indent_first_line)

    @property
    def space_before(self) -> Length:
        """Above it."""
        return Length.of_twips(self._facts.space_before)

    @property
    def space_after(self) -> Length:
        """Below it."""
        return Length.of_twips(self._facts.space_after)

    @property
    def line_spacing(self) -> float | Length:
        """As a multiple of single lines, or as a length where lines have at least, or exactly, that height."""
        if self._facts.line_spacing == 0:
            return self._facts.line_height / 240
        return Length.of_twips(self._facts.line_height)

    @property
    def keep_together(self) -> bool:
        """Whether all its lines stay on one page."""
        return self._facts.keep_lines

    @property
    def keep_with_next(self) -> bool:
        """Whether it stays on the page of the next one."""
        return self._facts.keep_with_next

    @property
    def page_break_before(self) -> bool:
        """Whether it begins a page."""
        return self._facts.page_break_before

    @property
    def widow_control(self) -> bool:
        """Whether none of its lines stands alone on a page."""
        return self._facts.widow_control

    @property
    def rtl(self) -> bool:
        """Whether it runs from right to left."""
        return self._facts.is_right_to_left

    @property
    def background(self) -> Optional[str]:
        """The colour under it, or None."""
        return colour_text(self._facts.background)


@item_class(PARAGRAPH)
class Paragraph(Item):
    """A paragraph. Its text does not have its label.

    >>> import pagerex
    >>> document = pagerex.open("sample.doc")
    >>> first = document.paragraphs[0]
    >>> first.text, first.style.name
    ('A Sampler', 'Title')
    """

    __slots__ = ()

    @property
    def _paragraph(self) -> _native.ParagraphFacts:
        facts: _native.ParagraphFacts = self._facts
        return facts

    @property
    def runs(self) -> List[Run]:
        """Its text, in pieces of one look."""
        return self._below(RUN)

    @property
    def style(self) -> Style:
        """Its style: ``paragraph.style.name`` is ``"heading 1"``, say."""
        return Style(self._paragraph.style)

    @property
    def heading_level(self) -> Optional[int]:
        """1 to 9; None for what is no heading."""
        return self._paragraph.heading_level or None

    @property
    def is_list_item(self) -> bool:
        """Whether it stands in a list."""
        return self._paragraph.is_list_item

    @property
    def list_label(self) -> str:
        """What Word shows in front of it, a number or a bullet: ``"2.1"``. Headings may have one too."""
        return self._paragraph.label

    @property
    def list_level(self) -> int:
        """0 to 8."""
        return self._paragraph.list_level

    @property
    def list_id(self) -> Optional[int]:
        """The same for all items that are counted together."""
        return self._paragraph.list_id if self._paragraph.is_list_item else None

    @property
    def list_number(self) -> Optional[int]:
        """Its number in its level; None with a bullet, and without a list."""
        facts = self._paragraph
        return facts.number if facts.is_list_item and not facts.is_bullet else None

    @property
    def is_bullet(self) -> bool:
        """Whether its label is a bullet."""
        return self._paragraph.is_bullet

    @property
    def alignment(self) -> str:
        """``"start"``, ``"center"``, ``"end"``, ``"justify"``, ``"distribute"``."""
        return ALIGNMENTS[self._paragraph.alignment % len(ALIGNMENTS)]

    @property
    def paragraph_format(self) -> ParagraphFormat:
        """How it stands: indents, spaces, what keeps together."""
        return ParagraphFormat(self._paragraph)

    @property
    def links(self) -> List[Item]:
        """The :class:`Link` objects in it."""
        return self._below(LINK)

    @property
    def pictures(self) -> List[Item]:
        """The :class:`Picture` objects in it, and those that are anchored in it; not shapes that are drawn."""
        return [picture for picture in self._below(PICTURE) if not picture.is_drawing]

    @property
    def notes(self) -> List[Item]:
        """The :class:`Note` objects that are referred to in it."""
        return [
            note
            for number in self._view.tree.find(self._number, NOTE_REFERENCE)
            if (note := note_of(self._view, number)) is not None
        ]

    @property
    def contains_page_break(self) -> bool:
        """Whether a page ends in it."""
        return bool(self._view.tree.find(self._number, PAGE_BREAK))

    @property
    def text_boxes(self) -> List[TextBox]:
        """Those that are anchored in it."""
        tree = self._view.tree
        boxes: List[TextBox] = []
        number = tree.next(self._number)
        while number < len(tree) and tree.kind(number) == TEXT_BOX:
            boxes.append(TextBox(self._view, number))
            number = tree.next(number)
        return boxes

    @property
    def section(self) -> Optional[Item]:
        """The :class:`Section` that it stands in."""
        number = self._above(SECTION)
        return None if number is None else cast(Item, self._view.item(number))

    @property
    def table(self) -> Optional[Item]:
        """The innermost :class:`Table` that it stands in."""
        number = self._above(TABLE)
        return None if number is None else cast(Item, self._view.item(number))


@item_class(TEXT_BOX)
class TextBox(Blocks):
    """A text box. Its paragraphs and tables are not among those of the document."""

    __slots__ = ()
