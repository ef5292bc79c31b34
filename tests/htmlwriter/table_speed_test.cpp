#include <gtest/gtest.h>

#include <ctime>

#include "table_test_support.h"

/// Damaged and hostile tables that would take minutes if the work grew with the square of their size.
namespace pagerex {
namespace {

using support::Bytes;
using support::defTableSprm;
using support::sprm;
using support::Sprms;
using support::TableCell;

constexpr TableCell kMergeStart{.verticalMerge = 3};
constexpr TableCell kMergeContinued{.verticalMerge = 1};

/// Processor time of the calling process; generous, since a square of the sizes below would take far longer.
class WithinSeconds {
 public:
  explicit WithinSeconds(double limit) : limit_(limit), start_(clock()) {}
  ~WithinSeconds() { EXPECT_LT(static_cast<double>(clock() - start_) / CLOCKS_PER_SEC, limit_); }

 private:
  double limit_;
  clock_t start_;
};

Sprms inTable(uint32_t depth = 1) {
  return {sprm(0x2416, 1), sprm(0x6649, depth)};
}

Sprms rowEnd(const Bytes& definition) {
  return {sprm(0x2416, 1), sprm(0x2417, 1), definition};
}

TEST(TableSpeed, DoesNotScanAgainWhereAParagraphClosesTheTableButNotTheScan) {
  ManyParagraphs story;
  story.Add(rowEnd(defTableSprm({0, 100})));
  story.Add({sprm(0x2416, 0)});
  story.Add(inTable());
  WithinSeconds limit(10);
  for (int i = 0; i < 50'000; ++i) {
    for (size_t paragraph : {2, 0, 1}) story.AddAgain(paragraph);
  }
  story.WriteAll();
}

TEST(TableSpeed, DoesNotScanTheNotesBehindEachNote) {
  ManyParagraphs story;
  story.Add(inTable());
  story.Add(rowEnd(defTableSprm({0, 100})));
  for (int i = 0; i < 40'000; ++i) {
    story.AddAgain(0);
    story.AddAgain(1);
  }
  WithinSeconds limit(10);
  for (uint32_t i = 0; i + 1 < story.count(); i += 2) {
    KEnv note = KEnv::NestedIn(story.env);
    KHtmlTableWriter writer;
    writer.Init(&note);
    note.pap.papIndex = i;
    note.pap.papx.AssignPapx(note.plcfPap->Data(i)->fkp());
    writer.Write();
  }
}

TEST(TableSpeed, CountsTheRowsOfManyMergesTogether) {
  ManyParagraphs story;
  std::vector<int16_t> edges(17, 0);
  std::vector<TableCell> cells(16, kMergeStart);
  cells[0] = kMergeContinued;
  story.Add(inTable());
  story.Add(rowEnd(defTableSprm(edges, cells)));
  WithinSeconds limit(5);
  for (int row = 0; row < 20'000; ++row) {
    for (int cell = 0; cell < 16; ++cell) story.AddAgain(0);
    story.AddAgain(1);
  }
  story.WriteAll();
}

TEST(TableSpeed, ScansNestedTablesOnceForEachLevel) {
  ManyParagraphs story;
  for (uint32_t depth = 1; depth <= kDeepestTable; ++depth) {
    story.Add(Sprms(inTable(depth)).add(defTableSprm({0, 100})));
  }
  for (int i = 0; i < 2'000; ++i) {
    for (size_t depth : {63, 62, 63, 1, 62}) story.AddAgain(depth);
  }
  WithinSeconds limit(20);
  story.WriteAll();
}

TEST(TableSpeed, BearsATableOfEveryColumnThereIs) {
  ManyParagraphs story;
  story.Add(inTable());
  for (int row = 0; row < 257; ++row) {
    std::vector<int16_t> edges;
    for (int i = 0; i < 256; ++i) edges.push_back(static_cast<int16_t>(-32768 + row + i * 257));
    story.Add(rowEnd(defTableSprm(edges)));
  }
  WithinSeconds limit(10);
  story.WriteAll();
  EXPECT_NE(std::string::npos, story.archive.text().find("<td width=\"16\" colspan=\"257\""));
}

}  // namespace
}  // namespace pagerex
