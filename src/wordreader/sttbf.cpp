#include "wordreader/sttbf.h"

#include <cstring>
#include <stdexcept>

#include "base/code_page_1252.h"
#include "wordreader/document.h"

namespace {

constexpr size_t kStringsBegin = 6;
constexpr KDRSttbfItem kEmptyItem;

/// Room for `length` characters and the terminating zero.
unsigned short* newText(size_t length, ChainAllocator& allocator) {
  void* memory = allocator.AllocAligned((length + 1) * sizeof(unsigned short), alignof(unsigned short));
  auto* text = static_cast<unsigned short*>(memory);
  text[length] = 0;
  return text;
}

const unsigned short* copyText16(ByteView characters, ChainAllocator& allocator) {
  const size_t length = characters.size() / 2;
  if (length == 0) return kEmptyText;
  unsigned short* text = newText(length, allocator);
  std::memcpy(text, characters.data(), length * 2);
  return text;
}

const unsigned short* copyText8(ByteView characters, ChainAllocator& allocator) {
  const size_t length = characters.size();
  if (length == 0) return kEmptyText;
  unsigned short* text = newText(length, allocator);
  MsoCP1252ToWcs(characters.data(), static_cast<unsigned int>(length), text);
  return text;
}

}  // namespace

template <uint32_t id>
Status KDRSttbf<id>::Read(const KDRDocument& document) {
  Clear();
  KDRTableRecord record;
  const Status status = document.GetTableRecord(&record, id);
  return status == Status::kOk ? ReadRecord(record, document) : status;
}

template <uint32_t id>
Status KDRSttbf<id>::ReadRecord(const KDRTableRecord& record, const KDRDocument& document) {
  Clear();
  if (record.bytes.empty()) return Status::kNothing;
  if (GetStrType(record.bytes) == 0) {
    ReadStrings16(record.bytes, document.GetAllocator());
  } else {
    ReadStrings8(record.bytes, document.GetAllocator());
  }
  return Status::kOk;
}

template <uint32_t id>
void KDRSttbf<id>::ReadStrings16(ByteView bytes, ChainAllocator& allocator) {
  count_ = bytes.u16(2);
  const size_t extraSize = bytes.u8(4);
  size_t at = kStringsBegin;
  while (items_.size() < count_ && at < bytes.size()) {
    // The length is a 16-bit field of which the low byte counts: a longer string puts the rest out of step.
    const size_t textBytes = bytes.u8(at) * size_t{2};
    const size_t textEnd = at + 2 + textBytes;
    items_.push_back({copyText16(bytes.part(at + 2, textBytes), allocator), bytes.part(textEnd, extraSize)});
    at = textEnd + extraSize;
  }
}

template <uint32_t id>
void KDRSttbf<id>::ReadStrings8(ByteView bytes, ChainAllocator& allocator) {
  count_ = bytes.u8(0);
  const size_t extraSize = bytes.u8(2);
  size_t at = kStringsBegin;
  while (items_.size() < count_ && at < bytes.size()) {
    const size_t length = bytes.u8(at);
    const size_t textEnd = at + 2 + length;
    // Extra data are looked for this far behind the text, though the next string does not make room for it.
    const ByteView extra = bytes.part(textEnd + length + 6, extraSize);
    items_.push_back({copyText8(bytes.part(at + 2, length), allocator), extra});
    at = textEnd + extraSize;
  }
}

template <uint32_t id>
const KDRSttbfItem& KDRSttbf<id>::Item(int i) const {
  const auto index = static_cast<size_t>(i);
  if (index >= count_) throw std::out_of_range("string table");
  return index < items_.size() ? items_[index] : kEmptyItem;
}

template <uint32_t id>
void KDRSttbf<id>::Clear() {
  items_.clear();
  count_ = 0;
}

template class KDRSttbf<mso_word::FCLCB_BOOKMARK_NAMES>;
template class KDRSttbf<mso_word::FCLCB_ANNOTATION_RANGE_NAMES>;
