"""Windows metafiles: a function for each record, and the file around them."""

from packed import colour, flat, padded, u16, u32, u8

SIZE = 192  # of a picture, in units, of which there are 96 to the inch


def record(function, *parameters, tail=b""):
    body = u16(*parameters) + padded(tail, 2)
    return u32(3 + len(body) // 2) + u16(function) + body


def bare(*records, objects=16):
    body = b"".join(records) + record(0)
    largest = max(len(each) for each in (*records, record(0))) // 2
    return u16(1, 9, 0x300) + u32(9 + len(body) // 2) + u16(objects) + u32(largest) + u16(0) + body


def placeable(*records, box=(0, 0, SIZE, SIZE), inch=96, **rest):
    head = u32(0x9AC6CDD7) + u16(0, *box, inch) + u32(0)
    check = 0
    for at in range(0, 20, 2):
        check ^= int.from_bytes(head[at:at + 2], "little")
    return head + u16(check) + bare(*records, **rest)


def metafile(*records):
    """One whose units are pixels."""
    return placeable(set_map_mode(8), set_window_org(0, 0), set_window_ext(SIZE, SIZE), *records)


# --- State ---

def set_bk_mode(mode): return record(0x102, mode, 0)  # 1 transparent, 2 opaque
def set_map_mode(mode): return record(0x103, mode)
def set_rop2(mode): return record(0x104, mode, 0)
def set_poly_fill_mode(mode): return record(0x106, mode, 0)  # 1 alternate, 2 winding
def set_stretch_blt_mode(mode): return record(0x107, mode, 0)
def set_text_char_extra(extra): return record(0x108, extra)
def save_dc(): return record(0x1E)
def restore_dc(level): return record(0x127, level)
def set_bk_color(rgb): return record(0x201, tail=u32(colour(rgb)))
def set_text_color(rgb): return record(0x209, tail=u32(colour(rgb)))
def set_text_justification(breaks, extra): return record(0x20A, breaks, extra)
def set_window_org(x, y): return record(0x20B, y, x)
def set_window_ext(x, y): return record(0x20C, y, x)
def set_viewport_org(x, y): return record(0x20D, y, x)
def set_viewport_ext(x, y): return record(0x20E, y, x)
def offset_window_org(x, y): return record(0x20F, y, x)
def offset_viewport_org(x, y): return record(0x211, y, x)
def scale_window_ext(xn, xd, yn, yd): return record(0x410, yd, yn, xd, xn)
def scale_viewport_ext(xn, xd, yn, yd): return record(0x412, yd, yn, xd, xn)
def set_text_align(mode): return record(0x12E, mode, 0)
def set_mapper_flags(flags): return record(0x231, tail=u32(flags))
def set_layout(layout): return record(0x149, layout, 0)
def escape(number, data=b""): return record(0x626, number, len(data), tail=data)


# --- Clipping ---

def offset_clip(x, y): return record(0x220, y, x)
def exclude_clip(left, top, right, bottom): return record(0x415, bottom, right, top, left)
def intersect_clip(left, top, right, bottom): return record(0x416, bottom, right, top, left)


# --- Objects ---

def select(number): return record(0x12D, number)
def delete(number): return record(0x1F0, number)
def create_pen(style, width, rgb): return record(0x2FA, style, width, 0, tail=u32(colour(rgb)))
def create_brush(style, rgb, hatch=0): return record(0x2FC, style, tail=u32(colour(rgb)) + u16(hatch))
def create_pattern_brush(rows_and_bits): return record(
    0x1F9, tail=rows_and_bits[0] + bytes(4 + 18) + rows_and_bits[1])
def create_dib_brush(dib, style=5, usage=0): return record(0x142, style, usage, tail=dib.packed)


def create_font(height, face, *, width=0, escapement=0, weight=400, italic=0, underline=0, strike_out=0, charset=0,
                pitch=0):
    return record(0x2FB, height, width, escapement, escapement, weight,
                  tail=u8(italic, underline, strike_out, charset, 0, 0, 0, pitch) + face.encode("ascii") + b"\0")


def create_region(bounds, scans):
    """Scans: (top, bottom, left, right, left, right...)."""
    body = b"".join(u16(len(edges), top, bottom, *edges, len(edges)) for top, bottom, *edges in scans)
    most = max((len(scan) - 2 for scan in scans), default=0)
    return record(0x6FF, 0, 6, 0, 0, 22 + len(body), len(scans), most, *bounds, tail=body)


def select_clip_region(number): return record(0x12C, number)
def fill_region(region, brush): return record(0x228, region, brush)
def frame_region(region, brush, width, height): return record(0x429, region, brush, height, width)
def invert_region(region): return record(0x12A, region)
def paint_region(region): return record(0x12B, region)


def entries(colours): return b"".join(u32(colour(rgb)) for rgb in colours)
def create_palette(colours): return record(0xF7, 0x300, len(colours), tail=entries(colours))
def select_palette(number): return record(0x234, number)
def realize_palette(): return record(0x35)
def set_palette_entries(start, colours): return record(0x37, start, len(colours), tail=entries(colours))
def animate_palette(start, colours): return record(0x436, start, len(colours), tail=entries(colours))
def resize_palette(count): return record(0x139, count)


# --- Lines and areas ---

def move_to(x, y): return record(0x214, y, x)
def line_to(x, y): return record(0x213, y, x)
def polyline(*points): return record(0x325, len(points), *flat(points))
def polygon(*points): return record(0x324, len(points), *flat(points))
def poly_polygon(*figures): return record(0x538, len(figures), *map(len, figures), *flat(sum(figures, ())))
def rectangle(left, top, right, bottom): return record(0x41B, bottom, right, top, left)
def ellipse(left, top, right, bottom): return record(0x418, bottom, right, top, left)
def round_rect(left, top, right, bottom, width, height): return record(0x61C, height, width, bottom, right, top, left)
def set_pixel(x, y, rgb): return record(0x41F, tail=u32(colour(rgb)) + u16(y, x))
def flood_fill(x, y, rgb): return record(0x419, tail=u32(colour(rgb)) + u16(y, x))
def ext_flood_fill(x, y, rgb, mode): return record(0x548, mode, tail=u32(colour(rgb)) + u16(y, x))


def _arc(function): return lambda box, start, end: record(function, end[1], end[0], start[1], start[0], *box[::-1])


arc, pie, chord = _arc(0x817), _arc(0x81A), _arc(0x830)


# --- Text ---

def text_out(x, y, text):
    text = text if isinstance(text, bytes) else text.encode("cp1252")
    return record(0x521, len(text), tail=padded(text, 2) + u16(y, x))


OPAQUE, CLIPPED = 2, 4


def ext_text_out(x, y, text, options=0, box=None, dx=()):
    text = text if isinstance(text, bytes) else text.encode("cp1252")
    return record(0xA32, y, x, len(text), options, *(box or ()), tail=padded(text, 2) + u16(*dx))


# --- Bitmaps ---

def pat_blt(x, y, width, height, rop): return record(0x61D, tail=u32(rop) + u16(height, width, y, x))


def bit_blt(bitmap, x, y, width, height, rop, sx=0, sy=0):
    return record(0x922, tail=u32(rop) + u16(sy, sx, height, width, y, x) + b"".join(bitmap))


def stretch_blt(bitmap, x, y, width, height, rop, source):
    sx, sy, source_width, source_height = source
    return record(0xB23, tail=u32(rop) + u16(source_height, source_width, sy, sx, height, width, y,
                                             x) + b"".join(bitmap))


def dib_bit_blt(dib, x, y, width, height, rop, sx=0, sy=0):
    """Without a bitmap there is a word more."""
    if dib is None:
        return record(0x940, tail=u32(rop) + u16(sy, sx, 0, height, width, y, x))
    return record(0x940, tail=u32(rop) + u16(sy, sx, height, width, y, x) + dib.packed)


def dib_stretch_blt(dib, x, y, width, height, rop, source):
    sx, sy, source_width, source_height = source
    return record(0xB41, tail=u32(rop) + u16(source_height, source_width, sy, sx, height, width, y, x) + dib.packed)


def stretch_dib(dib, x, y, width, height, rop, source, usage=0):
    sx, sy, source_width, source_height = source
    return record(0xF43, tail=u32(rop) + u16(usage, source_height, source_width, sy, sx, height, width, y, x)
                  + dib.packed)


def set_dib_to_device(dib, x, y, width, height, sx=0, sy=0, start=0, scans=None, usage=0):
    scans = height if scans is None else scans
    return record(0xD33, usage, scans, start, sy, sx, height, width, y, x, tail=dib.packed)
