"""Conversions in one call."""

from __future__ import annotations

import os
from typing import TYPE_CHECKING, Dict, List, Optional, Tuple

from . import _native
from ._options import FORMATS, format_of_path, main_name_of, settings_of
from ._results import Asset, Conversion, Counts, Info, Kind, Outcome, metadata_of
from ._source import Opened, bytes_of, opened
from .errors import raise_for

if TYPE_CHECKING:
    from typing_extensions import Unpack

    from ._options import Format, Options
    from ._source import Source

_OK = 0
_NOT_WORD, _ENCRYPTED = 2, 3


def conversion_of(native: _native.Outcome, files: List[_native.File], to: str, name: str) -> Conversion:
    """From what the library tells; also of a conversion that broke off."""
    content, assets = "", {}
    for path, media_type, data, _complete in files:
        if isinstance(data, str):
            content = data
        else:
            assets[path] = Asset(media_type, data)
    return Conversion(native, to, name, FORMATS[to][1], content, assets)


def convert(source: Source, to: Format = "html", **options: Unpack[Options]) -> Conversion:
    """Converts a document into memory.

    >>> import pagerex
    >>> page = pagerex.convert("sample.doc")
    >>> page.content[:15], page.complete
    ('<!doctype html>', True)
    >>> with open("sample.doc", "rb") as file:
    ...     text = pagerex.convert(file, to="text", width=72)
    >>> print(text.content.splitlines()[0])
    A Sampler

    ``source`` is a path (with fsspec installed also one like ``"s3://bucket/letter.doc"``), bytes or anything with a
    buffer, which are read in place and must not be changed meanwhile, or a binary file. A file that can be sought is
    read from its beginning, and then stands where it stood.

    ``to`` is ``"html"`` (one page that looks as Word shows the document), ``"markdown"``, ``"text"``, or one of the
    older views ``"normal"``, ``"phone"``, ``"preview"`` and ``"mulpages"``.

    Options of what is written:

    * ``revisions``: ``"final"`` with all tracked changes made, ``"original"`` without them, ``"all"`` with both marked
    * ``comments``: ``False`` leaves them out
    * ``hidden_text``: ``True`` writes text that Word hides
    * ``links``: addresses that are kept: ``"safe"`` ones (http, https, mailto and their like), ``"all"``, ``"none"``
    * ``pictures``: ``"embedded"``, as ``"files"`` in ``assets``, or ``"none"``; ``"web"`` for the older views
    * ``page_size``: characters in a piece of html, on a page, or in the preview
    * ``headers``: ``True`` writes headers and footers (text)
    * ``width``: columns that lines are wrapped at, 20 or more (text)
    * ``front_matter``, ``page_breaks``, ``common_mark``: ``True`` for each (markdown)
    * ``dark``: ``True`` for a page that is dark where its reader's screen is (html)
    * ``name``: of the main file, by which links to assets are made

    Options of how:

    * ``memory``: bytes that what is read of the document may take
    * ``input_bytes``, ``output_bytes``: limits of both
    * ``deadline``: seconds
    * ``cancel``: a :class:`pagerex.Cancel`, which ends the call from another thread
    * ``progress``: a function that is called with a number rising from 0 to 1; what it raises ends the conversion

    Raises what :mod:`pagerex.errors` tells. Other threads run meanwhile, and may convert too.
    """
    settings = settings_of(to, options)
    name = main_name_of(to, options)
    if type(source) is bytes:
        native, files = _native.convert(source, None, name, settings)
        held: Optional[Opened] = None
    else:
        held = opened(source)
        try:
            native, files = _native.convert(held.native, None, name, settings)
        finally:
            held.close()
    conversion = conversion_of(native, files, to, name)
    if native[0] != _OK:
        raise_for(conversion, held.name if held else None)
    return conversion


def convert_file(
    source: Source, target: str | os.PathLike[str], to: Optional[Format] = None, **options: Unpack[Options]
) -> Outcome:
    """Converts a document into a file, with other files in a folder beside it where the format has some.

    >>> import os, pagerex, tempfile
    >>> with tempfile.TemporaryDirectory() as folder:
    ...     outcome = pagerex.convert_file("sample.doc", os.path.join(folder, "sample.md"))
    ...     sorted(os.listdir(folder))
    ['sample.files', 'sample.md']

    Without ``to`` the extension of ``target`` tells the format. The result appears whole or not at all; what no
    conversion has made is not overwritten (:class:`~pagerex.RefusedError`). Options are those of :func:`convert`.
    """
    path = os.fsdecode(target)
    chosen = to if to is not None else format_of_path(path)
    if "name" in options:
        raise TypeError("unknown option 'name': the file is named by its path")
    settings = settings_of(chosen, options)
    encoded = os.fsencode(path)
    if b"\0" in encoded:
        raise ValueError("embedded null byte")
    held = opened(source)
    try:
        native, _ = _native.convert(held.native, encoded, "", settings)
    finally:
        held.close()
    outcome = Outcome(native)
    if native[0] != _OK:
        writes = native[0] in (6, 7)
        raise_for(outcome, path if writes else held.name)
    return outcome


#: What can be told without the end of a file.
_HEAD = 1 << 16
#: Compound files and archives, whose directories may stand anywhere.
_NEEDS_WHOLE = (b"\xd0\xcf\x11\xe0", b"PK")


def detect(source: Source) -> Kind:
    """Tells from its bytes what a file is, whatever its name says.

    >>> import pagerex
    >>> pagerex.detect("sample.doc")
    'word97'
    >>> pagerex.detect(b"%PDF-1.7").sentence
    'This is a PDF document (.pdf).'
    """
    held = opened(source)
    try:
        head = bytes_of(held, _HEAD)
        if len(head) >= _HEAD and bytes(head[:4]).startswith(_NEEDS_WHOLE):
            head = bytes_of(held)
        return Kind.of(_native.detect(head))
    finally:
        held.close()


_INFO_OPTIONS = frozenset(("memory", "input_bytes", "deadline", "cancel"))


def info(
    source: Source,
    *,
    memory: Optional[int] = None,
    input_bytes: Optional[int] = None,
    deadline: Optional[float] = None,
) -> Info:
    """Tells what is known of a file without converting it. Of files that are no Word 97-2003 documents, or are
    encrypted, that is their kind.

    >>> import pagerex
    >>> known = pagerex.info("sample.doc")
    >>> known.convertible, known.metadata.title
    (True, 'A Sampler')
    """
    options = {"memory": memory, "input_bytes": input_bytes, "deadline": deadline}
    settings = settings_of("html", options, _INFO_OPTIONS)
    held = opened(source)
    try:
        native, document = _native.open(held.native, settings)
        if native[0] in (_NOT_WORD, _ENCRYPTED):
            return Info(Kind.of(native[1]), _size_of(held), None, None)
        if native[0] != _OK:
            raise_for(Outcome(native), held.name)
        return info_of(document)
    finally:
        held.close()


def info_of(document: _native.Document) -> Info:
    """Of a document that is open."""
    code, kind, size, counts, summary = document.info()
    if code != _OK:
        raise_for(Outcome((code, kind, 0, 0, _native.result_name(code), counts, 0, 0, (), 0, summary)))
    return Info(Kind.of(kind), size, Counts(*counts), metadata_of(summary))


def _size_of(held: Opened) -> int:
    native = held.native
    if isinstance(native, str):
        return os.stat(native).st_size
    if hasattr(native, "byte_count"):
        return int(native.byte_count())
    return memoryview(native).nbytes


def formats() -> Dict[str, Tuple[str, str]]:
    """What documents can be written in: names with extension and media type of the main file.

    >>> import pagerex
    >>> pagerex.formats()["markdown"]
    ('.md', 'text/markdown; charset=utf-8')
    """
    return dict(FORMATS)
