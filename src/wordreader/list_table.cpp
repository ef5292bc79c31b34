#include "wordreader/list_table.h"

#include <algorithm>

#include "wordreader/document.h"

namespace {

constexpr uint8_t kSimpleList = 1;  // flag of a definition with one level
/// Characters of a number text that are kept. Its placeholders are told by bytes, so that the last that can
/// be told stands here; each paragraph of the level writes the text.
constexpr uint16_t kLongestText = 255;

bool CanRead(const KDRDocument& document, uint64_t position, uint32_t size) {
  return position <= UINT32_MAX &&
         document.GetDocFile().getTableStrm().bytesLeftAt(static_cast<uint32_t>(position)) >= size;
}

/// Reads `size` bytes at a position of the table stream; kFailure if they are not all there.
Status ReadAt(const KDRDocument& document, uint64_t position, void* buffer, uint32_t size) {
  if (position > UINT32_MAX) return Status::kFailure;
  const Status status = document.GetRecord({static_cast<uint32_t>(position), size}, buffer);
  return status == Status::kNothing ? Status::kFailure : status;
}

/// Reads a property list of `size` bytes; null if they are not all there.
const KDRPropx* ReadPropx(const KDRDocument& document, uint64_t position, uint8_t size) {
  static constexpr KDRPropx kEmpty{0};
  if (size == 0) return &kEmpty;
  if (!CanRead(document, position, size)) return nullptr;
  auto* propx = static_cast<KDRPropx*>(document.GetAllocator().Alloc(sizeof(KDRPropx) + size));
  propx->size = size;
  return failed(ReadAt(document, position, propx + 1, size)) ? nullptr : propx;
}

}  // namespace

// KDRListTable

Status KDRListTable::Read(const KDRDocument& document) {
  Status status = definitions_.Read(document);
  if (failed(status)) return status;
  status = overrides_.Read(document);
  if (failed(status)) return status;

  for (unsigned int i = 0; i < overrides_.Count(); ++i) {
    const KDRListFormatOverride& format = *overrides_.Item(i);
    const KDRList list(format, definitions_.Item(format.Getlsid()));
    if (list.Good()) lists_.push_back(list);
  }
  return Status::kOk;
}

// KDRList

const KDRListLevel* KDRList::GetLevel(unsigned short level) const {
  const KDRLfoLvl* format = FindOverride(level);
  return format && format->HasSetFormat() ? format->GetLevel() : definition_->GetLevel(level);
}

uint16_t KDRList::GetLevelStartAt(unsigned short level) const {
  const KDRLfoLvl* format = FindOverride(level);
  if (format && format->HasSetStartAt() && !format->HasSetFormat()) return format->GetStartAt();
  const KDRListLevel* own = definition_->GetLevel(level);
  return own ? own->GetStartAt() : 0;
}

const KDRLfoLvl* KDRList::FindOverride(unsigned short level) const {
  unsigned short index = 0;
  return format_->Find(level, index) ? format_->Item(index) : nullptr;
}

// Definitions

Status KDRListDataTable::Read(const KDRDocument& document) {
  KDRTableRecord record;
  const Status status = document.GetTableRecord(&record, mso_word::FCLCB_LIST_DEFINITIONS);
  if (status != Status::kOk) return status;
  return ReadRecord(record.bytes, document, uint64_t{record.place.fc} + record.place.lcb);
}

Status KDRListDataTable::ReadRecord(ByteView bytes, const KDRDocument& document, uint64_t cursor) {
  const uint16_t count = bytes.u16(0);
  ByteView records = bytes.part(2);
  for (unsigned int i = 0; i < count && !records.empty(); ++i) {
    const auto record = records.copyOf<mso_word::LSTF>(0);
    auto* definition = New<KDRlstf>(document.GetAllocator());
    const Status status = definition->ReadRecord(record, document, cursor);
    lists_.emplace(record.lsid, definition);  // of two with one id the first stays
    if (failed(status)) return status;
    records = records.part(sizeof(mso_word::LSTF));
  }
  return Status::kOk;
}

const KDRlstf& KDRListDataTable::Item(int32_t lsid) const {
  static const KDRlstf kNone;
  const auto found = lists_.find(lsid);
  return found != lists_.end() ? *found->second : kNone;
}

Status KDRlstf::ReadRecord(const mso_word::LSTF& record, const KDRDocument& document, uint64_t& cursor) {
  lsid_ = record.lsid;
  levelCount_ = (record.flags & kSimpleList) != 0 ? 1 : kListLevels;
  for (unsigned int i = 0; i < levelCount_; ++i) {
    KDRListLevel level;
    const Status status = level.ReadRecord(document, cursor);
    if (failed(status)) return status;
    levels_[i] = New<KDRListLevel>(document.GetAllocator(), level);
  }
  return Status::kOk;
}

Status KDRListLevel::ReadRecord(const KDRDocument& document, uint64_t& cursor) {
  Status status = ReadAt(document, cursor, &record_, sizeof(record_));
  if (failed(status)) return status;
  groups_ = cursor + sizeof(record_);

  const uint64_t textLengthAt = groups_ + record_.cbGrpprlPapx + record_.cbGrpprlChpx;
  status = ReadAt(document, textLengthAt, &textLength_, sizeof(textLength_));
  if (failed(status)) return status;
  cursor = textLengthAt + sizeof(textLength_);

  if (textLength_ != 0) {
    const uint32_t declaredSize = uint32_t{textLength_} * sizeof(uint16_t);
    if (!CanRead(document, cursor, declaredSize)) return Status::kFailure;
    textLength_ = std::min(textLength_, kLongestText);
    const uint32_t size = uint32_t{textLength_} * sizeof(uint16_t);
    void* memory = document.GetAllocator().AllocAligned(size + sizeof(uint16_t), alignof(uint16_t));
    auto* text = static_cast<uint16_t*>(memory);
    status = ReadAt(document, cursor, text, size);
    if (failed(status)) return status;
    text[textLength_] = 0;
    text_ = text;
    cursor += declaredSize;
  }
  good_ = true;
  return Status::kOk;
}

const KDRPropx* KDRListLevel::GetPapx(const KDRDocument& document) const {
  if (!papx_) papx_ = ReadPropx(document, groups_, record_.cbGrpprlPapx);
  return papx_;
}

const KDRPropx* KDRListLevel::GetChpx(const KDRDocument& document) const {
  if (!chpx_) chpx_ = ReadPropx(document, groups_ + record_.cbGrpprlPapx, record_.cbGrpprlChpx);
  return chpx_;
}

// Overrides

Status KDRLfoDataTable::Read(const KDRDocument& document) {
  mso_word::FCLCB place;
  Status status = document.GetRecInfo(mso_word::FCLCB_LIST_OVERRIDES, &place);
  if (status != Status::kOk) return status;

  // From here on the table's declared length plays no part.
  uint64_t cursor = place.fc;
  uint32_t count = 0;
  status = ReadAt(document, cursor, &count, sizeof(count));
  if (failed(status)) return status;
  cursor += sizeof(count);
  const ByteView records = ReadRecords(document, cursor, count);
  if (records.empty()) return count == 0 ? Status::kOk : Status::kFailure;
  cursor += records.size();

  overrides_.reserve(count);
  for (uint32_t i = 0; i < count; ++i) {
    const auto record = records.copyOf<mso_word::LFO>(size_t{i} * sizeof(mso_word::LFO));
    auto* format = New<KDRListFormatOverride>(document.GetAllocator());
    overrides_.push_back(format);
    status = format->ReadRecord(record, document, cursor);
    if (failed(status)) return status;
  }
  return Status::kOk;
}

/// All LFO records, which lie together at the cursor; empty if they are not all there.
ByteView KDRLfoDataTable::ReadRecords(const KDRDocument& document, uint64_t cursor, uint32_t count) {
  const uint64_t size = uint64_t{count} * sizeof(mso_word::LFO);
  if (size == 0 || size > UINT32_MAX) return {};
  const auto bytes = static_cast<uint32_t>(size);
  if (!CanRead(document, cursor, bytes)) return {};
  void* memory = document.GetAllocator().Alloc(bytes);
  return failed(ReadAt(document, cursor, memory, bytes)) ? ByteView() : ByteView(memory, bytes);
}

Status KDRListFormatOverride::ReadRecord(const mso_word::LFO& record, const KDRDocument& document,
                                         uint64_t& cursor) {
  lsid_ = record.lsid;
  good_ = true;
  indexOfLevel_.fill(kNone);
  cursor += 4;
  for (unsigned int i = 0; i < record.levelCount; ++i) {
    KDRLfoLvl entry;
    const Status status = entry.ReadRecord(document, cursor);
    if (failed(status)) return status;
    uint8_t& index = indexOfLevel_[entry.Getilvl()];
    if (index == kNone) index = static_cast<uint8_t>(i);
    overrides_.push_back(New<KDRLfoLvl>(document.GetAllocator(), entry));
  }
  return Status::kOk;
}

bool KDRListFormatOverride::Find(unsigned short level, unsigned short& index) const {
  if (overrides_.empty() || level >= indexOfLevel_.size() || indexOfLevel_[level] == kNone) return false;
  index = indexOfLevel_[level];
  return true;
}

Status KDRLfoLvl::ReadRecord(const KDRDocument& document, uint64_t& cursor) {
  Status status = ReadAt(document, cursor, &record_, sizeof(record_));
  if (failed(status)) return status;
  cursor += sizeof(record_);
  if (!HasSetFormat()) return Status::kOk;

  KDRListLevel level;
  status = level.ReadRecord(document, cursor);
  if (failed(status)) return status;
  level_ = New<KDRListLevel>(document.GetAllocator(), level);
  return Status::kOk;
}
