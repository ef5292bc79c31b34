"""Documents of a frame."""

from __future__ import annotations

from functools import partial
from typing import TYPE_CHECKING, Any, Callable, Dict, Iterable, Iterator, List, Optional, Tuple

from pyspark.sql import DataFrame
from pyspark.sql import functions as F

from .. import __version__, errors
from ..batch import Item, Row, convert_shard, key_prefix
from ._schema import PICTURES_PART, ROWS_PART, SAVED, SCHEMA

if TYPE_CHECKING:
    import pyarrow
    from pyspark.sql import Column, SparkSession
    from pyspark.sql.types import StructType

    Record = Dict[str, Any]
    #: The records of a row, each with about as many bytes as it takes.
    RecordsOf = Callable[[Row], Iterator[Tuple[Record, int]]]

#: Limits that are lower here than elsewhere: Spark holds a row several times on its way.
DEFAULTS: Dict[str, Any] = {"input_bytes": 64 << 20, "output_bytes": 128 << 20}
#: Spark's rows end at 2 GiB.
_MOST_LIMIT = 1 << 30
_NOT_OF_THE_KEY = ("strikes", "recycle", "_child")
#: Beside its texts, about.
_RECORD_BYTES = 500
_MOST_ARROW_BYTES = 32 << 20
_FEW_RECORDS = 64


def convert(
    df: DataFrame,
    to: str = "html",
    *,
    assets: bool = True,
    batch_bytes: int = 16 << 20,
    batch_rows: int = 1000,
    slots: int = 1,
    **options: Any,
) -> DataFrame:
    """Converts the documents of a frame: for each of its rows, one of :data:`SCHEMA`, whatever the document is or does.

    ``df`` has ``path`` and ``content``, as ``spark.read.format("binaryFile")`` and :func:`read` give them; with
    ``length``, a content that is null counts as so many bytes. Other columns are left out: join them by ``path``.

    * ``assets``: ``False`` leaves out the bytes of pictures and other files; their names stay
    * ``batch_bytes``, ``batch_rows``: what goes to Spark at once; a larger row goes alone
    * ``slots``: processes that a task starts; Spark hands out cores, and so one
    * all else: options of :func:`pagerex.batch.convert_shard`; here ``input_bytes`` is 64 MiB, ``output_bytes`` 128 MiB

    Nothing runs before an action does. What is larger than ``input_bytes`` does not leave Spark. The session's
    ``spark.sql.execution.arrow.maxBytesPerBatch`` becomes 32 MiB if it is more.
    """
    records = partial(_rows_alone, with_data=assets)
    return _mapped(df, to, options, records, SCHEMA, batch_bytes, batch_rows, slots)


def convert_for_saving(
    df: DataFrame, to: str, options: Dict[str, Any], batch_bytes: int, batch_rows: int, slots: int
) -> DataFrame:
    """The same with pictures in rows of their own."""
    return _mapped(df, to, options, _rows_and_pictures, SAVED, batch_bytes, batch_rows, slots)


def pictures(rows: DataFrame) -> DataFrame:
    """A row of :data:`PICTURES` for each picture, and other file beside the main one, of what :func:`convert` gives."""
    each = rows.select("key", "path", F.explode("assets").alias("asset"))
    return each.select("key", "path", "asset.name", "asset.media_type", "asset.data")


def key(to: str = "html", content: str = "content", **options: Any) -> Column:
    """The column ``key`` that documents get by :func:`convert` with these options, computed without converting them."""
    return key_of_sha256(F.sha2(F.col(content), 256), to, options)


def key_of_sha256(sha256: Column, to: str, options: Dict[str, Any]) -> Column:
    """Of the content's hash."""
    return F.sha2(F.concat(F.lit(key_prefix(to, **of_the_key(options))), sha256), 256)


def of_the_key(options: Dict[str, Any]) -> Dict[str, Any]:
    """Options that keys depend on, with limits as they are here."""
    kept = {**DEFAULTS, **{name: value for name, value in options.items() if name not in _NOT_OF_THE_KEY}}
    for name in DEFAULTS:
        if kept[name] is None or (isinstance(kept[name], int) and kept[name] > _MOST_LIMIT):
            raise errors.OptionError(f"{name} must be {_MOST_LIMIT} or less here, not {kept[name]!r}")
    return kept


def _mapped(
    df: DataFrame,
    to: str,
    options: Dict[str, Any],
    records_of: RecordsOf,
    schema: StructType,
    batch_bytes: int,
    batch_rows: int,
    slots: int,
) -> DataFrame:
    for name in ("path", "content"):
        if name not in df.columns:
            raise ValueError(f"the frame has no column {name!r}, but {', '.join(map(repr, df.columns))}")
    key_prefix(to, **of_the_key(options))  # which raises what makes no sense, here and not in tasks
    asked = {**options, **of_the_key(options), "slots": slots}
    _bound_batches(df.sparkSession)

    def task(batches: Iterable[pyarrow.RecordBatch]) -> Iterator[pyarrow.RecordBatch]:
        return _bundles(_converted(batches, to, asked), records_of, schema, batch_bytes, batch_rows)

    return _inputs(df, asked["input_bytes"]).mapInArrow(task, schema)


def _inputs(df: DataFrame, most: int) -> DataFrame:
    """Path, content if it is not too large, and length."""
    size = F.octet_length("content").cast("long")
    length = F.coalesce(size, F.col("length").cast("long")) if "length" in df.columns else size
    path = F.coalesce(F.col("path").cast("string"), F.lit("")).alias("path")
    return df.select(path, F.when(size <= most, F.col("content")).alias("content"), length.alias("length"))


def _bound_batches(spark: SparkSession) -> None:
    """Ten thousand documents, which go into a batch if nobody says otherwise, may be more than it can hold."""
    bytes_name, records_name = (f"spark.sql.execution.arrow.max{what}PerBatch" for what in ("Bytes", "Records"))
    try:
        most = spark.conf.get(bytes_name)
    except Exception:  # Spark 3.5, which counts records alone
        if spark.conf.get(records_name) == "10000":
            spark.conf.set(records_name, str(_FEW_RECORDS))
        return
    if most is None or _byte_count(most) > _MOST_ARROW_BYTES:
        spark.conf.set(bytes_name, str(_MOST_ARROW_BYTES))


def _byte_count(told: str) -> int:
    """Of a number with one of Spark's units."""
    digits = told.rstrip("bBkKmMgGtTpP")
    unit = told[len(digits) :].lower()[:1] or "b"
    return int(digits) << (10 * "bkmgtp".index(unit))


# In a task.


def _converted(batches: Iterable[pyarrow.RecordBatch], to: str, asked: Dict[str, Any]) -> Iterator[Row]:
    absent: List[Row] = []
    rows = convert_shard(_items(batches, asked["input_bytes"], to, absent), to, **asked)
    try:
        for row in rows:
            yield row
            while absent:
                yield absent.pop()
        yield from absent
    finally:
        rows.close()


def _items(batches: Iterable[pyarrow.RecordBatch], most: int, to: str, absent: List[Row]) -> Iterator[Item]:
    """What is to be converted. What has no content gets its row into `absent`: nothing is read by its path."""
    for batch in batches:
        for path, content, length in zip(*(batch.column(name) for name in ("path", "content", "length"))):
            if content.is_valid:
                yield Item(path.as_py(), content.as_buffer())
            elif length.is_valid and length.as_py() > most:
                yield Item(path.as_py(), None, length.as_py())
            else:
                absent.append(absent_row(path.as_py(), to, length.as_py() or 0))


def absent_row(path: str, to: str, length: int) -> Row:
    """Of a document whose content could not be had."""
    return Row(
        path, None, "unreadable", "Its content is not there.", "unknown", length, "", 0.0, __version__, to,
        None, "", [], [], {}, {}, 0, False,
    )  # fmt: skip


def _bundles(
    rows: Iterable[Row], records_of: RecordsOf, schema: StructType, most_bytes: int, most_rows: int
) -> Iterator[pyarrow.RecordBatch]:
    import pyarrow
    from pyspark.sql.pandas.types import to_arrow_schema

    arrow = to_arrow_schema(schema)
    held: List[Record] = []
    size = 0
    for row in rows:
        for record, record_bytes in records_of(row):
            if held and (size + record_bytes > most_bytes or len(held) >= most_rows):
                yield pyarrow.RecordBatch.from_pylist(held, schema=arrow)
                held, size = [], 0
            held.append(record)
            size += record_bytes
    if held:
        yield pyarrow.RecordBatch.from_pylist(held, schema=arrow)


def _record(row: Row, assets: List[Record]) -> Record:
    told = {name: getattr(row, name) for name in SCHEMA.names}
    told["warnings"] = [warning._asdict() for warning in row.warnings]
    told["metadata"] = list(row.metadata.items())
    told["counts"] = list(row.counts.items())
    told["assets"] = assets
    return told


def _size(text: Optional[str]) -> int:
    """As UTF-8, or more."""
    return len(text) * (1 if text.isascii() else 3) if text else 0


def _rows_alone(row: Row, with_data: bool) -> Iterator[Tuple[Record, int]]:
    if with_data:
        data = sum(len(asset.data) for asset in row.assets)
        yield _record(row, [asset._asdict() for asset in row.assets]), _RECORD_BYTES + _size(row.content) + data
    else:
        yield _record(row, _names(row)), _RECORD_BYTES + _size(row.content)


def _names(row: Row) -> List[Record]:
    return [{"name": asset.name, "media_type": asset.media_type} for asset in row.assets]


def _rows_and_pictures(row: Row) -> Iterator[Tuple[Record, int]]:
    yield {**_record(row, _names(row)), "part": ROWS_PART}, _RECORD_BYTES + _size(row.content)
    for asset in row.assets:
        told = {"key": row.key, "path": row.path, "part": PICTURES_PART, **asset._asdict()}
        yield told, _RECORD_BYTES + len(asset.data)
