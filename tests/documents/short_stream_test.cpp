#include <gtest/gtest.h>

#include <algorithm>

#include "converted.h"
#include "support/named_sprms.h"

// The directory entry of "WordDocument" states fewer bytes than its chain has.

namespace {

using support::sprm;
using support::WordDocument;

constexpr uint32_t kLeastSize = 4096;  // shorter streams would be looked for among the tiny pages
constexpr int kParagraphs = 60;

support::CompoundFile withStatedSize(const WordDocument& document, uint32_t size) {
  support::CompoundFile file = document.compound().build();
  file.setEntry(u"WordDocument", support::kEntrySize, size);
  return file;
}

std::string pageOf(const support::CompoundFile& file) {
  const support::TempFolder folder;
  file.save(folder.path("in.doc"));
  if (PageRex(folder.path("in.doc").c_str(), folder.path("out.htm").c_str(), 0, nullptr) != PAGEREX_OK) {
    return "not converted";
  }
  return folder.read("out.files/1.htm");
}

size_t countOf(const std::string& text, const std::string& part) {
  size_t count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

/// The text ends before byte 4096, and the property pages of its paragraphs and runs lie behind it.
WordDocument shortTextAndManyPages() {
  WordDocument document(support::WordOptions{.maxFkpEntries = 8});
  for (int i = 0; i < kParagraphs; ++i) {
    document.paragraph("Plain, ").sprms({sprm(0x2403, 1)}).run("bold.", {sprm(0x0835, 1)});
  }
  return document;
}

/// The second paragraph is a piece of its own, stored behind the first and third.
WordDocument pieceBehindALongText() {
  WordDocument document;
  document.paragraph("Before " + std::string(3000, 'x'));
  document.paragraph().newPiece({.fileOrder = 2}).run("Piece behind", {sprm(0x0835, 1)});
  document.paragraph().newPiece({.fileOrder = 1}).run("The last one");
  return document;
}

}  // namespace

TEST(ShortStream, HasItsTextAndPropertiesWhereverThePagesAreCut) {
  const WordDocument document = shortTextAndManyPages();
  const auto streamBytes = static_cast<uint32_t>(document.streams().wordDocument.size());
  const std::string whole = pageOf(document.compound().build());
  ASSERT_EQ(countOf(whole, "font-weight:bold"), size_t{kParagraphs});
  ASSERT_LE(document.streams().textStart + kParagraphs * 13, kLeastSize);
  ASSERT_GT(streamBytes, kLeastSize + 10 * 512);
  for (uint32_t size = kLeastSize; size < streamBytes; size += 171) {
    EXPECT_EQ(pageOf(withStatedSize(document, size)), whole) << size;
    EXPECT_EQ(pageOf(withStatedSize(document, size / 512 * 512)), whole) << size / 512 * 512;
  }
}

TEST(ShortStream, HasThePiecesBehindTheSize) {
  const WordDocument document = pieceBehindALongText();
  const std::string whole = pageOf(document.compound().build());
  const std::string piece = "Piece behind";
  ASSERT_NE(whole.find(piece), std::string::npos);
  const support::Bytes stream = document.streams().wordDocument;
  const auto found = std::search(stream.begin(), stream.end(), piece.begin(), piece.end());
  const auto pieceStart = static_cast<uint32_t>(found - stream.begin());
  ASSERT_GT(pieceStart, kLeastSize + 100);
  const std::string page = pageOf(withStatedSize(document, pieceStart - 100));
  EXPECT_EQ(page.substr(page.find(piece) - 100), whole.substr(whole.find(piece) - 100));
  EXPECT_EQ(countOf(page, "font-weight:bold"), 1u);
}

TEST(ShortStream, CutsThePieceThatReachesOverTheSize) {
  const WordDocument document = pieceBehindALongText();
  const uint32_t textStart = document.streams().textStart;
  ASSERT_LT(textStart, kLeastSize);
  const std::string page = pageOf(withStatedSize(document, kLeastSize));
  EXPECT_EQ(countOf(page, "x"), countOf(pageOf(document.compound().build()), "x") - 3007 + (4096 - textStart))
      << "behind it stand zeros, so that what follows stays in its place";
  EXPECT_EQ(countOf(page, "Piece behind"), 1u);
}

TEST(ShortStream, WhoseChainEndsAtTheSizeHasNoMoreThanThat) {
  const WordDocument document = shortTextAndManyPages();
  support::CompoundFile file = withStatedSize(document, kLeastSize);
  const uint32_t last = file.startPage(u"WordDocument") + kLeastSize / 512 - 1;
  file.setFat(last, support::kEndOfChain);
  EXPECT_EQ(countOf(pageOf(file), "bold."), 0u) << "the first property page lies outside the stream";
}

// The chain decides how far reads go on, so that it may do no harm.

class ShortStreamWhoseLastPage : public testing::Test {
 protected:
  /// The page that comes out where the last page of the chain names `next` for the following one.
  std::string pageWithNext(uint32_t next) const {
    return pageOf(support::CompoundFile(file_).setFat(last_, next));
  }

  const WordDocument document_ = shortTextAndManyPages();
  const support::CompoundFile file_ = withStatedSize(document_, kLeastSize);
  const uint32_t first_ = file_.startPage(u"WordDocument");
  const uint32_t last_ = first_ + static_cast<uint32_t>(document_.streams().wordDocument.size() - 1) / 512;
  const std::string whole_ = pageOf(document_.compound().build());
};

TEST_F(ShortStreamWhoseLastPage, NamesItselfIsReadWhole) {
  EXPECT_EQ(pageWithNext(last_), whole_);
}

TEST_F(ShortStreamWhoseLastPage, LeavesTheFileIsReadWhole) {
  for (const uint32_t beyond : {last_ + 100, 0x10000u, 0x7FFFFFFFu}) EXPECT_EQ(pageWithNext(beyond), whole_);
}

TEST_F(ShortStreamWhoseLastPage, NamesAnEarlierOneIsRefused) {
  EXPECT_EQ(pageWithNext(first_), "not converted");
}
