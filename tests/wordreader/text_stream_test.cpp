#include "wordreader/text_stream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "memory_storage.h"

using mso_word::SUBDOC_FOOTNOTE;
using mso_word::SUBDOC_HEADER;
using mso_word::SUBDOC_MAIN;
using support::Bytes;
using support::Piece;
using support::sprm;
using support::WordDocument;
using testing::ElementsAre;

namespace {

constexpr auto k8 = Piece::Width::k8;
constexpr auto k16 = Piece::Width::k16;
const Bytes kBold = sprm(0x0835, 1);
const Bytes kItalic = sprm(0x0836, 1);

support::WordOptions withoutClosingMark(mso_word::SUBDOC_TYPE type) {
  support::WordOptions options;
  options.closingMarks.ofStory[type] = false;
  return options;
}

/// The starts of a table's entries, and the end of the last.
std::vector<uint32_t> positionsOf(const KPropxTable& table) {
  std::vector<uint32_t> positions;
  for (uint32_t i = 0; i < table.Count(); ++i) positions.push_back(table.Range(i).start);
  if (table.Count() > 0) positions.push_back(table.Range(table.Count() - 1).end);
  return positions;
}

std::vector<uint32_t> paragraphsOf(const OpenedDocument& opened, mso_word::SUBDOC_TYPE type = SUBDOC_MAIN) {
  return positionsOf(opened.document.GetPlcfPap(type));
}

std::vector<uint32_t> runsOf(const OpenedDocument& opened, mso_word::SUBDOC_TYPE type = SUBDOC_MAIN) {
  return positionsOf(opened.document.GetPlcfChp(type));
}

Bytes propertiesOf(const KPropxTable& table, uint32_t i) {
  const ByteView bytes = table.Data(i)->fkp();
  return Bytes(bytes.data(), bytes.data() + bytes.size());
}

/// Damages a page: its second entry becomes empty.
void endSecondEntryAtItsStart(Bytes& page) {
  support::patchBytes(page, 8, Bytes(page.begin() + 4, page.begin() + 8));
}

uint16_t styleOf(const OpenedDocument& opened, uint32_t paragraph) {
  return opened.document.GetPlcfPap(SUBDOC_MAIN).Data(paragraph)->fkp().u16(0);
}

}  // namespace

// Text.

TEST(DocumentText, KeepsAllCharactersOfTheMainText) {
  WordDocument source;
  source.paragraph("one");
  source.paragraph("two").noMark();
  EXPECT_EQ(textOf(OpenedDocument(source).document, SUBDOC_MAIN), u"one\rtwo");
}

TEST(DocumentText, LosesTheClosingMarkOfAFootnoteStory) {
  WordDocument source;
  source.paragraph("x").footnote("note");
  const OpenedDocument opened(source);
  // The reference mark, the text and its paragraph mark: the story's own closing mark is gone.
  EXPECT_EQ(textOf(opened.document, SUBDOC_FOOTNOTE), u"\x02note\r");
  EXPECT_EQ(paragraphsOf(opened, SUBDOC_FOOTNOTE).back(), 6u);
  EXPECT_EQ(runsOf(opened, SUBDOC_FOOTNOTE).back(), 6u);
}

TEST(DocumentText, LosesTheLastCharacterOfEveryStoryButTheMainText) {
  WordDocument source;
  source.paragraph("main");
  for (uint32_t type = 1; type < mso_word::kSubDocCount; ++type) {
    source.story(static_cast<mso_word::SUBDOC_TYPE>(type)).paragraph(std::string(type, 'a'));
  }
  const OpenedDocument opened(source);
  EXPECT_EQ(textOf(opened.document, SUBDOC_MAIN), u"main\r");
  for (uint32_t type = 1; type < mso_word::kSubDocCount; ++type) {
    EXPECT_EQ(textOf(opened.document, static_cast<mso_word::SUBDOC_TYPE>(type)),
              std::u16string(type, u'a') + u'\r');
  }
}

TEST(DocumentText, IsReadFromPiecesWhereverTheyLie) {
  WordDocument source;
  source.paragraph("first ")
      .newPiece({.width = k16, .fileOrder = 2})
      .run("second ")
      .newPiece({.width = k8, .fileOrder = 1})
      .run("third");
  EXPECT_EQ(textOf(OpenedDocument(source).document, SUBDOC_MAIN), u"first second third\r");
}

TEST(DocumentText, Widens8BitTextByCodePage1252) {
  WordDocument source;
  source.paragraph().newPiece({.width = k8}).run("\x80\x81\xE9");
  EXPECT_EQ(textOf(OpenedDocument(source).document, SUBDOC_MAIN), u"\u20AC\u0081\u00E9\r");
}

TEST(DocumentText, Reads16BitTextAsItStands) {
  WordDocument source;
  source.paragraph(u"\u4E2D\u6587\xD83D\xDE00");
  EXPECT_EQ(textOf(OpenedDocument(source).document, SUBDOC_MAIN), u"\u4E2D\u6587\xD83D\xDE00\r");
}

TEST(DocumentText, IsReadInBlocksWithoutSeams) {
  std::u16string text;
  for (int i = 0; i < 20000; ++i) text += static_cast<char16_t>(0x4000 + i % 9973);
  WordDocument source;
  source.paragraph(text);
  EXPECT_EQ(textOf(OpenedDocument(source).document, SUBDOC_MAIN), text + u'\r');
  WordDocument narrow;
  narrow.paragraph(std::string(10000, 'b') + "c");
  EXPECT_EQ(textOf(OpenedDocument(narrow).document, SUBDOC_MAIN), std::u16string(10000, u'b') + u"c\r");
}

TEST(DocumentText, IsCutWhereAPieceCrossesTheEndOfAStory) {
  for (Piece::Width width : {k8, k16}) {
    WordDocument source;
    source.paragraph().newPiece({.width = width}).run("body").footnote("note");
    const OpenedDocument opened(source);
    EXPECT_EQ(textOf(opened.document, SUBDOC_MAIN), u"body\x02\r");
    EXPECT_EQ(textOf(opened.document, SUBDOC_FOOTNOTE), u"\x02note\r");
    EXPECT_THAT(paragraphsOf(opened), ElementsAre(0, 6));
    EXPECT_EQ(paragraphsOf(opened, SUBDOC_FOOTNOTE).front(), 0u);
  }
}

TEST(DocumentText, BehindTheLastStoryIsIgnored) {
  WordDocument source;
  source.paragraph("text").newPiece().run("more");
  source.patchFib(0x4C, uint32_t{4});  // length of the main text
  const OpenedDocument opened(source);
  EXPECT_EQ(textOf(opened.document, SUBDOC_MAIN), u"text");
}

TEST(DocumentText, GoesToTheNextStoryIfTheMainTextIsEmpty) {
  WordDocument source;
  source.story(SUBDOC_HEADER).paragraph("head");
  const OpenedDocument opened(source);
  EXPECT_EQ(textOf(opened.document, SUBDOC_MAIN), u"");
  EXPECT_EQ(textOf(opened.document, SUBDOC_HEADER), u"head\r");
}

TEST(DocumentText, IsEmptyWithoutPieces) {
  WordDocument source;
  source.paragraph("x");
  source.table(mso_word::FCLCB_CLX, support::ByteWriter().u8(2).u32(4).u32(0).take());
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.status, Status::kNothing);
  EXPECT_EQ(opened.document.GetTextPool(SUBDOC_MAIN).size(), 0u);
  EXPECT_EQ(opened.document.GetPlcfPap(SUBDOC_MAIN).Count(), 0u);
}

TEST(DocumentText, IsScannedOnce) {
  WordDocument source;
  source.paragraph("x").footnote("note");
  OpenedDocument opened(source);
  opened.document.GetTextPool(SUBDOC_MAIN);
  const unsigned int before = opened.storage.content(L"WordDocument").reads;
  opened.document.GetTextPool(SUBDOC_FOOTNOTE);
  opened.document.GetPlcfPap(SUBDOC_MAIN);
  opened.document.GetPlcfChp(SUBDOC_MAIN);
  EXPECT_EQ(opened.storage.content(L"WordDocument").reads, before);
}

// Paragraphs.

TEST(DocumentParagraphs, BeginAndEndByCharacter) {
  for (Piece::Width width : {k8, k16}) {
    WordDocument source;
    source.paragraph().newPiece({.width = width}).run("one");
    source.paragraph("three");
    EXPECT_THAT(paragraphsOf(OpenedDocument(source)), ElementsAre(0, 4, 10));
  }
}

TEST(DocumentParagraphs, HaveTheListOfTheirPage) {
  WordDocument source;
  source.paragraph("a").istd(3).sprms({sprm(0x2461, 1)});
  source.paragraph("b").noPapx();
  const OpenedDocument opened(source);
  const KPropxTable& table = opened.document.GetPlcfPap(SUBDOC_MAIN);
  EXPECT_EQ(propertiesOf(table, 0), (Bytes{3, 0, 0x61, 0x24, 1}));
  EXPECT_EQ(table.Data(1)->fkpSize, 0);
  EXPECT_EQ(table.Data(1)->fkpData, nullptr);
}

TEST(DocumentParagraphs, SpanPages) {
  WordDocument source(support::WordOptions{.maxFkpEntries = 1});
  for (const char* text : {"a", "bb", "ccc"}) source.paragraph(text);
  EXPECT_THAT(paragraphsOf(OpenedDocument(source)), ElementsAre(0, 2, 5, 9));
}

TEST(DocumentParagraphs, KeepTheirListsHoweverManyPagesThereAre) {
  WordDocument source(support::WordOptions{.maxFkpEntries = 1});
  for (uint16_t i = 0; i < 400; ++i) source.paragraph("a").istd(i);
  const OpenedDocument opened(source);
  ASSERT_EQ(opened.document.GetPlcfPap(SUBDOC_MAIN).Count(), 400u);
  for (uint32_t i = 0; i < 400; ++i) ASSERT_EQ(styleOf(opened, i), i);
}

TEST(DocumentParagraphs, ShareEqualLists) {
  WordDocument source(support::WordOptions{.maxFkpEntries = 1});
  for (uint16_t i = 0; i < 3; ++i) source.paragraph("a").istd(4);
  const OpenedDocument opened(source);
  const KPropxTable& table = opened.document.GetPlcfPap(SUBDOC_MAIN);
  EXPECT_EQ(table.Data(0)->fkpData, table.Data(2)->fkpData);
}

TEST(DocumentParagraphs, TakeTheirPropertiesFromThePieceInWhichTheyEnd) {
  WordDocument source;
  source.paragraph("kept").istd(1);
  source.paragraph("begin ")
      .istd(2)
      .newPiece({.fileOrder = 2})
      .run("middle ")
      .newPiece({.fileOrder = 1})
      .run("end");
  source.paragraph("last").istd(4);
  const OpenedDocument opened(source);
  EXPECT_THAT(paragraphsOf(opened), ElementsAre(0, 5, 22, 27));
  EXPECT_EQ(styleOf(opened, 0), 1);
  EXPECT_EQ(styleOf(opened, 1), 2);
  EXPECT_EQ(styleOf(opened, 2), 4);
}

TEST(DocumentParagraphs, DoNotComeFromAPieceMarkedAsWithoutParagraphEnd) {
  WordDocument source;
  source.paragraph().newPiece({.noParaLast = true}).run("unmarked");
  source.paragraph().newPiece({.noParaLast = false}).run("marked").istd(5);
  const OpenedDocument opened(source);
  EXPECT_THAT(paragraphsOf(opened), ElementsAre(0, 16));
  EXPECT_EQ(styleOf(opened, 0), 5);
}

TEST(DocumentParagraphs, GoOnBehindPiecesWhoseParagraphEndsElsewhere) {
  // The first piece does not end its paragraph, though nothing marks it so; in the file another one follows.
  WordDocument source;
  source.paragraph()
      .newPiece({.noParaLast = false, .fileOrder = 1})
      .run("begin ")
      .newPiece({.fileOrder = 0})
      .run("end")
      .istd(7);
  source.paragraph().newPiece({.fileOrder = 2}).run("last");
  const OpenedDocument opened(source);
  EXPECT_THAT(paragraphsOf(opened), ElementsAre(0, 10, 15));
  EXPECT_EQ(styleOf(opened, 0), 7);
}

TEST(DocumentParagraphs, OfAStoryWhosePieceEndsBeforeTheClosingMarkFollowTheMark) {
  WordDocument source(withoutClosingMark(SUBDOC_HEADER));
  source.paragraph("x");
  source.story(SUBDOC_HEADER).paragraph("head");
  source.story(SUBDOC_HEADER).paragraph().newPiece();
  const OpenedDocument opened(source);
  // "head" ends with its piece, one short of the story: its entry is left out, and that of the closing mark
  // covers it.
  EXPECT_EQ(textOf(opened.document, SUBDOC_HEADER), u"head\r");
  EXPECT_THAT(paragraphsOf(opened, SUBDOC_HEADER), ElementsAre(0, 5));
}

TEST(DocumentParagraphs, EndWithTheTextAlsoIfThePagesEndBefore) {
  WordDocument source;
  source.paragraph("covered");
  source.paragraph("also covered");
  source.paragraph("not covered");
  source.editParagraphPages([](std::vector<Bytes>& pages) { pages[0][511] = 2; });
  source.editTable(mso_word::FCLCB_PAPX_BINS,
                   [](Bytes& table) { support::patchInteger(table, 4, uint32_t{0x7FFFFFFF}); });
  const OpenedDocument opened(source);
  EXPECT_THAT(paragraphsOf(opened), ElementsAre(0, 8, 33));
}

TEST(DocumentParagraphs, OfTheNextStoryBeginAtItsStartAlsoIfThePagesOfTheFirstEndBefore) {
  WordDocument source;
  source.paragraph("ab");
  source.paragraph("cd").newPiece({.fileOrder = 5}).run("ef");
  source.story(SUBDOC_HEADER).paragraph().newPiece({.fileOrder = 1}).run("head");
  source.editParagraphPages([](std::vector<Bytes>& pages) { pages[0][511] -= 1; });
  const OpenedDocument opened(source);
  EXPECT_EQ(paragraphsOf(opened).back(), 8u);
  EXPECT_EQ(paragraphsOf(opened, SUBDOC_HEADER).front(), 0u);
}

TEST(DocumentParagraphs, StopAllScanningWhereAPageDescends) {
  WordDocument source;
  source.paragraph("one");
  source.paragraph("two");
  source.paragraph().newPiece().run("three");
  source.editParagraphPages([](std::vector<Bytes>& pages) { endSecondEntryAtItsStart(pages[0]); });
  const OpenedDocument opened(source);
  // The text of the damaged piece is there, that of the next one is not, and no run was looked for.
  EXPECT_EQ(textOf(opened.document, SUBDOC_MAIN), u"one\rtwo\r");
  EXPECT_EQ(opened.document.GetPlcfPap(SUBDOC_MAIN).Count(), 1u);
  EXPECT_EQ(opened.document.GetPlcfChp(SUBDOC_MAIN).Count(), 0u);
}

TEST(DocumentParagraphs, DoNotInheritFromADamagedDocument) {
  WordDocument damaged;
  damaged.paragraph("one");
  damaged.paragraph("two");
  damaged.editParagraphPages([](std::vector<Bytes>& pages) { endSecondEntryAtItsStart(pages[0]); });
  const OpenedDocument stopped(damaged);
  ASSERT_EQ(stopped.document.GetPlcfPap(SUBDOC_MAIN).Count(), 1u);
  WordDocument sound;
  sound.paragraph("three");
  const OpenedDocument opened(sound);
  EXPECT_THAT(paragraphsOf(opened), ElementsAre(0, 6));
  EXPECT_THAT(runsOf(opened), ElementsAre(0, 6));
}

TEST(DocumentParagraphs, AreNoneWithoutABinTable) {
  WordDocument source;
  source.paragraph("text").footnote("note");
  source.dropTable(mso_word::FCLCB_PAPX_BINS);
  source.dropTable(mso_word::FCLCB_CHPX_BINS);
  const OpenedDocument opened(source);
  EXPECT_EQ(textOf(opened.document, SUBDOC_MAIN), u"text\x02\r");
  EXPECT_EQ(textOf(opened.document, SUBDOC_FOOTNOTE), u"\x02note\r");
  EXPECT_EQ(opened.document.GetPlcfPap(SUBDOC_MAIN).Count(), 0u);
  EXPECT_EQ(opened.document.GetPlcfChp(SUBDOC_MAIN).Count(), 0u);
}

// Runs.

TEST(DocumentRuns, BeginAndEndByCharacter) {
  for (Piece::Width width : {k8, k16}) {
    WordDocument source;
    source.paragraph().newPiece({.width = width}).run("ab").run("cde", {kBold}).run("f", {kItalic}).mark({});
    const OpenedDocument opened(source);
    EXPECT_THAT(runsOf(opened), ElementsAre(0, 2, 5, 6, 7));
    EXPECT_EQ(propertiesOf(opened.document.GetPlcfChp(SUBDOC_MAIN), 1), kBold);
    EXPECT_EQ(opened.document.GetPlcfChp(SUBDOC_MAIN).Data(0)->fkpData, nullptr);
  }
}

TEST(DocumentRuns, SpanPages) {
  WordDocument source(support::WordOptions{.maxFkpEntries = 1});
  source.paragraph("a").run("bb", {kBold}).run("ccc").mark({kItalic});
  EXPECT_THAT(runsOf(OpenedDocument(source)), ElementsAre(0, 1, 3, 6, 7));
}

TEST(DocumentRuns, BeginAnewWithEachPiece) {
  WordDocument source;
  source.paragraph("abc", {kBold}).newPiece().run("def", {kBold});
  const OpenedDocument opened(source);
  EXPECT_THAT(runsOf(opened), ElementsAre(0, 3, 7));
  EXPECT_EQ(propertiesOf(opened.document.GetPlcfChp(SUBDOC_MAIN), 1), kBold);
}

TEST(DocumentRuns, CrossTheEndOfAStory) {
  WordDocument source;
  source.paragraph("main", {kBold});
  source.story(SUBDOC_HEADER).paragraph("head", {kBold});
  const OpenedDocument opened(source);
  EXPECT_THAT(runsOf(opened), ElementsAre(0, 5));
  EXPECT_EQ(runsOf(opened, SUBDOC_HEADER).front(), 0u);
  EXPECT_EQ(propertiesOf(opened.document.GetPlcfChp(SUBDOC_HEADER), 0), kBold);
}

TEST(DocumentRuns, AreEnteredAlsoWhereAPieceEndsBeforeTheClosingMark) {
  WordDocument source(withoutClosingMark(SUBDOC_HEADER));
  source.paragraph("x");
  source.story(SUBDOC_HEADER).paragraph("he", {kBold}).run("ad", {kItalic});
  source.story(SUBDOC_HEADER).paragraph().newPiece();
  const OpenedDocument opened(source);
  EXPECT_THAT(runsOf(opened, SUBDOC_HEADER), ElementsAre(0, 2, 5, 5));
}

TEST(DocumentRuns, EndTheSearchOfTheirPieceOnlyWhereAPageDescends) {
  WordDocument source;
  source.paragraph("ab").run("cd", {kBold}).run("ef", {kItalic}).newPiece().run("gh");
  source.editRunPages([](std::vector<Bytes>& pages) { endSecondEntryAtItsStart(pages[0]); });
  const OpenedDocument opened(source);
  EXPECT_EQ(textOf(opened.document, SUBDOC_MAIN), u"abcdefgh\r");
  EXPECT_EQ(opened.document.GetPlcfPap(SUBDOC_MAIN).Count(), 1u);
  EXPECT_THAT(runsOf(opened), ElementsAre(0, 6, 9));
}

TEST(DocumentRuns, KeepTheFirstOfTwoAtOnePosition) {
  // Of 16-bit text both bytes of a character may be given a run.
  WordDocument source;
  source.paragraph().newPiece({.width = k16}).run("ab", {kBold}).run("cd", {kItalic});
  source.editRunPages([](std::vector<Bytes>& pages) {
    const uint32_t start = ByteView(pages[0].data(), 4).u32(0);
    support::patchInteger(pages[0], 4, start + 1);
  });
  const OpenedDocument opened(source);
  EXPECT_THAT(runsOf(opened), ElementsAre(0, 5));
  EXPECT_EQ(propertiesOf(opened.document.GetPlcfChp(SUBDOC_MAIN), 0), kBold);
}

// Modifiers of pieces.

TEST(DocumentPieces, KeepTheListsOfTheirModifierBesideThoseOfThePage) {
  WordDocument source;
  const uint32_t group = source.propertyGroup({kBold, sprm(0x2461, 1)});
  source.paragraph().newPiece({.prm = support::prmOfGroup(group)}).run("ab", {kItalic}).istd(2);
  const OpenedDocument opened(source);
  const KDRMergePropx& paragraph = *opened.document.GetPlcfPap(SUBDOC_MAIN).Data(0);
  const KDRMergePropx& run = *opened.document.GetPlcfChp(SUBDOC_MAIN).Data(0);
  EXPECT_EQ(Bytes(paragraph.pieceData, paragraph.pieceData + paragraph.pieceSize), sprm(0x2461, 1));
  EXPECT_EQ(Bytes(run.pieceData, run.pieceData + run.pieceSize), kBold);
  EXPECT_EQ(propertiesOf(opened.document.GetPlcfChp(SUBDOC_MAIN), 0), kItalic);
}

TEST(DocumentPieces, WithASingleSprmHaveNoPropertiesOfTheirs) {
  WordDocument source;
  source.paragraph().newPiece({.prm = support::prmOfSprm(0x55, 1)}).run("not bold");
  const OpenedDocument opened(source);
  EXPECT_EQ(opened.document.GetPlcfChp(SUBDOC_MAIN).Data(0)->fkpSize, 0);
  EXPECT_EQ(opened.document.GetPlcfChp(SUBDOC_MAIN).Data(0)->pieceSize, 0);
}

// Damage.

namespace {

/// A document with these pieces alone: start and end positions, and raw stream offsets.
WordDocument withPieces(const std::vector<uint32_t>& positions, const std::vector<uint32_t>& rawOffsets) {
  WordDocument source;
  source.paragraph("text");
  std::vector<Bytes> pieces;
  for (uint32_t offset : rawOffsets) pieces.push_back(support::ByteWriter().u16(0).u32(offset).u16(0).take());
  const Bytes table = support::positionTable(positions, pieces);
  source.table(mso_word::FCLCB_CLX, support::ByteWriter().u8(2).u32(table.size()).bytes(table).take());
  return source;
}

constexpr size_t kMainTextLength = 0x4C;  // in the FIB

}  // namespace

TEST(DamagedText, ThrowsForAPieceOutsideTheStream) {
  const OpenedDocument opened(withPieces({0, 5}, {0x7FFFFFF0 & ~mso_word::PCD::kAnsi}));
  EXPECT_THROW(opened.document.GetTextPool(SUBDOC_MAIN), int);
  EXPECT_EQ(opened.document.GetTextPool(SUBDOC_MAIN).size(), 0u);
}

TEST(DamagedText, ReadsWhatTheStreamDoesNotHoldAsZero) {
  WordDocument source = withPieces({0, 40}, {0});
  const auto end = static_cast<uint32_t>(source.streams().wordDocument.size());
  source = withPieces({0, 40}, {end - 20});
  source.patchFib(kMainTextLength, uint32_t{40});
  const OpenedDocument opened(source);
  const KTextPool& pool = opened.document.GetTextPool(SUBDOC_MAIN);
  ASSERT_EQ(pool.size(), 40u);
  EXPECT_EQ(pool[39], 0);
}

TEST(DamagedText, IsNoLongerThanTheStream) {
  WordDocument source = withPieces({0, 0xFFFFFFF0}, {0x200});
  source.patchFib(kMainTextLength, uint32_t{0xFFFFFFFF});
  const OpenedDocument opened(source);
  EXPECT_LE(opened.document.GetTextPool(SUBDOC_MAIN).size(),
            opened.storage.content(L"WordDocument").bytes.size());
}

TEST(DamagedText, IsNoLongerThanTheStreamHoweverManyPiecesShareIt) {
  std::vector<uint32_t> positions = {0};
  std::vector<uint32_t> offsets;
  for (uint32_t i = 1; i <= 20000; ++i) {
    positions.push_back(i * 1000);
    offsets.push_back(0x200);
  }
  WordDocument source = withPieces(positions, offsets);
  source.patchFib(kMainTextLength, uint32_t{0x7FFFFFFF});
  const OpenedDocument opened(source);
  EXPECT_LE(opened.document.GetTextPool(SUBDOC_MAIN).size(),
            opened.storage.content(L"WordDocument").bytes.size());
}

TEST(DamagedText, SkipsAPieceThatEndsInFrontOfItsStart) {
  WordDocument source = withPieces({0, 3, 1, 4}, {0x200, 0x200, 0x200});
  source.patchFib(kMainTextLength, uint32_t{100});
  EXPECT_EQ(OpenedDocument(source).document.GetTextPool(SUBDOC_MAIN).size(), 6u);
}

TEST(DamagedText, ScansAHugeCountOfPiecesThatAreNotThere) {
  WordDocument source;
  source.paragraph("text");
  source.table(182, support::ByteWriter().u8(2).u32(0x7FFFFFF0).u32(0).u32(2).take());
  const auto offset = static_cast<uint32_t>(source.streams().table.size() - 13);
  source.patchFib(WordDocument::pairOffset(mso_word::FCLCB_CLX), offset);
  source.patchFib(WordDocument::pairOffset(mso_word::FCLCB_CLX) + 4, uint32_t{0x7FFFFFFF});
  EXPECT_EQ(OpenedDocument(source).document.GetTextPool(SUBDOC_MAIN).size(), 2u);
}

TEST(DamagedPages, WhoseListsOverlapGiveNoMoreThanTheStreamHolds) {
  // Each page has 80 runs, and lists of 200 bytes and more that begin at bytes of one another.
  constexpr uint32_t kPages = 50;
  constexpr uint32_t kRuns = 80;
  WordDocument source;
  source.paragraph(std::string(kPages * kRuns, 'a'));
  const uint32_t text = source.streams().textStart + kPages * 512;  // moved by the pages
  std::vector<uint32_t> starts = {text};
  std::vector<Bytes> numbers;
  for (uint32_t i = 0; i < kPages; ++i) {
    support::ByteWriter page;
    for (uint32_t run = 0; run <= kRuns; ++run) page.u32(text + i * kRuns + run);
    for (uint32_t run = 0; run < kRuns; ++run) page.u8(203 - run % 30);
    while (page.size() < 511) page.u8(200 + page.size() * (i + 7) % 50);
    starts.push_back(text + (i + 1) * kRuns);
    numbers.push_back(support::ByteWriter().u32(source.wordDocumentData(page.u8(kRuns).take()) / 512).take());
  }
  source.table(mso_word::FCLCB_CHPX_BINS, support::positionTable(starts, numbers));
  const OpenedDocument opened(source);
  const KPropxTable& table = opened.document.GetPlcfChp(SUBDOC_MAIN);
  std::set<const uint8_t*> lists;
  size_t bytes = 0;
  for (uint32_t i = 0; i < table.Count(); ++i) {
    if (lists.insert(table.Data(i)->fkpData).second) bytes += table.Data(i)->fkpSize;
  }
  EXPECT_GT(bytes, 20000u);
  EXPECT_LE(bytes, opened.storage.content(L"WordDocument").bytes.size());
}

TEST(DamagedPages, ThatRepeatEachOtherEndTheScan) {
  WordDocument source;
  source.paragraph(std::string(200, 'a'));
  const uint32_t text = source.streams().textStart + 512;  // moved by the page below
  std::vector<support::FkpEntry> runs;
  for (uint32_t i = 0; i < 20; ++i) runs.push_back({text + i, text + i + 1, {}});
  const uint32_t page = source.wordDocumentData(support::packFkp(runs, 1, 255).pages[0]) / 512;
  const std::vector<Bytes> numbers(50000, support::ByteWriter().u32(page).take());
  std::vector<uint32_t> starts;
  for (uint32_t i = 0; i <= numbers.size(); ++i) starts.push_back(text + i);
  source.table(mso_word::FCLCB_CHPX_BINS, support::positionTable(starts, numbers));
  const OpenedDocument opened(source);
  EXPECT_GT(opened.document.GetPlcfChp(SUBDOC_MAIN).Count(), 20u);
  EXPECT_LT(opened.document.GetPlcfChp(SUBDOC_MAIN).Count(), 5000u);
}
