#include "objectwriter/attribute_text.h"
#include "objectwriter/object_attr.h"
#include "objectwriter/object_writer.h"

// The "stroke" element.

namespace ObjectWriter {
namespace {

constexpr AttributeRow kDashAndColours[] = {
    {"dashstyle", pid::kLineDashing, Form::kWord, objectAttr::GetStrokeDashStyle},
    {"color", pid::kLineColor, Form::kColour},
    {"color2", pid::kLineBackColor, Form::kColour},
};
constexpr AttributeRow kWeightAndEnds[] = {
    {"weight", pid::kLineWidth, Form::kEmuDouble},
    {"joinstyle", pid::kLineJoin, Form::kWord, objectAttr::GetLineJoinType},
    {"endcap", pid::kLineEndCap, Form::kWord, objectAttr::GetLineCapType},
    {"opacity", pid::kLineOpacity, Form::kFraction},
    {"startarrow", pid::kLineStartArrow, Form::kWord, objectAttr::GetArrowType},
    {"startarrowwidth", pid::kLineStartArrowWidth, Form::kWord, objectAttr::GetArrowWidth},
    {"startarrowlength", pid::kLineStartArrowLength, Form::kWord, objectAttr::GetArrowLength},
    {"endarrow", pid::kLineEndArrow, Form::kWord, objectAttr::GetArrowType},
    {"endarrowwidth", pid::kLineEndArrowWidth, Form::kWord, objectAttr::GetArrowWidth},
    {"endarrowlength", pid::kLineEndArrowLength, Form::kWord, objectAttr::GetArrowLength},
};

bool hasLook(const ShapeProps& props) {
  return props.isSet(pid::kStroked) || props.isSet(pid::kHitTestLine) ||
         props.hasAny({pid::kLineStartArrow, pid::kLineEndArrow, pid::kLineStartArrowWidth,
                       pid::kLineStartArrowLength, pid::kLineEndArrowWidth, pid::kLineEndArrowLength}) ||
         props.number(pid::kLineType, -1) != -1 || props.number(pid::kLineStyle, -1) != -1 ||
         props.number(pid::kLineDashing, -1) != -1 || props.has(pid::kLineWidth);
}

}  // namespace

Status KHtmlObjectWriter::WriteLineProp(const MsoROShape& shape, int) {
  const ShapeProps props(shape);
  if (!hasLook(props)) return Status::kNothing;
  IWriteArchive* const out = archive();
  out->BeginElement("stroke", "v");
  const std::optional<int> style = props.number(pid::kLineStyle);
  if (style || props.number(pid::kConnectionSites, -1) < 1) {
    out->AddAttribute("linestyle", objectAttr::GetStrokeStyle(style.value_or(-1)));
  }
  writeAttributes(out, props, kDashAndColours);
  const int type = props.number(pid::kLineType, -1);
  if (type != -1 && type != 0) {
    WriteImageProp(shape, pid::kLineBlip, pid::kLineBlipName, pid::kLineBlipFlags);
  }
  writeAttributes(out, props, kWeightAndEnds);
  EndVml("stroke");
  return Status::kOk;
}

}  // namespace ObjectWriter
