import array
import io
import mmap
import pathlib
import pickle
import subprocess
import sys

import pytest

import pagerex


def test_page_of_bytes(sample):
    page = pagerex.convert(sample)
    assert page.format == "html" and page.name == "document.html"
    assert page.media_type == "text/html; charset=utf-8"
    assert page.content.startswith("<!doctype html>") and page.content.rstrip().endswith("</html>")
    assert page.complete and not page.warnings and page.kind == "word97"
    assert page.counts.tables == 2 and page.output_bytes == len(page.content.encode())
    assert str(page) == page.content and "converted" in repr(page)


@pytest.mark.parametrize("to", list(pagerex.formats()))
def test_each_format_is_that_of_the_command_line_interface(sample, to):
    result = pagerex.convert(sample, to)
    assert "A Sampler" in result.content + "".join(
        asset.data.decode() for asset in result.assets.values() if asset.media_type.startswith("text/")
    )
    assert result.output_files == 1 + len(result.assets)
    assert result.output_bytes == len(result.content.encode()) + sum(len(a.data) for a in result.assets.values())


def sources(path):
    data = path.read_bytes()

    class OnlyRead:
        def __init__(self):
            self.file = io.BytesIO(data)

        def read(self, size=-1):
            return self.file.read(size)

    with open(path, "rb") as file, open(path, "rb") as mapped:
        yield str(path)
        yield path
        yield data
        yield bytearray(data)
        yield memoryview(data)
        yield memoryview(b"x" + data)[1:]
        yield memoryview(bytes(byte for pair in zip(data, data) for byte in pair))[::2]
        yield array.array("B", data)
        yield io.BytesIO(data)
        yield file
        yield mmap.mmap(mapped.fileno(), 0, access=mmap.ACCESS_READ)
        yield OnlyRead()


def test_all_sources_give_the_same(sample_path):
    expected = pagerex.convert(sample_path).content
    count = 0
    for source in sources(sample_path):
        assert pagerex.convert(source).content == expected, source
        assert pagerex.detect(source) == "word97" or not hasattr(source, "seek")
        count += 1
    assert count == 12


def test_open_takes_all_sources_too(sample_path):
    expected = pagerex.open(sample_path).text
    for source in sources(sample_path):
        with pagerex.open(source) as document:
            assert document.text == expected


def test_file_stands_where_it_stood(sample):
    file = io.BytesIO(sample)
    file.seek(100)
    pagerex.convert(file, "text")
    assert file.tell() == 100
    pagerex.detect(file)
    assert file.tell() == 100


def test_bytes_are_not_copied(sample):
    buffer = bytearray(sample)
    pagerex.convert(buffer, "text")
    buffer.append(0)  # nobody holds on to it

    with pagerex.open(memoryview(buffer).toreadonly()), pytest.raises(BufferError):
        buffer.append(0)
    buffer.append(0)


def test_open_copies_what_can_be_changed(sample):
    buffer = bytearray(sample)
    with pagerex.open(buffer) as document:
        buffer[:] = bytes(len(sample))
        assert document.paragraphs[0].text == "A Sampler"


@pytest.mark.parametrize("source", [None, 5, object(), ["x"], 1.5, io.StringIO("text")])
def test_other_sources_are_refused(source):
    with pytest.raises(TypeError):
        pagerex.convert(source)


def test_options_reach_the_library(sample):
    assert "removed that" not in pagerex.convert(sample, "text").content
    assert "removed that" in pagerex.convert(sample, "text", revisions="all").content
    assert "added this" not in pagerex.convert(sample, "text", revisions="original").content
    assert "Is this clear enough?" in pagerex.convert(sample, "text").content
    assert "Is this clear enough?" not in pagerex.convert(sample, "text", comments=False).content
    assert "emphasised" in pagerex.convert(sample, "text").content
    assert ", hidden," in pagerex.convert(sample, "text", hidden_text=True).content
    assert ", hidden," not in pagerex.convert(sample, "text").content
    assert max(map(len, pagerex.convert(sample, "text", width=40).content.splitlines())) <= 40
    assert pagerex.convert(sample, "markdown", front_matter=True).content.startswith("---\n")
    assert "<!-- " in pagerex.convert(sample, "markdown", page_breaks=True).content
    assert "\n| " not in pagerex.convert(sample, "markdown", common_mark=True).content
    assert "prefers-color-scheme" in pagerex.convert(sample, dark=True).content
    assert "www.example.com" in pagerex.convert(sample).content
    assert "www.example.com" not in pagerex.convert(sample, links="none").content
    assert len(pagerex.convert(sample, pictures="files").assets) == 4
    assert not pagerex.convert(sample, "markdown", pictures="none").assets
    assert "data:image" in pagerex.convert(sample, "markdown", pictures="embedded").content
    assert len(pagerex.convert(sample, page_size=500).assets) == 4
    named = pagerex.convert(sample, "markdown", name="letter.md")
    assert named.name == "letter.md" and "letter.files/picture-1.png" in named.assets


@pytest.mark.parametrize(
    "options",
    [
        {"to": "docx"},
        {"to": None},
        {"to": ["html"]},
        {"revisions": "some"},
        {"links": 1},
        {"pictures": "jpeg"},
        {"width": 5},
        {"width": -20},
        {"width": 2**31},
        {"page_size": -1},
        {"page_size": 2**63},
        {"page_size": 1.5},
        {"comments": "no"},
        {"memory": 0},
        {"deadline": 0},
        {"deadline": -1.0},
        {"deadline": float("nan")},
        {"cancel": True},
        {"progress": 1},
        {"name": "a/b"},
        {"name": ""},
        {"name": "\0"},
        {"name": "\ud800"},
        {"name": 5},
    ],
)
def test_options_that_make_no_sense(sample, options):
    with pytest.raises(pagerex.OptionError) as raised:
        pagerex.convert(sample, **options)
    assert isinstance(raised.value, ValueError) and raised.value.code == "invalid_argument"


def test_unknown_options_are_type_errors(sample):
    for call in (pagerex.convert, pagerex.open, pagerex.info, pagerex.pages):
        with pytest.raises(TypeError):
            call(sample, colour=True)


def test_convert_file(sample, sample_path, tmp_path):
    outcome = pagerex.convert_file(sample_path, tmp_path / "a.md")
    assert outcome.complete and outcome.metadata.title == "A Sampler"
    assert (tmp_path / "a.md").read_text() == pagerex.convert(sample, "markdown", name="a.md").content
    assert sorted(path.name for path in (tmp_path / "a.files").iterdir())
    pagerex.convert_file(sample, str(tmp_path / "a.htm"))
    pagerex.convert_file(sample, tmp_path / "b.bin", "text", width=40)
    with pytest.raises(pagerex.OptionError):
        pagerex.convert_file(sample, tmp_path / "c.bin")


def test_convert_file_leaves_nothing_behind_where_it_fails(sample, sample_path, tmp_path):
    copy = tmp_path / "a.doc"
    copy.write_bytes(sample)
    with pytest.raises(pagerex.RefusedError) as refused:
        pagerex.convert_file(copy, copy, "html")
    assert isinstance(refused.value, FileExistsError) and copy.read_bytes() == sample
    with pytest.raises(pagerex.WriteError) as failed:
        pagerex.convert_file(sample, tmp_path / "none" / "a.html")
    assert isinstance(failed.value, OSError) and failed.value.filename.endswith("a.html")
    with pytest.raises(pagerex.OutputLimitError):
        pagerex.convert_file(sample, tmp_path / "a.html", output_bytes=1000)
    assert [path.name for path in tmp_path.iterdir()] == ["a.doc"]


def test_detect(sample, tmp_path):
    assert pagerex.detect(sample).is_word and not pagerex.detect(b"").is_word
    kinds = {b"": "empty", b"%PDF-1.4": "pdf", b"{\\rtf1 x}": "rtf", b"\x89PNG\r\n\x1a\n": "png", b"plain": "text"}
    for data, kind in kinds.items():
        assert pagerex.detect(data) == kind
        assert pickle.loads(pickle.dumps(pagerex.detect(data))) == kind
    long = tmp_path / "long.doc"
    long.write_bytes(sample + bytes(100000))  # the head alone does not tell
    assert pagerex.detect(long) == "word97"
    with pytest.raises(FileNotFoundError):
        pagerex.detect("/nowhere.doc")
    with pytest.raises(pagerex.SourceError):
        pagerex.detect("/dev/zero")
    with pytest.raises(IsADirectoryError):
        pagerex.detect(tmp_path)


def test_info(sample, sample_path):
    known = pagerex.info(sample_path)
    assert known.convertible and known.input_bytes == len(sample)
    assert known.metadata.title == "A Sampler" and known.metadata.created.tzinfo is not None
    assert known.metadata.as_dict()["author"] == "The pagerex team"
    other = pagerex.info(b"%PDF-1.4")
    assert other.kind == "pdf" and other.metadata is None and other.input_bytes == 8
    with pytest.raises(pagerex.SourceNotFoundError):
        pagerex.info("/nowhere.doc")


def run(*arguments, **options):
    command = [sys.executable, "-m", "pagerex", *map(str, arguments)]
    return subprocess.run(command, capture_output=True, check=False, cwd="/", **options)


def test_command_line(sample, sample_path, tmp_path):
    done = run(sample_path, "-t", "markdown", "--pictures", "none")
    assert done.returncode == 0 and done.stdout.decode() == pagerex.convert(sample, "markdown", pictures="none").content
    assert run("-", "-t", "text", input=sample).stdout.decode() == pagerex.convert(sample, "text").content
    assert run(sample_path, "-o", tmp_path / "a.html").returncode == 0 and (tmp_path / "a.html").exists()
    assert b'"kind": "word97"' in run(sample_path, "--info").stdout
    missing = run("/nowhere.doc")
    assert missing.returncode == 2 and b"No such file" in missing.stderr and b"Traceback" not in missing.stderr
    assert run(sample_path, "-t", "text", "--width", "3").returncode == 1


def test_version_is_that_of_the_package():
    from importlib.metadata import version

    assert pagerex.__version__ == version("pagerex")
    assert pathlib.Path(pagerex.__file__).with_name("py.typed").exists()
