// Text of EMF+.

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/symbol_characters.h"
#include "base/utf8.h"
#include "pictures/emf_plus_state.h"

namespace pagerex {

struct PlusState::Font {
  std::string family;
  TextLook look;
  SymbolFont symbols = SymbolFont::kNone;
  double ascent = 0, lineHeight = 0;  ///< as look.size in units of the world
};

/// How text stands in its box.
struct PlusState::Layout {
  enum Flag : uint32_t { kRightToLeft = 1, kVertical = 2, kNoWrap = 0x1000, kNoClip = 0x4000 };

  Box box;
  uint32_t flags = 0;
  uint32_t align = 0, lineAlign = 0;          ///< 0 near, 1 centre, 2 far
  uint32_t hotkeys = 0;                       ///< 0 none: an ampersand is one
  double before = 1.0 / 6, behind = 1.0 / 6;  ///< margins, in sizes of the font
};

namespace {

/// Where letters stand in lines, in sizes of the font, by how a font's name begins.
struct MetricsRow {
  std::u16string_view name;
  float ascent, lineHeight;
};
constexpr MetricsRow kMetrics[] = {
    {u"Segoe", 1.08F, 1.33F},  {u"Calibri", 0.95F, 1.22F}, {u"Verdana", 1.0F, 1.215F},
    {u"Tahoma", 1.0F, 1.207F}, {u"Cambria", 0.95F, 1.17F}, {u"", 0.9F, 1.15F},
};

constexpr uint32_t kBold = 1, kItalic = 2, kUnderline = 4, kStrikeout = 8;

/// About the width of a character in usual fonts, in sizes of the font.
double widthOf(char16_t c) {
  constexpr std::u16string_view kNarrow = u"ijl.,:;'|!I()[]ft /\\\"`r-", kBroad = u"mwMW@%";
  if (c >= 0x1100 && !(c >= 0x2000 && c < 0x2E80)) return 1;
  if (kNarrow.find(c) != kNarrow.npos) return 0.29;
  if (kBroad.find(c) != kBroad.npos) return 0.86;
  return c >= 'A' && c <= 'Z' ? 0.68 : 0.54;
}

/// How much of a text stands on its first line; what ends the line is not part of it.
struct LineEnd {
  size_t end, next;
};

LineEnd lineEnd(std::u16string_view text, double most) {
  double width = 0;
  LineEnd last{0, 0};
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == '\r' || c == '\n') return {i, i + (c == '\r' && text.substr(i + 1, 1) == u"\n" ? 2 : 1)};
    if (c == ' ') last = {i, i + 1};
    width += widthOf(c);
    if (width <= most || c == ' ') continue;
    if (last.next > 0) return last;
    if (widthOf(c) == 1 && i > 0) return {i, i};
  }
  return {text.size(), text.size()};
}

/// Without ampersands that mark a key.
std::u16string withoutHotkeys(std::u16string_view text) {
  std::u16string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '&' && ++i == text.size()) break;
    plain += text[i];
  }
  return plain;
}

std::u16string readText(PlusReader& reader, size_t count) {
  std::u16string text(std::min(count, reader.left() / 2), u'\0');
  for (char16_t& unit : text) unit = reader.U16();
  return text;
}

}  // namespace

bool PlusState::MakeFont(uint32_t id, Font& font) {
  const ByteView bytes = Find(id, PlusType::kFont);
  if (bytes.empty()) return false;
  PlusReader reader(bytes);
  reader.U32();  // version
  const double size = reader.Real();
  const uint32_t unit = reader.U32(), style = reader.U32();
  reader.U32();
  const std::u16string name = readText(reader, reader.U32());
  appendUtf8(font.family, name);
  font.symbols = symbolFontNamed(name);
  TextLook& look = font.look;
  look.family = font.family;
  look.size = unit == 0 ? size : size * PixelsOf(unit) / graphics_.pageX;
  look.weight = style & kBold ? 700 : 400;
  look.isItalic = style & kItalic;
  look.isUnderlined = style & kUnderline;
  look.isStruckOut = style & kStrikeout;
  const auto* row = std::find_if(std::begin(kMetrics), std::end(kMetrics),
                                 [&](const MetricsRow& each) { return name.starts_with(each.name); });
  font.ascent = row->ascent * look.size;
  font.lineHeight = row->lineHeight * look.size;
  return look.size > 0;
}

void PlusState::DrawString(Record& record) {
  PlusReader& data = record.data;
  const Paint paint = InkOf(record, data.U32());
  const uint32_t format = data.U32(), count = data.U32();
  Layout layout;
  layout.box = data.Rectangle(false);
  const std::u16string text = readText(data, count);
  Font font;
  if (!MakeFont(record.id(), font)) return;
  font.look.paint = paint;
  if (format < objects_.size() && objects_[format].type == PlusType::kStringFormat) {
    PlusReader reader(objects_[format].view());
    reader.U32();  // version
    layout.flags = reader.U32();
    reader.U32();  // language
    layout.align = reader.U32();
    layout.lineAlign = reader.U32();
    reader.Take(12);  // digits, tabs
    layout.hotkeys = reader.U32();
    layout.before = reader.Real();
    layout.behind = reader.Real();
  }
  PutLines(font, layout, layout.hotkeys == 0 ? text : withoutHotkeys(text));
}

void PlusState::PutLines(const Font& font, const Layout& layout, std::u16string_view text) {
  const Box& box = layout.box;
  const bool isVertical = layout.flags & Layout::kVertical,
             isRightToLeft = layout.flags & Layout::kRightToLeft;
  double width = box.width(), height = box.height();
  TextPlace place;
  place.matrix = {1, 0, 0, 1, box.left, box.top};
  if (isVertical) {
    // Lines go down, and follow one another to the left.
    std::swap(width, height);
    place.matrix = {0, 1, -1, 0, box.right, box.top};
  }
  place.matrix = place.matrix * WorldToCanvas();
  place.isRightToLeft = isRightToLeft;
  // Near and far change sides with the way of writing.
  const uint32_t align = isRightToLeft && layout.align != 1 ? 2 - std::min(layout.align, 2U) : layout.align;
  const double before = layout.before * font.look.size, behind = layout.behind * font.look.size;
  if (align == 1) {
    place.anchor = TextPlace::Anchor::kMiddle;
    place.at.x = width / 2;
  } else if (align == 2) {
    place.anchor = TextPlace::Anchor::kEnd;
    place.at.x = width - behind;
  } else {
    place.at.x = before;
  }
  // Widths are guessed: what may just fit stays on its line.
  const bool wraps = width > 0 && !(layout.flags & Layout::kNoWrap);
  const double most = wraps ? std::max(width / font.look.size * 1.12, 1.0) : 1e9;
  std::vector<std::u16string_view> lines;
  while (!text.empty()) {
    const LineEnd line = lineEnd(text, most);
    lines.push_back(text.substr(0, line.end));
    text.remove_prefix(line.next);
  }
  const double all = static_cast<double>(lines.size()) * font.lineHeight;
  double top = 0;
  if (layout.lineAlign == 1) top = (height - all) / 2;
  if (layout.lineAlign == 2) top = height - all;
  canvas_.SetClip(graphics_.clip);
  std::u16string signs;
  for (const std::u16string_view line : lines) {
    const bool isBelow = height > 0 && top >= height && !(layout.flags & Layout::kNoClip);
    if (isBelow) break;
    place.at.y = top + font.ascent;
    signs.clear();
    if (font.symbols != SymbolFont::kNone)
      for (const char16_t code : line) appendSymbol(font.symbols, code, signs);
    canvas_.Text(font.look, place, signs.empty() ? line : signs);
    top += font.lineHeight;
  }
}

void PlusState::DrawDriverString(Record& record) {
  constexpr uint32_t kAreCharacters = 1, kOwnAdvances = 4;
  constexpr char16_t kFirstGlyph = 3, kGlyphs = 95;  // of ASCII, from the space on, in most TrueType fonts
  PlusReader& data = record.data;
  const Paint paint = InkOf(record, data.U32());
  const uint32_t flags = data.U32();
  const bool hasMatrix = data.U32() != 0;
  std::u16string text = readText(data, data.U32());
  std::vector<Point>& places = points_;
  places.clear();
  data.Points(static_cast<uint32_t>(text.size()), PlusReader::PointForm::kReal, places);
  const Matrix own = hasMatrix && data.left() >= 24 ? data.RealMatrix() : Matrix{};
  Font font;
  if (!MakeFont(record.id(), font) || places.empty()) return;
  font.look.paint = paint;
  for (char16_t& c : text) {
    if (flags & kAreCharacters) {
      const char32_t sign = symbolCharacter(font.symbols, c);
      if (font.symbols != SymbolFont::kNone && sign != 0 && sign < 0x10000) c = static_cast<char16_t>(sign);
      continue;
    }
    const bool isKnown = c >= kFirstGlyph && c < kFirstGlyph + kGlyphs;
    if (!isKnown) isWhole_ = false;
    c = isKnown ? static_cast<char16_t>(c - kFirstGlyph + ' ') : u' ';
  }
  canvas_.SetClip(graphics_.clip);
  TextPlace place;
  place.matrix = own * WorldToCanvas();
  place.at = places[0];
  if (flags & kOwnAdvances) return canvas_.Text(font.look, place, text);
  // Glyphs on one line are one text.
  std::vector<double> advances;
  const size_t count = std::min(text.size(), places.size());
  for (size_t begin = 0; begin < count;) {
    size_t end = begin + 1;
    advances.clear();
    while (end < count && std::fabs(places[end].y - places[begin].y) < font.look.size / 1000 &&
           places[end].x > places[end - 1].x) {
      advances.push_back(places[end].x - places[end - 1].x);
      ++end;
    }
    advances.push_back(widthOf(text[end - 1]) * font.look.size);
    place.at = places[begin];
    place.advances = advances;
    canvas_.Text(font.look, place, std::u16string_view(text).substr(begin, end - begin));
    begin = end;
  }
}

}  // namespace pagerex
