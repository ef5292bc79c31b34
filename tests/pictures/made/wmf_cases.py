"""Lines, areas, pens, brushes, regions and coordinates of Windows metafiles."""

from expectations import box, case, clear_of, column, empty, look, natural, row, share, slants
from packed import BLACK, BLUE, CYAN, GREEN, RED, WHITE, YELLOW, u16, u32
from raster import MODES, base_boxes, expected, mix2
from wmf_maker import *

NO_PEN, NO_BRUSH = create_pen(5, 0, 0), create_brush(1, 0)


def filled(rgb, *records):
    """No pen is object 0, a brush object 1."""
    return metafile(NO_PEN, select(0), create_brush(0, rgb), select(1), *records)


def drawn(rgb, *records, width=4, style=0):
    """No brush is object 0, a pen object 1."""
    return metafile(NO_BRUSH, select(0), create_pen(style, width, rgb), select(1), *records)


STAR = ((96, 20), (140, 160), (26, 74), (166, 74), (52, 160))
SQUARES = (((30, 30), (160, 30), (160, 160), (30, 160)), ((60, 60), (130, 60), (130, 130), (60, 130)))

LINES = [
    case("line", drawn(RED, move_to(20, 30), line_to(170, 30)), box(18, 28, 172, 32), look("96,30 red")),
    case("line_goes_on", drawn(RED, move_to(20, 30), line_to(170, 30), line_to(170, 150)), box(18, 28, 172, 152),
         look("96,30 red; 170,96 red; 96,96 white")),
    case("line_without_place", drawn(RED, line_to(100, 100)), look("50,50 red; 90,90 red; 120,120 white")),
    case("polyline", drawn(BLUE, polyline((20, 20), (160, 20), (160, 160))),
         look("90,20 blue; 160,90 blue; 90,90 white")),
    case("polyline_leaves_place", drawn(BLUE, move_to(20, 150), polyline((20, 20), (160, 20)), line_to(160, 150)),
         look("90,150 blue; 90,20 blue; 160,90 white")),
    case("polyline_of_one", drawn(BLUE, polyline((20, 20))), clear_of((40, 40, 192, 192))),
    case("polygon", filled(RED, polygon((20, 20), (160, 20), (20, 160))), look("50,50 red; 150,150 white"),
         box(20, 20, 160, 160, 3)),
    case("polygon_closes", drawn(RED, polygon((20, 20), (160, 20), (160, 160))), look("90,90 red; 60,120 white")),
    case("alternate", filled(RED, set_poly_fill_mode(1), polygon(*STAR)), look("96,95 white; 96,45 red; 50,80 red")),
    case("winding", filled(RED, set_poly_fill_mode(2), polygon(*STAR)), look("96,95 red; 96,45 red; 50,80 red")),
    case("poly_polygon_alternate", filled(RED, set_poly_fill_mode(1), poly_polygon(*SQUARES)),
         look("45,45 red; 96,96 white"), box(30, 30, 160, 160)),
    case("poly_polygon_winding", filled(RED, set_poly_fill_mode(2), poly_polygon(*SQUARES)),
         look("45,45 red; 96,96 red")),
    case("poly_polygon_winding_turned", filled(RED, set_poly_fill_mode(2), poly_polygon(SQUARES[0], SQUARES[1][::-1])),
         look("45,45 red; 96,96 white")),
    case("rectangle", filled(RED, rectangle(20, 30, 100, 80)), box(20, 30, 100, 80), look("60,50 red")),
    case("rectangle_turned", filled(RED, rectangle(100, 80, 20, 30)), box(20, 30, 100, 80), look("60,50 red")),
    case("rectangle_with_pen", metafile(create_pen(0, 10, BLUE), create_brush(0, YELLOW), select(0), select(1),
                                        rectangle(30, 30, 160, 160)), look("30,90 blue; 90,160 blue; 90,90 yellow"),
         box(25, 25, 165, 165)),
    case("inside_frame", metafile(create_pen(6, 10, BLUE), create_brush(0, YELLOW), select(0), select(1),
                                  rectangle(30, 30, 160, 160)), look("35,90 blue; 90,154 blue; 90,90 yellow"),
         box(30, 30, 160, 160)),
    case("default_pen_and_brush", metafile(rectangle(20, 20, 160, 160)), box(20, 20, 160, 160), look("90,90 white"),
         row(90, 2)),
    case("round_rectangle", filled(RED, round_rect(20, 30, 170, 150, 60, 80)), box(20, 30, 170, 150),
         look("96,90 red; 23,33 white; 166,145 white; 30,90 red; 60,34 red")),
    case("ellipse", filled(RED, ellipse(20, 40, 180, 140)), box(20, 40, 180, 140),
         look("100,90 red; 30,50 white; 30,90 red; 170,130 white"), share((20, 40, 180, 140), 0.76, 0.81)),
    case("ellipse_outline", drawn(RED, ellipse(20, 40, 180, 140)), look("100,90 white; 100,40 red; 180,90 red")),
    case("arc_upper_right", drawn(RED, arc((40, 40, 160, 160), (180, 100), (100, 20))),
         look("142,58 red; 58,58 white; 142,142 white"), box(98, 38, 162, 102, 3)),
    case("arc_the_long_way", drawn(RED, arc((40, 40, 160, 160), (100, 20), (180, 100))),
         look("142,58 white; 58,58 red; 58,142 red; 142,142 red"), box(38, 38, 162, 162, 3)),
    case("arc_of_one_end_is_whole", drawn(RED, arc((40, 40, 160, 160), (180, 100), (180, 100))),
         look("142,58 red; 58,58 red; 58,142 red; 142,142 red")),
    case("pie", filled(RED, pie((40, 40, 160, 160), (180, 100), (100, 20))), box(100, 40, 160, 100, 3),
         look("120,80 red; 80,80 white; 120,120 white")),
    case("pie_outline", drawn(RED, pie((40, 40, 160, 160), (180, 100), (100, 20))),
         look("100,70 red; 130,100 red; 115,85 white")),
    case("chord", filled(RED, chord((40, 40, 160, 160), (180, 100), (100, 20))), box(100, 40, 160, 100, 3),
         look("135,65 red; 115,85 white")),
    case("set_pixel", metafile(*(set_pixel(x, y, RED) for x in range(50, 60) for y in range(70, 80))),
         share((51, 71, 59, 79), 1), box(50, 70, 60, 80, 1), look("55,75 red")),
    case("far_places", filled(RED, polygon((-32000, 50), (32000, 50), (32000, 100), (-32000, 100))),
         look("5,75 red; 190,75 red; 96,30 white")),
]

PENS = [
    *(case(f"pen_width_{width}", drawn(RED, move_to(96, 20), line_to(96, 170), width=width),
           row(96, 1), share((96 - width // 2 + 1, 90, 96 + width // 2 - 1, 100), 1)) for width in (4, 9, 16, 40)),
    case("pen_of_no_width_is_a_pixel", drawn(RED, move_to(20, 50), line_to(170, 50), width=0), box(20, 49, 170, 52, 2)),
    case("null_pen", drawn(RED, move_to(20, 50), line_to(170, 50), style=5), empty),
    *(case(f"pen_style_{name}", drawn(BLACK, set_bk_mode(1), move_to(6, 50), line_to(186, 50), width=1, style=style),
           row(50, count)) for name, style, count in
      (("dash", 1, (5, 30)), ("dot", 2, (15, 70)), ("dash_dot", 3, (8, 40)), ("dash_dot_dot", 4, (8, 50)))),
    case("caps_are_round", drawn(RED, move_to(50, 96), line_to(140, 96), width=40), box(30, 76, 160, 116),
         look("33,80 white; 35,96 red")),
    case("flat_caps", drawn(RED, move_to(50, 96), line_to(140, 96), width=40, style=0x200), box(50, 76, 140, 116),
         look("54,80 red")),
    case("square_caps", drawn(RED, move_to(50, 96), line_to(140, 96), width=40, style=0x100), box(30, 76, 160, 116),
         look("33,80 red")),
    case("round_joins", drawn(RED, polyline((40, 150), (40, 40), (150, 40)), width=40), look("24,24 white; 27,27 red")),
    case("bevel_joins", drawn(RED, polyline((40, 150), (40, 40), (150, 40)), width=40, style=0x1000),
         look("25,25 white; 34,34 red")),
    case("miter_joins", drawn(RED, polyline((40, 150), (40, 40), (150, 40)), width=40, style=0x2000),
         look("23,23 red")),
]


def hatched(hatch, *before):
    return metafile(NO_PEN, select(0), create_brush(2, RED, hatch), select(1), *before, rectangle(20, 20, 180, 180))


AREA = (40, 40, 160, 160)
HATCHES = [
    case("hatch_horizontal", hatched(0), column(96, (12, 26), 20, 180), share(AREA, 0.06, 0.3)),
    case("hatch_vertical", hatched(1), row(96, (12, 26), 20, 180), share(AREA, 0.06, 0.3)),
    case("hatch_down", hatched(2), row(96, (8, 26), 20, 180), slants(AREA, 1), share(AREA, 0.06, 0.4)),
    case("hatch_up", hatched(3), row(96, (8, 26), 20, 180), slants(AREA, -1), share(AREA, 0.06, 0.4)),
    case("hatch_cross", hatched(4), share(AREA, 0.15, 0.5)),
    case("hatch_diagonal_cross", hatched(5), share(AREA, 0.12, 0.6)),
    case("hatch_on_ground", hatched(1, set_bk_mode(2), set_bk_color(YELLOW)), share(AREA, 0.6, 0.95, YELLOW)),
    case("hatch_without_ground", metafile(
        NO_PEN, select(0), create_brush(0, CYAN), select(1), rectangle(20, 20, 180, 180), create_brush(2, RED, 1),
        select(2), set_bk_mode(1), set_bk_color(YELLOW), rectangle(20, 20, 180, 180)), share(AREA, 0.6, 0.95, CYAN)),
]

OBJECTS = [
    case("null_brush", metafile(NO_BRUSH, select(0), NO_PEN, select(1), rectangle(20, 20, 180, 180)), empty),
    case("lowest_free_object_is_taken", metafile(
        NO_PEN, create_brush(0, RED), create_brush(0, GREEN), select(0), delete(1), create_brush(0, BLUE), select(1),
        rectangle(20, 20, 90, 90), select(2), rectangle(100, 100, 180, 180)), look("50,50 blue; 140,140 green")),
    case("objects_outlast_selection", filled(RED, create_brush(0, BLUE), select(2), rectangle(20, 20, 90, 90),
                                             select(1),
                                             rectangle(100, 100, 180, 180)), look("50,50 blue; 140,140 red")),
    case("unknown_object_changes_nothing", filled(RED, select(12), rectangle(20, 20, 90, 90)), look("50,50 red")),
    case("fonts_and_palettes_take_places", metafile(
        NO_PEN, create_font(10, "Arial"), create_palette((RED, BLUE)), create_brush(0, GREEN), select(0), select(3),
        rectangle(20, 20, 90, 90)), look("50,50 green")),
    case("unknown_records_are_passed_over", filled(RED, record(0x7AB, 1, 2, 3), escape(15, b"some comment"),
                                                   set_mapper_flags(1), rectangle(20, 20, 90, 90)), look("50,50 red")),
    case("records_behind_the_end", filled(RED, record(0), rectangle(20, 20, 90, 90)), empty),
    *(case(f"palette_entries_that_{name}", metafile(
        create_palette((RED, BLUE)), select_palette(0), change(1, (GREEN, RED)), resize_palette(1), NO_PEN, select(1),
        record(0x2FC, 0, tail=u32(0x01000001) + u16(0)), select(2), rectangle(20, 20, 90, 90)), look("50,50 green"))
      for name, change in (("are_set", set_palette_entries), ("are_animated", animate_palette))),
    case("palette_colour", metafile(
        create_palette((RED, BLUE)), select_palette(0), realize_palette(), NO_PEN, select(1),
        record(0x2FC, 0, tail=u32(0x01000001) + u16(0)), select(2), rectangle(20, 20, 90, 90)), look("50,50 blue")),
]

STATE = [
    case("save_and_restore", filled(RED, save_dc(), create_brush(0, BLUE), select(2), rectangle(20, 20, 60, 60),
                                    restore_dc(-1), rectangle(100, 100, 160, 160)), look("40,40 blue; 130,130 red")),
    case("restore_two", filled(RED, save_dc(), create_brush(0, BLUE), select(2), save_dc(), create_brush(0, GREEN),
                               select(3), restore_dc(-2), rectangle(100, 100, 160, 160)), look("130,130 red")),
    case("restore_by_number", filled(RED, save_dc(), create_brush(0, BLUE), select(2), save_dc(),
                                     create_brush(0, GREEN),
                                     select(3), restore_dc(2), rectangle(100, 100, 160, 160)), look("130,130 blue")),
    case("restore_of_too_many", filled(RED, save_dc(), create_brush(0, BLUE), select(2), restore_dc(-5),
                                       rectangle(100, 100, 160, 160)), look("130,130 blue")),
    case("restore_of_none", filled(RED, restore_dc(-1), rectangle(100, 100, 160, 160)), look("130,130 red")),
    case("restore_brings_place_and_clip", filled(
        RED, save_dc(), intersect_clip(0, 0, 50, 50), set_window_org(50, 50), restore_dc(-1),
        rectangle(100, 100, 160, 160)), box(100, 100, 160, 160)),
]


def plain(*records, **rest):
    """Without the window of `metafile`."""
    return placeable(NO_PEN, select(0), create_brush(0, RED), select(1), *records, **rest)


ANISOTROPIC = set_map_mode(8)
COORDINATES = [
    case("size", filled(RED, rectangle(0, 0, 192, 192)), natural(192, 192), box(0, 0, 192, 192, 1)),
    case("size_by_inch", plain(ANISOTROPIC, set_window_ext(384, 192), rectangle(0, 0, 192, 192),
                               box=(0, 0, 384, 192), inch=192), natural(192, 96), box(0, 0, 96, 96)),
    case("window_org", plain(ANISOTROPIC, set_window_org(1000, 2000), set_window_ext(192, 192),
                             rectangle(1020, 2030, 1100, 2080), box=(1000, 2000, 1192, 2192)), box(20, 30, 100, 80)),
    case("box_that_begins_elsewhere", plain(ANISOTROPIC, set_window_org(-96, -96), set_window_ext(192, 192),
                                            rectangle(-96, -96, 0, 0), box=(-96, -96, 96, 96)), box(0, 0, 96, 96)),
    case("large_units", plain(ANISOTROPIC, set_window_org(0, 0), set_window_ext(1920, 1920), rectangle(200, 300, 1000,
        800),
                              box=(0, 0, 1920, 1920), inch=960), natural(192, 192), box(20, 30, 100, 80)),
    case("y_upwards", plain(ANISOTROPIC, set_window_org(0, 192), set_window_ext(192, -192), rectangle(20, 30, 100, 80),
                            box=(0, 192, 192, 0)), box(20, 112, 100, 162)),
    case("offset_window_org", filled(RED, offset_window_org(-20, -30), rectangle(0, 0, 80, 50)), box(20, 30, 100, 80)),
    case("scale_window_ext", filled(RED, scale_window_ext(2, 1, 2, 1), rectangle(40, 60, 200, 160)),
         box(20, 30, 100, 80)),
    case("window_ext_changes", filled(RED, rectangle(0, 0, 50, 50), set_window_ext(384, 384), rectangle(200, 200, 384,
        384)),
         look("25,25 red; 145,145 red; 75,75 white"), box(0, 0, 192, 192)),
    case("bare_by_window", bare(ANISOTROPIC, set_window_org(0, 0), set_window_ext(1000, 500), NO_PEN, select(0),
                                create_brush(0, RED), select(1), rectangle(0, 0, 500, 500), create_brush(0, BLUE),
                                select(2), rectangle(500, 0, 1000, 500)), share((0, 0, 20, 20), 1, colour=RED)),
    case("bare_without_window", bare(NO_PEN, select(0), create_brush(0, RED), select(1), rectangle(0, 0, 100, 100)),
         look("10,10 red")),
]

CLIPS = [
    case("intersect", filled(RED, intersect_clip(50, 60, 120, 130), rectangle(0, 0, 192, 192)), box(50, 60, 120, 130)),
    case("intersect_twice", filled(RED, intersect_clip(50, 60, 120, 130), intersect_clip(80, 0, 192, 100),
                                   rectangle(0, 0, 192, 192)), box(80, 60, 120, 100)),
    case("intersect_with_nothing", filled(RED, intersect_clip(50, 50, 60, 60), intersect_clip(100, 100, 120, 120),
                                          rectangle(0, 0, 192, 192)), empty),
    case("exclude", filled(RED, exclude_clip(50, 60, 120, 130), rectangle(20, 20, 170, 170)), box(20, 20, 170, 170),
         clear_of((52, 62, 118, 128)), look("30,90 red; 140,90 red")),
    case("offset", filled(RED, intersect_clip(50, 60, 120, 130), offset_clip(20, -30), rectangle(0, 0, 192, 192)),
         box(70, 30, 140, 100)),
    case("region", filled(RED, create_region((40, 40, 140, 140), [(40, 90, 40, 140), (90, 140, 40, 60, 120, 140)]),
                          select_clip_region(2), rectangle(0, 0, 192, 192)), box(40, 40, 140, 140, 2),
         look("90,60 red; 50,120 red; 130,120 red; 90,120 white")),
    case("region_as_object", filled(RED, create_region((40, 40, 140, 140), [(40, 140, 40, 140)]), select(2),
                                    rectangle(0, 0, 192, 192)), box(40, 40, 140, 140)),
    case("fill_region", filled(RED, create_region((40, 40, 140, 140), [(40, 90, 40, 140), (90, 140, 40, 60)]),
                               create_brush(0, BLUE), fill_region(2, 3)), box(40, 40, 140, 140, 2),
         look("90,60 blue; 50,120 blue; 90,120 white")),
    case("paint_region", filled(RED, create_region((40, 40, 140, 140), [(40, 140, 40, 140)]), paint_region(2)),
         box(40, 40, 140, 140),
         look("90,90 red")),
    case("invert_region", filled(RED, rectangle(20, 20, 160, 160),
                                 create_region((40, 40, 140, 140), [(40, 140, 40, 140)]), invert_region(2)),
         look("30,30 red; 90,90 cyan")),
    case("frame_region", filled(RED, create_region((40, 40, 140, 140), [(40, 140, 40, 140)]), create_brush(0, BLUE),
                                frame_region(2, 3, 10, 10)), box(40, 40, 140, 140),
         look("90,90 white; 45,90 blue; 90,45 blue; 55,90 white")),
    case("frame_region_of_rows", filled(RED, create_region((40, 40, 150, 140), [(40, 90, 40, 80, 110, 150), (90, 140, 40, 150)]),
                                        create_brush(0, BLUE), frame_region(2, 3, 10, 4)), box(40, 40, 150, 140),
         look("60,60 white; 60,90 white; 47,60 blue; 53,60 white; 73,60 blue; 95,92 blue; 95,97 white; 60,42 blue; 60,47 white")),
]

FLOODS = [
    case("flood_fill", filled(BLUE, create_pen(0, 4, RED), create_brush(0, YELLOW), select(2), select(3),
                              rectangle(40, 40, 140, 140), select(1), flood_fill(90, 90, RED)), look("40,90 red")),
    case("surface_flood_fill", filled(BLUE, rectangle(40, 40, 140, 140), ext_flood_fill(90, 90, BLUE, 1)),
         look("90,90 blue")),
]

MODE_CASES = [
    case(f"rop2_{name}", metafile(
        NO_PEN, select(0), *(each for at, (left, top, right, bottom, rgb) in enumerate(base_boxes())
                             for each in (create_brush(0, rgb), select(at + 1), rectangle(left, top, right, bottom))),
        set_rop2(mode), *(each for at, rgb in enumerate((RED, GREEN, WHITE, BLACK)) for each in (
            create_brush(0, rgb), select(at + 5), rectangle(32, 32 + 32 * at, 160, 64 + 32 * at)))),
         look(expected(lambda source, destination, number=mode: mix2(number, source, destination))))
    for mode, name in enumerate(MODES, 1)
]

CASES = [*LINES, *PENS, *HATCHES, *OBJECTS, *STATE, *COORDINATES, *CLIPS, *FLOODS, *MODE_CASES]
