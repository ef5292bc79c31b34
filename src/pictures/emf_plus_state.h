#pragma once

#include <array>
#include <string>
#include <vector>

#include "pictures/emf_plus_outline.h"
#include "pictures/emf_plus_reader.h"
#include "pictures/svg_canvas.h"

namespace pagerex {

enum class PlusType : uint8_t {
  kNone,
  kBrush,
  kPen,
  kPath,
  kRegion,
  kImage,
  kFont,
  kStringFormat,
  kImageAttributes,
  kCustomLineCap,
};

/// One of the table of objects: its bytes as they stand in the file.
struct PlusObject {
  PlusType type = PlusType::kNone;
  std::string bytes;

  // What became of a brush, which is used again and again.
  bool hasPaint = false;
  Paint paint;
  Matrix paintMatrix;

  ByteView view() const { return {bytes.data(), bytes.size()}; }
};

/// What Save keeps.
struct PlusGraphics {
  Matrix world;
  Matrix container;  ///< from pixels of the innermost container to those of the device
  double pageX = 1, pageY = 1;
  uint32_t outerClip = 0;  ///< of the container
  uint32_t clip = 0;
  bool isClipBox = false;  ///< `clip` is the part of `outerClip` in `clipBox`, which has units of the canvas
  Box clipBox;
  bool isSharp = false;  ///< images have pixels that are seen
};

/// A pen for one outline, in units of the canvas.
struct PlusPen {
  struct End {
    uint32_t cap = 0;
    ByteView custom;
  };
  Stroke stroke;
  End start, end;
};

/// A shape that clips.
struct PlusClipShape {
  PathData path;
  FillRule rule = FillRule::kEvenOdd;
  ByteView region;           ///< instead of a path
  const Box* box = nullptr;  ///< that the path is
};

struct PlusImage;

/// What EMF+ records change and draw with.
class PlusState {
 public:
  PlusState(SvgCanvas& canvas, const Matrix& device, double pixelsPerInch, bool isNested);

  bool Play(ByteView records);
  bool isDeviceLent() const { return isDeviceLent_; }

  struct Record {
    uint16_t flags;
    PlusReader data;

    uint8_t id() const { return flags & 0xFF; }
    bool isCompressed() const { return flags & kPlusCompressed; }
  };

  // Shapes of records, in world units.
  void Rectangles(Record& record);
  void Polygon(Record& record);
  void Lines(Record& record);
  void Ellipse(Record& record);
  void Pie(Record& record);
  void Arc(Record& record);
  void ClosedCurve(Record& record);
  void Curve(Record& record);
  void Beziers(Record& record);

  // All others.
  void Header(Record& record);
  void LendDevice(Record& record);
  void Object(Record& record);
  void Clear(Record& record);
  void FillRegion(Record& record);
  void FillPath(Record& record);
  void DrawPath(Record& record);
  void DrawImage(Record& record);
  void DrawImagePoints(Record& record);
  void DrawString(Record& record);
  void DrawDriverString(Record& record);
  void SetInterpolation(Record& record);
  void Save(Record& record);
  void Restore(Record& record);
  void BeginContainer(Record& record);
  void BeginBareContainer(Record& record);
  void SetWorld(Record& record);
  void ResetWorld(Record& record);
  void MultiplyWorld(Record& record);
  void TranslateWorld(Record& record);
  void ScaleWorld(Record& record);
  void RotateWorld(Record& record);
  void SetPage(Record& record);
  void ResetClip(Record& record);
  void ClipBox(Record& record);
  void ClipPath(Record& record);
  void ClipRegion(Record& record);
  void OffsetClip(Record& record);
  void SetServerGraphics(Record& record);
  void SetServerClip(Record& record);
  void Skip(Record&) {}
  void Miss(Record&) { isWhole_ = false; }

 private:
  struct Step;
  static const Step kSteps[];

  void PlayRecord(uint16_t type, Record record);
  void PutObject(uint8_t id, PlusType type, ByteView bytes);
  /// The object's bytes, which none has that is of another type, or was used too often already.
  ByteView Find(uint32_t id, PlusType type);
  bool Afford(size_t work);

  Matrix WorldToPixels() const;  ///< of the device
  Matrix WorldToCanvas() const { return WorldToPixels() * device_; }
  double PixelsOf(uint32_t unit) const;
  void ChangeWorld(const Record& record, const Matrix& change);
  void Push(uint32_t index);
  void Enter(uint32_t index, const Matrix& inner);

  void Read(Record& record, uint32_t count);
  void FillOutline(const Paint& paint);
  void DrawOutline(uint32_t penId);

  // Brushes and pens.
  Paint FillPaint(const Record& record, uint32_t brush);
  Paint InkOf(const Record& record, uint32_t brush);
  Paint MakePaint(ByteView brush, const Matrix& matrix);
  Paint KeptPaint(PlusObject& object, ByteView brush);
  Paint HatchPaint(PlusReader reader);
  Paint TexturePaint(PlusReader reader, const Matrix& matrix);
  Paint LinearPaint(PlusReader reader, const Matrix& matrix);
  Paint PathGradientPaint(PlusReader reader, const Matrix& matrix);
  bool MakePen(uint32_t id, PlusPen& pen);
  void DrawWithEnds(const PlusPen& pen);

  // Clips.
  uint32_t Part(const PlusClipShape& shape, uint32_t within, bool isOutside);
  uint32_t RegionPart(PlusReader& reader, uint32_t within, bool isOutside, int depth);
  uint32_t LeafPart(PlusReader& reader, uint32_t type, uint32_t within, bool isOutside);
  void CombineClip(uint32_t mode, const PlusClipShape& shape);
  PathData Everything() const;

  // Images.
  void PutImage(uint32_t id, const Box& source, const Matrix& place);

  // Text.
  struct Font;
  struct Layout;
  bool MakeFont(uint32_t id, Font& font);
  void PutLines(const Font& font, const Layout& layout, std::u16string_view text);

  SvgCanvas& canvas_;
  const Matrix device_;
  double dpiX_, dpiY_;
  const bool isNested_;
  bool isWhole_ = true, isDeviceLent_ = false;
  int64_t work_;         ///< that may still be done
  std::string waiting_;  ///< the beginning of a record
  std::array<PlusObject, 64> objects_;
  struct {
    uint16_t id = 0;
    size_t size = 0;  ///< of the whole object; 0 for none that goes on
    std::string bytes;
  } part_;
  PlusGraphics graphics_;
  struct Saved {
    uint32_t index;
    PlusGraphics graphics;
  };
  std::vector<Saved> saved_;
  std::vector<Point> points_;
  PlusOutline outline_;
  uint32_t regionNodes_ = 0;  ///< that may still be visited
};

}  // namespace pagerex
