#include "flow/font_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

namespace pagerex {
namespace {

using Bytes = std::vector<uint8_t>;

void append16(Bytes& bytes, size_t value) {
  bytes.push_back(static_cast<uint8_t>(value));
  bytes.push_back(static_cast<uint8_t>(value >> 8));
}

void appendText(Bytes& bytes, std::u16string_view text) {
  for (const char16_t c : text) append16(bytes, c);
  append16(bytes, 0);
}

struct TestFont {
  std::u16string_view name;
  std::u16string_view alternateName = {};
  uint8_t flags = 0;
  uint8_t characterSet = 0;
  std::array<uint8_t, 10> panose = {};
};

Bytes fontTable(const std::vector<TestFont>& fonts) {
  Bytes table;
  append16(table, fonts.size());
  append16(table, 0);
  for (const TestFont& font : fonts) {
    Bytes record(39);
    record[0] = font.flags;
    record[3] = font.characterSet;
    std::copy(font.panose.begin(), font.panose.end(), record.begin() + 5);
    if (!font.alternateName.empty()) record[4] = static_cast<uint8_t>(font.name.size() + 1);
    appendText(record, font.name);
    if (!font.alternateName.empty()) appendText(record, font.alternateName);
    table.push_back(static_cast<uint8_t>(record.size()));
    table.insert(table.end(), record.begin(), record.end());
  }
  return table;
}

FontNames fontsOf(const Bytes& table) {
  FontNames fonts;
  fonts.Read({table.data(), table.size()});
  return fonts;
}

TEST(FontNames, AreToldByIndex) {
  const FontNames fonts = fontsOf(fontTable({{u"Times New Roman"}, {u"Arial", u"Helvetica"}}));
  EXPECT_EQ(fonts.Count(), 2u);
  EXPECT_EQ(fonts.Name(0), u"Times New Roman");
  EXPECT_EQ(fonts.AlternateName(0), u"");
  EXPECT_EQ(fonts.Name(1), u"Arial");
  EXPECT_EQ(fonts.AlternateName(1), u"Helvetica");
  EXPECT_EQ(fonts.Name(2), u"");
  EXPECT_EQ(fonts.AlternateName(0xFFFF), u"");
}

TEST(FontNames, TellCharacterSetFamilyAndPitch) {
  const FontNames fonts = fontsOf(fontTable({{u"Courier New", {}, 0x35, 204}, {u"Arial", {}, 0x26, 0}}));
  EXPECT_EQ(fonts.CharacterSet(0), 204);
  EXPECT_EQ(fonts.Family(0), 3);
  EXPECT_TRUE(fonts.IsFixedPitch(0));
  EXPECT_EQ(fonts.Family(1), 2);
  EXPECT_FALSE(fonts.IsFixedPitch(1));
  EXPECT_EQ(fonts.CharacterSet(9), 0);
}

TEST(FontNames, TellPitchAndShapes) {
  const std::array<uint8_t, 10> arial = {2, 11, 6, 4, 2, 2, 2, 2, 2, 4};
  const FontNames fonts = fontsOf(fontTable({{u"Arial", {}, 0x26, 0, arial}, {u"Courier", {}, 0x31}}));
  EXPECT_EQ(fonts.Pitch(0), 2);
  EXPECT_EQ(fonts.Panose(0), arial);
  EXPECT_EQ(fonts.Pitch(1), 1);
  EXPECT_EQ(fonts.Panose(1), (std::array<uint8_t, 10>{}));
  EXPECT_EQ(fonts.Pitch(2), 0);
  EXPECT_EQ(fonts.Panose(2), (std::array<uint8_t, 10>{}));
}

TEST(FontNames, TellFontsOfSigns) {
  const FontNames fonts =
      fontsOf(fontTable({{u"Symbol"}, {u"Bullets", u"Wingdings"}, {u"Bullets", {}, 0, 2}, {u"Arial"}}));
  EXPECT_EQ(fonts.Symbols(0), SymbolFont::kSymbol);
  EXPECT_EQ(fonts.Symbols(1), SymbolFont::kWingdings);
  EXPECT_EQ(fonts.Symbols(2), SymbolFont::kNone);
  EXPECT_EQ(fonts.Symbols(3), SymbolFont::kNone);
  EXPECT_EQ(fonts.Symbols(4), SymbolFont::kNone);
}

TEST(FontNames, OfATableWithWideTextMarkAreRead) {
  Bytes table = fontTable({{u"Arial"}});
  table.insert(table.begin(), {0xFF, 0xFF});
  EXPECT_EQ(fontsOf(table).Name(0), u"Arial");
}

TEST(FontNames, EndWhereTheTableIsCut) {
  const Bytes whole = fontTable({{u"Arial", u"Helvetica"}, {u"Symbol"}});
  for (size_t size = 0; size < whole.size(); ++size) {
    const FontNames fonts = fontsOf(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)));
    EXPECT_LE(fonts.Count(), 2u);
    EXPECT_TRUE(std::u16string_view(u"Arial").starts_with(fonts.Name(0)));
  }
}

TEST(FontNames, OfACountWithoutRecordsAreNone) {
  EXPECT_EQ(fontsOf({0xFE, 0xFF, 0, 0}).Count(), 0u);
  EXPECT_EQ(fontsOf({0xFE, 0xFF, 0xFF, 0xFF, 0}).Count(), 1u);
}

TEST(FontNames, AreReadAnew) {
  const Bytes first = fontTable({{u"Arial"}, {u"Symbol"}}), second = fontTable({{u"Wingdings"}});
  FontNames fonts;
  fonts.Read({first.data(), first.size()});
  fonts.Read({second.data(), second.size()});
  EXPECT_EQ(fonts.Count(), 1u);
  EXPECT_EQ(fonts.Name(0), u"Wingdings");
}

}  // namespace
}  // namespace pagerex
