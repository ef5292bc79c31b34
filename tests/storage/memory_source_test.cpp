#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "base/byte_source.h"
#include "base/chain_allocator.h"
#include "storage/opened_file.h"

using namespace storage_test;
using support::Bytes;
using support::CompoundFileWriter;

namespace {

/// A compound file in memory, opened there.
struct OpenedMemory {
  explicit OpenedMemory(const CompoundFileWriter& writer)
      : bytes(writer.bytes()), source(bytes.data(), bytes.size()) {
    status = OpenCompoundFile(source, nullptr, root.out());
  }

  Bytes bytes;
  MemorySource source;
  Status status;
  Storage root;
};

CompoundFileWriter largeStream(CompoundFileWriter::Options options = {}) {
  CompoundFileWriter writer(options);
  writer.stream(u"Large", pattern(10000)).stream(u"Small", pattern(100, 2));
  return writer;
}

}  // namespace

TEST(MemorySource, ReadsWhatAFileReads) {
  const OpenedMemory memory(largeStream());
  ASSERT_EQ(memory.status, Status::kOk);
  EXPECT_EQ(read(openStream(memory.root, L"Large"), 20000), pattern(10000));
  EXPECT_EQ(read(openStream(memory.root, L"Small"), 200), pattern(100, 2));
}

TEST(MemorySource, IsViewedInPlace) {
  const OpenedMemory memory(largeStream());
  const Stream stream = openStream(memory.root, L"Large");
  seek(stream, 700);
  const uint8_t* const view = stream->View(5000);
  ASSERT_NE(view, nullptr);
  EXPECT_GE(view, memory.bytes.data());
  EXPECT_LE(view + 5000, memory.bytes.data() + memory.bytes.size());
  const Bytes expected = pattern(10000);
  EXPECT_TRUE(std::equal(view, view + 5000, expected.begin() + 700));
  EXPECT_EQ(tell(stream), 5700u);
}

TEST(MemorySource, HasNoViewOfMoreThanTheStreamHas) {
  const OpenedMemory memory(largeStream());
  const Stream stream = openStream(memory.root, L"Large");
  seek(stream, 9999);
  EXPECT_EQ(stream->View(2), nullptr);
  EXPECT_EQ(stream->View(0), nullptr);
  EXPECT_EQ(tell(stream), 9999u);
  EXPECT_NE(stream->View(1), nullptr);
}

TEST(MemorySource, HasNoViewAcrossPagesThatLieApart) {
  const OpenedMemory memory(largeStream({.reverseChains = true}));
  const Stream stream = openStream(memory.root, L"Large");
  EXPECT_EQ(stream->View(513), nullptr);
  EXPECT_NE(stream->View(512), nullptr);
}

TEST(MemorySource, HasNoViewOfTinyPages) {
  const OpenedMemory memory(largeStream());
  EXPECT_EQ(openStream(memory.root, L"Small")->View(10), nullptr);
}

TEST(MemorySource, HasNoViewBehindACutEnd) {
  constexpr unsigned int kStreamPages = 20 * 512;
  constexpr unsigned int kCut = 600;
  const Bytes whole = largeStream().bytes();
  MemorySource source(whole.data(), whole.size() - kCut);
  Storage root;
  ASSERT_EQ(OpenCompoundFile(source, nullptr, root.out()), Status::kOk);
  const Stream stream = openStream(root, L"Large");
  ASSERT_TRUE(stream);
  EXPECT_EQ(stream->View(kStreamPages - kCut + 1), nullptr);
  EXPECT_NE(stream->View(kStreamPages - kCut), nullptr) << "the stream is the last thing in the file";
}

TEST(FileSource, IsNotViewed) {
  const OpenedFile file(largeStream());
  EXPECT_EQ(file.stream(L"Large")->View(10), nullptr);
}

TEST(OpenCompoundFile, RefusesANullResult) {
  MemorySource source("", 0);
  EXPECT_EQ(OpenCompoundFile(source, nullptr, nullptr), Status::kInvalidArgument);
}

TEST(OpenCompoundFile, TakesMemoryFromTheBudget) {
  const Bytes bytes = largeStream().bytes();
  MemorySource source(bytes.data(), bytes.size());
  Storage root;
  MemoryBudget budget{1000, false};
  EXPECT_THROW(OpenCompoundFile(source, &budget, root.out()), std::bad_alloc);
  EXPECT_TRUE(budget.wasExceeded);
}
