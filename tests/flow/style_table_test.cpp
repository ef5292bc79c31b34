#include "wordreader/style_table.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/word_tables.h"
#include "wordreader/style_names.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::sprm;
using support::Sprms;
using support::Style;
using support::StyleSheetHeader;

const Sprms kBold{sprm(0x0835, 1)};
const Sprms kCentred{sprm(0x2461, 1)};
const Sprms kTableLeft{sprm(0x9601, 5)};

/// A table read from bytes, which it keeps.
struct Sheet {
  explicit Sheet(Bytes sheet) : bytes(std::move(sheet)) {
    table.Read(ByteView(bytes.data(), bytes.size()), &warnings);
  }
  explicit Sheet(const std::vector<std::optional<Style>>& styles, const StyleSheetHeader& header = {})
      : Sheet(support::styleSheetTable(styles, header)) {}

  Bytes bytes;
  Warnings warnings;
  StyleTable table;
};

Bytes bytesOf(ByteView view) {
  return view.empty() ? Bytes() : Bytes(view.data(), view.data() + view.size());
}

TEST(StyleTable, TellsKindBaseNextAndNumberOfStyles) {
  const Sheet sheet({Style().sti(0).next(0), Style().sti(1).basedOn(0).next(0),
                     Style().kind(support::StyleKind::kCharacter), Style().kind(support::StyleKind::kTable),
                     Style().kind(support::StyleKind::kNumbering)});
  const StyleTable& table = sheet.table;
  EXPECT_EQ(table.Count(), 5u);
  EXPECT_EQ(table.Kind(0), StyleKind::kParagraph);
  EXPECT_EQ(table.Kind(2), StyleKind::kCharacter);
  EXPECT_EQ(table.Kind(3), StyleKind::kTable);
  EXPECT_EQ(table.Kind(4), StyleKind::kNumbering);
  EXPECT_EQ(table.Sti(0), 0);
  EXPECT_EQ(table.Sti(1), 1);
  EXPECT_EQ(table.Sti(2), 0x0FFE);
  EXPECT_EQ(table.Base(0), kNoStyle);
  EXPECT_EQ(table.Base(1), 0);
  EXPECT_EQ(table.Next(1), 0);
  EXPECT_TRUE(sheet.warnings.all().empty());
}

TEST(StyleTable, HasTheListsOfEachKind) {
  const Sheet sheet({Style().papx(kCentred).chpx(kBold),
                     Style().kind(support::StyleKind::kCharacter).chpx(kBold),
                     Style().kind(support::StyleKind::kTable).tapx(kTableLeft).papx(kCentred).chpx(kBold),
                     Style().kind(support::StyleKind::kNumbering).papx(kCentred)});
  const StyleTable& table = sheet.table;
  EXPECT_EQ(bytesOf(table.Papx(0)), kCentred.bytes());
  EXPECT_EQ(bytesOf(table.Chpx(0)), kBold.bytes());
  EXPECT_EQ(bytesOf(table.Chpx(1)), kBold.bytes());
  EXPECT_EQ(bytesOf(table.Tapx(2)), kTableLeft.bytes());
  EXPECT_EQ(bytesOf(table.Papx(2)), kCentred.bytes());
  EXPECT_EQ(bytesOf(table.Chpx(2)), kBold.bytes());
  EXPECT_EQ(bytesOf(table.Papx(3)), kCentred.bytes());
  EXPECT_TRUE(table.Papx(1).empty());
  EXPECT_TRUE(table.Tapx(0).empty());
}

TEST(StyleTable, ReadsRecordsOfAllSizes) {
  for (const uint16_t baseBytes : {10, 18, 22}) {
    const Sheet sheet({Style().name("N").chpx(kBold)}, {.baseBytes = baseBytes});
    EXPECT_EQ(bytesOf(sheet.table.Chpx(0)), kBold.bytes()) << baseBytes;
    EXPECT_EQ(sheet.table.StyleName(0), u"N") << baseBytes;
  }
}

TEST(StyleTable, NamesStylesWithoutAliases) {
  const Sheet sheet({Style().name("Body,b,text")});
  EXPECT_EQ(sheet.table.StyleName(0), u"Body");
  EXPECT_EQ(sheet.table.EnglishName(0), u"Body");
}

TEST(StyleTable, NamesBuiltInStylesInEnglish) {
  const Sheet sheet({Style().sti(1).name(u"\u00DCberschrift 1")});
  EXPECT_EQ(sheet.table.StyleName(0), u"\u00DCberschrift 1");
  EXPECT_EQ(sheet.table.EnglishName(0), u"heading 1");
}

TEST(StyleNames, KnowsNamesByTheirNumber) {
  struct Case {
    uint16_t sti;
    const char16_t* name;
  };
  for (const Case& each : {Case{0, u"Normal"},
                           {1, u"heading 1"},
                           {9, u"heading 9"},
                           {18, u"index 9"},
                           {19, u"toc 1"},
                           {29, u"footnote text"},
                           {34, u"caption"},
                           {50, u"List 2"},
                           {57, u"List Bullet 5"},
                           {62, u"Title"},
                           {65, u"Default Paragraph Font"},
                           {74, u"Subtitle"},
                           {85, u"Hyperlink"},
                           {90, u"Plain Text"},
                           {101, u"HTML Preformatted"},
                           {105, u"Normal Table"},
                           {107, u"No List"},
                           {133, u"Table Grid 8"},
                           {154, u"Table Grid"},
                           {180, u"Quote"},
                           {266, u"TOC Heading"}}) {
    EXPECT_EQ(builtInStyleName(each.sti), each.name) << each.sti;
  }
  EXPECT_TRUE(builtInStyleName(158).empty());
  EXPECT_TRUE(builtInStyleName(0x0FFE).empty());
  EXPECT_TRUE(builtInStyleName(0xFFFF).empty());
}

TEST(StyleTable, TellsTheDefaultFonts) {
  const Sheet sheet({Style()}, {.defaultFontAscii = 3, .defaultFontFarEast = 4, .defaultFontComplex = 5});
  EXPECT_EQ(sheet.table.AsciiFont(), 3);
  EXPECT_EQ(sheet.table.EastAsianFont(), 4);
  EXPECT_EQ(sheet.table.OtherFont(), 5);
  EXPECT_EQ(sheet.table.ComplexFont(), 0);
}

TEST(StyleTable, TellsHeadingLevels) {
  const Sheet sheet({Style().sti(0), Style().sti(3).basedOn(0), Style().basedOn(1),
                     Style().basedOn(1).papx({sprm(0x2640, 4)}), Style().basedOn(1).papx({sprm(0x2640, 9)}),
                     Style().papx({sprm(0x2640, 0)}), Style().sti(2).kind(support::StyleKind::kCharacter)});
  EXPECT_EQ(sheet.table.HeadingLevel(0), 0);
  EXPECT_EQ(sheet.table.HeadingLevel(1), 3);
  EXPECT_EQ(sheet.table.HeadingLevel(2), 3) << "that of its base";
  EXPECT_EQ(sheet.table.HeadingLevel(3), 5) << "its own outline level";
  EXPECT_EQ(sheet.table.HeadingLevel(4), 0) << "body text, though based on a heading";
  EXPECT_EQ(sheet.table.HeadingLevel(5), 1);
  EXPECT_EQ(sheet.table.HeadingLevel(6), 0) << "a character style";
  EXPECT_EQ(sheet.table.HeadingLevel(7), 0) << "no style";
}

std::vector<uint16_t> chainOf(const StyleTable& table, uint16_t istd) {
  const StyleChain chain = table.Chain(istd);
  return {chain.begin(), chain.end()};
}

TEST(StyleTable, WalksFromTheMostDistantBaseToTheStyle) {
  const Sheet sheet({Style(), Style().basedOn(0), Style().basedOn(1)});
  EXPECT_EQ(chainOf(sheet.table, 2), (std::vector<uint16_t>{0, 1, 2}));
}

TEST(StyleTable, CutsBasesThatLeadInACircle) {
  const Sheet sheet({Style().basedOn(1), Style().basedOn(2), Style().basedOn(0), Style().basedOn(3)});
  EXPECT_EQ(chainOf(sheet.table, 0), (std::vector<uint16_t>{2, 1, 0}));
  EXPECT_EQ(chainOf(sheet.table, 3), (std::vector<uint16_t>{3}));
}

TEST(StyleTable, HasAllBasesOfALongChainNearItsEnd) {
  std::vector<std::optional<Style>> styles{Style()};
  for (uint16_t istd = 1; istd < 100; ++istd) styles.emplace_back(Style().basedOn(istd - 1));
  const Sheet sheet(styles);
  const std::vector<uint16_t> chain = chainOf(sheet.table, 99);
  ASSERT_GE(chain.size(), 11u);
  EXPECT_EQ(chain.back(), 99);
  EXPECT_EQ(chain.front(), 100 - chain.size());
}

TEST(StyleTable, HasNoBasesThatAreMissingOrOfOtherKinds) {
  const Sheet sheet(
      {Style().basedOn(7), Style().kind(support::StyleKind::kCharacter).basedOn(0), {}, Style().basedOn(2)});
  EXPECT_EQ(sheet.table.Base(0), kNoStyle);
  EXPECT_EQ(sheet.table.Base(1), kNoStyle);
  EXPECT_EQ(sheet.table.Base(3), kNoStyle);
}

TEST(StyleTable, AnswersForStylesThatAreNotThere) {
  const Sheet sheet({Style(), {}});
  for (const uint16_t istd : {uint16_t{1}, uint16_t{2}, kNoStyle, uint16_t{0xFFFF}}) {
    EXPECT_EQ(sheet.table.Kind(istd), StyleKind::kNone);
    EXPECT_EQ(sheet.table.Base(istd), kNoStyle);
    EXPECT_TRUE(sheet.table.StyleName(istd).empty());
    EXPECT_TRUE(sheet.table.Papx(istd).empty());
  }
}

TEST(StyleTable, KeepsTheStylesInFrontOfTheEnd) {
  const Sheet sheet({Style().name("A"), Style().name("B")}, {.count = 9});
  EXPECT_EQ(sheet.table.Count(), 2u);
  EXPECT_EQ(sheet.table.StyleName(1), u"B");
  ASSERT_EQ(sheet.warnings.all().size(), 1u);
  EXPECT_EQ(sheet.warnings.all()[0].code, WarningCode::kTableDamaged);
}

TEST(StyleTable, FindsTheRecordBehindOneOfOddSize) {
  Bytes record = ByteWriter().zeros(21).take();
  record[2] = 1;
  const Sheet sheet({Style().rawRecord(ByteWriter().bytes(record).u8(0).take(), 21), Style().name("B")});
  EXPECT_EQ(sheet.table.StyleName(1), u"B");
}

TEST(StyleTable, SurvivesEveryCutOfASheet) {
  const Bytes whole = support::styleSheetTable(
      {Style().name("Normal").papx(kCentred).chpx(kBold),
       Style().kind(support::StyleKind::kTable).tapx(kTableLeft).papx(kCentred).chpx(kBold)},
      {});
  for (size_t size = 0; size < whole.size(); ++size) {
    const Sheet sheet(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_LE(sheet.table.Count(), 2u);
    const ByteView papx = sheet.table.Papx(0);
    EXPECT_TRUE(papx.empty() || papx.data() + papx.size() <= sheet.bytes.data() + size);
  }
}

}  // namespace
}  // namespace pagerex
