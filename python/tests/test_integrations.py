"""With the real packages, where they are installed: tools/integrations makes an environment that has them."""

import io

import pytest

import pagerex


def test_markitdown(sample, sample_path):
    markitdown = pytest.importorskip("markitdown")
    result = markitdown.MarkItDown(enable_plugins=True).convert(str(sample_path))
    assert "# Characters" in result.markdown and result.title == "A Sampler" and "data:" not in result.markdown
    stream = markitdown.MarkItDown(enable_plugins=True).convert_stream(io.BytesIO(sample))
    assert stream.markdown == result.markdown
    assert "plain" in markitdown.MarkItDown(enable_plugins=True).convert_stream(io.BytesIO(b"plain text")).markdown


def test_langchain(sample, sample_path):
    pytest.importorskip("langchain_core")
    from pagerex.langchain import PagerexLoader

    (whole,) = PagerexLoader(sample_path).load()
    assert "# Characters" in whole.page_content
    assert whole.metadata["source"] == str(sample_path) and whole.metadata["title"] == "A Sampler"
    pieces = list(PagerexLoader(sample, max_characters=400).lazy_load())
    assert len(pieces) > 5 and all(len(piece.page_content) <= 400 for piece in pieces)
    text = pagerex.open(sample).text
    for piece in pieces:
        start = piece.metadata["start_index"]
        assert text[start : start + len(piece.page_content)] == piece.page_content
    assert pieces[-1].metadata["headings"] == ["Groups and pictures", "Another page size"]
    (text_only,) = PagerexLoader(sample, to="text", comments=False).load()
    assert text_only.page_content == pagerex.convert(sample, "text", comments=False).content


def test_llama_index(sample, sample_path, tmp_path):
    pytest.importorskip("llama_index.core")
    from llama_index.core import SimpleDirectoryReader

    from pagerex.llama_index import PagerexReader

    (whole,) = PagerexReader().load_data(sample_path)
    assert "# Characters" in whole.text and whole.metadata["author"] == "The pagerex team"
    pieces = PagerexReader(max_characters=400).load_data(sample_path, extra_info={"from": "test"})
    assert len(pieces) > 5 and all(piece.metadata["from"] == "test" for piece in pieces)
    (tmp_path / "a.doc").write_bytes(sample)
    (read,) = SimpleDirectoryReader(str(tmp_path), file_extractor={".doc": PagerexReader()}).load_data()
    assert "# Characters" in read.text


def test_fsspec(sample):
    fsspec = pytest.importorskip("fsspec")
    with fsspec.open("memory://letters/a.doc", "wb") as file:
        file.write(sample)
    expected = pagerex.convert(sample, "text").content
    assert pagerex.convert("memory://letters/a.doc", "text").content == expected
    assert pagerex.convert(fsspec.open("memory://letters/a.doc"), "text").content == expected
    assert pagerex.detect("memory://letters/a.doc") == "word97"
    with pagerex.open("memory://letters/a.doc") as document:
        assert document.paragraphs[0].text == "A Sampler"
    with pytest.raises(FileNotFoundError):
        pagerex.convert("memory://letters/none.doc")


def test_a_path_of_fsspec_without_it():
    try:
        import fsspec  # noqa: F401
    except ImportError:
        with pytest.raises(ImportError, match="pagerex.fsspec"):
            pagerex.convert("memory://letters/a.doc")
