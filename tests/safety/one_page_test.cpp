#include "safety/one_page.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "safety/one_page_rules.h"
#include "safety/script_documents.h"
#include "support/corpus.h"

// The page of no document does what it wants, and no browser has to mend it.

namespace {

using support::Bytes;

struct Named {
  const char* name;
  pagerex_options options;
};

std::vector<Named> ways() {
  std::vector<Named> all;
  const auto add = [&all](const char* name, const auto& set) {
    all.push_back({name, {}});
    set(all.back().options);
  };
  add("usual", [](pagerex_options&) {});
  add("changes", [](pagerex_options& o) { o.revisions = PAGEREX_REVISIONS_ALL; });
  add("embedded", [](pagerex_options& o) { o.pictures = PAGEREX_PICTURES_EMBEDDED; });
  add("bare", [](pagerex_options& o) {
    o.pictures = PAGEREX_PICTURES_NONE;
    o.links = PAGEREX_LINKS_NONE;
    o.no_comments = 1;
  });
  add("pieces", [](pagerex_options& o) { o.page_size = 30; });
  add("all", [](pagerex_options& o) { o.headers = o.hidden_text = o.page_breaks = o.front_matter = 1; });
  return all;
}

void expectSound(const std::string& name, const Bytes& document) {
  for (const Named& way : ways()) {
    const safety::OnePage page = safety::onePageOf(document, way.options);
    ASSERT_EQ(page.result, PAGEREX_RESULT_OK) << name;
    EXPECT_EQ(safety::faultOfOnePage(page.text), "") << name << ", " << way.name;
  }
}

TEST(OnePage, OfDocumentsWithScriptIsSound) {
  for (const auto& each : safety::scriptDocuments()) expectSound(each.name, each.document.build());
}

TEST(OnePage, OfRichDocumentsIsSound) {
  for (const auto& each : mutation::richDocuments()) expectSound(each.name, each.document.build());
}

TEST(OnePage, OfRealDocumentsIsSound) {
  const auto documents = support::corpusDocuments();
  if (documents.empty()) GTEST_SKIP() << "no corpus";
  size_t written = 0;
  for (const auto& path : documents) {
    std::ifstream file(path, std::ios::binary);
    const safety::OnePage page =
        safety::onePageOf({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    if (page.result != PAGEREX_RESULT_OK) continue;
    EXPECT_EQ(safety::faultOfOnePage(page.text), "") << path;
    ++written;
  }
  EXPECT_GT(written, documents.size() / 2);
}

TEST(OnePage, HasLinksToAnywhereIfWanted) {
  pagerex_options options = {};
  options.links = PAGEREX_LINKS_ALL;
  for (const auto& each : safety::scriptDocuments()) {
    const safety::OnePage page = safety::onePageOf(each.document.build(), options);
    EXPECT_EQ(safety::faultOfOnePage(page.text, true), "") << each.name;
  }
}

}  // namespace
