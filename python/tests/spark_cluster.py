"""A Spark cluster of processes of this machine, and what its rows are held against."""

import hashlib
import json
import os
import pathlib
import signal
import socket
import subprocess
import sys
import time

from pagerex.batch import Item, convert_shard

HERE = pathlib.Path(__file__).resolve().parent
#: In the place of the real child: dies of documents that say so.
KILLING = (str(HERE / "killing_child.py"),)
#: For Java that does not run for long.
LIGHT = "-XX:+UseSerialGC -XX:TieredStopAtLevel=1"
QUICK_START = {
    "spark.driver.extraJavaOptions": LIGHT,
    "spark.ui.enabled": "false",
    "spark.sql.shuffle.partitions": "2",
    "spark.sql.codegen.wholeStage": "false",
    "spark.sql.codegen.factoryMode": "NO_CODEGEN",
}
#: What depends on time, or on how often machines died.
_NOT_COMPARED = ("milliseconds", "attempts")


class Cluster:
    """A master and workers of one core, which may be killed and started again."""

    def __init__(self, folder, workers, memory="1g"):
        self._folder = pathlib.Path(folder)
        self._memory = memory
        self._workers = {}
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = free.getsockname()[1]
        self.master = f"spark://127.0.0.1:{port}"
        self._master = self._start("master", "master.Master", "--port", str(port))
        for number in range(workers):
            self.start(number)

    def start(self, number):
        where = str(self._folder / f"work-{number}")
        given = ("--cores", "1", "--memory", self._memory, "--work-dir", where, self.master)
        self._workers[number] = self._start(f"worker-{number}", "worker.Worker", *given)

    def kill(self, number):
        """As if its machine went: the worker, its executors, their Python, all of it."""
        kill_tree(self._workers.pop(number).pid)

    def converting(self, number):
        """Python that runs tasks, with a process beside it that converts. The daemons that it is forked from are none of it."""
        below = tree_of(self._workers[number].pid)
        return [pid for pid in below if any(KILLING[0].encode() in _command_of(each) for each in tree_of(pid)[1:2])]

    def stop(self):
        for number in list(self._workers):
            self.kill(number)
        kill_tree(self._master.pid)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def _start(self, name, kind, *given):
        import pyspark

        home = os.path.dirname(pyspark.__file__)
        command = [os.path.join(home, "bin", "spark-class"), f"org.apache.spark.deploy.{kind}"]
        with open(self._folder / f"{name}.log", "ab") as log:
            return subprocess.Popen(
                [*command, "--host", "127.0.0.1", "--webui-port", "0", *given],
                env={**environment(), "SPARK_HOME": home, "SPARK_DAEMON_MEMORY": "256m", "SPARK_DAEMON_JAVA_OPTS": LIGHT},
                stdout=log,
                stderr=log,
            )


def environment():
    """Of all processes of Spark."""
    return {**os.environ, "PYSPARK_PYTHON": sys.executable, "SPARK_LOCAL_IP": "127.0.0.1", "PYTHONWARNINGS": "ignore"}


def driver(folder, cluster, settings, source, target, to, **options):
    """A driver that does convert_files(); its output is in driver.log of `folder`."""
    asked = json.dumps([cluster.master, settings, str(source), str(target), to, options])
    with open(pathlib.Path(folder) / "driver.log", "ab") as log:
        return subprocess.Popen([sys.executable, __file__, asked], env=environment(), stdout=log, stderr=log)


def _drive(master, settings, source, target, to, options):
    from pyspark.sql import SparkSession

    from pagerex.spark import convert_files

    builder = SparkSession.builder.master(master).appName("pagerex")
    for name, value in settings.items():
        builder = builder.config(name, value)
    report = convert_files(
        builder.getOrCreate(), source, target, to, on_wave=lambda wave: print(wave, flush=True), _child=KILLING, **options
    )
    print(json.dumps(report._asdict()), flush=True)


# Processes.


def tree_of(pid):
    """A process and all below it."""
    parents = {}
    for name in os.listdir("/proc"):
        if name.isdigit():
            try:
                told = pathlib.Path("/proc", name, "stat").read_text()
            except OSError:
                continue
            parents.setdefault(int(told.rpartition(")")[2].split()[1]), []).append(int(name))
    found = [pid]
    for each in found:
        found.extend(parents.get(each, []))
    return found


def kill_tree(pid):
    for each in tree_of(pid):
        try:
            os.kill(each, signal.SIGKILL)
        except ProcessLookupError:
            pass
    try:
        os.waitpid(pid, 0)
    except ChildProcessError:
        pass


def _command_of(pid):
    try:
        return pathlib.Path("/proc", str(pid), "cmdline").read_bytes()
    except OSError:
        return b""


def wait_until(condition, seconds, what):
    end = time.monotonic() + seconds
    while not condition():
        assert time.monotonic() < end, f"not within {seconds} seconds: {what}"
        time.sleep(0.1)


# What is expected.


def told_by(row):
    """All of a row that is the same wherever and whenever it is made, as a hash."""
    told = {name: value for name, value in row.as_dict().items() if name not in _NOT_COMPARED}
    for asset in told["assets"]:
        asset["data"] = hashlib.sha256(asset["data"]).hexdigest()
    return _hash(told)


def expected(paths, to, limit, slots=1, **options):
    """By path, of one process without Spark."""
    options = {"input_bytes": limit, "output_bytes": 128 << 20, "_child": KILLING, **options}
    rows = convert_shard(_items(paths, limit), to, slots=slots, **options)
    return {row.path: (told_by(row), row.status) for row in rows}


def _items(paths, limit):
    for path in paths:
        size = os.path.getsize(path)
        yield Item(f"file:{path}", None if size > limit else pathlib.Path(path).read_bytes(), size)


def found(target):
    """By path, a list of what lies in Parquet, read without Spark."""
    import pyarrow.dataset

    both = pyarrow.dataset.dataset(str(target), format="parquet", partitioning="hive", exclude_invalid_files=False)
    assets, rows = {}, {}
    part = pyarrow.dataset.field("part")
    for picture in _records(both, ["path", "key", "name", "media_type", "data"], part == "pictures"):
        names = assets.setdefault((picture["path"], picture["key"]), {})
        assert picture["name"] not in names, f"twice: {picture['name']} of {picture['path']}"
        names[picture["name"]] = (picture["media_type"], hashlib.sha256(picture["data"]).hexdigest())
    leave_out = {*_NOT_COMPARED, "part", "run", "name", "media_type", "data"}
    for row in _records(both, [name for name in both.schema.names if name not in leave_out], part == "rows"):
        there = assets.pop((row["path"], row["key"]), {})
        row["assets"] = [
            {"name": each["name"], "media_type": each["media_type"], "data": there.pop(each["name"])[1]}
            for each in row["assets"]
        ]
        assert not there, f"pictures that the row of {row['path']} does not name: {list(there)}"
        row.update(metadata=dict(row["metadata"]), counts=dict(row["counts"]))
        rows.setdefault(row["path"], []).append((_hash(row), row["status"]))
    assert not assets, f"pictures without a row: {list(assets)[:3]}"
    return rows


def _records(dataset, columns, condition):
    for batch in dataset.to_batches(columns=columns, filter=condition, batch_size=64):
        yield from batch.to_pylist()


def _hash(told):
    return hashlib.sha256(json.dumps(told, sort_keys=True).encode("utf-8", "surrogatepass")).hexdigest()


if __name__ == "__main__":
    _drive(*json.loads(sys.argv[1]))
