#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "formats/markdown_reader.h"
#include "support/flow_recorder.h"
#include "support/flow_tee.h"
#include "support/markdown_of.h"

namespace pagerex {
namespace {

using support::FlowScript;
using support::ShownText;

constexpr std::u16string_view kSnippets[] = {u"word",
                                             u"a",
                                             u"x y",
                                             u" ",
                                             u"  ",
                                             u"\t",
                                             u"1.",
                                             u"12)",
                                             u"#",
                                             u"###",
                                             u"- ",
                                             u"+ ",
                                             u"* ",
                                             u"---",
                                             u"===",
                                             u"***",
                                             u"___",
                                             u"> ",
                                             u"`",
                                             u"```",
                                             u"~~~",
                                             u"|",
                                             u"\\|",
                                             u"\\",
                                             u"\\\\",
                                             u"[",
                                             u"]",
                                             u"[^1]",
                                             u"[^1]:",
                                             u"](x)",
                                             u"[a]: b",
                                             u"![",
                                             u"!",
                                             u"&amp;",
                                             u"&",
                                             u"&#65;",
                                             u"amp;",
                                             u"<b>",
                                             u"</b>",
                                             u"<!--",
                                             u"-->",
                                             u"<",
                                             u">",
                                             u"<?",
                                             u"<http://a.b>",
                                             u"http://a.b/c_d",
                                             u"www.a.org",
                                             u"www.",
                                             u"://",
                                             u"me@a.org",
                                             u"*",
                                             u"**",
                                             u"_",
                                             u"__",
                                             u"~",
                                             u"~~",
                                             u"\u00A0",
                                             u"\u4E2D\u6587",
                                             u"\U0001F600",
                                             u"e\u0301",
                                             u"\u05D0\u05D1",
                                             u"\u2014",
                                             u"\u20AC",
                                             u"\u00AD",
                                             u"\u200B",
                                             u":-",
                                             u"|-|",
                                             u"$",
                                             u"'",
                                             u"\"",
                                             u"(",
                                             u")",
                                             u"0",
                                             u"9.",
                                             u"[ ]",
                                             u"[x] ",
                                             u"<br>",
                                             u"<table>",
                                             u"{",
                                             u"}",
                                             u"@",
                                             u"^",
                                             u"%",
                                             u"=",
                                             u"?",
                                             u",",
                                             u";",
                                             u"/",
                                             u"    ",
                                             u"\u3000",
                                             u"xn--a",
                                             u"http://",
                                             u"https://x",
                                             u"ftp://y|z",
                                             u"\uFFFE",
                                             u"\x01",
                                             u":",
                                             u"(x)",
                                             u"_a_",
                                             u"*b*"};
constexpr std::string_view kLooks[] = {"",    "",    "",     "b",      "i",    "b i", "s",      "u",
                                       "sup", "sub", "code", "b code", "caps", "i s", "b i s u"};

/// Tells a document that is made of awkward texts; the same for each number.
class RandomDocument {
 public:
  RandomDocument(uint32_t number, FlowScript& script) : random_(number), s_(script) {}

  void Tell() {
    s_.Document([&] { Blocks(); }, [&] { Notes(); });
  }

 private:
  uint32_t Below(uint32_t count) { return random_() % count; }

  std::u16string Snippets() {
    std::u16string text;
    for (uint32_t count = 1 + Below(5); count > 0; --count) text += kSnippets[Below(std::size(kSnippets))];
    if (Below(40) == 0) text += std::u16string(300, u'w');
    return text;
  }

  void Run() { s_.Text(Snippets(), kLooks[Below(std::size(kLooks))]); }

  void Inlines(bool hasNotes = true) {
    for (uint32_t count = Below(6); count > 0; --count) {
      switch (Below(12)) {
        case 0:
          s_.Here(Mark::kLineBreak);
          break;
        case 1:
          s_.Here(Mark::kTab);
          break;
        case 2:
          s_.Link(
              u"http://a.b/" + Snippets(),
              [&] {
                Run();
                Run();
              },
              {}, Below(2) ? Snippets() : std::u16string());
          break;
        case 3:
          if (hasNotes && notes_ < 3) s_.Note(NoteKind::kFootnote, notes_++, u"1");
          break;
        case 4:
          s_.to.BookmarkStart(Snippets());
          break;
        default:
          Run();
      }
    }
  }

  void Block() {
    switch (Below(12)) {
      case 0:
        return s_.Heading(static_cast<uint8_t>(1 + Below(9)), [&] { Inlines(); });
      case 1:
      case 2:
      case 3:
        return Items();
      case 4:
        return Table(Below(2) == 0);
      case 5:
        return s_.Styled(u"HTML Code", [&] { Inlines(); });
      default:
        return s_.Paragraph([&] { Inlines(); });
    }
  }

  void Items() {
    constexpr std::u16string_view kLabels[] = {u"\u2022", u"1.",  u"2.", u"3)", u"(a)",
                                               u"iv.",    u"1.2", u"-",  u"#",  u"0."};
    for (uint32_t count = 1 + Below(5); count > 0; --count) {
      s_.Item(
          kLabels[Below(std::size(kLabels))], static_cast<uint8_t>(Below(4)), [&] { Inlines(); },
          static_cast<int32_t>(Below(2)));
    }
  }

  void Table(bool isSimple) {
    const uint32_t columns = 1 + Below(3);
    s_.Table(
        [&] {
          for (uint32_t rows = 1 + Below(3); rows > 0; --rows) {
            s_.Row([&] {
              for (uint32_t column = 0; column < columns; ++column) Cell(isSimple);
            });
          }
        },
        isSimple);
  }

  void Cell(bool isSimple) {
    s_.Cell([&] {
      s_.Paragraph([&] { Inlines(isSimple); });
      if (isSimple) return;
      if (Below(2)) s_.Item(u"1.", 0, [&] { Inlines(false); });
      if (Below(6) == 0) Table(false);
    });
  }

  void Blocks() {
    for (uint32_t count = 1 + Below(6); count > 0; --count) Block();
  }

  void Notes() {
    for (uint32_t i = 0, count = notes_; i < count; ++i) {
      notes_ = 3;
      s_.NoteText(NoteKind::kFootnote, i, u"1", [&] {
        s_.Paragraph([&] {
          s_.Mark(NoteKind::kFootnote, i, u"1");
          Inlines(false);
        });
        if (Below(2)) Block();
      });
    }
  }

  std::mt19937 random_;
  FlowScript& s_;
  uint32_t notes_ = 0;
};

std::string spelled(const std::vector<ShownText>& texts) {
  std::string all;
  for (const ShownText& shown : texts) {
    all += shown.label + "\x1F" + shown.text + "\x1F";
    for (const char16_t look : shown.looks)
      all += look == 0 ? std::string(".") : "(" + std::to_string(look) + ")";
    all += "\n";
  }
  return all;
}

std::string sortedNotes(std::vector<ShownText> notes) {
  std::sort(notes.begin(), notes.end(),
            [](const ShownText& a, const ShownText& b) { return a.text < b.text; });
  return spelled(notes);
}

}  // namespace

TEST(MarkdownRoundTrip, IsReadAsItWasTold) {
  for (uint32_t number = 0; number < 6000; ++number) {
    support::MemorySink sink;
    OutputFiles files(sink);
    Utf8Output out(files);
    out.Open("markdown");
    MarkdownWriter writer(out, {}, nullptr, nullptr);
    support::FlowRecorder recorder;
    support::FlowTee tee(writer, recorder);
    FlowScript script(tee);
    RandomDocument(number, script).Tell();
    out.Close();
    const std::string& markdown = sink.files["markdown"];
    const support::ReadMarkdown read = support::readMarkdown(markdown);
    ASSERT_EQ(spelled(read.body), spelled(recorder.body)) << "document " << number << ":\n" << markdown;
    ASSERT_EQ(sortedNotes(read.notes), sortedNotes(recorder.notes)) << "document " << number << ":\n"
                                                                    << markdown;
  }
}

}  // namespace pagerex
