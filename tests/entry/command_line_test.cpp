// The command line and the sample host, as programs.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>

#include "entry/conversion.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

struct Finished {
  int exitCode = -1;
  std::string output;  ///< of both streams
};

/// Runs a program by the shell, in a cross build under its emulator; the arguments are words of it.
Finished run(const std::string& program, const std::string& arguments) {
  FILE* const pipe = popen((PAGEREX_EMULATOR + program + " " + arguments + " 2>&1 </dev/null").c_str(), "r");
  Finished finished;
  char buffer[4096];
  while (const size_t size = fread(buffer, 1, sizeof buffer, pipe)) finished.output.append(buffer, size);
  const int status = pclose(pipe);
  if (WIFEXITED(status)) finished.exitCode = WEXITSTATUS(status);
  return finished;
}

Finished pagerexOf(const std::string& arguments) {
  return run(PAGEREX_CLI, arguments);
}
Finished pagerexOf(const std::string& options, const Conversion& conversion) {
  return pagerexOf(options + " " + conversion.source() + " " + conversion.target());
}

}  // namespace

TEST(CommandLine, TellsItsVersionAndItsUse) {
  EXPECT_THAT(pagerexOf("--version").output, StartsWith("pagerex 0."));
  EXPECT_THAT(pagerexOf("--help").output, HasSubstr("Usage: pagerex [--view normal|phone|preview|mulpages]"));
  EXPECT_EQ(pagerexOf("--help").exitCode, 0);
}

TEST(CommandLine, ConvertsInViewNormalWithoutAWord) {
  const Conversion conversion(documentOf({"Hello"}));
  const Finished finished = pagerexOf("", conversion);
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_EQ(finished.output, "");
  EXPECT_THAT(conversion.page(1), HasSubstr("Hello"));
}

TEST(CommandLine, PassesViewAndPageSize) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  EXPECT_EQ(pagerexOf("--view phone --pagesize 4", conversion).exitCode, 0);
  EXPECT_THAT(conversion.main(), HasSubstr("<p>total2page</p>"));
}

TEST(CommandLine, ViewsWithPagesHaveAPageSizeByDefault) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  EXPECT_EQ(pagerexOf("--view preview", conversion).exitCode, 0);
  EXPECT_THAT(conversion.main(), HasSubstr("fourtwo"));
}

TEST(CommandLine, ShowsEachPageAsItIsFinished) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  const Finished finished = pagerexOf("--view mulpages --pagesize 4 --progress", conversion);
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_EQ(finished.output, "page 1: " + conversion.folder().path("x.files/1.htm") + "\n" +
                                 "page 2: " + conversion.folder().path("x.files/2.htm") + "\n");
}

TEST(CommandLine, RefusesWhatItDoesNotUnderstand) {
  const Conversion conversion(documentOf({"Hello"}));
  for (const char* options : {"--view NORMAL", "--pagesize 0", "--view phone --pagesize x", "--pagesize 9",
                              "--progress", "--view phone --progress", "--unknown", "extra"})
    EXPECT_EQ(pagerexOf(options, conversion).exitCode, 1) << options;
  EXPECT_EQ(pagerexOf("--view normal " + conversion.source()).exitCode, 1);
  EXPECT_EQ(pagerexOf("").exitCode, 1);
  EXPECT_THAT(conversion.output(), IsEmpty());
}

namespace {

/// A document with two links.
support::WordDocument withLinks() {
  constexpr uint8_t kHyperlink = 88;
  support::WordDocument document;
  document.paragraph()
      .field(kHyperlink, " HYPERLINK \"javascript:alert(1)\" ", "run")
      .field(kHyperlink, " HYPERLINK \"http://x/?a&b\" ", "go");
  return document;
}

}  // namespace

TEST(CommandLine, MakesSafePagesIfAskedTo) {
  const Conversion conversion(withLinks());
  EXPECT_EQ(pagerexOf("", conversion).exitCode, 0);
  EXPECT_THAT(conversion.page(1), AllOf(HasSubstr("<a href=\"javascript:alert(1)\">run"),
                                        HasSubstr("<a href=\"http://x/?a&b\">go")));
  for (const char* options : {"--safe", "--safe --links safe", "--links safe --safe --view mulpages"}) {
    EXPECT_EQ(pagerexOf(options, conversion).exitCode, 0) << options;
    EXPECT_THAT(conversion.page(1), AllOf(HasSubstr("<a>run"), HasSubstr("<a href=\"http://x/?a&amp;b\">go")))
        << options;
  }
}

TEST(CommandLine, KeepsAllAddressesOrNoneInSafePages) {
  const Conversion conversion(withLinks());
  EXPECT_EQ(pagerexOf("--safe --links all", conversion).exitCode, 0);
  EXPECT_THAT(conversion.page(1), AllOf(HasSubstr("<a href=\"javascript:alert(1)\">run"),
                                        HasSubstr("<a href=\"http://x/?a&amp;b\">go")));
  EXPECT_EQ(pagerexOf("--safe --links none", conversion).exitCode, 0);
  EXPECT_THAT(conversion.page(1), AllOf(HasSubstr("<a>run"), HasSubstr("<a>go")));
}

TEST(CommandLine, RefusesLinksThatItDoesNotKnow) {
  const Conversion conversion(withLinks());
  for (const char* options : {"--safe --links some", "--safe --links SAFE", "--safe --links"})
    EXPECT_EQ(pagerexOf(options, conversion).exitCode, 1) << options;
  EXPECT_THAT(conversion.output(), IsEmpty());
}

TEST(CommandLine, SaysThatTheSourceIsMissing) {
  const Finished finished = pagerexOf("", Conversion());
  EXPECT_EQ(finished.exitCode, 3);
  EXPECT_THAT(finished.output, HasSubstr("source.doc: No such file or directory"));
}

TEST(CommandLine, SaysWhatTheSourceIsInsteadOfADocument) {
  const std::pair<std::string, const char*> files[] = {
      {"text", "This is plain text (.txt). Only Word 97-2003 documents are converted, unencrypted.\n"},
      {"{\\rtf1 Hello}", "This is a Rich Text document (.rtf). Only "},
      {"<html>", "This is a web page (.html). Only "},
      {"PK\3\4", "This is a zip archive (.zip). Only "},
      {std::string(9, '\0'), "This is not a kind of file that is known here. Only "},
      {"", "This file is empty. Only "},
  };
  const Conversion conversion;
  for (const auto& [content, message] : files) {
    conversion.folder().write("source.doc", content);
    for (const char* options : {"", "--view mulpages --progress"}) {
      const Finished finished = pagerexOf(options, conversion);
      EXPECT_EQ(finished.exitCode, 3);
      EXPECT_THAT(finished.output, HasSubstr(std::string("source.doc: ") + message));
    }
  }
}

TEST(CommandLine, SaysThatTheSourceIsEncrypted) {
  support::WordDocument document(support::WordOptions{.fibFlags = 0x0100});
  document.paragraph("Hello");
  const Finished finished = pagerexOf("", Conversion(document));
  EXPECT_EQ(finished.exitCode, 3);
  EXPECT_THAT(finished.output, HasSubstr("source.doc: This is an encrypted Word document (.doc)"));
}

TEST(CommandLine, SaysThatADocumentCouldNotBeOpened) {
  support::WordDocument document(support::WordOptions{.tableStream = 0, .tableStreamName = 1});
  document.paragraph("Hello");
  const Finished finished = pagerexOf("", Conversion(document));
  EXPECT_EQ(finished.exitCode, 3);
  EXPECT_THAT(finished.output, HasSubstr("source.doc: This is a Word 97-2003 document (.doc). "
                                         "It could not be opened, and is probably damaged.\n"));
}

TEST(CommandLine, SaysThatTheSourceIsAFolder) {
  const Conversion conversion;
  std::filesystem::create_directory(conversion.source());
  const Finished finished = pagerexOf("", conversion);
  EXPECT_EQ(finished.exitCode, 3);
  EXPECT_THAT(finished.output, HasSubstr("source.doc: is a folder"));
}

TEST(CommandLine, SaysWhatCannotBeCreated) {
  const Conversion conversion(documentOf({"Hello"}));
  for (const char* options : {"", "--view mulpages --progress"}) {
    const Finished finished = pagerexOf(std::string(options) + " " + conversion.source() + " /nowhere/x.htm");
    EXPECT_EQ(finished.exitCode, 4);
    EXPECT_THAT(finished.output, HasSubstr("cannot create /nowhere/x.htm"));
  }
}

TEST(CommandLine, SaysThatTheFolderCannotBeCreated) {
  const Conversion conversion(documentOf({"Hello"}));
  conversion.folder().write("x.files", std::string("a file"));
  const Finished finished = pagerexOf("", conversion);
  EXPECT_EQ(finished.exitCode, 4);
  EXPECT_THAT(finished.output, HasSubstr("cannot create the folder for the files of "));
}

TEST(CommandLine, SaysThatADocumentBrokeOff) {
  support::WordDocument document = documentOf({"Hello"});
  document.patchFib(support::WordDocument::pairOffset(mso_word::FCLCB_SECTIONS), uint32_t{0x7FFFFFF0});
  const Conversion conversion(document);
  const Finished finished = pagerexOf("", conversion);
  EXPECT_EQ(finished.exitCode, 2);
  EXPECT_THAT(finished.output, HasSubstr("could not be converted to its end"));
}

TEST(CommandLine, DoesNotOverwriteItsSource) {
  const Conversion conversion(documentOf({"Hello"}));
  const std::string before = conversion.folder().read("source.doc");
  EXPECT_EQ(pagerexOf(conversion.source() + " " + conversion.source()).exitCode, 1);
  EXPECT_EQ(conversion.folder().read("source.doc"), before);
}

TEST(CommandLine, DoesNotOverwriteADocument) {
  const Conversion conversion(documentOf({"Hello"}));
  const std::string other = conversion.folder().path("other.doc");
  documentOf({"Other"}).save(other);
  const std::string before = conversion.folder().read("other.doc");
  EXPECT_EQ(pagerexOf(conversion.source() + " " + other).exitCode, 1);
  EXPECT_EQ(conversion.folder().read("other.doc"), before);
}

TEST(CommandLine, RefusesATargetWhoseFolderWouldStandElsewhere) {
  const Conversion conversion(documentOf({"Hello"}));
  conversion.folder().write("a.b/kept", std::string());
  const Finished finished = pagerexOf(conversion.source() + " " + conversion.folder().path("a.b/out"));
  EXPECT_EQ(finished.exitCode, 1);
  EXPECT_THAT(conversion.output(), ElementsAre("a.b/kept"));
}

TEST(CommandLine, RefusesATargetTooLongForItsPages) {
  const Conversion conversion(documentOf({"Hello"}));
  const std::string target = conversion.folder().path(std::string(230, 'x') + ".html");
  EXPECT_EQ(pagerexOf(conversion.source() + " " + target).exitCode, 4);
  EXPECT_THAT(conversion.output(), IsEmpty());
}

TEST(SampleHost, TellsItsUse) {
  const Finished finished = run(PAGEREX_SAMPLE, "only-one");
  EXPECT_EQ(finished.exitCode, 255);
  EXPECT_EQ(finished.output, "Useage " PAGEREX_SAMPLE " <txt filename> <html filename>");
}

TEST(SampleHost, StopsBehindTheSecondPage) {
  const std::string first(200, 'x'), second(100, 'y');
  const Conversion conversion(documentOfRuns({first.c_str(), second.c_str()}));
  const Finished finished = run(PAGEREX_SAMPLE, conversion.source() + " " + conversion.target());
  EXPECT_EQ(finished.exitCode, 1);
  EXPECT_EQ(finished.output,
            "FinishPage\nContinue: 1\nFinishPage\nContinue: 0\nContinue: -1\nEndTransform\n");
}

TEST(SampleHost, ConvertsAShortDocumentToItsEnd) {
  const Conversion conversion(documentOf({"Hello"}));
  const Finished finished = run(PAGEREX_SAMPLE, conversion.source() + " " + conversion.target());
  EXPECT_EQ(finished.exitCode, 0);
  EXPECT_EQ(finished.output, "FinishPage\nContinue: 1\nEndTransform\n");
}
