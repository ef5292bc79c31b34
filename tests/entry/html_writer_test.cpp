#include "entry/html_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "entry/conversion.h"

using pagerex::KHtmlWriter;
using pagerex::VIEW;
using support::WordDocument;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

namespace fs = std::filesystem;

/// The current folder of the process, for as long as the object lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::string& path) : before_(fs::current_path()) { fs::current_path(path); }
  ~CurrentFolder() { fs::current_path(before_); }

 private:
  fs::path before_;
};

struct Output {
  OutputFiles files;
  ObjectWriter::ShapeScripts scripts;
};

/// A writer with an output of its own.
struct Writer : private Output, public KHtmlWriter {
  Writer() : KHtmlWriter(files, scripts) {}
};

WordDocument documentWithHeading() {
  WordDocument document;
  document.style(1, support::Style().name("heading 1").basedOn(0));
  document.paragraph().istd(1).run("Chapter");
  document.paragraph("Text");
  return document;
}

}  // namespace

TEST(HtmlWriterInit, RefusesNullsAndInvalidViews) {
  const support::TempFolder folder;
  const std::string path = folder.path("x.htm");
  const KDRDocument document;
  Writer writer;
  EXPECT_EQ(writer.Init(nullptr, path.c_str(), pagerex::VIEW_NORMAL, -1, nullptr), Status::kInvalidArgument);
  EXPECT_EQ(writer.Init(&document, nullptr, pagerex::VIEW_NORMAL, -1, nullptr), Status::kInvalidArgument);
  EXPECT_EQ(writer.Init(&document, path.c_str(), pagerex::VIEW_INVALID, -1, nullptr),
            Status::kInvalidArgument);
  EXPECT_EQ(writer.Init(&document, path.c_str(), static_cast<VIEW>(4), -1, nullptr),
            Status::kInvalidArgument);
  EXPECT_FALSE(folder.exists("x.htm"));
}

TEST(HtmlWriterInit, TruncatesTheMainFileAtOnce) {
  const support::TempFolder folder;
  folder.write("x.htm", std::string("old"));
  const KDRDocument document;
  Writer writer;
  EXPECT_EQ(writer.Init(&document, folder.path("x.htm").c_str(), pagerex::VIEW_PHONE, 7, nullptr),
            Status::kOk);
  EXPECT_EQ(folder.read("x.htm"), "");
  EXPECT_EQ(writer.env().conversion->filesDir, folder.path("x.files"));
  EXPECT_EQ(writer.env().pageSize, 7);
}

TEST(HtmlWriterInit, MayBeRepeatedWithAnotherFile) {
  const support::TempFolder folder;
  const KDRDocument document;
  Writer writer;
  EXPECT_EQ(writer.Init(&document, folder.path("a.htm").c_str(), pagerex::VIEW_PREVIEW, 1, nullptr),
            Status::kOk);
  EXPECT_EQ(writer.Init(&document, folder.path("b.htm").c_str(), pagerex::VIEW_PREVIEW, 1, nullptr),
            Status::kOk);
  EXPECT_THAT(folder.files(), ElementsAre("a.htm", "b.htm"));
}

TEST(HtmlWriterWrite, IsRefusedBeforeInit) {
  EXPECT_EQ(Writer().Write(), Status::kInvalidArgument);
}

TEST(Output, ThePreviewIsTheMainFileAlone) {
  const Conversion conversion(documentOf({"Hello world"}));
  EXPECT_EQ(conversion.run({"view=preview", "pagesize=5"}), PAGEREX_OK);
  EXPECT_THAT(conversion.output(), ElementsAre("x.htm"));
  EXPECT_THAT(conversion.main(), HasSubstr("Hello"));
  EXPECT_THAT(conversion.main(), Not(HasSubstr("world")));
}

TEST(Output, APhoneHasPagesAndAListOfThem) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  EXPECT_EQ(conversion.run({"view=phone", "pagesize=4"}), PAGEREX_OK);
  EXPECT_THAT(conversion.output(), ElementsAre("x.files/1.htm", "x.files/2.htm", "x.files/shapejs.js",
                                               "x.files/style.css", "x.htm"));
  EXPECT_THAT(conversion.main(), HasSubstr("<a href=\"x.files/2.htm\">2</a>\t</p>"));
}

TEST(Output, ASecondConversionRemovesAllThatStoodInTheFolder) {
  const Conversion conversion(documentOf({"Hello"}));
  for (const char* name : {"x.files/7.htm", "x.files/sub/deep/old", "x.files/.hidden"})
    conversion.folder().write(name, std::string("old"));
  EXPECT_EQ(conversion.run(), PAGEREX_OK);
  EXPECT_THAT(conversion.output(),
              ElementsAre("x.files/1.htm", "x.files/shapejs.js", "x.files/style.css", "x.htm"));
  EXPECT_FALSE(conversion.folder().exists("x.files/sub"));
}

TEST(Output, ALinkInThePlaceOfTheFolderBecomesAFolder) {
  const Conversion conversion(documentOf({"Hello"}));
  conversion.folder().write("outside/kept", std::string());
  fs::create_directory_symlink(conversion.folder().path("outside"), conversion.folder().path("x.files"));
  EXPECT_EQ(conversion.run(), PAGEREX_OK);
  EXPECT_FALSE(fs::is_symlink(conversion.folder().path("x.files")));
  EXPECT_THAT(conversion.output(), Contains("outside/kept"));
  EXPECT_THAT(conversion.output(), Not(Contains("outside/1.htm")));
}

TEST(Output, APathThatIsAllExtensionHasAFolderWithoutAName) {
  const Conversion conversion(documentOf({"Hello"}));
  const CurrentFolder current(conversion.folder().path());
  EXPECT_EQ(conversion.runTo(".x"), PAGEREX_OK);
  EXPECT_THAT(conversion.output(),
              ElementsAre(".files/1.htm", ".files/shapejs.js", ".files/style.css", ".x"));
  EXPECT_THAT(conversion.folder().read(".x"), HasSubstr("src=\".files/1.htm\""));
}

TEST(Output, APathWithoutADotGetsTheSuffixBehindIt) {
  const Conversion conversion(documentOf({"Hello"}));
  const CurrentFolder current(conversion.folder().path());
  EXPECT_EQ(conversion.runTo("x"), PAGEREX_OK);
  EXPECT_THAT(conversion.output(),
              ElementsAre("x", "x.files/1.htm", "x.files/shapejs.js", "x.files/style.css"));
}

TEST(Output, ANormalViewIsOnePageHoweverLong) {
  WordDocument document;
  for (int i = 0; i < 300; ++i) document.paragraph("A paragraph of some length, and another sentence.");
  document.section({});
  document.paragraph("The last section");
  const Conversion conversion(document);
  EXPECT_EQ(conversion.run({"view=mulpages", "pagesize=10", "view=normal"}), PAGEREX_OK);
  EXPECT_THAT(conversion.output(),
              ElementsAre("x.files/1.htm", "x.files/shapejs.js", "x.files/style.css", "x.htm"));
  EXPECT_THAT(conversion.main(), HasSubstr("src=\"x.files/1.htm\""));
  EXPECT_THAT(conversion.page(1), HasSubstr("The last section"));
}

TEST(Output, WithoutHeadingsAndBookmarksThereIsNoNavigation) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(conversion.run(), PAGEREX_OK);
  EXPECT_FALSE(conversion.folder().exists("x.files/navigation.html"));
  EXPECT_THAT(conversion.main(), Not(HasSubstr("id=\"navigation\"")));
}

TEST(Output, AHeadingBringsANavigationPage) {
  const Conversion conversion(documentWithHeading());
  EXPECT_EQ(conversion.run(), PAGEREX_OK);
  EXPECT_THAT(conversion.folder().read("x.files/navigation.html"), HasSubstr("target=\"main\""));
  EXPECT_THAT(conversion.main(), HasSubstr("src=\"x.files/navigation.html\""));
}

TEST(Output, OnlyTheNormalViewHasNavigation) {
  const Conversion conversion(documentWithHeading());
  for (const char* view : {"view=phone", "view=mulpages"}) {
    EXPECT_EQ(conversion.run({view, "pagesize=100"}), PAGEREX_OK);
    EXPECT_FALSE(conversion.folder().exists("x.files/navigation.html"));
  }
}

TEST(Output, PathsTooLongForTheirBufferNameNoOtherFile) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  const CurrentFolder current(conversion.folder().path());
  const std::string dir(120, 'd');
  fs::create_directories(dir + "/" + dir);
  // "NAME.files/style.css" would be cut within the name of the folder, at "NA".
  const std::string target = dir + "/" + dir + "/" + std::string(40, 'n') + ".htm";
  EXPECT_EQ(conversion.runTo(target, {"view=phone", "pagesize=4"}), PAGEREX_OK);
  EXPECT_THAT(conversion.output(), ElementsAre(target));
}
