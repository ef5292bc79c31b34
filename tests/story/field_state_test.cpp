#include "story/field_state.h"

#include <gtest/gtest.h>

namespace pagerex {
namespace {

struct Link {
  std::wstring url;
  std::wstring title;
};

Link parse(const wchar_t* code) {
  Link link;
  ParseHyperlinkFieldCode(code, link.url, link.title);
  return link;
}

void collect(KFieldState& fields, const char16_t* code) {
  const std::u16string text(code);
  fields.collect(reinterpret_cast<const uint16_t*>(text.c_str()), static_cast<uint32_t>(text.size()));
}

constexpr uint32_t kPage = 33;

TEST(HyperlinkCode, TheQuotedTargetIsTheUrl) {
  EXPECT_EQ(parse(L" HYPERLINK \"http://example.org/a b\" ").url, L"http://example.org/a b");
}

TEST(HyperlinkCode, ALocationWithoutTargetIsAFragment) {
  EXPECT_EQ(parse(L"HYPERLINK \\l \"top\"").url, L"#top");
}

TEST(HyperlinkCode, AQuotedLocationReplacesTheTarget) {
  EXPECT_EQ(parse(L"HYPERLINK \"http://example.org\" \\l \"top\"").url, L"#top");
}

TEST(HyperlinkCode, AnUnquotedLocationGoesBehindAHash) {
  EXPECT_EQ(parse(L"HYPERLINK \\l top").url, L"#top");
  EXPECT_EQ(parse(L"HYPERLINK \"x\" \\l top").url, L"xtop");
}

TEST(HyperlinkCode, ATipIsTheTitle) {
  const Link link = parse(L"HYPERLINK \"u\" \\o \"a tip\" \\t \"_blank\"");
  EXPECT_EQ(link.url, L"u");
  EXPECT_EQ(link.title, L"a tip");
}

TEST(HyperlinkCode, AQuotedBackslashPairKeepsOne) {
  EXPECT_EQ(parse(L"HYPERLINK \"c:\\\\dir\\\\file\"").url, L"c:\\dir\\file");
}

TEST(HyperlinkCode, AQuotedSingleBackslashStaysWithItsCharacter) {
  EXPECT_EQ(parse(L"HYPERLINK \"c:\\dir\"").url, L"c:\\dir");
}

TEST(HyperlinkCode, ABackslashPairOutsideQuotesIsDropped) {
  EXPECT_EQ(parse(L"HYPERLINK \\\\ \"u\"").url, L"u");
}

TEST(HyperlinkCode, ASwitchThatEndsAtAQuoteLeavesTheQuote) {
  EXPECT_EQ(parse(L"HYPERLINK \\l\"top\"").url, L"#top");
}

TEST(HyperlinkCode, CodesThatEndEarlyAreReadToTheirEnd) {
  EXPECT_EQ(parse(L"HYPERLINK \"never closed").url, L"");
  EXPECT_EQ(parse(L"HYPERLINK \"u\" \\").url, L"u");
  EXPECT_EQ(parse(L"HYPERLINK \"a\\").url, L"");
  EXPECT_EQ(parse(L"").url, L"");
}

TEST(FieldState, CodeIsHiddenAndTheResultShows) {
  KFieldState fields;
  fields.begin(true, kPage);
  EXPECT_TRUE(fields.hidesText());
  fields.separator();
  EXPECT_FALSE(fields.hidesText());
  fields.end();
  EXPECT_FALSE(fields.hidesText());
}

TEST(FieldState, AFieldWithoutSeparatorShowsNothing) {
  KFieldState fields;
  fields.begin(true, kPage);
  collect(fields, u"PAGE");
  EXPECT_TRUE(fields.hidesText());
  fields.end();
  EXPECT_EQ(fields.takeCode(), L"");
}

TEST(FieldState, AMarkWithoutEntryHidesNothing) {
  KFieldState fields;
  fields.begin(false, 0);
  EXPECT_FALSE(fields.hidesText());
  collect(fields, u"text");
  EXPECT_EQ(fields.takeCode(), L"text");
}

TEST(FieldState, AFieldNestedInACodeLetsTheRestOfTheCodeThrough) {
  KFieldState fields;
  fields.begin(true, kPage);
  fields.begin(true, kPage);
  fields.separator();
  fields.end();
  EXPECT_FALSE(fields.hidesText());
}

TEST(FieldState, TheResultOfAFormulaInAFormulaIsHidden) {
  KFieldState fields;
  fields.begin(true, 34);
  collect(fields, u"= 1 +");
  fields.begin(true, 34);
  collect(fields, u"= 2");
  fields.separator();
  EXPECT_TRUE(fields.hidesText());
  fields.end();
  EXPECT_FALSE(fields.hidesText());
}

TEST(FieldState, TheInnermostTypeDecidesOnTheLink) {
  KFieldState fields;
  fields.begin(true, kHyperlinkField);
  EXPECT_TRUE(fields.inHyperlink());
  fields.begin(true, kPage);
  EXPECT_FALSE(fields.inHyperlink());
  fields.end();
  EXPECT_TRUE(fields.inHyperlink());
}

TEST(FieldState, ANestedFieldGivesTheOuterCodeBack) {
  KFieldState fields;
  fields.begin(true, kHyperlinkField);
  collect(fields, u"HYPERLINK \"u\"");
  fields.begin(true, kPage);
  collect(fields, u"PAGE");
  fields.end();
  EXPECT_EQ(fields.takeCode(), L"HYPERLINK \"u\"");
}

TEST(FieldState, MarksThatDoNotPairDoNoHarm) {
  KFieldState fields;
  fields.end();
  fields.end();
  fields.separator();
  EXPECT_FALSE(fields.hidesText());
  fields.begin(true, kPage);
  fields.begin(true, kPage);
  fields.begin(false, 0);
  fields.end();
  fields.end();
  fields.end();
  EXPECT_FALSE(fields.hidesText());
}

}  // namespace
}  // namespace pagerex
