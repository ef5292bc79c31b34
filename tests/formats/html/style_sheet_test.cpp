#include "formats/html/style_sheet.h"

#include <gtest/gtest.h>

#include <set>

namespace pagerex {
namespace {

std::string styleOf(std::u16string_view name) {
  StyleSheet sheet(nullptr);
  return sheet.AddStyle(name, "");
}

TEST(StyleSheet, HasOneClassForACombination) {
  StyleSheet sheet(nullptr);
  EXPECT_EQ(sheet.ClassOf('p', "color:red;"), "p1");
  EXPECT_EQ(sheet.ClassOf('p', "color:blue;"), "p2");
  EXPECT_EQ(sheet.ClassOf('p', "color:red;"), "p1");
  EXPECT_EQ(sheet.TakeRules(), "@layer pagerex.looks{\n.p1{color:red}\n.p2{color:blue}\n}\n");
}

TEST(StyleSheet, CountsEachKindForItself) {
  StyleSheet sheet(nullptr);
  EXPECT_EQ(sheet.ClassOf('p', "color:red;"), "p1");
  EXPECT_EQ(sheet.ClassOf('r', "color:red;"), "r1");
  EXPECT_EQ(sheet.ClassOf('r', "color:blue"), "r2");
  EXPECT_EQ(sheet.TakeRules(), "@layer pagerex.looks{\n.p1{color:red}\n.r1{color:red}\n.r2{color:blue}\n}\n");
}

TEST(StyleSheet, HasNoClassForNothing) {
  StyleSheet sheet(nullptr);
  EXPECT_EQ(sheet.ClassOf('p', ""), "");
  EXPECT_EQ(sheet.TakeRules(), "");
}

TEST(StyleSheet, GivesEachRuleOnce) {
  StyleSheet sheet(nullptr);
  sheet.ClassOf('p', "a:b");
  EXPECT_EQ(sheet.TakeRules(), "@layer pagerex.looks{\n.p1{a:b}\n}\n");
  EXPECT_EQ(sheet.ClassOf('p', "a:b"), "p1");
  EXPECT_EQ(sheet.TakeRules(), "");
  EXPECT_EQ(sheet.ClassOf('p', "c:d"), "p2");
  EXPECT_EQ(sheet.TakeRules(), "@layer pagerex.looks{\n.p2{c:d}\n}\n");
}

TEST(StyleSheet, PutsStylesBelowLooksAndOtherRulesOutside) {
  StyleSheet sheet(nullptr);
  sheet.ClassOf('p', "a:b");
  EXPECT_EQ(sheet.AddStyle(u"Title", "c:d;"), "Title");
  sheet.AddRule("@page x{}\n");
  EXPECT_EQ(sheet.TakeRules(),
            "@page x{}\n@layer pagerex.styles{\n.Title{c:d}\n}\n@layer pagerex.looks{\n.p1{a:b}\n}\n");
}

TEST(StyleSheet, NamesStylesThatSayNothingWithoutARule) {
  StyleSheet sheet(nullptr);
  EXPECT_EQ(sheet.AddStyle(u"Body Text", ""), "Body-Text");
  EXPECT_EQ(sheet.TakeRules(), "");
}

TEST(StyleSheet, MakesIdentifiersOfNames) {
  EXPECT_EQ(styleOf(u"heading 1"), "Heading-1");
  EXPECT_EQ(styleOf(u"List  (a, b)"), "List-a-b");
  EXPECT_EQ(styleOf(u"9 lives"), "Style-9-lives");
  EXPECT_EQ(styleOf(u"\u00DCberschrift \u4E00"),
            "\xC3\x9C"
            "berschrift-\xE4\xB8\x80");
  EXPECT_EQ(styleOf(u"a\u00A0b\u201Cc\u201D"), "A-b-c");
  EXPECT_EQ(styleOf(u"}*{x:y}<"), "X-y");
}

TEST(StyleSheet, CutsLongNames) {
  EXPECT_EQ(styleOf(std::u16string(500, u'x')), "X" + std::string(39, 'x'));
}

TEST(StyleSheet, NamesWhatHasNoLetters) {
  for (const char16_t* const name : {u"", u" ", u"***", u"\u2022"}) {
    const std::string made = styleOf(name);
    EXPECT_TRUE(made.starts_with("Style")) << made;
  }
}

TEST(StyleSheet, GivesNoNameTwice) {
  StyleSheet sheet(nullptr);
  std::set<std::string> names;
  for (const char16_t* const name : {u"A", u"a", u"A!", u"a-2", u"A 2", u"*", u"", u"A"})
    EXPECT_TRUE(names.insert(sheet.AddStyle(name, "x:y")).second);
}

TEST(StyleSheet, TellsWhenItIsFull) {
  constexpr int kMost = 1 << 14;
  Warnings warnings;
  StyleSheet sheet(&warnings);
  for (int i = 0; i < kMost; ++i) ASSERT_NE(sheet.ClassOf('p', "a:" + std::to_string(i)), "");
  EXPECT_TRUE(warnings.all().empty());
  EXPECT_EQ(sheet.ClassOf('p', "b:0"), "");
  EXPECT_EQ(sheet.ClassOf('p', "a:0"), "p1");
  ASSERT_EQ(warnings.all().size(), 1u);
  EXPECT_EQ(warnings.all()[0].code, WarningCode::kWorkLimit);
  EXPECT_EQ(warnings.all()[0].where, "styles");
}

}  // namespace
}  // namespace pagerex
