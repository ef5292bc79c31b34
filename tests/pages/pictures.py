"""Reads the pictures that engines take of pages: PNG files of 8 bits a channel."""

import struct
import zlib


class Picture:
    """The colours of a PNG file, by `picture[x, y]` as (red, green, blue)."""

    def __init__(self, data):
        self.width, self.height, packed, self._step = _chunks(data)
        self._rows = _rows(zlib.decompress(packed), self.width * self._step, self._step, self.height)

    def __getitem__(self, place):
        x, y = place
        at = int(x) * self._step
        return tuple(self._rows[int(y)][at:at + 3])


def _chunks(data):
    at, packed = 8, b""
    while at < len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        body = data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            width, height, bits, colours = struct.unpack_from(">IIBB", body)
            if bits != 8 or colours not in (2, 6):
                raise ValueError(f"{bits} bits of kind {colours}: no picture that engines take")
        elif kind == b"IDAT":
            packed += body
        at += 12 + length
    return width, height, packed, 3 if colours == 2 else 4


def _rows(raw, length, step, count):
    rows, above = [], bytearray(length)
    for start in range(0, count * (length + 1), length + 1):
        row = bytearray(raw[start + 1:start + 1 + length])
        _FILTERS[raw[start]](row, above, step)
        rows.append(row)
        above = row
    return rows


def _sub(row, _above, step):
    for i in range(step, len(row)):
        row[i] = (row[i] + row[i - step]) & 255


def _up(row, above, _step):
    for i, value in enumerate(above):
        row[i] = (row[i] + value) & 255


def _average(row, above, step):
    for i, value in enumerate(above):
        left = row[i - step] if i >= step else 0
        row[i] = (row[i] + (left + value) // 2) & 255


def _paeth(row, above, step):
    for i, up in enumerate(above):
        left, corner = (row[i - step], above[i - step]) if i >= step else (0, 0)
        guess = left + up - corner
        by = (abs(guess - left), abs(guess - up), abs(guess - corner))
        row[i] = (row[i] + (left if by[0] <= by[1] and by[0] <= by[2] else up if by[1] <= by[2] else corner)) & 255


_FILTERS = {0: lambda row, above, step: None, 1: _sub, 2: _up, 3: _average, 4: _paeth}
