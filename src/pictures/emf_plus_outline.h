#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "pictures/geometry.h"
#include "pictures/paint.h"
#include "pictures/path_data.h"

namespace pagerex {

class PlusOutline;

// Bits of a record's flags.
constexpr uint16_t kPlusColour = 0x8000;      ///< a brush is a colour
constexpr uint16_t kPlusCompressed = 0x4000;  ///< coordinates are 16-bit numbers
constexpr uint16_t kPlusOption = 0x2000;      ///< closed, winding, behind: as the record has it
constexpr uint16_t kPlusRelative = 0x0800;    ///< points are ways from the one before

/// Reads the fields of an EMF+ record or object one after another; what lies behind its end is 0.
class PlusReader {
 public:
  explicit PlusReader(ByteView bytes) : rest_(bytes) {}

  size_t left() const { return rest_.size(); }
  ByteView rest() const { return rest_; }

  uint16_t U16();
  uint32_t U32();
  /// 0 for what is no number, or is too large for any picture.
  double Real();
  Point RealPoint();
  Matrix RealMatrix();
  /// Left, top, width and height: 16-bit numbers where the flags say so, or real ones.
  Box Rectangle(uint32_t flags = 0);
  /// At most so many bytes.
  ByteView Take(size_t size);
  /// A count of bytes, and these.
  ByteView TakeCounted();
  /// A count of things of so many bytes each, as far as they are there.
  uint32_t Count(size_t size);
  /// Appends at most `count` points, in the form that the flags tell, of which the first is a start.
  void Points(uint32_t count, uint32_t flags, PlusOutline& out, uint8_t type);

 private:
  int32_t RelativeNumber();

  ByteView rest_;
};

/// Figures of lines and Bezier curves: what EMF+ fills and draws.
class PlusOutline {
 public:
  // What a point is, as a path in the file has it.
  static constexpr uint8_t kStart = 0, kLine = 1, kCurve = 3, kKind = 7, kClose = 0x80;

  struct Corner {
    Point at;
    uint8_t type;
    uint8_t kind() const { return type & kKind; }
  };
  std::vector<Corner> points;
  FillRule rule = FillRule::kEvenOdd;

  void clear();
  void Add(Point at, uint8_t type);
  /// The last figure ends where it began.
  void Close();

  /// A cardinal spline through all points; `count` of its pieces from the `first` one on are there.
  void AddCurve(const PlusOutline& through, double tension, bool isClosed, size_t first = 0,
                size_t count = SIZE_MAX);
  void AddBox(const Box& box);
  void AddEllipse(const Box& box);
  /// Degrees, clockwise; a pie has its centre as a corner.
  void AddArc(const Box& box, double start, double sweep, bool isPie);
  /// The object in the file.
  void AddPath(ByteView path);

  /// From the point `from` on.
  void Move(const Matrix& matrix, size_t from = 0);
  void Put(PathData& data) const;
};

}  // namespace pagerex
