#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "flow/host_transcript.h"
#include "support/canvas.h"
#include "support/form_fields.h"
#include "support/named_sprms.h"
#include "support/word_document_writer.h"

using namespace flow_test;
using namespace support;

namespace {

std::string fileOf(const WordDocument& document) {
  const Bytes bytes = document.build();
  return {bytes.begin(), bytes.end()};
}

pagerex_walk_options optionsOf(int32_t revisions, int32_t hiddenText = 0) {
  pagerex_walk_options options = {};
  options.size = sizeof options;
  options.revisions = revisions;
  options.hidden_text = hiddenText;
  return options;
}

/// All lines of a walk that goes to its end.
std::string toldOf(const WordDocument& document, const pagerex_walk_options* options = nullptr) {
  HostDocument opened(fileOf(document));
  HostTranscript host;
  EXPECT_EQ(opened.walk(host, options), PAGEREX_RESULT_OK);
  EXPECT_TRUE(host.isBalanced()) << host.lines;
  return "\n" + host.lines;
}

/// The lines between the first paragraph and the end of its section.
std::string bodyOf(const WordDocument& document, const pagerex_walk_options* options = nullptr) {
  const std::string all = toldOf(document, options);
  const size_t begin = all.find("begin paragraph"), end = all.find("end section");
  return "\n" + all.substr(begin, end - begin);
}

/// With something of everything that begins and ends.
WordDocument fullDocument() {
  WordDocument doc;
  const uint16_t author = doc.author("Ada");
  doc.summary({.title = "Report", .custom = {{"Client", Text("X")}}});
  doc.style(1, Style().name("heading 1").sti(1).basedOn(0));
  doc.header(0, HeaderSlot::kOddHeader).paragraph("head");
  doc.paragraph("Title").istd(1);
  doc.paragraph("See ")
      .field(88, " HYPERLINK \"http://x.example/\" \\l \"p\" \\o \"tip\" ", Text("there"))
      .bookmarkStart("b")
      .inserted("new", author)
      .bookmarkEnd("b")
      .footnote("A note.")
      .annotationStart(7)
      .run("x\ty")
      .annotationEnd(7)
      .annotation("A remark.", {.author = "Bob", .initials = u"B", .rangeTag = 7});
  doc.row({"a", "b"}, {defTableSprm({0, 1000, 3000})});
  doc.paragraph("end");
  return doc;
}

}  // namespace

TEST(WalkHost, TellsADocumentInTheOrderOfReading) {
  const pagerex_walk_options all = optionsOf(PAGEREX_REVISIONS_ALL);
  EXPECT_EQ(toldOf(fullDocument(), &all), R"(
begin document "Report" 1
begin section 0 12240x15840
begin header 1 header
begin paragraph
text "head"
end paragraph
end header
begin paragraph "heading 1" heading 1
text "Title"
end paragraph
begin paragraph
text "See "
begin link "http://x.example/" "p" "tip"
text "there"
end link
bookmark starts "b"
begin revision 1 "Ada" no date
text "new" inserted
bookmark ends "b"
end revision
note reference 0 0 "1"
comment starts 0
text "x"
mark 0
text "y"
comment ends 0
comment reference 0 "Bob"
end paragraph
begin table 1x2 depth 1
begin row
begin cell 1000 1x1
begin paragraph
text "a"
end paragraph
end cell
begin cell 2000 1x1
begin paragraph
text "b"
end paragraph
end cell
end row
end table
begin paragraph
text "end"
end paragraph
end section
begin note 0 0 "1"
begin paragraph
note mark 0 0 "1"
text "A note."
end paragraph
end note
begin comment 0 "Bob" "B" no date
begin paragraph
text "A remark."
end paragraph
end comment
end document
)");
}

TEST(WalkHost, TellsTheStateOfTheTextThatIsAskedFor) {
  WordDocument doc;
  const uint16_t author = doc.author("Ada");
  doc.paragraph("a").inserted("b", author, 0).deleted("c", author, 0).run("d", {sprm(0x083C, 1)});
  const pagerex_walk_options original = optionsOf(PAGEREX_REVISIONS_ORIGINAL);
  const pagerex_walk_options hidden = optionsOf(PAGEREX_REVISIONS_FINAL, 1);
  EXPECT_EQ(bodyOf(doc), "\nbegin paragraph\ntext \"a\"\ntext \"b\" inserted\nend paragraph\n");
  EXPECT_EQ(bodyOf(doc, &original), "\nbegin paragraph\ntext \"a\"\ntext \"c\" deleted\nend paragraph\n");
  EXPECT_EQ(bodyOf(doc, &hidden),
            "\nbegin paragraph\ntext \"a\"\ntext \"b\" inserted\ntext \"d\" hidden\nend paragraph\n");
}

TEST(WalkHost, TellsLabelsOfLists) {
  WordDocument doc;
  const uint16_t list = doc.list({.levels = {{.text = u"%1."}}});
  doc.paragraph("item").sprms({listItem(list, 0)});
  EXPECT_EQ(bodyOf(doc), "\nbegin paragraph label \"1.\"\ntext \"item\"\nend paragraph\n");
}

TEST(WalkHost, TellsFormFields) {
  WordDocument doc;
  formCheckBox(doc, doc.paragraph(), "yes", true);
  const std::string told = toldOf(doc);
  EXPECT_NE(told.find("form field 1 \"yes\" 1 \"\"\n"), std::string::npos) << told;
}

TEST(WalkHost, ReadsPicturesWhileTheyAreTold) {
  WordDocument doc;
  doc.paragraph("p").special(
      1, drawing::pictureRun(doc, {.shape = drawing::Shape(75).props(drawing::Props().number(0x4104, 1)),
                                   .blips = {{.type = 6, .data = Bytes(50, 7)}}}));
  const std::string told = toldOf(doc);
  EXPECT_NE(told.find("inline type 6 ok with bytes\n"), std::string::npos) << told;
}

TEST(WalkHost, TellsTextBoxesWithTheirText) {
  WordDocument doc;
  drawing::addShape(doc.paragraph("a"),
                    drawing::textBox(doc, 1025, [](Story& story) { story.paragraph("in"); }));
  EXPECT_EQ(bodyOf(doc),
            "\nbegin paragraph\ntext \"a\"\nend paragraph\nbegin text_box 0\nbegin paragraph\ntext \"in\"\n"
            "end paragraph\nend text_box\n");
}

TEST(WalkHost, TellsLongTextsInPartsOfWholeCharacters) {
  WordDocument doc;
  std::u16string text = u"x";
  for (int i = 0; i < 5000; ++i) text += u"\U0001F600";
  doc.paragraph(text);
  HostDocument opened(fileOf(doc));
  std::string together;
  pagerex_handler handler = {};
  handler.size = sizeof handler;
  handler.text = [](void* user, const char* part, size_t length, const pagerex_run*) {
    EXPECT_EQ((length - (part[0] == 'x')) % 4, 0u);
    static_cast<std::string*>(user)->append(part, length);
    return 0;
  };
  EXPECT_EQ(pagerex_walk(opened.get(), nullptr, &handler, &together, nullptr), PAGEREX_RESULT_OK);
  EXPECT_EQ(together.size(), 20001u);
  EXPECT_EQ(together.find("\xEF\xBF\xBD"), std::string::npos);
}

TEST(WalkHost, EndsWhereAFunctionSaysSo) {
  HostDocument opened(fileOf(fullDocument()));
  HostTranscript whole;
  ASSERT_EQ(opened.walk(whole), PAGEREX_RESULT_OK);
  for (int last = 1; last <= whole.calls; ++last) {
    HostTranscript host;
    host.answer = [last](int line) { return line == last ? 1 : 0; };
    EXPECT_EQ(opened.walk(host), PAGEREX_RESULT_CANCELED) << last;
    EXPECT_EQ(host.calls, last);
    EXPECT_EQ(opened.result.code, PAGEREX_RESULT_CANCELED);
  }
  HostTranscript again;
  EXPECT_EQ(opened.walk(again), PAGEREX_RESULT_OK);
  EXPECT_EQ(again.lines, whole.lines);
}

TEST(WalkHost, EndsWhereAFunctionThrows) {
  HostDocument opened(fileOf(fullDocument()));
  HostTranscript host;
  host.answer = [](int line) { return line == 9 ? throw std::runtime_error("no more") : 0; };
  EXPECT_EQ(opened.walk(host), PAGEREX_RESULT_CANCELED);
  EXPECT_EQ(host.calls, 9);
}

TEST(WalkHost, TellsAllEndsWhenAFlagEndsIt) {
  HostDocument opened(fileOf(fullDocument()));
  int flag = 0;
  pagerex_limits limits = {};
  limits.size = sizeof limits;
  limits.cancel = &flag;
  pagerex_walk_options options = optionsOf(PAGEREX_REVISIONS_FINAL);
  options.limits = &limits;
  HostTranscript host;
  host.answer = [&flag](int line) {
    if (line == 9) pagerex_cancel(&flag);
    return 0;
  };
  EXPECT_EQ(opened.walk(host, &options), PAGEREX_RESULT_CANCELED);
  EXPECT_TRUE(host.isBalanced()) << host.lines;
  EXPECT_EQ(host.lines.find("end\""), std::string::npos);
  EXPECT_NE(host.lines.find("end document"), std::string::npos);
}

TEST(WalkHost, DoesNotCallFunctionsThatAreNotThere) {
  HostDocument opened(fileOf(fullDocument()));
  pagerex_handler none = {};
  none.size = sizeof none;
  EXPECT_EQ(pagerex_walk(opened.get(), nullptr, &none, nullptr, &opened.result), PAGEREX_RESULT_OK);
  EXPECT_EQ(opened.result.counts.paragraphs, 5u);
  EXPECT_EQ(opened.result.counts.tables, 1u);
  EXPECT_EQ(opened.result.complete, 1);
  EXPECT_STREQ(opened.result.summary.title, "Report");
}

TEST(WalkHost, RefusesWhatMakesNoSense) {
  HostDocument opened(fileOf(fullDocument()));
  HostTranscript host;
  const auto codeOf = [&](pagerex_handler handler, pagerex_walk_options options) {
    return pagerex_walk(opened.get(), &options, &handler, &host, nullptr);
  };
  pagerex_handler small = host.handler;
  small.size -= 1;
  pagerex_walk_options shortOptions = optionsOf(0);
  shortOptions.size -= 1;
  EXPECT_EQ(codeOf(small, optionsOf(0)), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(codeOf(host.handler, shortOptions), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(codeOf(host.handler, optionsOf(-1)), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(codeOf(host.handler, optionsOf(3)), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(pagerex_walk(nullptr, nullptr, &host.handler, &host, nullptr), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(pagerex_walk(opened.get(), nullptr, nullptr, &host, nullptr), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(host.calls, 0);
}

TEST(WalkHost, TakesHandlersOfLaterVersions) {
  HostDocument opened(fileOf(fullDocument()));
  HostTranscript host;
  struct Later {
    pagerex_handler known;
    int (*unknown)(void* user);
  } later = {host.handler, [](void*) { return 1; }};
  later.known.size = sizeof later;
  EXPECT_EQ(pagerex_walk(opened.get(), nullptr, &later.known, &host, nullptr), PAGEREX_RESULT_OK);
  EXPECT_TRUE(host.isBalanced());
}

TEST(WalkHost, KeepsToTheMemoryOfTheDocument) {
  const std::string file = fileOf(fullDocument());
  int walked = 0, refused = 0;
  for (uint64_t memory = 4096; memory < (1 << 20); memory += memory / 8) {
    pagerex_limits limits = {};
    limits.size = sizeof limits;
    limits.memory = memory;
    pagerex_input input = {};
    input.size = sizeof input;
    input.data = file.data();
    input.length = file.size();
    pagerex_document* document = nullptr;
    if (pagerex_open(&input, &limits, &document, nullptr) != PAGEREX_RESULT_OK) continue;
    HostTranscript host;
    const int code = pagerex_walk(document, nullptr, &host.handler, &host, nullptr);
    pagerex_close(document);
    ASSERT_TRUE(code == PAGEREX_RESULT_OK || code == PAGEREX_RESULT_MEMORY_LIMIT) << code;
    ++(code == PAGEREX_RESULT_OK ? walked : refused);
  }
  EXPECT_GT(walked, 0);
}

TEST(WalkHost, RunsOnAnyNumberOfThreads) {
  const std::string file = fileOf(fullDocument());
  HostDocument alone(file);
  HostTranscript expected;
  ASSERT_EQ(alone.walk(expected), PAGEREX_RESULT_OK);
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 20; ++round) {
        HostDocument opened(file);
        HostTranscript host;
        if (opened.walk(host) != PAGEREX_RESULT_OK || host.lines != expected.lines) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST(PictureRead, RefusesWhatIsNoPicture) {
  pagerex_picture drawing = {};
  drawing.size = sizeof drawing;
  pagerex_picture_data data = {}, small = {};
  data.size = sizeof data;
  small.size = sizeof small - 1;
  EXPECT_EQ(pagerex_picture_read(nullptr, &data), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(pagerex_picture_read(&drawing, nullptr), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(pagerex_picture_read(&drawing, &small), PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(pagerex_picture_read(&drawing, &data), PAGEREX_RESULT_UNREADABLE);
}
