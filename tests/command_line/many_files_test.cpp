// Files and folders into a folder: what is done, what is told of it, and what is left out the next time.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "command_line/program.h"

using support::TempFolder;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

TempFolder& fill(TempFolder& folder, const std::vector<std::string>& names) {
  for (const std::string& name : names) folder.write(name, documentOf("In " + name));
  return folder;
}

}  // namespace

TEST(ManyFiles, GoIntoAFolderThatIsMade) {
  TempFolder folder;
  fill(folder, {"a.doc", "b.doc"});
  const Finished finished = pagerex({"-o", "new/out", "a.doc", "b.doc"}, folder.path());
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_EQ(finished.output, "");
  EXPECT_THAT(finished.errors, StartsWith("pagerex: 2 files in "));
  EXPECT_THAT(finished.errors, HasSubstr(": 2 ok\n"));
  EXPECT_THAT(finished.errors, Not(HasSubstr("\r")));
  EXPECT_THAT(folder.files(), ElementsAre("a.doc", "b.doc", "new/out/a.html", "new/out/b.html"));
  EXPECT_THAT(folder.read("new/out/a.html"), HasSubstr("<p>In a.doc</p>"));
  EXPECT_THAT(folder.read("new/out/b.html"), HasSubstr("<p>In b.doc</p>"));
}

TEST(ManyFiles, ComeInPiecesOfAPageSize) {
  const TempFolder folder;
  support::WordDocument document;
  for (const char* text : {"first", "end"}) document.paragraph(text);
  for (const char* name : {"a.doc", "b.doc"}) document.save(folder.path(name));
  EXPECT_EQ(pagerex({"-o", "out", "--pagesize", "5", "a.doc", "b.doc"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.files(), ElementsAre("a.doc", "b.doc", "out/a.files/2.html", "out/a.html",
                                          "out/b.files/2.html", "out/b.html"));
}

TEST(ManyFiles, FoldersStandForTheDocumentsInThem) {
  TempFolder folder;
  fill(folder, {"in/a.doc", "in/deep/b.DOT", "in/deep/er/c.wbk", "in/d.txt", "in/doc"});
  EXPECT_EQ(pagerex({"-o", "out", "-t", "preview", "in"}, folder.path()).exitCode, 0);
  std::vector<std::string> files = folder.files();
  EXPECT_THAT(files, Contains("out/a.html"));
  EXPECT_THAT(files, Contains("out/deep/b.DOT.html"));
  EXPECT_THAT(files, Contains("out/deep/er/c.wbk.html"));
  EXPECT_EQ(files.size(), 8u);
}

TEST(ManyFiles, AllTakesEveryFileButTheResults) {
  TempFolder folder;
  fill(folder, {"in/a.txt", "in/out/b.doc"});
  EXPECT_EQ(pagerex({"-o", "in/out", "--all", "-t", "preview", "in"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.files(), ElementsAre("in/a.txt", "in/out/a.txt.html", "in/out/b.doc"));
}

TEST(ManyFiles, MayBeNamedInAList) {
  TempFolder folder;
  fill(folder, {"a.doc", "b c.doc", "d\ne.doc"});
  EXPECT_EQ(pagerex({"-o", "out", "--files-from", "-"}, folder.path(), "a.doc\nb c.doc").exitCode, 0);
  EXPECT_THAT(folder.files(), Contains("out/b c.html"));
  folder.write("list", std::string("d\ne.doc\0", 8));
  EXPECT_EQ(pagerex({"-o", "out", "--files-from", "list", "-0"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.files(), Contains("out/d%0Ae.html"));
}

TEST(ManyFiles, ThatFailAreTold) {
  TempFolder folder;
  fill(folder, {"a.doc"});
  folder.write("b.doc", std::string("{\\rtf1 Hello}"));
  const Finished finished =
      pagerex({"-o", "out", "--report", "report", "a.doc", "b.doc", "c.doc"}, folder.path());
  EXPECT_EQ(finished.exitCode, 2);
  EXPECT_THAT(finished.errors, HasSubstr("pagerex: b.doc: This is a Rich Text document (.rtf)."));
  EXPECT_THAT(finished.errors, HasSubstr("pagerex: c.doc: No such file or directory"));
  EXPECT_THAT(finished.errors, HasSubstr("1 ok, 1 not_word, 1 unreadable"));
  EXPECT_THAT(statusesIn(folder), ElementsAre("a.doc: ok", "b.doc: not_word", "c.doc: unreadable"));
}

TEST(ManyFiles, OfAnyNumberOfJobsComeOutAlike) {
  TempFolder folder;
  for (int i = 0; i < 40; ++i)
    fill(folder, {"in/" + std::to_string(i % 7) + "/" + std::to_string(i) + ".doc"});
  for (const char* format : {"html", "normal"}) {
    const std::string end = std::string("/") + format;
    EXPECT_EQ(pagerex({"-o", "one" + end, "-j1", "-t", format, "in"}, folder.path()).exitCode, 0);
    EXPECT_EQ(pagerex({"-o", "three" + end, "-j3", "-t", format, "in"}, folder.path()).exitCode, 0);
  }
  size_t count = 0;
  for (const std::string& name : folder.files()) {
    if (!name.starts_with("one/")) continue;
    ++count;
    EXPECT_EQ(folder.read(name), folder.read("three" + name.substr(3)));
  }
  EXPECT_GE(count, 120u);
}

TEST(ManyFiles, ShowOnATerminalHowFarTheyAre) {
  TempFolder folder;
  fill(folder, {"in/a.doc", "in/b.doc"});
  const std::string command = "TERM=xterm " PAGEREX_EMULATOR PAGEREX_CLI " -o out in";
  const Finished finished =
      Program("/usr/bin/script", {"-qec", command, "/dev/null"}, folder.path()).finish();
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_THAT(finished.output, HasSubstr("/2  "));
  EXPECT_THAT(finished.output, HasSubstr(" a second"));
  EXPECT_THAT(finished.output, HasSubstr("\r\x1B[Kpagerex: 2 files in "));
}

TEST(ManyFiles, NoneAreNoFailure) {
  const TempFolder folder;
  const Finished finished = pagerex({"-o", "out", "."}, folder.path());
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_THAT(finished.errors, StartsWith("pagerex: 0 files"));
}

TEST(Report, HasALineForEachFile) {
  TempFolder folder;
  fill(folder, {"a.doc"});
  EXPECT_EQ(pagerex({"-o", "out/", "--report", "report", "a.doc"}, folder.path()).exitCode, 0);
  const std::string line = folder.read("report");
  EXPECT_EQ(line.find('\n'), line.size() - 1);
  EXPECT_EQ(field(line, "path"), "a.doc");
  EXPECT_EQ(field(line, "status"), "ok");
  EXPECT_EQ(field(line, "kind"), "word97");
  EXPECT_EQ(field(line, "output"), "out/a.html");
  EXPECT_EQ(field(line, "sha256").size(), 64u);
  EXPECT_EQ(field(line, "bytes"), std::to_string(static_cast<double>(folder.read("a.doc").size())));
  EXPECT_EQ(field(line, "options"), "format=html links=safe pictures=usual pagesize=0");
  EXPECT_THAT(line, HasSubstr("\"warnings\":[]"));
  EXPECT_THAT(line, HasSubstr("\"milliseconds\":"));
  EXPECT_THAT(line, HasSubstr("\"version\":\"0."));
}

TEST(Report, TellsWhatADocumentSaysOfItself) {
  const TempFolder folder;
  support::WordDocument document;
  document.paragraph("Hello");
  document.summary({.title = "A title"});
  document.save(folder.path("a.doc"));
  folder.write("b.doc", std::string("no document"));
  pagerex({"-o", "out/", "--report", "report", "-j1", "a.doc", "b.doc"}, folder.path());
  const std::vector<std::string> lines = linesOf(folder.read("report"));
  EXPECT_THAT(lines.at(0), HasSubstr("\"summary\":{\"title\":\"A title\""));
  EXPECT_THAT(lines.at(1), Not(HasSubstr("summary")));
}

TEST(Report, HasTheChoicesThatResultsDependOn) {
  TempFolder folder;
  fill(folder, {"a.doc"});
  const Arguments chosen = {"-o", "out/", "--report", "report", "-t", "text", "--width", "30", "--headers"};
  Arguments arguments = chosen;
  arguments.push_back("a.doc");
  EXPECT_EQ(pagerex(arguments, folder.path()).exitCode, 0);
  EXPECT_EQ(field(folder.read("report"), "options"),
            "format=text links=safe pictures=usual pagesize=0 headers width=30");
  EXPECT_EQ(field(folder.read("report"), "output"), "out/a.txt");
  EXPECT_EQ(pagerex({"-o", "out/", "--report", "dark", "--dark", "a.doc"}, folder.path()).exitCode, 0);
  EXPECT_EQ(field(folder.read("dark"), "options"), "format=html links=safe pictures=usual pagesize=0 dark");
}

TEST(Report, TellsWarnings) {
  const TempFolder folder;
  support::WordDocument document;
  document.paragraph("Hello");
  const size_t place = support::WordDocument::pairOffset(mso_word::FCLCB_LIST_DEFINITIONS);
  document.patchFib(place, uint32_t{0x7FFFFF00}).patchFib(place + 4, uint32_t{100});
  document.save(folder.path("a.doc"));
  EXPECT_EQ(pagerex({"-o", "out/", "--report", "view", "-t", "normal", "a.doc"}, folder.path()).exitCode, 2);
  EXPECT_THAT(statusesIn(folder, "view"), ElementsAre("a.doc: damaged"));
  EXPECT_EQ(pagerex({"-o", "out/", "--report", "page", "a.doc"}, folder.path()).exitCode, 0);
  EXPECT_THAT(statusesIn(folder, "page"), ElementsAre("a.doc: partial"));
  for (const char* report : {"view", "page"})
    EXPECT_THAT(folder.read(report), HasSubstr("\"warnings\":[{\"code\":1,\"sentence\":\""));
  EXPECT_THAT(folder.read("view"), HasSubstr("\"where\":\"lists\",\"count\":1}]"));
  EXPECT_THAT(folder.read("page"), HasSubstr("\"where\":\"lists\",\"count\":1},"));
}

TEST(Report, KeepsNamesThatAreNoUtf8) {
  TempFolder folder;
  const std::string name = "a\xFF%\".doc";
  fill(folder, {name});
  EXPECT_EQ(pagerex({"-o", "out/", "--report", "report", name}, folder.path()).exitCode, 0);
  const std::string line = linesOf(folder.read("report")).at(0);
  EXPECT_EQ(field(line, "path"), "a\xEF\xBF\xBD%\".doc");
  EXPECT_EQ(field(line, "path_bytes"), "a%FF%25%22.doc");
  EXPECT_EQ(field(line, "output_bytes"), "out/a%FF%25%22.html");
  const Finished again = pagerex({"-o", "out/", "--report", "report", "--resume", name}, folder.path());
  EXPECT_THAT(again.errors, HasSubstr("1 of them done before"));
}

TEST(Report, IsContinued) {
  TempFolder folder;
  fill(folder, {"a.doc", "b.doc"});
  for (const char* name : {"a.doc", "b.doc"})
    EXPECT_EQ(pagerex({"-o", "out/", "--report", "report", name}, folder.path()).exitCode, 0);
  EXPECT_THAT(statusesIn(folder), ElementsAre("a.doc: ok", "b.doc: ok"));
}

TEST(Report, IsNotWrittenIntoSomethingElse) {
  TempFolder folder;
  fill(folder, {"a.doc", "b.doc"});
  const Finished finished = pagerex({"-o", "out/", "--report", "b.doc", "a.doc"}, folder.path());
  EXPECT_EQ(finished.exitCode, 1);
  EXPECT_THAT(finished.errors, HasSubstr("b.doc: is there, and is no report"));
  EXPECT_EQ(folder.read("b.doc"), documentOf("In b.doc"));
}

TEST(Resume, LeavesOutWhatIsDone) {
  TempFolder folder;
  fill(folder, {"in/a.doc", "in/b.doc"});
  folder.write("in/c.doc", std::string("text"));
  const Arguments arguments = {"-o", "out", "--report", "report", "--resume", "in"};
  EXPECT_EQ(pagerex(arguments, folder.path()).exitCode, 2);
  const std::string report = folder.read("report");
  const Finished again = pagerex(arguments, folder.path());
  EXPECT_EQ(again.exitCode, 2);
  EXPECT_THAT(again.errors, HasSubstr("2 ok, 1 not_word; 3 of them done before"));
  EXPECT_EQ(folder.read("report"), report);
}

TEST(Resume, DoesAgainWhatHasChanged) {
  TempFolder folder;
  fill(folder, {"a.doc", "b.doc", "c.doc"});
  Arguments arguments = {"-o", "out", "--report", "report", "--resume", "a.doc", "b.doc", "c.doc"};
  EXPECT_EQ(pagerex(arguments, folder.path()).exitCode, 0);
  folder.write("a.doc", documentOf("Another text"));
  std::filesystem::remove(folder.path("out/b.html"));
  EXPECT_THAT(pagerex(arguments, folder.path()).errors, HasSubstr("3 ok; 1 of them done before"));
  EXPECT_THAT(folder.read("out/a.html"), HasSubstr("Another text"));
  EXPECT_THAT(folder.files(), Contains("out/b.html"));
  arguments.insert(arguments.end(), {"--links", "none"});
  EXPECT_THAT(pagerex(arguments, folder.path()).errors, Not(HasSubstr("done before")));
}

TEST(Resume, GoesOnBehindALineThatBrokeOff) {
  TempFolder folder;
  fill(folder, {"a.doc", "b.doc"});
  const Arguments arguments = {"-o", "out", "-j1", "--report", "report", "--resume", "a.doc", "b.doc"};
  EXPECT_EQ(pagerex(arguments, folder.path()).exitCode, 0);
  const std::vector<std::string> lines = linesOf(folder.read("report"));
  folder.write("report", lines.at(0) + "\n" + lines.at(1).substr(0, 100));
  EXPECT_THAT(pagerex(arguments, folder.path()).errors, HasSubstr("2 ok; 1 of them done before"));
  EXPECT_THAT(statusesIn(folder),
              ElementsAre("?: ?", field(lines[0], "path") + ": ok", field(lines[1], "path") + ": ok"));
  EXPECT_THAT(pagerex(arguments, folder.path()).errors, HasSubstr("2 ok; 2 of them done before"));
}
