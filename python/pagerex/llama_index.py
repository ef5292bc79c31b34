"""A reader for LlamaIndex: ``PagerexReader().load_data("letter.doc")``, or
``SimpleDirectoryReader("letters", file_extractor={".doc": PagerexReader()})``."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Dict, Iterable, Optional

from llama_index.core.readers.base import BaseReader
from llama_index.core.schema import Document as LlamaIndexDocument

from . import convert
from . import open as open_document
from ._source import name_of

if TYPE_CHECKING:
    from ._options import Format
    from ._source import Source


class PagerexReader(BaseReader):  # type: ignore[misc,unused-ignore]
    """Reads Word 97-2003 documents as one text each, or in pieces.

    With ``max_characters`` a document comes in pieces of at most so many, each with its place and the headings it
    stands under; otherwise as one ``to`` ("markdown" or "text"). Options are those of :func:`pagerex.convert`.
    """

    def __init__(self, *, to: Format = "markdown", max_characters: Optional[int] = None, **options: Any) -> None:
        self._to: Format = to
        self._max_characters = max_characters
        self._options = options

    def lazy_load_data(
        self, file: Source, extra_info: Optional[Dict[str, Any]] = None, fs: Any = None, **_: Any
    ) -> Iterable[LlamaIndexDocument]:
        """What LlamaIndex calls, with a file system if it reads from one."""
        if fs is not None:
            with fs.open(str(file), "rb") as stream:
                yield from self._read(stream.read(), {**(extra_info or {}), "file_path": str(file)})
        else:
            yield from self._read(file, dict(extra_info or {}))

    def _read(self, source: Source, info: Dict[str, Any]) -> Iterable[LlamaIndexDocument]:
        if name := name_of(source):
            info.setdefault("file_path", name)
        if self._max_characters is None:
            options = {"pictures": "none", **self._options} if self._to == "markdown" else self._options
            whole = convert(source, self._to, **options)
            yield LlamaIndexDocument(text=whole.content, metadata={**info, **whole.metadata.as_dict()})
            return
        with open_document(source, **self._options) as document:
            info.update(document.metadata.as_dict())
            for chunk in document.chunks(self._max_characters):
                place = {"start_index": chunk.start, "headings": list(chunk.heading_path)}
                yield LlamaIndexDocument(text=chunk.text, metadata={**info, **place})

    def load_data(self, file: Source, extra_info: Optional[Dict[str, Any]] = None, **options: Any) -> Any:
        """All of them."""
        return list(self.lazy_load_data(file, extra_info, **options))
