// Text of EMF+.

#include <algorithm>
#include <cmath>

#include "base/utf8.h"
#include "pictures/emf_plus_state.h"
#include "pictures/font_measures.h"

namespace pagerex {
namespace {

// Styles of fonts.
constexpr uint32_t kBold = 1, kItalic = 2, kUnderline = 4, kStrikeout = 8;

/// Takes the first line of a text, which is at most so wide, in sizes of the font.
std::u16string_view takeLine(std::u16string_view& text, double most, const FontMeasures& measures) {
  constexpr char16_t kFirstWide = 0x1100;
  size_t end = 0, next = 0;
  for (size_t i = 0;; ++i) {
    const char16_t c = i < text.size() ? text[i] : u'\n';
    const bool isOver = most < 0 && c != ' ' && c != '\n';
    if (isOver && next == 0 && c >= kFirstWide && i > 0) end = next = i;
    if (c == ' ' || c == '\n') {
      end = i;
      next = i + 1;
    }
    if (c == '\n' || (isOver && next > 0)) break;
    most -= estimatedWidth({&c, 1}, measures);
  }
  const std::u16string_view line = text.substr(0, end);
  text.remove_prefix(std::min(next, text.size()));
  return line;
}

}  // namespace

/// The codes of a symbol font become what they show. Without ampersands that mark a key, where these do.
void PlusState::ReadText(PlusReader& reader, uint32_t count, bool hasHotkeys, SymbolFont symbols) {
  text_.clear();
  for (bool isMarked = false; count > 0 && reader.left() > 1; --count) {
    const char16_t unit = reader.U16();
    isMarked = hasHotkeys && unit == '&' && !isMarked;
    if (isMarked || unit == '\r') continue;
    if (symbols == SymbolFont::kNone) {
      text_ += unit;
    } else {
      appendSymbol(symbols, unit, text_);
    }
  }
}

SymbolFont PlusState::ReadFont(uint32_t id, TextLook& look) {
  PlusReader reader(Find(id, PlusType::kFont));
  reader.U32();  // version
  const double size = reader.Real();
  const uint32_t unit = reader.U32(), style = reader.U32();
  reader.U32();
  ReadText(reader, reader.U32(), false, SymbolFont::kNone);
  family_.clear();
  appendUtf8(family_, text_);
  look.family = family_;
  look.size = unit == 0 ? size : size * PixelsOf(unit) / graphics_.pageX;
  look.weight = style & kBold ? 700 : 400;
  look.isItalic = style & kItalic;
  look.isUnderlined = style & kUnderline;
  look.isStruckOut = style & kStrikeout;
  canvas_.SetClip(graphics_.clip);
  return symbolFontNamed(text_);
}

void PlusState::DrawString(Record& record) {
  constexpr uint32_t kRightToLeft = 1, kVertical = 2, kNoWrap = 0x1000, kNoClip = 0x4000;
  PlusReader& data = record.data;
  TextLook look;
  look.paint = FillPaint(record, data.U32(), true);
  const uint32_t formatId = data.U32(), count = data.U32();
  const Box box = data.Rectangle();
  const SymbolFont symbols = ReadFont(record.id(), look);
  ByteView format;
  if (formatId < objects_.size() && objects_[formatId].type == PlusType::kStringFormat)
    format = objects_[formatId].view();
  const uint32_t flags = format.u32(4), lineAlign = format.u32(16);
  uint32_t align = std::min(format.u32(12), 2U);
  ReadText(data, count, format.u32(32) != 0, symbols);

  double width = box.width(), height = box.height();
  TextPlace place;
  place.matrix = {1, 0, 0, 1, box.left, box.top};
  if (flags & kVertical) {
    // Lines go down, and follow one another to the left.
    std::swap(width, height);
    place.matrix = {0, 1, -1, 0, box.right, box.top};
  }
  place.matrix = place.matrix * WorldToCanvas();
  // Near and far change sides with the way of writing.
  place.isRightToLeft = flags & kRightToLeft;
  if (place.isRightToLeft) align = 2 - align;
  place.anchor = static_cast<TextPlace::Anchor>(align);
  PlusReader margins(format.part(36));
  const double before = format.empty() ? 1.0 / 6 : margins.Real(),
               behind = format.empty() ? before : margins.Real();
  place.at.x = width * align / 2;
  if (align != 1) place.at.x += look.size * (align == 0 ? before : -behind);

  // Widths are guessed: what may just fit stays on its line.
  const double most = width > 0 && !(flags & kNoWrap) ? std::max(width / look.size * 1.12, 1.0) : 1e9;
  std::u16string_view rest = text_;
  const FontMeasures& measures = measuresOf(look.family);
  const double ascent = measures.ascent * look.size, step = ascent + measures.descent * look.size;
  double lines = 0;
  for (; !rest.empty(); ++lines) takeLine(rest, most, measures);
  place.at.y = ascent + (height - lines * step) * std::min(lineAlign, 2U) / 2;
  const double last = height > 0 && !(flags & kNoClip) ? height + ascent : HUGE_VAL;
  for (rest = text_; !rest.empty() && place.at.y < last; place.at.y += step)
    canvas_.Text(look, place, takeLine(rest, most, measures));
}

void PlusState::DrawDriverString(Record& record) {
  constexpr uint32_t kAreCharacters = 1, kOwnAdvances = 4;
  // Of ASCII, from the space on, in most TrueType fonts.
  constexpr char16_t kFirstGlyph = 3, kLastGlyph = 97;
  PlusReader& data = record.data;
  TextLook look;
  look.paint = FillPaint(record, data.U32(), true);
  const uint32_t flags = data.U32();
  const bool hasMatrix = data.U32() != 0;
  const uint32_t count = data.Count(2);
  const SymbolFont symbols = ReadFont(record.id(), look);
  PlusReader glyphs(data.Take(count * size_t{2}));
  const bool areCharacters = flags & kAreCharacters;
  text_.clear();
  while (glyphs.left() > 0) {
    char32_t c = glyphs.U16();
    if (areCharacters) {
      const char32_t sign =
          symbols == SymbolFont::kNone ? 0 : symbolCharacter(symbols, static_cast<char16_t>(c));
      if (sign != 0 && sign < 0x10000) c = sign;
    } else if (c >= kFirstGlyph && c <= kLastGlyph) {
      c += ' ' - kFirstGlyph;
    } else {
      isWhole_ = false;
      c = ' ';
    }
    text_ += static_cast<char16_t>(c);
  }
  data.Points(count, 0, outline_, PlusOutline::kLine);
  const auto& points = outline_.points;
  TextPlace place;
  place.matrix = (hasMatrix && data.left() >= 24 ? data.RealMatrix() : Matrix{}) * WorldToCanvas();
  const std::u16string_view text = text_;
  // Glyphs on one line are one text.
  for (size_t begin = 0, end = 0; begin < std::min(text.size(), points.size()); begin = end) {
    place.at = points[begin].at;
    if (flags & kOwnAdvances) return canvas_.Text(look, place, text);
    advances_.clear();
    for (end = begin + 1; end < points.size() && end < text.size(); ++end) {
      const double x = points[end].at.x - points[end - 1].at.x, y = points[end].at.y - place.at.y;
      if (x <= 0 || std::fabs(y) > look.size / 1000) break;
      advances_.push_back(x);
    }
    advances_.push_back(estimatedWidth(text.substr(end - 1, 1), measuresOf(look.family)) * look.size);
    place.advances = advances_;
    canvas_.Text(look, place, text.substr(begin, end - begin));
  }
}

}  // namespace pagerex
