"""A loader for LangChain: ``PagerexLoader("letter.doc").load()``."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Dict, Iterator, Optional

from langchain_core.document_loaders import BaseLoader
from langchain_core.documents import Document as LangChainDocument

from . import convert
from . import open as open_document
from ._source import name_of

if TYPE_CHECKING:
    from ._options import Format
    from ._source import Source


class PagerexLoader(BaseLoader):  # type: ignore[misc,unused-ignore]
    """Loads a Word 97-2003 document as one text, or in pieces.

    With ``max_characters`` it comes in pieces of at most so many, each with its place and the headings it stands under;
    otherwise as one ``to`` ("markdown" or "text"). Options are those of :func:`pagerex.convert`.
    """

    def __init__(
        self, source: Source, *, to: Format = "markdown", max_characters: Optional[int] = None, **options: Any
    ) -> None:
        self._source = source
        self._to: Format = to
        self._max_characters = max_characters
        self._options = options

    def lazy_load(self) -> Iterator[LangChainDocument]:
        """What LangChain calls."""
        if self._max_characters is None:
            options = {"pictures": "none", **self._options} if self._to == "markdown" else self._options
            whole = convert(self._source, self._to, **options)
            yield LangChainDocument(page_content=whole.content, metadata=self._metadata(whole.metadata.as_dict()))
            return
        with open_document(self._source, **self._options) as document:
            metadata = self._metadata(document.metadata.as_dict())
            for chunk in document.chunks(self._max_characters):
                place = {"start_index": chunk.start, "headings": list(chunk.heading_path)}
                yield LangChainDocument(page_content=chunk.text, metadata={**metadata, **place})

    def _metadata(self, told: Dict[str, Any]) -> Dict[str, Any]:
        return {"source": name, **told} if (name := name_of(self._source)) else told
