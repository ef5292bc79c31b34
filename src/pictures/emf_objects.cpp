// Objects, text and bitmaps of an enhanced metafile.

#include <utility>

#include "pictures/emf_records.h"

namespace pagerex {

using namespace emf;

// Objects

void EmfPlayer::Object(ByteView record, int form) {
  constexpr uint32_t kStock = 0x80000000;
  const uint32_t handle = record.u32(8);
  if (form == kDelete) return gdi_.Delete(handle);
  if (handle & kStock) return gdi_.SelectStock(handle & ~kStock);
  gdi_.Select(handle);
}

void EmfPlayer::CreatePen(ByteView record, int) {
  GdiObject object;
  object.kind = GdiObject::Kind::kPen;
  object.pen.style = record.u32(12);
  object.pen.width = record.i32(16);
  object.pen.isCosmetic = record.i32(16) == 0;
  object.pen.brush.rgb = gdi_.rgbOf(record.u32(24));
  gdi_.Create(record.u32(8), std::move(object));
}

void EmfPlayer::CreateExtendedPen(ByteView record, int) {
  enum BrushStyle : uint32_t { kNull = 1, kHatched = 2, kPattern = 3, kDibPattern = 5 };
  constexpr uint32_t kMostDashes = 16;
  GdiObject object;
  object.kind = GdiObject::Kind::kPen;
  Pen& pen = object.pen;
  pen.style = record.u32(28);
  pen.width = record.u32(32);
  pen.isCosmetic = (pen.style & kGeometric) == 0;
  pen.brush.rgb = gdi_.rgbOf(record.u32(40));
  const uint32_t style = record.u32(36);
  if (style == kNull) pen.style = kPenNull;
  if (style == kHatched) {
    pen.brush.kind = Brush::Kind::kHatched;
    pen.brush.hatch = record.u8(44);
  }
  if (style == kPattern || style == kDibPattern) {
    pen.brush.kind = Brush::Kind::kPattern;
    pen.brush.pattern = DibOf(record, 12, record.u32(40));
  }
  const uint32_t dashes = std::min(record.u32(48), kMostDashes);
  for (uint32_t i = 0; i < dashes; ++i) pen.dashes.push_back(static_cast<float>(record.u32(52 + i * 4)));
  gdi_.Create(record.u32(8), std::move(object));
}

void EmfPlayer::CreateBrush(ByteView record, int) {
  GdiObject object;
  object.kind = GdiObject::Kind::kBrush;
  const uint32_t style = record.u32(12);
  object.brush.kind = style == 1   ? Brush::Kind::kNull
                      : style == 2 ? Brush::Kind::kHatched
                                   : Brush::Kind::kSolid;
  object.brush.rgb = gdi_.rgbOf(record.u32(16));
  object.brush.hatch = record.u8(20);
  gdi_.Create(record.u32(8), std::move(object));
}

void EmfPlayer::CreatePattern(ByteView record, int form) {
  GdiObject object;
  object.kind = GdiObject::Kind::kBrush;
  object.brush.kind = Brush::Kind::kPattern;
  object.brush.hasInks = form == 1;
  object.brush.pattern = DibOf(record, 16, record.u32(12));
  gdi_.Create(record.u32(8), std::move(object));
}

void EmfPlayer::CreateFont(ByteView record, int) {
  constexpr size_t kFace = 32;
  GdiObject object;
  object.kind = GdiObject::Kind::kFont;
  Font& font = object.font;
  font.height = record.i32(12);
  font.width = record.i32(16);
  font.escapement = record.i32(20) / 10.0;
  font.weight = record.i32(28);
  font.isItalic = record.u8(32) != 0;
  font.isUnderlined = record.u8(33) != 0;
  font.isStruckOut = record.u8(34) != 0;
  font.charset = record.u8(35);
  std::u16string name;
  for (size_t i = 0; i < kFace; ++i) name += static_cast<char16_t>(record.u16(40 + i * 2));
  font.family = fontFamily(name);
  gdi_.Create(record.u32(8), std::move(object));
}

void EmfPlayer::CreatePalette(ByteView record, int) {
  gdi_.CreatePalette(record.u32(8), record.part(16, size_t{record.u16(14)} * 4));
}

void EmfPlayer::PaletteEntries(ByteView record, int) {
  const GdiObject* const object = gdi_.ObjectAt(record.u32(8));
  if (object && object->kind == GdiObject::Kind::kPalette)
    Gdi::SetEntries(object->bytes, record.u32(12), record.part(20, size_t{record.u32(16)} * 4));
}

// Text

void EmfPlayer::Text(ByteView record, int form) {
  constexpr size_t kOne = 36, kSeveral = 40, kText = 40;
  if (form == kAnsi || form == kWide) {
    PlayText(record, kOne, form == kWide, record.size());
    return;
  }
  const size_t count = std::min<size_t>(record.u32(36), record.size() / kText);
  // They may lie on each other: of all together no more than the record has room for is read.
  size_t left = record.size();
  for (size_t i = 0; i < count; ++i) left -= PlayText(record, kSeveral + i * kText, form == kPolyWide, left);
}

/// Options of text: what its box is for, and what its codes are.
enum TextOptions : uint32_t {
  kOpaque = 2,
  kClipped = 4,
  kGlyphs = 0x10,
  kReading = 0x80,
  kNoBox = 0x100,
  kSmall = 0x200,
  kPairs = 0x2000,
};

/// Numbers of glyphs as their characters, where the font counts them as most do.
void readGlyphs(std::u16string& text) {
  constexpr char16_t kFirst = 3, kLast = 97, kWay = 29;
  for (char16_t& c : text)
    if (c >= kFirst && c <= kLast) c = static_cast<char16_t>(c + kWay);
}

/// Of `most` characters at most. Their count.
size_t EmfPlayer::PlayText(ByteView record, size_t at, bool isWide, size_t most) {
  const uint32_t options = record.u32(at + 16);
  const size_t unit = isWide ? 2 : 1;
  const ByteView bytes = record.part(record.u32(at + 12));
  const size_t count = std::min<size_t>({record.u32(at + 8), bytes.size() / unit, most});
  const size_t stride = options & kPairs ? 8 : 4;
  const ByteView ways = record.part(record.u32(at + 36));
  std::vector<double> advances;
  bool isLevel = true;
  if (record.u32(at + 36) != 0 && ways.size() / stride >= count) {
    for (size_t i = 0; i < count; ++i) {
      advances.push_back(ways.i32(i * stride));
      isLevel = isLevel && (stride == 4 || ways.i32(i * stride + 4) == 0);
    }
  }
  std::u16string text;
  if (isWide) {
    for (size_t i = 0; i < count; ++i) text += static_cast<char16_t>(bytes.u16(i * 2));
    if (options & kGlyphs) readGlyphs(text);
  } else {
    text = texts_.Read(bytes.part(0, count), gdi_.state().font.charset, advances);
  }
  TextRecord told;
  told.text = text;
  told.at = pointAt(record, at);
  told.hasBox = (options & (kOpaque | kClipped)) != 0;
  told.isOpaque = (options & kOpaque) != 0;
  told.isClipped = (options & kClipped) != 0;
  told.isRightToLeft = (options & kReading) != 0;
  told.box = boxAt(record, at + 20);
  told.advances = advances;
  if (isLevel || text.size() != count) {
    gdi_.Text(told);
  } else {
    PlayClimbingText(told, ways);
  }
  return count;
}

/// Each character as much above the one before as the pairs of ways say.
void EmfPlayer::PlayClimbingText(TextRecord told, ByteView ways) {
  const std::u16string_view text = told.text;
  const std::span<const double> advances = told.advances;
  for (size_t i = 0; i < text.size(); ++i) {
    told.text = text.substr(i, 1);
    told.advances = advances.subspan(i, 1);
    gdi_.Text(told);
    told.at.x += advances[i];
    told.at.y -= ways.i32(i * 8 + 4);
    told.hasBox = told.hasBox && told.isClipped;
    told.isOpaque = false;
  }
}

void EmfPlayer::SmallText(ByteView record, int) {
  const uint32_t options = record.u32(20);
  const size_t at = options & kNoBox ? 36 : 52;
  const bool isSmall = (options & kSmall) != 0;
  const size_t count = std::min<size_t>(record.u32(16), record.size() / (isSmall ? 1 : 2));
  std::u16string text;
  std::vector<double> none;
  if (isSmall) {
    // The low bytes of Unicode.
    for (size_t i = 0; i < count && record.contains(at + i, 1); ++i) text += record.u8(at + i);
  } else {
    for (size_t i = 0; i < count && record.contains(at + i * 2, 2); ++i)
      text += static_cast<char16_t>(record.u16(at + i * 2));
  }
  if (options & kGlyphs) readGlyphs(text);
  TextRecord told;
  told.text = text;
  told.at = pointAt(record, 8);
  told.hasBox = (options & kNoBox) == 0 && (options & (kOpaque | kClipped)) != 0;
  told.isOpaque = (options & kOpaque) != 0;
  told.isClipped = (options & kClipped) != 0;
  told.isRightToLeft = (options & kReading) != 0;
  told.box = boxAt(record, 36);
  gdi_.Text(told);
}

// Bitmaps

/// Offsets and sizes of a header and of its pixels stand from `at` on.
Dib EmfPlayer::DibOf(ByteView record, size_t at, uint32_t usage) const {
  const auto part = [&](size_t from) {
    return record.u32(from + 4) == 0 ? ByteView() : record.part(record.u32(from), record.u32(from + 4));
  };
  return {part(at), part(at + 8), usage == 1, gdi_.state().palette};
}

void EmfPlayer::Blt(ByteView record, int form) {
  BitmapRecord told;
  const Point to = pointAt(record, 24), size = pointAt(record, 32);
  told.to = {to.x, to.y, to.x + size.x, to.y + size.y};
  told.rop3 = record.u8(42);
  told.dib = DibOf(record, 84, record.u32(80));
  told.change.left = record.i32(44);
  told.change.top = record.i32(48);
  told.change.width = form == kBit ? record.i32(32) : record.i32(100);
  told.change.height = form == kBit ? record.i32(36) : record.i32(104);
  told.change.hasInks = true;
  told.change.inks[0] = gdi_.state().textColour;
  told.change.inks[1] = gdi_.rgbOf(record.u32(76));
  if (form == kAlpha) {
    told.rop3 = 0xCC;
    told.alpha = record.u8(42);
    if (record.u8(43) == 1) told.change.alpha = PixelChange::Alpha::kPremultiplied;
  }
  if (form == kTransparent) {
    told.rop3 = 0xCC;
    told.change.hasKey = true;
    told.change.key = gdi_.rgbOf(record.u32(40));
  }
  gdi_.Bitmap(told);
}

void EmfPlayer::MaskedBlt(ByteView record, int) {
  constexpr uint8_t kNothing = 0xAA;
  BitmapRecord told;
  const Point to = pointAt(record, 24), size = pointAt(record, 32);
  told.to = {to.x, to.y, to.x + size.x, to.y + size.y};
  told.dib = DibOf(record, 84, record.u32(80));
  told.change.left = record.i32(44);
  told.change.top = record.i32(48);
  told.change.width = record.i32(32);
  told.change.height = record.i32(36);
  const Dib mask = DibOf(record, 112, record.u32(108));
  if (mask.header.empty()) {
    told.rop3 = record.u8(42);
    return gdi_.Bitmap(told);
  }
  told.change.mask = &mask;
  told.change.maskLeft = record.i32(100);
  told.change.maskTop = record.i32(104);
  // One operation where the mask is 1, another where it is 0.
  for (const bool isInverse : {false, true}) {
    told.rop3 = isInverse ? record.u8(43) : record.u8(42);
    told.change.isMaskInverse = isInverse;
    if (told.rop3 != kNothing) gdi_.Bitmap(told);
  }
}

void EmfPlayer::SlantedBlt(ByteView record, int) {
  const Point corners[] = {pointAt(record, 24), pointAt(record, 32), pointAt(record, 40)};
  const Matrix place{corners[1].x - corners[0].x,
                     corners[1].y - corners[0].y,
                     corners[2].x - corners[0].x,
                     corners[2].y - corners[0].y,
                     corners[0].x,
                     corners[0].y};
  BitmapRecord told;
  told.place = &place;
  told.dib = DibOf(record, 96, record.u32(92));
  told.change.left = record.i32(48);
  told.change.top = record.i32(52);
  told.change.width = record.i32(56);
  told.change.height = record.i32(60);
  const Dib mask = DibOf(record, 124, record.u32(120));
  if (!mask.header.empty()) told.change.mask = &mask;
  told.change.maskLeft = record.i32(112);
  told.change.maskTop = record.i32(116);
  gdi_.Bitmap(told);
}

void EmfPlayer::DibBlt(ByteView record, int form) {
  BitmapRecord told;
  const Point to = pointAt(record, 24);
  told.dib = DibOf(record, 48, record.u32(64));
  told.change.left = record.i32(32);
  told.change.width = record.i32(40);
  told.change.height = record.i32(44);
  // The source counts its rows from below, unless the bitmap is one from the top.
  const BitmapSize whole = sizeOf(told.dib);
  const bool isTopDown = told.dib.header.i32(8) < 0;
  int64_t top = record.i32(36);
  Point size{double(record.i32(40)), double(record.i32(44))};
  if (form == kToDevice) {
    // Some rows may be there alone.
    const auto rows = static_cast<int32_t>(record.u32(72));
    if (!isTopDown && rows == whole.height) top = whole.height - top - record.i32(44);
  } else {
    size = pointAt(record, 72);
    told.rop3 = record.u8(70);
    if (!isTopDown) top = whole.height - top - record.i32(44);
  }
  told.change.top = static_cast<int32_t>(std::clamp<int64_t>(top, 0, INT32_MAX));
  told.to = {to.x, to.y, to.x + size.x, to.y + size.y};
  gdi_.Bitmap(told);
}

}  // namespace pagerex
