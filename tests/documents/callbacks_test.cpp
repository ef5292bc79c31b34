#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "documents/converted.h"

namespace {

using support::WordDocument;

/// The host: what it was told, and what it answers.
struct Host {
  std::vector<std::string> calls;
  std::vector<int> answers;  // the last one stays
  std::vector<std::string> paths;
  std::vector<bool> earlierPageWasWhole;
};
Host* host = nullptr;

bool isWhole(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return text.ends_with("</body>\r\n</html>");
}

void onFinishPage(int page, const char* path) {
  host->calls.push_back("page " + std::to_string(page));
  if (!host->paths.empty()) host->earlierPageWasWhole.push_back(isWhole(host->paths.back()));
  host->paths.emplace_back(path);
}
void onEnd() {
  host->calls.emplace_back("end");
}
int onContinue() {
  host->calls.emplace_back("continue");
  const int answer = host->answers.front();
  if (host->answers.size() > 1) host->answers.erase(host->answers.begin());
  return answer;
}

IPageRexCallBack kCallbacks = {onFinishPage, onEnd, onContinue};

WordDocument threePages() {
  WordDocument doc;
  for (char c : {'a', 'b', 'c'}) doc.paragraph(std::string(199, c));
  return doc;
}

class Callbacks : public testing::Test {
 protected:
  void SetUp() override { host = &host_; }
  Host host_;
};

using Calls = std::vector<std::string>;

TEST_F(Callbacks, EachPageIsToldAndAskedFor) {
  host_.answers = {PAGEREX_GO_ON};
  const Converted converted(threePages(), 200, &kCallbacks);
  EXPECT_EQ(converted.result, PAGEREX_OK);
  EXPECT_EQ(host_.calls, (Calls{"page 1", "continue", "page 2", "continue", "page 3", "continue", "end"}));
  EXPECT_EQ(host_.paths[0], converted.folder.path("out.files/1.htm"));
  EXPECT_EQ(host_.earlierPageWasWhole, (std::vector<bool>{true, true}));
  EXPECT_NE(converted.main().find("totalpages=\"3\""), std::string::npos);
}

TEST_F(Callbacks, WaitAsksAgain) {
  host_.answers = {PAGEREX_WAIT, PAGEREX_WAIT, PAGEREX_GO_ON};
  WordDocument doc;
  doc.paragraph("x");
  const Converted converted(doc, 200, &kCallbacks);
  EXPECT_EQ(host_.calls, (Calls{"page 1", "continue", "continue", "continue", "end"}));
}

TEST_F(Callbacks, AStopOnTheFirstPageEndsTheSectionAndTheConversionSucceeds) {
  host_.answers = {PAGEREX_STOP};
  const Converted converted(threePages(), 200, &kCallbacks);
  EXPECT_EQ(converted.result, PAGEREX_OK);
  EXPECT_EQ(host_.calls, (Calls{"page 1", "continue", "end"}));
  EXPECT_TRUE(isWhole(host_.paths[0]));
  EXPECT_EQ(converted.pageCount(), 1);
  EXPECT_NE(converted.main().find("totalpages=\"1\""), std::string::npos);
}

TEST_F(Callbacks, AStopBehindTheLastPageIsAFailureWithoutIndex) {
  host_.answers = {PAGEREX_GO_ON, PAGEREX_GO_ON, 7};
  const Converted converted(threePages(), 200, &kCallbacks);
  EXPECT_EQ(converted.result, PAGEREX_ERROR);
  EXPECT_EQ(host_.calls.back(), "end");
  EXPECT_EQ(converted.pageCount(), 3);
  EXPECT_TRUE(isWhole(host_.paths[2]));
  EXPECT_EQ(converted.main(), "");
}

TEST_F(Callbacks, AStopInTheFirstOfTwoSectionsGoesOnWithTheNext) {
  host_.answers = {PAGEREX_STOP};
  WordDocument doc;
  doc.paragraph(std::string(199, 'a'));
  doc.paragraph(std::string(199, 'b'));
  doc.section({});
  doc.paragraph("lost");
  const Converted converted(doc, 200, &kCallbacks);
  EXPECT_EQ(converted.result, PAGEREX_OK);
  EXPECT_EQ(converted.pageCount(), 1);
  EXPECT_TRUE(isWhole(host_.paths[0]));
  EXPECT_EQ(converted.page(1).find("lost"), std::string::npos);
}

TEST_F(Callbacks, NullFunctionsAreNotCalled) {
  IPageRexCallBack none = {nullptr, nullptr, nullptr};
  EXPECT_EQ(Converted(threePages(), 200, &none).pageCount(), 3);
  EXPECT_EQ(Converted(threePages(), 200, nullptr).pageCount(), 3);
}

TEST_F(Callbacks, AnExceptionOfTheHostEndsTheConversionAndIsToldApartFromDamage) {
  IPageRexCallBack callbacks = kCallbacks;
  host_.answers = {PAGEREX_GO_ON};
  callbacks.FinishPage = [](int page, const char* path) {
    onFinishPage(page, path);
    if (page == 2) throw 1;
  };
  const Converted converted(threePages(), 200, &callbacks);
  EXPECT_EQ(converted.result, PAGEREX_ERROR);
  EXPECT_EQ(PageRexOutputError(), ECANCELED);
  EXPECT_EQ(host_.calls, (Calls{"page 1", "continue", "page 2", "end"}));
  EXPECT_EQ(converted.main(), "");
}

TEST_F(Callbacks, AnExceptionOfContinueIsToldLikeOneOfFinishPage) {
  IPageRexCallBack callbacks = {nullptr, nullptr, []() -> int { throw 1; }};
  EXPECT_EQ(Converted(threePages(), 200, &callbacks).result, PAGEREX_ERROR);
  EXPECT_EQ(PageRexOutputError(), ECANCELED);
}

TEST_F(Callbacks, AnExceptionAtTheEndLeavesNoIndex) {
  IPageRexCallBack callbacks = {nullptr, [] { throw 1; }, nullptr};
  const Converted converted(threePages(), 200, &callbacks);
  EXPECT_EQ(converted.result, PAGEREX_ERROR);
  EXPECT_EQ(PageRexOutputError(), ECANCELED);
  EXPECT_EQ(converted.pageCount(), 3);
  EXPECT_EQ(converted.main(), "");
}

}  // namespace
