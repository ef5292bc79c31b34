// What the opcodes of a PICT show.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <numbers>

#include "base/symbol_characters.h"
#include "base/utf8.h"
#include "pictures/bitmap.h"
#include "pictures/pict_player.h"

namespace pagerex {
namespace {

/// Numbers that fonts had from the beginning.
struct KnownFont {
  uint16_t number;
  char name[10];
};
constexpr KnownFont kFonts[] = {
    {0, "Chicago"}, {2, "New York"}, {3, "Geneva"},     {4, "Monaco"},   {5, "Venice"},  {6, "London"},
    {7, "Athens"},  {20, "Times"},   {21, "Helvetica"}, {22, "Courier"}, {23, "Symbol"}, {1, "Geneva"},
};

enum Face : uint8_t { kBold = 1, kItalic = 2, kUnderlined = 4 };

/// What comes of a pen and of what is there. With kOpposite in it the pattern's bits are others.
enum Mode : uint16_t { kCopy, kOr, kXor, kClear, kOpposite = 4, kFirstOfColours = 32, kTransparent = 36 };

constexpr uint32_t kWhite = 0xFFFFFF;

}  // namespace

Box PictPlayer::OnCanvas(const Box& box, double inset) const {
  const double right = std::min(penSize_.x / 2, box.width() / 2) * inset;
  const double down = std::min(penSize_.y / 2, box.height() / 2) * inset;
  const Point start = to_(box.left + right, box.top + down), end = to_(box.right - right, box.bottom - down);
  return {start.x, start.y, end.x, end.y};
}

// --- Patterns ---

PictPlayer::Drawing PictPlayer::DrawingOf(Pattern& pattern, uint16_t mode) {
  if (pattern.isColour) return {Paint::Colour(pattern.rgb), Blend::kNormal};
  if (pattern.isImage) return {Paint::Server(pattern.server), Blend::kNormal};
  if (mode >= kFirstOfColours) mode = mode == kTransparent ? kOr : kCopy;
  const auto kind = static_cast<uint8_t>(mode & 7);
  const uint8_t what = kind & 3;
  const uint32_t ink = what == kXor ? kWhite : what == kClear ? ground_ : ink_;
  // Where nothing is drawn, the colour is one that only stands for that.
  const uint32_t ground = what == kCopy ? ground_ : ~ink & kWhite;
  const Blend blend = what == kXor ? Blend::kDifference : Blend::kNormal;
  const uint64_t shown = kind & kOpposite ? ~pattern.bits : pattern.bits;
  if (shown == UINT64_MAX) return {Paint::Colour(ink), blend};
  if (shown == 0) return {what == kCopy ? Paint::Colour(ground) : Paint{}, blend};
  if (pattern.server == 0 || pattern.ink != ink || pattern.ground != ground || pattern.kind != kind) {
    constexpr uint8_t kHeader[40] = {40, 0, 0, 0, 8, 0, 0, 0, 0xF8, 0xFF, 0xFF, 0xFF, 1, 0, 1};
    uint8_t bits[32] = {};
    for (size_t i = 0; i < 8; ++i) bits[4 * i] = static_cast<uint8_t>(shown >> (56 - 8 * i));
    const Dib dib{{kHeader, sizeof kHeader}, {bits, sizeof bits}, false, {}};
    PixelChange change;
    change.hasInks = true;
    change.inks[0] = change.key = ground;
    change.inks[1] = ink;
    change.hasKey = what != kCopy;
    pattern.server =
        canvas_.AddImageTile(to_, 8, 8, [&](PictureSink& sink) { return writePng(dib, change, sink); });
    pattern.ink = ink;
    pattern.ground = ground;
    pattern.kind = kind;
  }
  return {Paint::Server(pattern.server), blend};
}

// --- Lines ---

void PictPlayer::DrawLine(uint32_t opcode, PictBytes& in) {
  constexpr uint32_t kHasNoStart = 1, kIsShort = 2;
  Point from = pen_;
  if (!(opcode & kHasNoStart)) from = in.ReadPoint();
  if (opcode & kIsShort) {
    pen_.x = from.x + static_cast<int8_t>(in.U8());
    pen_.y = from.y + static_cast<int8_t>(in.U8());
  } else {
    pen_ = in.ReadPoint();
  }
  // The pen hangs below its point and to the right of it.
  const double width = pen_.x == from.x   ? penSize_.x
                       : pen_.y == from.y ? penSize_.y
                                          : (penSize_.x + penSize_.y) / 2;
  const Point half{penSize_.x / 2, penSize_.y / 2};
  if (lines_.empty() || width != lineWidth_ || from.x != linesEnd_.x || from.y != linesEnd_.y) {
    FlushLines();
    lines_.MoveTo(to_(from.x + half.x, from.y + half.y));
    lineWidth_ = width;
  }
  lines_.LineTo(to_(pen_.x + half.x, pen_.y + half.y));
  linesEnd_ = pen_;
}

void PictPlayer::FlushLines() {
  if (lines_.empty()) return;
  DrawFrame(lines_, lineWidth_);
  lines_.clear();
}

// --- Shapes ---

void PictPlayer::DrawShape(uint32_t opcode, PictBytes& in) {
  constexpr uint32_t kIsSame = 8, kVerbs = 7;
  const auto shape = static_cast<Shape>(opcode / 16 - 3);
  const uint32_t verb = opcode & kVerbs;
  if (!(opcode & kIsSame)) {
    if (shape >= kPolygon) {
      (shape == kPolygon ? polygon_ : region_) = in.TakeSized();
    } else {
      boxes_[shape] = in.ReadBox();
    }
  }
  if (shape == kArc) {
    startAngle_ = in.I16();
    arcAngle_ = in.I16();
  }
  if (verb > kFill || in.isBeyond()) return;
  PathData path;
  AddShape(path, shape, verb == kFrame);
  if (verb == kFrame) return DrawFrame(path, (penSize_.x + penSize_.y) / 2);
  Drawing drawing{Paint::Colour(kWhite), Blend::kDifference};
  if (verb == kPaint) drawing = DrawingOf(penPattern_, penMode_);
  if (verb == kErase || verb == kFill)
    drawing = DrawingOf(verb == kErase ? groundPattern_ : fillPattern_, kCopy);
  canvas_.Fill(path, drawing.paint, FillRule::kEvenOdd, drawing.blend);
}

void PictPlayer::DrawFrame(const PathData& path, double width) {
  if (!(width > 0)) return;
  const Drawing drawing = DrawingOf(penPattern_, penMode_);
  Stroke stroke;
  stroke.paint = drawing.paint;
  stroke.width = width * to_.Scale();
  stroke.cap = Stroke::Cap::kSquare;
  stroke.join = Stroke::Join::kMiter;
  canvas_.Draw(path, {}, FillRule::kNonZero, stroke, drawing.blend);
}

/// A frame lies within, so that the middle of its line lies half a pen inside.
void PictPlayer::AddShape(PathData& path, Shape shape, bool isFrame) const {
  if (shape == kPolygon) return AddPolygon(path, isFrame);
  if (shape == kRegion) {
    // Of one with steps a frame would be in its midst too.
    constexpr size_t kPlain = 10;
    if (!isFrame) return AddRegion(path, region_);
    if (region_.size() == kPlain) path.AddBox(OnCanvas(PictBytes(region_, 2).ReadBox(), 1));
    return;
  }
  const Box box = OnCanvas(boxes_[shape], isFrame ? 1 : 0);
  const double inset = isFrame ? 0.5 : 0, scale = to_.Scale();
  if (shape == kBox) path.AddBox(box);
  if (shape == kOval) path.AddEllipse(box);
  if (shape == kArc) AddArc(path, box, isFrame);
  if (shape == kRoundBox) {
    path.AddRoundBox(box, std::max(corner_.x / 2 - inset * penSize_.x, 0.0) * scale,
                     std::max(corner_.y / 2 - inset * penSize_.y, 0.0) * scale);
  }
}

/// Angles count from above, and as hands of a clock go, in a square that then gets the size of the box.
void PictPlayer::AddArc(PathData& path, const Box& box, bool isFrame) const {
  if (std::abs(arcAngle_) >= 360) return path.AddEllipse(box);
  const Point centre{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
  const double radiusX = box.width() / 2, radiusY = box.height() / 2;
  const auto at = [&](int degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return Point{centre.x + radiusX * std::sin(angle), centre.y - radiusY * std::cos(angle)};
  };
  if (isFrame) {
    path.MoveTo(at(startAngle_));
  } else {
    path.MoveTo(centre);
    path.LineTo(at(startAngle_));
  }
  path.ArcTo(radiusX, radiusY, 0, std::abs(arcAngle_) > 180, arcAngle_ > 0, at(startAngle_ + arcAngle_));
  if (!isFrame) path.Close();
}

void PictPlayer::AddPolygon(PathData& path, bool isFrame) const {
  constexpr size_t kFront = 10;
  const Point half = isFrame ? Point{penSize_.x / 2, penSize_.y / 2} : Point{};
  for (PictBytes in(polygon_, kFront); in.at() + 4 <= polygon_.size();) {
    const Point next = in.ReadPoint(), to = to_(next.x + half.x, next.y + half.y);
    path.empty() ? path.MoveTo(to) : path.LineTo(to);
  }
  if (!isFrame && !path.empty()) path.Close();
}

/// A row of numbers tells for each line where in and out change against the line above. Boxes from there
/// to the bottom, of which those within an odd number are in, come to the same.
void PictPlayer::AddRegion(PathData& path, ByteView region) const {
  constexpr int16_t kLast = 0x7FFF;
  PictBytes in(region, 2);
  const Box box = in.ReadBox();
  if (in.atEnd()) return path.AddBox(OnCanvas(box));
  for (int16_t y = in.I16(); y != kLast && !in.isBeyond(); y = in.I16()) {
    for (int16_t x = in.I16(); x != kLast && !in.isBeyond(); x = in.I16()) {
      const int16_t end = in.I16();
      if (end == kLast) break;
      path.AddBox(
          OnCanvas({static_cast<double>(x), static_cast<double>(y), static_cast<double>(end), box.bottom}));
    }
  }
}

void PictPlayer::SetClip(ByteView region) {
  const Box box = PictBytes(region, 2).ReadBox();
  constexpr size_t kPlain = 10;
  canvas_.SetClip(0);
  if (region.size() <= kPlain && box.left <= frame_.left && box.top <= frame_.top &&
      box.right >= frame_.right && box.bottom >= frame_.bottom) {
    return;
  }
  PathData path;
  AddRegion(path, region);
  canvas_.SetClip(canvas_.AddClip(path.view(), FillRule::kEvenOdd, 0));
}

// --- Text ---

void PictPlayer::DrawText(uint32_t opcode, PictBytes& in) {
  constexpr uint32_t kAcross = 1, kDown = 2;
  if (!(opcode & (kAcross | kDown))) textAt_ = in.ReadPoint();
  if (opcode & kAcross) textAt_.x += in.U8();
  if (opcode & kDown) textAt_.y += in.U8();
  const ByteView bytes = in.Take(in.U8());
  ByteView name;
  for (const KnownFont& font : kFonts) {
    if (font.number == font_) name = {font.name, sizeof font.name};
  }
  for (const FontName& font : fontNames_) {
    if (font.number == font_ && !font.name.empty()) name = font.name;
  }
  const std::u16string fontName = macRoman_.Read(name);
  std::string family;
  appendUtf8(family, fontName);
  const SymbolFont symbols = symbolFontNamed(fontName);
  const bool isOfSigns = symbols != SymbolFont::kNone;
  std::u16string text = macRoman_.Read(isOfSigns ? ByteView() : bytes);
  for (size_t i = 0; isOfSigns && i < bytes.size(); ++i) appendSymbol(symbols, bytes.u8(i), text);
  TextLook look;
  look.family = family;
  look.size = textSize_ ? textSize_ : 12;
  if (face_ & kBold) look.weight = 700;
  look.isItalic = face_ & kItalic;
  look.isUnderlined = face_ & kUnderlined;
  look.paint = Paint::Colour(ink_);
  const Point at = to_(textAt_);
  TextPlace place;
  place.matrix = Matrix{textScale_.x, 0, 0, textScale_.y, 0, 0} * to_;
  place.matrix.e = at.x;
  place.matrix.f = at.y;
  canvas_.Text(look, place, text);
}

// --- Images ---

Matrix PictPlayer::PlaceOf(const Box& box) const {
  return Matrix{box.width(), 0, 0, box.height(), box.left, box.top} * to_;
}

bool PictPlayer::DrawBits(uint32_t opcode, PictBytes& in) {
  constexpr uint32_t kHasRegion = 1, kIsDirect = 2, kIsPacked = 8;
  PictBits bits;
  bits.ReadHeader(in, opcode & kIsDirect, ink_, ground_);
  const Box from = in.ReadBox(), to = in.ReadBox();
  const uint16_t mode = in.U16();
  const uint32_t clip = canvas_.clip();
  if (opcode & kHasRegion) {
    PathData path;
    AddRegion(path, in.TakeSized());
    canvas_.SetClip(canvas_.AddClip(path.view(), FillRule::kEvenOdd, clip));
  }
  const bool isWhole = bits.FindRows(in, opcode & kIsPacked);
  if (mode == kOr || mode == kTransparent) bits.MakeClear(ground_);
  Box shown = from;
  bits.Cut(shown);
  if (shown.width() > 0 && shown.height() > 0) {
    // Where a part of it is not there, the rest stays at its place.
    const double right = to.width() / from.width(), down = to.height() / from.height();
    const Box place{to.left + (shown.left - from.left) * right, to.top + (shown.top - from.top) * down,
                    to.left + (shown.right - from.left) * right, to.top + (shown.bottom - from.top) * down};
    canvas_.Image(
        PlaceOf(place), "image/png", [&](PictureSink& sink) { return bits.Write(shown, sink); },
        mode == kXor ? Blend::kDifference : Blend::kNormal);
  }
  canvas_.SetClip(clip);
  return isWhole;
}

/// Only what browsers know is shown.
void PictPlayer::DrawQuickTime(ByteView bytes) {
  PictBytes in(bytes);
  in.Skip(2);
  double numbers[9];
  for (double& number : numbers) number = in.Fixed();
  const uint32_t matteSize = in.U32();
  in.Skip(10);
  const Box from = in.ReadBox();
  in.Skip(4);
  const uint32_t maskSize = in.U32();
  in.Skip(matteSize);
  in.Skip(maskSize);
  const size_t description = in.at();
  const uint32_t descriptionSize = in.U32();
  in.Skip(40);
  const uint32_t size = in.U32();
  in = PictBytes(bytes, description);
  in.Skip(descriptionSize);
  const ByteView image = in.Take(size ? size : bytes.size());
  constexpr uint16_t kJpeg = 0xD8FF;
  if (image.u16(0) != kJpeg || from.width() <= 0 || from.height() <= 0) {
    isWhole_ = false;
    return;
  }
  const double right = numbers[0], down = numbers[4], x = numbers[6], y = numbers[7];
  const Box place{from.left * right + x, from.top * down + y, from.right * right + x, from.bottom * down + y};
  canvas_.Image(PlaceOf(place), "image/jpeg", [&](PictureSink& sink) { return sink.Put(image); });
}

}  // namespace pagerex
