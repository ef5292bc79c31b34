#include "objectwriter/attribute_text.h"
#include "objectwriter/object_attr.h"
#include "objectwriter/object_writer.h"

// The "fill" element.

namespace ObjectWriter {
namespace {

constexpr int kWhite = 0xFFFFFF;

/// Fill types that run from a centre outwards.
bool isRadial(int fillType) {
  return fillType >= 4 && fillType <= 6;
}

/// Fill types made of a picture.
bool isPictured(int fillType) {
  return fillType >= 1 && fillType <= 3;
}

/// The second colour may be told as a shade of the first.
std::string secondColourText(int colour) {
  if (static_cast<unsigned>(colour) >> 24 != 0x10) return colourText(colour);
  const char* const change = (colour & 0xFFF) == 0x1F0 ? "fill darken(" : "fill lighten(";
  return NumberText().append(change).appendInt(colour >> 16 & 0xFF).append(')').c_str();
}

void writeGradientFocus(IWriteArchive* archive, const ShapeProps& props) {
  const float left = props.fixed(pid::kFillToLeft, 0);
  const float top = props.fixed(pid::kFillToTop, 0);
  const float right = props.fixed(pid::kFillToRight, 0);
  const float bottom = props.fixed(pid::kFillToBottom, 0);
  archive->AddAttribute("focusposition", joinedNumbers({left, top}, 1).c_str());
  archive->AddAttribute("focussize", joinedNumbers({right - left, bottom - top}, 1).c_str());
}

}  // namespace

Status KHtmlObjectWriter::WriteFillProp(const MsoROShape& shape) {
  const ShapeProps props(shape);
  const std::optional<int> color = props.number(pid::kFillColor);
  const bool filled = props.isSet(pid::kFilled);
  if (!filled && !color) return Status::kNothing;
  IWriteArchive* const out = archive();
  out->BeginElement("fill", "v");
  const std::optional<int> type = props.number(pid::kFillType);
  if (type) out->AddAttribute("type", objectAttr::GetFillType(static_cast<unsigned>(*type)));
  if (props.isUserSet(pid::kFillRotates)) out->AddAttribute("rotate", "t");
  if (color || !props.has(pid::kConnectionSites)) {
    out->AddAttribute("color", colourText(color.value_or(kWhite)).c_str());
  }
  const std::optional<int> second = props.number(pid::kFillBackColor);
  if (second) out->AddAttribute("color2", secondColourText(*second).c_str());
  writeAttribute(out, props, {"opacity", pid::kFillOpacity, Form::kFraction});
  const std::optional<int> secondOpacity = props.number(pid::kFillBackOpacity);
  if (secondOpacity) out->AddAttribute("opacity2", fractionText(*secondOpacity).c_str(), "o");
  WriteImageProp(shape, pid::kFillBlip, pid::kFillBlipName, pid::kFillBlipFlags);
  if (props.number(pid::kFillAspect) == 8) out->AddAttribute("aspect", "atleast");
  const int fillType = type.value_or(0);
  if (isRadial(fillType)) writeGradientFocus(out, props);
  WriteAngleFocus(shape, fillType);
  WriteShadeColor(shape, fillType);
  EndVml("fill");
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteAngleFocus(const MsoROShape& shape, int fillType) {
  if (isPictured(fillType)) return Status::kNothing;
  const ShapeProps props(shape);
  writeAttribute(archive(), props, {"angle", pid::kFillAngle, Form::kWholeFixed});
  const std::optional<int> focus = props.number(pid::kFillFocus);
  if (focus) archive()->AddAttribute("focus", NumberText().appendInt(*focus).append('%').c_str());
  return Status::kOk;
}

/// The colours stand 6 bytes behind the first element of the array, not in it: the output has always been
/// made so.
Status KHtmlObjectWriter::WriteShadeColor(const MsoROShape& shape, int) {
  constexpr size_t kSkipped = 6;
  const ShapeProps props(shape);
  const std::optional<ShapeProps::Array> stops = props.array(pid::kFillShadeColors);
  if (!stops) return Status::kNothing;
  std::string colors;
  for (size_t i = 0; i < stops->count; ++i) {
    const ByteView stop = stops->elements.part(kSkipped + i * stops->elementSize);
    colors += FixedText<32>()
                  .append(fractionText(stop.i32(4)))
                  .append(' ')
                  .append(wordColour(stop.u32(0)))
                  .append(';');
  }
  archive()->AddAttribute("colors", colors.c_str());
  return Status::kOk;
}

}  // namespace ObjectWriter
