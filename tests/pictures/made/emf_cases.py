"""Lines, curves, arcs and paths of enhanced metafiles, in both widths of numbers."""

from emf_maker import *
from expectations import box, case, column, empty, look, natural, row, share
from packed import BLUE, GREEN, RED


def filled(rgb, *records):
    """A brush is object 1; no pen."""
    return metafile(select(NULL_PEN), create_brush(1, 0, rgb), select(1), *records)


def drawn(rgb, *records, width=4, style=0):
    """A pen is object 1; no brush."""
    return metafile(select(NULL_BRUSH), create_pen(1, style, width, rgb), select(1), *records)


STAR = ((96, 20), (140, 160), (26, 74), (166, 74), (52, 160))
SQUARES = (((30, 30), (160, 30), (160, 160), (30, 160)), ((60, 60), (130, 60), (130, 130), (60, 130)))
# A half circle over 40...160, nearly.
BOW = ((40, 100), (40, 20), (160, 20), (160, 100))


def both_widths(name, make, *expectations):
    return [case(f"{name}{suffix}", make(short), *expectations) for suffix, short in (("", False), ("_16", True))]


LINES = [
    case("size", filled(RED, rectangle(0, 0, 191, 191)), natural(192, 192), box(0, 0, 192, 192)),
    case("line", drawn(RED, move_to(20, 30), line_to(170, 30), line_to(170, 150)), box(18, 28, 172, 152),
         look("96,30 red; 170,96 red; 96,96 white")),
    *both_widths("polyline", lambda short: drawn(BLUE, polyline((20, 20), (160, 20), (160, 160), short=short)),
                 look("90,20 blue; 160,90 blue; 90,90 white")),
    *both_widths("polyline_leaves_place", lambda short: drawn(
        BLUE, move_to(20, 150), polyline((20, 20), (160, 20), short=short), line_to(160,
            150)), look("90,150 blue; 160,90 white")),
    *both_widths("polyline_to", lambda short: drawn(
        BLUE, move_to(20, 20), polyline_to((160, 20), (160, 160), short=short), line_to(20, 160)),
        look("90,20 blue; 160,90 blue; 90,160 blue; 20,90 white")),
    *both_widths("polygon", lambda short: filled(RED, polygon((20, 20), (160, 20), (20, 160), short=short)),
                 look("50,50 red; 150,150 white"), box(20, 20, 160, 160, 3)),
    *both_widths("polygon_closes", lambda short: drawn(RED, polygon((20, 20), (160, 20), (160, 160), short=short)),
                 look("90,90 red; 60,120 white")),
    *both_widths("alternate", lambda short: filled(RED, set_poly_fill_mode(1), polygon(*STAR, short=short)),
                 look("96,95 white; 96,45 red; 50,80 red")),
    *both_widths("winding", lambda short: filled(RED, set_poly_fill_mode(2), polygon(*STAR, short=short)),
                 look("96,95 red; 96,45 red; 50,80 red")),
    *both_widths("poly_polyline", lambda short: drawn(RED, poly_polyline(
        ((20, 20), (160, 20)), ((20, 100), (100, 100), (100, 160)), short=short)),
        look("90,20 red; 60,100 red; 100,130 red; 150,60 white"), column(60, 2)),
    *both_widths("poly_polygon_alternate", lambda short: filled(RED, poly_polygon(*SQUARES, short=short)),
                 look("45,45 red; 96,96 white"), box(30, 30, 160, 160)),
    *both_widths("poly_polygon_winding", lambda short: filled(
        RED, set_poly_fill_mode(2), poly_polygon(*SQUARES, short=short)), look("45,45 red; 96,96 red")),
    *both_widths("poly_bezier", lambda short: drawn(RED, poly_bezier(*BOW, short=short)),
                 look("100,40 red; 100,100 white"),
                 box(38, 38, 162, 102, 3)),
    *both_widths("poly_bezier_two", lambda short: drawn(
        RED, poly_bezier(*BOW, (160, 180), (40, 180), (40, 100),
                         short=short)), look("100,40 red; 100,160 red; 100,100 white"),
        box(38, 38, 162, 162, 3)),
    *both_widths("poly_bezier_to", lambda short: drawn(
        RED, move_to(40, 100), poly_bezier_to(*BOW[1:], short=short), line_to(160, 160)),
        look("100,40 red; 160,130 red; 100,100 white")),
    *both_widths("poly_draw", lambda short: drawn(RED, poly_draw(
        (40, 160, MOVE), (40, 100, LINE), (40, 20, BEZIER), (160, 20, BEZIER), (160, 100, BEZIER), (160, 160,
            LINE | CLOSE),
        short=short)), look("40,130 red; 100,40 red; 160,130 red; 100,160 red; 100,100 white")),
    *both_widths("poly_draw_open", lambda short: drawn(RED, poly_draw(
        (40, 160, MOVE), (40, 40, LINE), (160, 40, LINE), (20, 180, MOVE), (180, 180, LINE), short=short)),
        look("40,100 red; 100,40 red; 100,180 red; 100,100 white")),
    case("set_pixel", metafile(*(set_pixel(x, y, RED) for x in range(50, 60) for y in range(70, 80))),
         share((51, 71, 59, 79), 1), box(50, 70, 60, 80, 1)),
    case("far_places", filled(RED, polygon((-2000000000, 50), (2000000000, 50), (2000000000, 100), (-2000000000, 100))),
         look("5,75 red; 190,75 red; 96,30 white")),
]

CORNER = ((180, 100), (100, 20))  # from the right end to the upper one: a quarter against the clock
CIRCLE = (40, 40, 160, 160)
SHAPES = [
    case("rectangle", filled(RED, rectangle(20, 30, 99, 79)), box(20, 30, 100, 80), look("60,50 red")),
    case("rectangle_turned", filled(RED, rectangle(99, 79, 20, 30)), box(20, 30, 100, 80), look("60,50 red")),
    case("default_pen_and_brush", metafile(rectangle(20, 20, 160, 160)), box(20, 20, 161, 161), look("90,90 white"),
         row(90, 2)),
    case("round_rectangle", filled(RED, round_rect(20, 30, 170, 150, 60, 80)), box(20, 30, 170, 150),
         look("96,90 red; 23,33 white; 166,145 white; 30,90 red; 60,34 red")),
    case("ellipse", filled(RED, ellipse(20, 40, 180, 140)), box(20, 40, 180, 140), share((20, 40, 180, 140), 0.75,
        0.82),
         look("100,90 red; 30,50 white; 30,90 red; 170,130 white")),
    case("ellipse_outline", drawn(RED, ellipse(20, 40, 180, 140)), look("100,90 white; 100,40 red; 180,90 red")),
    case("arc", drawn(RED, arc(CIRCLE, *CORNER)), look("142,58 red; 58,58 white; 142,142 white"), box(98, 38, 162, 102,
        3)),
    case("arc_clockwise", drawn(RED, set_arc_direction(2), arc(CIRCLE, *CORNER)),
         look("142,58 white; 58,58 red; 58,142 red; 142,142 red"), box(38, 38, 162, 162, 3)),
    case("arc_whole", drawn(RED, arc(CIRCLE, CORNER[0], CORNER[0])),
         look("142,58 red; 58,58 red; 58,142 red; 142,142 red")),
    case("arc_leaves_place", drawn(RED, move_to(20, 180), arc(CIRCLE, *CORNER), line_to(180, 180)),
         look("96,180 red; 142,58 red")),
    case("arc_to", drawn(RED, move_to(180, 180), arc_to(CIRCLE, *CORNER), line_to(20, 40)),
         look("142,58 red; 170,140 red; 60,40 red; 58,142 white")),
    case("chord", filled(RED, chord(CIRCLE, *CORNER)), box(100, 40, 160, 100, 3), look("135,65 red; 115,85 white")),
    case("chord_clockwise", filled(RED, set_arc_direction(2), chord(CIRCLE, *CORNER)),
         look("135,65 white; 115,95 red; 60,100 red")),
    case("pie", filled(RED, pie(CIRCLE, *CORNER)), box(100, 40, 160, 100, 3),
         look("120,80 red; 80,80 white; 120,120 white")),
    case("pie_clockwise", filled(RED, set_arc_direction(2), pie(CIRCLE, *CORNER)),
         look("120,80 white; 80,80 red; 120,120 red; 80,120 red")),
    case("pie_outline", drawn(RED, pie(CIRCLE, *CORNER)), look("100,70 red; 130,100 red; 115,85 white")),
    case("angle_arc", drawn(RED, move_to(100, 100), angle_arc(100, 100, 60, 0, 90)),
         look("142,58 red; 130,100 red; 58,58 white; 142,142 white; 100,70 white")),
    case("angle_arc_turns_back", drawn(RED, move_to(160, 100), angle_arc(100, 100, 60, 0, -90)),
         look("142,142 red; 142,58 white; 58,142 white")),
    case("angle_arc_goes_on", drawn(RED, move_to(160, 100), angle_arc(100, 100, 60, 0, 90), line_to(100, 180)),
         look("142,58 red; 100,140 red")),
    case("angle_arc_all_round", drawn(RED, move_to(160, 100), angle_arc(100, 100, 60, 0, 360)),
         look("142,58 red; 58,58 red; 58,142 red; 142,142 red")),
    case("flood_fill", filled(BLUE, rectangle(40, 40, 140, 140), ext_flood_fill(90, 90, BLUE, 1)), look("90,90 blue")),
]

TRIANGLE = (move_to(40, 40), line_to(160, 40), line_to(160, 160))


def pathed(*records, end=()):
    """With a red brush and a blue pen: of the records, as a path."""
    return metafile(create_brush(1, 0, RED), ext_create_pen(2, 0x10000 | 0x2200, 8, BLUE), select(1), select(2),
                    begin_path(), *records, end_path(), *end)


PATHS = [
    case("path_alone_is_not_seen", pathed(*TRIANGLE), empty),
    case("fill_path", pathed(*TRIANGLE, end=(fill_path(),)), look("130,70 red; 70,130 white"), box(40, 40, 160, 160,
        3)),
    case("stroke_path", pathed(*TRIANGLE, end=(stroke_path(),)),
         look("100,40 blue; 160,100 blue; 100,100 white; 130,70 white")),
    case("stroke_closed_path", pathed(*TRIANGLE, close_figure(), end=(stroke_path(),)),
         look("100,40 blue; 100,100 blue; 130,70 white")),
    case("stroke_and_fill_path", pathed(*TRIANGLE, end=(stroke_and_fill_path(),)),
         look("100,40 blue; 160,100 blue; 130,70 red; 70,130 white")),
    case("path_is_used_once", pathed(*TRIANGLE, end=(fill_path(), create_brush(3, 0, GREEN), select(3), fill_path())),
         look("130,70 red")),
    case("abort_path", pathed(*TRIANGLE, abort_path(), rectangle(20, 20, 60, 60)), look("40,40 red; 130,70 white")),
    case("abort_ended_path", pathed(*TRIANGLE, end=(abort_path(), fill_path())), empty),
    case("path_begins_again", metafile(
        create_brush(1, 0, RED), select(1), select(NULL_PEN), begin_path(), *TRIANGLE, begin_path(),
        rectangle(20, 100, 60, 140), end_path(), fill_path()), look("40,120 red; 130,70 white")),
    case("flatten_path", pathed(poly_bezier(*BOW), end=(flatten_path(), stroke_path())),
         look("100,40 blue; 100,80 white")),
    case("widen_path", pathed(move_to(40, 96), line_to(160, 96), end=(widen_path(), fill_path())), look("100,96 red"),
         box(40, 92, 160, 100)),
    case("path_of_two_figures", pathed(rectangle(20, 20, 170, 170), rectangle(60, 60, 130, 130),
                                       end=(set_poly_fill_mode(1), fill_path())), look("40,40 red; 96,96 white")),
    case("path_of_two_figures_winding", pathed(rectangle(20, 20, 170, 170), rectangle(60, 60, 130, 130),
                                               end=(set_poly_fill_mode(2), fill_path())), look("40,40 red; 96,96 red")),
    case("path_of_shapes", pathed(ellipse(20, 20, 90, 90), round_rect(100, 20, 180, 90, 20, 20), pie(
        (20, 100, 90, 170), (90, 135), (55, 100)), polygon((110, 110), (170, 110), (170, 170)), end=(fill_path(),)),
        look("55,55 red; 140,55 red; 70,120 red; 160,130 red; 40,150 white; 22,22 white")),
    case("path_of_curves", pathed(move_to(40, 100), poly_bezier_to(*BOW[1:]), polyline_to((160, 160), (40, 160)),
                                  close_figure(), end=(stroke_and_fill_path(),)),
         look("100,40 blue; 100,100 red; 40,130 blue")),
    case("path_of_drawn_points", pathed(poly_draw((40, 40, MOVE), (160, 40, LINE), (160, 160, LINE | CLOSE)),
                                        end=(stroke_path(),)), look("100,100 blue; 100,40 blue; 70,130 white")),
    case("path_of_arcs", pathed(move_to(100, 100), arc_to(CIRCLE, *CORNER), close_figure(), end=(fill_path(),)),
         look("120,80 red; 80,80 white")),
    case("path_turns_with_the_world", metafile(
        create_brush(1, 0, RED), select(1), select(NULL_PEN), begin_path(), set_world_transform(0.5, 0, 0, 0.5, 0, 0),
        rectangle(40, 40, 160, 160), end_path(), set_world_transform(1, 0, 0, 1, 0, 0), fill_path()), box(20, 20, 80,
            80)),
    case("path_as_clip", pathed(*TRIANGLE, end=(select_clip_path(COPY), rectangle(0, 0, 192, 192))),
         look("130,70 red; 70,130 white"), box(40, 40, 160, 160, 3)),
    case("stroke_of_a_large_unit", metafile(
        ext_create_pen(1, 0x10000 | 0x200, 80, BLUE), select(1), set_world_transform(0.1, 0, 0, 0.1, 0,
            0), begin_path(),
        move_to(400, 960), line_to(1600, 960), end_path(), stroke_path()), box(40, 92, 160, 100)),
]

CASES = [*LINES, *SHAPES, *PATHS]
