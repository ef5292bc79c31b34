#include "flow/field_numbers.h"

#include <gtest/gtest.h>

namespace pagerex {
namespace {

/// Numbers from field to field.
struct Numbers {
  std::u16string Auto(std::u16string_view code, uint8_t headingLevel = 0) {
    std::u16string out;
    numbers.AppendAutoNumber(fieldTypeOf(code, 0), code, headingLevel, 0, out);
    return out;
  }
  std::u16string List(std::u16string_view code) {
    std::u16string out;
    numbers.AppendListNumber(code, 0, out);
    return out;
  }

  FieldNumbers numbers;
};

TEST(AutoNumbers, CountParagraphs) {
  Numbers numbers;
  EXPECT_EQ(numbers.Auto(u"AUTONUM"), u"1.");
  EXPECT_EQ(numbers.Auto(u"AUTONUM \\* Arabic \\s :"), u"2:");
  EXPECT_EQ(numbers.Auto(u"AUTONUM \\* alphabetic \\s \" \""), u"c ");
  EXPECT_EQ(numbers.Auto(u"AUTONUM \\* ROMAN"), u"IV.");
  EXPECT_EQ(numbers.Auto(u"AUTONUM \\* OrdText"), u"Fifth.");
}

TEST(AutoNumbers, BeginAnewBelowAHeading) {
  Numbers numbers;
  EXPECT_EQ(numbers.Auto(u"AUTONUM", 1), u"1.");
  EXPECT_EQ(numbers.Auto(u"AUTONUM"), u"1.");
  EXPECT_EQ(numbers.Auto(u"AUTONUM"), u"2.");
  EXPECT_EQ(numbers.Auto(u"AUTONUM", 1), u"2.");
  EXPECT_EQ(numbers.Auto(u"AUTONUM"), u"1.");
}

TEST(AutoNumbers, OfLegalTextHaveThoseOfTheHeadings) {
  Numbers numbers;
  EXPECT_EQ(numbers.Auto(u"AUTONUMLGL", 1), u"1.");
  EXPECT_EQ(numbers.Auto(u"AUTONUMLGL", 2), u"1.1.");
  EXPECT_EQ(numbers.Auto(u"AUTONUMLGL", 2), u"1.2.");
  EXPECT_EQ(numbers.Auto(u"AUTONUMLGL \\e"), u"1.2.1");
  EXPECT_EQ(numbers.Auto(u"AUTONUMLGL", 1), u"2.");
  EXPECT_EQ(numbers.Auto(u"AUTONUMLGL", 3), u"2.1.");
}

TEST(AutoNumbers, OfAnOutlineLookAsTheirLevelDoes) {
  Numbers numbers;
  EXPECT_EQ(numbers.Auto(u"AUTONUMOUT", 1), u"I.");
  EXPECT_EQ(numbers.Auto(u"AUTONUMOUT", 2), u"A.");
  EXPECT_EQ(numbers.Auto(u"AUTONUMOUT", 2), u"B.");
  EXPECT_EQ(numbers.Auto(u"AUTONUMOUT"), u"1.");
  EXPECT_EQ(numbers.Auto(u"AUTONUMOUT", 9), u"(i)");
  EXPECT_EQ(numbers.Auto(u"AUTONUMOUT"), u"(i)");
}

TEST(ListNumbers, LookAsTheirLevelDoes) {
  Numbers numbers;
  EXPECT_EQ(numbers.List(u"LISTNUM"), u"1)");
  EXPECT_EQ(numbers.List(u"LISTNUM NumberDefault \\l 3"), u"i)");
  EXPECT_EQ(numbers.List(u"LISTNUM"), u"ii)");
  EXPECT_EQ(numbers.List(u"LISTNUM \\l 6 \\s 4"), u"(iv)");
  EXPECT_EQ(numbers.List(u"LISTNUM \\l 1"), u"2)");
  EXPECT_EQ(numbers.List(u"LISTNUM \\l 99"), u"3)");
}

TEST(ListNumbers, OfEachListCountOnTheirOwn) {
  Numbers numbers;
  EXPECT_EQ(numbers.List(u"LISTNUM \"LegalDefault\""), u"1.");
  EXPECT_EQ(numbers.List(u"LISTNUM \"LegalDefault\" \\l 3"), u"1.1.1.");
  EXPECT_EQ(numbers.List(u"LISTNUM OutlineDefault \\l 2"), u"A.");
  EXPECT_EQ(numbers.List(u"LISTNUM mine"), u"1)");
  EXPECT_EQ(numbers.List(u"LISTNUM"), u"1)");
}

TEST(FieldNumbers, BeginAnewInANewStory) {
  Numbers numbers;
  numbers.Auto(u"AUTONUM");
  numbers.List(u"LISTNUM");
  numbers.numbers.Reset();
  EXPECT_EQ(numbers.Auto(u"AUTONUM"), u"1.");
  EXPECT_EQ(numbers.List(u"LISTNUM"), u"1)");
}

TEST(FieldNumbers, TakeNothingFromCodesThatSayNothing) {
  Numbers numbers;
  EXPECT_EQ(numbers.List(u"LISTNUM \\l x \\s y"), u"1)");
  EXPECT_EQ(numbers.List(u""), u"2)");
  EXPECT_EQ(numbers.Auto(u"AUTONUM \\s \\*"), u"1.");
}

}  // namespace
}  // namespace pagerex
