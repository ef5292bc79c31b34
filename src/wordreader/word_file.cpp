#include "wordreader/word_file.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "storage/com_interfaces.h"
#include "wordreader/table_names.h"

namespace pagerex {
namespace {

constexpr size_t kFlags = 10, kTextStart = 24, kTextEnd = 28, kCounts = 32;  // places in the FIB
constexpr size_t kFirstStoryLength = 3;                                      // in rglw
constexpr size_t kPairBytes = 8;
constexpr uint32_t kLongestFib = 4096;

// Tables of a sound file share no bytes. Those of a damaged one may all be the whole stream.
constexpr uint64_t kMostCopies = 2;
constexpr uint64_t kSpareTableBytes = 1 << 16;

}  // namespace

Status WordFile::Open(IStorage* storage, MemoryBudget* budget, Warnings* warnings) {
  Close();
  storage->AddRef();
  storage_ = storage;
  warnings_ = warnings;
  allocator_.SetBudget(budget);
  text_ = OpenStream(L"WordDocument");
  if (!text_) return Status::kStreamNotFound;
  head_.Attach(text_, kLongestFib, allocator_);
  const ByteView fib = head_.Keep(0, kLongestFib);
  const uint16_t flags = fib.u16(kFlags);
  if (flags & mso_word::FIB_HEADER::kEncrypted) return Status::kEncrypted;
  const Status status = OpenTables(flags);
  if (failed(status)) return status;
  ReadFib(fib);
  return pairs_.empty() ? Status::kReadFault : Status::kOk;
}

void WordFile::Close() {
  if (!storage_) return;
  head_.Close();
  tables_.Close();
  for (IStream** stream : {&text_, &tableStream_, &data_}) {
    if (*stream) (*stream)->Release();
    *stream = nullptr;
  }
  storage_->Release();
  storage_ = nullptr;
  pairs_ = {};
  storyStarts_ = {};
  summary_.reset();
  tablesRead_.clear();
  wentBeyondClaim_ = false;
  allocator_.Clear();
}

/// The one that the FIB names, or else the other.
Status WordFile::OpenTables(uint16_t flags) {
  const bool isOne = (flags & mso_word::FIB_HEADER::kTable1) != 0;
  tableStream_ = OpenStream(isOne ? L"1Table" : L"0Table");
  if (!tableStream_) {
    tableStream_ = OpenStream(isOne ? L"0Table" : L"1Table");
    if (!tableStream_) return Status::kStreamNotFound;
    warn(warnings_, WarningCode::kTableDamaged, "name of the table stream");
  }
  constexpr uint32_t kTableWindow = 512;
  tables_.Attach(tableStream_, kTableWindow, allocator_);
  tableBytesLeft_ = kMostCopies * tables_.size() + kSpareTableBytes;
  return Status::kOk;
}

IStream* WordFile::OpenStream(const wchar_t* name) {
  IStream* stream = nullptr;
  storage_->OpenStreamOfAnyCase(name, &stream);
  return stream;
}

void WordFile::ReadFib(ByteView fib) {
  textStart_ = fib.u32(kTextStart);
  textEnd_ = fib.u32(kTextEnd);
  const size_t longs = kCounts + 2 + size_t{fib.u16(kCounts)} * 2;
  const size_t pairs = longs + 2 + size_t{fib.u16(longs)} * 4;
  const ByteView lengths = fib.part(longs + 2, size_t{fib.u16(longs)} * 4);
  uint64_t start = 0;
  for (size_t i = 0; i < mso_word::kSubDocCount; ++i) {
    storyStarts_[i] = static_cast<uint32_t>(start);
    const auto length = lengths.i32((kFirstStoryLength + i) * 4);
    start = std::min<uint64_t>(start + static_cast<uint32_t>(std::max(length, 0)), INT32_MAX);
  }
  storyStarts_[mso_word::kSubDocCount] = static_cast<uint32_t>(start);
  pairs_ = fib.part(pairs + 2, size_t{fib.u16(pairs)} * kPairBytes);
}

mso_word::FCLCB WordFile::Place(mso_word::FIBFCLCB index) const {
  const auto place = pairs_.copyOf<mso_word::FCLCB>(size_t{index} * kPairBytes);
  return static_cast<int32_t>(place.lcb) > 0 ? place : mso_word::FCLCB{0, 0};
}

ByteView WordFile::Table(mso_word::FIBFCLCB index) {
  for (const auto& [known, bytes] : tablesRead_) {
    if (known == index) return bytes;
  }
  return tablesRead_.emplace_back(index, ReadTable(index)).second;
}

ByteView WordFile::ReadTable(mso_word::FIBFCLCB index) {
  const mso_word::FCLCB place = Place(index);
  if (place.lcb == 0) return {};
  const uint32_t there = place.fc < tables_.size() ? std::min(place.lcb, tables_.size() - place.fc) : 0;
  if (there < place.lcb || there > tableBytesLeft_)
    warn(warnings_, WarningCode::kTableDamaged, nameOfTable(index));
  if (there > tableBytesLeft_) return {};
  tableBytesLeft_ -= there;
  wentBeyondClaim_ |= uint64_t{place.fc} + there > tables_.claimed();
  return tables_.Keep(place.fc, there);
}

ByteView WordFile::BehindTable(mso_word::FIBFCLCB index, uint32_t most) {
  const mso_word::FCLCB place = Place(index);
  if (place.lcb == 0 || place.fc >= tables_.size() || place.lcb >= tables_.size() - place.fc) return {};
  const uint32_t start = place.fc + place.lcb;
  const auto n = static_cast<uint32_t>(std::min<uint64_t>({tables_.size() - start, tableBytesLeft_, most}));
  tableBytesLeft_ -= n;
  return tables_.Keep(start, n);
}

void WordFile::Attach(IStream* stream, StreamReader& reader, uint32_t window) {
  if (stream) reader.Attach(stream, window, allocator_);
}

IStream* WordFile::DataStream() {
  if (!data_) data_ = OpenStream(L"Data");
  return data_;
}

void WordFile::ReadData(StreamReader& reader, uint32_t window) {
  Attach(DataStream(), reader, window);
}

void WordFile::ShareData(DsMemReadArchive& archive) {
  archive.attach(DataStream());
}

ByteView WordFile::WholeStream(const wchar_t* name, uint32_t most) {
  return KeepAll(OpenStream(name), most, false);
}

ByteView WordFile::ObjectStream(uint32_t number, const wchar_t* name, uint32_t most) {
  std::wstring object = L"_";
  for (const char digit : std::to_string(number)) object += static_cast<wchar_t>(digit);
  IStorage *pool = nullptr, *storage = nullptr;
  IStream* stream = nullptr;
  if (storage_->OpenStorage(L"ObjectPool", nullptr, 0, nullptr, 0, &pool) != Status::kOk) return {};
  if (pool->OpenStorage(object.c_str(), nullptr, 0, nullptr, 0, &storage) != Status::kOk) storage = nullptr;
  if (storage && storage->OpenStream(name, nullptr, 0, 0, &stream) != Status::kOk) stream = nullptr;
  const ByteView bytes = KeepAll(stream, most, true);
  if (storage) storage->Release();
  pool->Release();
  return bytes;
}

ByteView WordFile::KeepAll(IStream* stream, uint32_t most, bool asClaimed) {
  if (!stream) return {};
  StreamReader reader;
  reader.Attach(stream, 0, allocator_);
  stream->Release();
  if (asClaimed) most = static_cast<uint32_t>(std::min<uint64_t>(most, reader.claimed()));
  return reader.Keep(0, std::min(most, reader.size()));
}

const DocumentSummary& WordFile::Summary() {
  constexpr uint32_t kMost = 1 << 20;
  if (!summary_) {
    const ByteView summary = WholeStream(L"\x05SummaryInformation", kMost);
    const ByteView ofDocument = WholeStream(
        L"\x05"
        L"DocumentSummaryInformation",
        kMost);
    summary_ = readDocumentSummary(summary, ofDocument, warnings_);
  }
  return *summary_;
}

}  // namespace pagerex
