#include "story/page_safety.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/output_files.h"
#include "base/write_archive.h"
#include "support/temp_folder.h"

namespace {

using pagerex::KPageSafety;
using pagerex::LinkPolicy;
using pagerex::Warnings;

/// The schemes that were told, each as often as it was.
std::vector<std::string> removed(const Warnings& warnings) {
  std::vector<std::string> schemes;
  for (const pagerex::Warning& warning : warnings.all()) {
    EXPECT_EQ(warning.code, pagerex::WarningCode::kLinkRemoved);
    schemes.insert(schemes.end(), warning.count, warning.where);
  }
  return schemes;
}

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
  Warnings warnings;
  const KPageSafety safety = {.on = true, .warnings = &warnings};
  EXPECT_EQ(attribute(safety, "JAVASCRIPT:alert(1)"), "");
  EXPECT_EQ(attribute(safety, "http://x/"), " href=\"http://x/\"");
  EXPECT_EQ(attribute(safety, "file:///x"), "");
  EXPECT_EQ(attribute(safety, "javascript:x"), "");
  EXPECT_EQ(removed(warnings), (std::vector<std::string>{"javascript", "javascript", "file"}));
}

TEST(RemovedLinks, OfPagesWithoutLinksAreAll) {
  Warnings warnings;
  const KPageSafety safety = {.on = true, .links = LinkPolicy::kNone, .warnings = &warnings};
  for (const char* address : {"http://x/", "#place", "javascript:x"})
    EXPECT_EQ(attribute(safety, address), "");
  EXPECT_EQ(removed(warnings), (std::vector<std::string>{"http", "", "javascript"}));
}

TEST(RemovedLinks, AreNoneWhereLinksAreNotJudged) {
  Warnings warnings;
  const KPageSafety all = {.on = true, .links = LinkPolicy::kAll, .warnings = &warnings};
  EXPECT_EQ(attribute(all, "javascript:'"), " href=\"javascript:&#39;\"");
  const KPageSafety off = {.links = LinkPolicy::kNone, .warnings = &warnings};
  EXPECT_EQ(attribute(off, "javascript:'"), " href=\"javascript:'\"");
  EXPECT_TRUE(warnings.all().empty());
}

TEST(RemovedLinks, NeedNobodyToTell) {
  EXPECT_EQ(attribute(KPageSafety{.on = true}, "javascript:x"), "");
}

}  // namespace
