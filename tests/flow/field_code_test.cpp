#include "flow/field_code.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace pagerex {
namespace {

/// Parts with a space behind each; switches as \x.
std::u16string words(std::u16string_view code) {
  std::u16string out;
  FieldWords reader(code);
  for (FieldWord word; reader.Next(word);) {
    if (word.switchLetter != 0) {
      (out += u'\\') += word.switchLetter;
    } else {
      ((out += u'[') += word.text) += u']';
    }
  }
  return out;
}

TEST(FieldWords, AreNameArgumentsAndSwitches) {
  EXPECT_EQ(words(u" HYPERLINK \"a b\" \\l \"c\" \\O tip "), u"[HYPERLINK][a b]\\l[c]\\o[tip]");
  EXPECT_EQ(words(u"DATE \\@ \"d MMMM\" \\* MERGEFORMAT"), u"[DATE]\\@[d MMMM]\\*[MERGEFORMAT]");
}

TEST(FieldWords, MayTouchEachOther) {
  EXPECT_EQ(words(u"SYMBOL 183 \\f\"Symbol\"\\s10"), u"[SYMBOL][183]\\f[Symbol]\\s[10]");
  EXPECT_EQ(words(u"A\"b\"\"c\"\\*Upper"), u"[A][b][c]\\*[Upper]");
}

TEST(FieldWords, HaveEscapes) {
  EXPECT_EQ(words(uR"(X "say \"hi\"" "C:\\dir\\f.doc")"), uR"([X][say "hi"][C:\dir\f.doc])");
  EXPECT_EQ(words(uR"(X "C:\dir\f.doc")"), uR"([X][C:\dir\f.doc])");
  EXPECT_EQ(words(uR"(X \\\\server\\share \h)"), uR"([X][\\server\share]\h)");
}

TEST(FieldWords, AStraightQuoteCanBeClosedByAnother) {
  EXPECT_EQ(words(u"X \"http://x/\u201D d"), u"[X][http://x/][d]");
  EXPECT_EQ(words(u"X \"a \u201Cb\u201D c\" d"), u"[X][a \u201Cb\u201D c][d]");
}

TEST(FieldWords, KnowOtherQuotes) {
  EXPECT_EQ(words(u"X \u201Ca \"b\" c\u201D d"), u"[X][a \"b\" c][d]");
  EXPECT_EQ(words(u"X \u201Ea b\u201C d"), u"[X][a b][d]");
}

TEST(FieldWords, EndWithTheCode) {
  EXPECT_EQ(words(u""), u"");
  EXPECT_EQ(words(u"  "), u"");
  EXPECT_EQ(words(u"X \"open"), u"[X][open]");
  EXPECT_EQ(words(u"X \""), u"[X][]");
  EXPECT_EQ(words(u"X \\"), u"[X][\\]");
  EXPECT_EQ(words(u"X \"a\\"), u"[X][a\\]");
  EXPECT_EQ(words(u"X \"a\\\""), u"[X][a\"]");
}

TEST(FieldType, IsThatOfTheFileIfItTells) {
  EXPECT_EQ(fieldTypeOf(u" HYPERLINK \"x\"", 0x58), FieldType::kHyperlink);
  EXPECT_EQ(fieldTypeOf(u" SEITE ", 0x21), FieldType::kPage);
  EXPECT_EQ(fieldTypeOf(u"bookmark", 0x02), FieldType::kBareRef);
}

TEST(FieldType, IsToldByTheName) {
  for (const uint8_t flt : {0x00, 0x01, 0x60, 0xFF}) {
    EXPECT_EQ(fieldTypeOf(u" hyperlink \"x\"", flt), FieldType::kHyperlink);
    EXPECT_EQ(fieldTypeOf(u"\tPAGEREF x", flt), FieldType::kPageRef);
    EXPECT_EQ(fieldTypeOf(u"EQ \\f(1,2)", flt), FieldType::kEq);
    EXPECT_EQ(fieldTypeOf(u"=SUM(above)", flt), static_cast<FieldType>(0x22));
    EXPECT_EQ(fieldTypeOf(u"some_bookmark", flt), FieldType::kBareRef);
    EXPECT_EQ(fieldTypeOf(u"", flt), FieldType::kUnknown);
    EXPECT_EQ(fieldTypeOf(u"\\h", flt), FieldType::kUnknown);
  }
}

TEST(FieldDisplay, IsThatOfTheType) {
  EXPECT_EQ(fieldDisplay(0x21, u"PAGE"), FieldDisplay::kResult);
  EXPECT_EQ(fieldDisplay(0x04, u"XE \"x\""), FieldDisplay::kNothing);
  EXPECT_EQ(fieldDisplay(0x01, u"TC \"x\""), FieldDisplay::kNothing);
  EXPECT_EQ(fieldDisplay(0x08, u"INDEX"), FieldDisplay::kResult);
  EXPECT_EQ(fieldDisplay(0x31, u"EQ"), FieldDisplay::kEquation);
  EXPECT_EQ(fieldDisplay(0x39, u"SYMBOL"), FieldDisplay::kSymbol);
  EXPECT_EQ(fieldDisplay(0x33, u"MACROBUTTON"), FieldDisplay::kButtonText);
  EXPECT_EQ(fieldDisplay(0x46, u"FORMTEXT"), FieldDisplay::kFormText);
  EXPECT_EQ(fieldDisplay(0x47, u"FORMCHECKBOX"), FieldDisplay::kFormCheckBox);
  EXPECT_EQ(fieldDisplay(0x53, u"FORMDROPDOWN"), FieldDisplay::kFormDropDown);
  EXPECT_EQ(fieldDisplay(0x5A, u"LISTNUM"), FieldDisplay::kListNumber);
  EXPECT_EQ(fieldDisplay(0x36, u"AUTONUM"), FieldDisplay::kAutoNumber);
  EXPECT_EQ(fieldDisplay(0x00, u""), FieldDisplay::kResult);
}

/// "address|bookmark|title|target", or "none".
std::u16string link(std::u16string_view code, uint8_t flt = 1) {
  FieldLink found;
  if (!linkOf(code, flt, found)) return u"none";
  return found.address + u'|' + found.bookmark + u'|' + found.title + u'|' + found.target;
}

TEST(FieldLink, OfAHyperlinkHasAllParts) {
  EXPECT_EQ(link(u" HYPERLINK \"http://a.example/x?y=1\" "), u"http://a.example/x?y=1|||");
  EXPECT_EQ(link(u"HYPERLINK \"f.doc\" \\l \"bm\" \\o \"A tip\" \\t \"_top\"", 0x58), u"f.doc|bm|A tip|_top");
  EXPECT_EQ(link(u"HYPERLINK \\l \"_Toc1\""), u"|_Toc1||");
  EXPECT_EQ(link(u"HYPERLINK \\l bm \"f.doc\" \\n"), u"f.doc|bm||_blank");
  EXPECT_EQ(link(u"HYPERLINK mailto:a@b.example \\h"), u"mailto:a@b.example|||");
  EXPECT_EQ(link(u"HYPERLINK \\m \"http://a.example\" \\* MERGEFORMAT"), u"http://a.example|||");
  EXPECT_EQ(link(u"HYPERLINK \"#here\""), u"|here||");
  EXPECT_EQ(link(u"HYPERLINK \"a#b\""), u"a#b|||");
  EXPECT_EQ(link(u"HYPERLINK \"C:\\\\x\\\\y.doc\""), u"C:\\x\\y.doc|||");
}

TEST(FieldLink, OfAHyperlinkWithoutAGoalIsNone) {
  EXPECT_EQ(link(u"HYPERLINK"), u"none");
  EXPECT_EQ(link(u"HYPERLINK \"\" \\o \"tip\""), u"none");
}

TEST(FieldLink, OfAReferenceIsThereIfItCanBeFollowed) {
  EXPECT_EQ(link(u" REF _Ref12 \\h "), u"|_Ref12||");
  EXPECT_EQ(link(u" REF _Ref12 \\r \\h \\* MERGEFORMAT"), u"|_Ref12||");
  EXPECT_EQ(link(u" PAGEREF _Toc1 \\h", 0x25), u"|_Toc1||");
  EXPECT_EQ(link(u"NOTEREF n1 \\f \\h"), u"|n1||");
  EXPECT_EQ(link(u"FTNREF n1 \\h", 5), u"|n1||");
  EXPECT_EQ(link(u"bm1 \\h", 2), u"|bm1||");
  EXPECT_EQ(link(u"REF _Ref12"), u"none");
  EXPECT_EQ(link(u"REF \\h"), u"none");
}

TEST(FieldLink, IsThereForNoOtherField) {
  EXPECT_EQ(link(u"TOC \\o \"1-3\" \\h"), u"none");
  EXPECT_EQ(link(u"GOTOBUTTON bm text"), u"none");
  EXPECT_EQ(link(u"INCLUDEPICTURE \"x.gif\""), u"none");
  EXPECT_EQ(link(u""), u"none");
}

TEST(SymbolField, ShowsTheSignOfItsFont) {
  EXPECT_EQ(symbolFieldText(u"SYMBOL 183 \\f \"Symbol\" \\s 10"), u"•");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 0x4A \\f Wingdings \\h"), u"☺");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 61623 \\f \"Symbol\" \\u"), u"•");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 33 \\f \"Wingdings\""), u"\U0001F589");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 97", SymbolFont::kSymbol), u"α");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 97 \\f Arial", SymbolFont::kSymbol), u"a");
}

TEST(SymbolField, ShowsLettersByTheirCode) {
  EXPECT_EQ(symbolFieldText(u"SYMBOL 128 \\a"), u"€");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 169 \\f \"Arial\""), u"©");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 8364 \\u"), u"€");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 0x1F600 \\u"), u"\U0001F600");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 177 \\j"), u"ｱ");
  EXPECT_EQ(symbolFieldText(u"SYMBOL § \\f Arial"), u"§");
}

TEST(SymbolField, ShowsNothingWithoutACode) {
  EXPECT_EQ(symbolFieldText(u"SYMBOL"), u"");
  EXPECT_EQ(symbolFieldText(u"SYMBOL \\f Symbol \\s 10"), u"");
  EXPECT_EQ(symbolFieldText(u"SYMBOL \"\""), u"");
  EXPECT_EQ(symbolFieldText(u"SYMBOL 55296 \\u"), u"");
  EXPECT_EQ(symbolFieldText(u""), u"");
}

TEST(ButtonText, StandsBehindTheFirstArgument) {
  const std::u16string_view code = u" MACROBUTTON DoIt Click me ";
  EXPECT_EQ(code.substr(buttonTextStart(code)), u"Click me ");
  EXPECT_EQ(buttonTextStart(u"GOTOBUTTON \"b m\"  x"), 18u);
  EXPECT_EQ(buttonTextStart(u"MACROBUTTON DoIt"), 16u);
  EXPECT_EQ(buttonTextStart(u"MACROBUTTON"), 11u);
  EXPECT_EQ(buttonTextStart(u""), 0u);
}

TEST(FieldCode, OfAnyTextIsRead) {
  std::mt19937 random(5);
  const std::u16string_view signs = u"\\\"HYPERLINKSO REF12lohtf \u201C\u201D#\xD800\xDC00";
  for (int round = 0; round < 20000; ++round) {
    std::u16string code = round % 2 == 0 ? u"HYPERLINK " : u"SYMBOL ";
    for (size_t i = random() % 30; i > 0; --i) code += signs[random() % signs.size()];
    FieldLink found;
    if (linkOf(code, static_cast<uint8_t>(random()), found)) {
      EXPECT_FALSE(found.address.empty() && found.bookmark.empty());
    }
    EXPECT_LE(symbolFieldText(code).size(), 2u);
    EXPECT_LE(buttonTextStart(code), code.size());
  }
}

}  // namespace
}  // namespace pagerex
