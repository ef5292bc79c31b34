#include "base/language_tag.h"

#include <gtest/gtest.h>

using pagerex::languageTag;

TEST(LanguageTag, IsThatOfTheNumber) {
  EXPECT_EQ(languageTag(0x0407), "de-DE");
  EXPECT_EQ(languageTag(0x0409), "en-US");
  EXPECT_EQ(languageTag(0x0401), "ar-SA");
  EXPECT_EQ(languageTag(0x0C0A), "es-ES");
  EXPECT_EQ(languageTag(0x0803), "ca-ES-valencia");
  EXPECT_EQ(languageTag(0x0804), "zh-CN");
  EXPECT_EQ(languageTag(0x281A), "sr-Cyrl-RS");
  EXPECT_EQ(languageTag(0x580A), "es-419");
}

TEST(LanguageTag, OfARegionThatIsNotKnownIsTheLanguage) {
  EXPECT_EQ(languageTag(0x0007), "de");
  EXPECT_EQ(languageTag(0x7C09), "en");
  EXPECT_EQ(languageTag(0xF804), "zh");
}

TEST(LanguageTag, OfNoLanguageIsEmpty) {
  for (const uint16_t none : {0x0000, 0x0400, 0x0800, 0x007F, 0x00FF, 0x03FF, 0xFFFF})
    EXPECT_EQ(languageTag(none), "") << none;
}
