"""Many documents made of few: changed, damaged, cut, of other kinds, huge, and such that kill their process."""

import pathlib
import random

import pagerex

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
#: Real documents, where they lie beside the project.
REAL = ROOT.parent / "shared" / "corpus"
_SMALL = 100_000
_HUGE = 1 << 30
_FOLDER = 1000
#: Marks that killing_child.py knows.
_DEADLY = (b"<crash>", b"<exit>", b"<eat slowly>", b"<raise>")
_OTHERS = (b"%PDF-1.7\n", b"{\\rtf1 ", b"PK\x03\x04", b"<html>", b"plain text ", b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1")


def make(folder, count, seed=1, deadly=True):
    """Returns the paths. `deadly`: with what kills, hangs, eats, and is huge."""
    folder = pathlib.Path(folder)
    bases = _Bases()
    contents = [("deadly", mark + b" ") for mark in _DEADLY for _ in range(max(1, count // 4000))]
    contents += [("hanging", b"<hang> "), ("large", bases.small[0] + bytes(30 << 20)), ("huge", None), ("huge", None)]
    places = dict(zip(random.Random(seed).sample(range(count), len(contents)), contents)) if deadly else {}
    paths = []
    for number in range(count):
        kind, content = places.get(number) or bases.document(random.Random(f"{seed}/{number}"))
        path = folder / f"{number // _FOLDER:03}" / f"{number:07}-{kind}.doc"
        path.parent.mkdir(parents=True, exist_ok=True)
        with open(path, "wb") as file:
            if content is None:
                file.truncate(_HUGE + number)
            elif content:
                file.write(content + number.to_bytes(4, "big"))
        paths.append(path)
    return paths


class _Bases:
    def __init__(self):
        found = sorted(REAL.rglob("*.doc")) if REAL.exists() else []
        contents = [path.read_bytes() for path in found] or [(ROOT / "samples" / "sample.doc").read_bytes()]
        kinds = [pagerex.detect(content) for content in contents]
        words = [content for content, kind in zip(contents, kinds) if kind.is_word]
        self.small = [content for content in words if len(content) < _SMALL]
        self.large = [content for content in words if len(content) >= _SMALL] or self.small
        self.encrypted = [content for content, kind in zip(contents, kinds) if kind == "word-encrypted"] or self.small

    def document(self, chance):
        """Its kind and content."""
        kind = chance.choices(list(_SHARES), _SHARES.values())[0]
        return kind, getattr(self, "_" + kind)(chance)

    def _sound(self, chance):
        return chance.choice(self.small)

    def _big(self, chance):
        return chance.choice(self.large)

    def _locked(self, chance):
        return chance.choice(self.encrypted)

    def _changed(self, chance):
        content = bytearray(chance.choice(self.small))
        for _ in range(chance.randint(1, 16)):
            content[chance.randrange(len(content))] = chance.randrange(256)
        return bytes(content)

    def _cut(self, chance):
        content = chance.choice(self.small)
        return content[: chance.randrange(1, len(content))]

    def _empty(self, _):
        return b""

    def _other(self, chance):
        return chance.choice(_OTHERS) + chance.randbytes(chance.randrange(2000))


_SHARES = {"sound": 85, "changed": 8, "cut": 2, "empty": 1, "other": 2, "locked": 1, "big": 1}
