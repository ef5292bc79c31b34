#include "wordreader/clx.h"

#include "wordreader/table_record.h"

namespace {

constexpr uint8_t kPropertyGroup = 1;
constexpr uint8_t kPieceTable = 2;
constexpr size_t kAddressableGroups = 1 << 15;  // what the index in a piece's modifier can reach

}  // namespace

Status KDRClx::Read(const KDRTableRecord& record) {
  propertyGroups_.clear();
  AssignCounted({}, 0);
  // A record that is cut short ends with zeros, and a zero is a stray byte that is skipped: so the walk may
  // end with the bytes, while lengths are held against the whole record.
  const size_t size = record.place.lcb;
  const ByteView bytes = record.bytes;
  for (size_t at = 0; at < bytes.size();) {
    const uint8_t type = bytes.u8(at++);
    const size_t left = size - at;
    if (type == kPropertyGroup) {
      const size_t groupSize = sizeof(KDRPropx) + bytes.u16(at);
      if (groupSize > left || !bytes.contains(at, groupSize)) return Status::kMalformed;
      if (propertyGroups_.size() < kAddressableGroups) propertyGroups_.push_back(bytes.record<KDRPropx>(at));
      at += groupSize;
    } else if (type == kPieceTable) {
      const size_t tableSize = bytes.u32(at);
      if (left < 4 || tableSize > left - 4) return Status::kMalformed;
      return AssignBytes(bytes.part(at + 4), kRecordSize, tableSize);
    }
  }
  return Status::kMalformed;
}
