#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/symbol_characters.h"
#include "pictures/emf_plus_outline.h"
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
  bool isSharp = false;    ///< images have pixels that are seen
  Box clipBox;
};

/// A pen for one outline, in units of the canvas.
struct PlusPen {
  struct End {
    uint32_t cap = 0;
    ByteView custom;
    bool isShape() const { return (cap & 0xF0) == 0x10 || !custom.empty(); }
  };
  Stroke stroke;
  End ends[2];  ///< where lines begin and end
};

/// What EMF+ records change and draw with.
class PlusState {
 public:
  PlusState(SvgCanvas& canvas, const Matrix& device, double pixelsPerInch, bool isNested);

  bool Play(ByteView records);
  bool isDeviceLent() const { return isDeviceLent_; }

 private:
  struct Record {
    uint16_t type, flags;
    PlusReader data;

    uint8_t id() const { return flags & 0xFF; }
    bool hasOption() const { return flags & kPlusOption; }
  };
  using Step = void (PlusState::*)(Record&);
  static const Step kSteps[];

  void PlayRecord(Record& record);
  ByteView Find(uint32_t id, PlusType type);
  bool Afford(size_t work);
  Matrix WorldToPixels() const;
  Matrix WorldToCanvas() const { return WorldToPixels() * device_; }
  double PixelsOf(uint32_t unit) const;

  // Shapes of records, in world units.
  void Rectangles(Record& record);
  void Polygon(Record& record);
  void Lines(Record& record);
  void Ellipse(Record& record);
  void Pie(Record& record);
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
  void DrawString(Record& record);
  void DrawDriverString(Record& record);
  void SetInterpolation(Record& record);
  void Save(Record& record);
  void Restore(Record& record);
  void BeginContainer(Record& record);
  void SetWorld(Record& record);
  void ChangeWorld(Record& record);
  void SetPage(Record& record);
  void ResetClip(Record& record);
  void ClipBox(Record& record);
  void ClipShape(Record& record);
  void OffsetClip(Record& record);
  void Skip(Record&) {}
  void Miss(Record&) { isWhole_ = false; }

  /// The outline as a path on the canvas, which takes the clip that is set.
  const PathData& CanvasPath();
  void FillOutline(const Paint& paint);
  void FillAll(const Paint& paint);
  void DrawOutline(uint32_t penId);

  // Brushes and pens.
  Paint FillPaint(const Record& record, uint32_t brush, bool isInk = false);
  Paint KeptPaint(uint32_t id, ByteView brush, bool isInk = false);
  Paint MakePaint(ByteView brush, const Matrix& matrix, bool isInk);
  Paint HatchPaint(PlusReader& reader);
  Paint TexturePaint(PlusReader& reader, const Matrix& matrix);
  Paint LinearPaint(PlusReader& reader, const Matrix& matrix);
  Paint PathGradientPaint(PlusReader& reader, const Matrix& matrix);
  void ReadStops(PlusReader& reader, uint32_t flags, uint32_t from, uint32_t to);
  bool MakePen(uint32_t id, PlusPen& pen);
  bool PutEnd(const PlusPen& pen, size_t which, size_t at, size_t other);

  // Text.
  SymbolFont ReadFont(uint32_t id, TextLook& look);
  void ReadText(PlusReader& reader, uint32_t count, bool hasHotkeys, SymbolFont symbols);

  // Clips.
  uint32_t Part(ByteView region, uint32_t within, bool isOutside);
  uint32_t RegionPart(PlusReader& reader, uint32_t within, bool isOutside, int depth);
  bool TakeLeaves(PlusReader& reader);
  void CombineClip(uint32_t mode, ByteView region);

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
  size_t regionNodes_ = 0;  ///< that may still be visited

  // Of the record that is played.
  PlusOutline outline_, other_;
  bool isBox_ = false;  ///< the outline that clips
  PathData path_;
  std::vector<GradientStop> stops_;
  std::string family_;
  std::u16string text_;
  std::vector<double> advances_;
};

}  // namespace pagerex
