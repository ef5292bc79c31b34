#include "wordreader/doc_file.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "storage/com_interfaces.h"
#include "wordreader/table_names.h"

namespace {

constexpr unsigned int kExclusiveRead = 16;
constexpr size_t kFirstSubDocLength = 3;  // place of the main text's length in rglw

/// Tables of a sound file share no bytes. Those of a damaged one may all be the whole stream: together they
/// get room for so many times the stream, and a little more for small ones.
constexpr uint64_t kMostCopies = 2;
constexpr uint64_t kSpareTableBytes = 1 << 16;

/// Gives the reference back also when reading a damaged file throws.
struct StreamReleaser {
  void operator()(IStream* stream) const { stream->Release(); }
};
using StreamReference = std::unique_ptr<IStream, StreamReleaser>;

/// Opens a stream of `storage` for `archive`, which then holds the only reference.
Status attachStream(IStorage* storage, const wchar_t* name, DsMemReadArchive& archive) {
  IStream* stream = nullptr;
  const Status status = storage->OpenStream(name, nullptr, kExclusiveRead, 0, &stream);
  if (!stream) return failed(status) ? status : Status::kStreamNotFound;
  archive.attach(stream);
  stream->Release();
  return status;
}

/// Whether some of a stream, which stands at its beginning, lies in pages that the file does not hold.
bool isShort(const DsMemReadArchive& stream) {
  return stream.bytesLeft() < stream.size();
}

}  // namespace

using pagerex::WarningCode;

ByteView ReadBytes(DsMemReadArchive& archive, uint32_t size, ChainAllocator& allocator) {
  const uint32_t available = std::min(size, archive.bytesLeft());
  if (available == 0) return {};
  void* buffer = allocator.AllocAligned(available, 4);
  return ByteView(buffer, archive.get(buffer, available));
}

// KDRDocFile

Status KDRDocFile::open(IStorage* storage, ChainAllocator& allocator) {
  if (!storage) return Status::kInvalidArgument;
  storage->AddRef();
  close();
  storage_ = storage;

  Status status = attachStream(storage_, L"WordDocument", word_);
  if (failed(status)) return status;
  NoteShortStream(word_, "text");
  const mso_word::FIB_HEADER& header = table_.ReadHeader(word_);
  if (header.flags & mso_word::FIB_HEADER::kEncrypted) return Status::kEncrypted;

  const bool isTable1 = (header.flags & mso_word::FIB_HEADER::kTable1) != 0;
  IStream* opened = nullptr;
  status = storage_->OpenStream(isTable1 ? L"1Table" : L"0Table", nullptr, kExclusiveRead, 0, &opened);
  if (failed(status)) return status;
  const StreamReference table(opened);
  return table_.init(opened, word_, allocator);
}

void KDRDocFile::close() {
  if (!storage_) return;
  // A stream does not keep its storage alive, so the storage goes last.
  data_.close();
  table_.close();
  word_.close();
  storage_->Release();
  storage_ = nullptr;
}

DsMemReadArchive& KDRDocFile::getDataStrm() const {
  if (!data_.good() && storage_ && attachStream(storage_, L"Data", data_) == Status::kOk)
    NoteShortStream(data_, "pictures and other data");
  return data_;
}

void KDRDocFile::NoteShortStream(const DsMemReadArchive& stream, const char* what) const {
  if (isShort(stream)) warn(GetWarnings(), WarningCode::kFileShort, what);
}

// KDRTableStrm

const mso_word::FIB_HEADER& KDRTableStrm::ReadHeader(DsMemReadArchive& word) {
  header_ = {};
  word.get_struct(header_);
  return header_;
}

Status KDRTableStrm::init(IStream* table, DsMemReadArchive& word, ChainAllocator& allocator) {
  table_.attach(table);
  if (isShort(table_)) warn(warnings_, WarningCode::kFileShort, "tables");
  bytesLeft_ = kMostCopies * bytes() + kSpareTableBytes;
  ReadCounts(word, allocator);
  if (failed(ReadPairs(word, allocator))) {
    close();
    return Status::kReadFault;
  }
  ReadTail(word, allocator);
  return Status::kOk;
}

Status KDRTableStrm::ReadPairs(DsMemReadArchive& word, ChainAllocator& allocator) {
  const Status status = word.get16u(cfclcb_);
  if (failed(status)) return status;
  const uint32_t size = cfclcb_ * uint32_t{sizeof(mso_word::FCLCB)};
  rgfclcb_ = ReadBytes(word, size, allocator);
  return rgfclcb_.size() == size ? Status::kOk : Status::kReadFault;
}

void KDRTableStrm::close() {
  cfclcb_ = 0;
  cslw_ = 0;
  csw_ = 0;
  table_.close();
}

Status KDRTableStrm::getRecInfo(uint32_t index, mso_word::FCLCB* out) const {
  if (index >= cfclcb_) return Status::kNothing;
  *out = rgfclcb_.copyOf<mso_word::FCLCB>(size_t{index} * sizeof(mso_word::FCLCB));
  return static_cast<int32_t>(out->lcb) < 1 ? Status::kNothing : Status::kOk;
}

Status KDRTableStrm::getRecord(const mso_word::FCLCB& record, void* buffer) const {
  table_.seek(static_cast<long>(record.fc), STREAM_SEEK_SET);
  return table_.get(buffer, record.lcb) == record.lcb ? Status::kOk : Status::kNothing;
}

Status KDRTableStrm::getRecord(KDRTableRecord* out, uint32_t index, ChainAllocator& allocator) const {
  const Status status = getRecInfo(index, &out->place);
  if (status != Status::kOk) return status;
  if (out->place.fc >= bytes()) warn(warnings_, WarningCode::kTableDamaged, pagerex::nameOfTable(index));
  table_.seek(static_cast<long>(out->place.fc), STREAM_SEEK_SET);
  const bool fits = std::min(out->place.lcb, table_.bytesLeft()) <= bytesLeft_;
  if (fits) {
    out->bytes = ReadBytes(table_, out->place.lcb, allocator);
    bytesLeft_ -= out->bytes.size();
    if (out->bytes.size() == out->place.lcb) return Status::kOk;
  }
  warn(warnings_, WarningCode::kTableDamaged, pagerex::nameOfTable(index));
  return Status::kNothing;
}

uint32_t KDRTableStrm::bytesLeftAt(uint32_t position) const {
  table_.seek(static_cast<long>(position), STREAM_SEEK_SET);
  return table_.bytesLeft();
}

// KDRFib

void KDRFib::ReadCounts(DsMemReadArchive& word, ChainAllocator& allocator) {
  csw_ = cslw_ = 0;
  word.get16u(csw_);
  rgsw_ = ReadBytes(word, csw_ * uint32_t{2}, allocator);
  word.get16u(cslw_);
  rglw_ = ReadBytes(word, cslw_ * uint32_t{4}, allocator);

  SubDocLengths lengths;
  for (size_t i = 0; i < lengths.size(); ++i) lengths[i] = rglw_.u32((kFirstSubDocLength + i) * 4);
  SetSubDocLengths(lengths);
}

void KDRFib::ReadTail(DsMemReadArchive& word, ChainAllocator& allocator) {
  const auto size = static_cast<uint16_t>(header_.fcMin - word.tell());
  tail_ = ReadBytes(word, size, allocator);
}

void KDRFib::SetSubDocLengths(const SubDocLengths& lengths) {
  subDocLengths_ = lengths;
  subDocStarts_[0] = 0;
  for (size_t i = 0; i < lengths.size(); ++i) subDocStarts_[i + 1] = subDocStarts_[i] + lengths[i];
}
