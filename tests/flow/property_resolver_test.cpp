#include "flow/property_resolver.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>

#include "flow/table_cells.h"
#include "sprm_view.h"
#include "style_sheet_of.h"
#include "support/named_sprms.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::sprm;
using support::Sprms;
using support::Style;

constexpr uint16_t kParagraphCondition = 0xC666, kRunCondition = 0xCA85;

Style characterStyle(const Sprms& chpx) {
  return Style().kind(support::StyleKind::kCharacter).chpx(chpx);
}
Style tableStyle(const Sprms& papx, const Sprms& chpx) {
  return Style().kind(support::StyleKind::kTable).papx(papx).chpx(chpx);
}

/// Lists whose levels a test gives.
class Lists : public ListLevels {
 public:
  ByteView ParagraphSprms(uint16_t ilfo, uint8_t level) override {
    const auto found = levels.find({ilfo, level});
    return found == levels.end() ? ByteView() : viewOf(found->second);
  }
  std::map<std::pair<uint16_t, uint8_t>, Sprms> levels;
};

/// A resolver with its styles and lists. It keeps the lists of sprms that it is asked for.
struct Resolved {
  explicit Resolved(const std::vector<std::optional<Style>>& styles,
                    const support::StyleSheetHeader& header = {})
      : sheet(styles, header), resolver(sheet.table, &lists) {}

  const ParagraphProperties& paragraph(uint16_t istd, const Sprms& sprms = {}, const Sprms& piece = {},
                                       const TableStylePlace& place = {}) {
    return resolver.Paragraph(istd, keep(sprms), keep(piece), place);
  }
  const RunProperties& run(uint16_t istd, const Sprms& sprms = {}, const Sprms& piece = {},
                           const TableStylePlace& place = {}) {
    return resolver.Run(keep(sprms), keep(piece), istd, place);
  }
  ByteView keep(const Sprms& sprms) { return viewOf(kept.emplace_back(sprms)); }

  SheetOfStyles sheet;
  Lists lists;
  std::deque<Sprms> kept;
  PropertyResolver resolver;
};

TEST(ResolvedParagraph, HasTheDefaultsWithoutStyles) {
  Resolved resolved({});
  EXPECT_EQ(resolved.paragraph(0), ParagraphProperties());
}

TEST(ResolvedParagraph, TakesStylesWithTheirBases) {
  Resolved resolved({Style().papx({support::spaceAfter(100), support::spaceBefore(10)}),
                     Style().basedOn(0).papx({support::spaceAfter(200), support::align(1)})});
  const ParagraphProperties& p = resolved.paragraph(1);
  EXPECT_EQ(p.spaceBefore, 10);
  EXPECT_EQ(p.spaceAfter, 200);
  EXPECT_EQ(p.alignment, Alignment::kCentre);
  EXPECT_EQ(p.style, 1);
  EXPECT_EQ(resolved.paragraph(0).spaceAfter, 100);
}

TEST(ResolvedParagraph, HasTheOutlineLevelOfAHeading) {
  Resolved resolved({Style(), Style().sti(3).basedOn(0), Style().basedOn(1)});
  EXPECT_EQ(resolved.paragraph(0).outlineLevel, 9);
  EXPECT_EQ(resolved.paragraph(1).outlineLevel, 2);
  EXPECT_EQ(resolved.paragraph(2).outlineLevel, 2);
}

TEST(ResolvedParagraph, TakesItsOwnListAndThenThatOfItsPiece) {
  Resolved resolved({Style().papx({support::spaceAfter(100), support::spaceBefore(10)})});
  const ParagraphProperties& p =
      resolved.paragraph(0, {support::spaceAfter(200), support::leftIndent(5)}, {support::leftIndent(7)});
  EXPECT_EQ(p.spaceBefore, 10);
  EXPECT_EQ(p.spaceAfter, 200);
  EXPECT_EQ(p.indentStart, 7);
}

TEST(ResolvedParagraph, IsNormalIfItsStyleIsNoneOfParagraphs) {
  Resolved resolved({Style().papx({support::spaceAfter(100)}), characterStyle({})});
  for (const uint16_t istd : {uint16_t{1}, uint16_t{2}, uint16_t{0xFFFF}}) {
    EXPECT_EQ(resolved.paragraph(istd).spaceAfter, 100);
    EXPECT_EQ(resolved.paragraph(istd).style, 0);
  }
}

TEST(ResolvedParagraph, HasTheStyleOfItsPiece) {
  Resolved resolved({Style(), Style().papx({support::spaceAfter(100)})});
  const ParagraphProperties& p = resolved.paragraph(0, {support::align(1)}, {sprm(0x4600, 1)});
  EXPECT_EQ(p.style, 1);
  EXPECT_EQ(p.spaceAfter, 100);
  EXPECT_EQ(p.alignment, Alignment::kStart) << "the new style is all that counts";
}

TEST(ResolvedParagraph, IsRaisedByItsPiece) {
  Resolved resolved({Style(), Style(), Style().papx({support::spaceAfter(100)})});
  const ParagraphProperties& p = resolved.paragraph(1, {support::align(1)}, {sprm(0x2602, 1)});
  EXPECT_EQ(p.style, 2);
  EXPECT_EQ(p.spaceAfter, 100);
  EXPECT_EQ(p.alignment, Alignment::kCentre);
}

TEST(ResolvedListItem, HasTheIndentsOfItsLevel) {
  Resolved resolved({Style().papx({support::leftIndent(5)})});
  resolved.lists.levels[{3, 1}] = {support::leftIndent(720), support::firstLine(-360)};
  const ParagraphProperties& p = resolved.paragraph(0, {support::listItem(3, 1)});
  EXPECT_EQ(p.indentStart, 720);
  EXPECT_EQ(p.indentFirstLine, -360);
  EXPECT_EQ(p.listNumber, 3);
  EXPECT_EQ(p.listLevel, 1);
}

TEST(ResolvedListItem, HasItsOwnIndentsWhereverTheyStand) {
  Resolved resolved({Style()});
  resolved.lists.levels[{3, 0}] = {support::leftIndent(720)};
  EXPECT_EQ(resolved.paragraph(0, {support::leftIndent(99), support::listItem(3, 0)}).indentStart, 99);
  EXPECT_EQ(resolved.paragraph(0, {support::listItem(3, 0), support::leftIndent(99)}).indentStart, 99);
}

TEST(ResolvedListItem, HasTheLevelOfItsStylesList) {
  Resolved resolved({Style(), Style().basedOn(0).papx({support::listItem(3, 1), support::rightIndent(9)}),
                     Style().basedOn(1).papx({support::spaceAfter(7)})});
  resolved.lists.levels[{3, 1}] = {support::leftIndent(720), support::rightIndent(8)};
  resolved.lists.levels[{3, 2}] = {support::leftIndent(1440)};
  EXPECT_EQ(resolved.paragraph(1).indentStart, 720);
  EXPECT_EQ(resolved.paragraph(1).indentEnd, 9) << "the style's own";
  EXPECT_EQ(resolved.paragraph(2).indentStart, 720) << "that of the base";
  EXPECT_EQ(resolved.paragraph(2, {support::spaceAfter(1)}).listNumber, 3);
  EXPECT_EQ(resolved.paragraph(2, {sprm(0x260A, 2)}).indentStart, 1440) << "another level of that list";
}

TEST(ResolvedListItem, KeepsIndentsWithANegativeNumber) {
  Resolved resolved({Style().papx({support::leftIndent(5)})});
  resolved.lists.levels[{3, 0}] = {support::leftIndent(720)};
  const ParagraphProperties& p = resolved.paragraph(0, {sprm(0x460B, -3)});
  EXPECT_EQ(p.indentStart, 5);
  EXPECT_EQ(p.listNumber, 3);
}

TEST(ResolvedListItem, IsNoneAnyMoreWithNumberZero) {
  Resolved resolved({Style().papx({support::listItem(3, 1), support::spaceAfter(7)})});
  resolved.lists.levels[{3, 1}] = {support::leftIndent(720)};
  EXPECT_EQ(resolved.paragraph(0).indentStart, 720);
  const ParagraphProperties& p = resolved.paragraph(0, {sprm(0x460B, 0)});
  EXPECT_EQ(p.listNumber, 0);
  EXPECT_EQ(p.indentStart, 0) << "nothing of the level";
  EXPECT_EQ(p.spaceAfter, 7) << "what else the style says";
}

TEST(ResolvedParagraph, NeedsNoLists) {
  const SheetOfStyles sheet({Style().papx({support::listItem(3, 1)})});
  PropertyResolver resolver(sheet.table, nullptr);
  EXPECT_EQ(resolver.Paragraph(0, {}, {}, {}).listNumber, 3);
}

TEST(ResolvedParagraph, TakesTheTableStyleUnderItsOwn) {
  Resolved resolved({Style().papx({support::spaceBefore(10)}),
                     tableStyle({support::spaceBefore(1), support::spaceAfter(2)}, {})});
  const ParagraphProperties& p = resolved.paragraph(0, {support::leftIndent(3)}, {}, {1, 0});
  EXPECT_EQ(p.spaceBefore, 10);
  EXPECT_EQ(p.spaceAfter, 2);
  EXPECT_EQ(p.indentStart, 3);
  EXPECT_EQ(p.style, 0);
  EXPECT_EQ(resolved.paragraph(0).spaceAfter, 0) << "outside of the table";
}

TEST(ResolvedParagraph, TakesTheConditionsThatHold) {
  Resolved resolved(
      {Style(),
       tableStyle({support::align(2), conditional(kParagraphCondition, kFirstRow, {support::align(1)}),
                   conditional(kParagraphCondition, kFirstColumn, {support::spaceAfter(3)})},
                  {})});
  EXPECT_EQ(resolved.paragraph(0, {}, {}, {1, 0}).alignment, Alignment::kEnd);
  EXPECT_EQ(resolved.paragraph(0, {}, {}, {1, kFirstRow}).alignment, Alignment::kCentre);
  EXPECT_EQ(resolved.paragraph(0, {}, {}, {1, kFirstRow}).spaceAfter, 0);
  EXPECT_EQ(resolved.paragraph(0, {}, {}, {1, kFirstRow | kFirstColumn}).spaceAfter, 3);
  EXPECT_EQ(resolved.paragraph(0, {support::align(0)}, {}, {1, kFirstRow}).alignment, Alignment::kStart);
}

TEST(ResolvedParagraph, LeavesAlignmentToTheTableStyleIfItsOwnSaysTheDefault) {
  Resolved resolved({Style().papx({support::align(0)}), tableStyle({support::align(1)}, {}),
                     Style().papx({support::align(2)})});
  EXPECT_EQ(resolved.paragraph(0, {}, {}, {1, 0}).alignment, Alignment::kCentre);
  EXPECT_EQ(resolved.paragraph(2, {}, {}, {1, 0}).alignment, Alignment::kEnd);
}

TEST(ResolvedRun, HasTheDefaultFonts) {
  Resolved resolved({}, {.defaultFontAscii = 3, .defaultFontFarEast = 4, .defaultFontComplex = 5});
  EXPECT_EQ(resolved.run(0).fonts, (FontNumbers{3, 4, 5, 0}));
  EXPECT_EQ(resolved.run(0).sizeHalfPoints, 20);
  EXPECT_EQ(resolved.run(0).characterStyle, 10);
}

TEST(ResolvedRun, TakesParagraphStylesWithTheirBases) {
  Resolved resolved({Style().chpx({support::fontSize(24), support::underline(1)}),
                     Style().basedOn(0).chpx({support::fontSize(32)})});
  EXPECT_EQ(resolved.run(1).sizeHalfPoints, 32);
  EXPECT_EQ(resolved.run(1).underline, 1);
  EXPECT_EQ(&resolved.resolver.ParagraphStyleRun(1), &resolved.run(1));
}

TEST(ResolvedRun, TakesTheOppositeOfItsBasesToggle) {
  Resolved resolved({Style().chpx({support::bold()}), Style().basedOn(0).chpx({support::bold(0x81)}),
                     Style().basedOn(0).chpx({support::bold(0x80)})});
  EXPECT_FALSE(resolved.run(1).bold);
  EXPECT_TRUE(resolved.run(2).bold);
}

TEST(ResolvedRun, TakesItsOwnListAndThenThatOfItsPiece) {
  Resolved resolved({Style().chpx({support::fontSize(24)})});
  const RunProperties& run =
      resolved.run(0, {support::bold(), support::fontSize(30)}, {support::fontSize(36)});
  EXPECT_TRUE(run.bold);
  EXPECT_EQ(run.sizeHalfPoints, 36);
}

TEST(ResolvedRun, TakesItsCharacterStyleUnderItsOwnList) {
  Resolved resolved({Style().chpx({support::fontSize(24)}),
                     characterStyle({support::fontSize(30), support::underline(1)}),
                     characterStyle({support::underline(3)}).basedOn(1)});
  const RunProperties& run = resolved.run(0, {support::characterStyle(2), support::fontSize(40)});
  EXPECT_EQ(run.sizeHalfPoints, 40);
  EXPECT_EQ(run.underline, 3);
  EXPECT_EQ(run.characterStyle, 2);
  EXPECT_EQ(resolved.run(0, {support::characterStyle(2)}).sizeHalfPoints, 30) << "that of the base";
}

TEST(ResolvedRun, TakesTheCharacterStyleOfItsPiece) {
  Resolved resolved({Style(), characterStyle({support::underline(3)})});
  EXPECT_EQ(resolved.run(0, {}, {support::characterStyle(1)}).underline, 3);
}

TEST(ResolvedRun, IsNotBoldIfItsParagraphAndItsCharacterStyleAre) {
  Resolved resolved({Style(), Style().chpx({support::bold()}), characterStyle({support::bold(0x81)}),
                     characterStyle({support::italic()}).basedOn(2),
                     characterStyle({support::bold(0x81)}).basedOn(2)});
  EXPECT_TRUE(resolved.run(0, {support::characterStyle(2)}).bold);
  EXPECT_TRUE(resolved.run(1).bold);
  EXPECT_FALSE(resolved.run(1, {support::characterStyle(2)}).bold);
  EXPECT_FALSE(resolved.run(1, {support::characterStyle(3)}).bold);
  EXPECT_TRUE(resolved.run(1, {support::characterStyle(3)}).italic);
  EXPECT_FALSE(resolved.run(1, {support::characterStyle(4)}).bold) << "its base says so, too";
  EXPECT_TRUE(resolved.run(1, {support::characterStyle(2), support::bold()}).bold);
  EXPECT_TRUE(resolved.run(1, {support::characterStyle(2), support::bold(0x81)}).bold);
  EXPECT_FALSE(resolved.run(1, {support::characterStyle(2), support::bold(0x80)}).bold);
}

TEST(ResolvedRun, IsBoldOrNotIfItsCharacterStyleSaysSoOutright) {
  Resolved resolved({Style().chpx({support::bold()}), characterStyle({support::bold(1)}),
                     characterStyle({support::bold(0)})});
  EXPECT_TRUE(resolved.run(0, {support::characterStyle(1)}).bold);
  EXPECT_FALSE(resolved.run(0, {support::characterStyle(2)}).bold);
}

TEST(ResolvedRun, HasNoCharacterStyleOfAnotherKind) {
  Resolved resolved({Style(), Style().chpx({support::bold()})});
  EXPECT_FALSE(resolved.run(0, {support::characterStyle(1)}).bold);
  EXPECT_FALSE(resolved.run(0, {support::characterStyle(99)}).bold);
}

TEST(ResolvedRun, TakesTheTableStyleAndItsConditions) {
  Resolved resolved({Style(), tableStyle({}, {support::underline(1),
                                              conditional(kRunCondition, kFirstRow, {support::bold()})})});
  EXPECT_EQ(resolved.run(0, {}, {}, {1, 0}).underline, 1);
  EXPECT_FALSE(resolved.run(0, {}, {}, {1, 0}).bold);
  EXPECT_TRUE(resolved.run(0, {}, {}, {1, kFirstRow}).bold);
  EXPECT_FALSE(resolved.run(0, {support::bold(0)}, {}, {1, kFirstRow}).bold);
}

TEST(ResolvedRun, JudgesTheTogglesOfItsStyleByTheTable) {
  Resolved resolved({Style().chpx({support::bold(0x81)}), tableStyle({}, {support::bold()}),
                     Style().chpx({support::bold()})});
  EXPECT_FALSE(resolved.run(0, {}, {}, {1, 0}).bold);
  EXPECT_TRUE(resolved.run(2, {}, {}, {1, 0}).bold);
}

TEST(ResolvedRun, LeavesItsSizeToTheTableStyleIfItsOwnSaysTheDefault) {
  Resolved resolved({Style().chpx({support::fontSize(20)}), tableStyle({}, {support::fontSize(16)}),
                     Style().chpx({support::fontSize(30)})});
  EXPECT_EQ(resolved.run(0, {}, {}, {1, 0}).sizeHalfPoints, 16);
  EXPECT_EQ(resolved.run(2, {}, {}, {1, 0}).sizeHalfPoints, 30);
  EXPECT_EQ(resolved.run(0, {support::fontSize(20)}, {}, {1, 0}).sizeHalfPoints, 20);
}

TEST(ResolvedRun, HasOneAddressForEqualProperties) {
  Resolved resolved({Style(), Style()});
  const RunProperties& bold = resolved.run(0, {support::bold()});
  EXPECT_EQ(&resolved.run(0, {support::bold(), sprm(0x6815, 7)}), &bold) << "saved at another time";
  EXPECT_EQ(&resolved.run(1, {}, {support::bold()}), &bold);
  EXPECT_NE(&resolved.run(0), &bold);
}

TEST(ResolvedRun, IsResolvedAnewForAnotherPlaceOfTheSameList) {
  Resolved resolved({Style(), Style().chpx({support::bold()}), tableStyle({}, {support::italic()})});
  const ByteView list = resolved.keep({support::underline(1)});
  EXPECT_FALSE(resolved.resolver.Run(list, {}, 0, {}).bold);
  EXPECT_TRUE(resolved.resolver.Run(list, {}, 1, {}).bold);
  EXPECT_TRUE(resolved.resolver.Run(list, {}, 1, {2, 0}).italic);
  EXPECT_EQ(resolved.resolver.Run(list.part(0, 0), {}, 1, {2, 0}).underline, 0);
}

TEST(ResolvedLabel, HasThePropertiesOfTheMarkAndOfItsLevel) {
  Resolved resolved({Style().chpx({support::fontSize(24)})});
  const RunProperties& label = resolved.resolver.Label(
      resolved.keep({support::bold(), support::underline(1)}), {}, resolved.keep({support::italic()}), 0, {});
  EXPECT_TRUE(label.bold);
  EXPECT_TRUE(label.italic);
  EXPECT_EQ(label.underline, 0) << "not underlined with the mark";
  EXPECT_EQ(label.sizeHalfPoints, 24);
}

TEST(ResolvedLabel, IsUnderlinedByItsLevel) {
  Resolved resolved({Style()});
  const ByteView underlined = resolved.keep({support::underline(1)});
  EXPECT_EQ(resolved.resolver.Label({}, {}, underlined, 0, {}).underline, 1);
  EXPECT_EQ(resolved.resolver.Run(underlined, {}, 0, {}).underline, 1);
  EXPECT_EQ(resolved.resolver.Label(underlined, {}, {}, 0, {}).underline, 0);
}

TEST(PropertyResolver, KeepsWhatItToldUntilItMayForget) {
  Resolved resolved({Style()});
  const ParagraphProperties& first = resolved.paragraph(0, {support::spaceAfter(1)});
  const RunProperties& run = resolved.run(0, {support::fontSize(2)});
  for (int i = 2; i < 20000; ++i) {
    resolved.paragraph(0, {support::spaceAfter(i)});
    resolved.run(0, {support::fontSize(i + 1)});
  }
  EXPECT_EQ(first.spaceAfter, 1);
  EXPECT_EQ(run.sizeHalfPoints, 2);
  EXPECT_EQ(&resolved.run(0, {support::fontSize(2)}), &run);
}

TEST(PropertyResolver, TellsTheSameWhenItHasForgotten) {
  Resolved resolved({Style()});
  for (int i = 1; i < 70000; ++i) {
    const Sprms size{support::fontSize(i % 65536), support::letterSpacing(i / 65536)};
    const Sprms space{support::spaceAfter(i % 65536)};
    EXPECT_EQ(resolved.run(0, size).sizeHalfPoints, i % 65536);
    EXPECT_EQ(resolved.paragraph(0, space).spaceAfter, i % 65536);
    resolved.resolver.MayForget();
  }
}

TEST(PropertyResolver, DoesNotApplyEndlessListsAnewForEachPlace) {
  Sprms endless;
  for (int i = 0; i < 3000; ++i) endless.add(support::fontSize(40));
  Resolved resolved({Style().chpx(endless), characterStyle(endless), tableStyle({}, {support::italic()})});
  EXPECT_EQ(resolved.run(0).sizeHalfPoints, 40) << "once for all";
  EXPECT_FALSE(resolved.run(0, {}, {}, {2, 0}).italic);
  Resolved other({Style(), characterStyle(endless)});
  EXPECT_EQ(other.run(0, {support::characterStyle(1)}).sizeHalfPoints, 20);
}

TEST(PropertyResolver, SurvivesEveryCutOfAList) {
  Resolved resolved({Style().papx({support::listItem(3, 1)})});
  const Sprms whole{support::listItem(3, 1),
                    sprm(0xC601, Bytes(9, 1)),
                    support::tabsSprm({{700}, {800}}, {900}),
                    sprm(0x4600, 0),
                    support::bold(),
                    support::characterStyle(4),
                    sprm(0xCA71, support::Shading{}.bytes())};
  for (size_t size = 0; size < whole.size(); ++size) {
    const Bytes cut(whole.bytes().begin(), whole.bytes().begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(resolved.paragraph(0, cut, cut).style, 0);
    EXPECT_EQ(resolved.run(0, cut, cut).sizeHalfPoints, 20);
  }
}

}  // namespace
}  // namespace pagerex
