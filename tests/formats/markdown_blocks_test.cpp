#include <gtest/gtest.h>

#include "support/markdown_of.h"

namespace pagerex {
namespace {

using support::FlowScript;
using support::markdownOf;

constexpr std::u16string_view kBullet = u"\u2022";

MarkdownOptions commonMark() {
  MarkdownOptions options;
  options.commonMarkOnly = true;
  return options;
}

}  // namespace

TEST(MarkdownBlocks, WritesHeadings) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Heading(1, u"One");
              s.Heading(2, u" ");
              s.Heading(8, u"C #");
              s.Heading(3, [&] { s.Text(u"a", "b").Here(Mark::kLineBreak).Text(u"b", "b"); });
              s.Heading(2, [&] { s.Text(u"a ").Text(u"b", "b"); });
            }),
            "# One\n\n###### C \\#\n\n### a<br>b\n\n## a **b**\n");
}

TEST(MarkdownBlocks, WritesListsOfBulletsAndNumbers) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Paragraph(u"text");
              s.Item(kBullet, 0, u"a");
              s.Item(kBullet, 1, u"b");
              s.Item(kBullet, 0, u"");
              s.Item(u"9)", 1, u"c");
              s.Item(u"10)", 1, u"d");
              s.Item(kBullet, 2, u"e");
              s.Paragraph(u"text");
            }),
            "text\n\n- a\n  - b\n-\n  9) c\n  10) d\n      - e\n\ntext\n");
}

TEST(MarkdownBlocks, LeavesALineInFrontOfNumbersThatWouldNotBeginAList) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Item(kBullet, 0, u"a");
              s.Item(u"2.", 1, u"b");
            }),
            "- a\n\n  2. b\n");
}

TEST(MarkdownBlocks, KeepsListsApart) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Item(kBullet, 0, u"a", 1);
              s.Item(kBullet, 0, u"b", 2);
              s.Item(u"1.", 0, u"c", 3);
              s.Item(u"1.", 0, u"d", 3);
            }),
            "- a\n\n* b\n\n1. c\n\n<!-- -->\n\n1. d\n");
}

TEST(MarkdownBlocks, WritesOtherLabelsAsText) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Item(u"1.", 0, u"a");
              s.Item(u"(b)", 1, u"b");
              s.Item(u"2.", 0, u"c");
              s.Item(u"1.1", 0, u"d");
              s.Item(u"01.", 0, u"e");
            }),
            "1. a\n\n   (b) b\n2. c\n\n1.1 d\n\n01\\. e\n");
}

TEST(MarkdownBlocks, IndentsLinesOfItems) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Item(u"1.", 0, [&] { s.Text(u"a").Here(Mark::kLineBreak).Text(u"- b"); });
            }),
            "1. a\\\n   \\- b\n");
}

TEST(MarkdownBlocks, FencesCode) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Styled(u"HTML Preformatted", [&] { s.Text(u"if (*x)"); });
              s.Styled(u"HTML Preformatted", [] {});
              s.Styled(u"HTML Preformatted",
                       [&] { s.Here(Mark::kTab).Text(u"y```").Note(NoteKind::kFootnote, 0, u"1"); });
              s.Styled(u"Postcode", [&] { s.Text(u"x"); });
            }),
            "````\nif (*x)\n\n\ty```\n````\n\n[^1]\n\nx\n");
}

TEST(MarkdownBlocks, WritesRulesAndPageBreaks) {
  const auto text = [](FlowScript& s) {
    s.Paragraph([&] { s.Here(Mark::kRule); });
    s.Paragraph([&] { s.Text(u"a").Here(Mark::kPageBreak).Text(u"b"); });
    s.Paragraph([&] { s.Here(Mark::kRule); });
  };
  EXPECT_EQ(markdownOf(text), "***\n\na\\\nb\n\n---\n");
  MarkdownOptions options;
  options.pageBreaks = true;
  EXPECT_EQ(markdownOf(text, {}, options), "***\n\na\\\nb\n\n<!-- page break -->\n\n---\n");
}

TEST(MarkdownTables, WritesPipeTables) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Table([&] {
                s.Row({u"a|b", u"", u"- c"});
                s.Row([&] {
                  s.alignment = Alignment::kCentre;
                  s.Cell([&] { s.Paragraph([&] { s.Text(u"x").Here(Mark::kLineBreak).Text(u"y"); }); });
                  s.alignment = Alignment::kEnd;
                  s.Cell(u"z ");
                  s.alignment = Alignment::kStart;
                  s.Cell(u"");
                });
              });
            }),
            "| a\\|b |  | - c |\n| :---: | ---: | --- |\n| x<br>y | z |  |\n");
}

TEST(MarkdownTables, WritesTheHeadOfATableOfOneRow) {
  EXPECT_EQ(markdownOf([](FlowScript& s) { s.Table([&] {
                                             s.Row({u"a", u"b"});
                                           }); }),
            "| a | b |\n| --- | --- |\n");
}

TEST(MarkdownTables, WritesOthersAsHtmlWithoutBlankLines) {
  const auto text = [](FlowScript& s) {
    s.Table(
        [&] {
          s.Row(
              [&] {
                s.Cell(
                    [&] {
                      s.Paragraph([&] { s.Text(u"a<b", "b").Here(Mark::kLineBreak).Text(u"*c*"); });
                      s.Paragraph(u"");
                      s.Item(u"1.", 0, u"d");
                    },
                    2, 2);
              },
              true);
          s.Row([&] {
            s.Cell([&] { s.Paragraph(u"hidden"); }, 1, 0);
            s.Cell([&] { s.Table([&] { s.Row({u"n"}); }); });
          });
        },
        false);
  };
  EXPECT_EQ(
      markdownOf(text),
      "<table>\n<tr>\n<th colspan=\"2\" rowspan=\"2\"><strong>a&lt;b</strong><br>*c*<br>1. d</th>\n</tr>\n"
      "<tr>\n<td><table>\n<tr>\n<td>n</td>\n</tr>\n</table></td>\n</tr>\n</table>\n");
}

TEST(MarkdownTables, BringsAllTablesIntoPipesWhenThereIsToBeNoHtml) {
  MarkdownOptions options;
  options.htmlTables = false;
  EXPECT_EQ(markdownOf(
                [](FlowScript& s) {
                  s.Table(
                      [&] {
                        s.Row([&] {
                          s.Cell(
                              [&] {
                                s.Paragraph(u"a");
                                s.Table([&] { s.Row({u"b", u"c"}); });
                              },
                              2);
                        });
                        s.Row({u"d", u"e", u"f"});
                      },
                      false);
                },
                {}, options),
            "| a<br>b<br>c |  |\n| --- | --- |\n| d | e f |\n");
}

TEST(MarkdownTables, KeepRowsThatBeginFurtherOnInTheirColumns) {
  const auto table = [](bool htmlTables) {
    MarkdownOptions options;
    options.htmlTables = htmlTables;
    return markdownOf(
        [](FlowScript& s) {
          s.Table(
              [&] {
                s.Row({u"a", u"b"});
                RowProperties row;
                row.columnsBefore = 1;
                s.to.BeginRow(row);
                s.Cell([&] { s.Paragraph(u"c"); });
                s.to.EndRow();
              },
              false);
        },
        {}, options);
  };
  EXPECT_EQ(table(true),
            "<table>\n<tr>\n<td>a</td>\n<td>b</td>\n</tr>\n<tr>\n<td></td>\n<td>c</td>\n</tr>\n</table>\n");
  EXPECT_EQ(table(false), "| a | b |\n| --- | --- |\n|  | c |\n");
}

TEST(MarkdownTables, AreHtmlInCommonMark) {
  EXPECT_EQ(markdownOf([](FlowScript& s) { s.Table([&] { s.Row({u"a"}); }); }, {}, commonMark()),
            "<table>\n<tr>\n<td>a</td>\n</tr>\n</table>\n");
}

TEST(MarkdownNotes, StandAtTheEnd) {
  const auto text = [](FlowScript& s) {
    s.Paragraph([&] {
      s.Text(u"a").Note(NoteKind::kFootnote, 0, u"1").Text(u": b").Note(NoteKind::kEndnote, 0, u"i");
      s.Comment(0, u"Ann", u"A");
    });
  };
  const auto notes = [](FlowScript& s) {
    s.NoteText(NoteKind::kFootnote, 0, u"1", [&] {
      s.Paragraph([&] { s.Mark(NoteKind::kFootnote, 0, u"1").Text(u" first"); });
      s.Paragraph([&] { s.Text(u"more").Here(Mark::kLineBreak).Text(u"lines"); });
    });
    s.NoteText(NoteKind::kEndnote, 0, u"i", [] {});
    s.CommentText(0, u"Ann", u"A", (104u << 20) | (2 << 16) | (29 << 11) | (23 << 6) | 59,
                  [&] { s.Paragraph(u"why?"); });
  };
  EXPECT_EQ(markdownOf(text, notes),
            "a[^1]\\: b[^e1][^c1]\n\n[^1]: first\n\n    more\\\n    lines\n\n[^e1]: \n\n"
            "[^c1]: **Ann**, 2004-02-29 23:59: why?\n");
  EXPECT_EQ(markdownOf(text, notes, commonMark()),
            "a<sup>[1](#note-1)</sup>\\: b<sup>[i](#note-e1)</sup><sup>[A1](#note-c1)</sup>\n\n"
            "<a id=\"note-1\"></a>\\[1] first\n\nmore\\\nlines\n\n"
            "<a id=\"note-e1\"></a><a id=\"note-c1\"></a>\\[A1] **Ann**, 2004-02-29 23:59: why?\n");
}

TEST(MarkdownNotes, OfHtmlTablesAreLinkedTo) {
  EXPECT_EQ(
      markdownOf(
          [](FlowScript& s) {
            s.Table(
                [&] {
                  s.Row([&] { s.Cell([&] { s.Paragraph([&] { s.Note(NoteKind::kFootnote, 0, u"1"); }); }); });
                },
                false);
          },
          [](FlowScript& s) { s.NoteText(NoteKind::kFootnote, 0, u"1", [&] { s.Paragraph(u"x"); }); }),
      "<table>\n<tr>\n<td><sup><a href=\"#note-1\">1</a></sup></td>\n</tr>\n</table>\n\n"
      "<a id=\"note-1\"></a>\\[1] x\n");
}

TEST(MarkdownNotes, LeaveCommentsOutThatAreNotWanted) {
  MarkdownOptions options;
  options.comments = false;
  EXPECT_EQ(
      markdownOf([](FlowScript& s) { s.Paragraph([&] { s.Text(u"a").Comment(0, u"Ann", u"A"); }); },
                 [](FlowScript& s) { s.CommentText(0, u"Ann", u"A", 0, [&] { s.Paragraph(u"why?"); }); },
                 options),
      "a\n");
}

TEST(MarkdownDocument, LeavesHeadersOutAndKeepsTextBoxes) {
  EXPECT_EQ(markdownOf([](FlowScript& s) {
              s.Header([&] { s.Table([&] { s.Row({u"x"}); }); });
              s.Paragraph(u"a");
              s.TextBox([&] { s.Paragraph(u"b"); });
            }),
            "a\n\nb\n");
}

TEST(MarkdownDocument, WritesFrontMatter) {
  MarkdownOptions options;
  options.frontMatter = true;
  EXPECT_EQ(markdownOf(
                [](FlowScript& s) {
                  s.summary.title = u"A \"title\": \\ #1\r\nx";
                  s.summary.created = 127225223990000000u;
                  s.Paragraph(u"a");
                },
                {}, options),
            "a\n");
}

}  // namespace pagerex
