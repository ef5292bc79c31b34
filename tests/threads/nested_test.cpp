// A conversion that a host begins while it is told of a page of another, on the same thread.

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "pagerex/pagerex.h"
#include "support/snapshot.h"
#include "support/word_document_writer.h"
#include "threads/converting.h"

using namespace threads_test;
namespace fs = std::filesystem;

namespace {

const Way kPages = {.name = "pages", .pageSize = 200};

/// A folder with documents and places to convert them to.
class Nested : public testing::Test {
 protected:
  void SetUp() override {
    support::WordDocument document;
    for (const char c : {'a', 'b', 'c'}) document.paragraph(std::string(199, c));
    document.save(folder_.path("pages.doc"));
  }

  std::string pages() const { return folder_.path("pages.doc"); }
  std::string target(const std::string& place) const {
    fs::create_directory(folder_.path(place));
    return folder_.path(place + "/out.htm");
  }
  support::Snapshot written(const std::string& place) const {
    return support::snapshotOf(folder_.path(place));
  }

  support::TempFolder folder_;
};

TEST_F(Nested, BothWriteWhatEachWritesAlone) {
  const Sources sources;
  convertEachOnce(sources);
  for (const std::string& source : sources.paths()) {
    const Outcome outer = convert(kPages, source, target("outer"));
    for (const Way& way : kWays) {
      SCOPED_TRACE(source + " " + way.name);
      const Outcome inner = convert(way, source, target("inner"));
      const Outcome around = convert(kPages, source, target("around"), [&](int page) {
        if (page > 2) return;
        EXPECT_EQ(convert(way, source, target("within")), inner);
      });
      EXPECT_EQ(around, outer);
      EXPECT_EQ(support::differences(written("around"), written("outer")), "");
      if (!outer.pages.empty()) {
        EXPECT_EQ(support::differences(written("within"), written("inner")), "");
      }
    }
  }
}

TEST_F(Nested, AnErrorWithinIsNoneOfTheOneAround) {
  const Outcome around = convert(kPages, pages(), target("around"), [&](int) {
    const Outcome within = convert(kPages, pages(), folder_.path("missing/out.htm"));
    EXPECT_EQ(within.result, PAGEREX_ERROR);
    EXPECT_EQ(within.outputError, ENOENT);
  });
  EXPECT_EQ(around.result, PAGEREX_OK);
  EXPECT_EQ(around.outputError, 0);
  EXPECT_EQ(around.pages.size(), 3u);
}

TEST_F(Nested, AnErrorAroundIsNoneOfTheOneWithin) {
  const Outcome around = convert(kPages, pages(), target("around"), [&](int page) {
    if (page == 1) fs::create_directory(folder_.path("around/out.files/2.htm"));
    if (page == 3) {
      EXPECT_EQ(convert(kPages, pages(), target("within")).outputError, 0);
    }
  });
  EXPECT_EQ(around.result, PAGEREX_OK);
  EXPECT_EQ(around.outputError, EISDIR);
  EXPECT_EQ(written("within").count("out.files/2.htm"), 1u);
}

}  // namespace
