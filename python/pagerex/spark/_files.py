"""From files to Parquet, in waves that are committed one by one."""

from __future__ import annotations

import time
from typing import TYPE_CHECKING, Any, Callable, Dict, NamedTuple, Optional, Sequence, Union

from pyspark.sql import functions as F

from ._convert import DEFAULTS, convert_for_saving
from ._run import Listing, Run, saved, session
from ._schema import PICTURES, PICTURES_PART, ROWS_PART, SCHEMA

if TYPE_CHECKING:
    from pyspark.sql import DataFrame, SparkSession

#: Names that are taken for those of Word documents.
WORD_NAMES = "*.{[dD][oO][cC],[dD][oO][tT],[wW][bB][kK]}"


class Report(NamedTuple):
    """What came of :func:`convert_files`."""

    #: In the source.
    documents: int
    #: How many of them have which status, with those of earlier runs.
    statuses: Dict[str, int]
    #: How many this run converted.
    converted: int
    seconds: float


class Wave(NamedTuple):
    """What is told while it runs."""

    number: int
    of: int
    #: Of this wave.
    statuses: Dict[str, int]


def read(
    spark: SparkSession,
    source: Union[str, Sequence[str]],
    *,
    input_bytes: int = DEFAULTS["input_bytes"],
    names: Optional[str] = WORD_NAMES,
) -> DataFrame:
    """Files in folders, and folders within these, or by patterns: a row for each, as :func:`convert` takes it.

    Of files larger than ``input_bytes``, ``content`` is null: they are not read, and become rows with the status
    ``"too_large"``. ``names`` is a pattern that files' names match; None takes them all. As always with Spark, names
    that begin with ``_`` or a dot are left out. So are, unlike by :func:`convert_files`, files that cannot be read.
    """
    return Listing.of(spark, source, names).contents(input_bytes)


def convert_files(
    spark: SparkSession,
    source: Union[str, Sequence[str]],
    target: str,
    to: str = "html",
    *,
    names: Optional[str] = WORD_NAMES,
    wave_files: int = 100_000,
    shard_bytes: int = 64 << 20,
    on_wave: Optional[Callable[[Wave], object]] = None,
    batch_bytes: int = 16 << 20,
    batch_rows: int = 1000,
    slots: int = 1,
    **options: Any,
) -> Report:
    """Converts files into Parquet below ``target``, which :func:`saved_rows` and :func:`saved_pictures` read.

    What is there already is not converted again: a row with the same path and the same key, that is, of the same
    content under the same options. So a run that was broken off goes on where it was, and one that is done again costs
    reading. Each file gets one row, also when it could not be read; such files are tried again by the next run.

    * ``wave_files``: as many files, about, become visible together; a run that is broken off loses the wave it is at
    * ``shard_bytes``: of files for a task, each counted as 32 KiB at least
    * ``on_wave``: hears a :class:`Wave` after each
    * all else: as :func:`convert`, :func:`read`
    """
    began = time.monotonic()

    def convert(df: DataFrame) -> DataFrame:
        return convert_for_saving(df, to, options, batch_bytes, batch_rows, slots)

    most = options.get("input_bytes", DEFAULTS["input_bytes"])
    convert(spark.createDataFrame([], "path string, content binary"))  # raises what makes no sense
    listing = Listing.of(spark, source, names)
    run = Run(spark, listing, target, to, options, most, convert)
    waves = max(1, -(-listing.documents // max(1, wave_files)))
    converted = 0
    with session(spark, shard_bytes):
        for number in range(waves):
            statuses = run.wave(number, waves)
            converted += sum(statuses.values())
            if on_wave:
                on_wave(Wave(number + 1, waves, statuses))
        statuses = run.finish()
    return Report(listing.documents, statuses, converted, time.monotonic() - began)


def saved_rows(spark: SparkSession, target: str) -> DataFrame:
    """What :func:`convert_files` wrote, as :data:`SCHEMA`; of assets the names, without their bytes."""
    return saved(spark, target).where(F.col("part") == ROWS_PART).select(*SCHEMA.names)


def saved_pictures(spark: SparkSession, target: str) -> DataFrame:
    """Pictures, and other files beside the main ones, that :func:`convert_files` wrote, as :data:`PICTURES`."""
    return saved(spark, target).where(F.col("part") == PICTURES_PART).select(*PICTURES.names)
