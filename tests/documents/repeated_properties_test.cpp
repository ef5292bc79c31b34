#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "base/number_text.h"
#include "documents/converted.h"
#include "support/named_sprms.h"

// Lists of properties that come again, after more others than a conversion keeps at hand.

namespace {

using support::Sprms;
using support::WordDocument;

constexpr int kLists = 300;

std::string pointsText(int twips) {
  return std::string(std::string_view(points(twips)));
}

TEST(RepeatedProperties, OfRunsComeOutEachAsItIs) {
  WordDocument document;
  std::string expected;
  for (int round = 0; round < 3; ++round) {
    for (int i = 1; i <= kLists; ++i) {
      const int twips = round == 1 ? kLists + 1 - i : i;
      document.paragraph().run("x", support::letterSpacing(twips));
      expected +=
          "<p class=\"std0\" style=\"margin-top:0pt;\"><span style=\"letter-spacing:" + pointsText(twips) +
          ";line-height:10.5pt;\">x</span></p>\r\n";
    }
  }
  EXPECT_EQ(Converted(document).text(), expected);
}

TEST(RepeatedProperties, OfParagraphsComeOutEachAsItIs) {
  WordDocument document;
  std::string expected;
  for (int round = 0; round < 3; ++round) {
    for (int i = 1; i <= kLists; ++i) {
      const int twips = round == 1 ? kLists + 1 - i : i;
      document.paragraph("x").sprms(support::leftIndent(twips));
      expected += "<p class=\"std0\" style=\"margin-left:" + pointsText(twips) +
                  ";margin-top:0pt;\"><span style=\"line-height:10.5pt;\">x</span></p>\r\n";
    }
  }
  EXPECT_EQ(Converted(document).text(), expected);
}

/// sprmPDyaLine: exactly so many twips, or a multiple of 240.
Sprms lineSpacing(int twips, int multiple) {
  return support::sprm(
      0x6412, static_cast<int>(static_cast<uint32_t>(multiple) << 16 | static_cast<uint32_t>(twips)));
}

/// A run's line height is that of the paragraph it stands in, or the last one that told any.
TEST(RepeatedProperties, OfRunsFollowTheLineSpacingOfTheirParagraphs) {
  WordDocument document;
  document.paragraph("a").sprms(lineSpacing(480, 0));
  document.paragraph("b");
  document.paragraph("c").sprms(lineSpacing(480, 1));
  document.paragraph("d").sprms(lineSpacing(480, 0));
  document.paragraph("e").sprms(lineSpacing(480, 1));
  document.paragraph("f");
  const std::string text = Converted(document).text();
  EXPECT_THAT(text, testing::HasSubstr("line-height:24.0pt;\">a<"));
  EXPECT_THAT(text, testing::HasSubstr("line-height:24.0pt;\">b<"));
  EXPECT_THAT(text, testing::HasSubstr("line-height:200%;\">c<"));
  EXPECT_THAT(text, testing::HasSubstr("line-height:24.0pt;\">d<"));
  EXPECT_THAT(text, testing::HasSubstr("line-height:200%;\">e<"));
  EXPECT_THAT(text, testing::HasSubstr("line-height:200%;\">f<"));
}

/// The size of a raised run depends on its paragraph's style.
TEST(RepeatedProperties, OfRunsFollowTheFontSizeOfTheirParagraphs) {
  WordDocument document;
  document.style(1, support::Style().name("heading 1").basedOn(0).chpx(support::fontSize(40)));
  document.style(2, support::Style().name("heading 2").basedOn(0).chpx(support::fontSize(20)));
  const Sprms raised = support::sprm(0x2A48, 1);
  for (const uint16_t istd : {1, 2, 1}) document.paragraph().istd(istd).run("x", raised);
  const std::string text = Converted(document).text();
  std::string sizes;
  for (size_t at = 0; (at = text.find("font-size:", at)) != std::string::npos; ++at) {
    sizes += text.substr(at + 10, text.find(';', at) - at - 10) + " ";
  }
  EXPECT_EQ(sizes, "16.600000pt 8.300000pt 16.600000pt ");
}

/// Pages that could not be made take nothing, and the next page has everything.
TEST(RepeatedProperties, ComeOutOnThePageBehindOneThatCouldNotBeMade) {
  WordDocument document;
  for (int i = 0; i < 3; ++i) document.paragraph("0123456789").sprms(support::leftIndent(20));
  support::TempFolder folder;
  document.save(folder.path("in.doc"));
  static std::string blocked;
  blocked = folder.path("out.files/2.htm");
  IPageRexCallBack callback = {[](int page, const char*) {
                                 if (page == 1) std::filesystem::create_directory(blocked);
                               },
                               nullptr, nullptr};
  pageRex(folder.path("in.doc").c_str(), folder.path("out.htm").c_str(), 10, &callback);
  const std::string expected =
      "<p class=\"std0\" style=\"margin-left:1.000000pt;margin-top:0pt;\">"
      "<span style=\"line-height:10.5pt;\">01234567";
  EXPECT_THAT(folder.read("out.files/1.htm"), testing::HasSubstr(expected));
  EXPECT_THAT(folder.read("out.files/3.htm"), testing::HasSubstr(expected));
}

}  // namespace
