"""What calls give back."""

from __future__ import annotations

import datetime
from dataclasses import dataclass, field
from typing import Any, Dict, List, Mapping, NamedTuple, Optional, Tuple, Union

from . import _native

PropertyValue = Union[str, int, float, bool, datetime.datetime, None]


class Kind(str):
    """What a file is: a short word that stays as it is, with a sentence for people.

    >>> kind = Kind.of(31)
    >>> kind == "docx", kind.sentence
    (True, 'This is a Word document of 2007 or later (.docx).')
    """

    __slots__ = ("number", "sentence")
    number: int
    sentence: str

    @classmethod
    def of(cls, number: int) -> Kind:
        """The kind that the library has a number for."""
        known = _KINDS.get(number)
        if known is None:
            name, sentence = _native.kind_texts(number)
            known = cls(name)
            known.number = number
            known.sentence = sentence
            _KINDS[number] = known
        return known

    @property
    def is_word(self) -> bool:
        """Whether this is what can be converted: Word 97-2003, not encrypted."""
        return self.number == _WORD97

    def __reduce__(self) -> Tuple[Any, Tuple[int]]:
        return (Kind.of, (self.number,))


_KINDS: Dict[int, Kind] = {}
_WORD97 = 10


class Warning(NamedTuple):
    """Something that was left out of the output, or mended on the way."""

    code: str
    #: Whether something of the document is missing in the output. Otherwise it was mended, or meant so.
    lost: bool
    #: How often.
    times: int
    #: Where it was first: a table of the file, an address's scheme. May be empty.
    where: str
    sentence: str


class Counts(NamedTuple):
    """Of the document's main text and what is anchored in it."""

    characters: int
    paragraphs: int
    tables: int
    pictures: int
    pages: int


class Asset(NamedTuple):
    """A file beside the main one."""

    media_type: str
    data: bytes


@dataclass(frozen=True)
class Metadata:
    """What a document says of itself. What it does not tell is empty, 0 or None; times are UTC.

    The counts are those that the program wrote that saved it last, and may be wrong.
    """

    title: str = ""
    subject: str = ""
    author: str = ""
    last_author: str = ""
    keywords: str = ""
    comments: str = ""
    category: str = ""
    manager: str = ""
    company: str = ""
    template: str = ""
    application: str = ""
    revision: str = ""
    #: BCP 47: ``"de-DE"``.
    language: str = ""
    created: Optional[datetime.datetime] = None
    saved: Optional[datetime.datetime] = None
    printed: Optional[datetime.datetime] = None
    editing_minutes: int = 0
    pages: int = 0
    words: int = 0
    characters: int = 0
    paragraphs: int = 0
    lines: int = 0
    #: Bits: 1 password, 2 read-only recommended, 4 read-only enforced, 8 locked.
    security: int = 0
    #: Properties that someone gave a name.
    custom: Mapping[str, PropertyValue] = field(default_factory=dict)

    @property
    def last_modified_by(self) -> str:
        """The same as ``last_author``."""
        return self.last_author

    @property
    def modified(self) -> Optional[datetime.datetime]:
        """The same as ``saved``."""
        return self.saved

    @property
    def last_printed(self) -> Optional[datetime.datetime]:
        """The same as ``printed``."""
        return self.printed

    def as_dict(self) -> Dict[str, PropertyValue]:
        """What is told, with times as text, for JSON; named properties as ``"custom:NAME"``."""
        told: Dict[str, PropertyValue] = {}
        for name in self.__dataclass_fields__:
            value = getattr(self, name)
            if name != "custom" and value:
                told[name] = _plain(value)
        for name, value in self.custom.items():
            told["custom:" + name] = _plain(value)
        return told


def _plain(value: PropertyValue) -> PropertyValue:
    return value.isoformat() if isinstance(value, datetime.datetime) else value


def _time(text: str) -> Optional[datetime.datetime]:
    try:
        plain = datetime.datetime.strptime(text, "%Y-%m-%dT%H:%M:%SZ")
    except ValueError:
        return None
    return plain.replace(tzinfo=datetime.timezone.utc)


def _property(text: str, kind: int) -> PropertyValue:
    try:
        if kind == 1:
            return int(text)
        if kind == 2:
            return float(text)
    except ValueError:
        return text
    if kind == 3:
        return text == "true"
    if kind == 4:
        return _time(text)
    return text


def metadata_of(summary: _native.Summary) -> Metadata:
    """From what the library tells."""
    told: Dict[str, Any] = dict(zip(_SUMMARY_FIELDS, summary))
    for name in ("created", "saved", "printed"):
        told[name] = _time(told[name]) if told[name] else None
    told["custom"] = {name: _property(value, kind) for name, value, kind in summary[23]}
    return Metadata(**told)


# In the order in which the library tells them.
_SUMMARY_FIELDS = tuple(Metadata.__dataclass_fields__)

_WARNING_NAMES = {
    1: "table_damaged",
    2: "outside",
    3: "ended_early",
    4: "work_limit",
    5: "output_full",
    6: "picture",
    7: "link_removed",
    8: "pictures_off",
    9: "file_short",
    10: "stopped",
}


def _warning(told: _native.Warning) -> Warning:
    code, lost, count, where, sentence = told
    return Warning(_WARNING_NAMES.get(code, str(code)), bool(lost), count, where, sentence)


class Outcome:
    """What came of a call."""

    __slots__ = ("_native",)

    def __init__(self, native: _native.Outcome) -> None:
        self._native = native

    @property
    def _code(self) -> int:
        return self._native[0]

    @property
    def _system_error(self) -> int:
        return self._native[2]

    @property
    def kind(self) -> Kind:
        """What the input is."""
        return Kind.of(self._native[1])

    @property
    def complete(self) -> bool:
        """Whether all of the document is in the output: no warning says that something is lost."""
        return bool(self._native[3])

    @property
    def sentence(self) -> str:
        """What came of the call, in English."""
        return self._native[4]

    @property
    def counts(self) -> Counts:
        """Of what was written."""
        return Counts(*self._native[5])

    @property
    def output_bytes(self) -> int:
        """That were written, all files together."""
        return self._native[6]

    @property
    def output_files(self) -> int:
        """How many files were written."""
        return self._native[7]

    @property
    def warnings(self) -> List[Warning]:
        """What was left out or mended: one for each cause and place, the first 32 of them."""
        return [_warning(told) for told in self._native[8]]

    @property
    def warnings_total(self) -> int:
        """All of them, each as often as it came."""
        return self._native[9]

    @property
    def metadata(self) -> Metadata:
        """What the document says of itself."""
        return metadata_of(self._native[10])

    def __repr__(self) -> str:
        return f"<{type(self).__name__} {self.sentence!r}>"


class Conversion(Outcome):
    """A document that was converted into memory."""

    __slots__ = ("format", "name", "media_type", "content", "assets")

    def __init__(
        self, native: _native.Outcome, format: str, name: str, media_type: str, content: str, assets: Dict[str, Asset]
    ) -> None:
        super().__init__(native)
        #: The format that it was converted to: ``"html"``.
        self.format = format
        #: The name of the main file, by which assets are named too: ``"document.html"``.
        self.name = name
        self.media_type = media_type
        #: The main file.
        self.content = content
        #: The other files by their paths from the main file: pictures, pages.
        self.assets = assets

    def __str__(self) -> str:
        return self.content


@dataclass(frozen=True)
class Info:
    """What is known of a file without converting it."""

    kind: Kind
    input_bytes: int
    #: None of what is not a Word 97-2003 document.
    counts: Optional[Counts]
    metadata: Optional[Metadata]

    @property
    def convertible(self) -> bool:
        """Whether it is a document that this package reads."""
        return self.kind.is_word
