#include "flow/paragraph_sprms.h"

#include <gtest/gtest.h>

#include <functional>

#include "sprm_view.h"
#include "support/named_sprms.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::rgb;
using support::sprm;
using support::Sprms;

ParagraphProperties applied(const Sprms& sprms, ParagraphProperties properties = {}) {
  applyParagraphSprms(viewOf(sprms), properties);
  return properties;
}

using Set = std::function<void(ParagraphProperties&)>;
struct Case {
  Bytes sprm;
  Set set;  ///< makes of the defaults what the sprm must make of them
};

const Border kRed = {3, 12, 4, false, {0xFF0000, false}};
const Bytes kRedBrc = support::Border{rgb(255, 0, 0), 12, 3, 4}.bytes();
const Bytes kRedBrc80 = support::Border80{12, 3, 6, 4}.bytes();
using P = ParagraphProperties;

Frame frame(const std::function<void(Frame&)>& set) {
  Frame result;
  result.isThere = true;
  set(result);
  return result;
}

const Case kCases[] = {
    {sprm(0x2403, 2), [](P& p) { p.alignment = Alignment::kEnd; }},
    {sprm(0x2461, 1), [](P& p) { p.alignment = Alignment::kCentre; }},
    {sprm(0x2405, 1), [](P& p) { p.keepLines = true; }},
    {sprm(0x2406, 1), [](P& p) { p.keepWithNext = true; }},
    {sprm(0x2407, 1), [](P& p) { p.pageBreakBefore = true; }},
    {sprm(0x260A, 3), [](P& p) { p.listLevel = 3; }},
    {sprm(0x460B, 7), [](P& p) { p.listNumber = 7; }},
    {sprm(0x240C, 1), [](P& p) { p.noLineNumbers = true; }},
    {support::tabsSprm({{720, 1, 2}}),
     [](P& p) {
       p.tabs = {{720, 1, 2}};
     }},
    {sprm(0x840E, 100), [](P& p) { p.indentEnd = 100; }},
    {sprm(0x840F, -200), [](P& p) { p.indentStart = -200; }},
    {sprm(0x4610, 360), [](P& p) { p.indentStart = 360; }},
    {sprm(0x8411, -300), [](P& p) { p.indentFirstLine = -300; }},
    {sprm(0x845D, 100), [](P& p) { p.indentEnd = 100; }},
    {sprm(0x845E, -200), [](P& p) { p.indentStart = -200; }},
    {sprm(0x465F, 360), [](P& p) { p.indentStart = 360; }},
    {sprm(0x8460, -300), [](P& p) { p.indentFirstLine = -300; }},
    {sprm(0x4455, 200), [](P& p) { p.indentEnd = 420; }},
    {sprm(0x4456, 100), [](P& p) { p.indentStart = 210; }},
    {sprm(0x4457, 200), [](P& p) { p.indentFirstLine = 420; }},
    {sprm(0xA413, 120), [](P& p) { p.spaceBefore = 120; }},
    {sprm(0xA414, 140), [](P& p) { p.spaceAfter = 140; }},
    {sprm(0x245B, 1), [](P& p) { p.autoSpaceBefore = true; }},
    {sprm(0x245C, 1), [](P& p) { p.autoSpaceAfter = true; }},
    {sprm(0x246D, 1), [](P& p) { p.spacesOnlyBetweenStyles = true; }},
    {sprm(0xC615, Bytes{0, 1, 0xD0, 0x02, 0x03}),
     [](P& p) {
       p.tabs = {{720, 3, 0}};
     }},
    {sprm(0x8418, 50), [](P& p) { p.frame = frame([](Frame& f) { f.left = 50; }); }},
    {sprm(0x8419, -8), [](P& p) { p.frame = frame([](Frame& f) { f.top = -8; }); }},
    {sprm(0x841A, 900), [](P& p) { p.frame = frame([](Frame& f) { f.width = 900; }); }},
    {sprm(0x261B, 0x60),
     [](P& p) { p.frame = frame([](Frame& f) { f.verticalAnchor = 2, f.horizontalAnchor = 1; }); }},
    {sprm(0x2423, 2), [](P& p) { p.frame = frame([](Frame& f) { f.wrap = 2; }); }},
    {sprm(0x442B, 0x8190),
     [](P& p) { p.frame = frame([](Frame& f) { f.height = 400, f.isLeastHeight = true; }); }},
    {sprm(0x442C, 3 << 3 | 2),
     [](P& p) { p.frame = frame([](Frame& f) { f.dropCapLines = 3, f.isDropCapInMargin = true; }); }},
    {sprm(0x6424, 0x0406030C), [](P& p) { p.top = kRed; }},
    {sprm(0x6425, 0x0406030C), [](P& p) { p.start = kRed; }},
    {sprm(0x6426, 0x0406030C), [](P& p) { p.bottom = kRed; }},
    {sprm(0x6427, 0x0406030C), [](P& p) { p.end = kRed; }},
    {sprm(0x6428, 0x0406030C), [](P& p) { p.between = kRed; }},
    {sprm(0x6629, kRedBrc80), [](P& p) { p.bar = kRed; }},
    {sprm(0xC64E, kRedBrc), [](P& p) { p.top = kRed; }},
    {sprm(0xC64F, kRedBrc), [](P& p) { p.start = kRed; }},
    {sprm(0xC650, kRedBrc), [](P& p) { p.bottom = kRed; }},
    {sprm(0xC651, kRedBrc), [](P& p) { p.end = kRed; }},
    {sprm(0xC652, kRedBrc), [](P& p) { p.between = kRed; }},
    {sprm(0xC653, kRedBrc), [](P& p) { p.bar = kRed; }},
    {sprm(0x442D, 7 << 5),
     [](P& p) {
       p.shading = {true, {0xFFFF00, false}};
     }},
    {sprm(0xC64D, support::Shading{.background = rgb(1, 2, 3)}.bytes()),
     [](P& p) {
       p.shading = {true, {0x010203, false}};
     }},
    {sprm(0x242A, 1), [](P& p) { p.noHyphens = true; }},
    {sprm(0x2431, 0), [](P& p) { p.widowControl = false; }},
    {sprm(0x443A, 1), [](P& p) { p.textFlow = 1; }},
    {sprm(0x2640, 2), [](P& p) { p.outlineLevel = 2; }},
    {sprm(0x2441, 1), [](P& p) { p.isRightToLeft = true; }},
    {support::lineSpacing(360, true), [](P& p) { p.lineHeight = 360; }},
};

TEST(ParagraphSprms, SetTheirPropertiesAndNoOthers) {
  for (const Case& each : kCases) {
    ParagraphProperties expected;
    each.set(expected);
    EXPECT_NE(expected, ParagraphProperties());
    EXPECT_EQ(applied(each.sprm), expected) << std::hex << (each.sprm[0] | each.sprm[1] << 8);
  }
}

TEST(ParagraphSprms, SkipWhatTheyDoNotKnow) {
  EXPECT_EQ(applied({sprm(0x6467, 9), sprm(0x0835, 1), sprm(0xC645, Bytes(40)), sprm(0x4439, 2)}),
            ParagraphProperties());
}

TEST(ParagraphSprms, CountMissingBytesAsZero) {
  EXPECT_EQ(applied(Bytes{0x13, 0xA4, 0x20}).spaceBefore, 0x20);
  EXPECT_EQ(applied(Bytes{0x13}), ParagraphProperties());
}

TEST(ParagraphAlignment, IsJustifiedInAllItsKinds) {
  EXPECT_EQ(applied({support::align(0)}).alignment, Alignment::kStart);
  EXPECT_EQ(applied({support::align(4)}).alignment, Alignment::kDistribute);
  for (const int kind : {3, 5, 7, 8, 9}) {
    EXPECT_EQ(applied({support::align(kind)}).alignment, Alignment::kJustify) << kind;
  }
  EXPECT_EQ(applied({support::align(200)}).alignment, Alignment::kStart);
}

TEST(ParagraphAlignment, OfWord97IsASideWhicheverWayTextRuns) {
  EXPECT_EQ(applied({sprm(0x2403, 0), sprm(0x2441, 1)}).alignment, Alignment::kEnd);
  EXPECT_EQ(applied({sprm(0x2441, 1), sprm(0x2403, 2)}).alignment, Alignment::kStart);
  EXPECT_EQ(applied({sprm(0x2403, 1), sprm(0x2441, 1)}).alignment, Alignment::kCentre);
}

TEST(ParagraphAlignment, OfLaterWordOverridesThatOfWord97) {
  EXPECT_EQ(applied({sprm(0x2403, 2), support::align(0), sprm(0x2441, 1)}).alignment, Alignment::kStart);
}

TEST(ParagraphIndents, OfWord97AreSidesWhicheverWayTextRuns) {
  const ParagraphProperties p = applied({sprm(0x840F, 100), sprm(0x840E, 200), sprm(0x2441, 1)});
  EXPECT_EQ(p.indentEnd, 100);
  EXPECT_EQ(p.indentStart, 200);
}

TEST(ParagraphIndents, OfLaterWordOverrideThoseOfWord97) {
  const ParagraphProperties p =
      applied({sprm(0x840F, 100), sprm(0x840E, 200), sprm(0x845E, 1), sprm(0x845D, 2), sprm(0x2441, 1)});
  EXPECT_EQ(p.indentStart, 1);
  EXPECT_EQ(p.indentEnd, 2);
}

TEST(ParagraphIndents, InCharactersCountOnlyWithoutLengths) {
  const ParagraphProperties p =
      applied({sprm(0x4456, 200), sprm(0x845E, 500), sprm(0x4457, 200), sprm(0x8460, 40)});
  EXPECT_EQ(p.indentStart, 500);
  EXPECT_EQ(p.indentFirstLine, 40);
}

TEST(ParagraphIndents, NestInTheOnesBefore) {
  ParagraphProperties base;
  base.indentStart = 300;
  EXPECT_EQ(applied({sprm(0x465F, 360)}, base).indentStart, 660);
  EXPECT_EQ(applied({sprm(0x4610, 360)}, base).indentStart, 660);
  EXPECT_EQ(applied({sprm(0x840F, 100), sprm(0x4610, 360)}, base).indentStart, 460);
  EXPECT_EQ(applied({sprm(0x465F, -360)}, base).indentStart, 0);
}

TEST(ParagraphLines, AreSpacedByMultipleLeastOrExactly) {
  using Spacing = ParagraphProperties::LineSpacing;
  const ParagraphProperties least = applied({support::lineSpacing(300, false)});
  EXPECT_EQ(least.lineSpacing, Spacing::kAtLeast);
  EXPECT_EQ(least.lineHeight, 300);
  const ParagraphProperties exact = applied({support::lineSpacing(-280, false)});
  EXPECT_EQ(exact.lineSpacing, Spacing::kExactly);
  EXPECT_EQ(exact.lineHeight, 280);
  const ParagraphProperties single = applied({support::lineSpacing(0, false)}, exact);
  EXPECT_EQ(single.lineSpacing, Spacing::kMultiple);
  EXPECT_EQ(single.lineHeight, 240);
}

TEST(ParagraphTabs, AreKeptByPosition) {
  const ParagraphProperties p =
      applied({support::tabsSprm({{2000}, {500}}), support::tabsSprm({{1000, 2, 1}, {500, 1}})});
  EXPECT_EQ(p.tabs, (std::vector<TabStop>{{500, 1, 0}, {1000, 2, 1}, {2000, 0, 0}}));
}

TEST(ParagraphTabs, AreDeletedWithinTwentyFiveTwips) {
  const Sprms tabs{support::tabsSprm({{500}, {525}, {526}})};
  const ParagraphProperties p = applied(Sprms(tabs).add(support::tabsSprm({}, {500})));
  EXPECT_EQ(p.tabs, (std::vector<TabStop>{{526, 0, 0}}));
}

TEST(ParagraphTabs, AreDeletedWithinTheDistanceGiven) {
  const Bytes change = sprm(0xC615, ByteWriter().u8(2).u16(1000).u16(3000).u16(200).u16(1).u8(0).take());
  const ParagraphProperties p =
      applied(Sprms{support::tabsSprm({{799}, {800}, {1200}, {1201}, {2974}, {2975}, {3025}}), change});
  EXPECT_EQ(p.tabs, (std::vector<TabStop>{{799, 0, 0}, {1201, 0, 0}, {2974, 0, 0}}));
}

TEST(ParagraphTabs, MayBeMoreThanALengthByteTells) {
  ByteWriter operand;
  operand.u8(60);
  for (uint32_t i = 0; i < 60; ++i) operand.u16(10000 + i);
  operand.zeros(120).u8(1).u16(700).u8(2);
  const ParagraphProperties p =
      applied(Sprms{support::tabsSprm({{10010}}), sprm(0xC615, operand.take()), support::spaceAfter(5)});
  EXPECT_EQ(p.tabs, (std::vector<TabStop>{{700, 2, 0}}));
  EXPECT_EQ(p.spaceAfter, 5);
}

TEST(ParagraphTabs, EndWhereTheirBytesEnd) {
  EXPECT_TRUE(applied(sprm(0xC60D, Bytes{200, 1, 2})).tabs.empty());
  EXPECT_TRUE(applied(sprm(0xC60D, Bytes{0, 3, 0xD0, 2})).tabs.empty());
  EXPECT_TRUE(applied(sprm(0xC60D, Bytes{})).tabs.empty());
}

TEST(ParagraphTabs, AreNoMoreThanWordHas) {
  Sprms list;
  for (int i = 0; i < 100; ++i) list.add(support::tabsSprm({{static_cast<int16_t>(i * 60)}}));
  EXPECT_EQ(applied(list).tabs.size(), 64u);
}

TEST(ParagraphList, IsNoneOutsideTheNumbersOfLists) {
  EXPECT_EQ(applied({sprm(0x460B, 0x7FE)}).listNumber, 0x7FE);
  EXPECT_EQ(applied({sprm(0x460B, 0x7FF)}).listNumber, 0);
  EXPECT_EQ(applied({sprm(0x460B, 0xF801)}).listNumber, 0) << "numbers of Word 6";
  EXPECT_EQ(applied({sprm(0x460B, -3)}).listNumber, 3) << "with indents of its own";
  EXPECT_EQ(applied({sprm(0x460B, 0x8000)}).listNumber, 0);
  EXPECT_EQ(applied({sprm(0x260A, 200)}).listLevel, 8);
}

TEST(ParagraphOutlineLevel, IsBodyTextAtMost) {
  EXPECT_EQ(applied({support::outlineLevel(77)}).outlineLevel, 9);
}

TEST(ParagraphFrame, KeepsAnchorsThatAreNotToldAnew) {
  const ParagraphProperties p = applied({sprm(0x261B, 0x90), sprm(0x261B, 0xF0)});
  EXPECT_EQ(p.frame.horizontalAnchor, 2);
  EXPECT_EQ(p.frame.verticalAnchor, 1);
}

TEST(ParagraphFrame, EndsWithItsLastProperty) {
  EXPECT_FALSE(applied({sprm(0x841A, 900), sprm(0x841A, 0)}).frame.isThere);
  EXPECT_EQ(applied({sprm(0x442C, 3 << 3)}).frame.dropCapLines, 0) << "lines of no drop cap";
}

TEST(TablePlace, IsOutsideOfTables) {
  const TablePlace place = tablePlaceOf(viewOf({support::align(1)}));
  EXPECT_EQ(place.depth, 0);
  EXPECT_FALSE(place.isRowEnd || place.isInnerCellEnd || place.isInnerRowEnd);
}

TEST(TablePlace, IsInATableOfWord97) {
  EXPECT_EQ(tablePlaceOf(viewOf({sprm(0x2416, 1)})).depth, 1);
  EXPECT_EQ(tablePlaceOf(viewOf({sprm(0x2416, 1), sprm(0x2416, 0)})).depth, 0);
}

TEST(TablePlace, TellsRowEnds) {
  const TablePlace place = tablePlaceOf(viewOf({sprm(0x2416, 1), sprm(0x2417, 1)}));
  EXPECT_EQ(place.depth, 1);
  EXPECT_TRUE(place.isRowEnd);
}

TEST(TablePlace, TellsTablesInTables) {
  const Sprms list{sprm(0x2416, 1), sprm(0x6649, 2), sprm(0x244B, 1), sprm(0x244C, 1)};
  const TablePlace place = tablePlaceOf(viewOf(list));
  EXPECT_EQ(place.depth, 2);
  EXPECT_TRUE(place.isInnerCellEnd);
  EXPECT_TRUE(place.isInnerRowEnd);
}

TEST(TablePlace, AddsToTheDepth) {
  EXPECT_EQ(tablePlaceOf(viewOf({sprm(0x6649, 2), sprm(0x664A, 3)})).depth, 5);
  EXPECT_EQ(tablePlaceOf(viewOf({sprm(0x6649, 2), sprm(0x664A, -3)})).depth, 0);
  EXPECT_EQ(tablePlaceOf(viewOf({sprm(0x664A, 1)}), {.depth = 1}).depth, 2);
}

TEST(TablePlace, HasADepthWhateverTheNumber) {
  EXPECT_EQ(tablePlaceOf(viewOf({sprm(0x6649, 0x7FFFFFFF), sprm(0x664A, 0x7FFFFFFF)})).depth, 255);
  EXPECT_EQ(tablePlaceOf(viewOf({sprm(0x6649, 0x80000000), sprm(0x664A, 0x80000000)})).depth, 0);
}

TEST(HugeOffset, IsTheOneInTheStreamOfData) {
  uint32_t offset = 1;
  EXPECT_FALSE(hugeOffset(viewOf({support::align(1)}), offset));
  EXPECT_EQ(offset, 1u);
  EXPECT_TRUE(hugeOffset(viewOf({sprm(0x6646, 0x1234)}), offset));
  EXPECT_EQ(offset, 0x1234u);
  EXPECT_TRUE(hugeOffset(viewOf({sprm(0x6645, 0x4321)}), offset));
  EXPECT_EQ(offset, 0x4321u);
}

ParagraphNames namesOf(const Sprms& sprms, uint16_t style) {
  ParagraphNames names;
  names.style = style;
  readParagraphNames(viewOf(sprms), names);
  return names;
}

TEST(ParagraphNames, TellStyleAndList) {
  const ParagraphNames none = namesOf({support::align(1)}, 4);
  EXPECT_EQ(none.style, 4);
  EXPECT_FALSE(none.setsStyle || none.setsList);
  const ParagraphNames all = namesOf({sprm(0x4600, 12), support::listItem(7, 2)}, 4);
  EXPECT_EQ(all.style, 12);
  EXPECT_TRUE(all.setsStyle);
  EXPECT_TRUE(all.setsList);
  EXPECT_EQ(all.listNumber, 7);
  EXPECT_EQ(all.listLevel, 2);
}

TEST(ParagraphNames, PermuteStyles) {
  const Bytes permute = sprm(0xC601, ByteWriter().u16(0).u16(4).u16(6).u16(14).u16(15).u16(16).take());
  EXPECT_EQ(namesOf(permute, 3).style, 3);
  EXPECT_EQ(namesOf(permute, 4).style, 14);
  EXPECT_EQ(namesOf(permute, 6).style, 16);
  EXPECT_EQ(namesOf(permute, 7).style, 7);
}

TEST(ParagraphNames, KeepAStyleWhosePermutationIsCut) {
  const Bytes permute = sprm(0xC601, ByteWriter().u16(0).u16(4).u16(600).u16(14).take());
  EXPECT_EQ(namesOf(permute, 5).style, 5);
}

TEST(ParagraphNames, RaiseAndLowerHeadings) {
  EXPECT_EQ(namesOf({sprm(0x2602, 2)}, 1).style, 3);
  EXPECT_EQ(namesOf({sprm(0x2602, -5)}, 3).style, 1);
  EXPECT_EQ(namesOf({sprm(0x2602, 100)}, 3).style, 9);
  EXPECT_EQ(namesOf({sprm(0x2602, 1)}, 0).style, 0);
  EXPECT_EQ(namesOf({sprm(0x2602, 1)}, 10).style, 10);
}

}  // namespace
}  // namespace pagerex
