#include "wordreader/font_table.h"

#include <algorithm>
#include <cstring>

#include "wordreader/document.h"

namespace {

// The font record (FFN).
constexpr size_t kFlags = 1;
constexpr size_t kCharacterSet = 4;
constexpr size_t kAlternateName = 5;  // its start in characters behind kName, 0 for none
constexpr size_t kPanose = 6;
constexpr size_t kSignature = 16;
constexpr size_t kName = 40;

constexpr unsigned short kNoName[1] = {};

size_t alternateNameOffset(ByteView font) {
  const size_t start = font.u8(kAlternateName);
  return start == 0 ? 0 : kName + start * 2;
}

const unsigned short* textAt(ByteView font, size_t offset) {
  return reinterpret_cast<const unsigned short*>(font.data() + offset);
}

/// True if a zero ends both names within the record.
bool namesEnd(ByteView font) {
  const size_t alternate = alternateNameOffset(font);
  size_t at = font.contains(alternate, 2) ? std::max(kName, alternate) : kName;
  while (font.contains(at, 2) && font.u16(at) != 0) at += 2;
  return font.contains(at, 2);
}

/// The record with names that can be read as terminated 16-bit text: itself, or a copy in `allocator`.
ByteView withReadableNames(ByteView font, ChainAllocator& allocator) {
  const bool aligned = reinterpret_cast<uintptr_t>(font.data()) % alignof(unsigned short) == 0;
  if (font.size() <= kName || (aligned && namesEnd(font))) return font;
  const size_t textBytes = (font.size() - kName) & ~size_t{1};
  const size_t size = kName + textBytes + 2;
  auto* copy = static_cast<uint8_t*>(allocator.AllocAligned(size, alignof(unsigned short)));
  std::memcpy(copy, font.data(), size - 2);
  std::memset(copy + size - 2, 0, 2);
  return ByteView(copy, size);
}

template <size_t n>
void copyBytes(uint8_t (&out)[n], ByteView font, size_t offset) {
  for (size_t i = 0; i < n; ++i) out[i] = font.u8(offset + i);
}

}  // namespace

Status KDRSttbfffn::Read(const KDRDocument& document) {
  records_.clear();
  KDRTableRecord record;
  const Status status = document.GetTableRecord(&record, mso_word::FCLCB_FONTS);
  return status == Status::kOk ? ReadRecord(record.bytes, document.GetAllocator()) : status;
}

Status KDRSttbfffn::ReadRecord(ByteView bytes, ChainAllocator& allocator) {
  const size_t count = bytes.u16(0);
  const size_t extraSize = bytes.u16(2);
  if (count == 0 || count == 0xFFFF) return Status::kMalformed;
  for (size_t at = 4; records_.size() < count && at < bytes.size();) {
    const size_t size = bytes.u8(at) + size_t{1};
    records_.push_back(withReadableNames(bytes.part(at, size), allocator));
    at += size + extraSize;
  }
  return Status::kOk;
}

Status KDRFontTable::Item(unsigned int index, KFontX* out) const {
  *out = {};
  if (index >= Count()) return Status::kFailure;
  const ByteView font = records_[index];
  out->family = (font.u8(kFlags) >> 4) & 7;
  out->trueType = (font.u8(kFlags) >> 2) & 1;
  out->characterSet = font.u8(kCharacterSet);
  copyBytes(out->panose, font, kPanose);
  copyBytes(out->signature, font, kSignature);
  out->name = font.contains(kName, 2) ? textAt(font, kName) : kNoName;
  const size_t alternate = alternateNameOffset(font);
  if (alternate != 0 && font.contains(alternate, 2)) out->alternateName = textAt(font, alternate);
  return Status::kOk;
}
