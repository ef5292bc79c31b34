"""What goes in, and what comes out for each."""

from __future__ import annotations

from dataclasses import dataclass, fields
from typing import TYPE_CHECKING, Any, Dict, List, NamedTuple, Optional, Tuple, Union

if TYPE_CHECKING:
    import mmap
    import os

    from typing_extensions import TypeAlias

    Buffer: TypeAlias = Union[bytes, bytearray, memoryview, mmap.mmap]
    Given: TypeAlias = Union[
        "Item", Tuple[str, Optional[Buffer]], Tuple[str, Optional[Buffer], Optional[int]], str, os.PathLike[str]
    ]


class Item(NamedTuple):
    """A document to be converted."""

    #: What names it in its row; where there is no content, also where it is read from: a path of this machine, or with
    #: fsspec installed one like ``"s3://bucket/letter.doc"``.
    path: str
    content: Optional[Buffer] = None
    #: Its size, where there is no content and it is known: what is larger than ``input_bytes`` is not read then.
    length: Optional[int] = None


class RowWarning(NamedTuple):
    """Something that was left out of the output, or mended on the way."""

    code: str
    sentence: str
    #: Where it was first; may be empty.
    where: str
    #: How often.
    count: int  # type: ignore[assignment]


class RowAsset(NamedTuple):
    """A file beside the main one."""

    name: str
    media_type: str
    data: bytes


#: Converted, converted with something missing, and why not.
STATUSES: Tuple[str, ...] = (
    "ok",
    "partial",
    "not_word",
    "encrypted",
    "damaged",
    "timeout",
    "memory",
    "crash",
    "too_large",
    "unreadable",
    "write_failed",
    "refused",
)
#: Of which there is content.
CONVERTED = frozenset(("ok", "partial"))

#: By the library's numbers; 0 is "partial" where something is missing.
STATUS_OF_RESULT: Dict[int, str] = {
    0: "ok",
    1: "refused",
    2: "not_word",
    3: "encrypted",
    4: "damaged",
    5: "unreadable",
    6: "write_failed",
    7: "refused",
    9: "timeout",
    10: "memory",
    11: "memory",
    12: "too_large",
    13: "too_large",
}

TOO_LARGE = "The input is larger than was allowed."


@dataclass(frozen=True)
class Row:
    """What came of one input. All but ``milliseconds`` and ``attempts`` is the same on any machine and in any order."""

    __slots__ = (
        "path",
        "key",
        "status",
        "sentence",
        "kind",
        "bytes",
        "sha256",
        "milliseconds",
        "version",
        "format",
        "content",
        "content_sha256",
        "assets",
        "warnings",
        "metadata",
        "counts",
        "attempts",
        "quarantined",
    )

    path: str
    #: Of the content and all that the result depends on: see :func:`key_prefix`. None of what was not read.
    key: Optional[str]
    #: One of :data:`STATUSES`.
    status: str
    #: In English, for people; its wording may change.
    sentence: str
    #: What the input is, by its bytes: ``"word97"``, ``"docx"``, ``"pdf"``, ...
    kind: str
    #: Size of the input; 0 of what was not found.
    bytes: int
    #: Of the input; empty if it was not read.
    sha256: str
    milliseconds: float
    #: Of the library.
    version: str
    format: str
    #: The main file. None of what was not converted.
    content: Optional[str]
    #: Of the content as UTF-8; empty if there is none.
    content_sha256: str
    assets: List[RowAsset]
    warnings: List[RowWarning]
    #: What the document says of itself: ``title``, ``author``, ..., named properties as ``"custom:NAME"``. Times are
    #: UTC, ``"2004-03-01T12:00:00Z"``.
    metadata: Dict[str, str]
    #: Of what was written: ``characters``, ``paragraphs``, ``tables``, ``pictures``, ``pages``. Empty if nothing was.
    counts: Dict[str, int]
    #: How often it was tried.
    attempts: int
    #: Whether its process died as often as `strikes` says; it is not tried again.
    quarantined: bool

    def as_dict(self) -> Dict[str, Any]:
        """With all within as lists, dicts and plain values."""
        told = {name: getattr(self, name) for name in NAMES}
        told["assets"] = [asset._asdict() for asset in self.assets]
        told["warnings"] = [warning._asdict() for warning in self.warnings]
        return told

    def __reduce__(self) -> Tuple[Any, Tuple[Any, ...]]:
        return (Row, tuple(getattr(self, name) for name in NAMES))


NAMES = tuple(field.name for field in fields(Row))
