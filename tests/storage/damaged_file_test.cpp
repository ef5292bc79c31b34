#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "opened_file.h"

using namespace storage_test;
using support::Bytes;
using support::ByteWriter;
using support::CompoundFile;
using support::CompoundFileWriter;
using support::SiblingTree;

namespace {

/// A small file with all that a file can have: tiny and large streams, storages, a nested one.
CompoundFile smallFile(SiblingTree tree = SiblingTree::kBalanced) {
  CompoundFileWriter::Options options;
  options.tree = tree;
  return CompoundFileWriter(options)
      .stream(u"A", pattern(5000, 1))
      .stream(u"B", pattern(700, 2))
      .stream(u"C", pattern(4096, 3))
      .stream(u"Pool/D", pattern(300, 4))
      .stream(u"Pool/Inner/E", pattern(6000, 5))
      .build();
}

/// Opens and reads, whole and in small pieces, every stream of `smallFile` that is still there.
void readAll(const Bytes& bytes) {
  try {
    OpenedFile file(bytes);
    if (!file.root) return;
    const Storage pool = openStorage(file.root, L"Pool");
    const Storage inner = pool ? openStorage(pool, L"Inner") : Storage();
    for (IStorage* storage : {file.root.get(), pool.get(), inner.get()}) {
      if (!storage) continue;
      for (const wchar_t* name : {L"A", L"B", L"C", L"D", L"E", L""}) {
        Stream stream;
        storage->OpenStream(name, nullptr, 16, 0, stream.out());
        if (!stream) continue;
        ASSERT_LE(stream->BytesLeft(), bytes.size());
        read(stream, stream->BytesLeft());
        for (uint32_t offset = 0; offset < 8000 && seek(stream, offset) == Status::kOk; offset += 500) {
          read(stream, 70);
        }
      }
    }
  } catch (int) {
    // A loop in a chain.
  }
}

/// A directory of this many entries behind the root, made by `entry(number)`, in a file with nothing else.
CompoundFile fileWithDirectory(uint32_t count, const std::function<Bytes(uint32_t)>& entry) {
  ByteWriter directory;
  for (uint32_t number = 0; number <= count; ++number) directory.bytes(entry(number));
  CompoundFile file = CompoundFileWriter().stream(u"Directory", directory.take()).build();
  return file.setHeader(support::kHeaderFirstDirectoryPage, file.startPage(u"Directory"));
}

Bytes entryOf(uint8_t type, int32_t left, int32_t right, int32_t child) {
  ByteWriter entry;
  entry.text16(u"N").zeros(64).u8(type).u8(0);
  entry.u32(static_cast<uint32_t>(left)).u32(static_cast<uint32_t>(right)).u32(static_cast<uint32_t>(child));
  return entry.zeros(36).u32(support::kEndOfChain).u32(0).u32(0).take();
}

int nextBelow(uint32_t number, uint32_t count) {
  return number < count ? static_cast<int>(number) + 1 : -1;
}

}  // namespace

TEST(DamagedFile, WithAPageSizeOfZeroDoesNotOpen) {
  for (uint16_t shift : {32, 33, 255}) {
    CompoundFile file = smallFile().setHeader(support::kHeaderPageShift, shift);
    EXPECT_EQ(OpenedFile(file).status, Status::kCorruptCompoundFile);
  }
}

TEST(DamagedFile, WithATinyPageSizeOfZeroDoesNotOpen) {
  for (uint16_t shift : {32, 64, 255}) {
    CompoundFile file = smallFile().setHeader(support::kHeaderTinyPageShift, shift);
    EXPECT_EQ(OpenedFile(file).status, Status::kCorruptCompoundFile);
  }
}

TEST(DamagedFile, OfAnyPageSizeIsReadSafely) {
  for (uint16_t shift = 0; shift < 32; ++shift) {
    readAll(smallFile().setHeader(support::kHeaderPageShift, shift).bytes());
    readAll(smallFile().setHeader(support::kHeaderTinyPageShift, shift).bytes());
    readAll(smallFile()
                .setHeader(support::kHeaderPageShift, shift)
                .setHeader(support::kHeaderTinyPageShift, shift)
                .bytes());
  }
}

TEST(DamagedFile, OfEnormousPagesOffersNoMoreBytesThanItHas) {
  // One page of 2 GiB behind the header is FAT, directory and stream at once.
  ByteWriter page;
  page.u32(support::kEndOfChain).zeros(124).bytes(entryOf(2, -1, -1, -1));
  Bytes bytes = smallFile().bytes();
  bytes.resize(512);
  support::patchBytes(bytes, support::kHeaderFatPages, Bytes(109 * 4, 0xFF));
  support::patchInteger(bytes, support::kHeaderFatPages, uint32_t{0});
  support::patchInteger(bytes, support::kHeaderPageShift, uint16_t{31});
  support::patchInteger(bytes, support::kHeaderFirstDirectoryPage, uint32_t{0});
  Bytes root = entryOf(5, -1, -1, 1);
  support::patchInteger(root, 0, support::kEndOfChain);
  Bytes stream = entryOf(2, -1, -1, -1);
  support::patchInteger(stream, support::kEntryStartPage, uint32_t{0});
  support::patchInteger(stream, support::kEntrySize, uint32_t{0x7FFFFFFF});
  bytes.insert(bytes.end(), root.begin(), root.end());
  bytes.insert(bytes.end(), stream.begin(), stream.end());
  OpenedFile file(bytes);
  const Stream opened = file.stream(L"N");
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened->BytesLeft(), 768u) << "the file's length, of which 512 bytes are read as zeros";
  EXPECT_EQ(read(opened, 1), Bytes{0xFE});
}

TEST(DamagedFile, WithoutARootEntryDoesNotOpen) {
  CompoundFile file = smallFile().setHeader(support::kHeaderFirstDirectoryPage, support::kEndOfChain);
  EXPECT_EQ(OpenedFile(file).status, Status::kCorruptCompoundFile);
  file.setHeader(support::kHeaderFirstDirectoryPage, uint32_t{1'000'000});
  EXPECT_EQ(OpenedFile(file).status, Status::kCorruptCompoundFile);
}

TEST(DamagedFile, WithAFreeSlotAmongTheFatPagesHasNoFatBehindIt) {
  // The FAT has two pages: the first reaches over pages 0 to 127.
  CompoundFile file = CompoundFileWriter().stream(u"A", pattern(4096)).stream(u"B", pattern(80000)).build();
  ASSERT_EQ(file.fatPageCount(), 2u);
  file.setFatPage(2, file.startPage(u"B") + 1);
  file.setFatPage(1, support::kFreePage);
  OpenedFile opened(file);
  EXPECT_EQ(opened.content(L"A"), pattern(4096));
  const size_t pagesOfB = 129 - file.startPage(u"B");
  EXPECT_EQ(opened.content(L"B").size(), pagesOfB * 512) << "up to the first page number past the table";
}

TEST(DamagedFile, ThrowsTheCountOfStepsForALoopInAChain) {
  CompoundFile file = smallFile();
  const uint32_t start = file.startPage(u"A");
  file.setFat(start + 3, start + 1);
  try {
    OpenedFile opened(file);
    FAIL() << "the loop went unnoticed";
  } catch (int steps) {
    EXPECT_EQ(steps, 129) << "one more than the table's 128 values";
  }
}

TEST(DamagedFile, EndsAChainAtAPageThatPointsAtItself) {
  CompoundFile file = smallFile();
  const uint32_t start = file.startPage(u"A");
  file.setFat(start + 3, start + 3);
  Bytes expected = pattern(5000, 1);
  expected.resize(4 * 512);
  expected.insert(expected.end(), expected.end() - 512, expected.end());
  EXPECT_EQ(OpenedFile(file).content(L"A"), expected);
}

TEST(DamagedFile, EndsAChainAtAPageNumberPastTheTable) {
  CompoundFile file = smallFile();
  const uint32_t start = file.startPage(u"A");
  file.setFat(start + 3, 5000);
  Bytes expected = pattern(5000, 1);
  expected.resize(4 * 512);
  EXPECT_EQ(OpenedFile(file).content(L"A"), expected);
}

TEST(DamagedFile, HasAnEmptyStreamWhereTheStartLiesPastTheTable) {
  CompoundFile file = smallFile();
  file.setEntry(u"A", support::kEntryStartPage, uint32_t{5000});
  file.setEntry(u"B", support::kEntryStartPage, uint32_t{0x7FFFFFFF});
  EXPECT_EQ(OpenedFile(file).content(L"A"), Bytes{});
  EXPECT_EQ(OpenedFile(file).content(L"B"), Bytes{});
}

TEST(DamagedFile, WithAMasterFatInALoopOpens) {
  CompoundFile file = smallFile();
  const uint32_t page = file.startPage(u"A");
  file.setHeader(support::kHeaderFirstMasterFatPage, page);
  file.setHeader(support::kHeaderMasterFatPageCount, uint32_t{0x7FFFFFFF});
  file.patch(file.pageOffset(page) + 508, page);
  EXPECT_EQ(OpenedFile(file).content(L"C"), pattern(4096, 3));
}

TEST(DamagedFile, WithANegativeMasterFatCountOpens) {
  CompoundFile file = smallFile();
  file.setHeader(support::kHeaderFirstMasterFatPage, file.startPage(u"A"));
  file.setHeader(support::kHeaderMasterFatPageCount, uint32_t{0x80000000});
  EXPECT_EQ(OpenedFile(file).content(L"C"), pattern(4096, 3));
}

TEST(DamagedFile, ThatNamesOneFatPageManyTimesHasATableNoLargerThanTheFile) {
  CompoundFile file = CompoundFileWriter().stream(u"A", pattern(5000)).build();
  for (uint32_t i = 0; i < 109; ++i) file.setFatPage(i, 0);
  EXPECT_EQ(OpenedFile(file).content(L"A"), pattern(5000));
}

TEST(DamagedDirectory, VisitsAnEntryThatIsItsOwnSiblingOnce) {
  CompoundFile file = smallFile(SiblingTree::kRightChain);
  const uint32_t a = file.entryIndex(u"A");
  file.setEntry(a, support::kEntryLeft, a).setEntry(a, support::kEntryChild, a);
  EXPECT_EQ(OpenedFile(file).content(L"C"), pattern(4096, 3));
}

TEST(DamagedDirectory, EndsACycleOfSiblings) {
  CompoundFile file = smallFile(SiblingTree::kRightChain);
  file.setEntry(u"C", support::kEntryRight, file.entryIndex(u"A"));
  EXPECT_EQ(OpenedFile(file).content(L"C"), pattern(4096, 3));
}

TEST(DamagedDirectory, EndsACycleOfStorages) {
  CompoundFile file = smallFile();
  file.setEntry(u"Pool/Inner", support::kEntryChild, file.entryIndex(u"Pool"));
  OpenedFile opened(file);
  const Storage inner = openStorage(openStorage(opened.root, L"Pool"), L"Inner");
  EXPECT_TRUE(inner);
  EXPECT_FALSE(openStorage(inner, L"Pool"));
}

TEST(DamagedDirectory, DoesNotVisitTheRootAgain) {
  CompoundFile file = smallFile();
  file.setEntry(0, support::kEntryType, uint8_t{1}).setEntry(u"A", support::kEntryLeft, uint32_t{0});
  OpenedFile opened(file);
  EXPECT_FALSE(openStorage(opened.root, L"Root Entry"));
}

TEST(DamagedDirectory, GoesOnWithTheOtherBranchesWhereALinkLeadsNowhere) {
  CompoundFile file = CompoundFileWriter().stream(u"A", {1}).stream(u"B", {2}).stream(u"C", {3}).build();
  for (uint32_t link : {4000u, 0x7FFFFFFFu, 0x80000000u}) {
    file.setEntry(u"B", support::kEntryLeft, link);
    EXPECT_EQ(OpenedFile(file).content(L"C"), Bytes{3});
  }
}

TEST(DamagedDirectory, MayHaveALongChainOfSiblings) {
  constexpr uint32_t kCount = 100'000;
  OpenedFile file(fileWithDirectory(kCount, [](uint32_t number) {
    return number == 0 ? entryOf(5, -1, -1, 1) : entryOf(2, nextBelow(number, kCount), -1, -1);
  }));
  EXPECT_TRUE(file.stream(L"N"));
}

TEST(DamagedDirectory, MayNestStoragesDeeply) {
  constexpr uint32_t kCount = 100'000;
  OpenedFile file(fileWithDirectory(kCount, [](uint32_t number) {
    return entryOf(number == 0 ? 5 : 1, -1, -1, nextBelow(number, kCount));
  }));
  const Storage first = openStorage(file.root, L"N");
  EXPECT_TRUE(openStorage(first, L"N"));
}

TEST(DamagedFile, CutAnywhereIsReadSafely) {
  const Bytes whole = smallFile().bytes();
  for (size_t size = 0; size < whole.size(); size += 61) {
    readAll(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)));
  }
}

TEST(DamagedFile, WithRandomBytesInItsHeaderIsReadSafely) {
  std::mt19937 random(1);
  const Bytes whole = smallFile().bytes();
  for (int i = 0; i < 1000; ++i) {
    Bytes bytes = whole;
    for (int k = 0; k < 4; ++k) bytes[8 + random() % 90] = static_cast<uint8_t>(random());
    readAll(bytes);
  }
}

TEST(DamagedFile, WithRandomNumbersInItsTablesIsReadSafely) {
  // FAT, directory and tiny FAT are the first pages.
  std::mt19937 random(2);
  const CompoundFile whole = smallFile();
  const size_t end = whole.pageOffset(whole.startPage(u"")) / 4;
  for (int i = 0; i < 2000; ++i) {
    Bytes bytes = whole.bytes();
    for (int k = 0; k < 5; ++k) {
      const uint32_t value = random() % 3 ? random() % 64 : random();
      support::patchInteger(bytes, (128 + random() % (end - 128)) * 4, value);
    }
    readAll(bytes);
  }
}
