#include "formats/html/tab_stops.h"

#include <gtest/gtest.h>

namespace pagerex {
namespace {

constexpr int32_t kDistance = 720;

ParagraphProperties withStops(std::vector<TabStop> stops) {
  ParagraphProperties paragraph;
  paragraph.tabs = std::move(stops);
  return paragraph;
}

ParagraphProperties hanging(int32_t indent) {
  ParagraphProperties paragraph;
  paragraph.indentStart = indent;
  paragraph.indentFirstLine = -indent;
  return paragraph;
}

TEST(TabStops, AreEveryDistanceWhereNothingIsSaid) {
  const ParagraphProperties plain;
  EXPECT_EQ(nextStop(plain, 0, kDistance).position, 720);
  EXPECT_EQ(nextStop(plain, 500, kDistance).position, 720);
  EXPECT_EQ(nextStop(plain, 720, kDistance).position, 1440);
  EXPECT_TRUE(nextStop(plain, 0, kDistance).isDefault);
}

TEST(TabStops, LieInFrontOfTheMarginToo) {
  EXPECT_EQ(nextStop(ParagraphProperties(), -1000, kDistance).position, -720);
  EXPECT_EQ(nextStop(ParagraphProperties(), -100, kDistance).position, 0);
}

TEST(TabStops, ThatAreAlmostThereAreNotGoneToAgain) {
  EXPECT_EQ(nextStop(ParagraphProperties(), 710, kDistance).position, 1440);
  EXPECT_EQ(nextStop(withStops({{1000, 0, 0}, {2000, 0, 0}}), 990, kDistance).position, 2000);
}

TEST(TabStops, OfTheParagraphComeFirst) {
  const ParagraphProperties paragraph = withStops({{300, 1, 0}, {5000, 2, 1}});
  const FoundStop first = nextStop(paragraph, 0, kDistance);
  EXPECT_EQ(first.position, 300);
  EXPECT_EQ(first.alignment, 1);
  EXPECT_FALSE(first.isDefault);
  const FoundStop second = nextStop(paragraph, 300, kDistance);
  EXPECT_EQ(second.position, 5000);
  EXPECT_EQ(second.alignment, 2);
  EXPECT_EQ(second.leader, 1);
  EXPECT_TRUE(nextStop(paragraph, 5000, kDistance).isDefault);
}

TEST(TabStops, ThatAreBarsStopNothing) {
  const ParagraphProperties paragraph = withStops({{300, 4, 0}});
  EXPECT_EQ(nextStop(paragraph, 0, kDistance).position, 720);
  EXPECT_FALSE(hasOwnStops(paragraph));
}

TEST(TabStops, HaveAHangingIndentAmongThem) {
  EXPECT_EQ(nextStop(hanging(360), 0, kDistance).position, 360);
  EXPECT_EQ(nextStop(hanging(360), 360, kDistance).position, 720);
  EXPECT_FALSE(nextStop(hanging(360), 0, kDistance).isDefault);
  EXPECT_EQ(nextStop(hanging(1440), 0, kDistance).position, 1440) << "no other stop stands in front of it";
  EXPECT_TRUE(hasOwnStops(hanging(360)));
  ParagraphProperties both = hanging(360);
  both.tabs = {{200, 0, 0}};
  EXPECT_EQ(nextStop(both, 0, kDistance).position, 200);
}

TEST(TabStops, AreNoneOfItsOwnInAPlainParagraph) {
  EXPECT_FALSE(hasOwnStops(ParagraphProperties()));
  EXPECT_TRUE(hasOwnStops(withStops({{300, 0, 0}})));
}

TEST(TabStops, ComeToAnEndWhateverTheDistance) {
  for (const int32_t distance : {INT32_MIN, -1, 0, 1}) EXPECT_EQ(nextStop({}, 0, distance).position, 21);
}

TEST(AboutWidth, CountsTextAndNotMarkup) {
  EXPECT_EQ(aboutWidth("", 24), 0);
  EXPECT_EQ(aboutWidth("<b class=r1></b>", 24), 0);
  EXPECT_EQ(aboutWidth("<b>abc</b>", 24), aboutWidth("abc", 24));
  EXPECT_EQ(aboutWidth("abc", 24), 3 * 120);
  EXPECT_EQ(aboutWidth("abc", 48), 3 * 240);
}

TEST(AboutWidth, TakesAReferenceAsOneCharacter) {
  EXPECT_LT(aboutWidth("&amp;", 24), aboutWidth("ab", 24));
  EXPECT_GT(aboutWidth("&amp;", 24), 0);
}

TEST(AboutWidth, KnowsNarrowAndWideCharacters) {
  EXPECT_LT(aboutWidth("ill", 24), aboutWidth("abc", 24));
  EXPECT_LT(aboutWidth("abc", 24), aboutWidth("mwM", 24));
  EXPECT_EQ(aboutWidth("\xE4\xB8\x80", 24), 240);
  EXPECT_EQ(aboutWidth("\xC3\xA4", 24), 124);
}

TEST(AboutWidth, IsBounded) {
  EXPECT_EQ(aboutWidth(std::string(1 << 20, 'M'), 3000), 1 << 20);
  EXPECT_EQ(aboutWidth("abc", -5), 0);
}

}  // namespace
}  // namespace pagerex
