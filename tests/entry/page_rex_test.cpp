#include "pagerex/pagerex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "entry/conversion.h"

using mso_word::FIBFCLCB;
using support::WordDocument;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr char kFrameStart[] = "<html><head><script language=\"javascript\"";
constexpr char kPageListStart[] = "<html><head><script language=\"JavaScript\" src=\"shapejs.js\">";

/// A table that lies beyond the end of its stream: reading it throws.
WordDocument withUnreachable(FIBFCLCB table) {
  WordDocument document = documentOf({"Text"});
  document.patchFib(WordDocument::pairOffset(table), uint32_t{0x7FFFFFF0});
  return document;
}

/// The host of a conversion with callbacks. They take no context, so there is one host at a time.
struct Host {
  std::vector<int> answers;   ///< of Continue; then it goes on
  std::string mainFile = {};  ///< looked at when the transform ends
  std::vector<std::string> calls = {};

  int run(const Conversion& conversion, int pageSize) {
    current = this;
    mainFile = conversion.target();
    IPageRexCallBack callbacks = {FinishPage, EndTransform, Continue};
    return pageRex(conversion.source().c_str(), conversion.target().c_str(), pageSize, &callbacks);
  }

  static void FinishPage(int page, const char* path) {
    current->calls.push_back(std::to_string(page) + " " + std::filesystem::path(path).filename().string());
  }
  static void EndTransform() {
    const bool empty = std::filesystem::file_size(current->mainFile) == 0;
    current->calls.push_back(empty ? "end" : "end, with an index");
  }
  static int Continue() {
    if (current->answers.empty()) return PAGEREX_GO_ON;
    const int answer = current->answers.front();
    current->answers.erase(current->answers.begin());
    current->calls.push_back("answered " + std::to_string(answer));
    return answer;
  }
  static inline Host* current = nullptr;
};

}  // namespace

TEST(PageRex, WithoutOptionsWritesOnePageInAFrame) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(conversion.run(), PAGEREX_OK);
  EXPECT_THAT(conversion.output(),
              ElementsAre("x.files/1.htm", "x.files/shapejs.js", "x.files/style.css", "x.htm"));
  EXPECT_THAT(conversion.main(), StartsWith(kFrameStart));
  EXPECT_THAT(conversion.page(1), HasSubstr("Hello"));
}

TEST(PageRex, PhoneWithoutAPageSizeGivesEachRunAPage) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  EXPECT_EQ(conversion.run({"view=phone"}), PAGEREX_OK);
  EXPECT_THAT(conversion.main(), HasSubstr("<p>total3page</p>"));
  EXPECT_THAT(conversion.page(2), HasSubstr("four"));
  EXPECT_THAT(conversion.page(3), HasSubstr("two"));
}

TEST(PageRex, MulpagesWithoutAPageSizeGivesEachRunAPage) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  EXPECT_EQ(conversion.run({"view=mulpages"}), PAGEREX_OK);
  EXPECT_THAT(conversion.main(), StartsWith("<file totalpages=\"3\"><page>x.files/1.htm</page>"));
}

TEST(PageRex, APageSizeBehindTheViewCounts) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  EXPECT_EQ(conversion.run({"view=phone", "pagesize=100"}), PAGEREX_OK);
  EXPECT_THAT(conversion.main(), HasSubstr("<p>total1page</p>"));
}

TEST(PageRex, APageSizeInFrontOfTheViewIsDropped) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  EXPECT_EQ(conversion.run({"pagesize=100", "view=phone"}), PAGEREX_OK);
  EXPECT_THAT(conversion.main(), HasSubstr("<p>total3page</p>"));
}

TEST(PageRex, APageSizeAfterAnInvalidViewIsDropped) {
  const Conversion conversion(documentOf({"four", "two"}));
  EXPECT_EQ(conversion.run({"view=x", "pagesize=4", "view=preview"}), PAGEREX_OK);
  EXPECT_THAT(conversion.main(), Not(HasSubstr("four")));
}

TEST(PageRex, OptionsThatCannotBeReadAreSkipped) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(conversion.run({"view=", "=phone", "view=phone=1", "view", nullptr, "other=1", "View=phone"}),
            PAGEREX_OK);
  EXPECT_THAT(conversion.main(), StartsWith(kFrameStart));
}

TEST(PageRex, TheLastViewCounts) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(conversion.run({"view=preview", "view=phone", "pagesize=10"}), PAGEREX_OK);
  EXPECT_THAT(conversion.main(), StartsWith(kPageListStart));
}

TEST(PageRex, AViewInCapitalsFailsOnceTheDocumentIsOpen) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(conversion.run({"view=PHONE"}), PAGEREX_CANNOT_WRITE);
  EXPECT_THAT(conversion.output(), IsEmpty());
  EXPECT_EQ(Conversion().run({"view=PHONE"}), PAGEREX_CANNOT_OPEN);
}

TEST(PageRex, ASourceThatIsNoCompoundFileWritesNothing) {
  const Conversion conversion;
  conversion.folder().write("source.doc", std::string(2000, 'x'));
  EXPECT_EQ(conversion.run(), PAGEREX_CANNOT_OPEN);
  EXPECT_THAT(conversion.output(), IsEmpty());
}

TEST(PageRex, AnEncryptedDocumentIsRefused) {
  WordDocument document({.fibFlags = 0x0100});
  document.paragraph("secret");
  const Conversion conversion(document);
  EXPECT_EQ(conversion.run(), PAGEREX_CANNOT_OPEN);
  EXPECT_THAT(conversion.output(), IsEmpty());
}

TEST(PageRex, NullPathsAreFailures) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(PageRex(nullptr, conversion.target().c_str(), 0, nullptr), PAGEREX_CANNOT_OPEN);
  EXPECT_EQ(PageRex(conversion.source().c_str(), nullptr, 0, nullptr), PAGEREX_CANNOT_WRITE);
  EXPECT_EQ(PageRex(nullptr, nullptr, 0, nullptr), PAGEREX_CANNOT_OPEN);
  EXPECT_THAT(conversion.output(), IsEmpty());
}

TEST(PageRex, ANullListOfOptionsIsAnEmptyOne) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(PageRex(conversion.source().c_str(), conversion.target().c_str(), 3, nullptr), PAGEREX_OK);
  EXPECT_EQ(PageRex(conversion.source().c_str(), conversion.target().c_str(), -3, nullptr), PAGEREX_OK);
}

TEST(PageRex, ATargetThatCannotBeCreatedIsTold) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(conversion.runTo(conversion.folder().path("no/x.htm")), PAGEREX_CANNOT_WRITE);
  EXPECT_EQ(conversion.runTo(""), PAGEREX_CANNOT_WRITE);
}

TEST(PageRex, AFilesFolderThatCannotBeCreatedIsTold) {
  const Conversion conversion(documentOf({"Hello"}));
  conversion.folder().write("x.files", std::string("a file"));
  EXPECT_EQ(conversion.run(), PAGEREX_CANNOT_WRITE);
  EXPECT_EQ(conversion.folder().read("x.files"), "a file");
}

TEST(PageRex, AnExceptionWhileOpeningIsAFailureToOpen) {
  const Conversion conversion(withUnreachable(mso_word::FCLCB_CLX));
  EXPECT_EQ(conversion.run(), PAGEREX_CANNOT_OPEN);
  EXPECT_EQ(pageRex(conversion.source().c_str(), conversion.target().c_str(), 9, nullptr), PAGEREX_ERROR);
  EXPECT_THAT(conversion.output(), IsEmpty());
}

TEST(PageRex, AnExceptionWhileWritingIsAFailureToConvert) {
  for (FIBFCLCB table : {mso_word::FCLCB_SECTIONS, mso_word::FCLCB_STYLE_SHEET}) {
    const Conversion conversion(withUnreachable(table));
    EXPECT_EQ(conversion.run(), PAGEREX_FAILED);
    EXPECT_EQ(conversion.main(), "");
  }
}

TEST(PageRexWithCallbacks, NeedsNone) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(pageRex(conversion.source().c_str(), conversion.target().c_str(), 100, nullptr), PAGEREX_OK);
  EXPECT_EQ(conversion.main(), "<file totalpages=\"1\"><page>x.files/1.htm</page></file>");
}

TEST(PageRexWithCallbacks, NeedsNoneOfThem) {
  const Conversion conversion(documentOf({"Hello"}));
  IPageRexCallBack callbacks = {nullptr, nullptr, nullptr};
  EXPECT_EQ(pageRex(conversion.source().c_str(), conversion.target().c_str(), 100, &callbacks), PAGEREX_OK);
}

TEST(PageRexWithCallbacks, TellsOfEachPageAndOfTheEndBeforeTheIndex) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  Host host;
  EXPECT_EQ(host.run(conversion, 4), PAGEREX_OK);
  EXPECT_THAT(host.calls, ElementsAre("1 1.htm", "2 2.htm", "end"));
  EXPECT_THAT(conversion.main(), StartsWith("<file totalpages=\"2\">"));
}

TEST(PageRexWithCallbacks, WaitsWhileTheHostIsNotReady) {
  const Conversion conversion(documentOf({"Hello"}));
  Host host{.answers = {PAGEREX_WAIT, PAGEREX_WAIT, PAGEREX_GO_ON}};
  EXPECT_EQ(host.run(conversion, 100), PAGEREX_OK);
  EXPECT_THAT(host.calls, ElementsAre("1 1.htm", "answered 0", "answered 0", "answered 1", "end"));
}

TEST(PageRexWithCallbacks, AStopBehindTheLastPageIsAFailureWithoutAnIndex) {
  const Conversion conversion(documentOfRuns({"four", "two"}));
  Host host{.answers = {PAGEREX_GO_ON, PAGEREX_STOP}};
  EXPECT_EQ(host.run(conversion, 4), PAGEREX_ERROR);
  EXPECT_THAT(host.calls, ElementsAre("1 1.htm", "answered 1", "2 2.htm", "answered -1", "end"));
  EXPECT_EQ(conversion.main(), "");
  EXPECT_THAT(conversion.page(2), HasSubstr("</html>"));
}

TEST(PageRexWithCallbacks, AStopInMidTextEndsTheSectionAndListsThePagesSoFar) {
  const Conversion conversion(documentOfRuns({"four", "also", "two"}));
  Host host{.answers = {PAGEREX_GO_ON, PAGEREX_STOP}};
  EXPECT_EQ(host.run(conversion, 4), PAGEREX_OK);
  EXPECT_THAT(host.calls, ElementsAre("1 1.htm", "answered 1", "2 2.htm", "answered -1", "end"));
  EXPECT_THAT(conversion.main(), StartsWith("<file totalpages=\"2\">"));
  EXPECT_FALSE(conversion.folder().exists("x.files/3.htm"));
}

TEST(PageRexWithCallbacks, HearsOfTheEndOfADamagedDocument) {
  const Conversion conversion(withUnreachable(mso_word::FCLCB_SECTIONS));
  Host host;
  EXPECT_EQ(host.run(conversion, 4), PAGEREX_ERROR);
  EXPECT_THAT(host.calls, ElementsAre("end"));
}

TEST(PageRexWithCallbacks, NullPathsAreFailures) {
  const Conversion conversion(documentOf({"Hello"}));
  EXPECT_EQ(pageRex(nullptr, conversion.target().c_str(), 9, nullptr), PAGEREX_ERROR);
  EXPECT_EQ(pageRex(conversion.source().c_str(), nullptr, 9, nullptr), PAGEREX_ERROR);
}
