#include "wordreader/style_sheet.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/word_tables.h"

using support::Bytes;
using support::ByteWriter;
using support::sprm;
using support::Sprms;
using support::Style;
using support::StyleKind;
using support::StyleSheetHeader;

namespace {

/// A style sheet read from bytes, which it keeps.
struct Sheet {
  explicit Sheet(Bytes table) : bytes(std::move(table)) {
    status = sheet.ReadRecord(ByteView(bytes.data(), bytes.size()), allocator);
  }
  explicit Sheet(const std::vector<std::optional<Style>>& styles, const StyleSheetHeader& header = {})
      : Sheet(support::styleSheetTable(styles, header)) {}

  const KDRStyle* style(unsigned int istd) const {
    const KDRStyle* found = nullptr;
    sheet.GetStyle(istd, &found);
    return found;
  }

  ChainAllocator allocator;
  Bytes bytes;
  KDRStyleSheet sheet;
  Status status;
};

/// The bytes of a group without its size word.
Bytes Content(ByteView group) {
  const ByteView content = group.part(2, group.u16(0));
  return content.empty() ? Bytes() : Bytes(content.data(), content.data() + content.size());
}

const Sprms kBold{sprm(0x0835, 1)};
const Sprms kCentred{sprm(0x2461, 1)};

TEST(StyleSheet, HasTheStylesByNumber) {
  const Sheet read({Style().name("Normal"), {}, Style().name("Title").basedOn(0)});
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.sheet.Count(), 3u);
  EXPECT_EQ(read.style(2)->GetIndex(), 2);
  EXPECT_EQ(read.style(2)->GetBaseStyle(), 0);
  EXPECT_EQ(read.style(0)->GetBaseStyle(), 0xFFF);
}

TEST(StyleSheet, HasANullStyleForAnEmptySlot) {
  const Sheet read({Style(), {}, Style()});
  const KDRStyle* style = read.style(0);
  EXPECT_EQ(read.sheet.GetStyle(1, &style), Status::kFailure);
  EXPECT_EQ(style, nullptr);
  EXPECT_EQ(read.sheet.GetStyle(2, &style), Status::kOk);
}

TEST(StyleSheet, HasNoStyleOutsideItsRange) {
  const Sheet read({Style()});
  const KDRStyle* style = nullptr;
  EXPECT_EQ(read.sheet.GetStyle(1, &style), Status::kFailure);
  EXPECT_EQ(read.sheet.GetStyle(0xFFFFFFFF, &style), Status::kFailure);
}

TEST(StyleSheet, TellsTheDefaultFonts) {
  const Sheet read({Style()}, {.defaultFontAscii = 3, .defaultFontFarEast = 4, .defaultFontComplex = 5});
  EXPECT_EQ(read.sheet.get_DefaultFont_ASCII(), 3);
  EXPECT_EQ(read.sheet.get_DefaultFont_FarEast(), 4);
  EXPECT_EQ(read.sheet.get_DefaultFont_Complex(), 5);
}

TEST(StyleSheet, ReadsStylesWithAShortFixedPart) {
  const Sheet read({Style().name("N").chpx(kBold)}, {.baseBytes = 10});
  EXPECT_EQ(Content(read.style(0)->GetChpx()), kBold.bytes());
}

TEST(StyleSheet, IsEmptyWithoutBytes) {
  const Sheet read{Bytes()};
  EXPECT_EQ(read.status, Status::kNothing);
  EXPECT_EQ(read.sheet.Count(), 0u);
}

TEST(StyleSheet, CountsMissingHeaderBytesAsZeros) {
  const Sheet read{Bytes{20, 0, 7}};
  EXPECT_EQ(read.sheet.Count(), 7u);
  EXPECT_EQ(read.sheet.get_DefaultFont_ASCII(), 0);
  EXPECT_EQ(read.style(0), nullptr);
}

TEST(StyleSheet, CountsMoreStylesThanItReadFromADamagedRecord) {
  const Sheet read({Style(), Style().rawRecord(Bytes(30, 0xFF)), Style()});
  EXPECT_EQ(read.sheet.Count(), 3u);
  EXPECT_NE(read.style(0), nullptr);
  EXPECT_EQ(read.style(1), nullptr);
  EXPECT_EQ(read.style(2), nullptr);
}

TEST(StyleSheet, HasNoStylesBehindThoseItCounts) {
  Bytes table = support::styleSheetTable({Style(), Style(), Style()}, StyleSheetHeader());
  table[2] = 1;
  const Sheet read(table);
  EXPECT_EQ(read.sheet.Count(), 1u);
  EXPECT_NE(read.style(0), nullptr);
  EXPECT_EQ(read.style(1), nullptr);
}

TEST(StyleSheet, EndsAtAStyleThatNameAndGroupsDoNotUseUp) {
  const Bytes table = support::styleSheetTable({Style().name("A"), Style().name("B"), Style()}, {});
  const Bytes second = {'B', 0};
  for (const uint8_t nameLength : {0, 2}) {  // too little is used up, and too much
    Bytes damaged = table;
    const auto at = std::search(damaged.begin(), damaged.end(), second.begin(), second.end());
    *(at - 2) = nameLength;
    const Sheet read(damaged);
    EXPECT_NE(read.style(0), nullptr);
    EXPECT_EQ(read.style(1), nullptr);
    EXPECT_EQ(read.style(2), nullptr);
  }
}

TEST(StyleSheet, EndsAtAStyleShorterThanItsFixedPart) {
  const Sheet read({Style(), Style().rawRecord(Bytes(17)), Style()});
  EXPECT_NE(read.style(0), nullptr);
  EXPECT_EQ(read.style(1), nullptr);
  EXPECT_EQ(read.style(2), nullptr);
}

TEST(StyleSheet, KeepsALastStyleThatItsBytesEndIn) {
  Bytes table = support::styleSheetTable({Style(), Style().chpx({sprm(0x6870, 0x44332211)}), Style()}, {});
  const Bytes last = {0x11, 0x22, 0x33, 0x44};
  const auto at = std::search(table.begin(), table.end(), last.begin(), last.end());
  table.erase(at + 2, table.end());
  const Sheet read(table);
  ASSERT_NE(read.style(1), nullptr);
  EXPECT_EQ(Content(read.style(1)->GetChpx()), (Bytes{0x70, 0x68, 0x11, 0x22}));
  EXPECT_EQ(read.style(2), nullptr);
}

TEST(StyleSheet, MakesNoRoomForStylesThatItsBytesCannotHold) {
  const Sheet read({Style()}, {.count = 0xFFFF});
  EXPECT_EQ(read.sheet.Count(), 0xFFFFu);
  EXPECT_NE(read.style(0), nullptr);
  EXPECT_EQ(read.style(1), nullptr);
}

TEST(Style, HasTheGroupsOfAParagraphStyle) {
  const Sheet read({Style().papx(kCentred).chpx(kBold)});
  const Bytes papx = ByteWriter().u16(0).bytes(kCentred.bytes()).take();
  EXPECT_EQ(read.style(0)->GetKind(), mso_word::SGC_PARAGRAPH);
  EXPECT_EQ(Content(read.style(0)->GetPapx()), papx);
  EXPECT_EQ(Content(read.style(0)->GetChpx()), kBold.bytes());
  EXPECT_TRUE(read.style(0)->GetTapx().empty());
}

TEST(Style, HasTheGroupOfACharacterStyle) {
  const Sheet read({Style().kind(StyleKind::kCharacter).chpx(kBold)});
  EXPECT_TRUE(read.style(0)->GetPapx().empty());
  EXPECT_EQ(Content(read.style(0)->GetChpx()), kBold.bytes());
}

TEST(Style, HasTheGroupsOfATableStyle) {
  const Sprms row{sprm(0x548A, 1)};
  const Sheet read({Style().kind(StyleKind::kTable).tapx(row).papx(kCentred).chpx(kBold)});
  EXPECT_EQ(Content(read.style(0)->GetTapx()), row.bytes());
  EXPECT_EQ(Content(read.style(0)->GetPapx()).size(), 5u);
  EXPECT_EQ(Content(read.style(0)->GetChpx()), kBold.bytes());
}

TEST(Style, HasTheGroupOfANumberingStyle) {
  const Sheet read({Style().kind(StyleKind::kNumbering).papx(kCentred)});
  EXPECT_EQ(Content(read.style(0)->GetPapx()).size(), 5u);
  EXPECT_TRUE(read.style(0)->GetChpx().empty());
}

TEST(Style, OfNoKnownKindHasNoGroups) {
  for (unsigned int group = 0; group < 16; ++group) {
    EXPECT_EQ(KDRStyle::GetSubSgc(static_cast<mso_word::STYLE_SGC>(0), group), mso_word::SGC_NONE);
    EXPECT_EQ(KDRStyle::GetSubSgc(static_cast<mso_word::STYLE_SGC>(5), group), mso_word::SGC_NONE);
    EXPECT_EQ(KDRStyle::GetSubSgc(static_cast<mso_word::STYLE_SGC>(15), group), mso_word::SGC_NONE);
  }
}

TEST(Style, HasAtMostThreeGroupsOfUse) {
  EXPECT_EQ(KDRStyle::GetSubSgc(mso_word::SGC_TABLE, 2), mso_word::SGC_CHARACTER);
  EXPECT_EQ(KDRStyle::GetSubSgc(mso_word::SGC_TABLE, 3), mso_word::SGC_NONE);
  EXPECT_EQ(KDRStyle::GetSubSgc(mso_word::SGC_PARAGRAPH, 2), mso_word::SGC_NONE);
}

TEST(Style, HasNoGroupThatItDoesNotCount) {
  const Sheet read({Style().papx(kCentred).chpx(kBold).groupCount(1)});
  EXPECT_FALSE(read.style(0)->GetPapx().empty());
  EXPECT_TRUE(read.style(0)->GetChpx().empty());
}

TEST(Style, HasAnEmptyGroupOfSizeZero) {
  const Sheet read({Style()});
  EXPECT_FALSE(read.style(0)->GetChpx().empty());
  EXPECT_EQ(read.style(0)->GetChpx().u16(0), 0);
}

TEST(Style, HasAName) {
  const Sheet read({Style().name("Ab"), Style()});
  EXPECT_EQ(read.style(0)->GetName().size(), 4u);
  EXPECT_EQ(read.style(0)->GetName().u16(2), 'b');
  EXPECT_TRUE(read.style(1)->GetName().empty());
}

TEST(Style, PadsGroupsOfOddSize) {
  const Sheet read({Style().kind(StyleKind::kTable).tapx({sprm(0x360D, 1)}).chpx(kBold)});
  EXPECT_EQ(Content(read.style(0)->GetTapx()).size(), 3u);
  EXPECT_EQ(Content(read.style(0)->GetChpx()), kBold.bytes());
}

}  // namespace
