"""Bitmaps, their mixing, and gradients of enhanced metafiles."""

from bitmaps import FORMS, QUARTERS, alpha_dib, blocks, dib
from emf_maker import *
from expectations import box, case, changes_along, look
from packed import BLACK, BLUE, CYAN, GREEN, MAGENTA, RED, WHITE, YELLOW
from raster import OPERATIONS, SOURCE_ROWS, SRCCOPY, WITHOUT_SOURCE, base_boxes, expected, mix3

WHOLE = (0, 0, 16, 16)
TO = (32, 32, 128, 128)
SEEN = look("48,48 red; 144,48 green; 48,144 blue; 144,144 yellow")
FRAME = box(32, 32, 160, 160)
QUARTER = dib(QUARTERS, 24)
SMALL_SEEN = look("36,36 red; 44,36 green; 36,44 blue; 44,44 yellow")

DEPTHS = [
    *(case(f"stretch_dib_{name}", metafile(stretch_dib(form, *TO, SRCCOPY, WHOLE)), SEEN, FRAME) for name,
      form in FORMS.items()),
    *(case(f"stretch_blt_{name}", metafile(stretch_blt(form, *TO, SRCCOPY, WHOLE)), SEEN, FRAME) for name,
      form in FORMS.items()),
    case("stretch_dib_depth_1", metafile(stretch_dib(dib(blocks([[RED, BLUE]], 8), 1), *TO, SRCCOPY, (0, 0, 16, 8))),
         look("48,96 red; 144,96 blue"), FRAME),
    case("palette_indexes", metafile(create_palette(1, (RED, GREEN, BLUE, YELLOW)), select_palette(1),
                                     realize_palette(), stretch_dib(
        dib(QUARTERS, 8, indexes=(0, 1, 2, 3)), *TO, SRCCOPY, WHOLE, usage=1)), SEEN),
]


def grounded(*records):
    """On a cyan ground."""
    return metafile(select(NULL_PEN), create_brush(1, 0, CYAN), select(1), rectangle(20, 20, 172, 172), *records)


LEFT_MASK = dib([[WHITE] * 8 + [BLACK] * 8] * 16, 1, palette=[BLACK, WHITE])
HALF_CLEAR = alpha_dib([[(RED, 255)] * 8 + [(BLUE, 128)] * 8] * 16)
PLACES = [
    case("bit_blt", metafile(bit_blt(QUARTER, 32, 32, 16, 16, SRCCOPY)), box(32, 32, 48, 48), SMALL_SEEN),
    case("bit_blt_of_part", metafile(bit_blt(QUARTER, 32, 32, 8, 8, SRCCOPY, 8, 0)), box(32, 32, 40, 40),
         look("36,36 green")),
    case("stretch_blt_of_part", metafile(stretch_blt(QUARTER, *TO, SRCCOPY, (0, 8, 8, 8))), look("96,96 blue"), FRAME),
    case("stretch_dib_of_part_counts_from_below", metafile(stretch_dib(QUARTER, *TO, SRCCOPY, (0, 0, 8, 8))),
         look("96,96 blue"), FRAME),
    case("stretch_dib_of_part_top_down", metafile(stretch_dib(dib(QUARTERS, 24, top_down=True), *TO, SRCCOPY,
                                                              (8, 0, 8, 8))),
         look("96,96 green"), FRAME),
    case("mirrored_across", metafile(stretch_dib(QUARTER, 160, 32, -128, 128, SRCCOPY, WHOLE)),
         look("48,48 green; 144,48 red; 48,144 yellow; 144,144 blue"), FRAME),
    case("mirrored_down", metafile(stretch_dib(QUARTER, 32, 160, 128, -128, SRCCOPY, WHOLE)),
         look("48,48 blue; 144,48 yellow; 48,144 red; 144,144 green"), FRAME),
    case("set_dib_to_device", metafile(set_dib_to_device(QUARTER, 32, 32, 16, 16)), box(32, 32, 48, 48), SMALL_SEEN),
    case("set_dib_to_device_in_part", metafile(set_dib_to_device(QUARTER, 32, 32, 8, 8, 0, 0, 0, 16)),
         box(32, 32, 40, 40), look("36,36 blue")),
    case("bitmap_turned", metafile(set_world_transform(0, 1, -1, 0, 192, 0), stretch_dib(QUARTER, *TO, SRCCOPY, WHOLE)),
         look("144,48 red; 144,144 green; 48,48 blue; 48,144 yellow"), FRAME),
    case("bitmap_clipped", metafile(intersect_clip(32, 32, 96, 160), stretch_dib(QUARTER, *TO, SRCCOPY, WHOLE)),
         box(32, 32, 96, 160)),
    case("bitmap_off_the_edge", metafile(stretch_dib(QUARTER, -64, -64, 128, 128, SRCCOPY, WHOLE)),
         look("30,30 yellow"), box(0, 0, 64, 64)),
    case("plg_blt_upright", metafile(plg_blt(QUARTER, ((32, 32), (160, 32), (32, 160)), WHOLE)), SEEN, FRAME),
    case("plg_blt_sheared", metafile(plg_blt(QUARTER, ((60, 40), (160, 40), (20, 120)), WHOLE)),
         look("75,60 red; 125,60 green; 55,100 blue; 105,100 yellow; 30,50 white"), box(20, 40, 160, 120, 3)),
    case("plg_blt_masked", grounded(plg_blt(QUARTER, ((32, 32), (160, 32), (32, 160)), WHOLE, LEFT_MASK)),
         look("48,48 red; 144,48 cyan; 48,144 blue; 144,144 cyan")),
    case("mask_blt", grounded(mask_blt(QUARTER, LEFT_MASK, 32, 32, 16, 16, SRCCOPY, 0xAA0029)),
         look("36,36 red; 36,44 blue; 44,36 cyan; 44,44 cyan")),
    case("mask_blt_with_pattern", grounded(create_brush(2, 0, MAGENTA), select(2), mask_blt(
        QUARTER, LEFT_MASK, 32, 32, 16, 16, SRCCOPY, OPERATIONS["PATCOPY"])),
         look("36,36 red; 36,44 blue; 44,36 magenta; 44,44 magenta")),
    case("transparent_blt", grounded(transparent_blt(QUARTER, *TO, WHOLE, GREEN)),
         look("40,40 red; 150,40 cyan; 40,150 blue; 150,150 yellow")),
    case("alpha_blend_of_all", grounded(alpha_blend(QUARTER, *TO, WHOLE, 128, False)),
         look("48,48 808080; 48,144 0080FF; 144,48 00FF80")),
    case("alpha_blend_by_pixel", grounded(alpha_blend(HALF_CLEAR, *TO, WHOLE)), look("48,96 red; 144,96 007FFF")),
    case("alpha_blend_by_both", grounded(alpha_blend(HALF_CLEAR, *TO, WHOLE, 128)),
         look("48,96 808080; 144,96 00BFFF")),
    case("mono_source_has_its_colours", metafile(set_text_color(RED), set_bk_color(BLUE), bit_blt(dib(
        blocks([[BLACK, WHITE]], 8), 1, palette=[BLACK, WHITE]), 32, 32, 16, 8, SRCCOPY)), look("36,36 black")),
]


def base():
    """Four columns on the page, by a brush each, and a yellow brush that is selected then."""
    yield select(NULL_PEN)
    for at, (left, top, right, bottom, rgb) in enumerate(base_boxes()):
        yield from (create_brush(at + 1, 0, rgb), select(at + 1), rectangle(left, top, right, bottom))
    yield from (create_brush(5, 0, YELLOW), select(5))


SOURCE = dib(SOURCE_ROWS, 24)
SOURCE_BOX = (0, 0, 8, 32)


def mixed(operation):
    return look(expected(lambda source, destination: mix3(operation, YELLOW, source, destination)))


LARGE_SOURCE = dib([[row[0]] * 128 for row in SOURCE_ROWS for _ in range(4)], 24)
RASTER = [
    *(case(f"stretch_dib_{name}", metafile(*base(), stretch_dib(SOURCE, *TO, operation, SOURCE_BOX)), mixed(operation))
      for name, operation in OPERATIONS.items()),
    *(case(f"stretch_blt_{name}", metafile(*base(), stretch_blt(SOURCE, *TO, operation, SOURCE_BOX)), mixed(operation))
      for name, operation in OPERATIONS.items()),
    *(case(f"bit_blt_{name}", metafile(*base(), bit_blt(LARGE_SOURCE, *TO, operation)), mixed(operation))
      for name, operation in OPERATIONS.items()),
    *(case(f"bit_blt_{name}_without_bitmap", metafile(*base(), bit_blt(None, *TO, OPERATIONS[name])),
           mixed(OPERATIONS[name]))
      for name in WITHOUT_SOURCE),
]

GRADIENTS = [
    case("gradient_across", metafile(gradient(0, [(32, 32, RED), (160, 160, BLUE)], [(0, 1)])), FRAME,
         look("34,96 FB0004; 96,40 800080; 96,150 800080; 157,96 0400FB", 16)),
    case("gradient_down", metafile(gradient(1, [(32, 32, RED), (160, 160, BLUE)], [(0, 1)])), FRAME,
         look("96,34 FB0004; 40,96 800080; 150,96 800080; 96,157 0400FB", 16)),
    case("gradient_of_two_boxes", metafile(gradient(0, [(32, 32, RED), (96, 160, BLUE), (96, 32, BLACK),
                                                        (160, 160, GREEN)],
                                                    [(0, 1), (2, 3)])),
         FRAME, look("34,96 FB0004; 64,96 800080; 128,96 008000", 16)),
    case("gradient_turned_box", metafile(gradient(0, [(160, 160, BLUE), (32, 32, RED)], [(0, 1)])), FRAME,
         look("34,96 FB0004; 157,96 0400FB", 16)),
    case("gradient_triangle", metafile(gradient(2, [(32, 32, RED), (160, 32, GREEN), (32, 160, BLUE)], [(0, 1, 2)])),
         box(32, 32, 160, 160, 4), look("150,150 white; 40,36 red; 146,36 green; 36,146 blue", 80)),
    case("gradient_triangle_mixes", metafile(gradient(2, [(32, 32, RED), (160, 32, GREEN), (32, 160, BLUE)],
                                                      [(0, 1, 2)])),
         changes_along("r", (40, 40), (60, 60), (80, 80)), changes_along("b", (40, 50), (40, 90), (40, 130))),
    case("gradient_of_one_colour", metafile(gradient(2, [(32, 32, RED), (160, 32, RED), (32, 160, RED)], [(0, 1, 2)])),
         look("60,60 red; 90,90 red; 150,150 white", 16)),
]

CASES = [*DEPTHS, *PLACES, *RASTER, *GRADIENTS]
