#include "storage/compound_file.h"

#include <gtest/gtest.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <random>
#include <tuple>

#include "opened_file.h"

using namespace storage_test;
using support::Bytes;
using support::CompoundFile;
using support::CompoundFileWriter;
using support::SiblingTree;
using support::TempFolder;

namespace {

Bytes partOf(const Bytes& bytes, size_t offset, size_t length) {
  if (offset >= bytes.size()) return {};
  const auto first = bytes.begin() + static_cast<ptrdiff_t>(offset);
  return Bytes(first, first + static_cast<ptrdiff_t>(std::min(length, bytes.size() - offset)));
}

}  // namespace

TEST(FreeOleOpenStorage, OpensAFile) {
  OpenedFile file(CompoundFileWriter().stream(u"S", Bytes{1, 2, 3}));
  EXPECT_EQ(file.status, Status::kOk);
  EXPECT_EQ(file.content(L"S"), (Bytes{1, 2, 3}));
}

TEST(FreeOleOpenStorage, RefusesNullArguments) {
  IStorage* storage = nullptr;
  EXPECT_EQ(FreeOleOpenStorage(nullptr, &storage), Status::kInvalidArgument);
  EXPECT_EQ(FreeOleOpenStorage("path", nullptr), Status::kInvalidArgument);
}

TEST(FreeOleOpenStorage, ReportsAnAbsentFileAsCorrupt) {
  TempFolder folder;
  IStorage* storage = reinterpret_cast<IStorage*>(&folder);
  EXPECT_EQ(FreeOleOpenStorage(folder.path("absent").c_str(), &storage), Status::kCorruptCompoundFile);
  EXPECT_EQ(storage, nullptr);
}

TEST(FreeOleOpenStorage, ReportsAFolderAsCorrupt) {
  TempFolder folder;
  IStorage* storage = nullptr;
  EXPECT_EQ(FreeOleOpenStorage(folder.path().c_str(), &storage), Status::kCorruptCompoundFile);
}

/// What the open gives to somebody without the rights of root. In a process of its own, since rights that are
/// given up do not come back.
int openWithoutRights(const std::string& path) {
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setuid(kNobody) != 0) _exit(99);
    IStorage* storage = nullptr;
    _exit(FreeOleOpenStorage(path.c_str(), &storage) == Status::kCorruptCompoundFile ? 1 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(FreeOleOpenStorage, DoesNotOpenAFileWithoutWritePermission) {
  TempFolder folder;
  const std::string path = folder.write("file", CompoundFileWriter().stream(u"S", pattern(9)).bytes());
  using std::filesystem::perms;
  std::filesystem::permissions(folder.path(), perms::owner_all | perms::group_exec | perms::others_exec);
  std::filesystem::permissions(path, perms::owner_read | perms::group_read | perms::others_read);
  EXPECT_EQ(openWithoutRights(path), 1);
  std::filesystem::permissions(path, perms::all);
  EXPECT_EQ(openWithoutRights(path), 0);
}

TEST(FreeOleOpenStorage, RefusesAFileOfLessThan512Bytes) {
  EXPECT_EQ(OpenedFile(Bytes{}).status, Status::kCorruptCompoundFile);
  EXPECT_EQ(OpenedFile(CompoundFileWriter().stream(u"S", {}).build().truncate(511)).status,
            Status::kCorruptCompoundFile);
}

TEST(FreeOleOpenStorage, RefusesAFileThatIsAHeaderAndNothingMore) {
  EXPECT_EQ(OpenedFile(CompoundFileWriter().stream(u"S", {}).build().truncate(512)).status,
            Status::kCorruptCompoundFile);
}

TEST(FreeOleOpenStorage, ComparesAllOfTheSignature) {
  for (size_t i = 0; i < 8; ++i) {
    CompoundFile file = CompoundFileWriter().stream(u"S", {}).build();
    file.patch(i, static_cast<uint8_t>(file.bytes()[i] ^ 1));
    EXPECT_EQ(OpenedFile(file).status, Status::kCorruptCompoundFile) << i;
  }
}

TEST(CompoundFile, IgnoresTheHeadersOtherFields) {
  CompoundFile file = CompoundFileWriter().stream(u"S", pattern(5000)).build();
  file.patch(8, Bytes(22, 0xEE))
      .patch(34, Bytes(14, 0xEE))
      .patch(52, Bytes(4, 0xEE))
      .patch(64, Bytes(4, 0xEE));
  file.patch(31, uint8_t{0xEE}).patch(33, uint8_t{0xEE});  // the high bytes of the shifts
  EXPECT_EQ(OpenedFile(file).content(L"S"), pattern(5000));
}

TEST(CompoundFile, ReadsAStreamBelowTheCutoffThroughTheTinyPool) {
  CompoundFile file = CompoundFileWriter().stream(u"S", pattern(4095)).build();
  EXPECT_EQ(OpenedFile(file).content(L"S"), pattern(4095));
  file.setHeader(support::kHeaderTinyCutoff, uint32_t{4095});
  EXPECT_NE(OpenedFile(file).content(L"S"), pattern(4095)) << "its start is the number of a tiny page";
}

TEST(CompoundFile, ReadsAStreamOfTheCutoffsSizeThroughFullPages) {
  CompoundFile file = CompoundFileWriter().stream(u"S", pattern(4096)).build();
  EXPECT_EQ(OpenedFile(file).content(L"S"), pattern(4096));
  file.setHeader(support::kHeaderTinyCutoff, uint32_t{4097});
  EXPECT_NE(OpenedFile(file).content(L"S"), pattern(4096)) << "its start is the number of a full page";
}

TEST(CompoundFile, OpensAStreamOfZeroLength) {
  CompoundFile file = CompoundFileWriter().stream(u"S", {}).build();
  file.setEntry(u"S", support::kEntryStartPage, support::kEndOfChain);
  OpenedFile opened(file);
  const Stream stream = opened.stream(L"S");
  ASSERT_TRUE(stream);
  EXPECT_EQ(sizeOf(stream), 0u);
  EXPECT_EQ(read(stream, 10), Bytes{});
}

TEST(CompoundFile, MatchesNamesByTheirExactCase) {
  OpenedFile file(CompoundFileWriter().stream(u"WordDocument", pattern(9)).storage(u"Pool"));
  EXPECT_TRUE(file.stream(L"WordDocument"));
  EXPECT_FALSE(file.stream(L"wordDocument"));
  EXPECT_FALSE(openStorage(file.root, L"POOL"));
}

TEST(CompoundFile, WidensEachUnitOfANameOneToOne) {
  OpenedFile file(CompoundFileWriter().stream(u"\u0005A\u4E2D\U0001F600", pattern(9)));
  const wchar_t name[] = {5, L'A', 0x4E2D, 0xD83D, 0xDE00, 0};
  EXPECT_TRUE(file.stream(name)) << "a surrogate pair stays two characters";
}

TEST(CompoundFile, KeepsEachStreamInItsOwnStorage) {
  OpenedFile file(CompoundFileWriter()
                      .stream(u"Data", {1})
                      .stream(u"Pool/Data", {2})
                      .stream(u"Pool/Inner/Data", {3})
                      .stream(u"Pool/Inner/Only", {4}));
  const Storage pool = openStorage(file.root, L"Pool");
  const Storage inner = openStorage(pool, L"Inner");
  EXPECT_EQ(file.content(L"Data"), Bytes{1});
  EXPECT_EQ(read(openStream(pool, L"Data"), 9), Bytes{2});
  EXPECT_EQ(read(openStream(inner, L"Data"), 9), Bytes{3});
  EXPECT_TRUE(openStream(inner, L"Only"));
  EXPECT_FALSE(file.stream(L"Only"));
  EXPECT_FALSE(openStorage(file.root, L"Inner"));
}

TEST(CompoundFile, WalksSiblingsBehindANestedStorageIntoTheOuterOne) {
  CompoundFileWriter::Options options;
  for (SiblingTree tree : {SiblingTree::kBalanced, SiblingTree::kRightChain, SiblingTree::kLeftChain}) {
    options.tree = tree;
    OpenedFile file(CompoundFileWriter(options)
                        .stream(u"A", {1})
                        .stream(u"B/X/Y", {2})
                        .stream(u"C", {3})
                        .stream(u"B/Z", {4}));
    EXPECT_EQ(file.content(L"A"), Bytes{1});
    EXPECT_EQ(file.content(L"C"), Bytes{3});
    EXPECT_TRUE(openStream(openStorage(file.root, L"B"), L"Z"));
  }
}

TEST(CompoundFile, SkipsEntriesThatAreNeitherStorageNorStreamButFollowsTheirSiblings) {
  CompoundFileWriter::Options options;
  options.tree = SiblingTree::kRightChain;
  CompoundFile file =
      CompoundFileWriter(options).stream(u"A", {1}).stream(u"B", {2}).stream(u"C", {3}).build();
  file.setEntry(u"B", support::kEntryType, uint8_t{5});
  OpenedFile opened(file);
  EXPECT_TRUE(opened.stream(L"A"));
  EXPECT_FALSE(opened.stream(L"B"));
  EXPECT_TRUE(opened.stream(L"C"));
}

TEST(CompoundFile, NeverTestsTheTypeOfTheRoot) {
  CompoundFile file = CompoundFileWriter().stream(u"A", {1}).build();
  file.setEntry(0, support::kEntryType, uint8_t{2});
  EXPECT_TRUE(OpenedFile(file).stream(L"A"));
}

TEST(CompoundFile, KeepsTheLaterOfTwoEntriesWithOneName) {
  CompoundFileWriter::Options options;
  options.tree = SiblingTree::kRightChain;
  CompoundFile file = CompoundFileWriter(options).stream(u"A", {1}).stream(u"B", {2}).build();
  file.setEntry(u"B", support::kEntryName, uint16_t{'A'});
  EXPECT_EQ(OpenedFile(file).content(L"A"), Bytes{2});
}

TEST(CompoundFile, WalksLeftSiblingsBeforeRightOnes) {
  CompoundFile file = CompoundFileWriter().stream(u"A", {1}).stream(u"B", {2}).stream(u"C", {3}).build();
  for (const char16_t* name : {u"A", u"B", u"C"}) file.setEntry(name, support::kEntryName, uint16_t{'N'});
  EXPECT_EQ(OpenedFile(file).content(L"N"), Bytes{3}) << "B is above A on its left and C on its right";
}

TEST(CompoundFile, RunsANameWithoutTerminatorOnIntoTheNextFields) {
  const std::u16string full(32, u'n');
  CompoundFile file = CompoundFileWriter().stream(full, {1, 2}).build();
  // Behind the name: 66 bytes of it, stream and black, and three links of -1 before the first zero.
  std::wstring name(32, L'n');
  name += {66, 0x0102, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF};
  EXPECT_EQ(OpenedFile(file).content(name.c_str()), (Bytes{1, 2}));
}

TEST(CompoundFile, EndsANameWithoutTerminatorWithItsEntry) {
  CompoundFile file = CompoundFileWriter().stream(u"S", {1}).stream(u"T", {2}).build();
  const uint32_t entry = file.entryIndex(u"S");
  file.patch(file.entryOffset(entry), Bytes(128, 0xFF));
  file.setEntry(entry, support::kEntryType, uint16_t{0x0102});
  std::wstring name(64, static_cast<wchar_t>(0xFFFF));
  name[33] = 0x0102;
  EXPECT_TRUE(OpenedFile(file).stream(name.c_str()));
}

TEST(CompoundFile, ReadsNoMoreThanTheStreamsSize) {
  OpenedFile file(CompoundFileWriter().stream(u"S", pattern(5000)));
  const Stream stream = file.stream(L"S");
  seek(stream, 4990);
  EXPECT_EQ(read(stream, 100), partOf(pattern(5000), 4990, 10));
  EXPECT_EQ(read(stream, 100), Bytes{});
  EXPECT_EQ(stream->BytesLeft(), 0u);
}

TEST(CompoundFile, ReadsToTheChainsEndFromPastTheStreamsSize) {
  OpenedFile file(CompoundFileWriter().stream(u"S", pattern(5000)));
  const Stream stream = file.stream(L"S");
  EXPECT_EQ(seek(stream, 5100), Status::kOk) << "inside the last page, which ends at 5120";
  EXPECT_EQ(stream->BytesLeft(), 20u);
  EXPECT_EQ(read(stream, 100), Bytes(20, 0));
}

TEST(CompoundFile, ReadsHeldBytesWhereTheStreamsSizeIsLess) {
  CompoundFile file = CompoundFileWriter().stream(u"S", pattern(9000)).build();
  file.setEntry(u"S", support::kEntrySize, uint32_t{5000});
  OpenedFile opened(file);
  const Stream stream = opened.stream(L"S");
  EXPECT_EQ(stream->BytesHeld(), 9216u) << "18 pages";
  seek(stream, 4990);
  Bytes bytes(100);
  EXPECT_EQ(stream->ReadHeld(bytes.data(), 100), 100u);
  EXPECT_EQ(bytes, partOf(pattern(9000), 4990, 100));
  EXPECT_EQ(tell(stream), 5090u);
  EXPECT_EQ(stream->BytesHeld(), 9216u) << "wherever it stands";
  EXPECT_EQ(stream->ReadHeld(nullptr, 100), 0u);
}

TEST(CompoundFile, StopsAtTheChainWhereTheClaimedSizeIsLarger) {
  CompoundFile file = CompoundFileWriter().stream(u"S", pattern(5120)).build();
  file.setEntry(u"S", support::kEntrySize, uint32_t{0xFFFFFFFF});
  OpenedFile opened(file);
  const Stream stream = opened.stream(L"S");
  EXPECT_EQ(sizeOf(stream), 0xFFFFFFFFu);
  EXPECT_EQ(stream->BytesLeft(), 5120u);
  EXPECT_EQ(read(stream, 10000), pattern(5120));
}

TEST(CompoundFile, SharesOnePositionBetweenStreamsWithOneStart) {
  CompoundFile file = CompoundFileWriter().stream(u"A", pattern(5000)).stream(u"B", pattern(5000)).build();
  file.setEntry(u"B", support::kEntryStartPage, file.startPage(u"A"));
  OpenedFile opened(file);
  const Stream a = opened.stream(L"A"), b = opened.stream(L"B");
  seek(a, 123);
  EXPECT_EQ(tell(b), 123u);
}

TEST(CompoundFile, FollowsTheMasterFatBeyondTheHeadersList) {
  // 109 pages of the FAT reach over 13,952 pages of 512 bytes.
  const Bytes big = pattern(7'500'000);
  CompoundFile file = CompoundFileWriter().stream(u"Big", big).stream(u"Behind", pattern(5000)).build();
  ASSERT_GT(file.masterFatPageCount(), 0u);
  OpenedFile opened(file);
  EXPECT_EQ(opened.content(L"Big"), big);
  EXPECT_EQ(opened.content(L"Behind"), pattern(5000));
}

TEST(CompoundFile, FollowsAMasterFatOfSeveralPages) {
  CompoundFileWriter::Options options;
  options.pageShift = 7;
  const Bytes big = pattern(1'000'000);
  CompoundFile file = CompoundFileWriter(options).stream(u"Big", big).build();
  ASSERT_GT(file.masterFatPageCount(), 1u);
  EXPECT_EQ(OpenedFile(file).content(L"Big"), big);
  file.setHeader(support::kHeaderMasterFatPageCount, uint32_t{1});
  EXPECT_LT(OpenedFile(file).content(L"Big").size(), big.size()) << "the header's count ends the list";
}

TEST(CompoundFile, TakesTheHeaderFor512BytesAlsoBeforeLargerPages) {
  CompoundFileWriter::Options options;
  options.pageShift = 12;
  EXPECT_EQ(OpenedFile(CompoundFileWriter(options).stream(u"S", pattern(9000))).content(L"S"), pattern(9000));
  options.headerFillsPage = true;
  OpenedFile padded(CompoundFileWriter(options).stream(u"S", pattern(9000)));
  EXPECT_FALSE(padded.root && padded.stream(L"S"));
}

TEST(CompoundFile, ReadsALastPageThatIsCutShortAsWholeWithZeros) {
  CompoundFile file = CompoundFileWriter().stream(u"S", pattern(5120)).build();
  file.truncate(file.bytes().size() - 100);
  Bytes expected = pattern(5120);
  std::fill(expected.end() - 100, expected.end(), uint8_t{0});
  OpenedFile opened(file);
  EXPECT_EQ(opened.content(L"S"), expected);
  const Stream stream = opened.stream(L"S");
  seek(stream, 5120 - 120);
  EXPECT_EQ(read(stream, 120), partOf(expected, 5000, 120)) << "the same through the page cache";
}

TEST(CompoundFile, StopsAtTheFirstPageThatTheFileLacks) {
  CompoundFile file = CompoundFileWriter().stream(u"S", pattern(5120)).build();
  file.truncate(file.bytes().size() - 2 * 512);
  OpenedFile opened(file);
  EXPECT_EQ(opened.content(L"S"), partOf(pattern(5120), 0, 8 * 512));
  EXPECT_EQ(seek(opened.stream(L"S"), 5119), Status::kOk) << "moves are bounded by the chain";
}

TEST(CompoundFile, ReadsTinyPagesBehindOneThatIsMissing) {
  // The pool takes three pages, of which the second is beyond the file.
  CompoundFile file = CompoundFileWriter().stream(u"A", pattern(1024)).stream(u"B", {1, 2}).build();
  const uint32_t pool = file.startPage(u"");
  file.setFat(pool, 100).setFat(100, pool + 2);
  EXPECT_EQ(OpenedFile(file).content(L"A"), partOf(pattern(1024), 0, 512));
  EXPECT_EQ(OpenedFile(file).content(L"B"), (Bytes{1, 2}));
}

TEST(CompoundFile, TakesATinyPageThatIsCutShortForAbsent) {
  CompoundFileWriter::Options options;
  options.tinyPageShift = 10;
  CompoundFile file = CompoundFileWriter(options).stream(u"A", pattern(1500)).build();
  const uint32_t pool = file.startPage(u"");
  EXPECT_EQ(OpenedFile(file).content(L"A"), pattern(1500));
  file.setFat(pool + 2, support::kEndOfChain);
  EXPECT_EQ(OpenedFile(file).content(L"A"), partOf(pattern(1500), 0, 1024));
}

TEST(CompoundFile, DoesNotConsultTheRootEntrysSize) {
  CompoundFile file = CompoundFileWriter().stream(u"A", pattern(1000)).build();
  file.setEntry(0, support::kEntrySize, uint32_t{1});
  EXPECT_EQ(OpenedFile(file).content(L"A"), pattern(1000));
}

/// Page shift, tiny page shift, chains in reverse.
using Shape = std::tuple<uint32_t, uint32_t, bool>;

class CompoundFileShapes : public testing::TestWithParam<Shape> {
 protected:
  CompoundFileWriter writer() const {
    CompoundFileWriter::Options options;
    std::tie(options.pageShift, options.tinyPageShift, options.reverseChains) = GetParam();
    return CompoundFileWriter(options);
  }
};

TEST_P(CompoundFileShapes, ReadsWhateverIsAskedForInWhateverOrder) {
  const Bytes large = pattern(20000, 2), tiny = pattern(3000, 3);
  OpenedFile file(writer().stream(u"Large", large).stream(u"Other", pattern(9)).stream(u"Tiny", tiny));
  std::mt19937 random(7);
  for (int i = 0; i < 400; ++i) {
    const bool isLarge = random() % 2;
    const Bytes& content = isLarge ? large : tiny;
    const Stream stream = file.stream(isLarge ? L"Large" : L"Tiny");
    const uint32_t offset = random() % static_cast<uint32_t>(content.size());
    const uint32_t length = random() % (i % 2 ? 5000 : 50);
    ASSERT_EQ(seek(stream, offset), Status::kOk);
    ASSERT_EQ(read(stream, length), partOf(content, offset, length)) << offset << " " << length;
  }
}

INSTANTIATE_TEST_SUITE_P(Pages, CompoundFileShapes,
                         testing::Values(Shape{9, 6, false}, Shape{9, 6, true}, Shape{12, 6, false},
                                         Shape{12, 6, true}, Shape{7, 3, true}, Shape{9, 9, false},
                                         Shape{9, 10, true}, Shape{4, 4, false}));
