#include "formats/text/text_writer.h"

#include <gtest/gtest.h>

#include "formats/text/display_width.h"
#include "support/flow_script.h"
#include "support/memory_sink.h"

namespace pagerex {
namespace {

using support::FlowScript;

/// What a document becomes.
std::string written(const std::function<void(FlowScript&)>& inside,
                    const std::function<void(FlowScript&)>& behind = {}, const TextOptions& options = {}) {
  support::MemorySink sink;
  OutputFiles files(sink);
  Utf8Output out(files);
  out.Open("text");
  TextWriter writer(out, options);
  FlowScript script(writer);
  script.Document([&] { inside(script); },
                  [&] {
                    if (behind) behind(script);
                  });
  out.Close();
  return sink.files["text"];
}

std::string wrapped(int width, const std::function<void(FlowScript&)>& inside) {
  TextOptions options;
  options.width = width;
  return written(inside, {}, options);
}

}  // namespace

TEST(TextWriter, WritesALineForEachParagraph) {
  EXPECT_EQ(written([](FlowScript& s) {
              s.Paragraph(u"One");
              s.Paragraph(u"");
              s.Paragraph(u"Tw\u00F6");
            }),
            "One\n\nTw\u00F6\n");
}

TEST(TextWriter, LeavesSoftHyphensOutAndKeepsHardOnes) {
  EXPECT_EQ(written([](FlowScript& s) { s.Paragraph(u"so\u00ADft ha\u2011rd"); }), "soft ha\u2011rd\n");
}

TEST(TextWriter, WritesCapitalsAsTyped) {
  EXPECT_EQ(written([](FlowScript& s) { s.Paragraph([&] { s.Text(u"caf\u00E9", "caps").Text(u" x"); }); }),
            "caf\u00E9 x\n");
}

TEST(TextWriter, PutsLabelsInFront) {
  EXPECT_EQ(written([](FlowScript& s) {
              s.Item(u"1.2", 1, u"numbered");
              s.Item(u"\u2022", 0, u"dotted");
            }),
            "1.2\tnumbered\n\u2022\tdotted\n");
}

TEST(TextWriter, BreaksLinesAndPages) {
  EXPECT_EQ(
      written([](FlowScript& s) {
        s.Paragraph([&] { s.Text(u"a").Here(Mark::kLineBreak).Text(u"b").Here(Mark::kTab).Text(u"c"); });
        s.Paragraph([&] { s.Text(u"d").Here(Mark::kPageBreak).Text(u"e"); });
        s.Paragraph([&] { s.Here(Mark::kPageBreak).Text(u"f"); });
      }),
      "a\nb\tc\nd\n\ne\n\nf\n");
}

TEST(TextWriter, WritesRowsAsLines) {
  EXPECT_EQ(written([](FlowScript& s) {
              s.Table([&] {
                s.Row({u"a", u"", u"c"});
                s.Row({u"", u"e", u"f"});
              });
            }),
            "a\t\tc\n\te\tf\n");
}

TEST(TextWriter, KeepsACellOnItsLine) {
  EXPECT_EQ(written([](FlowScript& s) {
              s.Table([&] {
                s.Row([&] {
                  s.Cell([&] {
                    s.Paragraph(u"");
                    s.Paragraph([&] { s.Text(u"a").Here(Mark::kLineBreak).Text(u"b").Here(Mark::kTab); });
                    s.Paragraph(u"c");
                  });
                  s.Cell([&] { s.Table([&] { s.Row({u"x", u"y"}); }); });
                });
              });
              s.Paragraph(u"z");
            }),
            "a b c\tx y\nz\n");
}

TEST(TextWriter, PutsNotesBehindTheText) {
  const auto text = [](FlowScript& s) {
    s.Paragraph([&] { s.Text(u"a").Note(NoteKind::kFootnote, 0, u"1").Text(u"b"); });
  };
  const auto notes = [](FlowScript& s) {
    s.NoteText(NoteKind::kFootnote, 0, u"1", [&] {
      s.Paragraph([&] { s.Mark(NoteKind::kFootnote, 0, u"1").Text(u" first"); });
      s.Paragraph(u"more");
    });
    s.NoteText(NoteKind::kEndnote, 0, u"i", [] {});
  };
  EXPECT_EQ(written(text, notes), "a[1]b\n\n[1] first\nmore\n[i] \n");
}

TEST(TextWriter, PutsCommentsBehindTheTextUnlessTheyAreNotWanted) {
  const auto text = [](FlowScript& s) { s.Paragraph([&] { s.Text(u"a").Comment(0, u"Ann", u"A"); }); };
  const auto comments = [](FlowScript& s) {
    s.CommentText(0, u"Ann", u"A", 0, [&] { s.Paragraph(u"why?"); });
  };
  EXPECT_EQ(written(text, comments), "a[A1]\n\n[A1] Ann: why?\n");
  TextOptions options;
  options.comments = false;
  EXPECT_EQ(written(text, comments, options), "a\n");
}

TEST(TextWriter, ShowsHeadersOnlyWhenAsked) {
  const auto text = [](FlowScript& s) {
    s.Header([&] {
      s.Paragraph(u"top");
      s.Table([&] { s.Row({u"x", u"y"}); });
    });
    s.Paragraph(u"text");
  };
  EXPECT_EQ(written(text), "text\n");
  TextOptions options;
  options.headers = true;
  EXPECT_EQ(written(text, {}, options), "top\nx\ty\ntext\n");
}

TEST(TextWriter, ShowsFormFieldsAndDescriptions) {
  EXPECT_EQ(written([](FlowScript& s) {
              s.Paragraph([&] {
                s.to.FormField({FormFieldFacts::Kind::kCheckBox, u"c", true, {}}, s.Look(""));
                s.to.FormField({FormFieldFacts::Kind::kCheckBox, u"c", false, {}}, s.Look(""));
                s.to.FormField({FormFieldFacts::Kind::kDropDown, u"d", false, u"blue"}, s.Look(""));
                PictureFacts cat{};
                cat.description = u"a cat";
                s.to.Picture(cat);
                s.to.Picture(PictureFacts{});
              });
            }),
            "\u2612\u2610blue[a cat]\n");
}

TEST(WrappedText, BreaksBetweenWords) {
  EXPECT_EQ(wrapped(20,
                    [](FlowScript& s) {
                      s.Paragraph(u"The quick brown fox jumps over it");
                      s.Paragraph(u"");
                      s.Paragraph(u"0123456789012345678901234");
                      s.Paragraph(u"exactly twenty chars and");
                    }),
            "The quick brown fox\njumps over it\n\n01234567890123456789\n01234\nexactly twenty chars\nand\n");
}

TEST(WrappedText, HangsBelowLabels) {
  EXPECT_EQ(wrapped(20,
                    [](FlowScript& s) {
                      s.Item(u"1.", 0, u"one two three four five");
                      s.Item(u"a)", 1, u"one two three four five");
                    }),
            "1. one two three\n   four five\n  a) one two three\n     four five\n");
}

TEST(WrappedText, CountsWideCharactersTwiceAndMarksNot) {
  EXPECT_EQ(wrapped(20,
                    [](FlowScript& s) {
                      s.Paragraph(u"\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D");
                      s.Paragraph(u"aaaaaaaaaaaaaaaaaaae\u0301 b");
                    }),
            "\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D\n\u4E2D\naaaaaaaaaaaaaaaaaaae\u0301"
            "\nb\n");
  EXPECT_EQ(displayWidth(0x200B), 0);
  EXPECT_EQ(displayWidth(0x1F600), 2);
  EXPECT_EQ(displayWidth(0xE9), 1);
}

TEST(WrappedText, AlignsTheColumnsOfTables) {
  EXPECT_EQ(wrapped(24,
                    [](FlowScript& s) {
                      s.Table([&] {
                        s.Row({u"a", u"longer text in here", u"c"});
                        s.Row({u"", u"x", u"y"});
                      });
                    }),
            "a  longer text in      c\n   here\n   x                   y\n");
}

TEST(WrappedText, LetsCellsSpanColumns) {
  EXPECT_EQ(wrapped(30,
                    [](FlowScript& s) {
                      s.Table([&] {
                        s.Row({u"aaa", u"bbb", u"ccc"});
                        s.Row([&] {
                          s.Cell([&] { s.Paragraph(u"one two"); }, 2);
                          s.Cell(u"d");
                        });
                      });
                    }),
            "aaa  bbb  ccc\none two   d\n");
}

TEST(WrappedText, WritesRowsOfTooManyColumnsAsLines) {
  EXPECT_EQ(
      wrapped(20, [](FlowScript& s) { s.Table([&] {
                                        s.Row({u"a", u"b", u"c", u"d", u"e", u"f", u"g"});
                                      }); }),
      "a\nb\nc\nd\ne\nf\ng\n");
}

TEST(TextWriter, FitsTablesWithoutCellsInTheirPlace) {
  EXPECT_EQ(wrapped(20,
                    [](FlowScript& s) {
                      s.Table([&] { s.Row([] {}); });
                      s.Paragraph(u"behind");
                    }),
            "behind\n");
}

}  // namespace pagerex
