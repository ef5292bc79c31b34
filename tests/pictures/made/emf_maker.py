"""Enhanced metafiles: a function for each record, and the file around them."""

from packed import colour, f32, flat, padded, u16, u32, u8

SIZE = 192  # of a picture, in pixels of a device with 96 to the inch


def record(kind, *parameters, tail=b""):
    body = u32(*parameters) + padded(tail, 4)
    return u32(kind, 8 + len(body)) + body


def metafile(*records, size=SIZE, bounds=None, frame=None, handles=16, description="", device=1920, millimetres=508):
    end = record(14, 0, 0, 20)
    text = description.encode("utf-16-le") + (b"\0\0\0\0" if description else b"")
    frame = frame or (0, 0, size * 2540 // 96, size * 2540 // 96)
    length = 108 + len(padded(text, 4))
    body = b"".join(records) + end
    head = u32(1, length, *(bounds or (0, 0, size - 1, size - 1)), *frame, 0x464D4520, 0x10000, length + len(body),
               len(records) + 2)
    head += u16(handles, 0) + u32(len(text) // 2, 108 if text else 0, 0, device, device, millimetres, millimetres)
    head += u32(0, 0, 0, millimetres * 1000, millimetres * 1000)
    return head + padded(text, 4) + body


# --- State ---

def set_window_ext(x, y): return record(9, x, y)
def set_window_org(x, y): return record(10, x, y)
def set_viewport_ext(x, y): return record(11, x, y)
def set_viewport_org(x, y): return record(12, x, y)
def set_brush_org(x, y): return record(13, x, y)
def set_mapper_flags(flags): return record(16, flags)
def set_map_mode(mode): return record(17, mode)
def set_bk_mode(mode): return record(18, mode)
def set_poly_fill_mode(mode): return record(19, mode)
def set_rop2(mode): return record(20, mode)
def set_stretch_blt_mode(mode): return record(21, mode)
def set_text_align(mode): return record(22, mode)
def set_text_color(rgb): return record(24, colour(rgb))
def set_bk_color(rgb): return record(25, colour(rgb))
def scale_viewport_ext(xn, xd, yn, yd): return record(31, xn, xd, yn, yd)
def scale_window_ext(xn, xd, yn, yd): return record(32, xn, xd, yn, yd)
def save_dc(): return record(33)
def restore_dc(level): return record(34, level)
def set_world_transform(*matrix): return record(35, tail=f32(*matrix))
def modify_world_transform(mode, *matrix): return record(36, tail=f32(*(matrix or (1, 0, 0, 1, 0, 0))) + u32(mode))
def set_arc_direction(direction): return record(57, direction)  # 1 counterclockwise, 2 clockwise
def set_miter_limit(limit): return record(58, limit)
def set_icm_mode(mode): return record(98, mode)
def set_layout(mode): return record(115, mode)
def set_text_justification(extra, breaks): return record(120, extra, breaks)
def comment(data): return record(70, len(data), tail=data)
def unknown(kind, data=b""): return record(kind, tail=data)


# --- Objects ---

STOCK = 0x80000000
WHITE_BRUSH, LTGRAY_BRUSH, GRAY_BRUSH, DKGRAY_BRUSH, BLACK_BRUSH, NULL_BRUSH, WHITE_PEN, BLACK_PEN, NULL_PEN = range(
    STOCK, STOCK + 9)
DC_BRUSH, DC_PEN = STOCK + 18, STOCK + 19


def select(number): return record(37, number)
def delete(number): return record(40, number)
def create_pen(number, style, width, rgb): return record(38, number, style, width, 0, colour(rgb))
def create_brush(number, style, rgb, hatch=0): return record(39, number, style, colour(rgb), hatch)


def ext_create_pen(number, style, width, rgb, *, brush_style=0, hatch=0, dashes=(), dib=None):
    head = 52 + 4 * len(dashes)
    places = (head, len(dib.head), head + len(dib.head), len(dib.bits)) if dib else (0, 0, 0, 0)
    return record(95, number, *places, style, width, brush_style, colour(rgb), hatch, len(dashes), *dashes,
                  tail=dib.packed if dib else b"")


def _bitmap_brush(kind):
    return lambda number, dib, usage=0: record(kind, number, usage, 32, len(dib.head), 32 + len(dib.head),
                                               len(dib.bits),
                                               tail=dib.packed)


create_mono_brush, create_dib_brush = _bitmap_brush(93), _bitmap_brush(94)


def create_font(number, height, face, *, width=0, escapement=0, weight=400, italic=0, underline=0, strike_out=0,
                charset=0, pitch=0):
    name = face.encode("utf-16-le").ljust(64, b"\0")
    return record(82, number, height, width, escapement, escapement, weight,
                  tail=u8(italic, underline, strike_out, charset, 0, 0, 0, pitch) + name + bytes(320 - 92))


def entries(colours): return b"".join(u32(colour(rgb)) for rgb in colours)
def create_palette(number, colours): return record(49, number, tail=u16(0x300, len(colours)) + entries(colours))
def select_palette(number): return record(48, number)
def set_palette_entries(number, start, colours): return record(50, number, start, len(colours), tail=entries(colours))
def resize_palette(number, count): return record(51, number, count)
def realize_palette(): return record(52)


# --- Clips and regions ---

def offset_clip(x, y): return record(26, x, y)
def set_meta_region(): return record(28)
def exclude_clip(*box): return record(29, *box)
def intersect_clip(*box): return record(30, *box)


def region_data(*boxes):
    bounds = [min(b[0] for b in boxes), min(b[1] for b in boxes), max(b[2] for b in boxes),
              max(b[3] for b in boxes)] if boxes else [0] * 4
    return u32(32, 1, len(boxes), 16 * len(boxes), *bounds, *flat(boxes))


AND, OR, XOR, DIFF, COPY = range(1, 6)


def ext_select_clip_region(mode, *boxes):
    """Without boxes: the clip goes."""
    data = region_data(*boxes) if boxes else b""
    return record(75, len(data), mode, tail=data)


def _region(kind):
    def make(*boxes, before=()):
        data = region_data(*boxes)
        return record(kind, 0, 0, SIZE, SIZE, len(data), *before, tail=data)
    return make


_fill, _frame, invert_region, paint_region = map(_region, (71, 72, 73, 74))
def fill_region(brush, *boxes): return _fill(*boxes, before=(brush,))
def frame_region(brush, width, height, *boxes): return _frame(*boxes, before=(brush, width, height))


# --- Lines and areas ---

BOUNDS = (0, 0, SIZE - 1, SIZE - 1)


def _points(kind, short_kind):
    """Both forms of a record of points: with `short`, of 16 bits."""
    def make(*points, short=False):
        pack, number = (u16, short_kind) if short else (u32, kind)
        return record(number, *BOUNDS, len(points), tail=pack(*flat(points)))
    return make


poly_bezier, polygon, polyline, poly_bezier_to, polyline_to = map(
    _points, (2, 3, 4, 5, 6), (85, 86, 87, 88, 89))


def _figures(kind, short_kind):
    def make(*figures, short=False):
        points = flat(sum(map(tuple, figures), ()))
        return record(short_kind if short else kind, *BOUNDS, len(figures), len(points) // 2, *map(len, figures),
                      tail=(u16 if short else u32)(*points))
    return make


poly_polyline, poly_polygon = _figures(7, 90), _figures(8, 91)

CLOSE, LINE, BEZIER, MOVE = 1, 2, 4, 6


def poly_draw(*points, short=False):
    """Of (x, y, type)."""
    places = flat([point[:2] for point in points])
    return record(92 if short else 56, *BOUNDS, len(points),
                  tail=(u16 if short else u32)(*places) + u8(*(point[2] for point in points)))


def set_pixel(x, y, rgb): return record(15, x, y, colour(rgb))
def move_to(x, y): return record(27, x, y)
def line_to(x, y): return record(54, x, y)
def angle_arc(x, y, radius, start, sweep): return record(41, x, y, radius, tail=f32(start, sweep))
def ellipse(*box): return record(42, *box)
def rectangle(*box): return record(43, *box)
def round_rect(left, top, right, bottom, width, height): return record(44, left, top, right, bottom, width, height)
def _arc(kind): return lambda box, start, end: record(kind, *box, *start, *end)


arc, chord, pie, arc_to = map(_arc, (45, 46, 47, 55))
def ext_flood_fill(x, y, rgb, mode): return record(53, x, y, colour(rgb), mode)


# --- Paths ---

def begin_path(): return record(59)
def end_path(): return record(60)
def close_figure(): return record(61)
def fill_path(): return record(62, *BOUNDS)
def stroke_and_fill_path(): return record(63, *BOUNDS)
def stroke_path(): return record(64, *BOUNDS)
def flatten_path(): return record(65)
def widen_path(): return record(66)
def select_clip_path(mode): return record(67, mode)
def abort_path(): return record(68)


# --- Text ---

OPAQUE, CLIPPED, GLYPHS, RTL, SMALL, NO_RECT, PDY = 2, 4, 0x10, 0x80, 0x200, 0x100, 0x2000


def _texts(kind, wide, texts, counted):
    """One or more EMRTEXT records; their strings and distances lie behind them."""
    start = 8 + 16 + 12 + (4 if counted else 0)
    at = start + 40 * len(texts)
    heads = tails = b""
    for x, y, text, options, box, dx in texts:
        data = text if isinstance(text, bytes) else text.encode("utf-16-le" if wide else "cp1252")
        distances = u32(*(dx or ()))
        string = padded(data, 4)
        heads += u32(x, y, len(data) // (2 if wide else 1), at, options, *(box or (0, 0, -1, -1)),
                     at + len(string) if distances else 0)
        tails += string + distances
        at += len(string) + len(distances)
    count = u32(len(texts)) if counted else b""
    return record(kind, *BOUNDS, 1, tail=f32(1, 1) + count + heads + tails)


def ext_text_out(x, y, text, options=0, box=None, dx=None, wide=True):
    return _texts(84 if wide else 83, wide, [(x, y, text, options, box, dx)], False)


def poly_text_out(*texts, wide=True):
    """Of (x, y, text), or with options, box and distances behind."""
    return _texts(97 if wide else 96, wide, [(*each, *(0, None, None)[len(each) - 3:]) for each in texts], True)


def small_text_out(x, y, text, options=NO_RECT, box=None):
    data = text.encode("cp1252" if options & SMALL else "utf-16-le")
    return record(108, x, y, len(text), options, 1, tail=f32(1, 1) + u32(*(box or ())) + data)


# --- Bitmaps ---

IDENTITY = (1, 0, 0, 1, 0, 0)


def _bitmap_places(before, dib):
    """Offsets and lengths of header and bits, behind a record's own `before` bytes."""
    return (before, len(dib.head), before + len(dib.head), len(dib.bits)) if dib else (0, 0, 0, 0)


def _packed(dib): return dib.packed if dib else b""


def bit_blt(dib, x, y, width, height, rop, sx=0, sy=0, transform=IDENTITY, usage=0):
    return record(76, *BOUNDS, x, y, width, height, rop, sx, sy,
                  tail=f32(*transform) + u32(0xFFFFFF, usage, *_bitmap_places(100, dib)) + _packed(dib))


def _stretched(kind):
    def make(dib, x, y, width, height, rop, source, transform=IDENTITY, usage=0):
        sx, sy, source_width, source_height = source
        return record(kind, *BOUNDS, x, y, width, height, rop, sx, sy,
                      tail=f32(*transform) + u32(0xFFFFFF, usage, *_bitmap_places(108, dib), source_width,
                                                 source_height) + _packed(dib))
    return make


stretch_blt, _alpha, _transparent = map(_stretched, (77, 114, 116))


def alpha_blend(dib, x, y, width, height, source, alpha=255, has_alpha=True):
    return _alpha(dib, x, y, width, height, alpha << 16 | (0x01000000 if has_alpha else 0), source)


def transparent_blt(dib, x, y, width, height, source, key):
    return _transparent(dib, x, y, width, height, colour(key), source)


def mask_blt(dib, mask, x, y, width, height, foreground, background, sx=0, sy=0, mx=0, my=0):
    """Raster operations for the 1s and the 0s of the mask."""
    places = _bitmap_places(128, dib)
    return record(78, *BOUNDS, x, y, width, height, (foreground & 0xFFFFFF) | (background << 8 & 0xFF000000), sx, sy,
                  tail=f32(*IDENTITY) + u32(0xFFFFFF, 0, *places, mx, my, 0)
                  + u32(*_bitmap_places(128 + len(dib.packed), mask)) + dib.packed + mask.packed)


def plg_blt(dib, corners, source, mask=None):
    """Corners: upper left, upper right, lower left."""
    sx, sy, width, height = source
    return record(79, *BOUNDS, *flat(corners), sx, sy, width, height,
                  tail=f32(*IDENTITY) + u32(0xFFFFFF, 0, *_bitmap_places(140, dib), 0, 0, 0)
                  + u32(*_bitmap_places(140 + len(dib.packed), mask)) + dib.packed + _packed(mask))


def set_dib_to_device(dib, x, y, width, height, sx=0, sy=0, start=0, scans=None, usage=0):
    return record(80, *BOUNDS, x, y, sx, sy, width, height, *_bitmap_places(76, dib), usage, start,
                  height if scans is None else scans, tail=dib.packed)


def stretch_dib(dib, x, y, width, height, rop, source, usage=0):
    return record(81, *BOUNDS, x, y, *source, *_bitmap_places(80, dib), usage, rop, width, height, tail=_packed(dib))


# --- Gradients ---

def gradient(mode, vertices, shapes):
    """Vertices: (x, y, rgb). Mode 0: across, 1: down, of pairs; 2: triangles."""
    corners = b"".join(u32(x, y) + u16(*((rgb >> shift & 255) << 8 for shift in (16, 8, 0)), 0)
                       for x, y, rgb in vertices)
    faces = b"".join(u32(*shape) for shape in shapes)
    filler = bytes(4 * len(shapes)) if mode < 2 else b""
    return record(118, *BOUNDS, len(vertices), len(shapes), mode, tail=corners + faces + filler)
