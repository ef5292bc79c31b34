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
constexpr uint32_t kSolid = 0, kHatch = 1, kTexture = 2, kPathGradient = 3;

// What else a brush has.
constexpr uint32_t kHasPath = 1, kHasMatrix = 2, kHasColours = 4, kHasFactors = 8, kHasDownFactors = 0x10,
                   kHasFocus = 0x40;

Paint colourOf(uint32_t argb) {
  return Paint::Colour(argb & 0xFFFFFF, static_cast<uint8_t>(argb >> 24));
}

uint32_t mixed(uint32_t from, uint32_t to, double part) {
  uint32_t argb = 0;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const double a = from >> shift & 0xFF, b = to >> shift & 0xFF;
    argb |= static_cast<uint32_t>(std::lround(std::clamp(a + (b - a) * part, 0.0, 255.0))) << shift;
  }
  return argb;
}

Spread spreadOf(uint32_t wrapMode) {
  return wrapMode > 3 ? Spread::kPad : wrapMode & 1 ? Spread::kReflect : Spread::kRepeat;
}

void appendPart(std::string& out, uint32_t argb, std::string_view path) {
  constexpr char kDigits[] = "0123456789abcdef";
  out += "<path fill=\"#";
  for (int shift = 20; shift >= 0; shift -= 4) out += kDigits[argb >> shift & 15];
  out += "\" fill-opacity=\"";
  appendNumber(out, (argb >> 24) / 255.0);
  out.append("\" d=\"").append(path).append("\"/>");
}

/// The pixels of a hatch, as runs.
std::string hatchPath(uint64_t bits) {
  std::string path;
  for (int y = 0; y < 8; ++y) {
    for (int x = 0, end = 0; x < 8; x = ++end) {
      for (end = x; end < 8 && (bits >> 63) != 0; ++end) bits <<= 1;
      bits <<= end < 8 ? 1 : 0;
      if (end == x) continue;
      char run[] = "M0 0h0v1h-0z";
      run[1] = static_cast<char>('0' + x);
      run[3] = static_cast<char>('0' + y);
      run[5] = run[10] = static_cast<char>('0' + end - x);
      path += run;
    }
  }
  return path;
}

}  // namespace

Paint PlusState::FillPaint(const Record& record, uint32_t brush, bool isInk) {
  if (record.flags & kPlusColour) return colourOf(brush);
  const ByteView bytes = Find(brush, PlusType::kBrush);
  return bytes.empty() ? Paint{} : KeptPaint(brush, bytes, isInk);
}

/// Where its units are the same, the paint of a brush or a pen is made once.
Paint PlusState::KeptPaint(uint32_t id, ByteView brush, bool isInk) {
  PlusObject& object = objects_[id];
  const Matrix matrix = WorldToCanvas();
  if (isInk) return MakePaint(brush, matrix, true);
  if (!object.hasPaint || matrix != object.paintMatrix) {
    object.paint = MakePaint(brush, matrix, false);
    object.paintMatrix = matrix;
    object.hasPaint = true;
  }
  return object.paint;
}

/// As ink, for text, a brush of several colours is one of them.
Paint PlusState::MakePaint(ByteView brush, const Matrix& matrix, bool isInk) {
  constexpr uint8_t kColourAt[] = {8, 12, 0, 16, 32};
  const uint32_t kind = brush.u32(4);
  PlusReader reader(brush.part(8));
  if (kind >= std::size(kColourAt)) {
    isWhole_ = false;
    return {};
  }
  if (isInk && kind == kTexture) return Paint::Colour(0);
  if (isInk || kind == kSolid) return colourOf(brush.u32(kColourAt[kind]));
  if (kind == kHatch) return HatchPaint(reader);
  if (kind == kTexture) return TexturePaint(reader, matrix);
  return kind == kPathGradient ? PathGradientPaint(reader, matrix) : LinearPaint(reader, matrix);
}

/// Of pixels as they are shown, whatever the coordinates are.
Paint PlusState::HatchPaint(PlusReader& reader) {
  const uint32_t style = reader.U32(), ink = reader.U32(), ground = reader.U32();
  if (style >= std::size(kHatches)) return colourOf(ink);
  std::string tile;
  appendPart(tile, ground, "M0 0h8v8h-8z");
  appendPart(tile, ink, hatchPath(kHatches[style]));
  const double pixel = canvas_.pixel();
  return Paint::Server(canvas_.AddTile({pixel, 0, 0, pixel, 0, 0}, 8, 8, tile));
}

Paint PlusState::TexturePaint(PlusReader& reader, const Matrix& matrix) {
  const uint32_t flags = reader.U32();
  reader.U32();  // how it repeats
  const Matrix own = flags & kHasMatrix ? reader.RealMatrix() : Matrix{};
  const PlusImage image(reader.rest());
  const bool isForTile = image.width > 0 && !image.isMetafile() && !image.mediaType.empty();
  if (isForTile && Afford(image.work())) {
    const auto write = [&image](PictureSink& sink) { return image.Write(sink); };
    const uint32_t server =
        canvas_.AddImageTile(own * matrix, image.width, image.height, write, image.mediaType);
    if (server != 0) return Paint::Server(server);
  }
  isWhole_ = false;
  return {};
}

/// What stands behind a gradient's two colours: others, or how they mix on the way.
void PlusState::ReadStops(PlusReader& reader, uint32_t flags, uint32_t from, uint32_t to) {
  stops_.clear();
  const auto add = [&](double offset, uint32_t argb) {
    stops_.push_back({static_cast<float>(offset), argb & 0xFFFFFF, static_cast<uint8_t>(argb >> 24)});
  };
  if (flags & kHasDownFactors) reader.Take(reader.Count(8) * size_t{8});
  if (flags & (kHasColours | kHasFactors)) {
    const size_t count = reader.Count(8);
    PlusReader positions(reader.Take(count * 4));
    while (positions.left() > 0) {
      const double at = positions.Real();
      add(at, flags & kHasColours ? reader.U32() : mixed(from, to, reader.Real()));
    }
  } else {
    add(0, from);
    add(1, to);
  }
}

/// The file has a box, through which the colours go from left to right.
Paint PlusState::LinearPaint(PlusReader& reader, const Matrix& matrix) {
  const uint32_t flags = reader.U32(), wrapMode = reader.U32();
  const Box box = reader.Rectangle();
  const uint32_t from = reader.U32(), to = reader.U32();
  reader.Take(8);
  const Matrix all = flags & kHasMatrix ? reader.RealMatrix() * matrix : matrix;
  ReadStops(reader, flags, from, to);
  // What is slanted has its lines of one colour along the slant, and its way across them.
  const Point begin = all(box.left, box.top);
  const double square = all.c * all.c + all.d * all.d;
  if (!(square > 0)) return colourOf(from);
  const double way = (all.a * all.d - all.b * all.c) * box.width() / square;
  return Paint::Server(canvas_.AddLinearGradient({}, begin, {begin.x + all.d * way, begin.y - all.c * way},
                                                 stops_, spreadOf(wrapMode)));
}

/// Goes from the outline to the centre, as through an ellipse that is as large as the outline.
Paint PlusState::PathGradientPaint(PlusReader& reader, const Matrix& matrix) {
  const uint32_t flags = reader.U32();
  reader.U32();  // how it repeats
  const uint32_t inner = reader.U32();
  const Point told = reader.RealPoint();
  uint32_t outer = inner, colours = 0;
  for (const uint32_t count = reader.Count(4); colours < count;)
    outer = mixed(outer, reader.U32(), 1.0 / ++colours);
  PlusOutline outline;
  if (flags & kHasPath) {
    outline.AddPath(reader.TakeCounted());
  } else {
    reader.Points(reader.U32(), 0, outline, PlusOutline::kLine);
  }
  const Matrix all = flags & kHasMatrix ? reader.RealMatrix() * matrix : matrix;
  ReadStops(reader, flags, outer, inner);
  double focus = 0;
  if (flags & kHasFocus) {
    reader.U32();  // two of them
    focus = std::clamp(reader.Real(), 0.0, 1.0);
  }
  std::reverse(stops_.begin(), stops_.end());
  for (GradientStop& stop : stops_) stop.offset = static_cast<float>(1 - (1 - focus) * stop.offset);

  outline.Move(all);
  path_.clear();
  outline.Put(path_);
  const Box& box = path_.bounds();
  const double radius = box.width() / 2, flat = box.height() / box.width();
  if (!(radius > 0) || !(flat > 0)) return colourOf(inner);
  const Point centre = all(told);
  Point lit{centre.x - box.left - radius, (centre.y - box.top) / flat - radius};
  const double away = std::hypot(lit.x, lit.y), nearer = away > radius * 0.95 ? radius * 0.95 / away : 1;
  lit = {lit.x * nearer, lit.y * nearer};
  return Paint::Server(canvas_.AddRadialGradient(
      {1, 0, 0, flat, box.left + radius, box.top + box.height() / 2}, {}, radius, lit, stops_, Spread::kPad));
}

}  // namespace pagerex
