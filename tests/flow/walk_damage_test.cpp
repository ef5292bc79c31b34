// What is damaged costs a warning, and no text that is there.

#include <gtest/gtest.h>

#include "flow/walked_document.h"
#include "support/named_sprms.h"

using namespace flow_test;
using namespace support;
using namespace mso_word;
using pagerex::WarningCode;

namespace {

/// Some paragraphs, one of them bold.
WordDocument document(const WordOptions& options = {}) {
  WordDocument doc(options);
  doc.paragraph("one ").run("bold", {bold()});
  doc.paragraph("two");
  doc.paragraph("three");
  return doc;
}
constexpr char16_t kText[] = u"one bold\ntwo\nthree\n";

/// Has it all, and a warning.
void expectTextAndWarning(const Bytes& file) {
  Walked walked(file);
  EXPECT_EQ(walked.characters(), kText);
  EXPECT_TRUE(walked.warns());
}

/// The streams of a document under other names.
Bytes renamed(const WordDocument& doc, std::u16string_view word, std::u16string_view table) {
  const WordStreams streams = doc.streams();
  return CompoundFileWriter().stream(word, streams.wordDocument).stream(table, streams.table).bytes();
}

}  // namespace

TEST(WalkDamage, ASoundDocumentWarnsOfNothing) {
  Walked walked(document());
  EXPECT_EQ(walked.characters(), kText);
  EXPECT_FALSE(walked.warns());
}

TEST(WalkDamage, NamesOfStreamsAreReadInAnyCase) {
  EXPECT_EQ(Walked(renamed(document(), u"WORDDOCUMENT", u"1TABLE")).characters(), kText);
  EXPECT_EQ(Walked(renamed(document(), u"worddocument", u"1table")).characters(), kText);
}

TEST(WalkDamage, TheOtherTableStreamIsTakenWhereThereIsNoneOfTheFlag) {
  EXPECT_EQ(Walked(document({.tableStream = 1, .tableStreamName = 0})).characters(), kText);
}

TEST(WalkDamage, AStreamLongerThanItsEntryIsReadWhole) {
  WordDocument doc = document();
  for (int i = 0; i < 3000; ++i) doc.paragraph("more");
  doc.table(0, Bytes(5000));  // in front of all others
  for (const char16_t* stream : {u"WordDocument", u"1Table"}) {
    CompoundFile file = doc.compound().build();
    file.setEntry(stream, kEntrySize, uint32_t{4100});
    Walked walked(file.bytes());
    EXPECT_EQ(walked.characters().size(), std::u16string_view(kText).size() + 3000 * 5);
    EXPECT_TRUE(walked.warnsOf(WarningCode::kTableDamaged));
  }
}

TEST(WalkDamage, PagesOutsideTheStreamLoseNoText) {
  for (const uint32_t table : {FCLCB_CHPX_BINS, FCLCB_PAPX_BINS}) {
    WordDocument doc = document();
    doc.editTable(table, [](Bytes& bins) { patchInteger(bins, bins.size() - 4, uint32_t{0x3FFFFF}); });
    expectTextAndWarning(doc.build());
  }
}

TEST(WalkDamage, MissingPagesLoseNoText) {
  for (const uint32_t table : {FCLCB_CHPX_BINS, FCLCB_PAPX_BINS}) {
    WordDocument doc = document();
    doc.dropTable(table);
    EXPECT_EQ(Walked(doc).characters(), kText);
  }
}

TEST(WalkDamage, PagesThatContradictTheirTableLoseNoText) {
  const auto shift = [](std::vector<Bytes>& pages) {
    for (Bytes& page : pages) patchInteger(page, 4, uint32_t{0x7FFFFFFF});
  };
  EXPECT_EQ(Walked(document().editRunPages(shift)).characters(), kText);
  EXPECT_EQ(Walked(document().editParagraphPages(shift)).characters(), kText);
}

TEST(WalkDamage, PagesOfNoEntriesLoseNoText) {
  const auto clear = [](std::vector<Bytes>& pages) {
    for (Bytes& page : pages) page.assign(page.size(), 0);
  };
  EXPECT_EQ(Walked(document().editRunPages(clear)).characters(), kText);
  EXPECT_EQ(Walked(document().editParagraphPages(clear)).characters(), kText);
}

TEST(WalkDamage, WithoutStylesFontsAndSectionsThereIsStillText) {
  WordDocument doc = document();
  for (const uint32_t table : {FCLCB_STYLE_SHEET, FCLCB_FONTS, FCLCB_SECTIONS, FCLCB_DOCUMENT_PROPERTIES})
    doc.dropTable(table);
  EXPECT_EQ(Walked(doc).characters(), kText);
}

TEST(WalkDamage, WithoutPiecesTheTextLiesWhereTheFileSaysItBegins) {
  WordDocument doc = document();
  doc.dropTable(FCLCB_CLX);
  EXPECT_EQ(Walked(doc).characters(), kText);
}

TEST(WalkDamage, TablesOutsideTheirStreamAreTold) {
  WordDocument doc = document();
  doc.patchFib(WordDocument::pairOffset(FCLCB_STYLE_SHEET), uint32_t{0x7FFFFFFF});
  expectTextAndWarning(doc.build());
}

TEST(WalkDamage, APieceOutsideTheStreamLosesOnlyItsOwnText) {
  WordDocument doc;
  doc.paragraph("one ").newPiece().run("gone").newPiece().run(" two");
  doc.editTable(FCLCB_CLX, [](Bytes& clx) {
    constexpr size_t kSecondPiece = 5 + 4 * 4 + 8;
    patchInteger(clx, kSecondPiece + 2, uint32_t{0x3FFFFFF0});
  });
  Walked walked(doc);
  EXPECT_EQ(walked.characters(), u"one  two\n");
  EXPECT_TRUE(walked.warnsOf(WarningCode::kOutside));
}

TEST(WalkDamage, ATextThatEndsBeforeItsCountIsTold) {
  WordDocument doc = document();
  constexpr size_t kMainTextLength = 76;
  doc.patchFib(kMainTextLength, uint32_t{1000});
  Walked walked(doc);
  EXPECT_EQ(walked.characters().substr(0, 19), kText);
  EXPECT_TRUE(walked.warnsOf(WarningCode::kEndedEarly));
}

TEST(WalkDamage, NotesOutsideTheirStoryAreEmpty) {
  WordDocument doc;
  doc.paragraph("a").footnote("x").run("b");
  doc.editTable(FCLCB_FOOTNOTE_TEXT, [](Bytes& table) {
    for (size_t at = 0; at < table.size(); at += 4) patchInteger(table, at, uint32_t{0x7FFFFFFF});
  });
  EXPECT_EQ(Walked(doc).characters().substr(0, 3), u"ab\n");
}
