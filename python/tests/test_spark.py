"""On Spark: in this process, and on a cluster of processes of this machine."""

import doctest
import os
import pathlib
import shutil
import sys

import pytest

pytest.importorskip("pyspark")
pytest.importorskip("pyarrow")
if shutil.which("java") is None:
    pytest.skip("Spark needs Java", allow_module_level=True)

from pyspark.sql import SparkSession  # noqa: E402
from spark_cluster import KILLING, LIGHT, QUICK_START, Cluster, driver, expected, found, told_by, wait_until  # noqa: E402

import pagerex  # noqa: E402
import pagerex.spark  # noqa: E402
from pagerex.batch import Item, Row, convert_shard, key_of  # noqa: E402
from pagerex.spark import __main__ as command  # noqa: E402
from pagerex.spark._convert import _bundles, _rows_alone  # noqa: E402

LIMITS = dict(pagerex.spark.DEFAULTS)
EMPTY = "emp+t%C3y ä.dot"


@pytest.fixture(scope="module")
def spark(tmp_path_factory):
    before = {name: os.environ.get(name) for name in ("PYSPARK_PYTHON", "SPARK_LOCAL_IP")}
    os.environ.update(PYSPARK_PYTHON=sys.executable, SPARK_LOCAL_IP="127.0.0.1")
    builder = SparkSession.builder.master("local[2]").appName("tests")
    settings = {
        **QUICK_START,
        "spark.default.parallelism": "2",
        "spark.ui.showConsoleProgress": "false",
        "spark.sql.warehouse.dir": str(tmp_path_factory.mktemp("warehouse")),
    }
    for name, value in settings.items():
        builder = builder.config(name, value)
    # Spark's Python looks for modules where Spark was started: the package's sources lack the native module.
    started_in = os.getcwd()
    os.chdir(tmp_path_factory.mktemp("started"))
    session = builder.getOrCreate()
    os.chdir(started_in)
    session.sparkContext.setLogLevel("OFF")
    yield session
    session.stop()
    for name, value in before.items():
        os.environ.pop(name) if value is None else os.environ.update({name: value})


def frame(spark, documents):
    return spark.createDataFrame(documents, "path string, content binary")


def rows_of(converted):
    """As rows of pagerex.batch."""
    for told in converted.collect():
        given = told.asDict(recursive=True)
        assets = [pagerex.batch.RowAsset(*asset.values()) for asset in given.pop("assets")]
        warnings = [pagerex.batch.RowWarning(**warning) for warning in given.pop("warnings")]
        for asset in assets:
            assert isinstance(asset.data, (bytes, bytearray))
        yield Row(**given, assets=[each._replace(data=bytes(each.data)) for each in assets], warnings=warnings)


def deadly(sample):
    """With what kills, hangs and eats between good ones."""
    documents = [(f"sample-{number}", sample + bytes([number])) for number in range(12)]
    odd = {"empty": b"", "pdf": b"%PDF-1.7", "crash": b"<crash>", "hang": b"<hang>", "eat": b"<eat>"}
    for number, (path, content) in enumerate(odd.items()):
        documents.insert(2 * number + 1, (path, content))
    return documents


def test_rows_are_those_of_one_process(spark, sample):
    documents = deadly(sample)
    options = {"pictures": "files", "timeout": 4, "strikes": 1, "memory": 96 << 20, "_child": KILLING}
    rows = list(rows_of(pagerex.spark.convert(frame(spark, documents), "markdown", batch_rows=2, **options)))
    alone = convert_shard((Item(*each) for each in documents), "markdown", slots=1, **LIMITS, **options)
    assert {row.path: told_by(row) for row in rows} == {row.path: told_by(row) for row in alone}
    assert len(rows) == len(documents)
    statuses = {row.path: row.status for row in rows}
    assert [statuses[path] for path in ("empty", "pdf", "hang", "eat")] == ["not_word", "not_word", "timeout", "memory"]
    assert statuses["crash"] == "crash" and statuses["sample-0"] == "ok"


def test_columns_are_as_promised(spark, sample):
    df = frame(spark, [("a", sample), ("b", b"hello")]).selectExpr("*", "'left out' AS more")
    converted = pagerex.spark.convert(df, "markdown", pictures="files", assets=False)
    assert converted.schema == pagerex.spark.SCHEMA
    rows = {row.path: row for row in converted.collect()}
    assert rows["a"].metadata["title"] == "A Sampler" and rows["a"].counts["tables"] > 0
    assert [(asset.name, asset.data) for asset in rows["a"].assets][0] == ("document.files/picture-1.png", None)
    assert rows["a"].key == key_of(sample, "markdown", pictures="files", **LIMITS)
    assert rows["b"].content is None and rows["b"].status == "not_word"


def test_pictures_have_rows_of_their_own(spark, sample):
    df = frame(spark, [("a", sample), ("b", b"hello")])
    pictures = pagerex.spark.pictures(pagerex.spark.convert(df, "markdown", pictures="files"))
    assert pictures.schema.names == pagerex.spark.PICTURES.names
    assets = pagerex.convert(sample, "markdown", pictures="files").assets
    found = {(row.path, row.name, row.media_type, bytes(row.data)) for row in pictures.collect()}
    assert found == {("a", name, asset.media_type, asset.data) for name, asset in assets.items()}


def test_keys_are_known_without_converting(spark, sample):
    df = frame(spark, [("a", sample), ("b", b"")])
    keys = {row.path: row.key for row in df.select("path", pagerex.spark.key("text", width=72).alias("key")).collect()}
    assert keys == {"a": key_of(sample, "text", width=72, **LIMITS), "b": key_of(b"", "text", width=72, **LIMITS)}


def test_what_is_absent_or_too_large_is_not_read_by_its_path(spark, sample_path):
    df = spark.createDataFrame(
        [(str(sample_path), None, None), (str(sample_path), None, 1000), ("large", None, 1 << 40), ("long", bytes(101), 7)],
        "path string, content binary, length long",
    )
    rows = pagerex.spark.convert(df, "text", input_bytes=100).collect()
    told = sorted((row.path, row.status, row.bytes, row.key) for row in rows)
    assert told == sorted(
        [
            (str(sample_path), "unreadable", 0, None),
            (str(sample_path), "too_large", 1000, None),
            ("large", "too_large", 1 << 40, None),
            ("long", "too_large", 101, None),
        ]
    )


def test_nonsense_is_told_before_anything_runs(spark, tmp_path):
    df = frame(spark, [("a", b"")])
    for options in ({"width": 3}, {"input_bytes": None}, {"output_bytes": 2 << 30}, {"deadline": 3}):
        with pytest.raises(pagerex.OptionError):
            pagerex.spark.convert(df, "text", **options)
        with pytest.raises(pagerex.OptionError):
            pagerex.spark.convert_files(spark, str(tmp_path), str(tmp_path / "out"), "text", **options)
    with pytest.raises(ValueError, match="'content'"):
        pagerex.spark.convert(df.select("path"))
    assert not (tmp_path / "out").exists()


def test_batches_are_bounded():
    row = next(convert_shard([Item("a", b"hello")], "text", slots=1))
    rows = [row] * 10 + [pagerex.spark._convert.absent_row("b", "text", 3)] * 5
    batches = list(_bundles(rows, lambda each: _rows_alone(each, True), pagerex.spark.SCHEMA, 1 << 20, 4))
    assert [batch.num_rows for batch in batches] == [4, 4, 4, 3]
    assert len(list(_bundles(rows, lambda each: _rows_alone(each, True), pagerex.spark.SCHEMA, 1, 4))) == 15


def test_batches_that_come_are_bounded(spark):
    if spark.version.startswith("3."):  # which counts rows alone
        pagerex.spark.convert(frame(spark, [("a", b"")]))
        assert spark.conf.get("spark.sql.execution.arrow.maxRecordsPerBatch") == "64"
        return
    before = spark.conf.get("spark.sql.execution.arrow.maxBytesPerBatch")
    spark.conf.set("spark.sql.execution.arrow.maxBytesPerBatch", "1g")
    pagerex.spark.convert(frame(spark, [("a", b"")]))
    assert spark.conf.get("spark.sql.execution.arrow.maxBytesPerBatch") == str(32 << 20)
    spark.conf.set("spark.sql.execution.arrow.maxBytesPerBatch", "1m")
    pagerex.spark.convert(frame(spark, [("a", b"")]))
    assert spark.conf.get("spark.sql.execution.arrow.maxBytesPerBatch") == "1m"
    spark.conf.set("spark.sql.execution.arrow.maxBytesPerBatch", before)


@pytest.fixture
def documents(tmp_path, sample):
    """A folder with files of many kinds; one of them is of a gigabyte, of which nothing lies on the disk."""
    folder = tmp_path / "documents"
    (folder / "be low").mkdir(parents=True)
    for number in range(6):
        (folder / f"{number}.doc").write_bytes(sample + bytes([number]))
    (folder / "be low" / "ü%20[a]{b}+*.DOC").write_bytes(sample)
    (folder / "be low" / EMPTY).write_bytes(b"")
    (folder / "notes.txt").write_bytes(b"not taken by its name")
    with open(folder / "huge.wbk", "wb") as file:
        file.truncate(1 << 30)
    return folder


def names_of(rows):
    return sorted(pathlib.Path(row.path).name for row in rows)


def test_read_has_a_row_for_each_file(spark, documents):
    read = pagerex.spark.read(spark, str(documents), input_bytes=1 << 20)
    rows = {pathlib.Path(row.path).name: row for row in read.collect()}
    assert sorted(rows) == sorted([*(f"{n}.doc" for n in range(6)), "ü%20[a]{b}+*.DOC", EMPTY, "huge.wbk"])
    assert rows["huge.wbk"].content is None and rows["huge.wbk"].length == 1 << 30
    assert rows[EMPTY].content == b"" and len(rows["3.doc"].content) == rows["3.doc"].length
    assert "notes.txt" in names_of(pagerex.spark.read(spark, str(documents), names=None).select("path").collect())
    assert names_of(pagerex.spark.read(spark, str(documents / "[0-2].doc")).collect()) == ["0.doc", "1.doc", "2.doc"]


def files_in(documents):
    return [path for path in documents.rglob("*") if path.is_file() and path.suffix != ".txt"]


def convert_files(spark, documents, target, **options):
    return pagerex.spark.convert_files(spark, str(documents), str(target), "markdown", pictures="files", **options)


def assert_as_of_one_process(documents, target):
    alone = expected(files_in(documents), "markdown", LIMITS["input_bytes"], pictures="files")
    assert found(target) == {path: [told] for path, told in alone.items()}


def test_files_become_rows_once(spark, documents, tmp_path):
    target, waves = tmp_path / "out", []
    report = convert_files(spark, documents, target, wave_files=5, on_wave=waves.append)
    assert report[:3] == (9, {"ok": 7, "not_word": 1, "too_large": 1}, 9)
    assert [wave[:2] for wave in waves] == [(1, 2), (2, 2)]
    assert_as_of_one_process(documents, target)
    assert pagerex.spark.saved_rows(spark, str(target)).schema == pagerex.spark.SCHEMA
    assert pagerex.spark.saved_pictures(spark, str(target)).count() == 21

    # What a commit that was broken off leaves: some rows without their pictures, some pictures without their row.
    parts = sorted(target.rglob("part=rows/*.parquet"))
    parts[0].unlink()
    for picture in target.rglob(f"part=pictures/{parts[-1].name}"):
        picture.unlink()
    (documents / "0.doc").unlink()
    (documents / "new.doc").write_bytes((documents / "1.doc").read_bytes())
    again = convert_files(spark, documents, target, wave_files=4)
    assert again.statuses == report.statuses and 1 < again.converted < 9
    rows = found(target)
    rows.pop(f"file:{documents}/0.doc")
    alone = expected(files_in(documents), "markdown", LIMITS["input_bytes"], pictures="files")
    assert rows == {path: [told] for path, told in alone.items()}


def test_a_file_that_vanishes_gets_a_row(spark, documents, tmp_path):
    def vanish(_):
        for number in range(6):
            (documents / f"{number}.doc").unlink(missing_ok=True)

    report = convert_files(spark, documents, tmp_path / "out", wave_files=2, on_wave=vanish)
    assert report.documents == 9 == sum(report.statuses.values())
    assert report.statuses["unreadable"] > 0
    assert len(found(tmp_path / "out")) == 9


def test_the_command(spark, documents, tmp_path, capsys):
    (documents / "huge.wbk").unlink()
    assert command.main([str(documents), str(tmp_path / "out"), "-t", "text", "--width", "72", "--input-bytes", "1M"]) == 2
    told = capsys.readouterr()
    assert told.out.splitlines()[0] == "8 documents: 7 ok, 1 not_word"
    assert "1 of 1: 7 ok, 1 not_word" in told.err
    (documents / "be low" / EMPTY).unlink()
    assert command.main([str(documents), str(tmp_path / "out"), "-t", "text", "--width", "72", "--input-bytes", "1M"]) == 0
    assert "0 converted" in capsys.readouterr().out
    assert command.main([str(documents), str(tmp_path / "out"), "--width", "3"]) == 1
    assert command.main([str(tmp_path / "nowhere"), str(tmp_path / "out")]) == 1
    with pytest.raises(SystemExit, match="0"):
        command.main(["--script"])
    assert pathlib.Path(capsys.readouterr().out.strip()) == pathlib.Path(command.__file__)


def test_a_cluster_that_loses_a_worker_and_its_driver(tmp_path, sample):
    documents = tmp_path / "documents"
    documents.mkdir()
    for number in range(44):
        (documents / f"{number}.doc").write_bytes(sample + number.to_bytes(2, "big"))
    for name in ("crash", "eat"):
        (documents / f"{name}.doc").write_bytes(f"<{name}>".encode())
    target, log = tmp_path / "out", tmp_path / "driver.log"
    given = (documents, target, "markdown")
    options = {"pictures": "files", "wave_files": 12, "shard_bytes": 1 << 20}
    settings = {**QUICK_START, "spark.executor.memory": "512m", "spark.executor.extraJavaOptions": LIGHT}

    def waves():
        return log.read_text().count("Wave(") if log.exists() else 0

    with Cluster(tmp_path, 2, memory="512m") as cluster:
        first = driver(tmp_path, cluster, settings, *given, **options)
        wait_until(lambda: waves() >= 1, 120, "the first wave")
        cluster.kill(0)
        cluster.start(0)
        done = waves()
        wait_until(lambda: waves() > done, 120, "a wave without one worker")
        first.kill()
        first.wait()
        assert '"documents"' not in log.read_text(), "it was not killed in the midst of its work"
        assert driver(tmp_path, cluster, settings, *given, **options).wait(240) == 0
    alone = expected(files_in(documents), "markdown", LIMITS["input_bytes"], slots=2, pictures="files")
    assert found(target) == {path: [told] for path, told in alone.items()}


def test_the_guide(spark, tmp_path, sample, monkeypatch):
    folder = tmp_path / "documents"
    folder.mkdir()
    for number in range(6):
        (folder / f"{number}.doc").write_bytes(sample + bytes([number]))
    (folder / "mislabelled.doc").write_bytes(b"%PDF-1.7")
    with open(folder / "huge.doc", "wb") as file:
        file.truncate(1 << 30)
    monkeypatch.chdir(tmp_path)
    # Java stays in the folder that it was started in.
    guide = (pathlib.Path(__file__).resolve().parent.parent / "guides" / "spark.md").read_text()
    for name in ("documents", "converted"):
        guide = guide.replace(f'"{name}"', f'"{tmp_path / name}"')
    example = doctest.DocTestParser().get_doctest(guide, {}, "spark.md", "spark.md", 0)
    outcome = doctest.DocTestRunner(optionflags=doctest.REPORT_NDIFF).run(example)
    assert outcome.failed == 0 and outcome.attempted > 12
