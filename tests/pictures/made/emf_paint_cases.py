"""Pens, brushes, objects, levels and mixing of enhanced metafiles."""

import bitmaps
from bitmaps import QUARTERS, dib
from emf_cases import drawn, filled
from emf_maker import *
from expectations import box, case, column, empty, look, row, share, slants
from packed import BLACK, BLUE, CYAN, GREEN, RED, WHITE, YELLOW
from raster import MODES, base_boxes, expected, mix2

GEOMETRIC, FLAT, SQUARE, MITER, BEVEL = 0x10000, 0x200, 0x100, 0x2000, 0x1000


def line(style, *, width=20, **rest):
    """From (50, 96) to (140, 96)."""
    return metafile(ext_create_pen(1, style, width, RED, **rest), select(1), move_to(50, 96), line_to(140, 96))


def corner(style, *before):
    return metafile(ext_create_pen(1, GEOMETRIC | style, 40, RED), select(1), select(NULL_BRUSH), *before,
                    begin_path(), move_to(40, 150), line_to(40, 40), line_to(150, 40), end_path(), stroke_path())


PENS = [
    *(case(f"pen_width_{width}", drawn(RED, move_to(96, 20), line_to(96, 170), width=width), row(96, 1),
           share((96 - width // 2 + 1, 90, 96 + width // 2 - 1, 100), 1)) for width in (4, 9, 16, 40)),
    case("pen_of_no_width_is_a_pixel", drawn(RED, move_to(20, 50), line_to(170, 50), width=0), box(20, 49, 170, 52)),
    case("pen_of_no_width_stays_a_pixel", drawn(RED, set_world_transform(8, 0, 0, 8, 0, 0), move_to(3, 6),
                                                line_to(20, 6),
                                                width=0), box(24, 47, 160, 50)),
    case("null_pen", drawn(RED, move_to(20, 50), line_to(170, 50), style=5), empty),
    *(case(f"pen_style_{name}", drawn(BLACK, set_bk_mode(1), move_to(6, 50), line_to(186, 50), width=1, style=style),
           row(50, count)) for name, style, count in
      (("dash", 1, (5, 30)), ("dot", 2, (15, 70)), ("dash_dot", 3, (8, 40)), ("dash_dot_dot", 4, (8, 50)))),
    case("pen_style_alternate", metafile(ext_create_pen(1, 8, 1, BLACK), select(1), move_to(6, 50), line_to(186, 50)),
         row(50, (1, 192)), share((10, 49, 180, 52), 0, 0.4, BLACK)),
    case("round_caps", line(GEOMETRIC, width=40), box(30, 76, 160, 116), look("33,80 white; 35,96 red")),
    case("square_caps", line(GEOMETRIC | SQUARE, width=40), box(30, 76, 160, 116), look("33,80 red")),
    case("flat_caps", line(GEOMETRIC | FLAT, width=40), box(50, 76, 140, 116), look("54,80 red")),
    case("round_joins", corner(FLAT), look("23,23 white; 28,28 red")),
    case("bevel_joins", corner(FLAT | BEVEL), look("25,25 white; 34,34 red")),
    case("miter_joins", corner(FLAT | MITER), look("23,23 red")),
    case("miter_limit", corner(FLAT | MITER, set_miter_limit(1)), look("23,23 white; 34,34 red")),
    *(case(f"geometric_{name}", line(GEOMETRIC | FLAT | style, width=4), row(96, count, 40, 150))
      for name, style, count in (("dash", 1, (3, 12)), ("dot", 2, (5, 25)), ("dash_dot", 3, (4, 20)),
                                 ("dash_dot_dot", 4, (4, 24)))),
    case("user_style", metafile(ext_create_pen(1, GEOMETRIC | FLAT | 7, 4, RED, dashes=(20, 10)), select(1),
                                move_to(10, 96),
                                line_to(180, 96)), row(96, 6, lengths=(20,))),
    case("user_style_of_four", metafile(ext_create_pen(1, GEOMETRIC | FLAT | 7, 4, RED, dashes=(20, 6, 8, 6)),
                                        select(1),
                                        move_to(10, 96), line_to(180, 96)), row(96, (8, 9), lengths=(20, 8))),
    case("cosmetic_pen", line(0, width=1), box(50, 95, 140, 98)),
    case("cosmetic_stays_a_pixel", metafile(ext_create_pen(1, 0, 1, RED), select(1), set_world_transform(8, 0, 0, 8, 0,
        0),
                                            move_to(3, 6), line_to(20, 6)), box(24, 47, 160, 50)),
    case("geometric_grows", metafile(ext_create_pen(1, GEOMETRIC | FLAT, 2, RED), select(1),
                                     set_world_transform(8, 0, 0, 8, 0, 0), move_to(3, 6), line_to(20, 6)), box(24, 40,
                                         160, 56)),
    case("null_geometric", line(GEOMETRIC | 5), empty),
    case("pen_of_no_brush", line(GEOMETRIC | FLAT, brush_style=1), empty),
    case("hatched_pen", metafile(set_bk_mode(1), ext_create_pen(1, GEOMETRIC | FLAT, 80, RED, brush_style=2, hatch=1),
                                 select(1),
                                 move_to(20, 96), line_to(180, 96)), row(96, (12, 26)), box(20, 56, 180, 136, 8)),
    case("patterned_pen", metafile(ext_create_pen(1, GEOMETRIC | FLAT, 80, 0, brush_style=5, dib=dib(QUARTERS, 24)),
                                   select(1),
                                   move_to(20, 96), line_to(180, 96)), box(20, 56, 180, 136),
         *(share((24, 60, 176, 132), 0.15, 0.35, colour) for colour in (RED, GREEN, BLUE, YELLOW))),
    case("inside_frame", metafile(create_pen(1, 6, 10, BLUE), create_brush(2, 0, YELLOW), select(1), select(2),
                                  rectangle(30, 30, 159, 159)), look("35,90 blue; 90,154 blue; 90,90 yellow"),
         box(30, 30, 160, 160)),
]

AREA = (40, 40, 160, 160)


def hatched(hatch, *before):
    return metafile(select(NULL_PEN), create_brush(1, 2, RED, hatch), select(1), *before, rectangle(20, 20, 180, 180))


def half(colour):
    return share((40, 40, 152, 152), 0.4, 0.6, colour)


MONO = bitmaps.without_colours(dib(bitmaps.blocks([[BLACK, WHITE]], 4), 1))
BRUSHES = [
    case("solid_brush", filled(RED, rectangle(20, 20, 180, 180)), look("100,100 red")),
    case("null_brush", metafile(select(NULL_PEN), create_brush(1, 1, RED), select(1), rectangle(20, 20, 180, 180)),
         empty),
    case("hatch_horizontal", hatched(0), column(96, (12, 26), 20, 180), share(AREA, 0.06, 0.3)),
    case("hatch_vertical", hatched(1), row(96, (12, 26), 20, 180), share(AREA, 0.06, 0.3)),
    case("hatch_down", hatched(2), row(96, (8, 26), 20, 180), slants(AREA, 1), share(AREA, 0.06, 0.4)),
    case("hatch_up", hatched(3), row(96, (8, 26), 20, 180), slants(AREA, -1), share(AREA, 0.06, 0.4)),
    case("hatch_cross", hatched(4), share(AREA, 0.15, 0.5)),
    case("hatch_diagonal_cross", hatched(5), share(AREA, 0.12, 0.6)),
    case("hatch_on_ground", hatched(1, set_bk_mode(2), set_bk_color(YELLOW)), share(AREA, 0.6, 0.95, YELLOW)),
    case("hatch_without_ground", metafile(
        select(NULL_PEN), create_brush(1, 0, CYAN), select(1), rectangle(20, 20, 180, 180), create_brush(2, 2, RED, 1),
        select(2), set_bk_mode(1), set_bk_color(YELLOW), rectangle(20, 20, 180, 180)), share(AREA, 0.6, 0.95, CYAN)),
    case("mono_brush", metafile(select(NULL_PEN), set_text_color(RED), set_bk_color(BLUE), create_mono_brush(1, MONO,
        2), select(1),
                                rectangle(32, 32, 160, 160)), half(RED), half(BLUE), look("57,100 red; 62,100 blue")),
    case("dib_brush", metafile(select(NULL_PEN), create_dib_brush(1, dib(QUARTERS, 24)), select(1),
                               rectangle(32, 32, 160, 160)),
         box(32, 32, 160, 160), look("68,68 red; 76,68 green; 68,76 blue; 76,76 yellow")),
    case("brush_org", metafile(select(NULL_PEN), set_brush_org(8, 8), create_dib_brush(1, dib(QUARTERS, 24)), select(1),
                               rectangle(32, 32, 160, 160)), look("68,68 yellow; 76,68 blue; 68,76 green; 76,76 red")),
]

GRAYS = (("white", WHITE_BRUSH, 0xFFFFFF), ("light_gray", LTGRAY_BRUSH, 0xC0C0C0), ("gray", GRAY_BRUSH, 0x808080),
         ("dark_gray", DKGRAY_BRUSH, 0x404040), ("black", BLACK_BRUSH, 0))
OBJECTS = [
    *(case(f"stock_brush_{name}", filled(RED, rectangle(20, 20, 180, 180), select(brush), rectangle(40, 40, 160, 160)),
           look(f"30,30 red; 100,100 {rgb:06X}", 8)) for name, brush, rgb in GRAYS),
    case("stock_null_brush", metafile(select(NULL_BRUSH), select(NULL_PEN), rectangle(20, 20, 180, 180)), empty),
    case("stock_white_pen", filled(RED, rectangle(20, 20, 180, 180), select(WHITE_PEN), select(NULL_BRUSH),
                                   rectangle(60, 60, 140, 140)), look("96,96 red; 66,96 red"),
         share((58, 70, 62, 130), 0, 0.8, RED)),
    case("stock_black_pen", drawn(RED, select(BLACK_PEN), move_to(20, 50), line_to(170, 50)), box(20, 49, 170, 52)),
    case("number_used_again", filled(RED, delete(1), create_brush(1, 0, BLUE), select(1), rectangle(20, 20, 100, 100)),
         look("50,50 blue")),
    case("number_taken_over", filled(RED, create_brush(1, 0, BLUE), select(1), rectangle(20, 20, 100, 100)),
         look("50,50 blue")),
    case("unknown_number_changes_nothing", filled(RED, select(9), rectangle(20, 20, 100, 100)), look("50,50 red")),
    case("pen_and_brush_are_two", metafile(create_pen(1, 0, 10, BLUE), create_brush(2, 0, YELLOW), select(1), select(2),
                                           rectangle(30, 30, 160, 160)), look("30,90 blue; 90,90 yellow"), box(25, 25,
                                               166, 166)),
    case("palette_colour", metafile(create_palette(1, (RED, BLUE)), select_palette(1), realize_palette(),
                                    select(NULL_PEN),
                                    record(39, 2, 0, 0x01000001, 0), select(2), rectangle(20, 20, 100,
                                        100)), look("50,50 blue")),
    case("palette_entries_that_change", metafile(
        create_palette(1, (RED, BLUE, GREEN)), select_palette(1), set_palette_entries(1, 1, (YELLOW, CYAN, RED)),
        resize_palette(1, 2), set_palette_entries(1, 70000, (RED,)), set_palette_entries(4, 0, (RED,)), select(NULL_PEN),
        record(39, 2, 0, 0x01000001, 0), select(2), rectangle(20, 20, 100, 100), record(39, 3, 0, 0x01000002, 0), select(3),
        rectangle(100, 20, 180, 100)), look("50,50 yellow; 150,50 cyan")),
    case("unknown_records_are_passed_over", filled(RED, unknown(4711, b"12345678"), comment(b"some comment"),
                                                   set_icm_mode(1),
                                                   rectangle(20, 20, 100, 100)), look("50,50 red")),
    case("records_behind_the_end", filled(RED, record(14, 0, 0, 20), rectangle(20, 20, 90, 90)), empty),
    case("description_in_the_header", metafile(create_brush(1, 0, RED), select(1), rectangle(20, 20, 90, 90),
                                               description="Maker\0Picture"), look("50,50 red")),
]

STATE = [
    case("save_and_restore", filled(RED, save_dc(), create_brush(2, 0, BLUE), select(2), rectangle(20, 20, 60, 60),
                                    restore_dc(-1), rectangle(100, 100, 160, 160)), look("40,40 blue; 130,130 red")),
    case("restore_two", filled(RED, save_dc(), create_brush(2, 0, BLUE), select(2), save_dc(), create_brush(3, 0,
        GREEN),
                               select(3), restore_dc(-2), rectangle(100, 100, 160, 160)), look("130,130 red")),
    case("restore_by_number", filled(RED, save_dc(), create_brush(2, 0, BLUE), select(2), save_dc(), create_brush(3, 0,
        GREEN),
                                     select(3), restore_dc(2), rectangle(100, 100, 160, 160)), look("130,130 blue")),
    case("restore_of_too_many", filled(RED, save_dc(), create_brush(2, 0, BLUE), select(2), restore_dc(-5),
                                       rectangle(100, 100, 160, 160)), look("130,130 blue")),
    case("restore_of_none", filled(RED, restore_dc(-1), rectangle(100, 100, 160, 160)), look("130,130 red")),
    case("restore_brings_all_back", filled(
        RED, save_dc(), intersect_clip(0, 0, 50, 50), set_world_transform(2, 0, 0, 2, 0, 0), set_rop2(1),
        set_window_org(50, 50), restore_dc(-1), rectangle(100, 100, 159, 159)), box(100, 100, 160,
            160), look("130,130 red")),
    case("levels_in_levels", filled(
        RED, save_dc(), set_world_transform(1, 0, 0, 1, 100, 0), save_dc(), set_world_transform(1, 0, 0, 1, 100, 100),
        rectangle(0, 0, 40, 40), restore_dc(-1), rectangle(0, 0, 40, 40), restore_dc(-1), rectangle(0, 0, 40, 40)),
         look("120,120 red; 120,20 red; 20,20 red; 20,120 white")),
]

MODE_CASES = [
    case(f"rop2_{name}", metafile(
        select(NULL_PEN), *(each for at, (left, top, right, bottom, rgb) in enumerate(base_boxes())
                            for each in (create_brush(at + 1, 0, rgb), select(at + 1), rectangle(left, top, right,
                                bottom))),
        set_rop2(mode), *(each for at, rgb in enumerate((RED, GREEN, WHITE, BLACK)) for each in (
            create_brush(at + 5, 0, rgb), select(at + 5), rectangle(32, 32 + 32 * at, 160, 64 + 32 * at)))),
         look(expected(lambda source, destination, number=mode: mix2(number, source, destination))))
    for mode, name in enumerate(MODES, 1)
]

CASES = [*PENS, *BRUSHES, *OBJECTS, *STATE, *MODE_CASES]
