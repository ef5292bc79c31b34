#pragma once

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>

#include "base/byte_view.h"
#include "base/fixed_point.h"
#include "drawing/query_prop.h"
#include "drawing/shape.h"

namespace ObjectWriter {

using mso_escher::MsoROShape;

/// Shape types that are treated by number; GetShapeType gives them.
enum ShapeType : uint32_t {
  kRectangle = 1,
  kEllipse = 3,
  kLine = 20,
  kPictureFrame = 75,
  kHostControl = 201,
  kTextBox = 202,
};

/// Properties of shapes that the writers read, by their numbers in the file. Lengths are EMU, "fixed" is
/// 16.16, a fraction is 16.16 that is written raw.
namespace pid {
// Text box.
constexpr PID kTextLeft = 0x0081;
constexpr PID kTextTop = 0x0082;
constexpr PID kTextRight = 0x0083;
constexpr PID kTextBottom = 0x0084;
constexpr PID kTextAnchor = 0x0087;
constexpr PID kTextFlow = 0x0088;
constexpr PID kAutoTextMargin = 0x00BC;  // flag
// WordArt.
constexpr PID kGeoText = 0x00C0;
constexpr PID kGeoTextAlign = 0x00C2;
constexpr PID kGeoTextSize = 0x00C3;  // fixed, points
constexpr PID kGeoTextSpacing = 0x00C4;
constexpr PID kGeoTextFont = 0x00C5;
// Picture.
constexpr PID kBlip = 0x0104;
constexpr PID kBlipName = 0x0105;
constexpr PID kBlipFlags = 0x0106;
constexpr PID kPictureGamma = 0x010A;    // fixed
constexpr PID kPictureGray = 0x013D;     // flag
constexpr PID kPictureBiLevel = 0x013E;  // flag
// Geometry.
constexpr PID kRotation = 0x0004;  // fixed, degrees
constexpr PID kGeoLeft = 0x0140;
constexpr PID kGeoTop = 0x0141;
constexpr PID kGeoRight = 0x0142;
constexpr PID kGeoBottom = 0x0143;
constexpr PID kVertices = 0x0145;     // array
constexpr PID kSegmentInfo = 0x0146;  // array
constexpr PID kFirstAdjust = 0x0147;
constexpr PID kLastAdjust = 0x0150;
// Fill.
constexpr PID kFillType = 0x0180;
constexpr PID kFillColor = 0x0181;
constexpr PID kFillOpacity = 0x0182;
constexpr PID kFillBackColor = 0x0183;
constexpr PID kFillBackOpacity = 0x0184;
constexpr PID kFillBlip = 0x0186;
constexpr PID kFillBlipName = 0x0187;
constexpr PID kFillBlipFlags = 0x0188;
constexpr PID kFillAngle = 0x018B;   // fixed, degrees
constexpr PID kFillFocus = 0x018C;   // percent
constexpr PID kFillToLeft = 0x018D;  // fixed
constexpr PID kFillToTop = 0x018E;
constexpr PID kFillToRight = 0x018F;
constexpr PID kFillToBottom = 0x0190;
constexpr PID kFillAspect = 0x0195;
constexpr PID kFillShadeColors = 0x0197;  // array
constexpr PID kFillRotates = 0x01BA;      // flag of the user table
constexpr PID kFilled = 0x01BB;           // flag
// Line.
constexpr PID kLineColor = 0x01C0;
constexpr PID kLineOpacity = 0x01C1;
constexpr PID kLineBackColor = 0x01C2;
constexpr PID kLineType = 0x01C4;
constexpr PID kLineBlip = 0x01C5;
constexpr PID kLineBlipName = 0x01C6;
constexpr PID kLineBlipFlags = 0x01C7;
constexpr PID kLineWidth = 0x01CB;
constexpr PID kLineStyle = 0x01CD;
constexpr PID kLineDashing = 0x01CE;
constexpr PID kLineStartArrow = 0x01D0;
constexpr PID kLineEndArrow = 0x01D1;
constexpr PID kLineStartArrowWidth = 0x01D2;
constexpr PID kLineStartArrowLength = 0x01D3;
constexpr PID kLineEndArrowWidth = 0x01D4;
constexpr PID kLineEndArrowLength = 0x01D5;
constexpr PID kLineJoin = 0x01D6;
constexpr PID kLineEndCap = 0x01D7;
constexpr PID kHitTestLine = 0x01FB;  // flag
constexpr PID kStroked = 0x01FC;      // flag
// Shadow.
constexpr PID kShadowType = 0x0200;
constexpr PID kShadowColor = 0x0201;
constexpr PID kShadowHighlight = 0x0202;
constexpr PID kShadowOpacity = 0x0204;  // fixed
constexpr PID kShadowOffsetX = 0x0205;
constexpr PID kShadowOffsetY = 0x0206;
constexpr PID kShadowSecondOffsetX = 0x0207;
constexpr PID kShadowSecondOffsetY = 0x0208;
constexpr PID kShadowScaleXToX = 0x0209;  // fixed, as the following
constexpr PID kShadowScaleYToX = 0x020A;
constexpr PID kShadowScaleXToY = 0x020B;
constexpr PID kShadowScaleYToY = 0x020C;
constexpr PID kShadowPerspectiveX = 0x020D;
constexpr PID kShadowPerspectiveY = 0x020E;
constexpr PID kShadowWeight = 0x020F;  // a plain number
constexpr PID kShadowOriginX = 0x0210;
constexpr PID kShadowOriginY = 0x0211;
constexpr PID kShadowOn = 0x023E;        // flag
constexpr PID kShadowObscured = 0x023F;  // flag
// Extrusion.
constexpr PID k3DSpecular = 0x0280;
constexpr PID k3DDiffuse = 0x0281;
constexpr PID k3DExtrudeForward = 0x0284;
constexpr PID k3DExtrudeBackward = 0x0285;
constexpr PID k3DColor = 0x0287;
constexpr PID k3DOn = 0x02BC;         // flag
constexpr PID k3DRotationY = 0x02C0;  // fixed, degrees
constexpr PID k3DRotationX = 0x02C1;
constexpr PID k3DRenderMode = 0x02C9;
constexpr PID k3DViewX = 0x02CB;
constexpr PID k3DViewY = 0x02CC;
constexpr PID k3DViewZ = 0x02CD;
constexpr PID k3DOriginX = 0x02CE;  // fixed
constexpr PID k3DOriginY = 0x02CF;
constexpr PID k3DSkewAngle = 0x02D0;  // fixed, degrees
constexpr PID k3DSkewAmount = 0x02D1;
constexpr PID k3DAmbient = 0x02D2;
constexpr PID k3DKeyX = 0x02D3;
constexpr PID k3DKeyY = 0x02D4;
constexpr PID k3DKeyZ = 0x02D5;
constexpr PID k3DKeyIntensity = 0x02D6;
constexpr PID k3DFillX = 0x02D7;
constexpr PID k3DFillY = 0x02D8;
constexpr PID k3DFillZ = 0x02D9;
constexpr PID k3DFillIntensity = 0x02DA;
constexpr PID k3DParallel = 0x02FD;  // flag
// Shape.
constexpr PID kConnectionSites = 0x0301;
constexpr PID kConnectorStyle = 0x0303;
constexpr PID kHyperlink = 0x0382;
constexpr PID kBehindText = 0x03BA;  // flag
constexpr PID kHidden = 0x03BE;      // flag
}  // namespace pid

/// Space around the text of a shape, EMU.
struct TextMargins {
  int left = 91440;
  int top = 45720;
  int right = 91440;
  int bottom = 45720;
};

/// The property table of one shape, as the writers ask it.
class ShapeProps {
 public:
  explicit ShapeProps(const MsoROShape& shape) : shape_(shape) {}

  /// A flag, if the file sets it.
  std::optional<bool> flag(PID id) const {
    bool value = false;
    return found(KQueryProp::QueryBoolProp(&shape_, id, value), value);
  }
  /// The flag is present and true.
  bool isSet(PID id) const { return flag(id) == true; }
  /// The operand, signed.
  std::optional<int> number(PID id) const {
    int value = 0;
    return found(KQueryProp::QueryI4Prop(&shape_, id, value), value);
  }
  int number(PID id, int otherwise) const { return number(id).value_or(otherwise); }
  bool has(PID id) const { return number(id).has_value(); }
  bool hasAny(std::initializer_list<PID> ids) const {
    return std::any_of(ids.begin(), ids.end(), [this](PID id) { return has(id); });
  }
  /// A 16.16 value, truncated to an integer.
  std::optional<int> wholeFixed(PID id) const {
    int value = 0;
    return found(KQueryProp::QueryI4Prop(&shape_, id, value, FixNumConv), value);
  }
  std::optional<float> fixed(PID id) const {
    float value = 0;
    return found(KQueryProp::QueryFloatProp(&shape_, id, value, FixNumConv), value);
  }
  float fixed(PID id, float otherwise) const { return fixed(id).value_or(otherwise); }
  /// The operand as an unsigned value.
  float unsignedFloat(PID id, float otherwise) const {
    KQueryProp::QueryFloatProp(&shape_, id, otherwise);
    return otherwise;
  }
  /// A flag of the user table is present and true.
  bool isUserSet(PID id) const {
    bool value = false;
    return KQueryProp::QueryBoolUDefProp(&shape_, id, value) && value;
  }
  /// A string as UTF-8; empty if there is none.
  std::string text(PID id) const;
  /// The data of a complex property; empty without.
  ByteView data(PID id) const;

  /// An array property.
  struct Array {
    size_t count = 0;  ///< elements that are there
    size_t elementSize = 0;
    ByteView elements;  ///< and what was read behind them
  };
  std::optional<Array> array(PID id) const;

  /// What the file does not tell has its default.
  TextMargins textMargins() const;

 private:
  /// By reference: the query that says whether it is there also sets it.
  template <class T>
  static std::optional<T> found(bool is, const T& value) {
    return is ? std::optional<T>(value) : std::nullopt;
  }

  const MsoROShape& shape_;
};

/// Builds the lookup map of a shape's properties for the time that it is written.
class PropertyMap {
 public:
  explicit PropertyMap(const MsoROShape& shape) : properties_(shape.GetProperties()) {
    properties_.InitMap();
  }
  PropertyMap(const PropertyMap&) = delete;
  PropertyMap& operator=(const PropertyMap&) = delete;
  ~PropertyMap() { properties_.ClearMap(); }

 private:
  mso_escher::MsoROShapeOPT& properties_;
};

}  // namespace ObjectWriter
