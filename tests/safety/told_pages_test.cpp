// Pages of documents that are told in any order that the walk may tell them in.

#include <gtest/gtest.h>

#include "safety/one_page_rules.h"
#include "support/html_of.h"
#include "support/random_script.h"

namespace {

using namespace pagerex;

constexpr uint32_t kSeeds = 400;

/// A page as a file, and its pieces.
struct Told {
  std::string head;
  std::vector<std::string> pieces;

  std::string file(const std::string& blocks) const { return head + blocks + std::string(kPageEnd); }
};

Told toldBy(uint32_t seed, uint64_t pieceSize, bool hasComments = true) {
  support::KeptBlocks blocks(pieceSize);
  StyleSheet sheet(nullptr);
  const std::unique_ptr<PictureOutput> pictures = makeEmbeddedPictures(1 << 20, nullptr);
  HtmlOptions options;
  options.comments = hasComments;
  HtmlWriter writer(blocks, sheet, options, *pictures, nullptr);
  support::tellRandomDocument(writer, seed);
  return {pageHead(writer.frame(), writer.BaseRules(false) + sheet.TakeRules()), std::move(blocks.pieces)};
}

}  // namespace

TEST(ToldPage, IsSoundInWhateverOrderItIsTold) {
  for (uint32_t seed = 0; seed < kSeeds; ++seed) {
    const Told told = toldBy(seed, UINT64_MAX, seed % 8 != 0);
    ASSERT_EQ(told.pieces.size(), 1u);
    ASSERT_EQ(safety::faultOfOnePage(told.file(told.pieces[0])), "") << seed;
  }
}

TEST(ToldPage, IsItsPiecesInTheirOrder) {
  size_t pieces = 0;
  for (uint32_t seed = 0; seed < kSeeds / 4; ++seed) {
    const std::string whole = toldBy(seed, UINT64_MAX).pieces[0];
    for (const uint64_t size : {1, 10, 100}) {
      const Told told = toldBy(seed, size);
      std::string all;
      for (const std::string& piece : told.pieces) {
        all += piece;
        ASSERT_EQ(safety::faultOfOnePage(told.file(piece)), "") << seed << " " << size;
      }
      ASSERT_EQ(all, whole) << seed << " " << size;
      pieces += told.pieces.size();
    }
  }
  EXPECT_GT(pieces, kSeeds);
}
