// A document from a file or from standard input, to a file or to standard output.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "command_line/program.h"
#include "support/canvas.h"
#include "support/picture_writer.h"

using support::TempFolder;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST(OneDocument, GoesToStandardOutput) {
  const TempFolder folder;
  folder.write("x.doc", documentOf("Hello"));
  const Finished finished = pagerex({"x.doc"}, folder.path());
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_THAT(finished.output, StartsWith("<!doctype html>\n"));
  EXPECT_THAT(finished.output, HasSubstr("<p>Hello</p>"));
  EXPECT_THAT(finished.output, EndsWith("</html>\n"));
  EXPECT_EQ(finished.errors, "");
  EXPECT_THAT(folder.files(), ElementsAre("x.doc"));
}

TEST(OneDocument, IsTheSamePageOnStandardOutputAndInAFile) {
  const TempFolder folder;
  folder.write("x.doc", documentOf("Hello"));
  EXPECT_EQ(pagerex({"-o", "x.html", "x.doc"}, folder.path()).exitCode, 0);
  EXPECT_EQ(pagerex({"-t", "html", "x.doc"}, folder.path()).output, folder.read("x.html"));
  EXPECT_THAT(folder.files(), ElementsAre("x.doc", "x.html"));
}

TEST(OneDocument, GoesByTheNameOfItsFileWithoutATitle) {
  const TempFolder folder;
  for (const char* name : {"in/a letter.doc", "a\nb.doc", "\xFF.doc", ".doc"})
    folder.write(name, documentOf("Hello"));
  EXPECT_THAT(pagerex({"in/a letter.doc"}, folder.path()).output, HasSubstr("<title>a letter</title>"));
  for (const char* name : {"a\nb.doc", "\xFF.doc", "-"})
    EXPECT_THAT(pagerex({name}, folder.path(), documentOf("Hello")).output,
                HasSubstr("<title>document</title>"));
  EXPECT_THAT(pagerex({".doc"}, folder.path()).output, HasSubstr("<title>.doc</title>"));
}

TEST(OneDocument, HasItsPicturesInThePage) {
  support::WordDocument document;
  support::drawing::Canvas canvas(document);
  const support::Bytes dots = support::png(2, 2, [](double, double) { return support::Colour(); });
  document.paragraph().special(1, canvas.inlinePicture(support::drawing::kPng, dots, 1440, 720));
  const support::Bytes bytes = document.build();
  const std::string content(bytes.begin(), bytes.end());
  EXPECT_THAT(pagerex({"-"}, ".", content).output, HasSubstr("src=\"data:image/png;base64,"));
  EXPECT_THAT(pagerex({"--pictures", "none", "-"}, ".", content).output, Not(HasSubstr("data:image")));
  EXPECT_EQ(pagerex({"--pictures", "files", "-"}, ".", content).exitCode, 1);
  const TempFolder folder;
  EXPECT_EQ(pagerex({"--pictures", "files", "-o", "x.html", "-"}, folder.path(), content).exitCode, 0);
  EXPECT_THAT(folder.files(), ElementsAre("x.files/picture-1.png", "x.html"));
}

TEST(OneDocument, ComesInPiecesOfAPageSize) {
  const TempFolder folder;
  support::WordDocument document;
  for (const char* text : {"first", "second", "end"}) document.paragraph(text);
  document.save(folder.path("x.doc"));
  EXPECT_EQ(pagerex({"--pagesize", "5", "-o", "y.html", "x.doc"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.files(), ElementsAre("x.doc", "y.files/2.html", "y.files/3.html", "y.html"));
  EXPECT_THAT(folder.read("y.html"), HasSubstr("first"));
  EXPECT_THAT(folder.read("y.files/3.html"), HasSubstr("end"));
  const Finished shown = pagerex({"--pagesize", "5", "x.doc"}, folder.path());
  EXPECT_EQ(shown.exitCode, 1);
  EXPECT_EQ(shown.output, "");
  EXPECT_THAT(shown.errors, HasSubstr("the format html is several files: name the main one with -o FILE"));
}

TEST(OneDocument, IsDarkWhereItIsAskedFor) {
  const std::string document = documentOf("Hello");
  EXPECT_THAT(pagerex({"--dark", "-"}, ".", document).output, HasSubstr("prefers-color-scheme:dark"));
  EXPECT_THAT(pagerex({"-"}, ".", document).output, Not(HasSubstr("prefers-color-scheme:dark")));
}

TEST(OneDocument, ComesFromStandardInput) {
  const Finished finished = pagerex({"-"}, ".", documentOf("Hello"));
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_THAT(finished.output, HasSubstr("Hello"));
}

TEST(OneDocument, IsShownWholeUnlessAPageSizeIsGiven) {
  const std::string document = documentOf(std::string(5000, 'x') + "end");
  EXPECT_THAT(pagerex({"-"}, ".", document).output, HasSubstr("end"));
  EXPECT_THAT(pagerex({"-t", "preview", "-"}, ".", document).output, HasSubstr("end"));
  support::WordDocument runs;
  support::Paragraph& paragraph = runs.paragraph();
  for (const char* text : {"first", "second"}) paragraph.breakRun().run(text);
  const support::Bytes bytes = runs.build();
  const Finished cut = pagerex({"-t", "preview", "--pagesize", "5", "-"}, ".", {bytes.begin(), bytes.end()});
  EXPECT_THAT(cut.output, HasSubstr("first"));
  EXPECT_THAT(cut.output, Not(HasSubstr("second")));
}

TEST(OneDocument, GoesToAFileWhoseEndingTellsTheFormat) {
  const TempFolder folder;
  const std::string document = documentOf("Hello");
  EXPECT_EQ(pagerex({"-o", "x.HTML", "-"}, folder.path(), document).exitCode, 0);
  EXPECT_THAT(folder.files(), ElementsAre("x.HTML"));
  EXPECT_THAT(folder.read("x.HTML"), StartsWith("<!doctype html>\n"));
  const Finished unknown = pagerex({"-o", "x.nothing", "-"}, folder.path(), document);
  EXPECT_EQ(unknown.exitCode, 1);
  EXPECT_THAT(unknown.errors, HasSubstr("x.nothing: no format has this ending"));
}

TEST(OneDocument, TakesTheFormatThatIsNamed) {
  const TempFolder folder;
  EXPECT_EQ(
      pagerex({"--format=phone", "--output", "x.html", "-"}, folder.path(), documentOf("Hello")).exitCode, 0);
  EXPECT_THAT(folder.read("x.html"), HasSubstr("<p>total1page</p>"));
  const Finished unknown = pagerex({"-t", "nothing", "-"}, folder.path());
  EXPECT_EQ(unknown.exitCode, 1);
  EXPECT_THAT(unknown.errors, HasSubstr("--format: no format nothing; there are normal, "));
}

TEST(OneDocument, KeepsTheLinksThatAreAskedFor) {
  const TempFolder folder;
  support::WordDocument document;
  document.paragraph().field(88, "HYPERLINK \"odd:address\"", "text");
  document.save(folder.path("x.doc"));
  EXPECT_EQ(pagerex({"-o", "safe.html", "x.doc"}, folder.path()).exitCode, 0);
  EXPECT_EQ(pagerex({"-o", "all.html", "--links", "all", "x.doc"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.read("safe.html"), AllOf(HasSubstr("text"), Not(HasSubstr("odd:address"))));
  EXPECT_THAT(folder.read("all.html"), HasSubstr("<a href=\"odd:address\">text</a>"));
}

namespace {

std::string changedDocument() {
  support::WordDocument document;
  const uint16_t ann = document.author("Ann");
  document.header(0, support::HeaderSlot::kOddHeader).paragraph("above");
  document.paragraph("a ").inserted("new ", ann).deleted("old ", ann).run("b");
  document.paragraph("some words that do not fit").annotation("What is this?");
  document.paragraph("seen ").run("hidden", {support::sprm(0x083C, 1)});
  document.summary({.title = "A title"});
  const support::Bytes bytes = document.build();
  return {bytes.begin(), bytes.end()};
}

/// What goes to standard output.
std::string shownWith(const Arguments& options, const char* format = "text") {
  Arguments arguments = {"-t", format};
  arguments.insert(arguments.end(), options.begin(), options.end());
  arguments.push_back("-");
  return pagerex(arguments, ".", changedDocument()).output;
}

}  // namespace

TEST(OneDocument, GoesToStandardOutputAsText) {
  EXPECT_THAT(shownWith({}), StartsWith("a new b\nsome words that do not fit"));
  EXPECT_THAT(shownWith({}), HasSubstr("What is this?"));
  EXPECT_THAT(shownWith({}), Not(HasSubstr("hidden")));
  EXPECT_THAT(shownWith({}), Not(HasSubstr("above")));
}

TEST(OneDocument, TakesTheChoicesOfTheText) {
  EXPECT_THAT(shownWith({"--revisions", "final"}), HasSubstr("a new b\n"));
  EXPECT_THAT(shownWith({"--revisions", "original"}), HasSubstr("a old b\n"));
  EXPECT_THAT(shownWith({"--revisions", "all"}), HasSubstr("a new old b\n"));
  EXPECT_THAT(shownWith({"--hidden-text"}), HasSubstr("seen hidden\n"));
  EXPECT_THAT(shownWith({"--no-comments"}), Not(HasSubstr("What is this?")));
  EXPECT_THAT(shownWith({"--headers"}), HasSubstr("above\n"));
  EXPECT_THAT(shownWith({"--width", "20"}), HasSubstr("some words that do\n"));
}

TEST(OneDocument, GoesToStandardOutputAsMarkdownWithoutItsPictures) {
  EXPECT_THAT(shownWith({}, "markdown"), HasSubstr("a new b\n"));
  const TempFolder folder;
  folder.write("x.doc", changedDocument());
  const Finished files = pagerex({"-t", "markdown", "--pictures", "files", "x.doc"}, folder.path());
  EXPECT_EQ(files.exitCode, 1);
  EXPECT_THAT(files.errors, HasSubstr("the format markdown is several files"));
}

TEST(OneDocument, TakesTheChoicesOfMarkdown) {
  EXPECT_THAT(shownWith({"--front-matter"}, "markdown"), StartsWith("---\n"));
  EXPECT_THAT(shownWith({}, "markdown"), Not(StartsWith("---\n")));
  EXPECT_THAT(shownWith({"--common-mark", "--page-breaks"}, "markdown"), HasSubstr("a new b\n"));
}

TEST(OneDocument, BecomesMarkdownAndTextByTheEndingOfItsFile) {
  const TempFolder folder;
  EXPECT_EQ(pagerex({"-o", "x.md", "-"}, folder.path(), documentOf("Hello")).exitCode, 0);
  EXPECT_EQ(pagerex({"-o", "x.txt", "-"}, folder.path(), documentOf("Hello")).exitCode, 0);
  EXPECT_EQ(folder.read("x.md"), "Hello\n");
  EXPECT_EQ(folder.read("x.txt"), "Hello\n");
}

TEST(OneDocument, RefusesSeveralFilesOnStandardOutput) {
  const Finished finished = pagerex({"-t", "mulpages", "-"}, ".", documentOf("Hello"));
  EXPECT_EQ(finished.exitCode, 1);
  EXPECT_EQ(finished.output, "");
  EXPECT_THAT(finished.errors,
              HasSubstr("the format mulpages is several files: name the main one with -o FILE"));
}

TEST(OneDocument, SaysWhyItWasNotConverted) {
  const TempFolder folder;
  const Finished text = pagerex({"-"}, ".", "plain text");
  EXPECT_EQ(text.exitCode, 2);
  EXPECT_EQ(text.output, "");
  EXPECT_THAT(text.errors, HasSubstr("This is plain text (.txt)."));
  const Finished missing = pagerex({"x.doc"}, folder.path());
  EXPECT_EQ(missing.exitCode, 2);
  EXPECT_THAT(missing.errors, HasSubstr("No such file or directory"));
}

TEST(OneDocument, DoesNotReplaceADocument) {
  const TempFolder folder;
  const std::string document = documentOf("Hello");
  for (const char* name : {"x.doc", "other.doc"}) folder.write(name, document);
  for (const char* name : {"x.doc", "other.doc", "./x.doc"}) {
    EXPECT_EQ(pagerex({"-t", "normal", "-o", name, "x.doc"}, folder.path()).exitCode, 1) << name;
    EXPECT_EQ(folder.read(name), document);
  }
}

TEST(OneDocument, MayBeWriteProtected) {
  const TempFolder folder;
  const std::string path = folder.write("x.doc", documentOf("Hello"));
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  EXPECT_EQ(pagerex({path}).exitCode, 0);
}

TEST(OneDocument, EndsQuietlyWhenNobodyReads) {
  const TempFolder folder;
  const std::string path = folder.write("x.doc", documentOf(std::string(100'000, 'x')));
  const std::string command = "exec 3> >(exit); wait $!; " PAGEREX_EMULATOR PAGEREX_CLI " " + path + " >&3";
  const Finished finished = Program("/bin/bash", {"-c", command}).finish();
  EXPECT_EQ(finished.exitCode, 2);
  EXPECT_EQ(finished.errors, "");
}

TEST(OneDocument, SaysThatStandardOutputIsFull) {
  const TempFolder folder;
  const std::string path = folder.write("x.doc", documentOf("Hello"));
  const Finished finished =
      Program("/bin/sh", {"-c", PAGEREX_EMULATOR PAGEREX_CLI " " + path + " >/dev/full"}).finish();
  EXPECT_EQ(finished.exitCode, 2);
  EXPECT_THAT(finished.errors, HasSubstr("standard output: No space left on device"));
}

TEST(Info, TellsWhatEachFileIs) {
  const TempFolder folder;
  folder.write("x.doc", documentOf("Hello"));
  folder.write("x.txt", std::string("abc"));
  const Finished finished = pagerex({"--info", "x.doc", "x.txt"}, folder.path());
  EXPECT_EQ(finished.exitCode, 0);
  const std::vector<std::string> lines = linesOf(finished.output);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(field(lines[0], "path"), "x.doc");
  EXPECT_EQ(field(lines[0], "kind"), "word97");
  EXPECT_THAT(lines[0], HasSubstr("\"counts\":{\"characters\":6,\"paragraphs\":1,"));
  EXPECT_EQ(field(lines[1], "kind"), "text");
  EXPECT_EQ(field(lines[1], "sentence"), "This is plain text (.txt).");
  EXPECT_EQ(field(lines[1], "bytes"), std::to_string(3.0));
  EXPECT_EQ(field(lines[1], "sha256"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_THAT(field(lines[1], "version"), StartsWith("0."));
}

TEST(Info, TellsWhatTheDocumentSaysOfItself) {
  const TempFolder folder;
  support::WordDocument document;
  document.paragraph("Hello");
  document.summary({.title = "A \"title\"", .words = 3, .custom = {{"Done", true}}});
  document.save(folder.path("x.doc"));
  const std::string line = pagerex({"--info", "x.doc"}, folder.path()).output;
  EXPECT_THAT(line, HasSubstr("\"summary\":{\"title\":\"A \\\"title\\\"\","));
  EXPECT_THAT(
      line,
      HasSubstr("\"words\":3,\"custom\":[{\"name\":\"Done\",\"value\":\"true\",\"kind\":\"boolean\"}]}"));
  EXPECT_THAT(line, Not(HasSubstr("subject")));
}

TEST(Info, ReadsStandardInput) {
  const Finished finished = pagerex({"--info", "-"}, ".", "{\\rtf1 Hello}");
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_EQ(field(finished.output, "kind"), "rtf");
  EXPECT_EQ(field(finished.output, "path"), "-");
}

TEST(Info, SaysWhatCannotBeRead) {
  const TempFolder folder;
  const Finished finished = pagerex({"--info", "nothing", "."}, folder.path());
  EXPECT_EQ(finished.exitCode, 2);
  EXPECT_EQ(finished.output, "");
  EXPECT_THAT(finished.errors, HasSubstr("nothing: No such file or directory"));
  EXPECT_THAT(finished.errors, HasSubstr(".: is a folder"));
}

TEST(Arguments, AreRefusedWhereTheyMakeNoSense) {
  const TempFolder folder;
  folder.write("x.doc", documentOf("Hello"));
  const Arguments wrong[] = {
      {},
      {"a.doc", "b.doc", "c.doc"},
      {"--view", "phone", "-o", "x.html", "x.doc"},
      {"--links", "some", "x.doc"},
      {"--pictures", "some", "x.doc"},
      {"--revisions", "some", "x.doc"},
      {"--revisions=", "x.doc"},
      {"--width", "19", "-t", "text", "x.doc"},
      {"--width", "-1", "-t", "text", "x.doc"},
      {"--width", "wide", "-t", "text", "x.doc"},
      {"--hidden-text=yes", "x.doc"},
      {"--headers", "x.doc", "x.html"},
      {"--dark", "x.doc", "x.html"},
      {"--dark=yes", "x.doc"},
      {"--jobs", "0", "-o", "out/", "x.doc"},
      {"--timeout", "soon", "-o", "out/", "x.doc"},
      {"--timeout", "1.", "-o", "out/", "x.doc"},
      {"--memory", "64X", "-o", "out/", "x.doc"},
      {"--memory", "99999999999G", "-o", "out/", "x.doc"},
      {"--report", "report", "x.doc"},
      {"--resume", "-o", "out/", "x.doc"},
      {"-0", "-o", "out/", "x.doc"},
      {"--files-from", "list"},
      {"--info", "-o", "x.html", "x.doc"},
      {"-o", "out/", "-"},
      {"-o", "x.doc", "x.doc", "x.doc"},
  };
  for (const Arguments& arguments : wrong)
    EXPECT_EQ(pagerex(arguments, folder.path()).exitCode, 1) << testing::PrintToString(arguments);
  EXPECT_THAT(folder.files(), ElementsAre("x.doc"));
}
