#include "drawing/blip_store.h"

#include <algorithm>
#include <iterator>

namespace mso_escher {
namespace {

constexpr BlipSignature kSignatures[32] = {
    {0, 0xFE},  {0, 0xFE},     {0x3D4, 0},    {0x216, 0},     // error, unknown, EMF, WMF
    {0x542, 0}, {0x46A, 0xFE}, {0x6E0, 0xFE}, {0x7A8, 0xFE},  // PICT, JPEG, PNG, DIB
};

constexpr uint8_t kSecondUid = 0x10;  // in the first byte of a blip's record
constexpr size_t kHeader = 8;

bool isDecoded(const MsoRORecInfo& record) {
  constexpr unsigned kTypes = 8;
  return record.type >= kFirstBlip && record.type < kFirstBlip + kTypes;
}

}  // namespace

BlipSignature GetBlipSignature(unsigned int type) {
  return type < std::size(kSignatures) ? kSignatures[type] : BlipSignature{0x800, BlipSignature::kBitmap};
}

void MsoROBlipStore::Init(const MsoRORecInfo& container, ChainAllocator& allocator) {
  allocator_ = &allocator;
  entries_.clear();
  MsoRORecInfo record;
  for (MsoRORecords records(container); records.Next(&record) == Status::kOk;) {
    if (record.type == kFbse) entries_.push_back(record.body);
  }
  blips_.assign(entries_.size(), nullptr);
}

ByteView MsoROBlipStore::GetFBSE(unsigned int i) const {
  return i < entries_.size() ? entries_[i] : ByteView();
}

const MsoROBlip* MsoROBlipStore::GetBlipNoDelayStrm(unsigned int i) const {
  if (i >= entries_.size() || blips_[i]) return i < entries_.size() ? blips_[i] : nullptr;
  const ByteView fbse = entries_[i];
  if (fbse.u32(_FBSE::kSize) == 0) return nullptr;
  MsoRORecInfo record;
  MsoRORecords records(fbse.part(_FBSE::kBlip));
  if (records.Next(&record) != Status::kOk) return nullptr;
  return blips_[i] = __GetBlip(fbse, record);
}

const MsoROBlip* MsoROBlipStore::GetBlipWithDelayStrm(unsigned int i, DsMemReadArchive* archive) const {
  if (i >= entries_.size()) return nullptr;
  if (!blips_[i] && archive) blips_[i] = __GetDelayBlip(entries_[i], *archive);
  return blips_[i];
}

const MsoROBlip* MsoROBlipStore::__GetDelayBlip(ByteView fbse, DsMemReadArchive& archive) const {
  const uint32_t offset = fbse.u32(_FBSE::kDelayOffset);
  if (!archive.good() || offset >= archive.size()) return nullptr;
  archive.seek(static_cast<long>(offset), 0);
  uint8_t header[kHeader] = {};
  if (archive.get(header, kHeader) != kHeader) return nullptr;
  MsoRORecInfo probe;
  const ByteView view(header, kHeader);
  probe.type = view.u16(2);
  // Kinds that are not decoded are not read: they may be asked for time and again.
  if (!isDecoded(probe)) return nullptr;

  // Pictures of a sound file do not overlap: all of them together fit into the stream.
  const uint64_t size = std::min<uint64_t>(uint64_t{view.u32(4)}, archive.bytesLeft()) + kHeader;
  if (size > uint64_t{archive.size()} + kHeader - std::min<uint64_t>(delayBytes_, archive.size()))
    return nullptr;
  delayBytes_ += size;
  auto* bytes = static_cast<uint8_t*>(allocator_->Alloc(static_cast<size_t>(size)));
  archive.seek(static_cast<long>(offset), 0);
  const unsigned int arrived = archive.get(bytes, static_cast<unsigned int>(size));
  MsoRORecInfo record;
  MsoRORecords records(ByteView(bytes, arrived));
  return records.Next(&record) == Status::kOk ? __GetBlip(fbse, record) : nullptr;
}

const MsoROBlip* MsoROBlipStore::__GetBlip(ByteView fbse, const MsoRORecInfo& record) const {
  if (!isDecoded(record)) return nullptr;
  const uint32_t type = record.type - kFirstBlip;
  size_t at = (record.versionAndInstance & kSecondUid) != 0 ? 2 * _FBSE::kUidSize : _FBSE::kUidSize;
  auto* blip = New<MsoROBlip>(*allocator_);
  blip->type = type;
  if (GetBlipSignature(type).kind == BlipSignature::kBitmap) {
    at += 1;
  } else {
    blip->metafileHeader = record.body.part(at, kMetafileHeaderSize);
    at += kMetafileHeaderSize;
  }
  blip->data = record.body.part(at);
  blip->refs = fbse.u32(_FBSE::kRefs);
  return blip;
}

}  // namespace mso_escher

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
  images_.clear();
  for (uint64_t at = 0; at < buffer.size();) {
    const ByteView record = buffer.part(static_cast<size_t>(at));
    at += uint64_t{kEntryHeader} + record.u32(kEntrySize);
    if (at <= buffer.size()) images_.push_back(imageOf(record));  // a last entry that is cut does not count
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
