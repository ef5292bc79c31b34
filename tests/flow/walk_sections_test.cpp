#include <gtest/gtest.h>

#include "flow/walked_document.h"
#include "support/named_sprms.h"

using namespace flow_test;
using namespace support;

namespace {

constexpr uint16_t kPageWidth = 0xB01F, kPageHeight = 0xB020, kBreakKind = 0x3009, kColumns = 0x500B;
constexpr uint16_t kTitlePage = 0x300A, kLandscape = 0x301D;
constexpr size_t kFlags = 0;
constexpr uint8_t kFacingPages = 1;

}  // namespace

TEST(WalkSections, HaveTheirProperties) {
  WordDocument doc;
  doc.section({sprm(kPageWidth, 11906), sprm(kPageHeight, 16838)}).paragraph("a");
  doc.section({sprm(kBreakKind, 0), sprm(kColumns, 1), sprm(kLandscape, 2)}).paragraph("b");
  EXPECT_EQ(transcriptOf(doc, kWithSections), R"(
section 0 width=11906 height=16838
  paragraph
    text "a"
section 1 start=0 landscape columns=2
  paragraph
    text "b"
)");
}

TEST(WalkSections, HeadersStandBeforeTheText) {
  WordDocument doc;
  doc.paragraph("text");
  doc.header(0, HeaderSlot::kOddHeader).paragraph("head");
  doc.header(0, HeaderSlot::kOddFooter).paragraph("foot").field(33, " PAGE ", "1");
  EXPECT_EQ(transcriptOf(doc, kWithSections), R"(
section 0 oddHeader=0 oddFooter=0
  header odd
    paragraph
      text "head"
  footer odd
    paragraph
      text "foot1"
  paragraph
    text "text"
)");
}

TEST(WalkSections, LinkedHeadersAreToldOnce) {
  WordDocument doc;
  doc.paragraph("one");
  doc.section({}).paragraph("two");
  doc.section({}).paragraph("three");
  doc.header(0, HeaderSlot::kOddHeader).paragraph("first head");
  doc.header(2, HeaderSlot::kOddHeader).paragraph("third head");
  EXPECT_EQ(transcriptOf(doc, kWithSections), R"(
section 0 oddHeader=0
  header odd
    paragraph
      text "first head"
  paragraph
    text "one"
section 1 oddHeader=0
  paragraph
    text "two"
section 2 oddHeader=2
  header odd
    paragraph
      text "third head"
  paragraph
    text "three"
)");
}

TEST(WalkSections, FirstAndEvenPagesHaveHeadersOfTheirOwn) {
  WordDocument doc;
  doc.section({sprm(kTitlePage, 1)}).paragraph("text");
  doc.header(0, HeaderSlot::kEvenHeader).paragraph("even");
  doc.header(0, HeaderSlot::kOddHeader).paragraph("odd");
  doc.header(0, HeaderSlot::kFirstHeader).paragraph("first");
  doc.patchDop(kFlags, uint8_t{1 << 5 | kFacingPages});
  const std::string text = transcriptOf(doc, kWithSections);
  EXPECT_NE(text.find("titlePage evenHeader=0 oddHeader=0 firstHeader=0"), std::string::npos) << text;
  for (const char* header :
       {"header even\n    paragraph\n      text \"even\"", "header odd\n    paragraph\n      text \"odd\"",
        "header first\n    paragraph\n      text \"first\""})
    EXPECT_NE(text.find(header), std::string::npos) << text;
}

TEST(WalkSections, HeadersThatNoPageShowsAreNotTold) {
  WordDocument doc;
  doc.paragraph("text");
  doc.header(0, HeaderSlot::kEvenHeader).paragraph("even");
  doc.header(0, HeaderSlot::kFirstHeader).paragraph("first");
  EXPECT_EQ(Walked(doc).characters(), u"text\n");
}

TEST(WalkSections, AnEmptyHeaderIsOneOfItsOwn) {
  WordDocument doc;
  doc.paragraph("one");
  doc.section({}).paragraph("two");
  doc.header(0, HeaderSlot::kOddHeader).paragraph("head");
  doc.header(1, HeaderSlot::kOddHeader).paragraph();
  const std::string text = transcriptOf(doc, kWithSections);
  EXPECT_NE(text.find("section 1 oddHeader=1\n  header odd\n    paragraph\n"), std::string::npos) << text;
}

TEST(WalkSections, HeadersHaveTables) {
  WordDocument doc;
  doc.paragraph("text");
  Story& header = doc.header(0, HeaderSlot::kOddHeader);
  header.row({"a", "b"}, {defTableSprm({0, 1000, 2000})});
  header.paragraph("behind");
  EXPECT_EQ(Walked(doc).characters(), u"a\nb\nbehind\ntext\n");
}

TEST(WalkSections, SeparatorsOfNotesAreNotTold) {
  WordDocument doc;
  doc.paragraph("text");
  doc.noteSeparator(0).paragraph("separator");
  doc.header(0, HeaderSlot::kOddHeader).paragraph("head");
  EXPECT_EQ(Walked(doc).characters(), u"head\ntext\n");
}
