// Links, places, notes, comments, headers and boxes of a page.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "support/html_of.h"

namespace pagerex {
namespace {

using support::FlowScript;
using support::htmlOf;
using support::pageOf;
using testing::HasSubstr;
using testing::Not;

constexpr char kRuleOfPages[] = "<hr class=pb role=doc-pagebreak>\n";

std::string linkTo(std::u16string_view address, std::u16string_view bookmark = {},
                   std::u16string_view title = {}) {
  const std::string page = htmlOf([&](FlowScript& s) {
    s.Paragraph([&] {
      s.Link(
          address, [&] { s.Text(u"x"); }, bookmark, title);
    });
  });
  return page.substr(3, page.size() - 8);  // without the paragraph around it
}

/// What a page says in each `name="..."` or `name=...`.
std::multiset<std::string> valuesOf(const std::string& page, const std::string& name) {
  std::multiset<std::string> values;
  const std::string attribute = " " + name + "=";
  for (size_t at = page.find(attribute); at != std::string::npos; at = page.find(attribute, at + 1)) {
    size_t begin = at + attribute.size();
    if (begin < page.size() && page[begin] == '"') ++begin;
    values.insert(page.substr(begin, page.find_first_of("\" >", begin) - begin));
  }
  return values;
}

TEST(PageLinks, EscapeTheirAddress) {
  EXPECT_EQ(linkTo(u"http://x.example/a b?c=\"d\"&e=<f>#g"),
            "<a href=\"http://x.example/a%20b?c=%22d%22&amp;e=%3Cf%3E#g\">x</a>");
  EXPECT_EQ(linkTo(u"http://x/100%/%41%zz"), "<a href=\"http://x/100%25/%41%25zz\">x</a>");
  EXPECT_EQ(linkTo(u"http://x/\u00E4'"), "<a href=\"http://x/\xC3\xA4'\">x</a>");
}

TEST(PageLinks, LeadToPlacesOfTheDocument) {
  EXPECT_EQ(linkTo(u"", u"My Mark"), "<a href=\"#My_Mark\">x</a>");
  EXPECT_EQ(linkTo(u"http://x/", u"a b"), "<a href=\"http://x/#a%20b\">x</a>");
}

TEST(PageLinks, HaveTheirTip) {
  EXPECT_EQ(linkTo(u"http://x/", u"", u"a \"b\" <"),
            "<a href=\"http://x/\" title=\"a &quot;b&quot; &lt;\">x</a>");
}

TEST(PageLinks, ToNowhereAreText) {
  EXPECT_EQ(linkTo(u""), "x");
}

TEST(PageLinks, ThatMayNotBeFollowedAreTextAndTold) {
  for (const char16_t* const address :
       {u"javascript:alert(1)", u"JavaScript:x", u"data:text/html,x", u"vbscript:x"})
    EXPECT_EQ(linkTo(address), "x");
  const support::ToldPage page =
      pageOf([](FlowScript& s) { s.Paragraph([&] { s.Link(u"javascript:x", [&] { s.Text(u"x"); }); }); });
  ASSERT_EQ(page.warnings.all().size(), 1u);
  EXPECT_EQ(page.warnings.all()[0].code, WarningCode::kLinkRemoved);
  EXPECT_EQ(page.warnings.all()[0].where, "javascript");
}

TEST(PageLinks, ThatMayBeFollowedIfAskedFor) {
  support::PageChoices choices;
  choices.options.links = LinkPolicy::kAll;
  const auto inside = [](FlowScript& s) { s.Paragraph([&] { s.Link(u"odd:x", [&] { s.Text(u"x"); }); }); };
  EXPECT_EQ(htmlOf(inside, {}, choices), "<p><a href=\"odd:x\">x</a></p>\n");
}

TEST(PageLinks, DoNotNest) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph([&] {
                s.Link(u"http://x/",
                       [&] { s.Text(u"a").Link(u"http://y/", [&] { s.Text(u"b"); }).Text(u"c"); });
              });
            }),
            "<p><a href=\"http://x/\">abc</a></p>\n");
}

TEST(PageLinks, EndAroundReferences) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph([&] {
                s.Link(u"http://x/", [&] {
                  s.Comment(0, u"Ann", u"A").Text(u"a").Note(NoteKind::kFootnote, 0, u"1").Text(u"b");
                });
              });
            }),
            "<p><a class=cr id=comment-ref-1 href=#comment-1>[A1]</a><a href=\"http://x/\">a</a>"
            "<sup><a role=doc-noteref id=footnote-ref-1 href=#footnote-1>1</a></sup>"
            "<a href=\"http://x/\">b</a></p>\n");
}

TEST(PagePlaces, AreIdsOfParagraphsOrStandInThem) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph([&] { s.Bookmark(u"a").Bookmark(u"b").Text(u"x").Bookmark(u"c"); });
              s.Heading(1, [&] { s.Bookmark(u"d").Text(u"H"); });
            }),
            "<p id=a><span id=b></span>x<span id=c></span></p>\n<h1 class=Heading-1 id=d>H</h1>\n");
}

TEST(PagePlaces, StandOnce) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph([&] { s.Bookmark(u"a b").Text(u"x").Bookmark(u"a b").Bookmark(u"a_b"); });
            }),
            "<p id=a_b>x</p>\n");
}

TEST(PagePlaces, HaveNamesThatNothingGetsOutOf) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph([&] { s.Bookmark(u"a\"> <b").Text(u"x").Bookmark(u"\u00E4\u4E00"); });
            }),
            "<p id=a____b>x<span id=\xC3\xA4\xE4\xB8\x80></span></p>\n");
}

TEST(PagePlaces, HaveNoControls) {
  EXPECT_EQ(htmlOf([](FlowScript& s) { s.Paragraph([&] { s.Bookmark(u"a\u0085b\uFFFE").Text(u"x"); }); }),
            "<p id=a_b_>x</p>\n");
  EXPECT_EQ(linkTo(u"http://x/\u0085"), "<a href=\"http://x/_\">x</a>");
}

TEST(PagePlaces, OfWordItselfAreLeftOut) {
  EXPECT_EQ(
      htmlOf([](FlowScript& s) {
        s.Paragraph([&] {
          s.Bookmark(u"_GoBack").Bookmark(u"_Hlk123").Bookmark(u"_PictureBullets").Bookmark(u"").Text(u"x");
        });
      }),
      "<p>x</p>\n");
}

/// Notes of both kinds, comments, and bookmarks that would have their ids.
support::ToldPage pageOfNotes() {
  return pageOf(
      [](FlowScript& s) {
        s.Paragraph([&] {
          s.Bookmark(u"footnote-1").Bookmark(u"comment-1").Text(u"a");
          s.Note(NoteKind::kFootnote, 0, u"1").Note(NoteKind::kEndnote, 0, u"i").Comment(0, u"Ann", u"A");
          s.Note(NoteKind::kFootnote, 1, u"2").Note(NoteKind::kFootnote, 0, u"1");
        });
      },
      [](FlowScript& s) {
        for (uint32_t i = 0; i < 2; ++i) {
          s.NoteText(NoteKind::kFootnote, i, u"1", [&] {
            s.Paragraph(
                [&] { s.Mark(NoteKind::kFootnote, i, u"1").Text(u" foot").Bookmark(u"footnote-ref-1"); });
          });
        }
        s.NoteText(NoteKind::kEndnote, 0, u"i", [&] { s.Paragraph(u"end"); });
        s.CommentText(0, u"Ann", u"A", 0, [&] { s.Paragraph(u"what"); });
      });
}

TEST(PageNotes, AreLinkedBothWays) {
  const std::string page = pageOfNotes().blocks;
  EXPECT_THAT(page, HasSubstr("<a role=doc-noteref id=footnote-ref-1 href=#footnote-1>1</a>"));
  EXPECT_THAT(page, HasSubstr("<aside role=doc-footnote id=footnote-1>\n<p>"
                              "<sup><a role=doc-backlink href=#footnote-ref-1>1</a></sup> foot<span "
                              "id=footnote_ref_1></span></p>\n</aside>"));
  EXPECT_THAT(page, HasSubstr("<a role=doc-noteref id=endnote-ref-1 href=#endnote-1>i</a>"));
  EXPECT_THAT(page, HasSubstr("<a class=cr id=comment-ref-1 href=#comment-1>[A1]</a>"));
}

TEST(PageNotes, LeadOnlyToWhatThereIs) {
  const std::string page = pageOfNotes().blocks;
  const std::multiset<std::string> ids = valuesOf(page, "id");
  for (const std::string& address : valuesOf(page, "href")) {
    ASSERT_TRUE(address.starts_with("#")) << address;
    EXPECT_EQ(ids.count(address.substr(1)), 1u) << address;
  }
}

TEST(PageNotes, HaveIdsOfTheirOwn) {
  const std::multiset<std::string> ids = valuesOf(pageOfNotes().blocks, "id");
  EXPECT_GE(ids.size(), 10u);
  EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
}

TEST(PageNotes, WithoutAMarkHaveAWayBackBehindThem) {
  EXPECT_THAT(pageOfNotes().blocks,
              HasSubstr("<div id=endnote-1>\n<p>end</p>\n"
                        "<p><a role=doc-backlink href=#endnote-ref-1>\xE2\x86\xA9</a></p>\n</div>"));
}

TEST(PageNotes, HaveOneLinkBack) {
  const std::string page = htmlOf(
      [](FlowScript&) {},
      [](FlowScript& s) {
        s.NoteText(NoteKind::kFootnote, 0, u"1", [&] {
          s.Paragraph([&] { s.Mark(NoteKind::kFootnote, 0, u"1").Mark(NoteKind::kFootnote, 0, u"1"); });
        });
      });
  EXPECT_THAT(page, HasSubstr("<sup><a role=doc-backlink href=#footnote-ref-1>1</a>1</sup></p>"));
}

TEST(PageNotes, StandInSectionsByTheirKind) {
  const std::string page = pageOfNotes().blocks;
  const size_t endnotes = page.rfind("<section class=notes"), comments = page.find("<section class=comments");
  EXPECT_LT(page.find("<section class=notes"), endnotes);
  EXPECT_LT(page.find("id=footnote-2>"), endnotes);
  EXPECT_LT(endnotes, page.find("id=endnote-1>"));
  EXPECT_LT(page.find("id=endnote-1>"), comments);
}

TEST(PageComments, TellWhoAndWhen) {
  const auto comment = [](FlowScript& s) {
    s.CommentText(0, u"Ann <", u"A&", 0x06B11343, [&] { s.Paragraph(u"what"); });
    s.CommentText(1, u"", u"", 0, [] {});
  };
  EXPECT_THAT(
      htmlOf([](FlowScript&) {}, comment),
      HasSubstr("<section class=comments>\n<aside class=comment id=comment-1>\n"
                "<p class=ch><a role=doc-backlink href=#comment-ref-1>[A&amp;1]</a> <b>Ann &lt;</b> "
                "<time datetime=\"2007-01-02T13:03\">2007-01-02 13:03</time></p>\n<p>what</p>\n</aside>\n"
                "<aside class=comment id=comment-2>\n<p class=ch><a role=doc-backlink "
                "href=#comment-ref-2>[2]</a></p>\n</aside>\n</section>\n"));
}

TEST(PageComments, StayAwayWhereTheyAreNotWanted) {
  support::PageChoices choices;
  choices.options.comments = false;
  EXPECT_EQ(htmlOf([](FlowScript& s) { s.Paragraph([&] { s.Text(u"a").Comment(0, u"Ann", u"A"); }); },
                   [](FlowScript& s) {
                     s.CommentText(0, u"Ann", u"A", 0, [&] {
                       s.Paragraph(u"gone");
                       s.Table([&] { s.Row({u"gone"}); });
                     });
                   },
                   choices),
            "<p>a</p>\n");
}

TEST(PageHeaders, StandAroundTheirSection) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Header([&] { s.Paragraph(u"top"); });
              s.Header([&] { s.Paragraph(u"foot"); }, true);
              s.Paragraph(u"x");
              s.NextSection({});
              s.Header([&] { s.Table([&] { s.Row({u"t"}); }); });
              s.Paragraph(u"y");
            }),
            std::string("<header>\n<p>top</p>\n</header>\n<p>x</p>\n<footer>\n<p>foot</p>\n</footer>\n") +
                kRuleOfPages +
                "<header>\n<div class=x><table"
                "><colgroup></colgroup>\n<tbody><tr><td><p>t</p>\n</td></tr>\n"
                "</tbody></table></div>\n</header>\n<p>y</p>\n");
}

TEST(PageHeaders, ThatShowNothingAreLeftOut) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Header([&] { s.Paragraph([] {}); });
              s.Header([&] { s.Paragraph([] {}); }, true);
              s.Header([] {});
              s.Paragraph(u"x");
            }),
            "<p>x</p>\n");
}

TEST(PageSections, WithColumnsOrPaperOfTheirOwnAreElements) {
  SectionProperties columns, wide;
  columns.columnCount = 2;
  wide.start = SectionProperties::Start::kContinuous;
  wide.pageWidth = 15840;
  wide.pageHeight = 12240;
  const support::ToldPage page = pageOf([&](FlowScript& s) {
    s.Paragraph(u"x");
    s.NextSection(columns);
    s.Paragraph(u"y");
    s.NextSection(wide);
    s.Paragraph(u"z");
  });
  EXPECT_EQ(page.blocks, std::string("<p>x</p>\n") + kRuleOfPages +
                             "<div class=s1>\n<p>y</p>\n</div>\n<div class=s2>\n<p>z</p>\n</div>\n");
  EXPECT_EQ(page.rules,
            "@page page3{size:792pt 612pt;margin:72pt 90pt}\n"
            "@layer pagerex.looks{\n.s1{column-count:2;column-gap:36pt}\n.s2{page:page3}\n}\n");
}

PictureFacts floating(uint8_t wrap) {
  PictureFacts facts;
  facts.isInline = false;
  facts.wrap = wrap;
  facts.width = 2000;
  facts.height = 1000;
  return facts;
}

TEST(PageBoxes, StandInFrontOfTheirParagraph) {
  EXPECT_EQ(
      htmlOf([](FlowScript& s) {
        s.Paragraph(u"x");
        s.TextBox(floating(0), [&] { s.Paragraph(u"box"); });
        s.TextBox(floating(0), [&] { s.Item(u"1.", 0, u"i"); });
        s.Paragraph(u"y");
      }),
      "<div class=\"text-box fl b1\">\n<p>box</p>\n</div>\n<div class=\"text-box fl b1\">\n<ol role=list>\n"
      "<li><p><span class=m1>1. </span>i</p>\n</li>\n</ol>\n</div>\n<p>x</p>\n<p>y</p>\n");
}

TEST(PageBoxes, ThatLieOverTextHangAtTheirParagraph) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph(u"x");
              s.TextBox(floating(3), [&] { s.Paragraph(u"box"); });
              s.Paragraph(u"y");
            }),
            "<div class=a><p>x</p>\n<div class=\"text-box fl b1\">\n<p>box</p>\n</div>\n</div>\n<p>y</p>\n");
}

TEST(PageBoxes, OnTheFirstPaperHaveTheSamePlaceInPieces) {
  ShapeFacts shape;
  shape.box = {720, 1440, 2000, 1000};
  shape.place.fromY = ShapePlace::From::kPage;
  PictureFacts onPaper = floating(3);
  onPaper.shape = &shape;
  const auto blocks = [&](size_t before, uint64_t pieceSize) {
    support::PageChoices choices;
    choices.pieceSize = pieceSize;
    return htmlOf(
        [&](FlowScript& s) {
          s.Paragraph(std::u16string(before, u'x'));
          s.Paragraph(u"y");
          s.TextBox(onPaper, [&] { s.Paragraph(u"box"); });
        },
        {}, choices);
  };
  EXPECT_THAT(blocks(100, UINT64_MAX), Not(HasSubstr("<div class=a>"))) << "counts from the page";
  EXPECT_THAT(blocks(9000, UINT64_MAX), HasSubstr("<div class=a>")) << "counts from its paragraph";
  for (const size_t before : {100, 9000}) EXPECT_EQ(blocks(before, 50), blocks(before, UINT64_MAX)) << before;
}

TEST(PageBoxes, StandInBoxes) {
  EXPECT_EQ(
      htmlOf([](FlowScript& s) {
        s.Paragraph(u"x");
        s.TextBox(floating(0), [&] {
          s.Paragraph(u"outer");
          s.TextBox(floating(0), [&] { s.Paragraph(u"inner"); });
        });
      }),
      "<div class=\"text-box fl b1\">\n<div class=\"text-box fl b1\">\n<p>inner</p>\n</div>\n<p>outer</p>\n"
      "</div>\n<p>x</p>\n");
}

TEST(PagePictures, StandByTheirWrapping) {
  const auto page = [](uint8_t wrap) {
    return pageOf([&](FlowScript& s) {
      s.Paragraph([&] {
        s.Text(u"x");
        s.to.Picture(floating(wrap));
      });
    });
  };
  EXPECT_EQ(page(0).blocks, "<span class=\"sh fl i1\"></span><p>x</p>\n");
  EXPECT_THAT(page(0).rules, HasSubstr("{float:left;"));
  EXPECT_EQ(page(1).blocks, "<span class=\"sh fl i1\"></span><p>x</p>\n");
  EXPECT_THAT(page(1).rules, HasSubstr("{display:block;"));
  EXPECT_EQ(page(3).blocks, "<div class=a><p>x</p>\n<span class=\"sh fl i1\"></span></div>\n");
  EXPECT_THAT(page(3).rules, HasSubstr("{position:absolute;"));
}

/// A picture whose bytes are told.
class OnePicture final : public PictureSource {
 public:
  PictureData Read() override { return {PictureType::kPng, ByteView(kBytes, sizeof kBytes)}; }

 private:
  static constexpr uint8_t kBytes[40] = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
};

TEST(PagePictures, TellWhatTheyShow) {
  OnePicture source;
  PictureFacts facts;
  facts.width = 1440;
  facts.height = 720;
  facts.description = u"a \"b\" <";
  facts.source = &source;
  const std::unique_ptr<PictureOutput> pictures = makeEmbeddedPictures(1000, nullptr);
  support::PageChoices choices;
  choices.pictures = pictures.get();
  const support::ToldPage page =
      pageOf([&](FlowScript& s) { s.Paragraph([&] { s.to.Picture(facts); }); }, {}, choices);
  EXPECT_EQ(page.blocks,
            "<p><img class=i1 alt=\"a &quot;b&quot; &lt;\" src=\"data:image/png;base64,"
            "iVBORw0KGgoAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA==\"></p>\n");
  EXPECT_THAT(page.rules, HasSubstr(".i1{width:72pt;aspect-ratio:1440/720}"));
}

TEST(PagePictures, ThatCannotBeShownKeepTheirPlace) {
  PictureFacts facts;
  facts.width = 1440;
  facts.height = 720;
  facts.description = u"a";
  EXPECT_EQ(htmlOf([&](FlowScript& s) { s.Paragraph([&] { s.to.Picture(facts); }); }),
            "<p><span class=\"sh i1\" role=img aria-label=\"a\"></span></p>\n");
}

TEST(PagePictures, ThatAreDrawnAreDrawings) {
  ShapeFacts shape;
  shape.geometry.type = 3;
  shape.fill.kind = ShapeFill::Kind::kSolid;
  PictureFacts facts;
  facts.width = facts.height = 1440;
  facts.shape = &shape;
  const std::string page = htmlOf([&](FlowScript& s) { s.Paragraph([&] { s.to.Picture(facts); }); });
  EXPECT_THAT(page, HasSubstr("<p><span class=\"sh b1\"><svg class=\"g\""));
  EXPECT_THAT(page, HasSubstr("</svg></span></p>\n"));
}

TEST(PagePictures, HaveIdsThatNoBookmarkHas) {
  ShapeFacts shape;
  shape.geometry.type = 3;
  shape.fill.kind = ShapeFill::Kind::kLinear;
  PictureFacts facts;
  facts.width = facts.height = 1440;
  facts.shape = &shape;
  const std::string page = htmlOf([&](FlowScript& s) {
    s.Paragraph([&] {
      for (const char16_t* const name : {u"g1", u"g_1", u"g-1"}) s.Bookmark(name);
      s.to.Picture(facts);
      s.to.Picture(facts);
    });
  });
  const std::multiset<std::string> ids = valuesOf(page, "id");
  EXPECT_EQ(ids.size(), 4u);
  EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
}

}  // namespace
}  // namespace pagerex
