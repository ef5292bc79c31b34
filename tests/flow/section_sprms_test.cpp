#include "flow/section_sprms.h"

#include <gtest/gtest.h>

#include <functional>

#include "sprm_view.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::rgb;
using support::sprm;
using support::Sprms;

SectionProperties applied(const Sprms& sprms, SectionProperties properties = {}) {
  applySectionSprms(viewOf(sprms), properties);
  return properties;
}

using S = SectionProperties;
struct Case {
  Bytes sprm;
  std::function<void(S&)> set;  ///< makes of the defaults what the sprm must make of them
};

const Border kRed = {3, 12, 4, false, {0xFF0000, false}};
const Bytes kRedBrc = support::Border{rgb(255, 0, 0), 12, 3, 4}.bytes();
const Bytes kRedBrc80 = support::Border80{12, 3, 6, 4}.bytes();

const Case kCases[] = {
    {sprm(0x3009, 0), [](S& s) { s.start = S::Start::kContinuous; }},
    {sprm(0x300A, 1), [](S& s) { s.hasTitlePage = true; }},
    {sprm(0x500B, 2), [](S& s) { s.columnCount = 3; }},
    {sprm(0x900C, 500), [](S& s) { s.columnSpace = 500; }},
    {sprm(0x300E, 2), [](S& s) { s.pageNumberFormat = 2; }},
    {sprm(0x3011, 1), [](S& s) { s.restartsPageNumbers = true; }},
    {sprm(0xB017, 600), [](S& s) { s.headerDistance = 600; }},
    {sprm(0xB018, 610), [](S& s) { s.footerDistance = 610; }},
    {sprm(0x3019, 1), [](S& s) { s.hasLineBetweenColumns = true; }},
    {sprm(0x301A, 3), [](S& s) { s.verticalAlignment = 3; }},
    {sprm(0x501C, 5), [](S& s) { s.firstPageNumber = 5; }},
    {sprm(0x7044, 6), [](S& s) { s.firstPageNumber = 6; }},
    {sprm(0x301D, 2), [](S& s) { s.isLandscape = true; }},
    {sprm(0xB01F, 16838), [](S& s) { s.pageWidth = 16838; }},
    {sprm(0xB020, 11906), [](S& s) { s.pageHeight = 11906; }},
    {sprm(0xB021, 1000), [](S& s) { s.marginLeft = 1000; }},
    {sprm(0xB022, 1010), [](S& s) { s.marginRight = 1010; }},
    {sprm(0x9023, -900), [](S& s) { s.marginTop = -900; }},
    {sprm(0x9024, 910), [](S& s) { s.marginBottom = 910; }},
    {sprm(0xB025, 200), [](S& s) { s.gutter = 200; }},
    {sprm(0x3228, 1), [](S& s) { s.isRightToLeft = true; }},
    {sprm(0x702B, kRedBrc80), [](S& s) { s.pageTop = kRed; }},
    {sprm(0x702C, kRedBrc80), [](S& s) { s.pageLeft = kRed; }},
    {sprm(0x702D, kRedBrc80), [](S& s) { s.pageBottom = kRed; }},
    {sprm(0x702E, kRedBrc80), [](S& s) { s.pageRight = kRed; }},
    {sprm(0xD234, kRedBrc), [](S& s) { s.pageTop = kRed; }},
    {sprm(0xD235, kRedBrc), [](S& s) { s.pageLeft = kRed; }},
    {sprm(0xD236, kRedBrc), [](S& s) { s.pageBottom = kRed; }},
    {sprm(0xD237, kRedBrc), [](S& s) { s.pageRight = kRed; }},
    {sprm(0x5033, 1), [](S& s) { s.textFlow = 1; }},
    {sprm(0x303C, 1), [](S& s) { s.footnotes.setsRestart = true, s.footnotes.restart = 1; }},
    {sprm(0x303E, 2), [](S& s) { s.endnotes.setsRestart = true, s.endnotes.restart = 2; }},
    {sprm(0x503F, 4), [](S& s) { s.footnotes.setsStart = true, s.footnotes.start = 4; }},
    {sprm(0x5040, 2), [](S& s) { s.footnotes.setsFormat = true, s.footnotes.format = 2; }},
    {sprm(0x5041, 5), [](S& s) { s.endnotes.setsStart = true, s.endnotes.start = 5; }},
    {sprm(0x5042, 4), [](S& s) { s.endnotes.setsFormat = true, s.endnotes.format = 4; }},
};

TEST(SectionSprms, SetTheirPropertiesAndNoOthers) {
  for (const Case& each : kCases) {
    SectionProperties expected;
    each.set(expected);
    EXPECT_NE(expected, SectionProperties());
    EXPECT_EQ(applied(each.sprm), expected) << std::hex << (each.sprm[0] | each.sprm[1] << 8);
  }
}

TEST(SectionSprms, HaveAllKindsOfStarts) {
  EXPECT_EQ(applied({sprm(0x3009, 1)}).start, S::Start::kNewColumn);
  EXPECT_EQ(applied({sprm(0x3009, 2)}).start, S::Start::kNewPage);
  EXPECT_EQ(applied({sprm(0x3009, 3)}).start, S::Start::kEvenPage);
  EXPECT_EQ(applied({sprm(0x3009, 4)}).start, S::Start::kOddPage);
  EXPECT_EQ(applied({sprm(0x3009, 99)}).start, S::Start::kOddPage);
}

TEST(SectionSprms, SkipWhatTheyDoNotKnow) {
  EXPECT_EQ(applied({sprm(0x703A, 1), sprm(0x2461, 1), Bytes{0x09}}), SectionProperties());
}

TEST(SectionColumns, HaveWidthsWhereTheyAreNotEven) {
  const Sprms list{sprm(0x500B, 1), sprm(0x3005, 0), sprm(0xF203, 0x0BB800), sprm(0xF204, 0x01F400),
                   sprm(0xF203, 0x07D001)};
  const SectionProperties s = applied(list);
  ASSERT_EQ(s.columns.size(), 2u);
  EXPECT_EQ(s.columns[0], (std::pair<uint16_t, uint16_t>{3000, 500}));
  EXPECT_EQ(s.columns[1], (std::pair<uint16_t, uint16_t>{2000, 0}));
}

TEST(SectionColumns, AreEvenWhateverWidthsAreTold) {
  EXPECT_TRUE(applied({sprm(0x500B, 1), sprm(0xF203, 0x0BB800)}).columns.empty());
  EXPECT_TRUE(applied({sprm(0x3005, 0), sprm(0xF203, 0x0BB800), sprm(0x3005, 1)}).columns.empty());
}

TEST(SectionColumns, AreNoMoreThanWordHas) {
  const SectionProperties s =
      applied({sprm(0x500B, 0xFFFF), sprm(0x3005, 0), sprm(0xF203, 0x0BB8FF), sprm(0xF203, 0x0BB82B)});
  EXPECT_EQ(s.columnCount, 44);
  ASSERT_EQ(s.columns.size(), 44u);
  EXPECT_EQ(s.columns[43].first, 3000);
}

TEST(SectionPageNumbers, AreCutToWhatCanBeTold) {
  EXPECT_EQ(applied({sprm(0x7044, 0x12345)}).firstPageNumber, 0xFFFF);
}

}  // namespace
}  // namespace pagerex
