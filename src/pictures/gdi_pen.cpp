// What pens and brushes become on the canvas.

#include "pictures/gdi.h"

namespace pagerex {
namespace {

/// Dashes and gaps of PS_DASH 1 to PS_DASHDOTDOT 4: of thin lines in pixels, of others in widths.
struct DashRow {
  uint8_t count;
  float thin[6], wide[6];
};
constexpr DashRow kDashes[] = {
    {2, {18, 6}, {3, 1}},
    {2, {3, 3}, {1, 1}},
    {4, {9, 6, 3, 6}, {3, 1, 1, 1}},
    {6, {9, 3, 3, 3, 3, 3}, {3, 1, 1, 1, 1, 1}},
};

constexpr std::string_view kHatches[] = {
    "M0 4h8",
    "M4 0v8",
    "M-1-1 9 9M-1 7 1 9M7-1 9 1",
    "M-1 9 9-1M-1 1 1-1M7 9 9 7",
    "M0 4h8M4 0v8",
    "M-1-1 9 9M-1 7 1 9M7-1 9 1M-1 9 9-1M-1 1 1-1M7 9 9 7",
};

void appendColour(std::string& out, std::string_view attribute, uint32_t rgb) {
  constexpr char kDigits[] = "0123456789abcdef";
  out.append(attribute).append("=\"#");
  for (int shift = 20; shift >= 0; shift -= 4) out += kDigits[rgb >> shift & 15];
  out += '"';
}

std::string hatchMarkup(uint8_t hatch, uint32_t rgb, bool isOpaque, uint32_t ground) {
  std::string markup;
  if (isOpaque) {
    appendColour(markup, "<rect width=\"8\" height=\"8\" fill", ground);
    markup += "/>";
  }
  markup.append("<path d=\"").append(kHatches[std::min<size_t>(hatch, std::size(kHatches) - 1)]);
  appendColour(markup, "\" stroke", rgb);
  return markup + "/>";
}

constexpr size_t kMostTiles = 16;

}  // namespace

/// A pattern counts in pixels, and begins where the device does.
uint32_t Gdi::TileOf(const Brush& brush) {
  const bool isHatch = brush.kind == Brush::Kind::kHatched;
  const double pixel = canvas_.pixel();
  const Point origin = device_.Turn(state_.brushOrigin.x, state_.brushOrigin.y);
  const Matrix matrix{pixel, 0, 0, pixel, origin.x, origin.y};
  const bool hasGround = isHatch ? state_.isOpaque : brush.hasInks;
  const Tile key{isHatch ? nullptr : brush.pattern.bits.data(),
                 matrix,
                 {isHatch ? brush.hatch : 0xFFU, isHatch ? brush.rgb : 0, hasGround ? state_.groundColour : 0,
                  brush.hasInks ? state_.textColour : 0, hasGround ? 1U : 0U},
                 0};
  for (const Tile& tile : tiles_)
    if (tile.bytes == key.bytes && tile.matrix == matrix &&
        std::equal(key.look, std::end(key.look), tile.look))
      return tile.server;
  Tile tile = key;
  if (isHatch) {
    tile.server = canvas_.AddTile(matrix, 8, 8,
                                  hatchMarkup(brush.hatch, brush.rgb, state_.isOpaque, state_.groundColour));
  } else {
    PixelChange change;
    change.hasInks = brush.hasInks;
    change.inks[0] = state_.textColour;
    change.inks[1] = state_.groundColour;
    const BitmapSize size = sizeOf(brush.pattern);
    // Drawn in other colours again and again, one bitmap would cost more than its file.
    const uint64_t told = uint64_t{static_cast<uint32_t>(size.width)} * static_cast<uint32_t>(size.height);
    const uint64_t pixels = std::min(told, mostPixels(brush.pattern.bits.size()));
    if (pixels > tilePixelsLeft_) return 0;
    tilePixelsLeft_ -= pixels;
    tile.server = canvas_.AddImageTile(matrix, size.width, size.height, [&](PictureSink& sink) {
      return writePng(brush.pattern, change, sink);
    });
  }
  if (tiles_.size() < kMostTiles) {
    tiles_.push_back(tile);
  } else {
    tiles_[nextTile_++ % kMostTiles] = tile;
  }
  return tile.server;
}

Paint Gdi::FillOf(const Brush& brush, uint8_t function) {
  if (brush.kind == Brush::Kind::kNull) return {};
  if (brush.kind == Brush::Kind::kSolid) return Paint::Colour(applied(function, brush.rgb));
  const uint32_t server = TileOf(brush);
  return server == 0 ? Paint{} : Paint::Server(server);
}

const Paint& Gdi::FillNow() {
  if (!isFillKnown_) fill_ = FillOf(state_.brush, binaryStep(state_.rop2).function);
  isFillKnown_ = true;
  return fill_;
}

/// `wide` is the width as the file has it, which may be less than what is seen.
void Gdi::SetDashes(double wide) {
  const uint32_t style = state_.pen.style & kPenStyles;
  const float pixel = static_cast<float>(canvas_.pixel());
  if (style == kPenUserStyle) {
    const auto scale = static_cast<float>(state_.pen.isCosmetic ? canvas_.pixel() : map().Scale());
    for (const float dash : state_.pen.dashes) {
      if (stroke_.dashCount == stroke_.dashes.size()) break;
      stroke_.dashes[stroke_.dashCount++] = std::fabs(dash) * scale;
    }
  } else if (style == kPenAlternate) {
    stroke_.dashCount = 2;
    stroke_.dashes = {pixel, pixel};
  } else if (style >= 1 && style <= std::size(kDashes)) {
    const DashRow& row = kDashes[style - 1];
    const bool isThin = wide < 1.5 * canvas_.pixel();
    stroke_.dashCount = row.count;
    for (size_t i = 0; i < row.count; ++i)
      stroke_.dashes[i] = isThin ? row.thin[i] * pixel : row.wide[i] * static_cast<float>(stroke_.width);
    stroke_.cap = Stroke::Cap::kButt;
  }
  // Dashes of no length would keep a browser busy.
  float sum = 0;
  for (size_t i = 0; i < stroke_.dashCount; ++i) sum += stroke_.dashes[i];
  if (!(sum > pixel / 4)) stroke_.dashCount = 0;
}

const Stroke& Gdi::StrokeNow() {
  if (isStrokeKnown_) return stroke_;
  isStrokeKnown_ = true;
  stroke_ = {};
  const Pen& pen = state_.pen;
  if ((pen.style & kPenStyles) == kPenNull) return stroke_;
  stroke_.paint = FillOf(pen.brush, binaryStep(state_.rop2).function);
  const double wide = std::fabs(pen.width) * (pen.isCosmetic ? device_.Scale() : map().Scale());
  // No line is thinner than what a screen can show.
  stroke_.width = std::max(wide, 0.8 * canvas_.pixel());
  const uint32_t cap = pen.style & kCaps, join = pen.style & kJoins;
  stroke_.cap = cap == kCapSquare ? Stroke::Cap::kSquare
                : cap == kCapFlat ? Stroke::Cap::kButt
                                  : Stroke::Cap::kRound;
  stroke_.join = join == kJoinBevel   ? Stroke::Join::kBevel
                 : join == kJoinMiter ? Stroke::Join::kMiter
                                      : Stroke::Join::kRound;
  stroke_.miterLimit = std::clamp(state_.miterLimit, 1.0F, 1000.0F);
  SetDashes(wide);
  return stroke_;
}

}  // namespace pagerex
