#include "drawing/bse_table.h"

#include "drawing/blip_store.h"

namespace {

constexpr size_t kEntryHeader = 44;  // record header and FBSE
constexpr size_t kEntrySize = 28;    // place of the FBSE's size in a record with its header
constexpr size_t kBlipHeader = 8;

bool isMetafile(uint16_t instance) {
  return instance >= 2 && instance <= 4;
}

uint16_t instanceOf(ByteView record) {
  return record.u16(0) >> 4;
}

KDRBseImage imageOf(ByteView record) {
  KDRBseImage image;
  image.blipRecord = record.part(kEntryHeader);
  image.uid = image.blipRecord.part(kBlipHeader);
  if (!isMetafile(instanceOf(record))) {
    // A bitmap is taken to have one identity, whatever its record says.
    const uint32_t size = record.u32(kEntrySize);
    image.data = image.uid.part(17, size > 25 ? size - 25 : 0);
    return image;
  }
  const size_t uidBytes = (image.blipRecord.u8(0) & 0x10) != 0 ? 32 : 16;
  const ByteView header = image.uid.part(uidBytes);
  image.metafileHeader = header.part(0, mso_escher::kMetafileHeaderSize);
  image.data = header.part(mso_escher::kMetafileHeaderSize, header.u32(28));
  return image;
}

}  // namespace

void KDRBseTable::Init(ByteView buffer) {
  buffer_ = buffer;
  ReadImages();
}

void KDRBseTable::Init(StreamPieces& pieces, uint64_t offset, uint64_t size) {
  pieces_ = &pieces;
  offset_ = offset;
  size_ = size;
}

const std::vector<KDRBseImage>& KDRBseTable::Images() const {
  if (pieces_) {
    buffer_ = pieces_->View(offset_, size_);
    pieces_ = nullptr;
    ReadImages();
  }
  return images_;
}

void KDRBseTable::ReadImages() const {
  images_.clear();
  for (uint64_t at = 0; at < buffer_.size();) {
    const ByteView record = buffer_.part(static_cast<size_t>(at));
    at += uint64_t{kEntryHeader} + record.u32(kEntrySize);
    if (at <= buffer_.size()) images_.push_back(imageOf(record));  // a last entry that is cut does not count
  }
}

ByteView KDRBseTable::Item(unsigned int i) const {
  if (i >= Count()) return {};
  uint64_t at = 0;
  for (unsigned int passed = 0; passed < i && at < buffer_.size(); ++passed) {
    const ByteView record = buffer_.part(static_cast<size_t>(at));
    at += uint64_t{kEntryHeader} + record.u32(kEntrySize) + (isMetafile(instanceOf(record)) ? 58 : 25);
  }
  return at < buffer_.size() ? buffer_.part(static_cast<size_t>(at)) : ByteView();
}
