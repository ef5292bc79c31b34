#include "formats/html/css_values.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>

namespace pagerex {
namespace {

std::string written(const std::function<void(std::string&)>& write) {
  std::string out;
  write(out);
  return out;
}

std::string points(int64_t twips) {
  return written([&](std::string& out) { appendPoints(out, twips); });
}

std::string indent(int64_t twips) {
  return written([&](std::string& out) { appendIndent(out, twips); });
}

std::string colour(uint32_t rgb) {
  return written([&](std::string& out) { appendColour(out, rgb); });
}

std::string border(const Border& border) {
  return written([&](std::string& out) { appendBorder(out, border); });
}

}  // namespace

TEST(CssValues, ArePointsOfTwips) {
  EXPECT_EQ(points(0), "0");
  EXPECT_EQ(points(20), "1pt");
  EXPECT_EQ(points(240), "12pt");
  EXPECT_EQ(points(147), "7.35pt");
  EXPECT_EQ(points(150), "7.5pt");
  EXPECT_EQ(points(1), ".05pt");
  EXPECT_EQ(points(-10), "-.5pt");
  EXPECT_EQ(points(-147), "-7.35pt");
}

TEST(CssValues, KeepToLengthsThatWordHas) {
  EXPECT_EQ(points(31681), "1584pt");
  EXPECT_EQ(points(std::numeric_limits<int64_t>::max()), "1584pt");
  EXPECT_EQ(points(std::numeric_limits<int64_t>::min()), "-1584pt");
  EXPECT_EQ(written([](std::string& out) { appendHalfPoints(out, 0xFFFF); }), "1638pt");
  EXPECT_EQ(written([](std::string& out) { appendHalfPoints(out, -25); }), "-12.5pt");
}

TEST(CssValues, HaveIndentsThatGiveWay) {
  EXPECT_EQ(indent(720), "calc(36pt*var(--i))");
  EXPECT_EQ(indent(-720), "calc(-36pt*var(--n))");
  EXPECT_EQ(indent(0), "");
}

TEST(CssValues, AreColoursAsShortAsTheyCanBe) {
  EXPECT_EQ(colour(0xFF0000), "#f00");
  EXPECT_EQ(colour(0x1122AA), "#12a");
  EXPECT_EQ(colour(0x12AB34), "#12ab34");
  EXPECT_EQ(colour(0x00000F), "#00000f");
  EXPECT_EQ(colour(0xFF000000), "#000");
}

TEST(CssValues, TellDarkGrounds) {
  for (const uint32_t rgb : {0x000000, 0x0000FF, 0x000080, 0x800000, 0x3D3D3D})
    EXPECT_TRUE(isDark(rgb)) << rgb;
  for (const uint32_t rgb : {0x3E3E3E, 0x008000, 0x808080, 0xFF0000, 0xFFFFFF})
    EXPECT_FALSE(isDark(rgb)) << rgb;
  EXPECT_EQ(automaticColourOn({0x000080, false}), 0xFFFFFFu);
  EXPECT_EQ(automaticColourOn({0xFFFF00, false}), 0x000000u);
  EXPECT_EQ(automaticColourOn({0x000000, true}), 0x000000u);
}

TEST(CssValues, AreBordersByKindWidthAndColour) {
  const Colour red = {0xFF0000, false};
  const struct {
    Border border;
    const char* css;
  } kCases[] = {
      {{0, 8, 1, false, red}, "0"},
      {{0xFF, 8, 1, false, red}, "0"},
      {{1, 8, 1, false, red}, "1pt solid #f00"},
      {{1, 8, 1, false, {}}, "1pt solid"},
      {{1, 6, 1, false, {}}, ".75pt solid"},
      {{1, 9, 1, false, {}}, "1.13pt solid"},
      {{1, 0, 1, false, {}}, ".5pt solid"},
      {{2, 8, 0, false, {}}, "2pt solid"},
      {{3, 8, 0, false, {}}, "3pt double"},
      {{3, 2, 0, false, {}}, "2.25pt double"},
      {{6, 4, 0, false, {}}, ".5pt dotted"},
      {{7, 4, 0, false, {}}, ".5pt dashed"},
      {{9, 4, 0, false, {}}, ".5pt dashed"},
      {{10, 4, 0, false, {}}, "2.5pt double"},
      {{20, 6, 0, false, {}}, ".75pt solid"},
      {{21, 6, 0, false, {}}, "2.25pt double"},
      {{24, 24, 0, false, {}}, "3pt ridge"},
      {{25, 24, 0, false, {}}, "3pt groove"},
      {{26, 6, 0, false, {}}, ".75pt outset"},
      {{27, 6, 0, false, {}}, ".75pt inset"},
      {{28, 8, 0, false, {}}, "1pt solid"},
      {{0x40, 12, 0, false, {}}, "12pt solid"},
      {{0xE3, 255, 0, false, {}}, "31pt solid"},
  };
  for (const auto& row : kCases) EXPECT_EQ(border(row.border), row.css) << int{row.border.kind};
  EXPECT_EQ(borderWidthTwips({1, 8, 0, false, {}}), 20);
  EXPECT_EQ(borderWidthTwips({}), 0);
}

TEST(CssValues, AreDirectionsOfText) {
  EXPECT_EQ(writingModeOf(0), "");
  EXPECT_EQ(writingModeOf(1), "vertical-rl");
  EXPECT_EQ(writingModeOf(3), "sideways-lr");
  EXPECT_EQ(writingModeOf(4), "");
  EXPECT_EQ(writingModeOf(5), "vertical-rl");
}

TEST(CssValues, AreDeclaredWhereTheyDiffer) {
  constexpr CssProperty kTable[] = {
      {"a-top", "0", "a"}, {"a-right", "0"}, {"a-bottom", "0"}, {"a-left", "0"}, {"b", "none"}};
  using Values = std::array<std::string, 5>;
  const auto differences = [&](const Values& values, const Values& base) {
    return written([&](std::string& out) { appendDifferences(out, kTable, values, base); });
  };
  EXPECT_EQ(differences({"1", "1", "1", "1", "x"}, {"1", "1", "1", "1", "x"}), "");
  EXPECT_EQ(differences({"1", "2", "", "", "x"}, {}), "a-top:1;a-right:2;b:x;");
  EXPECT_EQ(differences({"1", "1", "1", "1", ""}, {}), "a:1;");
  EXPECT_EQ(differences({}, {"1", "1", "", "", "x"}), "a:0;b:none;");
  EXPECT_EQ(differences({"1", "1", "1", "1", ""}, {"1", "1", "1", "2", ""}), "a-left:1;");
}

}  // namespace pagerex
