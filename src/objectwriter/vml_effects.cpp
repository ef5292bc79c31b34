#include "objectwriter/attribute_text.h"
#include "objectwriter/object_attr.h"
#include "objectwriter/object_writer.h"

// The "shadow" and "extrusion" elements.

namespace ObjectWriter {
namespace {

constexpr int kShadowOffset = 25400;  // EMU

/// A group of numbers that are written as one attribute if one of them is present, each with its default.
struct NumberGroup {
  PID id;
  int otherwise;
};

template <size_t N>
bool hasOneOf(const ShapeProps& props, const NumberGroup (&group)[N]) {
  for (const NumberGroup& each : group) {
    if (props.has(each.id)) return true;
  }
  return false;
}

// Shadow.

bool isPerspective(int shadowType) {
  return shadowType >= 2 && shadowType <= 4;
}

void writeShadowMatrix(IWriteArchive* archive, const ShapeProps& props) {
  using namespace pid;
  if (!props.hasAny({kShadowPerspectiveX, kShadowPerspectiveY, kShadowScaleXToX, kShadowScaleXToY,
                     kShadowScaleYToX, kShadowScaleYToY}))
    return;
  float weight = props.unsignedFloat(kShadowWeight, 256);
  if (weight == 0) weight = 1;
  archive->AddAttribute("matrix",
                        joinedNumbers({props.fixed(kShadowScaleXToX, 1), props.fixed(kShadowScaleYToX, 0),
                                       props.fixed(kShadowScaleXToY, 0), props.fixed(kShadowScaleYToY, 1),
                                       props.fixed(kShadowPerspectiveX, 0) / weight,
                                       props.fixed(kShadowPerspectiveY, 0) / weight},
                                      2)
                            .c_str());
}

void writeShadowOrigin(IWriteArchive* archive, const ShapeProps& props) {
  using namespace pid;
  if (!props.hasAny({kShadowOriginX, kShadowOriginY})) return;
  archive->AddAttribute(
      "origin", joinedNumbers({props.fixed(kShadowOriginX, 0), props.fixed(kShadowOriginY, 0)}, 2).c_str());
}

// Extrusion.

constexpr AttributeRow kDepths[] = {
    {"backdepth", pid::k3DExtrudeBackward, Form::kPoints},
    {"foredepth", pid::k3DExtrudeForward, Form::kPoints},
    {"brightness", pid::k3DAmbient, Form::kFraction},
    {"lightlevel", pid::k3DKeyIntensity, Form::kFraction},
};
constexpr AttributeRow kSurface[] = {
    {"render", pid::k3DRenderMode, Form::kWord, objectAttr::GetRenderMode},
    {"specularity", pid::k3DSpecular, Form::kFraction},
    {"diffusity", pid::k3DDiffuse, Form::kFraction},
    {"color", pid::k3DColor, Form::kColour},
};
constexpr NumberGroup kViewpoint[] = {
    {pid::k3DViewX, 1250000}, {pid::k3DViewY, -1250000}, {pid::k3DViewZ, 9000000}};
constexpr NumberGroup kKeyLight[] = {{pid::k3DKeyX, 50000}, {pid::k3DKeyY, 0}, {pid::k3DKeyZ, 10000}};
constexpr NumberGroup kFillLight[] = {{pid::k3DFillX, -50000}, {pid::k3DFillY, 0}, {pid::k3DFillZ, 10000}};

void writeAngles(IWriteArchive* archive, const ShapeProps& props) {
  using namespace pid;
  if (props.hasAny({k3DRotationX, k3DRotationY})) {
    archive->AddAttribute(
        "rotationangle",
        joinedNumbers({props.fixed(k3DRotationX, 0), props.fixed(k3DRotationY, 0)}, 2).c_str());
  }
  if (props.hasAny({k3DOriginX, k3DOriginY})) {
    archive->AddAttribute(
        "viewpointorigin",
        joinedNumbers({props.fixed(k3DOriginX, 0.5f), props.fixed(k3DOriginY, -0.5f)}, 2).c_str());
  }
}

void writeViewpoint(IWriteArchive* archive, const ShapeProps& props) {
  if (!hasOneOf(props, kViewpoint)) return;
  const auto at = [&props](int i) { return props.number(kViewpoint[i].id, kViewpoint[i].otherwise); };
  archive->AddAttribute("viewpoint", joinedPoints({at(0), at(1), at(2)}).c_str());
}

void writeLight(IWriteArchive* archive, const ShapeProps& props, const char* name,
                const NumberGroup (&light)[3]) {
  if (!hasOneOf(props, light)) return;
  const auto at = [&](int i) { return props.number(light[i].id, light[i].otherwise); };
  archive->AddAttribute(name, joinedIntegers({at(0), at(1), at(2)}).c_str());
}

}  // namespace

Status KHtmlObjectWriter::WriteShadowProp(const MsoROShape& shape) {
  using namespace pid;
  const ShapeProps props(shape);
  if (!props.isSet(kShadowOn)) return Status::kNothing;
  IWriteArchive* const out = archive();
  out->BeginElement("shadow", "v");
  out->AddAttribute("on", "t");
  writeAttribute(out, props, {"type", kShadowType, Form::kWord, objectAttr::GetShadowType});
  writeAttribute(out, props, {"color", kShadowColor, Form::kColour});
  const std::optional<bool> obscured = props.flag(kShadowObscured);
  if (obscured) out->AddAttribute("obscured", *obscured);
  writeAttribute(out, props, {"color2", kShadowHighlight, Form::kColour});
  writeAttribute(out, props, {"opacity", kShadowOpacity, Form::kFixedDouble});
  out->AddAttribute("offset", joinedPoints({props.number(kShadowOffsetX, kShadowOffset),
                                            props.number(kShadowOffsetY, kShadowOffset)})
                                  .c_str());
  if (props.hasAny({kShadowSecondOffsetX, kShadowSecondOffsetY})) {
    out->AddAttribute(
        "offset2",
        joinedPoints({props.number(kShadowSecondOffsetX, 0), props.number(kShadowSecondOffsetY, 0)}).c_str());
  }
  if (isPerspective(props.number(kShadowType, 0))) {
    writeShadowMatrix(out, props);
    writeShadowOrigin(out, props);
  }
  EndVml("shadow");
  return Status::kOk;
}

Status KHtmlObjectWriter::Write3DProp(const MsoROShape& shape) {
  using namespace pid;
  const ShapeProps props(shape);
  if (!props.isSet(k3DOn)) return Status::kNothing;
  IWriteArchive* const out = archive();
  out->BeginElement("extrusion", "v");
  out->AddAttribute("on", "t");
  writeAngles(out, props);
  writeViewpoint(out, props);
  writeAttribute(out, props, {"skewangle", k3DSkewAngle, Form::kWholeFixed});
  writeAttribute(out, props, {"skewamt", k3DSkewAmount, Form::kInteger});
  if (props.flag(k3DParallel) == false) out->AddAttribute("type", "perspective");
  writeAttributes(out, props, kDepths);
  writeLight(out, props, "lightposition", kKeyLight);
  writeAttribute(out, props, {"lightlevel2", k3DFillIntensity, Form::kFraction});
  writeLight(out, props, "lightposition2", kFillLight);
  writeAttributes(out, props, kSurface);
  EndVml("extrusion");
  return Status::kOk;
}

}  // namespace ObjectWriter
