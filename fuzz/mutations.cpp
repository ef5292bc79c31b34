#include "mutations.h"

#include <algorithm>
#include <vector>

#include "base/byte_view.h"
#include "drawing/escher_records.h"
#include "wordreader/mso_word.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

namespace fuzz {

using support::Bytes;

namespace {

ByteView viewOf(const Bytes& bytes) {
  return ByteView(bytes.data(), bytes.size());
}

Bytes partOf(const Bytes& bytes, size_t begin, size_t end) {
  return Bytes(bytes.begin() + static_cast<ptrdiff_t>(begin), bytes.begin() + static_cast<ptrdiff_t>(end));
}

void replace(Bytes& bytes, size_t begin, size_t end, const Bytes& by) {
  const auto at =
      bytes.erase(bytes.begin() + static_cast<ptrdiff_t>(begin), bytes.begin() + static_cast<ptrdiff_t>(end));
  bytes.insert(at, by.begin(), by.end());
}

// --- Drawing records ---

constexpr size_t kHeaderSize = 8;
constexpr size_t kLengthOffset = 4;

struct RecordPlace {
  size_t begin;
  size_t end;
};

std::vector<RecordPlace> recordsBetween(const Bytes& bytes, size_t begin, size_t end) {
  std::vector<RecordPlace> places;
  const ByteView view = viewOf(bytes);
  while (begin + kHeaderSize <= end) {
    const uint16_t type = view.u16(begin + 2);
    if (type < mso_escher::kDrawingGroupContainer || type > mso_escher::kUserOpt) {
      ++begin;
      continue;
    }
    const size_t room = end - begin - kHeaderSize;
    const size_t recordEnd = begin + kHeaderSize + std::min<size_t>(view.u32(begin + kLengthOffset), room);
    places.push_back({begin, recordEnd});
    begin = recordEnd;
  }
  return places;
}

bool isContainer(const Bytes& bytes, const RecordPlace& place) {
  return (bytes[place.begin] & 0x0F) == 0x0F;
}

bool isPropertyTable(const Bytes& record) {
  const uint16_t type = viewOf(record).u16(2);
  return type == mso_escher::kOpt || type == mso_escher::kUserOpt;
}

/// In front of the others, and counted.
void addProperty(Bytes& record, Random& random) {
  constexpr uint32_t kValues[] = {0,          1,          2,          0xFF,       0x10000,
                                  0xFFFF0000, 0x00010001, 0x7FFFFFFF, 0x80000000, 0x08000004};
  const auto id = static_cast<uint16_t>(random() % 0x400);
  const Bytes property = support::ByteWriter().u16(id).u32(kValues[random() % std::size(kValues)]).take();
  record.insert(record.begin() + kHeaderSize, property.begin(), property.end());
  support::patchInteger(record, 0, static_cast<uint16_t>(viewOf(record).u16(0) + 0x10));
}

void changeBody(Bytes& record, size_t room, Random& random) {
  if (isPropertyTable(record) && random() % 3 == 0) {
    addProperty(record, random);
  } else {
    Bytes body = partOf(record, kHeaderSize, record.size());
    changeBytes(body, room);
    replace(record, kHeaderSize, record.size(), body);
  }
  support::patchInteger(record, kLengthOffset, static_cast<uint32_t>(record.size() - kHeaderSize));
}

void changeRecord(Bytes& record, size_t room, Random& random) {
  switch (random() % 8) {
    case 0:
      return changeInPlace(record, 0, kHeaderSize);
    case 1:
      if (record.size() <= room) record.insert(record.end(), record.begin(), record.end());
      return;
    case 2:
      return record.clear();
    default:
      return changeBody(record, room, random);
  }
}

// --- Tables ---

constexpr size_t kPairs = 154;
constexpr uint32_t kPairCount = 183;

struct TablePlace {
  uint32_t fibIndex;
  size_t begin;
  size_t end;
};

std::vector<TablePlace> tablesOf(const DocumentStreams& streams) {
  std::vector<TablePlace> places;
  const ByteView fib = viewOf(streams.wordDocument);
  for (uint32_t i = 0; i < kPairCount && kPairs + i * 8 + 8 <= fib.size(); ++i) {
    const size_t begin = fib.u32(kPairs + i * 8), length = fib.u32(kPairs + i * 8 + 4);
    if (length > 0 && begin < streams.table.size() && length <= streams.table.size() - begin)
      places.push_back({i, begin, begin + length});
  }
  return places;
}

void setTable(DocumentStreams& streams, const TablePlace& place, const Bytes& table) {
  if (table.size() == place.end - place.begin) return support::patchBytes(streams.table, place.begin, table);
  const size_t pair = kPairs + place.fibIndex * 8;
  support::patchInteger(streams.wordDocument, pair, static_cast<uint32_t>(streams.table.size()));
  support::patchInteger(streams.wordDocument, pair + 4, static_cast<uint32_t>(table.size()));
  streams.table.insert(streams.table.end(), table.begin(), table.end());
}

void changeTable(DocumentStreams& streams, size_t room, Random& random) {
  const std::vector<TablePlace> places = tablesOf(streams);
  if (places.empty()) return changeBytes(streams.table, room);
  const TablePlace& place = places[random() % places.size()];
  Bytes table = partOf(streams.table, place.begin, place.end);
  // Levels lie behind their list table, outside of what the FIB tells, and so cannot move.
  if (place.fibIndex == mso_word::FCLCB_LIST_DEFINITIONS) {
    return changeInPlace(streams.table, place.begin, table.size() * 8);
  }
  if (table.size() > room) return changeInPlace(streams.table, place.begin, table.size());
  const size_t roomBehind = room - table.size();
  if (place.fibIndex == mso_word::FCLCB_DRAWINGS) {
    changeRecords(table, roomBehind, random);
  } else {
    changeBytes(table, random() % 2 ? roomBehind : 0);
  }
  setTable(streams, place, table);
}

/// A page of run or paragraph properties, or one of text.
void changePage(Bytes& wordDocument, Random& random) {
  constexpr size_t kPageSize = 512;
  const size_t pages = wordDocument.size() / kPageSize + 1;
  changeInPlace(wordDocument, random() % pages * kPageSize, kPageSize);
}

void changeFib(Bytes& wordDocument, Random& random) {
  constexpr size_t kFibEnd = kPairs + kPairCount * 8;
  changeInPlace(wordDocument, random() % kFibEnd & ~size_t{1}, 64);
}

}  // namespace

size_t copyOut(const Bytes& bytes, uint8_t* out, size_t maxSize) {
  const size_t size = std::min(bytes.size(), maxSize);
  std::copy_n(bytes.begin(), size, out);
  return size;
}

void changeBytes(Bytes& bytes, size_t room) {
  const size_t size = bytes.size();
  bytes.resize(std::max<size_t>(size + room, 1));
  bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
}

void changeInPlace(Bytes& bytes, size_t offset, size_t length) {
  if (offset >= bytes.size() || length == 0) return;
  LLVMFuzzerMutate(bytes.data() + offset, std::min(length, bytes.size() - offset),
                   std::min(length, bytes.size() - offset));
}

void changeRecords(Bytes& records, size_t room, Random& random) {
  std::vector<size_t> around;  // the containers on the way
  RecordPlace inside = {0, records.size()};
  for (;;) {
    const std::vector<RecordPlace> places = recordsBetween(records, inside.begin, inside.end);
    if (places.empty()) return changeBytes(records, room);
    const RecordPlace chosen = places[random() % places.size()];
    if (isContainer(records, chosen) && chosen.end - chosen.begin > kHeaderSize && random() % 8 != 0) {
      around.push_back(chosen.begin);
      inside = {chosen.begin + kHeaderSize, chosen.end};
      continue;
    }
    Bytes record = partOf(records, chosen.begin, chosen.end);
    changeRecord(record, room, random);
    const auto grown = static_cast<uint32_t>(record.size() - (chosen.end - chosen.begin));
    replace(records, chosen.begin, chosen.end, record);
    for (const size_t container : around) {
      const uint32_t length = viewOf(records).u32(container + kLengthOffset);
      support::patchInteger(records, container + kLengthOffset, length + grown);
    }
    return;
  }
}

void changeDocument(DocumentStreams& streams, size_t room, Random& random) {
  switch (random() % 8) {
    case 0:
      return changeFib(streams.wordDocument, random);
    case 1:
    case 2:
      return changePage(streams.wordDocument, random);
    case 3:
      return random() % 2 ? changeRecords(streams.data, room, random)
                          : changeInPlace(streams.data, 0, streams.data.size());
    case 4:
      return changeBytes(random() % 2 ? streams.wordDocument : streams.table, room);
    default:
      return changeTable(streams, room, random);
  }
}

void takeTable(DocumentStreams& streams, const DocumentStreams& other, Random& random) {
  const std::vector<TablePlace> places = tablesOf(other);
  if (places.empty() || streams.wordDocument.size() < kPairs + kPairCount * 8) return;
  const TablePlace& chosen = places[random() % places.size()];
  setTable(streams, {chosen.fibIndex, 0, 0}, partOf(other.table, chosen.begin, chosen.end));
}

}  // namespace fuzz
