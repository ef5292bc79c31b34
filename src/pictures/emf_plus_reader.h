#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "pictures/geometry.h"

namespace pagerex {

/// Reads the fields of an EMF+ record or object one after another; what lies behind its end is 0.
class PlusReader {
 public:
  explicit PlusReader(ByteView bytes) : rest_(bytes) {}

  size_t left() const { return rest_.size(); }
  ByteView rest() const { return rest_; }

  uint8_t U8() { return Take(1).u8(0); }
  uint16_t U16() { return Take(2).u16(0); }
  uint32_t U32() { return Take(4).u32(0); }
  /// 0 for what is no number, or is too large for any picture.
  double Real();
  Point RealPoint();
  Matrix RealMatrix();
  /// Left, top, width and height, 16-bit or real.
  Box Rectangle(bool isCompressed);
  /// At most so many bytes.
  ByteView Take(size_t size);
  /// A count of things of so many bytes each, as far as they are there.
  uint32_t Count(size_t size);

  enum class PointForm : uint8_t { kReal, kCompressed, kRelative };
  /// Appends at most `count` points.
  void Points(uint32_t count, PointForm form, std::vector<Point>& out);

 private:
  int32_t RelativeNumber();

  ByteView rest_;
};

// Bits of a record's flags.
constexpr uint16_t kPlusColour = 0x8000;      ///< a brush is a colour
constexpr uint16_t kPlusCompressed = 0x4000;  ///< coordinates are 16-bit numbers
constexpr uint16_t kPlusOption = 0x2000;      ///< closed, winding, behind: as the record has it
constexpr uint16_t kPlusRelative = 0x0800;    ///< points are ways from the one before

inline PlusReader::PointForm pointForm(uint32_t flags) {
  if (flags & kPlusRelative) return PlusReader::PointForm::kRelative;
  return flags & kPlusCompressed ? PlusReader::PointForm::kCompressed : PlusReader::PointForm::kReal;
}

}  // namespace pagerex
