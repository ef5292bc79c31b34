#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "base/status.h"
#include "wordreader/mso_word.h"

class KDRDocument;
struct KDRTableRecord;

inline constexpr unsigned short kEmptyText[1] = {};

/// A string of a string table: NUL-terminated 16-bit text in the document's allocator, and its extra data.
struct KDRSttbfItem {
  const unsigned short* text = kEmptyText;  ///< never null
  ByteView extra;
};

/// The string table `id` of the table stream.
template <uint32_t id>
class KDRSttbf {
 public:
  /// Reads the table from the document. kNothing if it is absent or empty.
  Status Read(const KDRDocument& document);
  uint32_t Count() const { return count_; }
  /// A string that the table counts but does not hold is empty. Throws std::out_of_range for an index outside
  /// the table.
  const KDRSttbfItem& Item(int i) const;
  /// 0 for 16-bit strings, 1 for 8-bit strings.
  static int GetStrType(ByteView bytes) { return bytes.u8(0) == 0xFF && bytes.u8(1) == 0xFF ? 0 : 1; }
  /// The texts are copied to the document's allocator; extra data stay in the record.
  Status ReadRecord(const KDRTableRecord& record, const KDRDocument& document);

 protected:
  void Clear();

 private:
  void ReadStrings16(ByteView bytes, ChainAllocator& allocator);
  void ReadStrings8(ByteView bytes, ChainAllocator& allocator);

  std::vector<KDRSttbfItem> items_;  ///< those that the record holds
  uint32_t count_ = 0;               ///< as the record tells
};
