// Headings, lists, tables, figures and breaks of a page.

#include <gtest/gtest.h>

#include "support/html_of.h"

namespace pagerex {
namespace {

using support::FlowScript;
using support::htmlOf;
using support::pageOf;

constexpr std::u16string_view kBullet = u"\u2022";

std::string bullet(const std::string& text) {
  return "<p><span class=m1>\xE2\x80\xA2 </span>" + text + "</p>\n";
}
std::string number(const std::string& label, const std::string& text) {
  return "<p><span class=m1>" + label + " </span>" + text + "</p>\n";
}

TEST(PageBlocks, HaveHeadingsOfNineLevels) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              for (uint8_t level = 1; level <= 9; ++level) s.Heading(level, u"h");
            }),
            "<h1 class=Heading-1>h</h1>\n<h2 class=Heading-2>h</h2>\n<h3 class=Heading-3>h</h3>\n"
            "<h4 class=Heading-4>h</h4>\n<h5 class=Heading-5>h</h5>\n<h6 class=Heading-6>h</h6>\n"
            "<h6 class=Heading-7 aria-level=7>h</h6>\n<h6 class=Heading-8 aria-level=8>h</h6>\n"
            "<h6 class=Heading-9 aria-level=9>h</h6>\n");
}

TEST(PageBlocks, TakeHeadingsWithoutTextAsParagraphs) {
  EXPECT_EQ(htmlOf([](FlowScript& s) { s.Heading(1, [] {}); }), "<p class=Heading-1><br></p>\n");
}

TEST(PageLists, NestByTheirLevels) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Item(kBullet, 0, u"a");
              s.Item(u"1.", 1, u"b");
              s.Item(u"2.", 1, u"c");
              s.Item(kBullet, 0, u"d");
            }),
            "<ul role=list>\n<li>" + bullet("a") + "<ol role=list>\n<li>" + number("1.", "b") +
                "</li>\n<li>" + number("2.", "c") + "</li>\n</ol>\n</li>\n<li>" + bullet("d") +
                "</li>\n</ul>\n");
}

TEST(PageLists, FillLevelsThatAreLeftOut) {
  EXPECT_EQ(htmlOf([](FlowScript& s) { s.Item(kBullet, 2, u"a"); }),
            "<ul role=list>\n<li><ul role=list>\n<li><ul role=list>\n<li>" + bullet("a") +
                "</li>\n</ul>\n</li>\n</ul>\n</li>\n</ul>\n");
}

TEST(PageLists, EndWithAParagraphThatIsNoItem) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Item(u"1.", 0, u"a");
              s.Paragraph(u"x");
              s.Item(u"2.", 0, u"b");
            }),
            "<ol role=list>\n<li>" + number("1.", "a") + "</li>\n</ol>\n<p>x</p>\n<ol role=list>\n<li>" +
                number("2.", "b") + "</li>\n</ol>\n");
}

TEST(PageLists, OfAnotherKindAreOthers) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Item(u"1.", 0, u"a");
              s.Item(kBullet, 0, u"b");
            }),
            "<ol role=list>\n<li>" + number("1.", "a") + "</li>\n</ol>\n<ul role=list>\n<li>" + bullet("b") +
                "</li>\n</ul>\n");
}

TEST(PageLists, ShowLabelsAsTheyAre) {
  EXPECT_EQ(htmlOf([](FlowScript& s) { s.Item(u"<A&1>", 0, u"a"); }),
            "<ol role=list>\n<li>" + number("&lt;A&amp;1>", "a") + "</li>\n</ol>\n");
  EXPECT_EQ(htmlOf([](FlowScript& s) { s.Item(u"", 0, u"a"); }),
            "<ul role=list>\n<li><p>a</p>\n</li>\n</ul>\n");
}

TEST(PageLists, StandInCellsAndEndThere) {
  const std::string page = htmlOf([](FlowScript& s) {
    s.Item(kBullet, 0, u"a");
    s.Table([&] { s.Row([&] { s.Cell([&] { s.Item(kBullet, 0, u"b"); }); }); });
    s.Item(kBullet, 0, u"c");
  });
  EXPECT_EQ(page, "<ul role=list>\n<li>" + bullet("a") +
                      "</li>\n</ul>\n<div class=x><table"
                      "><colgroup></colgroup>\n<tbody><tr><td><ul role=list>\n"
                      "<li>" +
                      bullet("b") + "</li>\n</ul>\n</td></tr>\n</tbody></table></div>\n<ul role=list>\n<li>" +
                      bullet("c") + "</li>\n</ul>\n");
}

TEST(PageTables, HaveRowsOfCells) {
  EXPECT_EQ(
      htmlOf([](FlowScript& s) {
        s.Table([&] {
          s.Row({u"a", u"b"});
          s.Row([&] {
            s.Cell(u"c");
            s.Cell([] {});
          });
        });
      }),
      "<div class=x><table><colgroup></colgroup>\n<tbody><tr><td><p>a</p>\n</td><td><p>b</p>\n</td></tr>\n"
      "<tr><td><p>c</p>\n</td><td></td></tr>\n</tbody></table></div>\n");
}

TEST(PageTables, HaveAHead) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              TableProperties table;
              table.headerRowCount = 1;
              s.to.BeginTable(table);
              s.Row([&] { s.Cell(u"h"); }, true);
              s.Row([&] { s.Cell(u"a"); }, true);
              s.to.EndTable();
            }),
            "<div class=x><table><colgroup></colgroup>\n<thead><tr><th scope=col><p>h</p>\n</th></tr>\n"
            "</thead><tbody><tr><td><p>a</p>\n</td></tr>\n</tbody></table></div>\n");
}

TEST(PageTables, HaveColumns) {
  const support::ToldPage page = pageOf([](FlowScript& s) {
    TableProperties table;
    table.columnWidths = {3000, 3000, 1000};
    s.to.BeginTable(table);
    s.Row({u"a", u"b", u"c"});
    s.to.EndTable();
  });
  EXPECT_TRUE(
      page.blocks.starts_with("<div class=x tabindex=0><table class=t1><colgroup><col class=k1>"
                              "<col class=k1><col class=k2></colgroup>\n"))
      << page.blocks;
  EXPECT_EQ(page.rules, "@layer pagerex.looks{\n.t1{width:350pt}\n.k1{width:150pt}\n.k2{width:50pt}\n}\n");
}

TEST(PageTables, SpanColumnsAndRows) {
  const std::string page = htmlOf([](FlowScript& s) {
    s.Table([&] {
      s.Row([&] {
        s.Cell([&] { s.Paragraph(u"a"); }, 2, 3);
        s.Cell(u"b");
      });
      s.Row([&] { s.Cell([&] { s.Paragraph(u"gone"); }, 2, 0); });
    });
  });
  EXPECT_EQ(page,
            "<div class=x><table><colgroup></colgroup>\n<tbody><tr><td colspan=2 rowspan=3><p>a</p>\n</td>"
            "<td><p>b</p>\n</td></tr>\n<tr></tr>\n</tbody></table></div>\n");
}

TEST(PageTables, ShowNothingOfWhatMergedCellsHold) {
  const std::string page = htmlOf([](FlowScript& s) {
    s.Table([&] {
      s.Row([&] {
        s.Cell(
            [&] {
              s.Item(kBullet, 0, u"gone");
              s.Table([&] { s.Row({u"gone"}); });
              s.Paragraph([&] {
                s.Link(u"http://x/", [&] { s.Bookmark(u"gone").Note(NoteKind::kFootnote, 0, u"1"); });
                s.Changed(Revision::kDeleted, [&] { s.Comment(0, u"gone", u"A"); });
              });
              s.TextBox([&] { s.Paragraph(u"gone"); });
            },
            1, 0);
        s.Cell(u"a");
      });
    });
  });
  EXPECT_EQ(page,
            "<div class=x><table><colgroup></colgroup>\n<tbody><tr><td><p>a</p>\n</td></tr>\n"
            "</tbody></table></div>\n");
}

TEST(PageTables, FillRowsThatBeginLaterOrEndEarlier) {
  const std::string page = htmlOf([](FlowScript& s) {
    s.Table([&] {
      RowProperties row;
      row.columnsBefore = 1;
      row.columnsAfter = 2;
      s.to.BeginRow(row);
      s.Cell(u"a");
      s.to.EndRow();
    });
  });
  EXPECT_NE(page.find("<tr><td></td><td><p>a</p>\n</td><td colspan=2></td></tr>"), std::string::npos) << page;
}

TEST(PageTables, StandInTables) {
  const std::string page = htmlOf([](FlowScript& s) {
    s.Table([&] {
      s.Row([&] {
        s.Cell([&] {
          s.Paragraph(u"a");
          s.Table([&] { s.Row({u"b"}); });
          s.Paragraph(u"c");
        });
      });
    });
  });
  EXPECT_EQ(page,
            "<div class=x><table role=presentation><colgroup></colgroup>\n<tbody><tr><td><p>a</p>\n"
            "<div class=x><table><colgroup></colgroup>\n<tbody><tr><td><p>b</p>\n</td></tr>\n"
            "</tbody></table></div>\n<p>c</p>\n</td></tr>\n</tbody></table></div>\n");
}

TEST(PageTables, OfRightToLeftTextSayIt) {
  const std::string page = htmlOf([](FlowScript& s) {
    TableProperties table;
    table.isRightToLeft = true;
    s.to.BeginTable(table);
    s.Row({u"a"});
    s.to.EndTable();
  });
  EXPECT_TRUE(page.starts_with("<div class=x><table dir=rtl>")) << page;
}

void caption(FlowScript& s, std::u16string_view text) {
  s.Styled(u"caption", [&] { s.Text(text); });
}

void picture(FlowScript& s) {
  PictureFacts facts;
  facts.width = facts.height = 1440;
  s.Paragraph([&] { s.to.Picture(facts); });
}

constexpr char kPicture[] = "<p><span class=\"sh i1\"></span></p>\n";
constexpr char kTable[] =
    "<div "
    "class=x><table"
    "><colgroup></colgroup>\n<tbody><tr><td><p>t</p>\n</td></tr>\n</tbody></table></div>\n";

TEST(PageFigures, ArePicturesWithTheirCaption) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              picture(s);
              caption(s, u"c");
              s.Paragraph(u"x");
            }),
            std::string("<figure>") + kPicture +
                "<figcaption><p class=Caption>c</p>\n</figcaption></figure>\n<p>x</p>\n");
}

TEST(PageFigures, AreTablesBelowTheirCaption) {
  EXPECT_EQ(
      htmlOf([](FlowScript& s) {
        caption(s, u"c");
        s.Table([&] { s.Row({u"t"}); });
      }),
      std::string("<figure><figcaption><p class=Caption>c</p>\n</figcaption>") + kTable + "</figure>\n");
}

TEST(PageFigures, HaveTheirCaptionForThemselves) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              picture(s);
              caption(s, u"c");
              s.Table([&] { s.Row({u"t"}); });
            }),
            std::string("<figure>") + kPicture +
                "<figcaption><p class=Caption>c</p>\n</figcaption></figure>\n" + kTable);
}

TEST(PageFigures, AreNoneWithoutBothParts) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              caption(s, u"c");
              picture(s);
              s.Paragraph(u"x");
              caption(s, u"d");
            }),
            std::string("<p class=Caption>c</p>\n") + kPicture + "<p>x</p>\n<p class=Caption>d</p>\n");
}

TEST(PageFigures, DoNotReachOverWhatEndsInBetween) {
  const auto item = [](FlowScript& s, const std::function<void()>& inside) {
    ParagraphProperties properties;
    properties.style = 50;
    s.styles.names[50] = u"caption";
    s.to.BeginParagraph({properties,
                         u"caption",
                         0,
                         {},
                         nullptr,
                         ParagraphFacts::Follow::kNothing,
                         true,
                         false,
                         1,
                         1,
                         0,
                         s.Look(""),
                         0});
    inside();
    s.to.EndParagraph();
  };
  EXPECT_EQ(htmlOf([&](FlowScript& s) {
              picture(s);
              item(s, [&] { s.Text(u"c"); });
              s.Table([&] { s.Row({u"t"}); });
            }),
            std::string(kPicture) + "<ul role=list>\n<li><p class=Caption>c</p>\n</li>\n</ul>\n" + kTable);
  EXPECT_EQ(htmlOf([&](FlowScript& s) {
              s.Styled(u"toc 1", [&] {
                PictureFacts facts;
                facts.width = facts.height = 1440;
                s.to.Picture(facts);
              });
              caption(s, u"c");
            }),
            "<section role=doc-toc>\n<p class=Toc-1><span class=\"sh i1\"></span></p>\n</section>\n"
            "<p class=Caption>c</p>\n");
}

TEST(PageFigures, HoldWhatHangsAtTheirCaption) {
  PictureFacts over;
  over.width = over.height = 1440;
  over.isInline = false;
  over.wrap = 3;
  EXPECT_EQ(htmlOf([&](FlowScript& s) {
              picture(s);
              s.Styled(u"caption", [&] {
                s.Text(u"c");
                s.to.Picture(over);
              });
              s.Paragraph(u"x");
            }),
            std::string("<figure>") + kPicture +
                "<figcaption><div class=a><p class=Caption>c</p>\n<span class=\"sh fl i2\"></span></div>\n"
                "</figcaption></figure>\n<p>x</p>\n");
}

TEST(PageContents, AreASection) {
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Styled(u"toc 1", [&] { s.Text(u"a"); });
              s.Styled(u"toc 9", [&] { s.Text(u"b"); });
              s.Paragraph(u"x");
            }),
            "<section role=doc-toc>\n<p class=Toc-1>a</p>\n<p class=Toc-1>b</p>\n</section>\n<p>x</p>\n");
}

TEST(PageContents, EndWithATableAList) {
  const std::string begin = "<section role=doc-toc>\n<p class=Toc-1>a</p>\n</section>\n";
  const auto contents = [](FlowScript& s) { s.Styled(u"toc 1", [&] { s.Text(u"a"); }); };
  EXPECT_EQ(htmlOf([&](FlowScript& s) {
              contents(s);
              s.Table([&] { s.Row({u"t"}); });
            }),
            begin + kTable);
  EXPECT_EQ(htmlOf([&](FlowScript& s) {
              contents(s);
              s.Item(kBullet, 0, u"b");
            }),
            begin + "<ul role=list>\n<li>" + bullet("b") + "</li>\n</ul>\n");
}

TEST(PageBreaks, StandWhereTheyAre) {
  constexpr char kBreak[] = "<hr class=pb role=doc-pagebreak>\n";
  EXPECT_EQ(htmlOf([](FlowScript& s) {
              s.Paragraph([&] { s.Here(Mark::kPageBreak).Text(u"a"); });
              s.Paragraph([&] { s.Text(u"a").Here(Mark::kPageBreak).Text(u"b"); });
              s.Paragraph([&] { s.Text(u"a").Here(Mark::kPageBreak); });
            }),
            kBreak + std::string("<p>a</p>\n<p>a<span class=pb role=doc-pagebreak></span>b</p>\n<p>a</p>\n") +
                kBreak);
}

}  // namespace
}  // namespace pagerex
