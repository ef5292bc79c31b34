"""One run over files: what is there already, waves, and files that gave no row."""

from __future__ import annotations

import contextlib
import datetime
import secrets
from typing import TYPE_CHECKING, Any, Callable, Dict, Iterator, NamedTuple, Optional, Sequence, Union

from pyspark.errors import AnalysisException
from pyspark.sql import Observation
from pyspark.sql import functions as F
from pyspark.sql.types import StringType, StructType
from pyspark.sql.utils import is_remote

from ..batch import STATUSES
from ._convert import key_of_sha256
from ._schema import PICTURES_PART, ROWS_PART, SAVED

if TYPE_CHECKING:
    from pyspark.sql import Column, DataFrame, SparkSession

    Convert = Callable[[DataFrame], DataFrame]

#: Each run writes into a folder of its own: what one that was killed left half done is never committed by another.
_RUN = "run"
#: A file, however small, counts as so many bytes when shards are made.
_FILE_BYTES = 32 << 10
#: Rows are large: the writer looks early whether a page or a group is full.
_PARQUET: Dict[str, Any] = {
    "compression": "zstd",
    "parquet.block.size": 32 << 20,
    "parquet.page.size.row.check.min": 1,
    "parquet.page.size.row.check.max": 100,
}


class Listing(NamedTuple):
    """Files, of which nothing is read yet."""

    #: As Spark has them. Those that vanish meanwhile, or cannot be read, have no row when they are read.
    files: DataFrame
    #: Files of no bytes, which Spark leaves out of that; with contents.
    empty: Optional[DataFrame]
    documents: int

    @classmethod
    def of(cls, spark: SparkSession, source: Union[str, Sequence[str]], names: Optional[str]) -> Listing:
        """Of folders, and patterns."""
        reader = spark.read.format("binaryFile").option("recursiveFileLookup", "true")
        reader = reader.option("ignoreCorruptFiles", "true").option("ignoreMissingFiles", "true")
        if names is not None:
            reader = reader.option("pathGlobFilter", names)
        files = reader.load(source if isinstance(source, str) else list(source))
        addresses = _addresses(spark, files)
        count = addresses.count("\n") + 1 if addresses else 0
        has_empty = count > files.count()
        return cls(files, _empty(spark, addresses, files) if has_empty else None, count)

    def contents(self, most: int) -> DataFrame:
        """With contents, of files that are not too large. Spark leaves out the others before it makes tasks."""
        is_large = F.col("_metadata.file_size") > most
        nothing = F.lit(None).cast("binary").alias("content")
        small = self.files.where(~is_large).select(*_COLUMNS, "content")
        both = small.unionByName(self.files.where(is_large).select(*_COLUMNS, nothing))
        return both.unionByName(self.empty) if self.empty else both

    def paths(self) -> DataFrame:
        """With ``path`` and ``length``."""
        paths = self.files.select("path", "length")
        return paths.unionByName(self.empty.select("path", "length")) if self.empty else paths

    def part(self, number: int, of: int) -> Listing:
        """Some of them, by hashes of their paths, which Spark computes before it makes tasks of others."""
        files = self.files.where(f"pmod(xxhash64(_metadata.file_path), {of}) = {number}")
        return self._replace(files=files, empty=self.empty if number == 0 else None)


_COLUMNS = ("path", "modificationTime", "length")


def _addresses(spark: SparkSession, files: DataFrame) -> str:
    """Of all files, a line each. They come as one text, since there may be millions, and each would take a call."""
    if is_remote():
        return "\n".join(files.inputFiles())
    jvm: Any = spark._jvm
    return str(jvm.org.apache.hadoop.util.StringUtils.join("\n", files._jdf.inputFiles()))


def _empty(spark: SparkSession, addresses: str, files: DataFrame) -> DataFrame:
    text = spark.createDataFrame([(addresses,)], "lines string")
    lines = text.select(F.explode(F.split("lines", "\n")).alias("file"))
    files = files.select(F.col("_metadata.file_path").alias("file"))
    named, others = (each.select(_one_spelling(F.col("file")).alias("file")) for each in (lines, files))
    # A plus sign in an address is no space, as it would be in a form.
    path = F.expr("url_decode(replace(file, '+', '%2B'))").alias("path")
    of_no_bytes = (F.lit(None).cast("timestamp"), F.lit(0).cast("long"), F.lit(b""))
    columns = (value.alias(name) for value, name in zip(of_no_bytes, (*_COLUMNS[1:], "content")))
    return named.join(others, "file", "left_anti").select(path, *columns)


def _one_spelling(address: Column) -> Column:
    """``file:/a`` and ``file:///a`` are the same; paths have the former."""
    return F.regexp_replace(address, "^([A-Za-z0-9.+-]+):///", "$1:/")


def saved(spark: SparkSession, target: str) -> DataFrame:
    """All that runs have committed."""
    schema = StructType(list(SAVED.fields)).add(_RUN, StringType())
    return spark.read.schema(schema).parquet(target)


@contextlib.contextmanager
def session(spark: SparkSession, shard_bytes: int) -> Iterator[None]:
    """What a run needs of the session, which is as it was afterwards."""
    needed = {
        "spark.sql.files.openCostInBytes": str(_FILE_BYTES),
        "spark.sql.files.maxPartitionBytes": str(shard_bytes),
        # Rows and pictures are written side by side; otherwise they would be sorted first.
        "spark.sql.maxConcurrentOutputFileWriters": "4",
    }
    before = {name: spark.conf.get(name, None) for name in needed}
    for name, value in needed.items():
        spark.conf.set(name, value)
    try:
        yield
    finally:
        for name, old in before.items():
            if old is None:
                spark.conf.unset(name)
            else:
                spark.conf.set(name, old)


class Run:
    """Files of a source that go to a target."""

    def __init__(
        self,
        spark: SparkSession,
        listing: Listing,
        target: str,
        to: str,
        options: Dict[str, Any],
        most: int,
        convert: Convert,
    ) -> None:
        self._spark = spark
        self._listing = listing
        self._target = target
        self._to = to
        self._options = options
        self._most = most
        self._convert = convert
        now = datetime.datetime.now(datetime.timezone.utc)
        self._folder = f"{target.rstrip('/')}/{_RUN}={now:%Y%m%d-%H%M%S}-{secrets.token_hex(4)}"
        self._before = _Before.of(spark, target)

    def wave(self, number: int, waves: int) -> Dict[str, int]:
        """Converts a part of the files. Returns how many came to which status."""
        listing = self._listing.part(number, waves)
        documents = listing.contents(self._most)
        if self._before is None:
            return self._save(self._convert(documents))
        key = self._key(F.sha2(F.col("content"), 256))
        wanted = self._before.without_done(documents, listing.paths(), key, self._to)
        return self._save(self._before.without_present(self._convert(wanted)))

    def finish(self) -> Dict[str, int]:
        """Gives rows to files that have none. Returns how many files have which status."""
        if self._before is not None:
            self._before.forget()
        is_of_this = (F.col("part") == ROWS_PART) & (F.col("format") == self._to)
        is_current = F.col("key").isNull() | (F.col("key") == self._key(F.col("sha256")))
        rows = saved(self._spark, self._target).where(is_of_this & is_current)
        latest = rows.groupBy("path").agg(F.max_by("status", _RUN).alias("status"))
        found = self._listing.paths().join(latest, "path", "left")
        counts = {row["status"]: row["count"] for row in found.groupBy("status").count().collect()}
        missing = counts.pop(None, 0)
        if missing:
            absent = found.where("status IS NULL").select("path", F.lit(None).cast("binary").alias("content"), "length")
            self._save(self._convert(absent))
            counts["unreadable"] = counts.get("unreadable", 0) + missing
        return {status: counts[status] for status in STATUSES if status in counts}

    def _key(self, sha256: Column) -> Column:
        return key_of_sha256(sha256, self._to, self._options)

    def _save(self, rows: DataFrame) -> Dict[str, int]:
        told = Observation()
        is_row = F.col("part") == ROWS_PART
        counts = [F.count(F.when(is_row & (F.col("status") == status), 1)).alias(status) for status in STATUSES]
        observed = rows.observe(told, *counts)
        observed.write.partitionBy("part").options(**_PARQUET).mode("append").parquet(self._folder)
        return {status: count for status, count in told.get.items() if count}


class _Before:
    """What earlier runs have committed. A document is done if its row is there, and all pictures that the row names: a
    commit that was broken off may show some files without others."""

    @classmethod
    def of(cls, spark: SparkSession, target: str) -> Optional[_Before]:
        """None if there is nothing."""
        try:
            there = saved(spark, target)
            return cls(there) if there.select("path").head(1) else None
        except AnalysisException:
            return None

    def __init__(self, all_saved: DataFrame) -> None:
        is_row = F.col("part") == ROWS_PART
        self._rows = all_saved.where(is_row & _mark().isNotNull()).select(
            "part", "path", "key", F.lit("").alias("name"), _mark().alias("mark"), F.size("assets").alias("assets")
        )
        self._pictures = all_saved.where(F.col("part") == PICTURES_PART).select("part", "path", "key", "name")
        there = self._pictures.groupBy("path", "key").agg(F.count("*").alias("there"))
        with_pictures = self._rows.join(there, ["path", "key"], "left")
        is_whole = F.greatest(F.col("assets"), F.lit(0)) == F.coalesce("there", F.lit(0))
        # Small columns, which each wave asks for.
        self._done = with_pictures.where(is_whole).select("path", "key", "mark").persist()
        entries = self._rows.select("part", "path", "key", "name").unionByName(self._pictures)
        self._partial = entries.where("key IS NOT NULL").join(self._done, ["path", "key"], "left_anti").persist()
        self._has_partial = bool(self._partial.head(1))

    def forget(self) -> None:
        """What executors hold of it."""
        self._done.unpersist()
        self._partial.unpersist()

    def without_done(self, documents: DataFrame, paths: DataFrame, key: Column, to: str) -> DataFrame:
        """What is still to be converted of a wave. Marks travel to the contents, not contents to the marks."""
        done = self._done.join(F.broadcast(paths), "path", "left_semi").select("path", "mark")
        too_large = _mark_of_length(F.lit(to), F.col("length"))
        marked = documents.withColumn("mark", F.coalesce(key, too_large))
        return marked.join(F.broadcast(done), ["path", "mark"], "left_anti").drop("mark")

    def without_present(self, rows: DataFrame) -> DataFrame:
        """What of documents that were there in part is there already."""
        if not self._has_partial:
            return rows
        present = self._partial.select("part", "path", "key", F.col("name").alias("file"))
        named = rows.withColumn("file", F.coalesce("name", F.lit("")))
        return named.join(F.broadcast(present), ["part", "path", "key", "file"], "left_anti").drop("file")


def _mark() -> Column:
    """By which a row is known again: its key, or, if it was too large for one, its length. None of unreadable ones."""
    is_large = F.col("status") == "too_large"
    return F.coalesce("key", F.when(is_large, _mark_of_length(F.col("format"), F.col("bytes"))))


def _mark_of_length(to: Column, length: Column) -> Column:
    return F.concat_ws(" ", F.lit("too_large"), to, length.cast("string"))
