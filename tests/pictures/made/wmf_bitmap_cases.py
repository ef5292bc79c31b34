"""Bitmaps of Windows metafiles: depths, parts, patterns and raster operations."""

import bitmaps
from bitmaps import FORMS, QUARTERS, dib, old_bitmap
from expectations import box, case, look, share
from packed import BLUE, GREEN, RED, YELLOW
from raster import OPERATIONS, SOURCE_ROWS, SRCCOPY, WITHOUT_SOURCE, base_boxes, expected, mix3
from wmf_maker import *

WHOLE = (0, 0, 16, 16)
SEEN = look("48,48 red; 144,48 green; 48,144 blue; 144,144 yellow")
FRAME = box(32, 32, 160, 160)


def stretched(bitmap, source=WHOLE):
    return metafile(stretch_dib(bitmap, 32, 32, 128, 128, SRCCOPY, source))


DEPTHS = [
    *(case(name, stretched(form), SEEN, FRAME) for name, form in FORMS.items()),
    case("depth_1", stretched(dib(bitmaps.blocks([[RED, BLUE]], 8), 1), (0, 0, 16, 8)), look("48,96 red; 144,96 blue"),
         FRAME),
    case("core_1", stretched(dib(bitmaps.blocks([[RED, BLUE]], 8), 1, core=True), (0, 0, 16, 8)),
         look("48,96 red; 144,96 blue"), FRAME),
    case("palette_indexes", metafile(create_palette((RED, GREEN, BLUE, YELLOW)), select_palette(0), realize_palette(),
                                     stretch_dib(dib(QUARTERS, 8, indexes=(0, 1, 2, 3)), 32, 32, 128, 128, SRCCOPY,
                                                 WHOLE,
                                                 usage=1)), SEEN),
]

QUARTER = dib(QUARTERS, 24)
ONE = box(32, 32, 160, 160)
PLACES = [
    case("dib_bit_blt", metafile(dib_bit_blt(QUARTER, 32, 32, 16, 16, SRCCOPY)), box(32, 32, 48, 48),
         look("36,36 red; 44,36 green; 36,44 blue; 44,44 yellow")),
    case("dib_bit_blt_of_part", metafile(dib_bit_blt(QUARTER, 32, 32, 8, 8, SRCCOPY, 8, 0)), box(32, 32, 40, 40),
         look("36,36 green")),
    case("dib_stretch_blt", metafile(dib_stretch_blt(QUARTER, 32, 32, 128, 128, SRCCOPY, WHOLE)), SEEN, ONE),
    case("dib_stretch_blt_of_part", metafile(dib_stretch_blt(QUARTER, 32, 32, 128, 128, SRCCOPY, (0, 8, 8, 8))),
         look("96,96 blue"), ONE),
    case("stretch_dib_of_part_counts_from_below", stretched(QUARTER, (0, 0, 8, 8)), look("96,96 blue"), ONE),
    case("stretch_dib_of_part_top_down", stretched(dib(QUARTERS, 24, top_down=True), (8, 0, 8, 8)), look("96,96 green"),
         ONE),
    case("mirrored_across", metafile(stretch_dib(QUARTER, 160, 32, -128, 128, SRCCOPY, WHOLE)),
         look("48,48 green; 144,48 red; 48,144 yellow; 144,144 blue"), ONE),
    case("mirrored_down", metafile(stretch_dib(QUARTER, 32, 160, 128, -128, SRCCOPY, WHOLE)),
         look("48,48 blue; 144,48 yellow; 48,144 red; 144,144 green"), ONE),
    case("set_dib_to_device", metafile(set_dib_to_device(QUARTER, 32, 32, 16, 16)), box(32, 32, 48, 48),
         look("36,36 red; 44,36 green; 36,44 blue; 44,44 yellow")),
    case("set_dib_to_device_in_part", metafile(set_dib_to_device(QUARTER, 32, 32, 8, 8, 0, 0, 0, 16)),
         box(32, 32, 40, 40), look("36,36 blue")),
    case("bitmap_is_clipped", metafile(intersect_clip(32, 32, 96, 160),
                                       stretch_dib(QUARTER, 32, 32, 128, 128, SRCCOPY, WHOLE)), box(32, 32, 96, 160)),
    case("bitmap_off_the_edge", metafile(stretch_dib(QUARTER, -64, -64, 128, 128, SRCCOPY, WHOLE)),
         look("30,30 yellow"),
         box(0, 0, 64, 64)),
]

HALVES = [[0] * 8 + [1] * 8] * 16
OLD = [
    case("old_bit_blt", metafile(set_text_color(RED), set_bk_color(BLUE),
                                 bit_blt(old_bitmap(HALVES), 32, 32, 16, 16, SRCCOPY)), look("36,40 red; 44,40 blue")),
    case("old_stretch_blt", metafile(set_text_color(RED), set_bk_color(BLUE), stretch_blt(
        old_bitmap(HALVES), 32, 32, 128, 128, SRCCOPY, WHOLE)), look("48,96 red; 144,96 blue"), ONE),
]


def patterned(brush, *before):
    return metafile(create_pen(5, 0, 0), select(0), *before, brush, select(1), rectangle(32, 32, 160, 160))


def half(colour):
    return share((40, 40, 152, 152), 0.4, 0.6, colour)


PATTERNS = [
    case("dib_pattern", patterned(create_dib_brush(QUARTER)), FRAME,
         *(share((40, 40, 152, 152), 0.18, 0.32, colour) for colour in (RED, GREEN, BLUE, YELLOW))),
    case("dib_pattern_of_one_bit", patterned(create_dib_brush(dib(bitmaps.blocks([[RED, BLUE]], 4), 1))), half(RED),
         half(BLUE)),
    case("pattern_brush", patterned(create_pattern_brush(old_bitmap([[0] * 4 + [1] * 4] * 8)), set_text_color(RED),
                                    set_bk_color(BLUE)), half(RED), half(BLUE)),
]


def base():
    """Four columns on the page, by a brush each, and a yellow brush that is selected then."""
    for at, (left, top, right, bottom, rgb) in enumerate(base_boxes()):
        yield from (create_brush(0, rgb), select(at + 1), rectangle(left, top, right, bottom))
    yield from (create_brush(0, YELLOW), select(5))


SOURCE = dib(SOURCE_ROWS, 24)


def mixed(operation):
    return look(expected(lambda source, destination: mix3(operation, YELLOW, source, destination)))


RASTER = [
    *(case(f"stretch_dib_{name}", metafile(create_pen(5, 0, 0), select(0), *base(), stretch_dib(
        SOURCE, 32, 32, 128, 128, operation, (0, 0, 8,
                                              32))), mixed(operation)) for name, operation in OPERATIONS.items()),
    *(case(f"pat_blt_{name}", metafile(create_pen(5, 0, 0), select(0), *base(), pat_blt(
        32, 32, 128, 128, OPERATIONS[name])), mixed(OPERATIONS[name])) for name in WITHOUT_SOURCE),
    *(case(f"dib_bit_blt_{name}_without_bitmap", metafile(create_pen(5, 0, 0), select(0), *base(), dib_bit_blt(
        None, 32, 32, 128, 128, OPERATIONS[name])), mixed(OPERATIONS[name])) for name in WITHOUT_SOURCE),
]

CASES = [*DEPTHS, *PLACES, *OLD, *PATTERNS, *RASTER]
