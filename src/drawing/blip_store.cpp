#include "drawing/blip_store.h"

#include <iterator>

namespace mso_escher {
namespace {

constexpr BlipSignature kSignatures[32] = {
    {0, 0xFE},  {0, 0xFE},     {0x3D4, 0},    {0x216, 0},     // error, unknown, EMF, WMF
    {0x542, 0}, {0x46A, 0xFE}, {0x6E0, 0xFE}, {0x7A8, 0xFE},  // PICT, JPEG, PNG, DIB
};

constexpr uint8_t kSecondUid = 0x10;  // in the first byte of a blip's record
constexpr size_t kHeader = 8;

/// Further kinds are counted among the pictures, but nobody knows how to decode them.
bool isDecoded(uint16_t recordType) {
  constexpr unsigned kTypes = 8;
  const unsigned type = unsigned{recordType} - kFirstBlip;
  return type < kTypes || type == kBlipTiff || type == kBlipCmykJpeg;
}

}  // namespace

bool ReadBlip(const MsoRORecInfo& record, MsoROBlip& blip) {
  if (!isDecoded(record.type)) return false;
  blip.type = record.type - kFirstBlip;
  size_t at = (record.versionAndInstance & kSecondUid) != 0 ? 2 * _FBSE::kUidSize : _FBSE::kUidSize;
  if (blip.type > kBlipDib || GetBlipSignature(blip.type).kind == BlipSignature::kBitmap) {
    at += 1;
  } else {
    blip.metafileHeader = record.body.part(at, kMetafileHeaderSize);
    at += kMetafileHeaderSize;
  }
  blip.data = record.body.part(at);
  return true;
}

BlipSignature GetBlipSignature(unsigned int type) {
  return type < std::size(kSignatures) ? kSignatures[type] : BlipSignature{0x800, BlipSignature::kBitmap};
}

void MsoROBlipStore::Init(const MsoRORecInfo& container, ChainAllocator& allocator) {
  allocator_ = &allocator;
  entries_.clear();
  MsoRORecInfo record;
  for (MsoRORecords records(container); records.Next(&record) == Status::kOk;) {
    if (record.type == kFbse) entries_.push_back({record.body});
  }
}

const MsoROBlip* MsoROBlipStore::GetBlipNoDelayStrm(unsigned int i) const {
  if (i >= GetCount()) return nullptr;
  Entry& entry = entries_[i];
  if (!entry.blip && entry.fbse.u32(_FBSE::kSize) != 0) {
    MsoRORecInfo record;
    MsoRORecords records(entry.fbse.part(_FBSE::kBlip));
    if (records.Next(&record) == Status::kOk) entry.blip = __GetBlip(entry.fbse, record);
  }
  return entry.blip;
}

const MsoROBlip* MsoROBlipStore::GetBlipWithDelayStrm(unsigned int i, DsMemReadArchive* archive) const {
  if (i >= GetCount()) return nullptr;
  Entry& entry = entries_[i];
  if (!entry.blip && archive) entry.blip = __GetDelayBlip(entry.fbse, *archive);
  return entry.blip;
}

const MsoROBlip* MsoROBlipStore::__GetDelayBlip(ByteView fbse, DsMemReadArchive& archive) const {
  MsoRORecInfo record;
  MsoRORecords records(DelayRecord(fbse.u32(_FBSE::kDelayOffset), archive));
  return records.Next(&record) == Status::kOk ? __GetBlip(fbse, record) : nullptr;
}

/// The bytes of a blip's record, with its header; empty for one that is not decoded.
ByteView MsoROBlipStore::DelayRecord(uint32_t offset, DsMemReadArchive& archive) const {
  const auto known = delayRecords_.find(offset);
  if (known != delayRecords_.end()) return known->second;
  if (!delayed_) delayed_.emplace(archive, *allocator_);
  uint8_t header[kHeader] = {};
  if (delayed_->Peek(offset, header, kHeader) != kHeader) return {};
  const ByteView fields(header, kHeader);
  if (!isDecoded(fields.u16(2)) || fields.i32(4) < 0) return {};
  const ByteView record = delayed_->View(offset, uint64_t{fields.u32(4)} + kHeader);
  if (!record.empty()) delayRecords_.emplace(offset, record);
  return record;
}

const MsoROBlip* MsoROBlipStore::__GetBlip(ByteView fbse, const MsoRORecInfo& record) const {
  MsoROBlip read;
  if (!ReadBlip(record, read)) return nullptr;
  read.refs = fbse.u32(_FBSE::kRefs);
  return New<MsoROBlip>(*allocator_, read);
}

}  // namespace mso_escher
