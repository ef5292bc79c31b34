#include <algorithm>
#include <cstring>

#include "base/number_text.h"
#include "base/output_path.h"
#include "drawing/unit_switch.h"
#include "objectwriter/object_writer.h"
#include "objectwriter/shape_props.h"
#include "objectwriter/shape_script.h"

// Ellipses and lines, which a script draws in browsers without VML.

namespace ObjectWriter {
namespace {

using CallText = FixedText<256>;

}  // namespace

Status KHtmlObjectWriter::WriteEllipse_NV(const MsoROShape& shape) {
  std::string lineColor;
  std::string style;
  std::string fillColor;
  double weight = 1;
  double opacity = 1;
  GetLineProp_NV(shape, lineColor, style, weight, true);
  GetFillProp_NV(shape, fillColor, opacity, true);
  return WriteJSEllipse(shapeRect_.width, shapeRect_.height, std::max(weight, 1.0), lineColor, fillColor,
                        opacity);
}

Status KHtmlObjectWriter::WriteLine_NV(const MsoROShape& shape) {
  float x0 = shapeRect_.left;
  float x1 = shapeRect_.left + shapeRect_.width;
  float y0 = shapeRect_.top;
  float y1 = shapeRect_.top + shapeRect_.height;
  if ((shape.GetGrfValue() & mso_escher::kShapeFlippedX) != 0) std::swap(x0, x1);
  if ((shape.GetGrfValue() & mso_escher::kShapeFlippedY) != 0) std::swap(y0, y1);
  std::string color;
  std::string style;
  double weight = 1;
  GetLineProp_NV(shape, color, style, weight, true);
  return WriteJSLine(x0, x1, y0, y1, color, std::max(weight, 1.0));
}

Status KHtmlObjectWriter::WriteJSEllipse(float width, float height, double weight,
                                         const std::string& lineColor, const std::string& fillColor,
                                         double opacity) {
  if (!htmlEnv()->scripts.drawEllipse.exchange(true)) WriteShapeJSFile(kDrawEllipseScript);
  CallText call;
  call.append("drawEllipse(0,0,").append(fixedNumber(width)).append(',').append(fixedNumber(height));
  call.append(',').append(fixedNumber(weight)).append(",\"").append(lineColor).append("\",\"");
  call.append(fillColor).append("\",").append(fixedNumber(opacity)).append(");");
  WriteScript(call.c_str());
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteJSLine(float x0, float x1, float y0, float y1, const std::string& color,
                                      double weight) {
  if (!htmlEnv()->scripts.drawLine.exchange(true)) WriteShapeJSFile(kDrawLineScript);
  CallText call;
  call.append("drawLine(");
  for (const float each : {x0, x1, y0, y1}) call.append(fixedNumber(UnitSwitch::Pt2Pixel(each))).append(',');
  call.append('"').append(color).append("\",").append(fixedNumber(UnitSwitch::Pt2Pixel(weight))).append(");");
  WriteScript(call.c_str());
  return Status::kOk;
}

void KHtmlObjectWriter::WriteScript(const char* call) {
  IWriteArchive* const out = archive();
  out->BeginElement("script");
  out->AddAttribute("language", "JavaScript");
  out->EndElement(false);
  out->AddContent(call);
  out->EndElement("script");
}

void KHtmlObjectWriter::WriteShapeJSFile(const char* text) {
  pagerex::KConversionEnv& conversion = htmlEnv()->conversion;
  if (!scriptFile_) scriptFile_.emplace(conversion.files);
  if (!scriptFile_->good()) {
    scriptFile_->open(pagerex::outputPath(conversion.filesDir, "shapejs.js").c_str());
  }
  scriptFile_->put(text, static_cast<unsigned int>(std::strlen(text)));
}

}  // namespace ObjectWriter
