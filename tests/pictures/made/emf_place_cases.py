"""Coordinates, transforms and clips of enhanced metafiles."""

from emf_cases import filled
from emf_maker import *
from expectations import box, case, clear_of, empty, look, natural
from packed import BLUE, RED

ALL = rectangle(-10, -10, 300, 300)


def rotated(*records): return filled(RED, set_world_transform(0, 1, -1, 0, 192, 0), *records)


# Half an inch to an inch and a half, in units of each map mode, y upwards.
UNITS = (("low_metric", 2, 127, 381), ("high_metric", 3, 1270, 3810), ("low_english", 4, 50, 150),
         ("high_english", 5, 500, 1500), ("twips", 6, 720, 2160))
MIDDLE = box(48, 48, 144, 144)

PLACES = [
    case("map_text", filled(RED, set_map_mode(1), rectangle(48, 48, 143, 143)), MIDDLE),
    *(case(f"map_{name}", filled(RED, set_map_mode(mode), rectangle(near, -near, far, -far)), MIDDLE)
      for name, mode, near, far in UNITS),
    *(case(f"map_{name}_org", filled(RED, set_map_mode(mode), set_viewport_org(48, 144), rectangle(0, 0, far - near,
        far - near)),
           MIDDLE) for name, mode, near, far in UNITS),
    case("map_isotropic", filled(RED, set_map_mode(7), set_window_ext(100, 100), set_viewport_ext(192, 96),
                                 rectangle(0, 0, 100, 100)), box(0, 0, 96, 96)),
    case("map_isotropic_tall", filled(RED, set_map_mode(7), set_window_ext(100, 200), set_viewport_ext(192, 192),
                                      rectangle(0, 0, 100, 200)), box(0, 0, 96, 192)),
    case("map_anisotropic", filled(RED, set_map_mode(8), set_window_ext(100, 100), set_viewport_ext(192, 96),
                                   rectangle(0, 0, 100, 100)), box(0, 0, 192, 97)),
    case("map_back_to_text", filled(RED, set_map_mode(8), set_window_ext(100, 100), set_viewport_ext(192, 96),
                                    set_map_mode(1),
                                    rectangle(48, 48, 143, 143)), MIDDLE),
    case("y_upwards", filled(RED, set_map_mode(8), set_window_ext(192, -192), set_viewport_ext(192, 192),
                             set_window_org(0, 192),
                             rectangle(20, 30, 100, 80)), box(20, 112, 100, 162)),
    case("window_org", filled(RED, set_window_org(1000, 2000), rectangle(1020, 2030, 1099, 2079)),
         box(20, 30, 100, 80)),
    case("viewport_org", filled(RED, set_viewport_org(20, 30), rectangle(0, 0, 79, 49)), box(20, 30, 100, 80)),
    case("both_orgs", filled(RED, set_map_mode(8), set_window_ext(96, 96), set_viewport_ext(192, 192),
                             set_window_org(-10, -10),
                             set_viewport_org(20, 0), rectangle(0, 0, 40, 40)), box(40, 20, 120, 100)),
    case("ext_is_for_scaling_modes_alone", filled(RED, set_window_ext(50, 50), rectangle(48, 48, 143, 143)), MIDDLE),
    case("scale_window", filled(RED, set_map_mode(8), set_window_ext(192, 192), set_viewport_ext(192, 192),
                                scale_window_ext(2, 1, 2, 1), rectangle(40, 60, 200, 160)), box(20, 30, 100, 80)),
    case("scale_viewport", filled(RED, set_map_mode(8), set_window_ext(192, 192), set_viewport_ext(192, 192),
                                  scale_viewport_ext(1, 2, 1, 3), rectangle(40, 90, 200, 240)), box(20, 30, 100, 80)),
    case("ext_of_nothing_is_passed_over", filled(RED, set_map_mode(8), set_window_ext(192, 192), set_viewport_ext(192,
        192),
                                                 set_window_ext(0, 0), rectangle(48, 48, 144, 144)), MIDDLE),
    case("frame_gives_the_size", metafile(create_brush(1, 0, RED), select(1), ALL, frame=(0, 0, 2540, 1270),
                                          bounds=(0, 0, 95, 47)), natural(96, 48), box(0, 0, 96, 48)),
    case("frame_that_begins_elsewhere", metafile(
        create_brush(1, 0, RED), select(1), rectangle(96, 96, 143, 143), frame=(2540, 2540, 7620, 7620),
        bounds=(96, 96, 287, 287)), natural(192, 192), box(0, 0, 48, 48)),
    case("frame_larger_than_bounds", metafile(create_brush(1, 0, RED), select(1), rectangle(50, 50, 99, 99),
                                              bounds=(50, 50, 99, 99)), natural(192, 192), box(50, 50, 100, 100)),
    case("fine_device", metafile(create_brush(1, 0, RED), select(1), rectangle(40, 60, 199, 159), bounds=(0, 0, 383,
        383),
                                 device=3840), natural(192, 192), box(20, 30, 100, 80)),
    case("low_metric_on_fine_device", metafile(
        create_brush(1, 0, RED), select(1), set_map_mode(2), rectangle(127, -127, 381, -381), bounds=(0, 0, 383, 383),
        device=3840), MIDDLE),
]

TRANSFORMS = [
    case("move", filled(RED, set_world_transform(1, 0, 0, 1, 20, 30), rectangle(0, 0, 80, 50)), box(20, 30, 100, 80)),
    case("scale", filled(RED, set_world_transform(2, 0, 0, 3, 0, 0), rectangle(10, 10, 50, 40)), box(20, 30, 100, 120,
        3)),
    case("quarter_turn", rotated(rectangle(20, 30, 100, 80)), box(112, 20, 162, 100)),
    case("eighth_turn", filled(RED, set_world_transform(0.7071, 0.7071, -0.7071, 0.7071, 96, 20), rectangle(0, 0, 80,
        80)),
         look("96,76 red; 60,40 white; 130,40 white; 60,110 white"), box(40, 20, 153, 133, 3)),
    case("shear", filled(RED, set_world_transform(1, 0, 1, 1, 0, 0), rectangle(0, 20, 60, 100)),
         look("50,60 white; 90,60 red; 140,90 red; 20,30 white; 60,30 red")),
    case("mirror", filled(RED, set_world_transform(-1, 0, 0, 1, 192, 0), rectangle(20, 30, 100, 80)),
         box(92, 30, 172, 80)),
    case("identity", filled(RED, set_world_transform(2, 0, 0, 2, 5, 5), modify_world_transform(1), rectangle(20, 30, 99,
        79)),
         box(20, 30, 100, 80)),
    case("multiply_left", filled(RED, set_world_transform(2, 0, 0, 2, 0, 0), modify_world_transform(2, 1, 0, 0, 1, 10,
        10),
                                 rectangle(0, 0, 40, 40)), box(20, 20, 100, 100, 3)),
    case("multiply_right", filled(RED, set_world_transform(2, 0, 0, 2, 0, 0), modify_world_transform(3, 1, 0, 0, 1, 10,
        10),
                                  rectangle(0, 0, 40, 40)), box(10, 10, 90, 90, 3)),
    case("modify_sets", filled(RED, set_world_transform(2, 0, 0, 2, 0, 0), modify_world_transform(4, 1, 0, 0, 1, 10,
        10),
                               rectangle(0, 0, 40, 40)), box(10, 10, 50, 50)),
    case("world_then_page", filled(RED, set_map_mode(8), set_window_ext(96, 96), set_viewport_ext(192, 192),
                                   set_world_transform(1, 0, 0, 1, 10, 15), rectangle(0, 0, 40, 25)), box(20, 30, 100,
                                       80, 3)),
    case("turned_ellipse", rotated(ellipse(20, 40, 180, 100)), box(92, 20, 152, 180, 3),
         look("122,100 red; 95,25 white")),
    case("turned_round_rectangle", rotated(round_rect(20, 40, 180, 100, 30, 30)), box(92, 20, 152, 180, 3)),
    case("turned_arc", rotated(select(BLACK_PEN), select(NULL_BRUSH), arc((40, 40, 160, 160), (180, 100), (100, 20))),
         box(92, 100, 152, 160, 4)),
    case("mirrored_pie", filled(RED, set_world_transform(-1, 0, 0, 1, 192, 0), pie((40, 40, 160, 160), (180, 100),
        (100, 20))),
         box(32, 40, 92, 100, 3), look("72,80 red; 120,80 white")),
    case("pie_where_y_goes_up", filled(RED, set_map_mode(8), set_window_ext(192, -192), set_viewport_ext(192, 192),
                                       set_window_org(0, 192), pie((40, 40, 160, 160), (180, 100), (100, 180))),
         look("120,72 red; 80,72 white; 120,112 white; 80,112 white")),
]

A, B = (40, 40, 120, 120), (80, 80, 160, 160)
# Places in A alone, in both, in B alone and in neither.
ONLY_A, BOTH, ONLY_B, NEITHER = "60,60", "100,100", "140,140", "140,60"
MODES = (("and", AND, (BOTH,)), ("or", OR, (ONLY_A, BOTH, ONLY_B)), ("xor", XOR, (ONLY_A, ONLY_B)),
         ("diff", DIFF, (ONLY_A,)),
         ("copy", COPY, (BOTH, ONLY_B)))


def seen(places):
    return look("; ".join(f"{each} {'red' if each in places else 'white'}" for each in (ONLY_A, BOTH, ONLY_B, NEITHER)))


B_PATH = (begin_path(), rectangle(*B), end_path())
CLIPS = [
    case("intersect", filled(RED, intersect_clip(50, 60, 120, 130), ALL), box(50, 60, 120, 130)),
    case("intersect_twice", filled(RED, intersect_clip(50, 60, 120, 130), intersect_clip(80, 0, 192, 100), ALL),
         box(80, 60, 120, 100)),
    case("intersect_with_nothing", filled(RED, intersect_clip(50, 50, 60, 60), intersect_clip(100, 100, 120, 120), ALL),
         empty),
    case("exclude", filled(RED, exclude_clip(50, 60, 120, 130), rectangle(20, 20, 170, 170)), box(20, 20, 170, 170),
         clear_of((52, 62, 118, 128)), look("30,90 red; 140,90 red")),
    case("exclude_then_intersect", filled(RED, exclude_clip(50, 60, 120, 130), intersect_clip(40, 40, 192, 192), ALL),
         look("45,45 red; 90,90 white; 30,30 white; 150,150 red")),
    case("offset", filled(RED, intersect_clip(50, 60, 120, 130), offset_clip(20, -30), ALL), box(70, 30, 140, 100)),
    case("offset_of_a_shape", filled(RED, exclude_clip(50, 60, 120, 130), offset_clip(20, -30), ALL),
         look("95,65 white; 60,120 red; 55,65 red; 135,95 white; 145,95 red")),
    case("scaled", filled(RED, set_world_transform(2, 0, 0, 2, 0, 0), intersect_clip(25, 30, 60, 65), ALL),
         box(50, 60, 120, 130)),
    case("turned", rotated(intersect_clip(20, 30, 100, 80), ALL, rectangle(0, 0, 300, 300)), box(112, 20, 162, 100)),
    case("clip_stays_where_it_is", filled(RED, intersect_clip(50, 60, 120, 130), set_world_transform(2, 0, 0, 2, 0, 0),
                                          ALL),
         box(50, 60, 120, 130)),
    *(case(f"region_{name}", filled(RED, intersect_clip(*A), ext_select_clip_region(mode, B), ALL), seen(places))
      for name, mode, places in MODES),
    *(case(f"path_{name}", filled(RED, intersect_clip(*A), *B_PATH, select_clip_path(mode), ALL), seen(places))
      for name, mode, places in MODES),
    case("region_of_two", filled(RED, ext_select_clip_region(COPY, (20, 20, 60, 60), (100, 100, 160, 160)), ALL),
         look("40,40 red; 130,130 red; 80,80 white")),
    case("clip_goes", filled(RED, intersect_clip(*A), ext_select_clip_region(COPY), ALL),
         seen((ONLY_A, BOTH, ONLY_B, NEITHER))),
    case("meta_region", filled(RED, intersect_clip(*A), set_meta_region(), ext_select_clip_region(COPY, B), ALL),
         seen((BOTH,))),
    case("meta_region_without_clip", filled(RED, intersect_clip(*A), set_meta_region(), ext_select_clip_region(COPY),
                                            ALL),
         seen((ONLY_A, BOTH))),
    case("path_clip_by_winding", filled(RED, set_poly_fill_mode(2), begin_path(), rectangle(20, 20, 170, 170),
                                        rectangle(
        60, 60, 130, 130), end_path(), select_clip_path(COPY), ALL), look("40,40 red; 96,96 red")),
    case("path_clip_alternate", filled(RED, set_poly_fill_mode(1), begin_path(), rectangle(20, 20, 170, 170), rectangle(
        60, 60, 130, 130), end_path(), select_clip_path(COPY), ALL), look("40,40 red; 96,96 white")),
]

REGIONS = [
    case("fill_region", filled(RED, create_brush(2, 0, BLUE), fill_region(2, (40, 40, 140, 90), (40, 90, 60, 140))),
         box(40, 40, 140, 140), look("90,60 blue; 50,120 blue; 90,120 white")),
    case("paint_region", filled(RED, paint_region((40, 40, 140, 140))), box(40, 40, 140, 140), look("90,90 red")),
    case("invert_region", filled(RED, rectangle(20, 20, 160, 160), invert_region((40, 40, 140, 140))),
         look("30,30 red; 90,90 cyan")),
    case("frame_region", filled(RED, create_brush(2, 0, BLUE), frame_region(2, 10, 10, (40, 40, 140, 140))),
         box(40, 40, 140, 140),
         look("90,90 white; 45,90 blue; 90,45 blue; 55,90 white")),
    case("frame_region_of_two_widths", filled(RED, create_brush(2, 0, BLUE), frame_region(2, 20, 5, (40, 40, 140, 140))),
         box(40, 40, 140, 140), look("55,90 blue; 65,90 white; 125,90 blue; 90,42 blue; 90,48 white; 90,137 blue")),
    case("frame_region_of_many_boxes", filled(RED, create_brush(2, 0, BLUE), frame_region(
        2, 6, 6, (40, 40, 80, 90), (110, 40, 150, 90), (40, 90, 150, 140))), box(40, 40, 150, 140),
         look("60,60 white; 60,90 white; 43,90 blue; 77,60 blue; 77,86 blue; 113,60 blue; 95,93 blue; 95,100 white; "
              "83,93 blue; 90,80 white; 130,90 white; 95,137 blue; 147,110 blue")),
    case("frame_region_apart", filled(RED, create_brush(2, 0, BLUE), frame_region(
        2, 4, 4, (40, 40, 150, 80), (40, 110, 150, 150))), box(40, 40, 150, 150),
         look("90,60 white; 90,78 blue; 90,95 white; 90,112 blue; 90,130 white")),
]

CASES = [*PLACES, *TRANSFORMS, *CLIPS, *REGIONS]
