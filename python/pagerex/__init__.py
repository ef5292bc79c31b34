"""Word 97-2003 documents (.doc) as web pages, Markdown and text, and as objects to read.

>>> import pagerex
>>> print(pagerex.convert("sample.doc", to="text").content.splitlines()[0])
A Sampler
>>> with pagerex.open("sample.doc") as document:
...     document.paragraphs[0].text
'A Sampler'

:func:`convert` and :func:`convert_file` convert, :func:`pages` does so page by page, :func:`open` reads, :func:`detect`
and :func:`info` tell what a file is.
"""

from __future__ import annotations

import atexit as _atexit

from . import _native, errors
from ._blocks import Block, Chunk
from ._convert import convert, convert_file, detect, formats, info
from ._document import Document, open
from ._items import Length
from ._native import Cancel
from ._pages import Page, pages
from ._parts import Bookmark, Comment, HeaderFooter, Link, Note, Picture, Revision, Section
from ._results import Asset, Conversion, Counts, Info, Kind, Metadata, Outcome, Warning
from ._tables import Cell, Column, Row, Table
from ._text import Font, Paragraph, ParagraphFormat, Run, Style, TextBox
from .errors import (
    CanceledError,
    DamagedError,
    DeadlineError,
    EncryptedError,
    InputLimitError,
    LimitError,
    MemoryLimitError,
    NotPictureError,
    NotWordError,
    OptionError,
    OutOfMemoryError,
    OutputLimitError,
    PagerexError,
    RefusedError,
    SourceError,
    SourceIsDirectoryError,
    SourceNotFoundError,
    SourcePermissionError,
    WriteError,
)

__version__ = _native.version()

__all__ = [
    "Asset",
    "Block",
    "Bookmark",
    "Cancel",
    "CanceledError",
    "Cell",
    "Chunk",
    "Column",
    "Comment",
    "Conversion",
    "Counts",
    "DamagedError",
    "DeadlineError",
    "Document",
    "EncryptedError",
    "Font",
    "HeaderFooter",
    "Info",
    "InputLimitError",
    "Kind",
    "Length",
    "LimitError",
    "Link",
    "MemoryLimitError",
    "Metadata",
    "NotPictureError",
    "NotWordError",
    "Note",
    "OptionError",
    "OutOfMemoryError",
    "Outcome",
    "OutputLimitError",
    "Page",
    "PagerexError",
    "Paragraph",
    "ParagraphFormat",
    "Picture",
    "RefusedError",
    "Revision",
    "Row",
    "Run",
    "Section",
    "SourceError",
    "SourceIsDirectoryError",
    "SourceNotFoundError",
    "SourcePermissionError",
    "Style",
    "Table",
    "TextBox",
    "Warning",
    "WriteError",
    "convert",
    "convert_file",
    "detect",
    "errors",
    "formats",
    "info",
    "open",
    "pages",
]

# Threads that are still converting when the interpreter ends must not wake up in it.
_atexit.register(_native.end)
