#include "objectwriter/attribute_text.h"
#include "objectwriter/hyperlink.h"
#include "objectwriter/object_attr.h"
#include "objectwriter/object_writer.h"
#include "objectwriter/path_unparser.h"

// The start tag of a VML element, and the order of its children.

namespace ObjectWriter {
namespace {

using mso_escher::kShapeFlippedX;
using mso_escher::kShapeFlippedY;
constexpr uint32_t kFlipBoth = kShapeFlippedX | kShapeFlippedY;
constexpr int kDefaultCoordSize = 21600;
constexpr int kUnusedLineArgument = 0x0901000C;

const char* flipText(uint32_t grf) {
  switch (grf & kFlipBoth) {
    case kFlipBoth:
      return "flip:x y;";
    case kShapeFlippedX:
      return "flip:x;";
    case kShapeFlippedY:
      return "flip:y;";
    default:
      return "";
  }
}

using Array = ShapeProps::Array;

/// Vertices: pairs of 32-bit values if an element has 8 bytes, else of 16-bit values without sign.
std::vector<tagPOINT> pointsOf(const std::optional<Array>& array) {
  if (!array) return {};
  std::vector<tagPOINT> points(array->count);
  const auto toPoints = array->elementSize == 8 ? GPoint8ToPoint : GPoint4ToPoint;
  toPoints(array->elements, points.data(), static_cast<unsigned int>(points.size()));
  return points;
}

/// Segments are words that follow each other, whatever size the array says its elements have.
std::vector<uint16_t> segmentsOf(const std::optional<Array>& array) {
  std::vector<uint16_t> segments;
  if (!array) return segments;
  for (size_t i = 0; i < array->count; ++i) segments.push_back(array->elements.u16(i * 2));
  return segments;
}

/// A point of a line; a child's has no unit.
LongNumberText pointOf(float x, float y, bool isChild) {
  return joinedNumbers({x, y}, 2, isChild ? "" : "pt");
}

}  // namespace

void KHtmlObjectWriter::EndVml(const char* name) {
  archive()->EndElement(name, "v");
  archive()->PutNewLine();
}

Status KHtmlObjectWriter::WriteShapeFlag(const MsoROShape& shape, bool) {
  const ShapeProps props(shape);
  IWriteArchive* const out = archive();
  const bool isControl = shape.GetShapeType() == kHostControl;
  if (!isControl) out->AddAttribute("id", static_cast<int>(shape.GetShapeID()));
  WriteHyperlink(shape);
  std::string style;
  GetShapePos(shape, style);
  style += flipText(shape.GetGrfValue());
  if (props.isSet(pid::kHidden)) style += "visibility:hidden;";
  if (!isControl) out->AddAttribute("style", style.c_str());
  const std::optional<int> connector = props.number(pid::kConnectorStyle);
  if (connector) out->AddAttribute("connectortype", objectAttr::GetConnectorType(*connector), "o");
  if (shape.GetShapeType() == kLine) {
    const FRECT& r = shapeRect_;
    const bool isChild = shape.IsChildShape();
    out->AddAttribute("from", pointOf(r.left, r.top, isChild).c_str());
    out->AddAttribute("to", pointOf(r.left + r.width, r.top + r.height, isChild).c_str());
  }
  const std::optional<bool> filled = props.flag(pid::kFilled);
  if (filled) out->AddAttribute("filled", *filled ? "t" : "f");
  const std::optional<bool> stroked = props.flag(pid::kStroked);
  if (stroked) out->AddAttribute("stroked", *stroked ? "t" : "f");
  return Status::kOk;
}

Status KHtmlObjectWriter::GetShapePos(const MsoROShape& shape, std::string& style) {
  GetShapeFrect(shape, shapeRect_);
  style += "position:absolute;";
  AppendBox(shape, true, style);
  AppendRotation(shape, style);
  AppendZIndex(static_cast<int>(shape.GetZOrder()), style);
  return Status::kOk;
}

/// A line has no box: it says from where to where it goes.
void KHtmlObjectWriter::AppendBox(const MsoROShape& shape, bool withMargins, std::string& style) const {
  if (shape.GetShapeType() == kLine) return;
  const char* const unit = shape.IsChildShape() ? ";" : "pt;";
  const auto append = [&style, unit](const char* name, float length) {
    style += NumberText().append(name).appendFixed(length, 2).append(unit);
  };
  if (withMargins) {
    append("margin-left:", shapeRect_.left);
    append("margin-top:", shapeRect_.top);
  }
  append("width:", shapeRect_.width);
  append("height:", shapeRect_.height);
}

void KHtmlObjectWriter::AppendRotation(const MsoROShape& shape, std::string& style) {
  const std::optional<int> angle = ShapeProps(shape).wholeFixed(pid::kRotation);
  if (angle) style += numbered("rotation:", *angle).append(';');
}

void KHtmlObjectWriter::AppendZIndex(int order, std::string& style) {
  style += numbered("z-index:", order).append(';');
}

Status KHtmlObjectWriter::GetShapeFrect(const MsoROShape& shape, FRECT& rect) {
  rect.left = GetOBJLeft(shape);
  rect.top = GetOBJTop(shape);
  rect.width = GetOBJWidth(shape);
  rect.height = GetOBJHeight(shape);
  const std::optional<int> angle = ShapeProps(shape).wholeFixed(pid::kRotation);
  if (angle) object::GetShapeBoundRect(*angle, rect);
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteHyperlink(const MsoROShape& shape) {
  const ShapeProps props(shape);
  if (!props.has(pid::kHyperlink)) return Status::kOk;
  const ByteView data = props.data(pid::kHyperlink);
  if (data.empty()) return Status::kNothing;
  const hyperLink::HYPERLINK link = hyperLink::ReadHyperlink(data);
  std::string href = link.address.empty() ? link.location : link.address;
  if (link.type == hyperLink::HLinkType::kLocation) CheckBookName(href);
  if (link.type == hyperLink::HLinkType::kUrl) archive()->AddAttribute("target", "_parent");
  safety().AddAddress(*archive(), "href", href);
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteGuoup(const MsoROShape& shape) {
  WriteShapeFlag(shape, true);
  tagRECT bounds{};
  shape.GetGroupCoordBounds(bounds);
  archive()->AddAttribute("coordorigin", joinedIntegers({bounds.left, bounds.top}).c_str());
  archive()->AddAttribute("coordsize", joinedIntegers({wrappedDifference(bounds.right, bounds.left),
                                                       wrappedDifference(bounds.bottom, bounds.top)})
                                           .c_str());
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteGeometry(const MsoROShape& shape) {
  WriteCordSize(shape);
  WriteAdjustValue(shape);
  return WritePath(shape);
}

Status KHtmlObjectWriter::WriteCordSize(const MsoROShape& shape) {
  const ShapeProps props(shape);
  int width = wrappedDifference(props.number(pid::kGeoRight, 0), props.number(pid::kGeoLeft, 0));
  int height = wrappedDifference(props.number(pid::kGeoBottom, 0), props.number(pid::kGeoTop, 0));
  if (width == 0 && height == 0) width = height = kDefaultCoordSize;
  archive()->AddAttribute("coordsize", joinedIntegers({width, height}).c_str());
  return Status::kOk;
}

/// The place of a value that is not there stays empty; nothing stands behind the last one.
Status KHtmlObjectWriter::WriteAdjustValue(const MsoROShape& shape) {
  using ValueText = FixedText<10>;  // a longer number loses its end
  const ShapeProps props(shape);
  std::string values;
  std::string commas;
  for (unsigned id = pid::kFirstAdjust; id <= pid::kLastAdjust; ++id) {
    const std::optional<int> value = props.number(static_cast<PID>(id));
    if (value) {
      values += commas;
      values += ValueText().append(number(*value));
      commas.clear();
    }
    commas += ',';
  }
  if (values.empty()) return Status::kNothing;
  archive()->AddAttribute("adj", values.c_str());
  return Status::kOk;
}

Status KHtmlObjectWriter::WritePath(const MsoROShape& shape) {
  const ShapeProps props(shape);
  const std::vector<tagPOINT> points = pointsOf(props.array(pid::kVertices));
  const std::vector<uint16_t> segments = segmentsOf(props.array(pid::kSegmentInfo));
  WmlPathUnparser path;
  const Status status = path.UnParse(points.size(), points.data(), segments.size(), segments.data());
  if (status == Status::kOk) archive()->AddAttribute("path", path.GetPath().c_str());
  return status;
}

Status KHtmlObjectWriter::WriteShapeStyle(const MsoROShape& shape) {
  WriteFillProp(shape);
  WriteLineProp(shape, kUnusedLineArgument);
  WriteShadowProp(shape);
  Write3DProp(shape);
  WriteGeoTextProp(shape);
  return WriteCalloutProp(shape);
}

}  // namespace ObjectWriter
