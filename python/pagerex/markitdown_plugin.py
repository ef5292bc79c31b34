"""Word 97-2003 documents in markitdown: ``MarkItDown(enable_plugins=True).convert("letter.doc")``.

Installed with this package; markitdown finds it by itself.
"""

from __future__ import annotations

from typing import Any, BinaryIO

from markitdown import DocumentConverter, DocumentConverterResult, MarkItDown, StreamInfo

from . import convert, detect

__plugin_interface_version__ = 1


class DocConverter(DocumentConverter):  # type: ignore[misc,unused-ignore]
    """Goes by the bytes, whatever the name of the file says."""

    def accepts(self, file_stream: BinaryIO, stream_info: StreamInfo, **kwargs: Any) -> bool:
        """Whether it is a document of Word 97-2003."""
        return detect(file_stream).is_word

    def convert(self, file_stream: BinaryIO, stream_info: StreamInfo, **kwargs: Any) -> DocumentConverterResult:
        """As Markdown; pictures are left out, unless ``keep_data_uris`` is set."""
        pictures = "embedded" if kwargs.get("keep_data_uris") else "none"
        document = convert(file_stream, to="markdown", pictures=pictures)  # type: ignore[arg-type]
        return DocumentConverterResult(markdown=document.content, title=document.metadata.title or None)


def register_converters(markitdown: MarkItDown, **kwargs: Any) -> None:
    """What markitdown calls."""
    markitdown.register_converter(DocConverter())
