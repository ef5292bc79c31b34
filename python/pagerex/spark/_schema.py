"""The columns of what comes out."""

from __future__ import annotations

from pyspark.sql.types import (
    ArrayType,
    BinaryType,
    BooleanType,
    DataType,
    DoubleType,
    LongType,
    MapType,
    StringType,
    StructField,
    StructType,
)

_TEXT, _BYTES, _WHOLE = StringType(), BinaryType(), LongType()


def _struct(**columns: DataType) -> StructType:
    return StructType([StructField(name, kind) for name, kind in columns.items()])


_ASSET = _struct(name=_TEXT, media_type=_TEXT, data=_BYTES)

#: Of a document: what :class:`pagerex.batch.Row` tells.
SCHEMA = _struct(
    key=_TEXT,
    path=_TEXT,
    status=_TEXT,
    sentence=_TEXT,
    kind=_TEXT,
    bytes=_WHOLE,
    sha256=_TEXT,
    milliseconds=DoubleType(),
    version=_TEXT,
    format=_TEXT,
    content=_TEXT,
    content_sha256=_TEXT,
    warnings=ArrayType(_struct(code=_TEXT, sentence=_TEXT, where=_TEXT, count=_WHOLE)),
    metadata=MapType(_TEXT, _TEXT),
    counts=MapType(_TEXT, _WHOLE),
    assets=ArrayType(_ASSET),
    attempts=_WHOLE,
    quarantined=BooleanType(),
)

#: Of a picture, or of another file beside the main one.
PICTURES = StructType([SCHEMA["key"], SCHEMA["path"], *_ASSET.fields])

#: Both in one stream, which one commit makes visible: `part` tells which it is, and what the other has is null.
SAVED = StructType([*SCHEMA.fields, *_ASSET.fields, StructField("part", _TEXT)])
ROWS_PART, PICTURES_PART = "rows", "pictures"
