// Brushes of EMF+.

#include <algorithm>
#include <cmath>
#include <iterator>

#include "pictures/emf_plus_image.h"
#include "pictures/emf_plus_state.h"
#include "pictures/grid_number.h"

namespace pagerex {
namespace {

/// Rows of 8 pixels from the top, in each the left one in the highest bit.
constexpr uint64_t kHatches[] = {
    0xFF00000000000000,  // horizontal
    0x8080808080808080,  // vertical
    0x8040201008040201,  // forward diagonal
    0x0102040810204080,  // backward diagonal
    0xFF80808080808080,  // large grid
    0x8142241818244281,  // diagonal cross
    0x8800000008000000,  // 5%
    0x8800200088000200,  // 10%
    0xAA00A200AA002200,  // 20%
    0xAA00AA00AA00AA00,  // 25%
    0xAA44AA00AA04AA00,  // 30%
    0xAA54AA11AA45AA11,  // 40%
    0xAA55AA55AA55AA55,  // 50%
    0xEE55BA55EE55AB55,  // 60%
    0xFF55FB55FF55BB55,  // 70%
    0xFF55FF55FF55FF55,  // 75%
    0xFFDDFF55FF5DFF55,  // 80%
    0xFFFDFF77FFDFFF77,  // 90%
    0x8844221188442211,  // light downward diagonal
    0x1122448811224488,  // light upward diagonal
    0xCC663399CC663399,  // dark downward diagonal
    0x3366CC993366CC99,  // dark upward diagonal
    0xC1E070381C0E0783,  // wide downward diagonal
    0x83070E1C3870E0C1,  // wide upward diagonal
    0x8888888888888888,  // light vertical
    0xFF000000FF000000,  // light horizontal
    0x5555555555555555,  // narrow vertical
    0xFF00FF00FF00FF00,  // narrow horizontal
    0xCCCCCCCCCCCCCCCC,  // dark vertical
    0xFFFF0000FFFF0000,  // dark horizontal
    0x0000884422110000,  // dashed downward diagonal
    0x0000112244880000,  // dashed upward diagonal
    0xF00000000F000000,  // dashed horizontal
    0x8080808008080808,  // dashed vertical
    0x8008400210012004,  // small confetti
    0xC0CC0C3033C3CC0C,  // large confetti
    0x8142241881422418,  // zigzag
    0x001825C0001825C0,  // wave
    0x0102040818244281,  // diagonal brick
    0xFF808080FF080808,  // horizontal brick
    0x8044221008542241,  // weave
    0xAA55AA55F0F0F0F0,  // plaid
    0x0010081000800180,  // divot
    0xAA00800080008000,  // dotted grid
    0x8000220008002200,  // dotted diamond
    0x038448300C020101,  // shingle
    0xFF66FF99FF66FF99,  // trellis
    0x77898F8F7798F8F8,  // sphere
    0xFF888888FF888888,  // small grid
    0xCCCC3333CCCC3333,  // small checkerboard
    0xF0F0F0F00F0F0F0F,  // large checkerboard
    0x8041221408142241,  // outlined diamond
    0x10387CFE7C381000,  // solid diamond
};

// Kinds of brushes.
constexpr uint32_t kSolid = 0, kHatch = 1, kTexture = 2, kPathGradient = 3, kLinearGradient = 4;

// What else a brush has.
constexpr uint32_t kHasPath = 1, kHasMatrix = 2, kHasColours = 4, kHasFactors = 8, kHasDownFactors = 0x10,
                   kHasFocus = 0x40;

Paint colourOf(uint32_t argb) {
  return Paint::Colour(argb & 0xFFFFFF, static_cast<uint8_t>(argb >> 24));
}

GradientStop stopOf(double offset, uint32_t argb) {
  return {static_cast<float>(offset), argb & 0xFFFFFF, static_cast<uint8_t>(argb >> 24)};
}

uint32_t mixed(uint32_t from, uint32_t to, double part) {
  uint32_t argb = 0;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const double a = from >> shift & 0xFF, b = to >> shift & 0xFF;
    argb |= static_cast<uint32_t>(std::clamp(a + (b - a) * part, 0.0, 255.0) + 0.5) << shift;
  }
  return argb;
}

/// What stands behind a gradient's two colours: others, or how they mix on the way.
std::vector<GradientStop> readStops(PlusReader& reader, uint32_t flags, uint32_t from, uint32_t to) {
  std::vector<GradientStop> stops;
  if (flags & kHasDownFactors) reader.Take(reader.Count(8) * size_t{8});
  if (flags & (kHasColours | kHasFactors)) {
    const size_t count = reader.Count(8);
    PlusReader positions(reader.Take(count * 4));
    for (size_t i = 0; i < count; ++i) {
      const double at = positions.Real();
      stops.push_back(stopOf(at, flags & kHasColours ? reader.U32() : mixed(from, to, reader.Real())));
    }
  }
  if (stops.empty()) stops = {stopOf(0, from), stopOf(1, to)};
  return stops;
}

Spread spreadOf(uint32_t wrapMode) {
  constexpr Spread kSpreads[] = {Spread::kRepeat, Spread::kReflect, Spread::kRepeat, Spread::kReflect};
  return wrapMode < std::size(kSpreads) ? kSpreads[wrapMode] : Spread::kPad;
}

void appendPart(std::string& out, uint32_t argb, std::string_view path) {
  constexpr char kDigits[] = "0123456789abcdef";
  out += "<path fill=\"#";
  for (int shift = 20; shift >= 0; shift -= 4) out += kDigits[argb >> shift & 15];
  if (argb >> 24 != 255) {
    out += "\" fill-opacity=\"";
    appendNumber(out, (argb >> 24) / 255.0);
  }
  out.append("\" d=\"").append(path).append("\"/>");
}

/// The pixels of a hatch, as runs.
std::string hatchPath(uint64_t bits) {
  std::string path;
  for (int y = 0; y < 8; ++y, bits <<= 8) {
    for (int x = 0; x < 8;) {
      int end = x;
      while (end < 8 && (bits >> (63 - end) & 1)) ++end;
      if (end > x) {
        PathData run;
        run.AddBox({static_cast<double>(x), static_cast<double>(y), static_cast<double>(end), y + 1.0});
        path += run.view();
      }
      x = end + 1;
    }
  }
  return path;
}

}  // namespace

Paint PlusState::FillPaint(const Record& record, uint32_t brush) {
  if (record.flags & kPlusColour) return colourOf(brush);
  const ByteView bytes = Find(brush, PlusType::kBrush);
  return bytes.empty() ? Paint{} : KeptPaint(objects_[brush], bytes);
}

/// A colour for text: that of a brush that has several is one of them.
Paint PlusState::InkOf(const Record& record, uint32_t brush) {
  if (record.flags & kPlusColour) return colourOf(brush);
  const ByteView bytes = Find(brush, PlusType::kBrush);
  constexpr uint8_t kColourAt[] = {8, 12, 0, 16, 32};
  const uint32_t kind = bytes.u32(4);
  if (bytes.empty() || kind >= std::size(kColourAt) || kind == kTexture)
    return bytes.empty() ? Paint{} : Paint::Colour(0);
  return colourOf(bytes.u32(kColourAt[kind]));
}

/// Where its units are the same, a paint is made once.
Paint PlusState::KeptPaint(PlusObject& object, ByteView brush) {
  const Matrix matrix = WorldToCanvas(), &kept = object.paintMatrix;
  const bool isSame = object.hasPaint && kept.a == matrix.a && kept.b == matrix.b && kept.c == matrix.c &&
                      kept.d == matrix.d && kept.e == matrix.e && kept.f == matrix.f;
  if (!isSame) {
    object.paint = MakePaint(brush, matrix);
    object.paintMatrix = matrix;
    object.hasPaint = true;
  }
  return object.paint;
}

Paint PlusState::MakePaint(ByteView brush, const Matrix& matrix) {
  PlusReader reader(brush);
  reader.U32();  // version
  switch (reader.U32()) {
    case kSolid:
      return colourOf(reader.U32());
    case kHatch:
      return HatchPaint(reader);
    case kTexture:
      return TexturePaint(reader, matrix);
    case kPathGradient:
      return PathGradientPaint(reader, matrix);
    case kLinearGradient:
      return LinearPaint(reader, matrix);
    default:
      isWhole_ = false;
      return {};
  }
}

/// Of pixels as they are shown, whatever the coordinates are.
Paint PlusState::HatchPaint(PlusReader reader) {
  const uint32_t style = reader.U32(), ink = reader.U32(), ground = reader.U32();
  if (style >= std::size(kHatches)) return colourOf(ink);
  std::string tile;
  if (ground >> 24 != 0) appendPart(tile, ground, "M0 0h8v8h-8z");
  appendPart(tile, ink, hatchPath(kHatches[style]));
  const double pixel = canvas_.pixel();
  return Paint::Server(canvas_.AddTile({pixel, 0, 0, pixel, 0, 0}, 8, 8, tile));
}

Paint PlusState::TexturePaint(PlusReader reader, const Matrix& matrix) {
  const uint32_t flags = reader.U32();
  reader.U32();  // how it repeats
  const Matrix own = flags & kHasMatrix ? reader.RealMatrix() : Matrix{};
  const PlusImage image(reader.rest());
  const bool isForTile = image.width > 0 && !image.isMetafile() && !image.mediaType.empty();
  uint32_t server = 0;
  if (isForTile && Afford(static_cast<size_t>(image.width) * static_cast<size_t>(image.rows))) {
    const auto write = [&](PictureSink& sink) { return image.WriteAll(sink); };
    server = canvas_.AddImageTile(own * matrix, image.width, image.height, write);
  }
  if (server != 0) return Paint::Server(server);
  isWhole_ = false;
  return {};
}

/// The file has a box, through which the colours go from left to right.
Paint PlusState::LinearPaint(PlusReader reader, const Matrix& matrix) {
  const uint32_t flags = reader.U32(), wrapMode = reader.U32();
  const Box box = reader.Rectangle(false);
  const uint32_t from = reader.U32(), to = reader.U32();
  reader.Take(8);
  const Matrix all = flags & kHasMatrix ? reader.RealMatrix() * matrix : matrix;
  const std::vector<GradientStop> stops = readStops(reader, flags, from, to);
  // What is slanted has its lines of one colour along the slant, and its way across them.
  const Point begin = all(box.left, box.top), end = all(box.right, box.top), down = all.Turn(0, 1);
  const double length = std::hypot(down.x, down.y);
  if (!(length > 0)) return colourOf(from);
  const Point across{down.y / length, -down.x / length};
  const double way = (end.x - begin.x) * across.x + (end.y - begin.y) * across.y;
  return Paint::Server(canvas_.AddLinearGradient(
      {}, begin, {begin.x + across.x * way, begin.y + across.y * way}, stops, spreadOf(wrapMode)));
}

/// Goes from the outline to the centre, as through an ellipse that is as large as the outline.
Paint PlusState::PathGradientPaint(PlusReader reader, const Matrix& matrix) {
  const uint32_t flags = reader.U32();
  reader.U32();  // how it repeats
  const uint32_t inner = reader.U32();
  const Point centre = reader.RealPoint();
  uint32_t outer = inner;
  const uint32_t colours = reader.Count(4);
  for (uint32_t i = 0; i < colours; ++i) outer = mixed(outer, reader.U32(), 1.0 / (i + 1));
  PlusOutline outline;
  if (flags & kHasPath) {
    outline.AddPath(reader.Take(reader.Count(1)));
  } else {
    reader.Points(reader.U32(), PlusReader::PointForm::kReal, outline.points);
  }
  if (outline.points.empty()) return colourOf(inner);
  const Matrix all = flags & kHasMatrix ? reader.RealMatrix() * matrix : matrix;
  std::vector<GradientStop> stops = readStops(reader, flags, outer, inner);
  double focus = 0;
  if (flags & kHasFocus) {
    reader.U32();  // two of them
    const Point scales = reader.RealPoint();
    focus = std::clamp((scales.x + scales.y) / 2, 0.0, 1.0);
  }
  std::reverse(stops.begin(), stops.end());
  for (GradientStop& stop : stops) stop.offset = static_cast<float>(focus + (1 - focus) * (1 - stop.offset));

  Box box{outline.points[0].x, outline.points[0].y, outline.points[0].x, outline.points[0].y};
  for (const Point p : outline.points) {
    box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
           std::max(box.bottom, p.y)};
  }
  const double radiusX = box.width() / 2, radiusY = box.height() / 2;
  const Matrix ellipse = Matrix{radiusX, 0, 0, radiusY, box.left + radiusX, box.top + radiusY} * all;
  const double radius = ellipse.Scale();
  if (!(radius > 0)) return colourOf(inner);
  Point lit{(centre.x - box.left) / radiusX - 1, (centre.y - box.top) / radiusY - 1};
  const double away = std::hypot(lit.x, lit.y);
  const double nearer = radius * (away > 0.95 ? 0.95 / away : 1);
  return Paint::Server(canvas_.AddRadialGradient(Matrix{1 / radius, 0, 0, 1 / radius, 0, 0} * ellipse, {0, 0},
                                                 radius, {lit.x * nearer, lit.y * nearer}, stops,
                                                 Spread::kPad));
}

}  // namespace pagerex
