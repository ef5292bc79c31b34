"""EMF+ records, in comments of an enhanced metafile: a function for each, and for each object."""

from packed import f32, flat, padded, u16, u32, u8

import emf_maker

VERSION = 0xDBC01002
SHORT, COLOUR = 0x4000, 0x8000  # flags: 16-bit points; a colour in the place of a brush
ALL_UNITS = WORLD, DISPLAY, PIXEL, POINT, INCH, DOCUMENT, MILLIMETRE = range(7)


def record(kind, flags=0, data=b""):
    data = padded(data, 4)
    return u16(kind, flags) + u32(12 + len(data), len(data)) + data


def header(dual=False): return record(0x4001, int(dual), u32(VERSION, 0, 96, 96))
def end(): return record(0x4002)


def metafile(*records, dual=False, others=()):
    """One of these records alone, or with `others` of the enhanced metafile behind them."""
    return emf_maker.metafile(comment(header(dual), *records, end()), *others)


def comment(*records): return emf_maker.comment(b"EMF+" + b"".join(records))


def argb(rgb, alpha=255): return alpha << 24 | rgb


# --- Objects ---

BRUSH, PEN, PATH, REGION, IMAGE, FONT, FORMAT, ATTRIBUTES, CAP = range(1, 10)


def object_(kind, number, data): return record(0x4008, kind << 8 | number, data)


def pieces(kind, number, data, size):
    """An object over several records."""
    parts = [data[at:at + size] for at in range(0, len(data), size)]
    return b"".join(record(0x4008, 0x8000 | kind << 8 | number, u32(len(data)) + part) for part in parts)


def solid_brush(rgb, alpha=255): return u32(VERSION, 0, argb(rgb, alpha))
def hatch_brush(style, fore, back): return u32(VERSION, 1, style, argb(fore), argb(back))


def texture_brush(image_data, wrap=0, transform=None):
    return u32(VERSION, 2, 2 if transform else 0, wrap) + (f32(*transform) if transform else b"") + image_data


def linear_brush(box, start, finish, *, wrap=0, transform=None, blend=None, colours=None):
    """Blend: (position, factor)...; colours: (position, rgb)..."""
    flags = (2 if transform else 0) | (8 if blend else 0) | (4 if colours else 0)
    data = u32(VERSION, 4, flags, wrap) + f32(*box) + u32(argb(start), argb(finish), 0, 0)
    return data + (f32(*transform) if transform else b"") + _blend(blend, colours)


def _blend(blend, colours):
    if blend:
        return u32(len(blend)) + f32(*(each[0] for each in blend)) + f32(*(each[1] for each in blend))
    if colours:
        return u32(len(colours)) + f32(*(each[0] for each in colours)) + u32(*(argb(each[1]) for each in colours))
    return b""


def radial_brush(points, centre_colour, surround, centre, *, wrap=0, path_data=None):
    """To the edge of a polygon, or of a path."""
    data = u32(VERSION, 3, 1 if path_data else 0, wrap, argb(centre_colour)) + f32(*centre)
    data += u32(len(surround), *(argb(rgb) for rgb in surround))
    return data + (u32(len(path_data)) + path_data if path_data else u32(len(points)) + f32(*flat(points)))


# The optional parts of a pen, in the order in which they lie there: name, bit, how it is packed.
_PEN_PARTS = (
    ("transform", 0x1, lambda v: f32(*v)), ("start_cap", 0x2, u32), ("end_cap", 0x4, u32), ("join", 0x8, u32),
    ("miter", 0x10, f32), ("style", 0x20, u32), ("dash_cap", 0x40, u32), ("dash_offset", 0x80, f32),
    ("dashes", 0x100, lambda v: u32(len(v)) + f32(*v)), ("alignment", 0x200, u32),
    ("compound", 0x400, lambda v: u32(len(v)) + f32(*v)), ("custom_start", 0x800, lambda v: u32(len(v)) + v),
    ("custom_end", 0x1000, lambda v: u32(len(v)) + v))


def pen(width, rgb=0, *, unit=WORLD, brush=None, alpha=255, **parts):
    flags, data = 0, b""
    for name, bit, pack in _PEN_PARTS:
        if name in parts:
            flags, data = flags | bit, data + pack(parts[name])
    return u32(VERSION, 0, flags, unit) + f32(width) + data + (brush or solid_brush(rgb, alpha))


def arrow_cap(width, height):
    return u32(VERSION, 1) + f32(width, height, 0) + u32(1, 0, 0, 0) + f32(10, 1) + f32(0, 0, 0, 0)


START, LINE, BEZIER, CLOSED = 0, 1, 3, 0x80


def path(*points, short=False):
    """Of (x, y, type)."""
    places = flat([point[:2] for point in points])
    data = u32(VERSION, len(points), SHORT if short else 0) + (u16 if short else f32)(*places)
    return padded(data + u8(*(point[2] for point in points)), 4)


def polygon_path(*points):
    kinds = [START] + [LINE] * (len(points) - 2) + [LINE | CLOSED]
    return path(*((x, y, kind) for (x, y), kind in zip(points, kinds)))


AND, OR, XOR, EXCLUDE, COMPLEMENT = range(1, 6)


def box_node(x, y, width, height): return u32(0x10000000) + f32(x, y, width, height)
def path_node(data): return u32(0x10000001, len(data)) + data
def empty_node(): return u32(0x10000002)
def infinite_node(): return u32(0x10000003)
def both(operation, left, right): return u32(operation) + left + right
def region(node, children=0): return u32(VERSION, children) + node


RGB24, ARGB32, PARGB32, INDEXED8 = 0x21808, 0x26200A, 0xE200B, 0x30803


def bitmap(rows, pixels=ARGB32):
    """Of rows of (rgb, alpha) from the top."""
    out = b""
    for row in rows:
        line = b""
        for rgb, alpha in row:
            part = [rgb & 255, rgb >> 8 & 255, rgb >> 16]
            if pixels == PARGB32:
                part = [value * alpha // 255 for value in part]
            line += u8(*part) + (b"" if pixels == RGB24 else u8(alpha))
        out += padded(line, 4)
    return u32(VERSION, 1, len(rows[0]), len(rows), len(out) // len(rows), pixels, 0) + out


def indexed_bitmap(rows, palette):
    lines = [padded(bytes(palette.index(pixel) for pixel in row), 4) for row in rows]
    table = u32(0, len(palette), *(argb(rgb) for rgb in palette))
    return u32(VERSION, 1, len(rows[0]), len(rows), len(lines[0]), INDEXED8, 0) + table + b"".join(lines)


def compressed_bitmap(data): return u32(VERSION, 1, 0, 0, 0, 0, 1) + padded(data, 4)
def metafile_image(data, kind=3): return u32(VERSION, 2, kind, len(data)) + padded(data, 4)


def font(size, family, *, unit=WORLD, style=0):
    return u32(VERSION) + f32(size) + u32(unit, style, 0, len(family)) + family.encode("utf-16-le")


def string_format(*, flags=0, alignment=0, line_alignment=0):
    return (u32(VERSION, flags, 0, alignment, line_alignment, 0, 0) + f32(0, 0, 0, 0) + u32(0) + f32(1.03)
            + u32(0, 0, 0))


# --- Filling: a brush is a number, or a colour with "#" made by `ink` ---

class Ink(int):
    """A colour in the place of a brush."""


def ink(rgb, alpha=255): return Ink(argb(rgb, alpha))
def _brush_flag(brush): return COLOUR if isinstance(brush, Ink) else 0
def _numbers(short): return (u16, SHORT) if short else (f32, 0)


def clear(rgb, alpha=255): return record(0x4009, 0, u32(argb(rgb, alpha)))


def fill_rects(brush, *boxes, short=False):
    pack, flag = _numbers(short)
    return record(0x400A, _brush_flag(brush) | flag, u32(brush, len(boxes)) + pack(*flat(boxes)))


def draw_rects(number, *boxes, short=False):
    pack, flag = _numbers(short)
    return record(0x400B, number | flag, u32(len(boxes)) + pack(*flat(boxes)))


def fill_polygon(brush, *points, short=False):
    pack, flag = _numbers(short)
    return record(0x400C, _brush_flag(brush) | flag, u32(brush, len(points)) + pack(*flat(points)))


def draw_lines(number, *points, short=False, closed=False):
    pack, flag = _numbers(short)
    return record(0x400D, number | flag | (0x2000 if closed else 0), u32(len(points)) + pack(*flat(points)))


def relative_lines(number, *points):
    """Each point from the one before it, in 7 bits."""
    out, last = b"", (0, 0)
    for point in points:
        for now, before in zip(point, last):
            step = now - before
            out += u8(step & 0x7F) if -64 <= step < 64 else u8(0x80 | (step >> 8 & 0x7F), step)
        last = point
    return record(0x400D, number | 0x800, u32(len(points)) + padded(out, 4))


def fill_ellipse(brush, *box, short=False):
    pack, flag = _numbers(short)
    return record(0x400E, _brush_flag(brush) | flag, u32(brush) + pack(*box))


def draw_ellipse(number, *box, short=False):
    pack, flag = _numbers(short)
    return record(0x400F, number | flag, pack(*box))


def fill_pie(brush, start, sweep, *box): return record(0x4010, _brush_flag(brush), u32(brush) + f32(start, sweep, *box))
def draw_pie(number, start, sweep, *box): return record(0x4011, number, f32(start, sweep, *box))
def draw_arc(number, start, sweep, *box): return record(0x4012, number, f32(start, sweep, *box))
def fill_region(brush, number): return record(0x4013, number | _brush_flag(brush), u32(brush))
def fill_path(brush, number): return record(0x4014, number | _brush_flag(brush), u32(brush))
def draw_path(pen_number, number): return record(0x4015, number, u32(pen_number))


def fill_closed_curve(brush, tension, *points, winding=False):
    return record(0x4016, _brush_flag(brush) | (0x2000 if winding else 0),
                  u32(brush) + f32(tension) + u32(len(points)) + f32(*flat(points)))


def draw_closed_curve(number, tension, *points):
    return record(0x4017, number, f32(tension) + u32(len(points)) + f32(*flat(points)))


def draw_curve(number, tension, *points, offset=0, segments=None):
    return record(0x4018, number, f32(tension) + u32(offset, segments or len(points) - 1, len(points))
                  + f32(*flat(points)))


def draw_beziers(number, *points, short=False):
    pack, flag = _numbers(short)
    return record(0x4019, number | flag, u32(len(points)) + pack(*flat(points)))


# --- Images and text ---

def draw_image(number, source, box, unit=PIXEL, short=False):
    pack, flag = _numbers(short)
    return record(0x401A, number | flag, u32(0xFFFFFFFF, unit) + f32(*source) + pack(*box))


def draw_image_points(number, source, corners, unit=PIXEL, short=False):
    pack, flag = _numbers(short)
    return record(0x401B, number | flag, u32(0xFFFFFFFF, unit) + f32(*source) + u32(3) + pack(*flat(corners)))


def draw_string(number, brush, text, box, form=0xFFFFFFFF):
    return record(0x401C, number | _brush_flag(brush),
                  u32(brush, form, len(text)) + f32(*box) + text.encode("utf-16-le"))


def draw_driver_string(number, brush, text, places, transform=None, options=1):
    """Characters (option 1), each at a place on the base line."""
    glyphs = padded(text.encode("utf-16-le"), 4)
    return record(0x4036, number | _brush_flag(brush), u32(brush, options, int(transform is not None), len(text))
                  + glyphs + f32(*flat(places)) + (f32(*transform) if transform else b""))


# --- State ---

def get_dc(): return record(0x4004)
def set_rendering_origin(x, y): return record(0x401D, 0, u32(x, y))
def set_anti_alias_mode(on): return record(0x401E, 0x0B if on else 0)
def set_compositing_mode(mode): return record(0x4023, mode)
def save(number): return record(0x4025, 0, u32(number))
def restore(number): return record(0x4026, 0, u32(number))
def begin_container(number, to, source, unit=PIXEL): return record(0x4027, unit, f32(*to, *source) + u32(number))
def begin_plain_container(number): return record(0x4028, 0, u32(number))
def end_container(number): return record(0x4029, 0, u32(number))
def set_world_transform(*matrix): return record(0x402A, 0, f32(*matrix))
def reset_world_transform(): return record(0x402B)
def _order(after): return 0x2000 if after else 0
def multiply_world_transform(*matrix, after=False): return record(0x402C, _order(after), f32(*matrix))
def translate_world_transform(x, y, after=False): return record(0x402D, _order(after), f32(x, y))
def scale_world_transform(x, y, after=False): return record(0x402E, _order(after), f32(x, y))
def rotate_world_transform(degrees, after=False): return record(0x402F, _order(after), f32(degrees))
def set_page_transform(unit, scale=1): return record(0x4030, unit, f32(scale))


REPLACE, CLIP_AND, CLIP_OR, CLIP_XOR, CLIP_EXCLUDE, CLIP_COMPLEMENT = range(6)


def reset_clip(): return record(0x4031)
def set_clip_rect(mode, *box): return record(0x4032, mode << 8, f32(*box))
def set_clip_path(mode, number): return record(0x4033, mode << 8 | number)
def set_clip_region(mode, number): return record(0x4034, mode << 8 | number)
def offset_clip(x, y): return record(0x4035, 0, f32(x, y))
