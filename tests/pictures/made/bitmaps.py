"""Device-independent bitmaps of all depths, and the older ones of Windows metafiles, from rows of colours."""

from packed import BLACK, BLUE, GREEN, RED, WHITE, YELLOW, padded, u16, u32, u8

RGB, RLE8, RLE4, BITFIELDS = range(4)


def quad(rgb):
    """An RGBQUAD: blue first."""
    return u8(rgb, rgb >> 8, rgb >> 16, 0)


def info_header(width, height, depth, compression=RGB, size=0, colours=0, header=40):
    return u32(header, width, height) + u16(1, depth) + u32(compression, size, 0, 0, colours, 0) + bytes(header - 40)


def core_header(width, height, depth):
    return u32(12) + u16(width, height, 1, depth)


def palette_of(rows):
    return list(dict.fromkeys(pixel for row in rows for pixel in row))


def indexed(row, depth):
    """Indexes, the first in the highest bits."""
    value, count = 0, 0
    for index in row:
        value, count = value << depth | index, count + depth
    filled = -count % 8
    return (value << filled).to_bytes((count + filled) // 8, "big")


def channel(value, mask):
    """8 bits of a channel where a mask has it."""
    low = (mask & -mask).bit_length() - 1
    return (value * (mask >> low) // 255) << low


def masked(row, depth, masks):
    red, green, blue = masks
    return b"".join(
        (channel(p >> 16, red) | channel(p >> 8 & 255, green) | channel(p & 255, blue)).to_bytes(depth // 8, "little")
        for p in row)


MASKS = {16: (0x7C00, 0x3E0, 0x1F), 24: (0xFF0000, 0xFF00, 0xFF), 32: (0xFF0000, 0xFF00, 0xFF)}


class Dib:
    """`head` with masks or colours behind it, and `bits`; `packed` is both."""

    def __init__(self, head, bits):
        self.head, self.bits = head, bits
        self.packed = head + bits


def dib(rows, depth=24, *, top_down=False, core=False, header=40, masks=None, palette=None, indexes=None):
    """Of rows of 0xRRGGBB from the top. `palette` for one that is given, `indexes` to have 16-bit ones in its place."""
    width, height = len(rows[0]), len(rows)
    table = b""
    if depth <= 8:
        palette = palette or palette_of(rows)
        lines = [indexed([palette.index(pixel) for pixel in row], depth) for row in rows]
        colours = b"".join(u8(c, c >> 8, c >> 16) for c in palette) if core else b"".join(map(quad, palette))
        if core:
            colours += bytes(3 * ((1 << depth) - len(palette)))
        table = u16(*indexes) if indexes else colours
    else:
        lines = [masked(row, depth, masks or MASKS[depth]) for row in rows]
        if masks and header == 40:
            table = u32(*masks)
    bits = b"".join(padded(line, 4) for line in (lines if top_down else lines[::-1]))
    if core:
        return Dib(core_header(width, height, depth) + table, bits)
    head = info_header(width, -height if top_down else height, depth, BITFIELDS if masks else RGB, len(bits),
                       len(palette) if palette else 0, header)
    if masks and header > 40:
        head = head[:40] + u32(*masks) + head[52:]
    return Dib(head + table, bits)


def without_colours(one):
    """The same, without the colours behind its header."""
    return Dib(one.head[:40], one.bits)


def run_length_dib(rows, depth):
    """Runs of each row; the last pixels of odd rows stand in an absolute run."""
    palette = palette_of(rows)
    code = b""
    for number, row in enumerate(rows[::-1]):
        row = [palette.index(pixel) for pixel in row]
        code += absolute_run(row, depth) if number % 2 else runs(row, depth)
        code += u8(0, 0)
    code += u8(0, 1)
    return Dib(info_header(len(rows[0]), len(rows), depth, RLE8 if depth == 8 else RLE4, len(code), len(palette))
               + b"".join(map(quad, palette)), code)


def runs(row, depth):
    out, at = b"", 0
    while at < len(row):
        end = at
        while end < len(row) and row[end] == row[at] and end - at < 255:
            end += 1
        out += u8(end - at, row[at] if depth == 8 else row[at] * 0x11)
        at = end
    return out


def absolute_run(row, depth):
    return u8(0, len(row)) + padded(bytes(row) if depth == 8 else indexed(row, 4), 2)


def alpha_dib(rows):
    """Of rows of (0xRRGGBB, alpha), premultiplied."""
    out = b""
    for row in rows[::-1]:
        for rgb, alpha in row:
            out += u8(*((rgb >> shift & 255) * alpha // 255 for shift in (0, 8, 16)), alpha)
    return Dib(info_header(len(rows[0]), len(rows), 32, size=len(out)), out)


def old_bitmap(rows):
    """A Bitmap16 of one bit a pixel: rows of 0 and 1 from the top, each of whole 16 bits."""
    width, height = len(rows[0]), len(rows)
    bits = b"".join(padded(indexed(row, 1), 2) for row in rows)
    return u16(0, width, height, (width + 15) // 16 * 2) + u8(1, 1), bits


def blocks(colours, size):
    """Rows of squares of so many pixels, from rows of colours."""
    return [[pixel for pixel in row for _ in range(size)] for row in colours for _ in range(size)]


# Red, green above; blue, yellow below.
QUARTERS = blocks([[RED, GREEN], [BLUE, YELLOW]], 8)
HALVES = blocks([[BLACK, WHITE]], 8)

# One picture in many ways.
FORMS = {
    "depth_4": dib(QUARTERS, 4), "depth_8": dib(QUARTERS, 8), "depth_16": dib(QUARTERS, 16),
    "depth_24": dib(QUARTERS, 24), "depth_32": dib(QUARTERS, 32), "core_4": dib(QUARTERS, 4, core=True),
    "core_8": dib(QUARTERS, 8, core=True), "core_24": dib(QUARTERS, 24, core=True),
    "top_down_8": dib(QUARTERS, 8, top_down=True), "top_down_24": dib(QUARTERS, 24, top_down=True),
    "fields_565": dib(QUARTERS, 16, masks=(0xF800, 0x7E0, 0x1F)),
    "fields_32": dib(QUARTERS, 32, masks=(0xFF, 0xFF00, 0xFF0000)),
    "header_108": dib(QUARTERS, 32, header=108, masks=(0xFF000000, 0xFF0000, 0xFF00)),
    "header_124": dib(QUARTERS, 24, header=124), "run_length_8": run_length_dib(QUARTERS, 8),
    "run_length_4": run_length_dib(QUARTERS, 4),
}
