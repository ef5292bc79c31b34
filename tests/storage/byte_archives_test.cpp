#include "storage/byte_archives.h"

#include <gtest/gtest.h>

#include "opened_file.h"

using namespace storage_test;
using support::Bytes;
using support::CompoundFileWriter;

namespace {

struct Record {
  uint16_t first;
  uint16_t second;
};

/// An archive on a stream "S" of these bytes, in a file that has room behind them.
struct ArchiveOn {
  explicit ArchiveOn(const Bytes& content)
      : file(CompoundFileWriter().stream(u"S", content)), stream(file.stream(L"S")), archive(stream.get()) {}
  OpenedFile file;
  Stream stream;
  DsMemReadArchive archive;
};

unsigned long referencesOn(const Stream& stream) {
  stream->AddRef();
  return stream->Release();
}

}  // namespace

TEST(KULargeInt, TakesALongAsItsLowWord) {
  const KULargeInt value(0x80000001ul);
  EXPECT_EQ(value.high, 0u);
  EXPECT_EQ(ToUInt(value), 0x80000001u);
}

TEST(Wcslen2Bit, CountsUnitsBeforeTheFirstZero) {
  const unsigned short text[] = {'a', 0xFFFF, 'c', 0, 'd', 0};
  EXPECT_EQ(wcslen_2bit(text), 3u);
  EXPECT_EQ(wcslen_2bit(text + 3), 0u);
}

TEST(DsArchives, AreAsLargeAsThePointerInThem) {
  EXPECT_EQ(sizeof(DsReadArchive), sizeof(void*));
  EXPECT_EQ(sizeof(DsMemReadArchive), sizeof(void*));
}

TEST(DsReadArchive, ReadsAFile) {
  support::TempFolder folder;
  DsReadArchive archive(folder.write("f", std::string("0123456789")).c_str());
  char buffer[4];
  ASSERT_TRUE(archive.good());
  EXPECT_EQ(archive.seek(7, SEEK_SET), 0);
  EXPECT_EQ(archive.get(buffer, 4), 3u);
  EXPECT_EQ(std::string(buffer, 3), "789");
}

TEST(DsReadArchive, TellsTheSizeAndLeavesThePositionWhereItWas) {
  support::TempFolder folder;
  DsReadArchive archive(folder.write("f", std::string("0123456789")).c_str());
  archive.seek(3, SEEK_SET);
  EXPECT_EQ(archive.size(), 10);
  EXPECT_EQ(archive.tell(), 3);
}

TEST(DsReadArchive, IsBadWhenTheFileCannotBeOpened) {
  support::TempFolder folder;
  EXPECT_FALSE(DsReadArchive(folder.path("absent").c_str()).good());
  EXPECT_FALSE(DsReadArchive(folder.path().c_str()).good()) << "a folder";
  EXPECT_FALSE(DsReadArchive(nullptr).good());
}

TEST(DsMemReadArchive, ReadsValuesAsTheyStandInTheFile) {
  ArchiveOn on({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14});
  unsigned short word = 0, words[2] = {};
  unsigned int numbers[2] = {};
  EXPECT_EQ(on.archive.get16u(word), Status::kOk);
  EXPECT_EQ(on.archive.get16(words, 2), Status::kOk);
  EXPECT_EQ(on.archive.get32(numbers, 2), Status::kOk);
  EXPECT_EQ(word, 0x0201);
  EXPECT_EQ(words[1], 0x0605);
  EXPECT_EQ(numbers[1], 0x0E0D0C0Bu);
}

TEST(DsMemReadArchive, ReportsValuesThatDidNotArrive) {
  ArchiveOn on({1, 2, 3});
  unsigned short words[2] = {};
  unsigned int number = 0;
  EXPECT_EQ(on.archive.get16(words, 2), Status::kReadFault);
  EXPECT_EQ(words[1], 3) << "the byte that arrived is stored";
  EXPECT_EQ(on.archive.get32(&number, 1), Status::kReadFault);
  EXPECT_EQ(on.archive.get16u(words[0]), Status::kReadFault);
}

TEST(DsMemReadArchive, RefusesACountThatWouldWrap) {
  ArchiveOn on({1, 2, 3, 4});
  unsigned int number = 0;
  EXPECT_EQ(on.archive.get32(&number, 0x40000001), Status::kReadFault);
  EXPECT_EQ(number, 0u);
}

TEST(GetStruct, ReadsARecord) {
  ArchiveOn on({1, 0, 2, 0});
  Record record{};
  EXPECT_EQ(on.archive.get_struct(record), Status::kOk);
  EXPECT_EQ(record.first, 1);
  EXPECT_EQ(record.second, 2);
}

TEST(GetStruct, StoresTheBytesThatArrivedOfARecordPartlyPastTheEnd) {
  ArchiveOn on({1, 0, 2});
  Record record{};
  EXPECT_EQ(on.archive.get_struct(record), Status::kReadFault);
  EXPECT_EQ(record.first, 1);
  EXPECT_EQ(record.second, 2);
}

TEST(GetStruct, ReadsSeveralAndGivesTheLastResult) {
  ArchiveOn on({1, 0, 2, 0, 3, 0, 4, 0, 5});
  Record records[3] = {};
  EXPECT_EQ(on.archive.get_struct(records, 2), Status::kOk);
  EXPECT_EQ(records[1].first, 3);
  on.archive.seek(0, SEEK_SET);
  EXPECT_EQ(on.archive.get_struct(records, 3), Status::kReadFault);
}

TEST(GetStruct, SucceedsOnNone) {
  ArchiveOn on({1});
  Record* none = nullptr;
  EXPECT_EQ(on.archive.get_struct(none, 0), Status::kOk);
}

TEST(DsMemReadArchive, TellsSizeAndPosition) {
  ArchiveOn on(pattern(100));
  char buffer[30];
  EXPECT_EQ(on.archive.read(buffer, 30), 30u);
  EXPECT_EQ(on.archive.size(), 100u);
  EXPECT_EQ(on.archive.tell(), 30u);
  EXPECT_EQ(on.archive.bytesLeft(), 70u);
}

TEST(DsMemReadArchive, SeeksFromStartPositionAndEnd) {
  ArchiveOn on(pattern(100));
  on.archive.seek(40, SEEK_SET);
  on.archive.seek(5, SEEK_CUR);
  EXPECT_EQ(on.archive.tell(), 45u);
  on.archive.seek(28, SEEK_END);
  EXPECT_EQ(on.archive.tell(), 100u) << "backward from the end of the chain, two tiny pages of 64 bytes";
}

TEST(DsMemReadArchive, ThrowsTheStatusOfAFailedSeekAsAnInt) {
  ArchiveOn on(pattern(100));
  try {
    on.archive.seek(128, SEEK_SET);
    FAIL() << "the seek was not refused";
  } catch (int code) {
    EXPECT_EQ(static_cast<Status>(code), Status::kFailure);
  }
}

TEST(DsMemReadArchive, TakesAnOffsetAsNotNegative) {
  ArchiveOn on(pattern(100));
  EXPECT_THROW(on.archive.seek(-1, SEEK_SET), int);
  on.archive.seek(50, SEEK_SET);
  on.archive.seek(-20, SEEK_CUR);
  EXPECT_EQ(on.archive.tell(), 30u) << "the sum wraps in 32 bits";
}

TEST(DsMemReadArchive, IsEmptyWithoutAStream) {
  DsMemReadArchive archive;
  unsigned short word = 7;
  EXPECT_FALSE(archive.good());
  EXPECT_EQ(archive.size(), 0u);
  EXPECT_EQ(archive.tell(), 0u);
  EXPECT_EQ(archive.bytesLeft(), 0u);
  EXPECT_EQ(archive.get16u(word), Status::kReadFault);
  EXPECT_EQ(word, 7);
}

TEST(DsMemReadArchive, ThrowsOnASeekWithoutAStream) {
  DsMemReadArchive archive;
  EXPECT_THROW(archive.seek(0, SEEK_SET), int);
}

TEST(DsMemReadArchive, HoldsAReferenceWhileItLives) {
  OpenedFile file(CompoundFileWriter().stream(u"S", pattern(10)));
  const Stream stream = file.stream(L"S");
  {
    DsMemReadArchive archive(stream.get());
    EXPECT_EQ(referencesOn(stream), 2u);
  }
  EXPECT_EQ(referencesOn(stream), 1u);
}

TEST(DsMemReadArchive, ReleasesTheStreamThatIsReplacedOrClosed) {
  ArchiveOn on(pattern(10));
  const Stream other = on.file.stream(L"S");
  on.archive.attach(other.get());
  EXPECT_EQ(referencesOn(on.stream), 1u);
  EXPECT_EQ(referencesOn(other), 2u);
  on.archive.close();
  EXPECT_EQ(referencesOn(other), 1u);
  EXPECT_FALSE(on.archive.good());
}

TEST(DsMemReadArchive, SurvivesAttachingTheStreamItHolds) {
  ArchiveOn on(pattern(10));
  on.archive.attach(on.stream.get());
  EXPECT_EQ(referencesOn(on.stream), 2u);
  EXPECT_EQ(on.archive.bytesLeft(), 10u);
}
