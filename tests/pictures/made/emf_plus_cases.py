"""EMF+ records: shapes, brushes, pens, paths and curves."""

from emf_plus_maker import *
from expectations import box, case, changes_along, column, look, natural, row, share, slants
from packed import BLUE, GREEN, RED, YELLOW

RED_PEN = object_(PEN, 0, pen(4, RED))
STAR = ((96, 20), (140, 160), (26, 74), (166, 74), (52, 160))
BOW = ((40, 100), (40, 20), (160, 20), (160, 100))
CIRCLE = (40, 40, 120, 120)


def drawn(*records): return metafile(RED_PEN, *records)


def both_widths(name, make, *expectations):
    return [case(f"{name}{suffix}", make(short), *expectations) for suffix, short in (("", False), ("_16", True))]


SHAPES = [
    case("size", metafile(fill_rects(ink(RED), (0, 0, 192, 192))), natural(192, 192), box(0, 0, 192, 192)),
    *both_widths("fill_rects", lambda short: metafile(fill_rects(ink(RED), (20, 30, 80, 50), (120, 120, 40, 40),
                                                                 short=short)),
                 look("60,50 red; 140,140 red; 110,60 white"), box(20, 30, 160, 160)),
    case("fill_rects_by_brush", metafile(object_(BRUSH, 5, solid_brush(BLUE)), fill_rects(5, (20, 30, 80, 50))),
         look("60,50 blue")),
    *both_widths("draw_rects", lambda short: drawn(draw_rects(0, (20, 30, 80, 50), short=short)),
                 look("60,30 red; 100,50 red; 60,50 white"),
                 box(18, 28, 102, 82)),
    *both_widths("fill_polygon", lambda short: metafile(fill_polygon(ink(RED), (20, 20), (160, 20), (20, 160),
                                                                     short=short)),
                 look("50,50 red; 150,150 white")),
    case("fill_polygon_is_alternate", metafile(fill_polygon(ink(RED), *STAR)), look("96,95 white; 96,45 red")),
    *both_widths("draw_lines", lambda short: drawn(draw_lines(0, (20, 20), (160, 20), (160, 160), short=short)),
                 look("90,20 red; 160,90 red; 90,90 white")),
    case("draw_lines_closed", drawn(draw_lines(0, (20, 20), (160, 20), (160, 160), closed=True)), look("90,90 red")),
    case("draw_lines_relative", drawn(relative_lines(0, (20, 20), (160, 20), (160, 160))),
         look("90,20 red; 160,90 red; 90,90 white")),
    *both_widths("fill_ellipse", lambda short: metafile(fill_ellipse(ink(RED), 20, 40, 160, 100, short=short)),
                 box(20, 40, 180, 140),
                 share((20, 40, 180, 140), 0.76, 0.81)),
    *both_widths("draw_ellipse", lambda short: drawn(draw_ellipse(0, 20, 40, 160, 100, short=short)),
                 look("100,90 white; 100,40 red; 180,90 red")),
    case("fill_pie", metafile(fill_pie(ink(RED), 0, 90, *CIRCLE)), box(100, 100, 160, 160, 3),
         look("120,120 red; 80,80 white; 120,80 white")),
    case("fill_pie_turns_back", metafile(fill_pie(ink(RED), 0, -90, *CIRCLE)), box(100, 40, 160, 100, 3),
         look("120,80 red")),
    case("fill_pie_wide", metafile(fill_pie(ink(RED), 45, 270, *CIRCLE)),
         look("60,100 red; 100,60 red; 100,140 red; 150,100 white")),
    case("draw_pie", drawn(draw_pie(0, 0, 90, *CIRCLE)), look("130,100 red; 100,130 red; 142,142 red; 115,115 white")),
    case("draw_arc", drawn(draw_arc(0, 0, 90, *CIRCLE)), look("142,142 red; 130,100 white; 58,58 white")),
    case("draw_arc_all_round", drawn(draw_arc(0, 0, 360, *CIRCLE)),
         look("142,142 red; 58,58 red; 142,58 red; 58,142 red")),
    *both_widths("draw_beziers", lambda short: drawn(draw_beziers(0, *BOW, short=short)),
                 look("100,40 red; 100,100 white"), box(38, 38, 162, 102, 3)),
    case("draw_curve", drawn(draw_curve(0, 0.5, (20, 100), (70, 40), (120, 140), (170, 80))),
         look("70,40 red; 120,140 red; 96,40 white")),
    case("draw_curve_of_no_tension_is_straight", drawn(draw_curve(0, 0, (20, 20), (160, 20), (160, 160))),
         look("90,20 red; 160,90 red")),
    case("draw_curve_in_part", drawn(draw_curve(0, 0, (20, 20), (160, 20), (160, 160), (20, 160), offset=1,
                                                segments=1)),
         look("160,90 red; 90,20 white; 90,160 white")),
    case("draw_closed_curve", drawn(draw_closed_curve(0, 0, (20, 20), (160, 20), (160, 160))),
         look("90,20 red; 160,90 red; 90,90 red")),
    case("fill_closed_curve", metafile(fill_closed_curve(ink(RED), 0.5, (40, 40), (150, 40), (150, 150), (40, 150))),
         look("96,96 red; 96,35 red; 5,5 white"), box(28, 28, 162, 162, 12)),
    case("clear", metafile(fill_rects(ink(RED), (20, 20, 90, 90)), clear(BLUE)), look("50,50 blue; 150,150 blue")),
    case("transparent_colour", metafile(fill_rects(ink(BLUE), (20, 20, 90, 90)), fill_rects(ink(RED, 128),
        (40, 40, 120, 120))),
         look("80,80 80007F; 140,140 FF7F7F; 30,30 blue"), box(20, 20, 160, 160)),
]

TRIANGLE = polygon_path((40, 40), (160, 40), (160, 160))
CURVED = path((40, 100, START), (40, 20, BEZIER), (160, 20, BEZIER), (160, 100, BEZIER), (100, 160, LINE | CLOSED))
TWO = path((20, 20, START), (170, 20, LINE), (170, 170, LINE), (20, 170, LINE | CLOSED), (60, 60, START),
           (130, 60, LINE), (130, 130, LINE),
           (60, 130, LINE | CLOSED))
PATHS = [
    case("fill_path", metafile(object_(PATH, 1, TRIANGLE), fill_path(ink(RED), 1)), look("130,70 red; 70,130 white"),
         box(40, 40, 160, 160, 3)),
    case("draw_path", metafile(RED_PEN, object_(PATH, 1, TRIANGLE), draw_path(0, 1)),
         look("100,40 red; 100,100 red; 130,70 white")),
    case("path_of_curves", metafile(object_(PATH, 1, CURVED), fill_path(ink(RED), 1)),
         look("100,60 red; 100,140 red; 50,150 white")),
    case("path_of_short_numbers", metafile(object_(PATH, 1, path((40, 40, START), (160, 40, LINE),
                                                                 (160, 160, LINE | CLOSED), short=True)),
                                           fill_path(ink(RED), 1)), look("130,70 red; 70,130 white")),
    case("path_of_two_figures", metafile(object_(PATH, 1, TWO), fill_path(ink(RED), 1)),
         look("40,40 red; 96,96 white")),
    case("path_in_pieces", metafile(pieces(PATH, 1, TWO, 32), fill_path(ink(RED), 1)), look("40,40 red; 96,96 white")),
]

ACROSS = (32, 32, 128, 128)
ALL = fill_rects(3, ACROSS)
TILE_IMAGE = bitmap([[(RED, 255)] * 8 + [(BLUE, 255)] * 8] * 16)


def brushed(data, *records): return metafile(object_(BRUSH, 3, data), *(records or (ALL,)))


FRAME = box(32, 32, 160, 160)
INSIDE = (40, 40, 152, 152)
BRUSHES = [
    case("solid_brush", brushed(solid_brush(RED)), look("96,96 red"), FRAME),
    case("hatch_horizontal", brushed(hatch_brush(0, RED, YELLOW)), FRAME, share(INSIDE, 0.06, 0.3, RED),
         share(INSIDE, 0.6, 0.95, YELLOW)),
    case("hatch_vertical", brushed(hatch_brush(1, RED, 0xFFFFFF)), row(96, (10, 20), 32, 160)),
    case("hatch_down", brushed(hatch_brush(2, RED, 0xFFFFFF)), slants(INSIDE, 1)),
    case("hatch_up", brushed(hatch_brush(3, RED, 0xFFFFFF)), slants(INSIDE, -1)),
    case("hatch_cross", brushed(hatch_brush(4, RED, YELLOW)), share(INSIDE, 0.12, 0.5, RED)),
    case("hatch_diagonal_cross", brushed(hatch_brush(5, RED, 0xFFFFFF)), share(INSIDE, 0.1, 0.6)),
    *(case(f"hatch_percent_{percent}", brushed(hatch_brush(style, RED, 0xFFFFFF)),
           share(INSIDE, max(0.01, percent / 100 - 0.15), percent / 100 + 0.2)) for style, percent in
      ((6, 5), (7, 10), (8, 20), (9, 25), (10, 30), (11, 40), (12, 50), (13, 60), (14, 70), (15, 75), (16, 80),
       (17, 90))),
    *(case(f"hatch_{style}", brushed(hatch_brush(style, RED, YELLOW)), share(INSIDE, 0.99), share(INSIDE, 0.02, 0.98,
        YELLOW))
      for style in range(18, 53)),
    case("texture", brushed(texture_brush(TILE_IMAGE)), FRAME, share(INSIDE, 0.4, 0.6, RED), share(INSIDE, 0.4, 0.6,
        BLUE),
         look("36,96 red; 44,96 blue")),
    case("texture_transformed", brushed(texture_brush(TILE_IMAGE, transform=(4, 0, 0, 4, 0, 0))),
         look("80,96 red; 112,96 blue; 144,96 red; 48,96 blue")),
    case("linear", brushed(linear_brush(ACROSS, RED, BLUE)), FRAME,
         look("34,96 FB0004; 96,96 800080; 157,96 0400FB; 96,40 800080", 16)),
    case("linear_down", brushed(linear_brush(ACROSS, RED, BLUE, transform=(0, 1, -1, 0, 192, 0))),
         look("96,34 FB0004; 96,96 800080; 96,157 0400FB; 40,96 800080", 16)),
    case("linear_tiles", brushed(linear_brush((32, 32, 64, 64), RED, BLUE)),
         look("34,96 F80008; 62,96 800080; 94,96 0800F8; 98,96 F80008", 24)),
    case("linear_flips", brushed(linear_brush((32, 32, 64, 64), RED, BLUE, wrap=1)),
         look("34,96 F80008; 94,96 0800F8; 98,96 0800F8; 157,96 F80008", 24)),
    case("linear_of_three_colours", brushed(linear_brush(ACROSS, RED, BLUE, colours=((0, RED), (0.5, GREEN),
        (1, BLUE)))),
         look("35,96 FA0500; 96,96 green; 64,96 808000; 156,96 0008F7", 24)),
    case("linear_by_factors", brushed(linear_brush(ACROSS, RED, BLUE, blend=((0, 0), (0.5, 1), (1, 0)))),
         look("35,96 F4000B; 96,96 blue; 64,96 800080; 157,96 F4000B", 24)),
    case("radial", brushed(radial_brush(((32, 32), (160, 32), (160, 160), (32, 160)), RED, (BLUE,), (96, 96)),
                           fill_rects(3, ACROSS)),
         look("96,96 red; 34,96 blue", 80), changes_along("r", (96, 96), (80, 96), (64, 96), (48, 96))),
    case("radial_by_path", brushed(radial_brush((), RED, (BLUE,), (96, 96), path_data=path(
        (160, 96, START), (160, 131, BEZIER), (131, 160, BEZIER), (96, 160, BEZIER), (61, 160, BEZIER), (32, 131,
            BEZIER), (32, 96, BEZIER),
        (32, 61, BEZIER), (61, 32, BEZIER), (96, 32, BEZIER), (131, 32, BEZIER), (160, 61, BEZIER), (160, 96,
            BEZIER | CLOSED))),
        fill_ellipse(3, *ACROSS)), look("96,96 red; 35,96 blue", 80)),
]


def lined(pen_data, *records): return metafile(object_(PEN, 2, pen_data),
                                               *(records or (draw_lines(2, (50, 96), (140, 96)),)))


CORNER = draw_lines(2, (40, 150), (40, 40), (150, 40))
PENS = [
    case("flat_caps", lined(pen(40, RED)), box(50, 76, 140, 116)),
    case("square_caps", lined(pen(40, RED, start_cap=1, end_cap=1)), box(30, 76, 160, 116), look("33,80 red")),
    case("round_caps", lined(pen(40, RED, start_cap=2, end_cap=2)), box(30, 76, 160, 116),
         look("33,80 white; 35,96 red")),
    case("miter_joins", lined(pen(40, RED, join=0), CORNER), look("23,23 red")),
    case("bevel_joins", lined(pen(40, RED, join=1), CORNER), look("25,25 white; 34,34 red")),
    case("round_joins", lined(pen(40, RED, join=2), CORNER), look("23,23 white; 28,28 red")),
    *(case(f"dash_{style}", lined(pen(4, RED, style=style)), row(96, count, 40, 150)) for style, count in
      ((1, (3, 12)), (2, (7, 14)), (3, (5, 20)), (4, (6, 24)))),
    case("own_dashes", lined(pen(4, RED, style=5, dashes=(5, 2.5)), draw_lines(2, (10, 96), (180, 96))),
         row(96, 6, lengths=(20,))),
    case("dash_offset", lined(pen(4, RED, style=5, dashes=(5, 5), dash_offset=5.0), draw_lines(2, (10, 96), (180, 96))),
         look("20,96 white; 40,96 red; 60,96 white")),
    case("pen_with_transparency", lined(pen(20, RED, alpha=128)), look("96,96 FF7F7F")),
    case("pen_with_gradient", lined(pen(20, brush=linear_brush((50, 0, 90, 192), RED, BLUE))),
         look("54,96 F4000B; 95,96 800080; 136,96 0B00F4", 24)),
    case("pen_in_points", lined(pen(15, RED, unit=POINT)), box(50, 86, 140, 106)),
    case("pen_grows_with_the_world", lined(pen(2, RED), set_world_transform(8, 0, 0, 8, 0, 0), draw_lines(2, (3, 6),
        (20, 6))), box(24, 40, 160, 56)),
    case("pen_of_no_width_is_a_pixel", lined(pen(0, RED)), box(50, 95, 140, 98)),
    case("arrow", lined(pen(4, RED, end_cap=0x14), draw_lines(2, (30, 96), (150, 96))), look("90,96 red"),
         column(90, 1, 80, 112),
         share((130, 85, 152, 107), 0.15, 0.9)),
    case("custom_cap_does_no_harm", lined(pen(4, RED, custom_end=arrow_cap(5, 5))), look("90,96 red")),
    case("compound_line", lined(pen(40, RED, compound=(0, 0.25, 0.75, 1))), look("96,80 red; 96,112 red")),
]

CASES = [*SHAPES, *PATHS, *BRUSHES, *PENS]
