#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "base/byte_view.h"
#include "mutation/rich_documents.h"
#include "pagerex/pagerex.h"
#include "support/temp_folder.h"

// Thousands of documents that are sound but for a few bytes, the same ones in each run. What comes out of
// them is not the matter here: that the conversion ends, with a result that it tells, with moderate output,
// and under the sanitizers without a finding.

namespace {

using support::Bytes;
using support::WordStreams;

/// The same numbers in each run and on each machine.
class Random {
 public:
  uint32_t below(size_t limit) { return static_cast<uint32_t>(next() % limit); }
  template <class T, size_t N>
  T of(const T (&items)[N]) {
    return items[below(N)];
  }

 private:
  uint32_t next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    return state_ ^= state_ << 5;
  }
  uint32_t state_ = 20240601;
};

/// Numbers that lie on or beyond the bounds of something.
constexpr uint32_t kAwkward[] = {0,      1,      2,      0x7F,    0x80,       0xFF,       0x200,
                                 0x7FFF, 0x8000, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

/// Where a part of a stream that a reader takes as one begins and ends.
struct Part {
  Bytes* stream;
  size_t begin;
  size_t end;
};

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

void cut(WordStreams& streams, Random& random) {
  Bytes* const all[] = {&streams.wordDocument, &streams.table, &streams.data};
  Bytes& stream = *random.of(all);
  stream.resize(random.below(stream.size() + 1));
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

/// A conversion in the view that the parameter names.
class MutatedDocument : public testing::TestWithParam<const char*> {
 protected:
  void convert(const Bytes& file, const std::string& what) {
    const std::string source = folder_.write("in.doc", file), target = folder_.path("out.htm");
    std::string view = std::string("view=") + GetParam(), pageSize = "pagesize=200";
    char* options[] = {view.data(), pageSize.data()};
    const int result = PageRex(source.c_str(), target.c_str(), 2, options);
    EXPECT_TRUE(result == PAGEREX_OK || result == PAGEREX_FAILED || result == PAGEREX_CANNOT_OPEN)
        << result << ": " << what;
    EXPECT_LT(outputBytes(), kMostOutput) << what;
    ++(result == PAGEREX_OK ? converted_ : refused_);
  }

  Random random_;
  int converted_ = 0;
  int refused_ = 0;

 private:
  static constexpr uintmax_t kMostOutput = 16 << 20;

  uintmax_t outputBytes() const {
    uintmax_t bytes = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder_.path())) {
      if (file.is_regular_file()) bytes += file.file_size();
    }
    return bytes;
  }

  support::TempFolder folder_;
};

TEST_P(MutatedDocument, EndsInModerationWhateverItsStreamsHold) {
  constexpr int kRounds = 100;
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const WordStreams sound = rich.document.streams();
    for (int round = 0; round < kRounds; ++round)
      convert(fileOf(changed(sound, random_)), rich.name + (" " + std::to_string(round)));
  }
  // Most changes go deeper than what a document is refused for.
  EXPECT_GT(converted_, refused_);
}

TEST_P(MutatedDocument, EndsInModerationWhateverItsContainerHolds) {
  constexpr int kRounds = 30;
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const Bytes sound = rich.document.build();
    for (int round = 0; round < kRounds; ++round) {
      Bytes file = sound;
      // The header, then the tables of pages, and the directory.
      for (const size_t end : {size_t{512}, size_t{2048}}) change({&file, 0, end}, random_);
      convert(file, rich.name + (" " + std::to_string(round)));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Views, MutatedDocument, testing::Values("normal", "phone", "mulpages", "preview"),
                         [](const auto& chosen) { return std::string(chosen.param); });

/// Without this the others would show little: changes are made to what does come out.
TEST(RichDocuments, AreConvertedWhole) {
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const support::TempFolder folder;
    const std::string source = folder.write("in.doc", rich.document.build());
    EXPECT_EQ(PageRex(source.c_str(), folder.path("out.htm").c_str(), 0, nullptr), PAGEREX_OK) << rich.name;
    EXPECT_TRUE(folder.exists("out.files/1.htm")) << rich.name;
  }
}

}  // namespace
