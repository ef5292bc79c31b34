#pragma once

#include "base/chain_allocator.h"
#include "drawing/drawing.h"
#include "drawing/query_prop.h"
#include "drawing/shape.h"
#include "support/bytes.h"
#include "support/drawing_writer.h"

/// Helpers for tests that hand bytes to the drawing reader and look at what it makes of them.
namespace drawing_test {

using support::Bytes;
using support::ByteWriter;
using support::drawing::Blip;
using support::drawing::container;
using support::drawing::Drawing;
using support::drawing::Props;
using support::drawing::record;
using support::drawing::Shape;
using namespace mso_escher;

inline ByteView viewOf(const Bytes& bytes) {
  return ByteView(bytes.data(), bytes.size());
}

inline Bytes joined(const std::vector<Bytes>& parts) {
  ByteWriter all;
  for (const Bytes& part : parts) all.bytes(part);
  return all.take();
}

/// The first record of some bytes.
inline MsoRORecInfo firstRecord(const Bytes& bytes) {
  MsoRORecInfo first;
  MsoRORecords(viewOf(bytes)).Next(&first);
  return first;
}

/// FSP record: type and number of a shape, and its flags.
inline Bytes fsp(uint16_t type, uint32_t id, uint32_t grf) {
  return record(0xF00A, type, 2, ByteWriter().u32(id).u32(grf).take());
}
inline Bytes rect(uint16_t recordType, uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
  return record(recordType, 0, 0, ByteWriter().u32(left).u32(top).u32(right).u32(bottom).take());
}

constexpr uint32_t kGroupFlags = 0x201;
constexpr uint32_t kShapeFlags = 0xA00;

/// A shape, or a group by the type of the container, and the memory that it lives in.
class ReadShape {
 public:
  explicit ReadShape(const Bytes& bytes, uint32_t zOrder = 0) : bytes_(bytes) {
    const MsoRORecInfo first = firstRecord(bytes_);
    if (first.type == kShapeGroupContainer) {
      shape_.InitGroupShape(first, allocator_, zOrder);
    } else {
      shape_.InitShape(first, allocator_, zOrder);
    }
  }
  const MsoROShape& operator*() const { return shape_; }
  const MsoROShape* operator->() const { return &shape_; }
  Bytes& bytes() { return bytes_; }

 private:
  Bytes bytes_;
  ChainAllocator allocator_;
  MsoROShape shape_;
};

/// A shape of these records.
inline ReadShape shapeOf(const std::vector<Bytes>& records, uint32_t zOrder = 0) {
  return ReadShape(container(0xF004, records), zOrder);
}

/// The drawing group and the drawings of a table, and the memory that they live in.
class ReadDrawings {
 public:
  explicit ReadDrawings(const Bytes& bytes) : bytes_(bytes) {
    status = info_.ReadRecord(viewOf(bytes_), allocator_);
  }

  Status status = Status::kFailure;
  const MsoRODrawing& drawing(unsigned int i = 0) const { return info_.GetDrawing(i); }
  const MsoROBlipStore& store() const { return info_.GetDrawingGroup().GetBlipStore(); }

 private:
  Bytes bytes_;
  ChainAllocator allocator_;
  KDRDggInfo info_;
};

/// A store with these entries, as they stand in the drawing group.
inline Bytes groupOf(const std::vector<Bytes>& entries) {
  return container(0xF000, {record(0xF006, 0, 0, Bytes(16)), container(0xF001, entries)});
}

}  // namespace drawing_test
