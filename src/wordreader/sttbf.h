#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "base/status.h"
#include "wordreader/mso_word.h"

class KDRDocument;
struct KDRTableRecord;

/// A string of a string table: NUL-terminated 16-bit text in the document's allocator, and its extra data.
struct KDRSttbfItem {
  const unsigned short* text = nullptr;
  ByteView extra;
};

/// The string table `id` of the table stream.
template <uint32_t id>
class KDRSttbf {
 public:
  Status Read(const KDRDocument& document);
  uint32_t Count() const { return static_cast<uint32_t>(items_.size()); }
  /// Throws std::out_of_range for an index outside the table.
  const KDRSttbfItem& Item(int i) const { return items_.at(static_cast<size_t>(i)); }
  /// 0 for 16-bit strings, 1 for 8-bit strings.
  static int GetStrType(ByteView bytes) { return bytes.u8(0) == 0xFF && bytes.u8(1) == 0xFF ? 0 : 1; }
  Status ReadRecord(const KDRTableRecord& record, const KDRDocument& document);

 protected:
  std::vector<KDRSttbfItem> items_;
  uint32_t extraSize_ = 0;
  int strType_ = 0;
};
