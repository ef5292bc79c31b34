// What stands around the blocks of a page.

#include "formats/html/page_frame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/sha256.h"
#include "support/html_of.h"

namespace pagerex {
namespace {

using support::FlowScript;
using support::pageOf;
using testing::HasSubstr;
using testing::Not;

support::ToldPage pageWith(const support::Script& facts, bool darkScheme = false) {
  support::PageChoices choices;
  choices.facts = facts;
  choices.darkScheme = darkScheme;
  return pageOf([](FlowScript& s) { s.Paragraph(u"x"); }, {}, choices);
}

TEST(PageFrame, IsThatOfADocument) {
  PageFrame frame;
  frame.title = "T";
  frame.language = "de";
  frame.isRightToLeft = true;
  const std::string head = pageHead(frame, "R");
  EXPECT_TRUE(head.starts_with("<!doctype html>\n<html lang=de dir=rtl><head><meta charset=utf-8>\n"))
      << head;
  EXPECT_THAT(head, HasSubstr("<meta name=viewport content=\"width=device-width,initial-scale=1\">"));
  EXPECT_TRUE(head.ends_with("<title>T</title>\n<style>R</style>\n</head><body><main>\n")) << head;
}

TEST(PageFrame, AllowsItsOwnStyleAlone) {
  const support::ToldPage page = pageWith([](FlowScript&) {});
  const std::string whole = page.whole();
  const size_t begin = whole.find("<style>") + 7, end = whole.find("</style>");
  const std::string style = whole.substr(begin, end - begin);
  EXPECT_THAT(whole, HasSubstr("content=\"default-src 'none';style-src 'sha256-" + base64OfSha256(style) +
                               "';img-src 'self' data:\">"));
  EXPECT_EQ(whole.find("<style", end), std::string::npos);
}

TEST(PageFrame, AllowsFurtherRulesWhereTheyAreToCome) {
  PageFrame frame;
  frame.showsOwnStyleOnly = false;
  EXPECT_THAT(pageHead(frame, ""), HasSubstr("style-src 'unsafe-inline';"));
  EXPECT_THAT(pageHead(frame, ""), HasSubstr("default-src 'none'"));
}

TEST(PageFrame, HasARuleForEachClassThatIsNotMade) {
  const std::string rules = pageWith([](FlowScript&) {}).baseRules;
  for (const char* const name :
       {"pb", "cb", "x",       "t", "tf",       "tl", "tl1", "tl5",  "tc",    "dp",
        "lb", "cr", "missing", "a", "text-box", "sh", "g",   "rule", "notes", "comments"}) {
    const std::string dot = "." + std::string(name);
    bool isThere = false;
    for (const char* const behind : {"{", ",", ">"}) isThere |= rules.find(dot + behind) != std::string::npos;
    EXPECT_TRUE(isThere) << name;
  }
}

TEST(PageFrame, HasTheTitleOfTheDocument) {
  EXPECT_EQ(pageWith([](FlowScript& s) { s.summary.title = u"A <t> & \u0085b"; }).frame.title,
            "A &lt;t> &amp; b");
  for (const char16_t* const blank : {u"", u"  ", u"\u00A0\t"})
    EXPECT_EQ(pageWith([&](FlowScript& s) { s.summary.title = blank; }).frame.title, "");
}

TEST(PageFrame, HasTheLanguageAndDirectionOfTheDocument) {
  const support::ToldPage page = pageWith([](FlowScript& s) {
    s.language = 0x407;
    s.styles.paragraph.isRightToLeft = true;
  });
  EXPECT_EQ(page.frame.language, "de-DE");
  EXPECT_TRUE(page.frame.isRightToLeft);
  EXPECT_EQ(pageWith([](FlowScript& s) { s.language = 0x0400; }).frame.language, "");
}

TEST(PageFrame, HasTheMeasuresOfThePaper) {
  const support::ToldPage page = pageWith([](FlowScript& s) {
    s.section.pageWidth = 11906;
    s.section.pageHeight = 16838;
    s.section.marginLeft = s.section.marginRight = 1440;
  });
  EXPECT_THAT(page.baseRules, HasSubstr("max-width:451.3pt;padding:72pt clamp(16px,5vw,72pt)"));
  EXPECT_THAT(page.baseRules, HasSubstr("@page{size:595.3pt 841.9pt;margin:72pt"));
}

TEST(PageFrame, HasSoundMeasuresForAnyPaper) {
  const support::ToldPage page = pageWith([](FlowScript& s) {
    s.section.pageWidth = 0;
    s.section.marginLeft = s.section.marginRight = s.section.gutter = 65535;
    s.section.marginTop = -32768;
  });
  EXPECT_THAT(page.baseRules, HasSubstr("max-width:144pt;padding:72pt clamp(16px,5vw,144pt)"));
}

TEST(PageFrame, HasTheTextOfStyleNormal) {
  const support::ToldPage page = pageWith([](FlowScript& s) {
    s.styles.run.sizeHalfPoints = 23;
    s.styles.paragraph.spaceAfter = 200;
  });
  EXPECT_THAT(page.baseRules, HasSubstr("font-size:11.5pt"));
  EXPECT_THAT(page.baseRules, HasSubstr("pre-wrap);margin-bottom:10pt"));
}

TEST(PageFrame, KnowsStyleNormalWhenTheDocumentIsGone) {
  class Fonts final : public ToldFonts {
   public:
    ~Fonts() override { isThere = false; }
    std::u16string_view NameOf(uint16_t ftc) const override {
      return ftc != 0 ? u"" : isThere ? u"Told" : u"Gone";
    }
    FontFacts FactsOf(uint16_t ftc) const override { return {.name = NameOf(ftc), .alternateName = {}}; }
    bool isThere = true;
  };
  support::KeptBlocks blocks;
  StyleSheet sheet(nullptr);
  const std::unique_ptr<PictureOutput> none = makeNoPictures(nullptr);
  HtmlWriter writer(blocks, sheet, {}, *none, nullptr);
  {
    const Fonts fonts;
    FlowScript script(writer);
    script.fonts = &fonts;
    script.Document([] {});
  }
  EXPECT_THAT(writer.BaseRules(false), HasSubstr("font-family:\"Told\""));
}

TEST(PageFrame, IsDarkOnDarkScreensIfAskedFor) {
  const auto nothing = [](FlowScript&) {};
  EXPECT_THAT(pageWith(nothing, true).baseRules, HasSubstr("(prefers-color-scheme:dark)"));
  EXPECT_THAT(pageWith(nothing, false).baseRules, Not(HasSubstr("prefers-color-scheme")));
}

TEST(PageFrame, PutsItsRulesBelowThoseOfADocument) {
  EXPECT_TRUE(pageWith([](FlowScript&) {
              }).baseRules.starts_with("@layer pagerex{@layer base,styles,looks,small;@layer base{"));
}

}  // namespace
}  // namespace pagerex
