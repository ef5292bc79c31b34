#include "story/page_safety.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/output_files.h"
#include "base/write_archive.h"
#include "support/temp_folder.h"

namespace {

using pagerex::KPageSafety;
using pagerex::LinkPolicy;

struct Heard : pagerex::KRemovedLinks {
  void Removed(std::string_view scheme) override { schemes.emplace_back(scheme); }
  std::vector<std::string> schemes;
};

/// The attribute that comes of an address.
std::string attribute(const KPageSafety& safety, const std::string& address) {
  const support::TempFolder folder;
  OutputFiles files;
  {
    const ArchivePtr archive = CreateOwnedArchive(files, folder.path("a.htm").c_str());
    safety.AddAddress(*archive, "href", address);
  }
  return folder.read("a.htm");
}

TEST(RemovedLinks, AreTold) {
  Heard heard;
  const KPageSafety safety = {.on = true, .removed = &heard};
  EXPECT_EQ(attribute(safety, "JAVASCRIPT:alert(1)"), "");
  EXPECT_EQ(attribute(safety, "http://x/"), " href=\"http://x/\"");
  EXPECT_EQ(attribute(safety, "file:///x"), "");
  EXPECT_EQ(heard.schemes, (std::vector<std::string>{"javascript", "file"}));
}

TEST(RemovedLinks, OfPagesWithoutLinksAreAll) {
  Heard heard;
  const KPageSafety safety = {.on = true, .links = LinkPolicy::kNone, .removed = &heard};
  for (const char* address : {"http://x/", "#place", "javascript:x"})
    EXPECT_EQ(attribute(safety, address), "");
  EXPECT_EQ(heard.schemes, (std::vector<std::string>{"http", "", "javascript"}));
}

TEST(RemovedLinks, AreNoneWhereLinksAreNotJudged) {
  Heard heard;
  const KPageSafety all = {.on = true, .links = LinkPolicy::kAll, .removed = &heard};
  EXPECT_EQ(attribute(all, "javascript:'"), " href=\"javascript:&#39;\"");
  const KPageSafety off = {.links = LinkPolicy::kNone, .removed = &heard};
  EXPECT_EQ(attribute(off, "javascript:'"), " href=\"javascript:'\"");
  EXPECT_TRUE(heard.schemes.empty());
}

TEST(RemovedLinks, NeedNobodyWhoHears) {
  EXPECT_EQ(attribute(KPageSafety{.on = true}, "javascript:x"), "");
}

}  // namespace
