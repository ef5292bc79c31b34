#include "flow/run_sprms.h"

#include <gtest/gtest.h>

#include <functional>

#include "sprm_view.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::rgb;
using support::sprm;
using support::Sprms;

RunProperties applied(const Sprms& sprms, const RunProperties& style = {}) {
  RunProperties properties = style;
  applyRunSprms(viewOf(sprms), properties, style);
  return properties;
}

using Set = std::function<void(RunProperties&)>;
struct Case {
  Bytes sprm;
  Set set;  ///< makes of the defaults what the sprm must make of them
};

Border redBorder() {
  return {3, 12, 4, false, {0xFF0000, false}};
}

const Case kCases[] = {
    {sprm(0x0835, 1), [](RunProperties& p) { p.bold = true; }},
    {sprm(0x0836, 1), [](RunProperties& p) { p.italic = true; }},
    {sprm(0x0837, 1), [](RunProperties& p) { p.strike = true; }},
    {sprm(0x0838, 1), [](RunProperties& p) { p.outline = true; }},
    {sprm(0x0839, 1), [](RunProperties& p) { p.shadow = true; }},
    {sprm(0x083A, 1), [](RunProperties& p) { p.smallCaps = true; }},
    {sprm(0x083B, 1), [](RunProperties& p) { p.caps = true; }},
    {sprm(0x083C, 1), [](RunProperties& p) { p.hidden = true; }},
    {sprm(0x0854, 1), [](RunProperties& p) { p.imprint = true; }},
    {sprm(0x0858, 1), [](RunProperties& p) { p.emboss = true; }},
    {sprm(0x2A53, 1), [](RunProperties& p) { p.doubleStrike = true; }},
    {sprm(0x085A, 1), [](RunProperties& p) { p.isRightToLeft = true; }},
    {sprm(0x0882, 1), [](RunProperties& p) { p.isComplexScript = true; }},
    {sprm(0x0875, 1), [](RunProperties& p) { p.noProof = true; }},
    {sprm(0x2A3E, 3), [](RunProperties& p) { p.underline = 3; }},
    {sprm(0x2A0C, 7), [](RunProperties& p) { p.highlight = 7; }},
    {sprm(0x2A48, 1), [](RunProperties& p) { p.verticalAlignment = 1; }},
    {sprm(0x2A34, 2), [](RunProperties& p) { p.emphasisMark = 2; }},
    {sprm(0x4A43, 28), [](RunProperties& p) { p.sizeHalfPoints = 28; }},
    {sprm(0x4A61, 26), [](RunProperties& p) { p.complexSizeHalfPoints = 26; }},
    {sprm(0x8840, -15), [](RunProperties& p) { p.spacing = -15; }},
    {sprm(0x4852, 150), [](RunProperties& p) { p.scalePercent = 150; }},
    {sprm(0x4845, -6), [](RunProperties& p) { p.raisedHalfPoints = -6; }},
    {sprm(0x484B, 24), [](RunProperties& p) { p.kerningHalfPoints = 24; }},
    {sprm(0x4A4F, 2), [](RunProperties& p) { p.fonts.ascii = 2; }},
    {sprm(0x4A50, 3), [](RunProperties& p) { p.fonts.eastAsian = 3; }},
    {sprm(0x4A51, 4), [](RunProperties& p) { p.fonts.other = 4; }},
    {sprm(0x4A5E, 5), [](RunProperties& p) { p.fonts.complex = 5; }},
    {sprm(0x486D, 0x0407), [](RunProperties& p) { p.language = 0x0407; }},
    {sprm(0x4873, 0x0409), [](RunProperties& p) { p.language = 0x0409; }},
    {sprm(0x486E, 0x0411), [](RunProperties& p) { p.eastAsianLanguage = 0x0411; }},
    {sprm(0x4874, 0x0804), [](RunProperties& p) { p.eastAsianLanguage = 0x0804; }},
    {sprm(0x485F, 0x0401), [](RunProperties& p) { p.complexLanguage = 0x0401; }},
    {sprm(0x4A30, 15), [](RunProperties& p) { p.characterStyle = 15; }},
    {sprm(0x2A42, 6),
     [](RunProperties& p) {
       p.colour = {0xFF0000, false};
     }},
    {sprm(0x6870, rgb(1, 2, 3)),
     [](RunProperties& p) {
       p.colour = {0x010203, false};
     }},
    {sprm(0x6877, rgb(4, 5, 6)),
     [](RunProperties& p) {
       p.underlineColour = {0x040506, false};
     }},
    {sprm(0x6865, support::Border80{12, 3, 6, 4}.bytes()), [](RunProperties& p) { p.border = redBorder(); }},
    {sprm(0xCA72, support::Border{rgb(255, 0, 0), 12, 3, 4}.bytes()),
     [](RunProperties& p) { p.border = redBorder(); }},
    {sprm(0x4866, 7 << 5),
     [](RunProperties& p) {
       p.shading = {true, {0xFFFF00, false}};
     }},
    {sprm(0xCA71, support::Shading{.background = rgb(7, 8, 9)}.bytes()),
     [](RunProperties& p) {
       p.shading = {true, {0x070809, false}};
     }},
    {sprm(0x0801, 1), [](RunProperties& p) { p.revision.kind = Revision::kInserted; }},
    {sprm(0x0800, 1), [](RunProperties& p) { p.deletion.kind = Revision::kDeleted; }},
    {sprm(0x4804, 3), [](RunProperties& p) { p.revision.author = 3; }},
    {sprm(0x4863, 4), [](RunProperties& p) { p.deletion.author = 4; }},
    {sprm(0x6805, 0x12345678), [](RunProperties& p) { p.revision.dttm = 0x12345678; }},
    {sprm(0x6864, 0x12345678), [](RunProperties& p) { p.deletion.dttm = 0x12345678; }},
};

TEST(RunSprms, SetTheirPropertiesAndNoOthers) {
  for (const Case& each : kCases) {
    RunProperties expected;
    each.set(expected);
    EXPECT_NE(expected, RunProperties());
    EXPECT_EQ(applied(each.sprm), expected) << std::hex << (each.sprm[0] | each.sprm[1] << 8);
  }
}

TEST(RunSprms, TakeTheStylesToggleOrItsOpposite) {
  RunProperties style;
  style.bold = true;
  EXPECT_TRUE(applied({sprm(0x0835, 128)}, style).bold);
  EXPECT_FALSE(applied({sprm(0x0835, 129)}, style).bold);
  EXPECT_FALSE(applied({sprm(0x0835, 0)}, style).bold);
  EXPECT_TRUE(applied({sprm(0x0835, 1)}, style).bold);
  EXPECT_TRUE(applied({sprm(0x0836, 129)}, style).italic);
  EXPECT_FALSE(applied({sprm(0x0836, 128)}, style).italic);
  EXPECT_TRUE(applied({sprm(0x085A, 129)}).isRightToLeft);
}

TEST(RunSprms, JudgeTogglesByTheStyleAndNotByWhatStandsBefore) {
  EXPECT_TRUE(applied({sprm(0x0835, 1), sprm(0x0835, 129)}).bold);
}

TEST(RunSprms, EndARevisionThatTheStyleHas) {
  EXPECT_EQ(applied({sprm(0x0801, 1), sprm(0x0801, 0)}).revision.kind, Revision::kNone);
  EXPECT_EQ(applied({sprm(0x0800, 1), sprm(0x0800, 0)}).deletion.kind, Revision::kNone);
}

TEST(RunSprms, SkipWhatTheyDoNotKnow) {
  EXPECT_EQ(applied({sprm(0x6815, 77), sprm(0xCA47, Bytes{1, 2, 3}), sprm(0x2461, 1), sprm(0x0A35, 1)}),
            RunProperties());
}

TEST(RunSprms, CountMissingBytesAsZero) {
  Bytes cut = sprm(0x6870, rgb(1, 2, 3));
  cut.resize(3);
  EXPECT_EQ(applied(cut).colour, (Colour{0x010000, false}));
  EXPECT_EQ(applied(Bytes{0x35, 0x08}).bold, false);
  EXPECT_EQ(applied(Bytes{0x35}), RunProperties());
}

TEST(CharacterStyleOfARun, IsTheLastOneNamed) {
  EXPECT_EQ(characterStyleOf({}), 10);
  EXPECT_EQ(characterStyleOf(viewOf({sprm(0x0835, 1)}), 12), 12);
  EXPECT_EQ(characterStyleOf(viewOf({sprm(0x4A30, 15), sprm(0x4A30, 16)})), 16);
}

TEST(RunSpecials, TellWhatCharactersStandFor) {
  EXPECT_FALSE(specialsOf({}).isSpecial);
  EXPECT_TRUE(specialsOf(viewOf({sprm(0x0855, 1)})).isSpecial);
  EXPECT_TRUE(specialsOf(viewOf({sprm(0x0806, 1)})).isFieldData);
  EXPECT_TRUE(specialsOf(viewOf({sprm(0x080A, 1)})).isOle);
}

TEST(RunSpecials, TellPictures) {
  const Sprms list{sprm(0x6A03, 0x1234)};
  const RunSpecials specials = specialsOf(viewOf(list));
  EXPECT_TRUE(specials.isSpecial);
  EXPECT_TRUE(specials.hasPicture);
  EXPECT_EQ(specials.pictureOffset, 0x1234u);
}

TEST(RunSpecials, TellSymbols) {
  const Sprms list{sprm(0x6A09, int64_t{0xF0B7} << 16 | 5)};
  const RunSpecials specials = specialsOf(viewOf(list));
  EXPECT_TRUE(specials.isSpecial);
  EXPECT_TRUE(specials.symbol.isThere);
  EXPECT_EQ(specials.symbol.font, 5);
  EXPECT_EQ(specials.symbol.character, u'\uF0B7');
}

}  // namespace
}  // namespace pagerex
