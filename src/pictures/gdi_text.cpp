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

void Gdi::Text(const TextRecord& record) {
  FlushLines();
  const Font& font = state_.font;
  const FontMeasures& measures = measuresOf(font.family);
  const Matrix& to = map();
  const bool isTurned = !state_.world.isUpright() || state_.world.a < 0 || state_.world.d < 0;
  const double down = std::hypot(to.c, to.d), right = std::hypot(to.a, to.b);
  if (!(down > 0) || !(right > 0)) return;

  // The text's own coordinates: as many units of the canvas as a logical one down the page has.
  double em = font.height < 0 ? -font.height : font.height / (measures.ascent + measures.descent);
  if (em == 0) em = pixelsPerInchY_ / 6 * device_.Scale() / down;
  const double squeeze = right / down;
  double across = 0;
  std::vector<double> advances(record.advances.begin(), record.advances.end());
  const std::u16string shown = shownCharacters(font, record.text);
  advances.resize(std::min(advances.size(), shown.size()));
  if (advances.size() < shown.size()) advances.clear();
  for (double& advance : advances) across += advance *= squeeze;
  double widen = 1;
  if (advances.empty()) {
    if (font.width != 0)
      widen = std::clamp(std::fabs(font.width) * squeeze / (measures.mean * em), 0.1, 10.0);
    across = estimatedWidth(shown, measures) * em;
    if (state_.characterExtra != 0 || state_.breakExtra != 0) {
      // What is set apart has a width of its own.
      across = 0;
      for (const char16_t& c : shown) {
        const double extra = state_.characterExtra + (c == ' ' ? state_.breakExtra : 0);
        advances.push_back(std::max(estimatedWidth({&c, 1}, measures) * em * widen + extra * squeeze, 0.0));
        across += advances.back();
      }
      widen = 1;
    }
  }

  const double angle = font.escapement * std::numbers::pi / 180;
  Matrix turn{std::cos(angle), -std::sin(angle), std::sin(angle), std::cos(angle), 0, 0};
  Matrix page{down, 0, 0, down, 0, 0};
  if (isTurned) {
    // What turns the page over does not turn its letters over.
    page = to;
    page.e = page.f = 0;
    const double signX = state_.viewportExtent.x * state_.windowExtent.x < 0 ? -1 : 1;
    const double signY = state_.viewportExtent.y * state_.windowExtent.y < 0 ? -1 : 1;
    page = Matrix{signX / squeeze, 0, 0, signY, 0, 0} * page;
  }
  TextPlace place;
  place.matrix = Matrix{widen, 0, 0, 1, 0, 0} * turn * page;
  const uint32_t align = state_.textAlign;
  const Point at = to(align & kUpdatesCurrent ? state_.current : record.at);
  place.matrix.e = at.x;
  place.matrix.f = at.y;
  if ((align & kDown) == kBottom) place.at.y = -measures.descent * em;
  if ((align & kDown) == 0) place.at.y = measures.ascent * em;
  if ((align & kAcross) == kRight) place.anchor = TextPlace::Anchor::kEnd;
  if ((align & kAcross) == kCentre) place.anchor = TextPlace::Anchor::kMiddle;
  place.isRightToLeft = record.isRightToLeft || (align & kRightToLeft) != 0;
  place.advances = advances;

  const ClipArea before = state_.clip;
  if (record.hasBox && record.isOpaque) {
    figure_.clear();
    AddBox(figure_, record.box);
    Draw(figure_, Paint::Colour(state_.groundColour), FillRule::kNonZero, {}, {});
  } else if (state_.isOpaque && !shown.empty() && !isInPath_) {
    const double left = place.anchor == TextPlace::Anchor::kStart    ? 0
                        : place.anchor == TextPlace::Anchor::kMiddle ? -across / 2
                                                                     : -across;
    const double top = place.at.y - measures.ascent * em, bottom = place.at.y + measures.descent * em;
    figure_.clear();
    figure_.MoveTo(place.matrix(left, top));
    figure_.LineTo(place.matrix(left + across, top));
    figure_.LineTo(place.matrix(left + across, bottom));
    figure_.LineTo(place.matrix(left, bottom));
    figure_.Close();
    Draw(figure_, Paint::Colour(state_.groundColour), FillRule::kNonZero, {}, {});
  }
  if (record.hasBox && record.isClipped) ClipBox(record.box);
  if (!shown.empty()) {
    ApplyClip();
    TextLook look{font.family,
                  em,
                  font.weight,
                  font.isItalic,
                  font.isUnderlined,
                  font.isStruckOut,
                  isInPath_ ? FillNow() : Paint::Colour(state_.textColour)};
    canvas_.Text(look, place, shown);
  }
  if (record.hasBox && record.isClipped) state_.clip = before;
  if ((align & kUpdatesCurrent) && (align & kAcross) != kCentre)
    state_.current.x += ((align & kAcross) == kRight ? -across : across) / squeeze;
}

}  // namespace pagerex
