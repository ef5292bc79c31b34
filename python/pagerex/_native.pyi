"""The C interface: see native/."""

from typing import Any, Callable, List, Optional, Tuple, Union

Warning = Tuple[int, int, int, str, str]
Property = Tuple[str, str, int]
Counts = Tuple[int, int, int, int, int]
# Thirteen texts, three times, seven numbers, named properties.
Summary = Tuple[
    str, str, str, str, str, str, str, str, str, str, str, str, str,
    str, str, str,
    int, int, int, int, int, int, int,
    Tuple[Property, ...],
]  # fmt: skip
# Code, kind, system error, complete, sentence, counts, bytes, files, warnings, all warnings, summary.
Outcome = Tuple[int, int, int, int, str, Counts, int, int, Tuple[Warning, ...], int, Summary]
# Name, media type, content, complete.
File = Tuple[str, str, Union[str, bytes], bool]
Functions = Tuple[Callable[[str, str, Union[str, bytes], bool], object], Callable[[int, str], object]]
# None for memory, with the main file as text; True with it as bytes, too; a path; functions for files and pages.
Target = Union[None, bool, bytes, Functions]
Settings = Tuple[Any, ...]
Date = Tuple[int, int, int, int, int]

class Cancel:
    """Ends conversions that were given it as the option ``cancel``."""

    def cancel(self) -> None:
        """Ends the calls that were given this; from any thread."""
    @property
    def canceled(self) -> bool:
        """Whether cancel() was called."""

class Document:
    def write(self, target: Target, main_name: str, settings: Settings, /) -> Tuple[Outcome, List[File]]: ...
    def info(self) -> Tuple[int, int, int, Counts, Summary]: ...
    def walk(self, settings: Settings, /) -> Tuple[Outcome, Tree]: ...
    def pictures(
        self, first: int, most_bytes: int, settings: Settings, /
    ) -> Tuple[Outcome, List[Tuple[int, int, int, bytes]]]: ...
    def close(self) -> None: ...

class Tree:
    def __len__(self) -> int: ...
    def kind(self, item: int, /) -> int: ...
    def parent(self, item: int, /) -> int: ...
    def next(self, item: int, /) -> int: ...
    def children(self, item: int, /) -> List[int]: ...
    def find(self, item: int, kind: int, /) -> List[int]: ...
    def span(self, item: int, /) -> Tuple[int, int]: ...
    def is_aside(self, item: int, /) -> bool: ...
    def text(self, item: int, /) -> str: ...
    def facts(self, item: int, /) -> Any: ...
    def body(self) -> str: ...

class RunFacts:
    font: str
    east_asian_font: str
    other_font: str
    complex_font: str
    character_style: str
    bold: bool
    italic: bool
    strike: bool
    double_strike: bool
    outline: bool
    shadow: bool
    emboss: bool
    imprint: bool
    small_caps: bool
    caps: bool
    hidden: bool
    is_right_to_left: bool
    no_proof: bool
    underline: int
    highlight: int
    vertical_alignment: int
    size_half_points: int
    scale_percent: int
    language: int
    spacing: int
    raised_half_points: int
    colour: Optional[int]
    underline_colour: Optional[int]
    background: Optional[int]
    change: int

class ParagraphFacts:
    style: str
    label: str
    position: int
    label_characters: int
    heading_level: int
    outline_level: int
    is_list_item: bool
    is_bullet: bool
    list_level: int
    number_format: int
    list_id: int
    number: int
    alignment: int
    is_right_to_left: bool
    keep_lines: bool
    keep_with_next: bool
    page_break_before: bool
    widow_control: bool
    line_spacing: int
    line_height: int
    space_before: int
    space_after: int
    indent_start: int
    indent_end: int
    indent_first_line: int
    background: Optional[int]

class SectionFacts:
    index: int
    start: int
    page_width: int
    page_height: int
    margin_top: int
    margin_bottom: int
    margin_left: int
    margin_right: int
    gutter: int
    header_distance: int
    footer_distance: int
    column_count: int
    is_landscape: bool
    has_title_page: bool
    is_right_to_left: bool
    restarts_page_numbers: bool
    first_page_number: int
    header_sections: Tuple[int, ...]

class HeaderFacts:
    kind: int
    is_footer: int

class TableFacts:
    style: str
    depth: int
    row_count: int
    header_row_count: int
    column_count: int
    width: int
    indent: int
    width_kind: int
    alignment: int
    is_right_to_left: bool
    is_regular: bool
    has_merged_cells: bool
    column_widths: Tuple[int, ...]

class RowFacts:
    is_header: bool
    cant_split: bool
    height: int
    columns_before: int
    columns_after: int
    change: int

class CellFacts:
    width: int
    column_span: int
    row_span: int
    vertical_alignment: int
    background: Optional[int]

class LinkFacts:
    address: str
    bookmark: str
    title: str
    target: str

class NoteFacts:
    kind: int
    index: int
    label: str
    is_custom: int

class CommentFacts:
    index: int
    date: Optional[Date]
    author: str
    initials: str

class RevisionFacts:
    kind: int
    date: Optional[Date]
    author: str

class FormFieldFacts:
    kind: int
    is_checked: int
    name: str
    value: str

class PictureFacts:
    description: str
    name: str
    linked_address: str
    order: int
    identity: int
    width: int
    height: int
    is_inline: bool
    is_behind_text: bool
    has_source: bool

def detect(data: Any, /) -> int: ...
def kind_texts(kind: int, /) -> Tuple[str, str]: ...
def result_name(code: int, /) -> str: ...
def formats() -> List[Tuple[str, str, str, str, int]]: ...
def version() -> str: ...
def end() -> None: ...
def open(source: Any, settings: Settings, /) -> Tuple[Outcome, Document]: ...
def convert(source: Any, target: Target, main_name: str, settings: Settings, /) -> Tuple[Outcome, List[File]]: ...
def convert_picture(source: Any, width: float, height: float, settings: Settings, /) -> Tuple[Outcome, List[File]]: ...
