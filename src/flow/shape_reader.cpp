#include "flow/shape_reader.h"

#include <algorithm>
#include <cmath>

namespace pagerex {
namespace {

using object::CMsoArray;

namespace pid {
constexpr PID kRotation = 0x0004;
constexpr PID kTextLeft = 0x0081, kTextTop = 0x0082, kTextRight = 0x0083, kTextBottom = 0x0084,
              kWrapText = 0x0085, kTextAnchor = 0x0087, kTextFlow = 0x0088, kFitShapeToText = 0x00BE;
constexpr PID kArtText = 0x00C0, kArtFont = 0x00C5, kArtIsThere = 0x00F1, kArtIsBold = 0x00FA,
              kArtIsItalic = 0x00FB;
constexpr PID kCropTop = 0x0100, kCropBottom = 0x0101, kCropLeft = 0x0102, kCropRight = 0x0103,
              kClearColour = 0x0107, kContrast = 0x0108, kBrightness = 0x0109, kGrey = 0x013D,
              kBlackAndWhite = 0x013E;
constexpr PID kGeoLeft = 0x0140, kGeoTop = 0x0141, kGeoRight = 0x0142, kGeoBottom = 0x0143,
              kShapePath = 0x0144, kVertices = 0x0145, kSegments = 0x0146, kFirstAdjustment = 0x0147,
              kGuides = 0x0156, kCanFill = 0x017F, kCanHaveLine = 0x017C;
constexpr PID kFillType = 0x0180, kFillColour = 0x0181, kFillOpacity = 0x0182, kFillBackColour = 0x0183,
              kFillBackOpacity = 0x0184, kFillAngle = 0x018B, kFillFocus = 0x018C, kFillToLeft = 0x018D,
              kFillToTop = 0x018E, kFillToRight = 0x018F, kFillToBottom = 0x0190, kFillStops = 0x0197,
              kFilled = 0x01BB;
constexpr PID kLineColour = 0x01C0, kLineOpacity = 0x01C1, kLineWidth = 0x01CB, kLineStyle = 0x01CD,
              kLineDash = 0x01CE, kStartArrow = 0x01D0, kEndArrow = 0x01D1, kStartArrowWidth = 0x01D2,
              kStartArrowLength = 0x01D3, kEndArrowWidth = 0x01D4, kEndArrowLength = 0x01D5,
              kLineJoin = 0x01D6, kLineCap = 0x01D7, kHasLine = 0x01FC;
constexpr PID kShadowColour = 0x0201, kShadowOpacity = 0x0204, kShadowX = 0x0205, kShadowY = 0x0206,
              kHasShadow = 0x023E;
constexpr PID kDistanceLeft = 0x0384, kDistanceTop = 0x0385, kDistanceRight = 0x0386,
              kDistanceBottom = 0x0387, kSideX = 0x038F, kFromX = 0x0390, kSideY = 0x0391, kFromY = 0x0392,
              kIsInCell = 0x03B0, kIsInLine = 0x053F;
}  // namespace pid

constexpr uint16_t kPictureFrame = 75, kControl = 201;

/// `value` if it is one of the first `count` of an enumeration, or the first.
template <class Enum>
Enum among(int32_t value, int32_t count, Enum otherwise) {
  return value >= 0 && value < count ? static_cast<Enum>(value) : otherwise;
}

float partOfOne(float value) {
  return value >= 0 && value <= 1 ? value : 1;
}

/// Pictures and controls have no fill and no line of their own.
bool isFrame(uint16_t type) {
  return type == kPictureFrame || type == kControl;
}

// The outline

ShapePoint pointOf(ByteView element) {
  if (element.size() >= 8) return {element.i32(0), element.i32(4)};
  return {element.i16(0), element.i16(2)};
}

ShapeGuide guideOf(ByteView element) {
  constexpr uint16_t kKind = 0x1FFF, kFirstReference = 0x2000;
  constexpr size_t kValues = 2;
  ShapeGuide guide;
  guide.kind = static_cast<uint8_t>(std::min(element.u16(0) & kKind, 0xFF));
  for (unsigned i = 0; i < 3; ++i) {
    guide.isReference[i] = (element.u16(0) & kFirstReference << i) != 0;
    guide.values[i] = element.i16(kValues + i * sizeof(int16_t));
  }
  return guide;
}

/// Each element of an array property as `read` makes it.
template <class T>
void readArray(const ShapeProperties& properties, PID id, std::vector<T>& out, T (*read)(ByteView)) {
  const ShapeProperties::Property* const property = properties.Find(id);
  if (!property) return;
  const CMsoArray array(property->data);
  const unsigned count = array.GetItemCount();
  out.reserve(count);
  for (unsigned i = 0; i < count; ++i) out.push_back(read(array.GetEle(i)));
}

void readGeometry(const mso_escher::MsoROShape& shape, const ShapeProperties& properties,
                  ShapeGeometry& out) {
  out.type = static_cast<uint16_t>(shape.GetShapeType());
  out.flipsX = (shape.GetGrfValue() & mso_escher::kShapeFlippedX) != 0;
  out.flipsY = (shape.GetGrfValue() & mso_escher::kShapeFlippedY) != 0;
  out.rotation = std::fmod(properties.Fixed(pid::kRotation, 0), 360.0f);
  for (unsigned i = 0; i < out.adjustments.size(); ++i) {
    const auto* const property = properties.Find(static_cast<PID>(pid::kFirstAdjustment + i));
    if (property) out.adjustments[i] = static_cast<int32_t>(property->operand);
  }
  out.left = properties.Number(pid::kGeoLeft, out.left);
  out.top = properties.Number(pid::kGeoTop, out.top);
  out.right = properties.Number(pid::kGeoRight, out.right);
  out.bottom = properties.Number(pid::kGeoBottom, out.bottom);
  out.pathKind = static_cast<uint8_t>(properties.Number(pid::kShapePath, out.pathKind));
  readArray<ShapePoint>(properties, pid::kVertices, out.vertices, pointOf);
  readArray<uint16_t>(properties, pid::kSegments, out.segments, [](ByteView each) { return each.u16(0); });
  readArray<ShapeGuide>(properties, pid::kGuides, out.guides, guideOf);
}

// Fill, line and shadow

ShapeFill::Kind fillKind(int32_t type) {
  using enum ShapeFill::Kind;
  constexpr ShapeFill::Kind kKinds[] = {kSolid,  kPattern, kTexture, kPicture, kLinear,
                                        kRadial, kShape,   kLinear,  kLinear};
  return type >= 0 && type < static_cast<int32_t>(std::size(kKinds)) ? kKinds[type] : kSolid;
}

ShapeFill::Stop stopOf(ByteView element) {
  const uint32_t value = element.u32(0);
  const uint32_t rgb = (value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF);
  return {rgb, partOfOne(static_cast<float>(element.i32(4)) / 65536)};
}

void readFill(const ShapeProperties& properties, uint16_t type, ShapeFill& out) {
  if (!hasFill(properties, type)) return;
  out.kind = fillKind(properties.Number(pid::kFillType, 0));
  out.rgb = shapeColour(properties, pid::kFillColour, out.rgb);
  out.backRgb = shapeColour(properties, pid::kFillBackColour, out.backRgb);
  out.opacity = partOfOne(properties.Fixed(pid::kFillOpacity, 1));
  out.backOpacity = partOfOne(properties.Fixed(pid::kFillBackOpacity, 1));
  out.angle = std::fmod(properties.Fixed(pid::kFillAngle, 0), 360.0f);
  out.focus = static_cast<int16_t>(std::clamp(properties.Number(pid::kFillFocus, 0), -100, 100));
  out.toLeft = partOfOne(properties.Fixed(pid::kFillToLeft, 0));
  out.toTop = partOfOne(properties.Fixed(pid::kFillToTop, 0));
  out.toRight = partOfOne(properties.Fixed(pid::kFillToRight, 0));
  out.toBottom = partOfOne(properties.Fixed(pid::kFillToBottom, 0));
  readArray<ShapeFill::Stop>(properties, pid::kFillStops, out.stops, stopOf);
}

Arrowhead arrowhead(const ShapeProperties& properties, PID kind, PID width, PID length) {
  const auto size = [&properties](PID id) {
    return static_cast<uint8_t>(std::clamp(properties.Number(id, 1), 0, 2));
  };
  return {among(properties.Number(kind, 0), 6, Arrowhead::Kind::kNone), size(width), size(length)};
}

void readLine(const ShapeProperties& properties, uint16_t type, ShapeLine& out) {
  out.isThere = properties.Flag(pid::kHasLine, !isFrame(type)) && properties.Flag(pid::kCanHaveLine, true);
  out.rgb = shapeColour(properties, pid::kLineColour, out.rgb);
  out.opacity = partOfOne(properties.Fixed(pid::kLineOpacity, 1));
  out.width = std::max(properties.Number(pid::kLineWidth, out.width), 0);
  out.style = among(properties.Number(pid::kLineStyle, 0), 5, out.style);
  out.dash = static_cast<uint8_t>(std::clamp(properties.Number(pid::kLineDash, 0), 0, 10));
  out.join = among(properties.Number(pid::kLineJoin, 2), 3, out.join);
  out.cap = among(properties.Number(pid::kLineCap, 2), 3, out.cap);
  out.start = arrowhead(properties, pid::kStartArrow, pid::kStartArrowWidth, pid::kStartArrowLength);
  out.end = arrowhead(properties, pid::kEndArrow, pid::kEndArrowWidth, pid::kEndArrowLength);
}

void readShadow(const ShapeProperties& properties, ShapeShadow& out) {
  out.isThere = properties.Flag(pid::kHasShadow, false);
  out.rgb = shapeColour(properties, pid::kShadowColour, out.rgb);
  out.opacity = partOfOne(properties.Fixed(pid::kShadowOpacity, 1));
  out.x = properties.Number(pid::kShadowX, out.x);
  out.y = properties.Number(pid::kShadowY, out.y);
}

// Text and picture

void readText(const ShapeProperties& properties, ShapeText& out) {
  constexpr int32_t kNoWrap = 2;
  using enum ShapeText::Anchor;
  // Behind the first three come the same centred, then two each by the lines of the text.
  constexpr ShapeText::Anchor kAnchors[] = {kTop,    kMiddle, kBottom, kTop, kMiddle,
                                            kBottom, kTop,    kBottom, kTop, kBottom};
  constexpr unsigned kCentred = 1 << 3 | 1 << 4 | 1 << 5 | 1 << 8 | 1 << 9;
  out.left = properties.Number(pid::kTextLeft, out.left);
  out.top = properties.Number(pid::kTextTop, out.top);
  out.right = properties.Number(pid::kTextRight, out.right);
  out.bottom = properties.Number(pid::kTextBottom, out.bottom);
  const int32_t anchor = properties.Number(pid::kTextAnchor, 0);
  if (anchor >= 0 && anchor < static_cast<int32_t>(std::size(kAnchors))) {
    out.anchor = kAnchors[anchor];
    out.isCentred = (kCentred >> anchor & 1) != 0;
  }
  out.flow = static_cast<uint8_t>(properties.Number(pid::kTextFlow, 0));
  out.wraps = properties.Number(pid::kWrapText, 0) != kNoWrap;
  out.growsShape = properties.Flag(pid::kFitShapeToText, false);
}

void readPicture(const ShapeProperties& properties, ShapePicture& out) {
  out.cropLeft = properties.Fixed(pid::kCropLeft, 0);
  out.cropTop = properties.Fixed(pid::kCropTop, 0);
  out.cropRight = properties.Fixed(pid::kCropRight, 0);
  out.cropBottom = properties.Fixed(pid::kCropBottom, 0);
  out.contrast = std::max(properties.Fixed(pid::kContrast, 1), 0.0f);
  out.brightness = std::clamp(properties.Fixed(pid::kBrightness, 0) * 2, -1.0f, 1.0f);
  out.isGrey = properties.Flag(pid::kGrey, false);
  out.isBlackAndWhite = properties.Flag(pid::kBlackAndWhite, false);
  constexpr int32_t kNoColour = -1;
  out.hasClearColour = properties.Number(pid::kClearColour, kNoColour) != kNoColour;
  if (out.hasClearColour) out.clearRgb = shapeColour(properties, pid::kClearColour, 0);
}

std::u16string textOf(const ShapeProperties& properties, PID id) {
  std::u16string text;
  const ShapeProperties::Property* const property = properties.Find(id);
  const ByteView data = property ? property->data : ByteView();
  for (size_t at = 0; at + 1 < data.size() && data.u16(at) != 0; at += 2)
    text += static_cast<char16_t>(data.u16(at));
  return text;
}

void readArt(const ShapeProperties& properties, ShapeArt& out) {
  if (!properties.Flag(pid::kArtIsThere, true)) return;
  out.text = textOf(properties, pid::kArtText);
  if (out.text.empty()) return;
  out.font = textOf(properties, pid::kArtFont);
  out.isBold = properties.Flag(pid::kArtIsBold, false);
  out.isItalic = properties.Flag(pid::kArtIsItalic, false);
}

}  // namespace

void ShapeProperties::Add(const Table& table) {
  Property each;
  for (Table::Enumerator walk(table); walk.Next(&each) == Status::kOk;) properties_.push_back(each);
}

void ShapeProperties::Sort() {
  std::stable_sort(properties_.begin(), properties_.end(),
                   [](const Property& a, const Property& b) { return a.id() < b.id(); });
}

std::pair<ShapeProperties::Iterator, ShapeProperties::Iterator> ShapeProperties::AllOf(PID id) const {
  const auto first = std::lower_bound(properties_.begin(), properties_.end(), id,
                                      [](const Property& each, PID wanted) { return each.id() < wanted; });
  const auto end =
      std::find_if(first, properties_.end(), [id](const Property& each) { return each.id() != id; });
  return {first, end};
}

const ShapeProperties::Property* ShapeProperties::Find(PID id) const {
  const auto found = std::lower_bound(properties_.begin(), properties_.end(), id,
                                      [](const Property& each, PID wanted) { return each.id() < wanted; });
  return found != properties_.end() && found->id() == id ? &*found : nullptr;
}

int32_t ShapeProperties::Number(PID id, int32_t otherwise) const {
  const Property* const property = Find(id);
  return property ? static_cast<int32_t>(property->operand) : otherwise;
}

float ShapeProperties::Fixed(PID id, float otherwise) const {
  const Property* const property = Find(id);
  return property ? static_cast<float>(static_cast<int32_t>(property->operand)) / 65536 : otherwise;
}

/// Flags are packed as MsoROShapeOPT::FindBool tells. Each counts from the first table that sets it.
bool ShapeProperties::Flag(PID id, bool otherwise) const {
  constexpr unsigned kGroup = 63;
  const unsigned bit = ~unsigned{id} & 15;
  const auto [first, end] = AllOf(static_cast<PID>(id | kGroup));
  const auto found =
      std::find_if(first, end, [bit](const Property& each) { return (each.operand >> (bit + 16) & 1) != 0; });
  return found != end ? (found->operand >> bit & 1) != 0 : otherwise;
}

bool hasFill(const ShapeProperties& properties, uint16_t type) {
  return properties.Flag(pid::kFilled, !isFrame(type)) && properties.Flag(pid::kCanFill, true);
}

void readShape(const mso_escher::MsoROShape& shape, const ShapeProperties& properties, ShapeFacts& out) {
  readGeometry(shape, properties, out.geometry);
  const uint16_t type = out.geometry.type;
  readFill(properties, type, out.fill);
  readLine(properties, type, out.line);
  readShadow(properties, out.shadow);
  readText(properties, out.text);
  readPicture(properties, out.picture);
  readArt(properties, out.art);
}

void readShapePlace(const ShapeProperties& properties, ShapePlace& out) {
  out.horizontal = among(properties.Number(pid::kSideX, 0), 6, out.horizontal);
  out.vertical = among(properties.Number(pid::kSideY, 0), 6, out.vertical);
  out.fromX = among(properties.Number(pid::kFromX, -1), 4, out.fromX);
  out.fromY = among(properties.Number(pid::kFromY, -1), 4, out.fromY);
  out.distanceLeft = properties.Number(pid::kDistanceLeft, out.distanceLeft);
  out.distanceTop = properties.Number(pid::kDistanceTop, out.distanceTop);
  out.distanceRight = properties.Number(pid::kDistanceRight, out.distanceRight);
  out.distanceBottom = properties.Number(pid::kDistanceBottom, out.distanceBottom);
  out.isInLine = properties.Flag(pid::kIsInLine, false);
  out.isInCell = properties.Flag(pid::kIsInCell, out.isInCell);
}

std::array<uint8_t, 8> patternOf(ByteView dib) {
  constexpr size_t kWidth = 4, kHeight = 8, kBits = 14, kPalette = 40, kRows = kPalette + size_t{2} * 4,
                   kRowBytes = 4;
  std::array<uint8_t, 8> rows{};
  if (dib.i32(kWidth) != 8 || std::abs(dib.i32(kHeight) / 8.0) != 1 || dib.u16(kBits) != 1) return rows;
  const auto light = [dib](size_t at) { return dib.u8(at) + dib.u8(at + 1) + dib.u8(at + 2); };
  const bool isDarkSet = light(kPalette + 4) < light(kPalette);
  for (size_t i = 0; i < rows.size(); ++i) {
    const uint8_t bits = dib.u8(kRows + i * kRowBytes);
    rows[dib.i32(kHeight) > 0 ? rows.size() - 1 - i : i] = static_cast<uint8_t>(isDarkSet ? bits : ~bits);
  }
  return rows;
}

}  // namespace pagerex
