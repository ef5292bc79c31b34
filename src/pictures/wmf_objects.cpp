// Objects, text and bitmaps of a Windows metafile.

#include "pictures/wmf_records.h"

namespace pagerex {

using namespace wmf;

// Objects

void WmfPlayer::Create(GdiObject object) {
  gdi_.Create(gdi_.FreeHandle(), std::move(object));
}

void WmfPlayer::Object(ByteView record, int form) {
  if (form == kSelect) return gdi_.Select(record.u16(6));
  gdi_.Delete(record.u16(6));
}

void WmfPlayer::CreateOther(ByteView, int) {
  GdiObject object;
  object.kind = GdiObject::Kind::kOther;
  Create(std::move(object));
}

void WmfPlayer::CreatePen(ByteView record, int) {
  GdiObject object;
  object.kind = GdiObject::Kind::kPen;
  object.pen.style = record.u16(6);
  object.pen.width = record.i16(8);
  object.pen.isCosmetic = record.i16(8) == 0;
  object.pen.brush.rgb = gdi_.rgbOf(record.u32(12));
  Create(std::move(object));
}

void WmfPlayer::CreateBrush(ByteView record, int) {
  GdiObject object;
  object.kind = GdiObject::Kind::kBrush;
  const uint16_t style = record.u16(6);
  object.brush.kind = style == 1   ? Brush::Kind::kNull
                      : style == 2 ? Brush::Kind::kHatched
                                   : Brush::Kind::kSolid;
  object.brush.rgb = gdi_.rgbOf(record.u32(8));
  object.brush.hatch = record.u8(12);
  Create(std::move(object));
}

void WmfPlayer::CreatePattern(ByteView record, int form) {
  constexpr size_t kBitmapHeader = 32;  // and room for one of another time
  constexpr uint16_t kMono = 3;
  GdiObject object;
  object.kind = GdiObject::Kind::kBrush;
  object.brush.kind = Brush::Kind::kPattern;
  if (form == kDibPattern) {
    object.brush.pattern = DibOf(record.part(10), record.u16(8));
    object.brush.hasInks = record.u16(6) == kMono && sizeOf(object.brush.pattern).depth == 1;
  } else {
    object.brush.pattern = DeviceBitmap(record.part(6), kBitmapHeader);
    object.brush.hasInks = sizeOf(object.brush.pattern).depth == 1;
  }
  Create(std::move(object));
}

void WmfPlayer::CreateFont(ByteView record, int) {
  constexpr size_t kFace = 32;
  GdiObject object;
  object.kind = GdiObject::Kind::kFont;
  Font& font = object.font;
  font.height = record.i16(6);
  font.width = record.i16(8);
  font.escapement = record.i16(10) / 10.0;
  font.weight = record.i16(14);
  font.isItalic = record.u8(16) != 0;
  font.isUnderlined = record.u8(17) != 0;
  font.isStruckOut = record.u8(18) != 0;
  font.charset = record.u8(19);
  size_t length = 0;
  while (length < kFace && record.u8(24 + length) != 0) ++length;
  std::vector<double> none;
  font.family = fontFamily(texts_.Read(record.part(24, length), font.charset, none));
  Create(std::move(object));
}

void WmfPlayer::CreatePalette(ByteView record, int) {
  gdi_.CreatePalette(gdi_.FreeHandle(), record.part(10, size_t{record.u16(8)} * 4));
}

void WmfPlayer::PaletteEntries(ByteView record, int) {
  Gdi::SetEntries(gdi_.state().palette, record.u16(6), record.part(10, size_t{record.u16(8)} * 4));
}

/// Lines of boxes, each of one height.
void WmfPlayer::CreateRegion(ByteView record, int) {
  GdiObject object;
  object.kind = GdiObject::Kind::kRegion;
  const Matrix& to = gdi_.map();
  size_t at = 28;
  for (uint16_t i = 0; i < record.u16(16) && record.contains(at, 6); ++i) {
    const size_t count = record.u16(at);
    for (size_t x = 0; x + 1 < count && record.contains(at + 6 + x * 2, 4); x += 2) {
      const Point a = to(record.i16(at + 6 + x * 2), record.i16(at + 2));
      const Point b = to(record.i16(at + 8 + x * 2), record.i16(at + 4));
      object.region.Add(a, b);
    }
    at += 8 + count * 2;
  }
  Create(std::move(object));
}

// Text

void WmfPlayer::PutText(ByteView bytes, std::vector<double>& advances, TextRecord& told) {
  const std::u16string text = texts_.Read(bytes, gdi_.state().font.charset, advances);
  told.text = text;
  told.advances = advances;
  gdi_.Text(told);
}

void WmfPlayer::Text(ByteView record, int) {
  const size_t length = record.u16(6), padded = (length + 1) & ~size_t{1};
  std::vector<double> none;
  TextRecord told;
  told.at = pointAt(record, 8 + padded);
  PutText(record.part(8, length), none, told);
}

void WmfPlayer::ExtendedText(ByteView record, int) {
  constexpr uint16_t kOpaque = 2, kClipped = 4, kReading = 0x80;
  const uint16_t options = record.u16(12);
  TextRecord told;
  told.at = pointAt(record, 6);
  told.isOpaque = (options & kOpaque) != 0;
  told.isClipped = (options & kClipped) != 0;
  told.isRightToLeft = (options & kReading) != 0;
  told.hasBox = told.isOpaque || told.isClipped;
  size_t at = 14;
  if (told.hasBox) {
    told.box = {double(record.i16(14)), double(record.i16(16)), double(record.i16(18)),
                double(record.i16(20))};
    at += 8;
  }
  const size_t length = std::min<size_t>(record.u16(10), record.size()), padded = (length + 1) & ~size_t{1};
  std::vector<double> advances;
  if (record.contains(at + padded, length * 2))
    for (size_t i = 0; i < length; ++i) advances.push_back(record.i16(at + padded + i * 2));
  PutText(record.part(at, length), advances, told);
}

// Bitmaps

Dib WmfPlayer::DibOf(ByteView bytes, uint32_t usage) const {
  Dib dib = packedDib(bytes, usage == 1);
  dib.palette = gdi_.state().palette;
  return dib;
}

/// A bitmap of a device: rows from the top, each of whole words, as a bitmap that all can read.
Dib WmfPlayer::DeviceBitmap(ByteView bytes, size_t bits) {
  constexpr size_t kHeader = 40;
  const int16_t width = bytes.i16(2), height = bytes.i16(4);
  const size_t stride = bytes.u16(6);
  const uint8_t depth = bytes.u8(9);
  if (width <= 0 || height <= 0 || stride == 0 || !bytes.contains(bits, 1)) return {};
  const size_t padded = (stride + 3) & ~size_t{3};
  const size_t rows = std::min<size_t>(static_cast<size_t>(height), (bytes.size() - bits) / stride);
  std::vector<uint8_t>& made = made_.emplace_back(kHeader + rows * padded);
  const auto put = [&made](size_t at, uint32_t value) {
    for (int i = 0; i < 4; ++i) made[at + static_cast<size_t>(i)] = static_cast<uint8_t>(value >> 8 * i);
  };
  put(0, kHeader);
  put(4, static_cast<uint32_t>(width));
  put(8, static_cast<uint32_t>(-static_cast<int32_t>(rows)));
  put(12, 1U | uint32_t{depth} << 16);
  for (size_t row = 0; row < rows; ++row) {
    const ByteView line = bytes.part(bits + row * stride, stride);
    std::copy(line.data(), line.data() + line.size(),
              made.begin() + static_cast<long>(kHeader + row * padded));
  }
  const ByteView all(made.data(), made.size());
  return {all.part(0, kHeader), all.part(kHeader), false, {}};
}

void WmfPlayer::PatternBlt(ByteView record, int) {
  gdi_.Pattern(placeAt(record, 10), record.u8(8));
}

void WmfPlayer::Blt(ByteView record, int form) {
  // Where the bitmap is missing, a word stands in front of the place.
  const bool hasSize = form == kStretch || form == kDibStretch || form == kStretchDib;
  const bool isDib = form == kDibBit || form == kDibStretch || form == kStretchDib;
  const size_t source = form == kStretchDib ? 12 : 10;
  const size_t place = source + (hasSize ? 8 : 4);
  const uint8_t rop3 = record.u8(8);
  const bool isBare = form != kStretchDib && !record.contains(place + 8, 3);
  if (isBare) return gdi_.Pattern(placeAt(record, place + 2), rop3);
  BitmapRecord told;
  told.rop3 = rop3;
  told.to = placeAt(record, place);
  told.dib = isDib ? DibOf(record.part(place + 8), form == kStretchDib ? record.u16(10) : 0)
                   : DeviceBitmap(record.part(place + 8), 10);
  const size_t origin = hasSize ? source + 4 : source;
  told.change.left = record.i16(origin + 2);
  told.change.top = record.i16(origin);
  told.change.width = hasSize ? record.i16(source + 2) : record.i16(place + 2);
  told.change.height = hasSize ? record.i16(source) : record.i16(place);
  told.change.hasInks = !isDib;
  told.change.inks[0] = gdi_.state().textColour;
  told.change.inks[1] = gdi_.state().groundColour;
  if (form == kStretchDib && told.dib.header.i32(8) >= 0)
    told.change.top = std::max(sizeOf(told.dib).height - told.change.top - told.change.height, 0);
  gdi_.Bitmap(told);
}

void WmfPlayer::DibToDevice(ByteView record, int) {
  BitmapRecord told;
  told.dib = DibOf(record.part(24), record.u16(6));
  told.to = placeAt(record, 16);
  told.change.left = record.i16(14);
  told.change.width = record.i16(18);
  told.change.height = record.i16(16);
  const int32_t whole = sizeOf(told.dib).height;
  int32_t top = record.i16(12);
  if (told.dib.header.i32(8) >= 0 && record.u16(8) >= whole) top = whole - top - told.change.height;
  told.change.top = std::max(top, 0);
  gdi_.Bitmap(told);
}

}  // namespace pagerex
