// Text.

#include <numbers>
#include <string>

#include "base/symbol_characters.h"
#include "pictures/font_measures.h"
#include "pictures/gdi.h"

namespace pagerex {
namespace {

/// TA_...
enum TextAlign : uint32_t {
  kUpdatesCurrent = 1,
  kRight = 2,
  kCentre = 6,
  kBottom = 8,
  kBaseLine = 24,
  kAcross = 6,
  kDown = 24,
  kRightToLeft = 256,
};

/// Characters of a font of signs as those of Unicode, each one unit, as the advances are.
std::u16string shownCharacters(const Font& font, std::u16string_view text) {
  std::u16string shown(text);
  const SymbolFont symbols = symbolFontNamed(std::u16string(font.family.begin(), font.family.end()));
  if (symbols == SymbolFont::kNone) return shown;
  for (char16_t& c : shown) {
    const char32_t sign = symbolCharacter(symbols, c);
    if (sign != 0 && sign < 0x10000) c = static_cast<char16_t>(sign);
  }
  return shown;
}

}  // namespace

/// Of the em square, in logical units.
double Gdi::EmOf(const FontMeasures& measures) {
  const double height = state_.font.height;
  if (height == 0) return pixelsPerInchY_ / 6 * device_.Scale() / std::hypot(map().c, map().d);
  return height < 0 ? -height : height / (measures.ascent + measures.descent);
}

/// From one character to the next, where the record, or the state, says it. Sets how long all are, and how
/// broad the font's letters are drawn.
std::vector<double> Gdi::AdvancesOf(const TextRecord& record, std::u16string_view shown,
                                    const TextScale& scale, double& across, double& widen) {
  const FontMeasures& measures = measuresOf(state_.font.family);
  std::vector<double> advances;
  across = 0;
  widen = 1;
  if (record.advances.size() >= shown.size()) {
    advances.assign(record.advances.begin(), record.advances.begin() + static_cast<long>(shown.size()));
    for (double& advance : advances) across += advance *= scale.squeeze;
    return advances;
  }
  if (state_.font.width != 0)
    widen = std::clamp(std::fabs(state_.font.width) * scale.squeeze / (measures.mean * scale.em), 0.1, 10.0);
  across = estimatedWidth(shown, measures) * scale.em;
  if (state_.characterExtra == 0 && state_.breakExtra == 0) return advances;
  // What is set apart has a width of its own.
  across = 0;
  for (const char16_t& c : shown) {
    const double extra = state_.characterExtra + (c == ' ' ? state_.breakExtra : 0);
    const double own = estimatedWidth({&c, 1}, measures) * scale.em * widen;
    advances.push_back(std::max(own + extra * scale.squeeze, 0.0));
    across += advances.back();
  }
  widen = 1;
  return advances;
}

/// From the text's own coordinates, which have as many units of the canvas as a logical one has down the
/// page.
Matrix Gdi::TextMatrix(const TextScale& scale, double widen) {
  const double angle = state_.font.escapement * std::numbers::pi / 180;
  const Matrix turn{std::cos(angle), -std::sin(angle), std::sin(angle), std::cos(angle), 0, 0};
  const bool isTurned = !state_.world.isUpright() || state_.world.a < 0 || state_.world.d < 0;
  Matrix page{scale.down, 0, 0, scale.down, 0, 0};
  if (isTurned) {
    // What turns the page over does not turn its letters over.
    page = map();
    page.e = page.f = 0;
    const double signX = state_.viewportExtent.x * state_.windowExtent.x < 0 ? -1 : 1;
    const double signY = state_.viewportExtent.y * state_.windowExtent.y < 0 ? -1 : 1;
    page = Matrix{signX / scale.squeeze, 0, 0, signY, 0, 0} * page;
  }
  return Matrix{widen, 0, 0, 1, 0, 0} * turn * page;
}

/// What lies behind the text: its box, or the room of its letters.
void Gdi::ShowGround(const TextRecord& record, const TextPlace& place, double em, double across) {
  figure_.clear();
  if (record.hasBox && record.isOpaque) {
    AddBox(figure_, record.box);
  } else if (state_.isOpaque && !record.text.empty() && !isInPath_) {
    const FontMeasures& measures = measuresOf(state_.font.family);
    const double left = place.anchor == TextPlace::Anchor::kStart    ? 0
                        : place.anchor == TextPlace::Anchor::kMiddle ? -across / 2
                                                                     : -across;
    const double top = place.at.y - measures.ascent * em, bottom = place.at.y + measures.descent * em;
    figure_.MoveTo(place.matrix(left, top));
    figure_.LineTo(place.matrix(left + across, top));
    figure_.LineTo(place.matrix(left + across, bottom));
    figure_.LineTo(place.matrix(left, bottom));
    figure_.Close();
  }
  Draw(figure_, Paint::Colour(state_.groundColour), FillRule::kNonZero, {}, {});
}

void Gdi::Text(const TextRecord& record) {
  FlushLines();
  const Font& font = state_.font;
  const FontMeasures& measures = measuresOf(font.family);
  const Matrix& to = map();
  TextScale scale;
  scale.down = std::hypot(to.c, to.d);
  scale.squeeze = std::hypot(to.a, to.b) / scale.down;
  scale.em = EmOf(measures);
  if (!(scale.down > 0) || !(scale.squeeze > 0)) return;

  const std::u16string shown = shownCharacters(font, record.text);
  double across = 0, widen = 1;
  const std::vector<double> advances = AdvancesOf(record, shown, scale, across, widen);
  TextPlace place;
  place.matrix = TextMatrix(scale, widen);
  const uint32_t align = state_.textAlign;
  const Point at = to(align & kUpdatesCurrent ? state_.current : record.at);
  place.matrix.e = at.x;
  place.matrix.f = at.y;
  if ((align & kDown) == kBottom) place.at.y = -measures.descent * scale.em;
  if ((align & kDown) == 0) place.at.y = measures.ascent * scale.em;
  if ((align & kAcross) == kRight) place.anchor = TextPlace::Anchor::kEnd;
  if ((align & kAcross) == kCentre) place.anchor = TextPlace::Anchor::kMiddle;
  place.isRightToLeft = record.isRightToLeft || (align & kRightToLeft) != 0;
  place.advances = advances;

  ShowGround(record, place, scale.em, across);
  const ClipArea before = state_.clip;
  const bool isClipped = record.hasBox && record.isClipped;
  if (isClipped) ClipBox(record.box);
  if (!shown.empty()) {
    ApplyClip();
    const Paint ink = isInPath_ ? FillNow() : Paint::Colour(state_.textColour);
    canvas_.Text(
        {font.family, scale.em, font.weight, font.isItalic, font.isUnderlined, font.isStruckOut, ink}, place,
        shown);
  }
  if (isClipped) state_.clip = before;
  if ((align & kUpdatesCurrent) && (align & kAcross) != kCentre)
    state_.current.x += ((align & kAcross) == kRight ? -across : across) / scale.squeeze;
}

}  // namespace pagerex
