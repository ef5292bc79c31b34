#include <gtest/gtest.h>

#include "formats/markdown/escape.h"
#include "support/markdown_of.h"

namespace pagerex {
namespace {

using support::FlowScript;
using support::markdownOf;

/// A paragraph of one look.
std::string paragraph(std::u16string_view text, std::string_view look = {}) {
  return markdownOf([&](FlowScript& s) { s.Paragraph([&] { s.Text(text, look); }); });
}

std::string inParagraph(const std::function<void(FlowScript&)>& inside) {
  return markdownOf([&](FlowScript& s) { s.Paragraph([&] { inside(s); }); });
}

/// One address for all.
class OneAddress final : public PictureOutput {
 public:
  PictureAddress AddressOf(const PictureFacts&) override { return {"p.png", true}; }
};

}  // namespace

TEST(MarkdownText, IsNotCutByPicturesThatFloat) {
  OneAddress pictures;
  const auto withPicture = [&](bool isInline, std::u16string_view before, std::u16string_view behind) {
    PictureFacts picture;
    picture.isInline = isInline;
    return markdownOf(
        [&](FlowScript& s) {
          s.Paragraph([&] {
            if (!before.empty()) s.Text(before);
            s.to.Picture(picture);
            if (!behind.empty()) s.Text(behind);
          });
        },
        {}, {}, &pictures);
  };
  EXPECT_EQ(withPicture(true, u"L", u"orem"), "L![](p.png)orem\n");
  EXPECT_EQ(withPicture(false, u"L", u"orem"), "Lorem ![](p.png)\n");
  EXPECT_EQ(withPicture(false, u"", u"Lorem"), "![](p.png) Lorem\n");
  EXPECT_EQ(withPicture(false, u"", u""), "![](p.png)\n");
}

TEST(MarkdownText, SeesWhereOtherPropertiesTookThePlaceOfTheLast) {
  RunProperties place;
  EXPECT_EQ(markdownOf([&](FlowScript& s) {
              s.Paragraph([&] { s.to.Text(u"plain", place); });
              place.bold = true;
              s.Paragraph([&] { s.to.Text(u"bold", place); });
            }),
            "plain\n\n**bold**\n");
}

TEST(MarkdownText, KeepsParagraphsApartAndLeavesEmptyOnesOut) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Paragraph(u"one");
              s.Paragraph(u" \t ");
              s.Paragraph(u" two ");
            }),
            "one\n\ntwo\n");
}

TEST(MarkdownText, EscapesOnlyWhatMeansSomething) {
  EXPECT_EQ(paragraph(u"a * b, 2*3*4, snake_case, _x_ and ~5"),
            "a * b, 2\\*3\\*4, snake_case, \\_x\\_ and \\~5\n");
  EXPECT_EQ(paragraph(u"a < b, <b>, a & b, &amp; `x` [y] c:\\dir \\*"),
            "a < b, \\<b>, a & b, \\&amp; \\`x\\` \\[y] c:\\dir \\\\\\*\n");
  EXPECT_EQ(paragraph(u"what! | a+b-c=d #1 (x)"), "what! | a+b-c=d #1 (x)\n");
}

TEST(MarkdownText, EscapesAtEachPlaceOfALongText) {
  constexpr size_t kLength = 75;
  for (const char16_t special : {u'`', u'[', u'*', u'_', u'~', u'<'}) {
    for (size_t at = 1; at + 1 < kLength; ++at) {
      std::u16string text(kLength, u'x');
      std::string expected(kLength, 'x');
      text[at] = special;
      expected[at] = static_cast<char>(special);
      if (special != '_') expected.insert(at, 1, '\\');
      EXPECT_EQ(paragraph(text), expected + "\n");
    }
  }
}

TEST(MarkdownText, FindsBrokenAddressesAtEachPlaceOfALongText) {
  for (size_t before = 1; before < 40; ++before) {
    const std::string words(before, 'x');
    const std::u16string wide(before, u'x');
    EXPECT_EQ(paragraph(wide + u" www.a`b and more."), words + " www\\.a\\`b and more.\n");
    EXPECT_EQ(paragraph(wide + u" ftp://a`b and more."), words + " ftp\\://a\\`b and more.\n");
  }
}

TEST(MarkdownText, LeavesOutWhatIsNoTextAtEachPlace) {
  constexpr size_t kLength = 75;
  for (size_t at = 0; at < kLength; ++at) {
    const std::u16string before(at, u'x'), behind(kLength - at, u'y');
    const std::string kept = std::string(at, 'x'), keptBehind = std::string(kLength - at, 'y') + "\n";
    EXPECT_EQ(paragraph(before + u'\x01' + behind), kept + keptBehind);
    EXPECT_EQ(paragraph(before + u'\xFFFF' + behind), kept + keptBehind);
    EXPECT_EQ(paragraph(before + u"\u00E9\u5929\U0001F600" + behind),
              kept + "\u00E9\u5929\U0001F600" + keptBehind);
  }
}

TEST(MarkdownText, SpellsHtmlAtEachPlaceOfALongText) {
  constexpr std::pair<char16_t, std::string_view> kRows[] = {
      {u'<', "&lt;"}, {u'>', "&gt;"}, {u'&', "&amp;"}, {u'"', "&quot;"}, {u'\u2014', "\u2014"},
  };
  constexpr size_t kLength = 75;
  for (const auto& [special, spelled] : kRows) {
    for (size_t at = 0; at < kLength; ++at) {
      std::u16string text(kLength, u'x');
      text[at] = special;
      std::string out;
      appendHtml(out, text);
      EXPECT_EQ(out, std::string(kLength, 'x').replace(at, 1, spelled));
    }
  }
}

TEST(MarkdownText, SpellsTextsLongerThanAStretch) {
  std::u16string text;
  std::string expected, html;
  for (int i = 0; i < 2000; ++i) {
    text += u"a`\u5929<";
    expected += "a\\`\u5929<";
    html += "a`\u5929&lt;";
  }
  std::string out;
  appendHtml(out, text);
  EXPECT_EQ(out, html);
  // "<" in front of a letter could begin a tag.
  for (size_t at = 0; (at = expected.find("<a", at)) != std::string::npos; at += 2)
    expected.insert(at, 1, '\\');
  EXPECT_EQ(paragraph(text + u" end"), expected + " end\n");
}

TEST(MarkdownText, EscapesWhatBeginsABlock) {
  constexpr std::pair<std::u16string_view, std::string_view> kRows[] = {
      {u"# a", "\\# a\n"},
      {u"#a", "#a\n"},
      {u"- a", "\\- a\n"},
      {u"-a", "-a\n"},
      {u"---", "\\---\n"},
      {u"+ a", "\\+ a\n"},
      {u"> a", "\\> a\n"},
      {u"1. a", "1\\. a\n"},
      {u"1.5 a", "1.5 a\n"},
      {u"12) a", "12\\) a\n"},
      {u"* a", "\\* a\n"},
      {u"= a", "= a\n"},
      {u"1234567890. a", "1234567890. a\n"},
  };
  for (const auto& [text, expected] : kRows) EXPECT_EQ(paragraph(text), expected);
}

TEST(MarkdownText, EscapesWhatUnderlinesTheLineAbove) {
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"a ").Here(Mark::kLineBreak).Text(u" ==="); }),
            "a\\\n\\===\n");
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"a|b").Here(Mark::kLineBreak).Text(u"-|-"); }),
            "a|b\\\n\\-|-\n");
}

TEST(MarkdownText, LeavesAddressesInTheTextWhole) {
  EXPECT_EQ(paragraph(u"see http://a.b/c_d?e=f&g=h and www.x.org"),
            "see http://a.b/c_d?e=f&g=h and www.x.org\n");
  EXPECT_EQ(paragraph(u"http://a/*b* www.a_"), "http\\://a/\\*b\\* www\\.a\\_\n");
}

TEST(MarkdownText, EmphasizesWithTheBlanksOutside) {
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"a").Text(u" bold ", "b").Text(u"c"); }),
            "a **bold** c\n");
  EXPECT_EQ(paragraph(u"x", "b i"), "***x***\n");
  EXPECT_EQ(paragraph(u"x", "s"), "~~x~~\n");
  EXPECT_EQ(paragraph(u"x", "u"), "<u>x</u>\n");
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"x").Text(u"2", "sup").Text(u"1", "sub"); }),
            "x<sup>2</sup><sub>1</sub>\n");
}

TEST(MarkdownText, JoinsRunsOfOneLook) {
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"one ", "b").Text(u" ").Text(u"two", "b"); }),
            "**one  two**\n");
}

TEST(MarkdownText, NestsLooks) {
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"a ", "b").Text(u"b", "b i").Text(u" c", "b"); }),
            "**a *b* c**\n");
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"a ", "b").Text(u"b", "b i"); }), "**a *b***\n");
}

TEST(MarkdownText, TakesTagsWhereDelimitersWouldNotDo) {
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"foo").Text(u"(bar)", "b").Text(u"baz"); }),
            "foo<strong>(bar)</strong>baz\n");
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"foo").Text(u"bar", "b").Text(u"baz"); }),
            "foo**bar**baz\n");
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"a", "b").Text(u"b", "i"); }), "**a**<em>b</em>\n");
}

TEST(MarkdownText, PutsBreaksOutsideOfEmphasis) {
  EXPECT_EQ(
      inParagraph([](FlowScript& s) {
        s.Here(Mark::kLineBreak).Text(u"a", "b").Here(Mark::kLineBreak).Text(u"b").Here(Mark::kLineBreak);
      }),
      "**a**\\\nb\n");
}

TEST(MarkdownText, WritesCode) {
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Text(u"call ").Text(u"f(*x)", "code").Text(u" now"); }),
            "call `f(*x)` now\n");
  EXPECT_EQ(paragraph(u"a`b``", "code"), "``` a`b`` ```\n");
}

TEST(MarkdownText, RaisesWhatIsMeantToBeRaised) {
  RunProperties run;
  const auto raisedBy = [&](int16_t halfPoints) {
    run.raisedHalfPoints = halfPoints;
    return markdownOf([&](FlowScript& s) { s.Paragraph([&] { s.to.Text(u"2", run); }); });
  };
  EXPECT_EQ(raisedBy(6), "<sup>2</sup>\n");
  EXPECT_EQ(raisedBy(-4), "<sub>2</sub>\n");
  EXPECT_EQ(raisedBy(1), "2\n");
  run.sizeHalfPoints = 60;
  EXPECT_EQ(raisedBy(-9), "2\n");
}

TEST(MarkdownText, PageBreaksLeaveHeadingsOnOneLine) {
  const RunProperties run;
  const ParagraphProperties properties;
  EXPECT_EQ(markdownOf([&](FlowScript& s) {
              s.to.BeginParagraph({properties, u"", 1, u"1.1", nullptr, ParagraphFacts::Follow::kTab, true,
                                   false, 1, 1, 0, run, 0});
              s.Here(Mark::kPageBreak).Text(u"Title");
              s.to.EndParagraph();
            }),
            "# 1.1  Title\n");
}

TEST(MarkdownText, LabelsHaveTheLookOfTheirText) {
  RunProperties bold;
  bold.bold = true;
  const ParagraphProperties properties;
  const auto labelled = [&](uint8_t headingLevel) {
    return markdownOf([&](FlowScript& s) {
      s.to.BeginParagraph({properties, u"", headingLevel, u"1.1", &bold, ParagraphFacts::Follow::kTab, true,
                           false, 1, 1, 0, bold, 0});
      s.to.Text(u"Title", bold);
      s.to.EndParagraph();
    });
  };
  EXPECT_EQ(labelled(1), "# 1.1 Title\n");
  EXPECT_EQ(labelled(0), "**1.1 Title**\n");
}

TEST(MarkdownText, WritesCapitalsAsTyped) {
  EXPECT_EQ(paragraph(u"\u00E9t\u00E9", "caps"), "\u00E9t\u00E9\n");
}

TEST(MarkdownText, LinksWithEscapedAddresses) {
  EXPECT_EQ(inParagraph([](FlowScript& s) {
              s.Link(
                  u"http://a.b/(c d)", [&] { s.Text(u"t]x"); }, {}, u"say \"hi\"");
            }),
            "[t\\]x](http://a.b/%28c%20d%29 \"say \\\"hi\\\"\")\n");
  EXPECT_EQ(inParagraph([](FlowScript& s) {
              s.Text(u"Hi!").Link(
                  {}, [&] { s.Text(u"t", "u"); }, u"place");
            }),
            "Hi\\![t](#place)\n");
  EXPECT_EQ(inParagraph([](FlowScript& s) { s.Link(u"http://a?b=1&copy;=2", [&] { s.Text(u"t"); }); }),
            "[t](http://a?b=1&amp;copy;=2)\n");
}

TEST(MarkdownText, LeavesUnsafeAddressesOutAndTells) {
  Warnings warnings;
  EXPECT_EQ(
      markdownOf(
          [](FlowScript& s) { s.Paragraph([&] { s.Link(u"javascript:alert(1)", [&] { s.Text(u"t"); }); }); },
          {}, {}, nullptr, &warnings),
      "t\n");
  ASSERT_EQ(warnings.all().size(), 1u);
  EXPECT_EQ(warnings.all()[0].where, "javascript");
}

TEST(MarkdownText, KeepsALinkWhole) {
  EXPECT_EQ(inParagraph([](FlowScript& s) {
              s.Text(u"a ", "b").Link(u"http://x", [&] { s.Text(u"b", "b").Text(u" c"); });
            }),
            "**a** [**b** c](http://x)\n");
}

TEST(MarkdownText, MarksPlaces) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Paragraph([&] { s.to.BookmarkStart(u"empty"); });
              s.Paragraph([&] {
                s.Text(u"# a");
                s.to.BookmarkStart(u"a \"b\"");
                s.to.BookmarkStart(u"_GoBack");
                s.to.BookmarkStart(u"_Hlk123");
                s.to.BookmarkStart(u"_PictureBullets");
              });
            }),
            "<a id=\"empty\"></a><a id=\"a%20%22b%22\"></a># a\n");
}

TEST(MarkdownText, MarksChanges) {
  EXPECT_EQ(inParagraph([](FlowScript& s) {
              s.to.BeginRevision({Revision::kDeleted, u"Ann", 0});
              s.Text(u"old");
              s.to.EndRevision();
              s.to.BeginRevision({Revision::kInserted, u"Ann", 0});
              s.Text(u"new");
              s.to.EndRevision();
            }),
            "<del>old</del><ins>new</ins>\n");
}

TEST(MarkdownText, WritesFormFields) {
  EXPECT_EQ(inParagraph([](FlowScript& s) {
              s.to.FormField({FormFieldFacts::Kind::kCheckBox, u"c", true, {}}, s.Look(""));
              s.to.FormField({FormFieldFacts::Kind::kDropDown, u"d", false, u"*blue"}, s.Look(""));
            }),
            "\u2612\\*blue\n");
}

}  // namespace pagerex
