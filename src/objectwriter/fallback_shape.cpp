#include "base/number_text.h"
#include "drawing/unit_switch.h"
#include "objectwriter/attribute_text.h"
#include "objectwriter/object_writer.h"

// Shapes as plain HTML.

namespace ObjectWriter {
namespace {

/// Only a plain colour has a meaning without VML.
std::string plainColour(int colour, const char* otherwise) {
  const std::string text = colourText(colour);
  return !text.empty() && text[0] == '#' ? text : otherwise;
}

NumberText pixelText(float points) {
  return NumberText().appendFixed(UnitSwitch::Pt2Pixel(points), 0).append("px");
}

}  // namespace

Status KHtmlObjectWriter::WriteObject_NV(const MsoROShape& shape) {
  tagRECT rect{};
  return WriteObject_NV(rect, shape);
}

Status KHtmlObjectWriter::WriteObject_NV(tagRECT& rect, const MsoROShape& shape) {
  if (!shape.Good()) return Status::kOk;
  if (!MayWrite(shape)) return Status::kNothing;
  const PropertyMap map(shape);
  if (!shape.IsGroupShape()) {
    parentBounds_ = rect;
    return WriteShape_NV(shape);
  }
  const GroupLevel level(groupDepth_);
  if (!level.allowed()) return Status::kNothing;
  IWriteArchive* const out = archive();
  out->BeginElement("div");
  tagRECT bounds{};
  shape.GetGroupCoordBounds(bounds);
  if (!shape.IsChildShape()) {
    groupBounds_ = rect = bounds;
    GetShapeFrect(shape, groupRect_);
  }
  parentBounds_ = rect;
  out->StartCssStyle();
  WriteShapePos_NV(shape);
  out->EndCssStyle();
  out->EndElement(false);
  for (unsigned int i = 0; i < shape.GetChildCount(); ++i) WriteObject_NV(bounds, shape.GetChildShape(i));
  out->EndElement("div");
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteShape_NV(const MsoROShape& shape) {
  const uint32_t type = shape.GetShapeType();
  if (chartMode_) return type == kHostControl ? WriteChart(shape) : Status::kOk;
  IWriteArchive* const out = archive();
  out->PutNewLine();
  out->BeginElement("div");
  out->AddAttribute("id", static_cast<int>(shape.GetShapeID()));
  out->StartCssStyle();
  WriteShapePos_NV(shape);
  if (ShapeProps(shape).isSet(pid::kHidden)) out->AddCssProp("visibility", "hidden");
  const bool isBox = type == kTextBox || type == kRectangle;
  if (isBox || type == kPictureFrame) {
    WriteFillProp_NV(shape, isBox);
    WriteLineProp_NV(shape, isBox);
  }
  std::string textStyle;
  WriteTextBoxProp_NV(shape, textStyle);
  out->EndCssStyle();
  out->EndElement(false);
  WriteImage_NV(shape, pid::kFillBlip, pid::kFillBlipName);
  WriteImage_NV(shape, pid::kBlip, pid::kBlipName);
  if (type == kEllipse) WriteEllipse_NV(shape);
  if (type == kLine) WriteLine_NV(shape);
  if (isBox && hasTextBox_) {
    out->BeginElement("div");
    out->AddAttribute("style", textStyle.c_str());
    out->EndElement(false);
    WriteTextBoxTxt_NV(shape);
    out->EndElement("div");
  }
  hasTextBox_ = false;
  out->EndElement("div");
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteTextBoxTxt_NV(const MsoROShape& shape) {
  return HasTextBox(shape) ? WriteDiv(shape) : Status::kNothing;
}

Status KHtmlObjectWriter::WriteTextBoxProp_NV(const MsoROShape& shape, std::string& style) {
  hasTextBox_ = HasTextBox(shape);
  if (!hasTextBox_) return Status::kNothing;
  const ShapeProps props(shape);
  const TextMargins margins = props.isSet(pid::kAutoTextMargin) ? TextMargins() : props.textMargins();
  style = "position:relative;padding:";
  style += pointText(UnitSwitch::EMU2Pt(margins.top)).append(' ');
  style += pointText(UnitSwitch::EMU2Pt(margins.right)).append(' ');
  style += pointText(UnitSwitch::EMU2Pt(margins.bottom)).append(' ');
  style += pointText(UnitSwitch::EMU2Pt(margins.left)).append(';');
  std::string align;
  GetTextAlign(shape, align);
  if (!align.empty()) style += "text-align:" + align + ";";
  archive()->AddCssProp("word-wrap", "break-word");
  archive()->AddCssProp("overflow", "hidden");
  return Status::kOk;
}

Status KHtmlObjectWriter::GetFillProp_NV(const MsoROShape& shape, std::string& color, double& opacity,
                                         bool force) {
  const ShapeProps props(shape);
  opacity = 1;
  const std::optional<bool> filled = props.flag(pid::kFilled);
  if (filled == false) return Status::kNothing;
  const std::optional<int> fill = props.number(pid::kFillColor);
  if (!fill && !filled.has_value() && !force) return Status::kNothing;
  const bool isTold = fill || (filled && !props.has(pid::kConnectionSites));
  color = isTold ? plainColour(fill.value_or(0xFFFFFF), "#ffffff") : "#ffffff";
  const std::optional<int> fillOpacity = props.number(pid::kFillOpacity);
  if (fillOpacity) opacity = *fillOpacity / 65536.0;
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteFillProp_NV(const MsoROShape& shape, bool force) {
  std::string color;
  double opacity = 1;
  const Status status = GetFillProp_NV(shape, color, opacity, force);
  if (status != Status::kOk) return status;
  if (!color.empty()) archive()->AddCssProp("background", color.c_str());
  if (opacity < 1) {
    const NumberText text = NumberText().appendFixed(opacity, 2);
    archive()->AddCssProp("MozOpacity", text.c_str());
    archive()->AddCssProp("Opacity", text.c_str());
  }
  return status;
}

Status KHtmlObjectWriter::GetLineProp_NV(const MsoROShape& shape, std::string& color, std::string& style,
                                         double& weight, bool force) {
  const ShapeProps props(shape);
  const std::optional<bool> stroked = props.flag(pid::kStroked);
  if (stroked == false) return Status::kNothing;
  const int type = props.number(pid::kLineType, -1);
  const int lineStyle = props.number(pid::kLineStyle, -1);
  const int dashing = props.number(pid::kLineDashing, -1);
  const std::optional<int> width = props.number(pid::kLineWidth);
  if (!stroked.has_value() && type == -1 && lineStyle == -1 && dashing == -1 && !width && !force)
    return Status::kNothing;
  weight = width ? UnitSwitch::EMU2Pt(*width) : 1.0;
  const auto isTold = [](int value) { return value != -1 && value != 0; };
  style = isTold(lineStyle) ? "double" : isTold(dashing) ? "dashed" : "solid";
  const std::optional<int> lineColor = props.number(pid::kLineColor);
  color = lineColor ? plainColour(*lineColor, "#000000") : "#000000";
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteLineProp_NV(const MsoROShape& shape, bool force) {
  std::string color;
  std::string style;
  double weight = 1;
  const Status status = GetLineProp_NV(shape, color, style, weight, force);
  if (status != Status::kOk) return status;
  if (!color.empty()) archive()->AddCssProp("border-color", color.c_str());
  if (!style.empty()) archive()->AddCssProp("border-style", style.c_str());
  archive()->AddCssProp("border-width", pointsOf(weight).c_str());
  return status;
}

Status KHtmlObjectWriter::WriteImage_NV(const MsoROShape& shape, PID blip, PID) {
  const std::optional<int> index = ShapeProps(shape).number(blip);
  if (!index) return Status::kNothing;
  IWriteArchive* const out = archive();
  out->BeginElement("img");
  out->AddAttribute("style", "position:absolute;");
  out->AddAttribute("width", pixelText(shapeRect_.width).c_str());
  out->AddAttribute("height", pixelText(shapeRect_.height).c_str());
  std::string file;
  if (WriteImage(blip, *index, file) == Status::kOk) out->AddAttribute("src", file.c_str());
  out->EndElement("img");
  return Status::kOk;
}

}  // namespace ObjectWriter
