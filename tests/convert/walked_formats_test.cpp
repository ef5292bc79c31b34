// What hosts may ask of the formats that a walk writes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>

#include "convert/host.h"
#include "support/temp_folder.h"
#include "support/word_document_writer.h"

using namespace convert_test;
using support::Bytes;
using support::WordDocument;
using testing::HasSubstr;
using testing::Not;

namespace {

/// The main file of one conversion.
std::string written(const Bytes& document, const pagerex_options& options) {
  Host host(document);
  EXPECT_EQ(convert(host.memory(), host.sink(), options).code, PAGEREX_RESULT_OK);
  return host.content(std::string("document") + (options.format == std::string("text") ? ".txt" : ".md"));
}

Bytes changedDocument() {
  WordDocument document;
  const uint16_t ann = document.author("Ann");
  document.paragraph("a ").inserted("new ", ann).deleted("old ", ann).run("b");
  return document.build();
}

std::string withRevisions(int32_t revisions) {
  pagerex_options options = Host::quiet("text");
  options.revisions = revisions;
  return written(changedDocument(), options);
}

TEST(WalkedFormats, WriteTheFinalTextUnlessAskedForAnother) {
  EXPECT_EQ(written(changedDocument(), Host::quiet("text")), "a new b\n");
  EXPECT_EQ(withRevisions(PAGEREX_REVISIONS_FINAL), "a new b\n");
  EXPECT_EQ(withRevisions(PAGEREX_REVISIONS_ORIGINAL), "a old b\n");
  EXPECT_EQ(withRevisions(PAGEREX_REVISIONS_ALL), "a new old b\n");
}

TEST(WalkedFormats, LeaveHiddenTextOutUnlessItIsWanted) {
  WordDocument document;
  document.paragraph("seen ").run("hidden", {support::sprm(0x083C, 1)});
  pagerex_options options = Host::quiet("text");
  EXPECT_EQ(written(document.build(), options), "seen \n");
  options.hidden_text = 1;
  EXPECT_EQ(written(document.build(), options), "seen hidden\n");
}

TEST(WalkedFormats, WriteCommentsUnlessTheyAreNotWanted) {
  WordDocument document;
  document.paragraph("text").annotation("What is this?");
  pagerex_options options = Host::quiet("text");
  EXPECT_THAT(written(document.build(), options), HasSubstr("What is this?"));
  options.no_comments = 1;
  EXPECT_EQ(written(document.build(), options), "text\n");
}

TEST(WalkedFormats, LeaveHeadersOutUnlessTheyAreWanted) {
  WordDocument document;
  document.header(0, support::HeaderSlot::kOddHeader).paragraph("above");
  document.paragraph("text");
  pagerex_options options = Host::quiet("text");
  EXPECT_EQ(written(document.build(), options), "text\n");
  options.headers = 1;
  EXPECT_EQ(written(document.build(), options), "above\ntext\n");
}

TEST(WalkedFormats, WrapLinesAtAWidth) {
  WordDocument document;
  document.paragraph("some words that do not fit");
  pagerex_options options = Host::quiet("text");
  EXPECT_EQ(written(document.build(), options), "some words that do not fit\n");
  options.width = 20;
  EXPECT_EQ(written(document.build(), options), "some words that do\nnot fit\n");
  options.width = INT_MAX;
  EXPECT_THAT(written(document.build(), options), HasSubstr("that do not fit"));
}

TEST(WalkedFormats, RefuseWidthsThatNoLineHas) {
  Host host(changedDocument());
  for (const int32_t width : {INT_MIN, -1, 1, 19}) {
    pagerex_options options = Host::quiet("text");
    options.width = width;
    EXPECT_EQ(convert(host.memory(), host.sink(), options).code, PAGEREX_RESULT_INVALID_ARGUMENT) << width;
  }
}

TEST(WalkedFormats, RefuseStatesThatThereAreNot) {
  Host host(changedDocument());
  for (const int32_t wrong : {-1, 3, INT_MAX}) {
    pagerex_options options = Host::quiet("text");
    options.revisions = wrong;
    EXPECT_EQ(convert(host.memory(), host.sink(), options).code, PAGEREX_RESULT_INVALID_ARGUMENT) << wrong;
  }
}

TEST(WalkedFormats, ReadNothingBehindTheOptionsOfAnOlderHost) {
  pagerex_options options = Host::quiet("text");
  options.size = offsetof(pagerex_options, revisions);
  options.revisions = 77;
  options.width = -1;
  EXPECT_EQ(written(changedDocument(), options), "a new b\n");
}

TEST(WalkedFormats, TellTheSameHoweverOftenTheyAreWritten) {
  WordDocument made;
  made.paragraph("one");
  made.patchFib(WordDocument::pairOffset(mso_word::FCLCB_STYLE_SHEET), uint32_t{0x7FFFFFFF});
  Host host(made.build());
  Document document(host.memory());
  document.write(Host::quiet("text"), host.sink());
  const uint64_t first = document.result.warnings_total;
  EXPECT_GT(first, 0u);
  EXPECT_EQ(document.result.complete, 0);
  for (int i = 0; i < 5; ++i) {
    host.forget();
    document.write(Host::quiet("text"), host.sink());
    EXPECT_EQ(host.content("document.txt"), "one\n");
    EXPECT_EQ(document.result.warnings_total, first);
  }
}

/// Markdown of a document with links, a page break and a picture in the line.
Bytes documentForMarkdown() {
  WordDocument document;
  document.paragraph().field(88, " HYPERLINK \"http://x.example/\" ", "plain");
  document.paragraph().field(88, " HYPERLINK \"odd:address\" ", "odd");
  document.paragraph("one\f").run("two");
  document.summary({.title = "A title"});
  return document.build();
}

TEST(Markdown, KeepsTheAddressesThatAreWanted) {
  pagerex_options options = Host::quiet("markdown");
  EXPECT_THAT(written(documentForMarkdown(), options), HasSubstr("http://x.example/"));
  EXPECT_THAT(written(documentForMarkdown(), options), Not(HasSubstr("odd:address")));
  options.links = PAGEREX_LINKS_ALL;
  EXPECT_THAT(written(documentForMarkdown(), options), HasSubstr("odd:address"));
  options.links = PAGEREX_LINKS_NONE;
  EXPECT_THAT(written(documentForMarkdown(), options), Not(HasSubstr("x.example")));
}

TEST(Markdown, WarnsOfTheAddressesThatItLeavesOut) {
  Host host(documentForMarkdown());
  const Result result = convert(host.memory(), host.sink(), Host::quiet("markdown"));
  EXPECT_TRUE(result.warns(PAGEREX_WARNING_LINK_REMOVED, "odd"));
  EXPECT_EQ(result.complete, 1);
}

TEST(Markdown, BeginsWithThePropertiesWhereTheyAreWanted) {
  pagerex_options options = Host::quiet("markdown");
  EXPECT_THAT(written(documentForMarkdown(), options), Not(HasSubstr("A title")));
  options.front_matter = 1;
  EXPECT_THAT(written(documentForMarkdown(), options), testing::StartsWith("---\n"));
  EXPECT_THAT(written(documentForMarkdown(), options), HasSubstr("A title"));
}

TEST(Markdown, MarksPageBreaksWhereTheyAreWanted) {
  pagerex_options options = Host::quiet("markdown");
  EXPECT_THAT(written(documentForMarkdown(), options), Not(HasSubstr("<!--")));
  options.page_breaks = 1;
  EXPECT_THAT(written(documentForMarkdown(), options), HasSubstr("<!-- page break -->"));
}

TEST(Markdown, IsCommonMarkWhereThatIsWanted) {
  WordDocument document;
  document.row({"a", "b"}, {support::defTableSprm({0, 1000, 2000})});
  document.paragraph();
  pagerex_options options = Host::quiet("markdown");
  EXPECT_THAT(written(document.build(), options), Not(HasSubstr("<table")));
  options.common_mark = 1;
  EXPECT_THAT(written(document.build(), options), HasSubstr("<table"));
}

class MarkdownPictures : public testing::Test {
 protected:
  Result write(int32_t pictures) {
    pagerex_options options = Host::quiet("markdown");
    options.pictures = pictures;
    return convert(host_.memory(), host_.sink(), options);
  }
  Host host_{smallDocument()};
};

TEST_F(MarkdownPictures, AreFilesUnlessAskedForOtherwise) {
  for (const int32_t files : {PAGEREX_PICTURES_USUAL, PAGEREX_PICTURES_FILES}) {
    host_.forget();
    const Result result = write(files);
    EXPECT_EQ(result.counts.pictures, 1u);
    ASSERT_EQ(host_.names().size(), 2u);
    const std::string name = host_.names().front() == "document.md" ? host_.names()[1] : host_.names()[0];
    EXPECT_THAT(name, testing::StartsWith("document.files/picture-1."));
    EXPECT_THAT(host_.typeOf(name), testing::StartsWith("image/"));
    EXPECT_THAT(host_.content("document.md"), HasSubstr("(" + name + ")"));
  }
}

TEST_F(MarkdownPictures, AreEmbeddedInTheOneFile) {
  EXPECT_EQ(write(PAGEREX_PICTURES_EMBEDDED).counts.pictures, 1u);
  EXPECT_EQ(host_.names().size(), 1u);
  EXPECT_THAT(host_.content("document.md"), HasSubstr("(data:image/"));
}

TEST_F(MarkdownPictures, AreToldWhereTheyAreNotWanted) {
  const Result result = write(PAGEREX_PICTURES_NONE);
  EXPECT_TRUE(result.warns(PAGEREX_WARNING_PICTURES_OFF));
  EXPECT_EQ(result.complete, 1);
  EXPECT_EQ(host_.names().size(), 1u);
  EXPECT_THAT(host_.content("document.md"), Not(HasSubstr("data:")));
}

TEST_F(MarkdownPictures, TakeThePlaceOfOlderOnes) {
  const support::TempFolder from, to;
  const std::string source = from.write("in.doc", smallDocument());
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(convertPaths(source, to.path("x.md"), "markdown").code, PAGEREX_RESULT_OK);
    EXPECT_EQ(to.files().size(), 2u);
  }
  to.write("x.files/mine.png", std::string("mine"));
  EXPECT_EQ(convertPaths(source, to.path("x.md"), "markdown").code, PAGEREX_RESULT_REFUSED);
}

TEST_F(MarkdownPictures, ThatAreNoFilesLeaveTheFolderAlone) {
  const support::TempFolder to;
  to.write("x.files/mine.png", std::string("mine"));
  pagerex_options options = Host::quiet("markdown");
  options.pictures = PAGEREX_PICTURES_EMBEDDED;
  const std::string target = to.path("x.md");
  EXPECT_EQ(convert(host_.memory(), outputTo(target), options).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(to.read("x.files/mine.png"), "mine");
}

TEST(WalkedFormats, TakeTheSameMemoryForAnyNumberOfWritings) {
  WordDocument made;
  for (int i = 0; i < 2000; ++i) made.paragraph("some words, and some more of them");
  const Bytes bytes = made.build();
  pagerex_limits limits = {};
  limits.size = sizeof(limits);
  limits.memory = bytes.size() + (1 << 20);
  Host host(bytes);
  Document document(host.memory(), &limits);
  ASSERT_EQ(document.code(), PAGEREX_RESULT_OK);
  for (int i = 0; i < 40; ++i) {
    for (const char* format : {"text", "markdown", "normal"}) {
      host.forget();
      ASSERT_EQ(document.write(Host::quiet(format), host.sink()), PAGEREX_RESULT_OK) << format << " " << i;
    }
  }
}

/// The streams have names in other letters, which the views do not find.
Bytes documentOfTheWalkAlone() {
  WordDocument document;
  document.paragraph("one");
  document.row({"a", "b"}, {support::defTableSprm({0, 1000, 2000})});
  document.paragraph("two");
  const support::WordStreams streams = document.streams();
  return support::CompoundFileWriter()
      .stream(u"WORDDOCUMENT", streams.wordDocument)
      .stream(u"1TABLE", streams.table)
      .bytes();
}

TEST(DocumentsOfTheWalkAlone, AreWrittenByItAndDamagedToTheViews) {
  Host host(documentOfTheWalkAlone());
  Document document(host.memory());
  ASSERT_EQ(document.code(), PAGEREX_RESULT_OK);
  EXPECT_EQ(document.write(Host::quiet("normal"), host.sink()), PAGEREX_RESULT_DAMAGED);
  host.forget();
  EXPECT_EQ(document.write(Host::quiet("text"), host.sink()), PAGEREX_RESULT_OK);
  EXPECT_EQ(host.content("document.txt"), "one\na\tb\ntwo\n");
  EXPECT_EQ(document.result.kind, PAGEREX_KIND_WORD97);
}

TEST(DocumentsOfTheWalkAlone, AreCountedByIt) {
  Host host(documentOfTheWalkAlone());
  const Document document(host.memory());
  pagerex_document_info info = {};
  info.size = sizeof(info);
  ASSERT_EQ(pagerex_info(document.get(), &info), PAGEREX_RESULT_OK);
  EXPECT_EQ(info.counts.tables, 1u);
  EXPECT_EQ(info.counts.paragraphs, 4u);
  EXPECT_EQ(info.counts.characters, 12u);
}

}  // namespace
