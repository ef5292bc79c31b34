#include "mutation/mutations.h"

#include <algorithm>

#include "base/byte_view.h"

namespace mutation {

using support::Bytes;
using support::WordStreams;

namespace {

/// Numbers that lie on or beyond the bounds of something.
constexpr uint32_t kAwkward[] = {0,      1,      2,      0x7F,    0x80,       0xFF,       0x200,
                                 0x7FFF, 0x8000, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

/// A table that the FIB tells of.
Part tableOf(WordStreams& streams, Random& random) {
  constexpr size_t kPairs = 154, kPairCount = 93;
  for (int i = 0; i < 200; ++i) {
    const ByteView fib(streams.wordDocument.data(), streams.wordDocument.size());
    const size_t pair = kPairs + random.below(kPairCount) * 8;
    const size_t begin = fib.u32(pair), length = fib.u32(pair + 4);
    if (length > 0 && begin < streams.table.size() && length <= streams.table.size() - begin)
      return {&streams.table, begin, begin + length};
  }
  return {&streams.table, 0, streams.table.size()};
}

Part choosePart(WordStreams& streams, Random& random) {
  constexpr size_t kPageSize = 512;
  const size_t wordDocumentSize = streams.wordDocument.size();
  switch (random.below(8)) {
    case 0:  // the FIB
      return {&streams.wordDocument, 10, std::min<size_t>(wordDocumentSize, 1618)};
    case 1:
    case 2: {  // text, or a page of properties
      const size_t begin = random.below(wordDocumentSize / kPageSize) * kPageSize;
      return {&streams.wordDocument, begin, begin + kPageSize};
    }
    case 3:
      if (!streams.data.empty()) return {&streams.data, 0, streams.data.size()};
      [[fallthrough]];
    default:
      return tableOf(streams, random);
  }
}

void cut(WordStreams& streams, Random& random) {
  Bytes* const all[] = {&streams.wordDocument, &streams.table, &streams.data};
  Bytes& stream = *random.of(all);
  stream.resize(random.below(stream.size() + 1));
}

}  // namespace

void change(const Part& part, Random& random) {
  Bytes& stream = *part.stream;
  const size_t at = part.begin + random.below(part.end - part.begin);
  switch (random.below(5)) {
    case 0:
      stream[at] = static_cast<uint8_t>(random.below(256));
      break;
    case 1:
      stream[at] ^= static_cast<uint8_t>(1u << random.below(8));
      break;
    case 2:
      if (at + 2 <= part.end) support::patchInteger(stream, at, static_cast<uint16_t>(random.of(kAwkward)));
      break;
    case 3:
      if (at + 4 <= part.end) support::patchInteger(stream, at, random.of(kAwkward));
      break;
    default: {  // repeat what stands elsewhere in the part
      const size_t from = part.begin + random.below(part.end - part.begin);
      const size_t length = std::min<size_t>(1 + random.below(24), part.end - std::max(at, from));
      support::patchBytes(stream, at,
                          Bytes(stream.begin() + static_cast<ptrdiff_t>(from),
                                stream.begin() + static_cast<ptrdiff_t>(from + length)));
    }
  }
}

WordStreams changed(const WordStreams& sound, Random& random) {
  WordStreams streams = sound;
  for (uint32_t count = 1 + random.below(4); count > 0; --count) change(choosePart(streams, random), random);
  if (random.below(32) == 0) cut(streams, random);
  return streams;
}

Bytes fileOf(const WordStreams& streams) {
  support::CompoundFileWriter writer;
  writer.stream(u"WordDocument", streams.wordDocument).stream(u"1Table", streams.table);
  if (!streams.data.empty()) writer.stream(u"Data", streams.data);
  return writer.bytes();
}

}  // namespace mutation
