#include "story/work_limits.h"

#include <gtest/gtest.h>

#include "base/write_archive.h"
#include "documents/converted.h"
#include "htmlwriter/env.h"
#include "support/named_sprms.h"
#include "support/opened_document.h"

// The single limits, and what lies beyond them.

namespace {

using pagerex::KBudget;
using pagerex::KWorkLimits;
using support::Bytes;
using support::OpenedDocument;
using support::sprm;
using support::WordDocument;

size_t countOf(const std::string& text, const std::string& part) {
  size_t count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

/// How often `take` is allowed, at most `limit` times.
template <class Take>
uint64_t timesAllowed(Take take, uint64_t limit = 1 << 24) {
  uint64_t times = 0;
  while (times < limit && take()) ++times;
  return times;
}

/// 10 characters, 2 paragraphs, 2 runs.
WordDocument smallDocument() {
  WordDocument document;
  document.paragraph("Abcdef").breakRun().run("g");
  document.paragraph("h");
  return document;
}

}  // namespace

TEST(Budget, RefusesMoreThanIsLeft) {
  KBudget budget(10);
  EXPECT_TRUE(budget.Take(9));
  EXPECT_FALSE(budget.Take(2));
  EXPECT_TRUE(budget.Take(1));
  EXPECT_FALSE(budget.Take());
}

TEST(Budget, GrowsByWhatIsAdded) {
  KBudget budget(0);
  budget.Add(3);
  EXPECT_TRUE(budget.Take(3));
  EXPECT_EQ(budget.left(), 0u);
}

TEST(WorkLimits, AreNoneWithoutADocument) {
  KWorkLimits limits(nullptr);
  EXPECT_TRUE(limits.Visit(mso_word::SUBDOC_MAIN, uint64_t{1} << 40));
  EXPECT_TRUE(limits.WritePicture(uint64_t{1} << 40));
  EXPECT_EQ(timesAllowed([&] { return limits.FillCell(); }, 1000), 1000u);
}

TEST(WorkLimits, StoryIsReadEightTimes) {
  const OpenedDocument opened(smallDocument());
  KWorkLimits limits(&*opened);
  const KDRDocument& document = *opened;
  const uint64_t steps = document.GetTextPool(mso_word::SUBDOC_MAIN).size() +
                         document.GetPlcfPap(mso_word::SUBDOC_MAIN).Count() +
                         document.GetPlcfChp(mso_word::SUBDOC_MAIN).Count();
  // The last one is where it ends.
  EXPECT_EQ(timesAllowed([&] { return limits.Visit(mso_word::SUBDOC_MAIN, 1); }), 8 * steps + 65536 - 1);
}

TEST(WorkLimits, StoryThatEndedTakesNoSmallerSteps) {
  const OpenedDocument opened(smallDocument());
  KWorkLimits limits(&*opened);
  EXPECT_FALSE(limits.Visit(mso_word::SUBDOC_MAIN, 1 << 20));
  EXPECT_FALSE(limits.Visit(mso_word::SUBDOC_MAIN, 1));
}

TEST(WorkLimits, StoriesDoNotShare) {
  const OpenedDocument opened(smallDocument());
  KWorkLimits limits(&*opened);
  EXPECT_FALSE(limits.Visit(mso_word::SUBDOC_MAIN, 1 << 20));
  EXPECT_TRUE(limits.Visit(mso_word::SUBDOC_FOOTNOTE, 1));
}

TEST(WorkLimits, PictureTooLargeDoesNotKeepOutTheNext) {
  const OpenedDocument opened(smallDocument());
  KWorkLimits limits(&*opened);
  EXPECT_FALSE(limits.WritePicture(uint64_t{1} << 32));
  EXPECT_TRUE(limits.WritePicture(64 << 20));
  EXPECT_FALSE(limits.WritePicture(64 << 20));
}

TEST(WorkLimits, GrowWithTheDocument) {
  WordDocument large = smallDocument();
  large.data(Bytes(1 << 20));
  const OpenedDocument small(smallDocument());
  const OpenedDocument opened(large);
  EXPECT_EQ(KWorkLimits::MostOutputBytes(*opened) - KWorkLimits::MostOutputBytes(*small), 256u << 20);
}

TEST(WorkLimits, AreSharedByTheStoriesOfAConversion) {
  const OpenedDocument opened(smallDocument());
  OutputFiles files;
  pagerex::KHtmlConversionEnv conversion(files);
  conversion.document = &*opened;
  const pagerex::KEnv env(conversion);
  const pagerex::KEnv nested = pagerex::KEnv::NestedIn(env);
  EXPECT_EQ(&nested.conversion->Limits(), &env.conversion->Limits());
}

TEST(PendingNotes, AreNotOwedByANestedStory) {
  OutputFiles files;
  pagerex::KHtmlConversionEnv conversion(files);
  pagerex::KEnv env(conversion);
  env.page.pendingFootnotes = {1, 2, 3};
  EXPECT_TRUE(pagerex::KEnv::NestedIn(env).page.pendingFootnotes.empty());
  EXPECT_EQ(env.page.pendingFootnotes.size(), 3u);
}

TEST(OutputLimit, CountsAllFilesOfAnArchive) {
  support::TempFolder folder;
  OutputFiles files;
  const ArchivePtr archive = CreateOwnedArchive(files, folder.path("a").c_str());
  archive->Put("12345");
  archive->Open(folder.path("b").c_str());
  archive->Put(std::string(1 << 20, 'x').c_str());
  archive->Put("12345");
  EXPECT_EQ(archive->GetWrittenBytes(), (1u << 20) + 10);
}

TEST(OutputLimit, PagesBringTheirOwnRoom) {
  const OpenedDocument opened(smallDocument());
  KWorkLimits limits(&*opened);
  support::TempFolder folder;
  OutputFiles files;
  const ArchivePtr archive = CreateOwnedArchive(files, folder.path("a").c_str());
  const uint64_t most = KWorkLimits::MostOutputBytes(*opened);
  while (archive->GetWrittenBytes() < most) archive->Put(std::string(1 << 16, 'x').c_str());
  EXPECT_TRUE(limits.OutputFull(*archive));
  for (int i = 0; i < 9; ++i) limits.AddPage();
  EXPECT_FALSE(limits.OutputFull(*archive));
}

// Tables.

TEST(TableLimit, TablesOfTheSameBytesAreAbsentFromTheThirdOn) {
  WordDocument document;
  document.paragraph("text");
  constexpr uint32_t kUnread = 150;
  document.table(kUnread, Bytes(1 << 20));
  const auto size = static_cast<uint32_t>(document.streams().table.size());
  constexpr uint32_t kTables[] = {2, 3, 4, 5, 16, 18};
  for (const uint32_t index : kTables) {
    document.patchFib(WordDocument::pairOffset(index), uint32_t{0});
    document.patchFib(WordDocument::pairOffset(index) + 4, size);
  }
  const OpenedDocument opened(document);
  int present = 0;
  for (const uint32_t index : kTables) {
    KDRTableRecord record;
    if (opened->GetTableRecord(&record, index) == Status::kOk) ++present;
  }
  EXPECT_EQ(present, 2);
}

TEST(ListTextLimit, TextIsCutTo255Characters) {
  WordDocument document;
  const uint16_t list = document.list({.levels = {{.text = std::u16string(300, u'x')}}});
  document.paragraph("a").sprms(support::listItem(list, 0));
  const std::string page = Converted(document).page();
  EXPECT_EQ(countOf(page, std::string(255, 'x')), 1u);
  EXPECT_EQ(countOf(page, std::string(256, 'x')), 0u);
}

TEST(ListTextLimit, LevelBehindALongTextIsRead) {
  WordDocument document;
  const uint16_t list = document.list({.levels = {{.text = std::u16string(300, u'x')}, {.text = u"second"}}});
  document.paragraph("a").sprms(support::listItem(list, 1));
  EXPECT_EQ(countOf(Converted(document).page(), "second"), 1u);
}

TEST(FieldLimit, TextBehindFieldsThatNestTooDeepComesOut) {
  WordDocument document;
  support::Paragraph& paragraph = document.paragraph();
  for (int i = 0; i < 2000; ++i) paragraph.fieldBegin(88);
  for (int i = 0; i < 2000; ++i) paragraph.fieldEnd();
  paragraph.run("behind");
  EXPECT_EQ(countOf(Converted(document).page(), ">behind<"), 1u);
}

TEST(SharedTextLimit, TextUpToTheLimitComesOut) {
  WordDocument document;
  document.paragraph("Only once or twice");
  document.editTable(mso_word::FCLCB_CLX, [](Bytes& clx) {
    const Bytes piece(clx.end() - 8, clx.end());
    std::vector<uint32_t> positions;
    for (uint32_t i = 0; i <= 1000; ++i) positions.push_back(i * 19);
    const Bytes table = support::positionTable(positions, std::vector<Bytes>(1000, piece));
    clx = support::ByteWriter().u8(2).u32(static_cast<uint32_t>(table.size())).bytes(table).take();
  });
  constexpr size_t kMainTextLength = 0x4C;
  document.patchFib(kMainTextLength, uint32_t{19000});
  document.table(mso_word::FCLCB_SECTIONS, support::positionTable({0, 19000}, {Bytes(12, 0xFF)}));
  const Converted converted(document);
  EXPECT_EQ(converted.result, 0);
  const size_t streamBytes = document.streams().wordDocument.size();
  EXPECT_EQ(countOf(converted.page(), "Only once or twice"), streamBytes / 19);
}

// Rows.

TEST(FillerLimit, CellsUpToTheLimitComeOut) {
  WordDocument document;
  for (int left = -32768; left < 32000; left += 60) {
    std::vector<int16_t> edges;
    for (int i = 0; i <= 60; ++i) edges.push_back(static_cast<int16_t>(left + i));
    document.row({"x"}, {support::defTableSprm(edges)});
  }
  for (int i = 0; i < 9; ++i) document.row({"right"}, {support::defTableSprm({32000, 32001})});
  const std::string page = Converted(document).page();
  EXPECT_EQ(countOf(page, ">right<"), 9u);
  EXPECT_EQ(countOf(page, "<td></td>"), 65536u + 64 * 2 * (1080 + 9));
}

TEST(RowListLimit, TextOfRowsBehindItComesOut) {
  support::Sprms list = {sprm(0x2416, 1), sprm(0x2417, 1), support::defTableSprm({0, 1000})};
  while (list.size() < 60000) list.add(sprm(0x2405, 1));
  WordDocument document;
  const uint32_t offset =
      document.data(support::ByteWriter().u16(static_cast<uint32_t>(list.size())).bytes(list.bytes()).take());
  for (int i = 0; i < 200; ++i) {
    document.cell("cell");
    document.paragraph().endWith(7).sprms({sprm(0x6646, offset)});
  }
  const std::string page = Converted(document).page();
  EXPECT_EQ(countOf(page, ">cell<"), 200u);
  EXPECT_GT(countOf(page, "</table>"), 1u);  // the rows that cannot be read are none, and end their tables
}
