#include "formats/html/font_families.h"

#include <gtest/gtest.h>

#include <vector>

namespace pagerex {
namespace {

class Fonts final : public ToldFonts {
 public:
  explicit Fonts(std::vector<FontFacts> fonts) : fonts_(std::move(fonts)) {}
  std::u16string_view NameOf(uint16_t ftc) const override { return FactsOf(ftc).name; }
  FontFacts FactsOf(uint16_t ftc) const override {
    ++asked;
    return ftc < fonts_.size() ? fonts_[ftc] : FontFacts{};
  }
  mutable int asked = 0;

 private:
  std::vector<FontFacts> fonts_;
};

std::string familyOf(const FontFacts& facts) {
  const Fonts fonts({facts});
  return std::string(FontFamilies(&fonts).Of(0));
}

std::string familyNamed(std::u16string_view name, std::u16string_view alternate = {}) {
  return familyOf({name, alternate, 0, 0, 0, {}});
}

std::string quoted(std::string_view text) {
  std::string out;
  appendCssString(out, text);
  return out;
}

}  // namespace

TEST(FontFamilies, BeginWithTheNameInTheDocument) {
  EXPECT_EQ(familyNamed(u"Arial"), "\"Arial\",Liberation Sans,Arimo,Helvetica,sans-serif");
  EXPECT_EQ(familyNamed(u"ARIAL"), "\"ARIAL\",Liberation Sans,Arimo,Helvetica,sans-serif");
  EXPECT_EQ(familyNamed(u"Times New Roman"), "\"Times New Roman\",Liberation Serif,Tinos,Times,serif");
  EXPECT_EQ(familyNamed(u"Courier New"), "\"Courier New\",Liberation Mono,Cousine,Courier,monospace");
  EXPECT_EQ(familyNamed(u"Calibri"), "\"Calibri\",Carlito,Lato,sans-serif");
  EXPECT_EQ(familyNamed(u"Cambria"), "\"Cambria\",Caladea,Georgia,serif");
}

TEST(FontFamilies, HaveTheAlternateNameNext) {
  EXPECT_EQ(familyNamed(u"Univers 55", u"Univers"), "\"Univers 55\",\"Univers\",sans-serif");
  EXPECT_EQ(familyNamed(u"Corporate", u"Arial"),
            "\"Corporate\",\"Arial\",Liberation Sans,Arimo,Helvetica,sans-serif");
  EXPECT_EQ(familyNamed(u"Impact", u"IMPACT"), "\"Impact\",fantasy");
  EXPECT_EQ(familyNamed(u"", u"Mistral"), "\"Mistral\",cursive");
}

TEST(FontFamilies, HaveEastAsianFontsByBothNames) {
  EXPECT_EQ(familyNamed(u"SimSun"), "\"SimSun\",\"宋体\",Songti SC,Noto Serif CJK SC,Noto Serif SC,serif");
  EXPECT_EQ(familyNamed(u"宋体"), "\"宋体\",\"SimSun\",Songti SC,Noto Serif CJK SC,Noto Serif SC,serif");
  EXPECT_EQ(
      familyNamed(u"@MS Gothic"),
      "\"@MS Gothic\",\"MS Gothic\",\"ＭＳ ゴシック\",Hiragino Kaku Gothic ProN,Yu Gothic,Noto Sans CJK "
      "JP,Noto Sans JP,sans-serif");
  EXPECT_EQ(familyNamed(u"바탕", u"Batang"),
            "\"바탕\",\"Batang\",AppleMyungjo,Noto Serif CJK KR,Noto Serif KR,serif");
}

TEST(FontFamilies, EndWithWhatTheFontTableSays) {
  const struct {
    uint8_t family, pitch;
    std::array<uint8_t, 10> panose;
    const char* generic;
  } kCases[] = {
      {0, 0, {}, "serif"},
      {1, 2, {}, "serif"},
      {2, 2, {}, "sans-serif"},
      {3, 1, {}, "monospace"},
      {1, 1, {}, "monospace"},
      {4, 2, {}, "cursive"},
      {5, 2, {}, "fantasy"},
      {0, 0, {2, 11}, "sans-serif"},
      {0, 0, {2, 2}, "serif"},
      {0, 0, {2, 11, 0, 9}, "monospace"},
      {0, 0, {3}, "cursive"},
      {0, 0, {4}, "fantasy"},
      {7, 3, {255, 255, 255, 255, 255, 255, 255, 255, 255, 255}, "serif"},
  };
  for (const auto& row : kCases) {
    EXPECT_EQ(familyOf({u"Own", {}, row.family, row.pitch, 0, row.panose}),
              std::string("\"Own\",") + row.generic);
  }
}

TEST(FontFamilies, KnowEastAsianFontsByTheirCharacterSet) {
  EXPECT_EQ(familyOf({u"Own", {}, 1, 1, 134, {}}), "\"Own\",Songti SC,Noto Serif CJK SC,Noto Serif SC,serif");
  EXPECT_EQ(familyOf({u"Own", {}, 3, 1, 136, {}}),
            "\"Own\",PingFang TC,Noto Sans CJK TC,Noto Sans TC,sans-serif");
}

TEST(FontFamilies, AreMadeOnce) {
  const Fonts fonts({{u"Arial", {}, 0, 0, 0, {}}, {u"Symbol", {}, 0, 0, 0, {}}});
  FontFamilies families(&fonts);
  const std::string_view first = families.Of(0);
  families.Of(1);
  EXPECT_EQ(families.Of(0).data(), first.data());
  EXPECT_EQ(fonts.asked, 2);
}

TEST(FontFamilies, OfNoFontAreSerif) {
  const Fonts fonts({});
  EXPECT_EQ(FontFamilies(&fonts).Of(0xFFFF), "serif");
  EXPECT_EQ(FontFamilies(nullptr).Of(0), "serif");
}

TEST(FontFamilies, LetNothingOutOfAName) {
  EXPECT_EQ(quoted("a\"b\\c"), "\"a\\22 b\\5c c\"");
  EXPECT_EQ(quoted("</style><!--&"), "\"\\3c /style\\3e \\3c !--\\26 \"");
  EXPECT_EQ(quoted("a\nb\r\f\t\x7F"
                   "e"),
            "\"a\\a b\\d \\c \\9 \\7f e\"");
  EXPECT_EQ(quoted("a\xC2\x92\xC2\xA0"), "\"a\\92 \xC2\xA0\"");
  EXPECT_EQ(familyNamed(u"x\";}</style>"), "\"x\\22 ;}\\3c /style\\3e \",serif");
  EXPECT_EQ(familyNamed(u"\xD800x"), "\"\xEF\xBF\xBDx\",serif");
}

}  // namespace pagerex
