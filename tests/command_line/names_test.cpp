// Where results lie: none in another's place, none outside of the folder, none over a file that is read.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "command_line/program.h"

using support::TempFolder;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

/// Converts the inputs to "out" from the folder that they lie in; the names of the main files.
std::vector<std::string> resultsOf(const std::vector<std::string>& written, const Arguments& inputs,
                                   const char* format = "normal") {
  const TempFolder folder;
  for (const std::string& name : written) folder.write("at/" + name, documentOf(name));
  Arguments arguments = {"-o", "out/", "-t", format};
  arguments.insert(arguments.end(), inputs.begin(), inputs.end());
  EXPECT_EQ(pagerex(arguments, folder.path("at")).exitCode, 0);
  std::vector<std::string> results;
  for (const std::string& name : folder.files()) {
    if (name.ends_with(".html") && !name.ends_with("navigation.html")) results.push_back(name);
  }
  return results;
}

}  // namespace

TEST(ResultNames, KeepTheFoldersBelowTheCommonOne) {
  EXPECT_THAT(resultsOf({"a/x.doc", "b/x.doc"}, {"a/x.doc", "b/x.doc"}),
              ElementsAre("at/out/a/x.html", "at/out/b/x.html"));
  EXPECT_THAT(resultsOf({"a/b/x.doc", "a/b/c/y.doc"}, {"a/b/x.doc", "a/b/c/y.doc"}),
              ElementsAre("at/out/c/y.html", "at/out/x.html"));
  EXPECT_THAT(resultsOf({"ab/x.doc", "ac/x.doc"}, {"ab", "ac"}),
              ElementsAre("at/out/ab/x.html", "at/out/ac/x.html"));
  EXPECT_THAT(resultsOf({"a/x.doc"}, {"a/x.doc"}), ElementsAre("at/out/x.html"));
}

TEST(ResultNames, StayInTheFolder) {
  EXPECT_THAT(resultsOf({"../x.doc", "y.doc"}, {"../x.doc", "y.doc"}),
              ElementsAre("at/out/at/y.html", "at/out/x.html"));
  EXPECT_THAT(resultsOf({"a/x.doc"}, {"a/../a/./x.doc"}), ElementsAre("at/out/x.html"));
  const TempFolder elsewhere;
  const std::string path = elsewhere.write("x.doc", documentOf("x"));
  EXPECT_THAT(resultsOf({"y.doc"}, {path}), ElementsAre("at/out/x.html"));
}

TEST(ResultNames, HaveNoControlCharacters) {
  EXPECT_THAT(resultsOf({"a\nb.doc", "a%0Ab.doc"}, {"."}),
              UnorderedElementsAre("at/out/a%0Ab.html", "at/out/a%0Ab.doc.html"));
}

TEST(ResultNames, AreAbsolutePathsBelowTheCommonFolder) {
  const TempFolder folder;
  folder.write("a/x.doc", documentOf("x"));
  folder.write("b/y.doc", documentOf("y"));
  EXPECT_EQ(pagerex({"-o", folder.path("out"), folder.path("a/x.doc"), folder.path("b/y.doc")}).exitCode, 0);
  EXPECT_THAT(folder.files(), AllOf(Contains("out/a/x.html"), Contains("out/b/y.html")));
}

TEST(ResultNames, NeverCollide) {
  EXPECT_THAT(resultsOf({"x.doc", "x.DOC", "x.dot"}, {"."}),
              UnorderedElementsAre("at/out/x.html", "at/out/x.DOC.html", "at/out/x.dot.html"));
  EXPECT_THAT(resultsOf({"x.dot.doc", "x.dot"}, {"."}),
              UnorderedElementsAre("at/out/x.dot.html", "at/out/x.dot~2.html"));
  EXPECT_THAT(resultsOf({"x.DOC"}, {"."}), ElementsAre("at/out/x.html"));
}

TEST(ResultNames, DoNotCollideWithFoldersOfFiles) {
  EXPECT_THAT(resultsOf({"x.doc", "x.files/y.doc"}, {"."}),
              UnorderedElementsAre("at/out/x.doc.html", "at/out/x.files/y.html"));
  EXPECT_THAT(resultsOf({"x.doc", "x.html/y.doc"}, {"."}),
              UnorderedElementsAre("at/out/x.doc.html", "at/out/x.html/y.html"));
  EXPECT_THAT(resultsOf({"x.doc", "x.files/y.doc"}, {"."}, "preview"),
              UnorderedElementsAre("at/out/x.html", "at/out/x.files/y.html"));
}

TEST(ResultNames, AFileThatIsNamedTwiceIsDoneOnce) {
  EXPECT_THAT(resultsOf({"x.doc", "a/y.doc"}, {"x.doc", "./x.doc", "a/../x.doc", ".", "x.doc"}),
              UnorderedElementsAre("at/out/x.html", "at/out/a/y.html"));
}

TEST(ResultNames, MayHoldAnyByte) {
  const std::string odd[] = {"a\nb.doc", "\xFF\xFE.doc", " .doc", "-o.doc", "*.doc", ".doc", "\x1B[31m.doc"};
  const std::vector<std::string> results = resultsOf({std::begin(odd), std::end(odd)}, {"."});
  EXPECT_THAT(results, UnorderedElementsAre("at/out/a%0Ab.html", "at/out/\xFF\xFE.html", "at/out/ .html",
                                            "at/out/-o.html", "at/out/*.html", "at/out/%1B[31m.html"));
  EXPECT_THAT(resultsOf({".doc"}, {".doc"}), ElementsAre("at/out/.doc.html"));
}

TEST(ResultNames, AreShortEnoughForTheirPages) {
  const std::string letters(240, 'x');
  EXPECT_THAT(resultsOf({letters + "1.doc", letters + "2.doc"}, {"."}),
              UnorderedElementsAre("at/out/" + letters.substr(40) + ".html",
                                   "at/out/" + letters.substr(40) + "~2.html"));
}

TEST(ResultNames, AreNotWrittenThroughLinks) {
  const TempFolder folder, elsewhere;
  folder.write("in/a/x.doc", documentOf("x"));
  folder.write("in/y.doc", documentOf("y"));
  elsewhere.write("page", std::string("<html>"));
  std::filesystem::create_directory(folder.path("out"));
  std::filesystem::create_directory_symlink(elsewhere.path(), folder.path("out/a"));
  std::filesystem::create_symlink(elsewhere.path("page"), folder.path("out/y.html"));
  const Finished finished = pagerex({"-o", "out", "--report", "report", "in"}, folder.path());
  EXPECT_EQ(finished.exitCode, 2);
  EXPECT_THAT(finished.errors, HasSubstr("is a symbolic link, which leads elsewhere."));
  EXPECT_THAT(statusesIn(folder), ElementsAre("in/a/x.doc: refused", "in/y.doc: refused"));
  EXPECT_THAT(elsewhere.files(), ElementsAre("page"));
  EXPECT_EQ(elsewhere.read("page"), "<html>");
}

TEST(ResultNames, LinksInFoldersAreNotFollowed) {
  const TempFolder folder;
  folder.write("in/x.doc", documentOf("x"));
  std::filesystem::create_directory_symlink("..", folder.path("in/up"));
  std::filesystem::create_symlink("x.doc", folder.path("in/y.doc"));
  EXPECT_EQ(pagerex({"-o", "out", "-t", "preview", "in"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.files(), Contains("out/x.html"));
  EXPECT_FALSE(folder.exists("out/y.html"));
}

TEST(ResultNames, DoNotTakeThePlaceOfInputs) {
  const TempFolder folder;
  folder.write("x.doc", documentOf("x"));
  folder.write("x.html", std::string("<html>kept</html>"));
  const Finished finished = pagerex({"-o", ".", "--report", "report", "x.doc", "x.html"}, folder.path());
  EXPECT_EQ(finished.exitCode, 2);
  EXPECT_THAT(statusesIn(folder), ElementsAre("x.doc: refused", "x.html: not_word"));
  EXPECT_EQ(folder.read("x.html"), "<html>kept</html>");
}

TEST(ResultNames, DoNotTakeThePlaceOfDocuments) {
  const TempFolder folder;
  folder.write("x.doc", documentOf("x"));
  folder.write("out/x.html", documentOf("a document by its bytes"));
  EXPECT_EQ(pagerex({"-o", "out", "--report", "report", "x.doc"}, folder.path()).exitCode, 2);
  EXPECT_THAT(statusesIn(folder), ElementsAre("x.doc: refused"));
  EXPECT_EQ(folder.read("out/x.html"), documentOf("a document by its bytes"));
}
