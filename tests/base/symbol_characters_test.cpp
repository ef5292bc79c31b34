#include "base/symbol_characters.h"

#include <gtest/gtest.h>

namespace pagerex {
namespace {

TEST(SymbolFonts, AreKnownByNameInAnyCase) {
  EXPECT_EQ(symbolFontNamed(u"Symbol"), SymbolFont::kSymbol);
  EXPECT_EQ(symbolFontNamed(u"SYMBOL MT"), SymbolFont::kSymbol);
  EXPECT_EQ(symbolFontNamed(u"wingdings"), SymbolFont::kWingdings);
  EXPECT_EQ(symbolFontNamed(u"Wingdings-Regular"), SymbolFont::kWingdings);
  EXPECT_EQ(symbolFontNamed(u"Wingdings 2"), SymbolFont::kWingdings2);
  EXPECT_EQ(symbolFontNamed(u"Wingdings 3"), SymbolFont::kWingdings3);
  EXPECT_EQ(symbolFontNamed(u"WebDings"), SymbolFont::kWebdings);
  EXPECT_EQ(symbolFontNamed(u"ITC Zapf Dingbats"), SymbolFont::kZapfDingbats);
  EXPECT_EQ(symbolFontNamed(u"Monotype Sorts"), SymbolFont::kZapfDingbats);
}

TEST(SymbolFonts, AreNotFontsOfLetters) {
  EXPECT_EQ(symbolFontNamed(u""), SymbolFont::kNone);
  EXPECT_EQ(symbolFontNamed(u"Arial"), SymbolFont::kNone);
  EXPECT_EQ(symbolFontNamed(u"Symbol Tiger"), SymbolFont::kNone);
  EXPECT_EQ(symbolFontNamed(u"Wingdings 4"), SymbolFont::kNone);
}

struct Row {
  SymbolFont font;
  char16_t code;
  char32_t character;
};

class SymbolCharacters : public testing::TestWithParam<Row> {};

TEST_P(SymbolCharacters, ShowWhatTheFontShows) {
  EXPECT_EQ(symbolCharacter(GetParam().font, GetParam().code), GetParam().character);
}

TEST_P(SymbolCharacters, AreTheSameInThePrivateArea) {
  EXPECT_EQ(symbolCharacter(GetParam().font, static_cast<char16_t>(0xF000 + GetParam().code)),
            GetParam().character);
}

constexpr SymbolFont kSymbol = SymbolFont::kSymbol, kWingdings = SymbolFont::kWingdings,
                     kWingdings2 = SymbolFont::kWingdings2, kWingdings3 = SymbolFont::kWingdings3,
                     kWebdings = SymbolFont::kWebdings, kZapfDingbats = SymbolFont::kZapfDingbats;

INSTANTIATE_TEST_SUITE_P(OfEachFont, SymbolCharacters,
                         testing::Values(Row{kSymbol, 0x20, U' '}, Row{kSymbol, 0x61, U'α'},
                                         Row{kSymbol, 0x57, U'Ω'}, Row{kSymbol, 0xB7, U'•'},
                                         Row{kSymbol, 0xE5, U'∑'}, Row{kSymbol, 0xFE, U'⎭'},
                                         Row{kSymbol, 0x80, 0}, Row{kSymbol, 0xF0, 0},
                                         Row{kWingdings, 0x4A, U'☺'}, Row{kWingdings, 0x6C, U'●'},
                                         Row{kWingdings, 0x76, U'❖'}, Row{kWingdings, 0xA7, U'▪'},
                                         Row{kWingdings, 0xD8, U'➢'}, Row{kWingdings, 0xE0, U'→'},
                                         Row{kWingdings, 0xFC, U'✓'}, Row{kWingdings, 0x21, U'\U0001F589'},
                                         Row{kWingdings, 0xFF, 0}, Row{kWingdings2, 0x52, U'☑'},
                                         Row{kWingdings2, 0x97, U'\u2981'}, Row{kWingdings2, 0xF9, U'⁂'},
                                         Row{kWingdings2, 0xFA, 0}, Row{kWingdings3, 0x22, U'\u2B62'},
                                         Row{kWingdings3, 0x70, U'▲'}, Row{kWingdings3, 0xF0, U'\U0001F897'},
                                         Row{kWebdings, 0x61, U'✔'}, Row{kWebdings, 0x34, U'\u23F5'},
                                         Row{kWebdings, 0xFC, U'\U0001F30D'}, Row{kZapfDingbats, 0x21, U'✁'},
                                         Row{kZapfDingbats, 0x6C, U'●'}, Row{kZapfDingbats, 0xAC, U'①'},
                                         Row{kZapfDingbats, 0xFE, U'➾'}, Row{kZapfDingbats, 0xF0, 0}));

TEST(SymbolCharacter, IsNoneForCodesOutside) {
  for (const char16_t code :
       {u'\0', u'\x1F', u'\u0100', u'\u2022', u'\uEFFF', u'\uF01F', u'\uF100', u'\uFFFF'}) {
    EXPECT_EQ(symbolCharacter(SymbolFont::kSymbol, code), 0u) << static_cast<unsigned>(code);
  }
  EXPECT_EQ(symbolCharacter(SymbolFont::kNone, u'a'), 0u);
}

TEST(SymbolCharacter, IsFoundForTextThatWasWidenedAsLetters) {
  // 0x9F, 0x80 and 0x95 of code page 1252.
  EXPECT_EQ(symbolCharacter(SymbolFont::kWingdings, u'\u0178'), U'•');
  EXPECT_EQ(symbolCharacter(SymbolFont::kWingdings, u'\u20AC'), U'\U0001F10B');
  EXPECT_EQ(symbolCharacter(SymbolFont::kWingdings, u'\u2022'), U'➓');
}

TEST(SymbolCharacter, IsAppendedInOneUnitOrTwo) {
  std::u16string text;
  appendSymbol(SymbolFont::kSymbol, u'\uF0B7', text);
  appendSymbol(SymbolFont::kWingdings, u'!', text);
  EXPECT_EQ(text, u"•\U0001F589");
}

TEST(SymbolCharacter, StaysWhereTheFontHasNone) {
  std::u16string text;
  appendSymbol(SymbolFont::kNone, u'\uF0B7', text);
  appendSymbol(SymbolFont::kSymbol, u'ж', text);
  EXPECT_EQ(text, u"\uF0B7ж");
}

}  // namespace
}  // namespace pagerex
