// What stands in paragraphs of a page.

#include <gtest/gtest.h>

#include "support/html_of.h"

namespace pagerex {
namespace {

using support::FlowScript;
using support::htmlOf;
using support::pageOf;

class Fonts final : public ToldFonts {
 public:
  std::u16string_view NameOf(uint16_t ftc) const override {
    constexpr std::u16string_view kNames[] = {u"Latin", u"Asian", u"Other", u"Complex"};
    return kNames[ftc % 4];
  }
  FontFacts FactsOf(uint16_t ftc) const override { return {.name = NameOf(ftc), .alternateName = {}}; }
};

ParagraphProperties withStops(std::vector<TabStop> stops) {
  ParagraphProperties paragraph;
  paragraph.tabs = std::move(stops);
  return paragraph;
}

/// One paragraph of its inlines.
std::string paragraphOf(const support::Script& inside) {
  return htmlOf([&](FlowScript& s) { s.Paragraph([&] { inside(s); }); });
}

TEST(PageParagraphs, EscapeTheirText) {
  EXPECT_EQ(paragraphOf([](FlowScript& s) { s.Text(u"1 < 2 & \"3\""); }), "<p>1 &lt; 2 &amp; \"3\"</p>\n");
}

TEST(PageParagraphs, HaveALineWithoutText) {
  EXPECT_EQ(paragraphOf([](FlowScript&) {}), "<p><br></p>\n");
  EXPECT_EQ(paragraphOf([](FlowScript& s) { s.Text(u""); }), "<p><br></p>\n");
  EXPECT_EQ(paragraphOf([](FlowScript& s) { s.Bookmark(u"here"); }), "<p id=here><br></p>\n");
}

TEST(PageParagraphs, HaveElementsForLooks) {
  EXPECT_EQ(paragraphOf([](FlowScript& s) {
              s.Text(u"a").Text(u"b", "b").Text(u"c", "b i").Text(u"d", "i").Text(u"e", "u s");
            }),
            "<p>a<b>b</b><b><i>c</i></b><i>d</i><u><s>e</s></u></p>\n");
  EXPECT_EQ(paragraphOf([](FlowScript& s) { s.Text(u"a").Text(u"b", "sup").Text(u"c", "sub"); }),
            "<p>a<sup>b</sup><sub>c</sub></p>\n");
}

TEST(PageParagraphs, TakeTheLookOfTheirFirstText) {
  RunProperties large;
  large.sizeHalfPoints = 40;
  const support::ToldPage page = pageOf([&](FlowScript& s) {
    s.Paragraph([&] {
      s.to.Text(u"a", large);
      s.Text(u"b");
      s.to.Text(u"c", large);
    });
  });
  EXPECT_EQ(page.blocks, "<p class=p1>a<span class=r1>b</span>c</p>\n");
  EXPECT_EQ(page.rules, "@layer pagerex.looks{\n.p1{font-size:20pt}\n.r1{font-size:10pt}\n}\n");
}

TEST(PageParagraphs, JoinTextOfOneLook) {
  EXPECT_EQ(paragraphOf([](FlowScript& s) { s.Text(u"a").Text(u"b", "i").Text(u"c", "i").Text(u"d"); }),
            "<p>a<i>bc</i>d</p>\n");
}

TEST(PageParagraphs, MeanWhatStylesMean) {
  support::PageChoices choices;
  choices.facts = [](FlowScript& s) {
    s.styles.names = {{30, u"Strong"}, {31, u"Emphasis"}, {32, u"Intense Emphasis"}};
  };
  EXPECT_EQ(htmlOf(
                [](FlowScript& s) {
                  RunProperties run;
                  run.bold = run.italic = true;
                  s.Paragraph([&] {
                    s.Text(u"a");
                    for (const uint16_t style : {30, 31, 32, 33}) {
                      run.characterStyle = style;
                      s.to.Text(u"b", run);
                    }
                  });
                },
                {}, choices),
            "<p>a<strong><i>b</i></strong><b><em>b</em></b><strong><em>b</em></strong><b><i>b</i></b></p>\n");
}

TEST(PageParagraphs, BreakLines) {
  EXPECT_EQ(paragraphOf([](FlowScript& s) {
              s.Text(u"a", "b").Here(Mark::kLineBreak).Text(u"b", "b").Here(Mark::kRule);
            }),
            "<p><b>a</b><br><b>b</b><span class=rule role=separator></span></p>\n");
}

TEST(PageParagraphs, HaveTheirOwnDirection) {
  ParagraphProperties rtl;
  rtl.isRightToLeft = true;
  EXPECT_EQ(htmlOf([&](FlowScript& s) { s.Paragraph(rtl, [&] { s.Text(u"a"); }); }), "<p dir=rtl>a</p>\n");
  support::PageChoices choices;
  choices.facts = [](FlowScript& s) { s.styles.paragraph.isRightToLeft = true; };
  EXPECT_EQ(htmlOf(
                [&](FlowScript& s) {
                  s.Paragraph(u"a");
                  s.Paragraph(rtl, [&] { s.Text(u"b"); });
                },
                {}, choices),
            "<p dir=ltr>a</p>\n<p>b</p>\n");
}

TEST(PageParagraphs, TellTheirLanguages) {
  RunProperties german;
  german.language = 0x407;
  EXPECT_EQ(paragraphOf([&](FlowScript& s) {
              s.Text(u"a");
              s.to.Text(u"b", german);
            }),
            "<p>a<span lang=de-DE>b</span></p>\n");
  EXPECT_EQ(paragraphOf([&](FlowScript& s) {
              s.to.Text(u"b", german);
              s.Text(u"a");
            }),
            "<p lang=de-DE>b<span lang=en-US>a</span></p>\n");
}

TEST(PageParagraphs, TellTheLanguageOfAScript) {
  RunProperties run;
  run.eastAsianLanguage = 0x411;
  EXPECT_EQ(paragraphOf([&](FlowScript& s) { s.to.Text(u"a\u4E00b", run); }),
            "<p>a<span lang=ja-JP>\xE4\xB8\x80</span>b</p>\n");
  run = {};
  run.isRightToLeft = true;
  run.complexLanguage = 0x40D;
  EXPECT_EQ(paragraphOf([&](FlowScript& s) { s.to.Text(u"\u05D0", run); }),
            "<p><span lang=he-IL>\xD7\x90</span></p>\n");
}

TEST(PageParagraphs, ShowScriptsInTheirFonts) {
  const Fonts fonts;
  support::PageChoices choices;
  choices.facts = [&](FlowScript& s) { s.fonts = &fonts; };
  RunProperties run;
  run.fonts = {0, 1, 2, 3};
  const support::ToldPage page = pageOf(
      [&](FlowScript& s) { s.Paragraph([&] { s.to.Text(u"a \u4E00 \u00E4 \u05D0 b", run); }); }, {}, choices);
  EXPECT_EQ(page.blocks,
            "<p>a <span class=r1>\xE4\xB8\x80 </span><span class=r2>\xC3\xA4 </span><span class=r3>\xD7\x90 "
            "</span>b</p>\n");
  EXPECT_EQ(page.rules,
            "@layer pagerex.looks{\n.r1{font-family:\"Asian\",serif}\n.r2{font-family:\"Other\",serif}\n"
            ".r3{font-family:\"Complex\",serif}\n}\n");
  EXPECT_NE(page.baseRules.find("font-family:\"Latin\",serif"), std::string::npos);
}

TEST(PageParagraphs, SplitNoCharacterBetweenScripts) {
  const Fonts fonts;
  support::PageChoices choices;
  choices.facts = [&](FlowScript& s) { s.fonts = &fonts; };
  RunProperties run;
  run.fonts = {0, 1, 0, 0};
  EXPECT_EQ(htmlOf(
                [&](FlowScript& s) {
                  s.Paragraph([&] {
                    s.to.Text(
                        u"a\xD840\xDC00"
                        u"b",
                        run);
                  });
                },
                {}, choices),
            "<p>a<span class=r1>\xF0\xA0\x80\x80</span>b</p>\n");
}

TEST(PageParagraphs, LeaveUsualTabsToTheBrowser) {
  EXPECT_EQ(paragraphOf([](FlowScript& s) { s.Here(Mark::kTab).Text(u"a").Here(Mark::kTab); }),
            "<p>\ta\t</p>\n");
}

TEST(PageParagraphs, GoToTheirTabStops) {
  const support::ToldPage page = pageOf([](FlowScript& s) {
    s.Paragraph(withStops({{2000, 0, 0}, {4000, 1, 0}, {8000, 2, 1}}), [&] {
      s.Text(u"a").Here(Mark::kTab).Text(u"b").Here(Mark::kTab).Text(u"c").Here(Mark::kTab).Text(u"d");
    });
  });
  EXPECT_EQ(page.blocks,
            "<p><span class=\"t g1\">a\t</span>"
            "<span class=\"tf tc g2\"><span>b</span><span class=\"tl\">\t</span><span>c</span></span>"
            "<span class=\"tf g3\"><span></span><span class=\"tl tl1\">\t</span><span>d</span></span></p>\n");
  EXPECT_EQ(page.rules,
            "@layer pagerex.looks{\n.g1{min-width:100pt}\n.g2{width:100pt}\n.g3{width:200pt}\n}\n");
}

TEST(PageParagraphs, FillTheWayToALeftStopToo) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph(withStops({{2000, 0, 3}}), [&] { s.Text(u"a").Here(Mark::kTab).Text(u"b"); });
            }),
            "<p><span class=\"tf g1\">a<span class=\"tl tl3\">\t</span></span>b</p>\n");
}

TEST(PageParagraphs, BeginTheirTabStopsAnewInEachLine) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph(withStops({{2000, 0, 0}}), [&] {
                s.Text(u"a").Here(Mark::kTab).Here(Mark::kLineBreak).Text(u"b").Here(Mark::kTab).Text(u"c");
              });
            }),
            "<p><span class=\"t g1\">a\t</span><br><span class=\"t g1\">b\t</span>c</p>\n");
}

TEST(PageParagraphs, NestTabStopsInLinks) {
  const support::Script inside = [](FlowScript& s) {
    s.Paragraph(withStops({{8000, 2, 1}}), [&] {
      s.Link(
          u"", [&] { s.Text(u"One").Here(Mark::kTab).Text(u"1"); }, u"a");
    });
  };
  EXPECT_EQ(htmlOf(inside),
            "<p><a href=\"#a\"><span class=\"tf g1\"><span>One</span><span class=\"tl tl1\">\t</span>"
            "<span>1</span></span></a></p>\n");
}

TEST(PageParagraphs, CutLinksAtTabStopsThatBeganInFrontOfThem) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph(withStops({{2000, 0, 0}}), [&] {
                s.Text(u"a").Link(u"http://x/", [&] { s.Text(u"b").Here(Mark::kTab).Text(u"c"); });
              });
            }),
            "<p><span class=\"t g1\">a<a href=\"http://x/\">b</a>\t</span><a href=\"http://x/\">c</a></p>\n");
}

TEST(PageParagraphs, KeepRightStopsWithinTheLine) {
  const support::ToldPage page = pageOf([](FlowScript& s) {
    s.Paragraph(withStops({{20000, 2, 0}}), [&] { s.Here(Mark::kTab).Text(u"a"); });
  });
  EXPECT_NE(page.rules.find(".g1{width:432pt}"), std::string::npos) << page.rules;
}

TEST(PageParagraphs, ShowFormsAsTheirText) {
  EXPECT_EQ(paragraphOf([](FlowScript& s) {
              const RunProperties& look = s.Look("");
              using Kind = FormFieldFacts::Kind;
              s.to.FormField({Kind::kCheckBox, u"n", true, {}}, look);
              s.to.FormField({Kind::kCheckBox, u"n", false, {}}, look);
              s.to.FormField({Kind::kDropDown, u"n", false, u"<choice>"}, look);
              s.to.FormField({Kind::kText, u"n", false, {}}, look);
              s.Text(u"typed");
            }),
            "<p>\xE2\x98\x92\xE2\x98\x90&lt;choice>typed</p>\n");
}

TEST(PageParagraphs, MarkChanges) {
  constexpr uint32_t kDttm = 0x06B11343;
  EXPECT_EQ(paragraphOf([](FlowScript& s) {
              s.Text(u"a").Changed(
                  Revision::kInserted, [&] { s.Text(u"b"); }, u"Ann \"<\"", kDttm);
              s.Changed(Revision::kDeleted, [&] { s.Text(u"c", "b"); });
            }),
            "<p>a<ins datetime=\"2007-01-02\" title=\"Ann "
            "&quot;&lt;&quot;\">b</ins><del><b>c</b></del></p>\n");
  EXPECT_EQ(paragraphOf([](FlowScript& s) {
              s.Changed(Revision::kMovedHere, [&] { s.Text(u"a"); });
              s.Changed(Revision::kMovedAway, [&] { s.Text(u"b"); });
            }),
            "<p><ins>a</ins><del>b</del></p>\n");
}

TEST(PageParagraphs, HaveNoElementsAroundNothing) {
  EXPECT_EQ(paragraphOf([](FlowScript& s) {
              s.Changed(Revision::kDeleted, [] {}).Link(u"http://x/", [] {}).Text(u"a");
              s.Changed(Revision::kInserted, [&] { s.Link(u"http://x/", [] {}); });
            }),
            "<p>a</p>\n");
}

}  // namespace
}  // namespace pagerex
