#include "base/character_class.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cwctype>
#include <string>

namespace {

/// A locale whose classes the C library knows for all characters, for one test.
class Utf8Locale {
 public:
  Utf8Locale() : before_(std::setlocale(LC_CTYPE, nullptr)), set_(std::setlocale(LC_CTYPE, "C.UTF-8")) {}
  Utf8Locale(const Utf8Locale&) = delete;
  Utf8Locale& operator=(const Utf8Locale&) = delete;
  ~Utf8Locale() { std::setlocale(LC_CTYPE, before_.c_str()); }
  bool isSet() const { return set_ != nullptr; }

 private:
  std::string before_;
  const char* set_;
};

}  // namespace

TEST(CharacterClass, LettersAndDigitsAreThoseOfTheCLibrary) {
  const Utf8Locale locale;
  ASSERT_TRUE(locale.isSet());
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    ASSERT_EQ(isLetterOrDigit(static_cast<uint16_t>(unit)), std::iswalnum(unit) != 0) << unit;
  }
}

TEST(CharacterClass, SpacesAreThoseOfTheCLibrary) {
  const Utf8Locale locale;
  ASSERT_TRUE(locale.isSet());
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    ASSERT_EQ(isSpace(static_cast<uint16_t>(unit)), std::iswspace(unit) != 0) << unit;
  }
}

TEST(CharacterClass, NeedsNoLocale) {
  ASSERT_STREQ(std::setlocale(LC_CTYPE, "C"), "C");
  EXPECT_TRUE(isLetterOrDigit(u'\u4E2D'));
  EXPECT_TRUE(isLetterOrDigit(u'\u00E9'));
  EXPECT_FALSE(isLetterOrDigit(u'\u3002'));
  EXPECT_TRUE(isSpace(u'\u3000'));
  EXPECT_FALSE(isSpace(u'\u00A0'));
}

TEST(CharacterClass, HalvesOfACharacterAreNeither) {
  for (unsigned unit = 0xD800; unit < 0xE000; ++unit) {
    EXPECT_FALSE(isLetterOrDigit(static_cast<uint16_t>(unit)));
    EXPECT_FALSE(isSpace(static_cast<uint16_t>(unit)));
  }
}
