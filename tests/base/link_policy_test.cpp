#include "base/link_policy.h"

#include <gtest/gtest.h>

namespace {

using pagerex::keepsAddress;
using pagerex::LinkPolicy;
using pagerex::schemeOf;

bool isSafe(std::string_view address) {
  return keepsAddress(LinkPolicy::kSafe, address);
}

TEST(LinkPolicy, SafeOnesHaveAKnownSchemeOrNone) {
  for (const char* address :
       {"http:", "HTTPS://x", "mailto:a@b", "ftp://x", "ftps://x", "sftp://x", "tel:1", "sms:1", "news:a", "",
        "#", "#javascript:x", "?javascript:x", "a/javascript:x", "..\\a:b"})
    EXPECT_TRUE(isSafe(address)) << address;
  for (const char* address :
       {"javascript:x", "httpx:x", "xhttp:x", "http+x:x", ":", "C:\\a", "\\\\host\\share"})
    EXPECT_FALSE(isSafe(address)) << address;
}

TEST(LinkPolicy, ReadsAnAmpersandWithoutItsSemicolon) {
  for (const char* address : {"javascript&amp#58;x", "javascript&AMP#58;x", "javascript&AMP;#58;x",
                              "javascript&ampcolon;x", "javascript&amp;amp;#58;x"})
    EXPECT_FALSE(isSafe(address)) << address;
  EXPECT_TRUE(isSafe("a?b=1&amp=2:3"));
  EXPECT_TRUE(isSafe("a&b"));
}

TEST(LinkPolicy, WhatOnlyLooksLikeAReferenceStands) {
  for (const char* address : {"a&#", "a&#x", "a&#;b", "a%", "a%4", "a%4g", "&", "%"})
    EXPECT_TRUE(isSafe(address)) << address;
}

TEST(LinkPolicy, NumbersOfNoCharacterCountAsBlanks) {
  for (const char* address : {"&#99999999999999999999;javascript:x", "&#0;javascript:x", "&#x80;javascript:x",
                              "java&#127;script:x"})
    EXPECT_FALSE(isSafe(address)) << address;
  EXPECT_TRUE(isSafe("&#99999999999999999999;http://x"));
}

TEST(LinkPolicy, AllAndNoneDoNotLook) {
  EXPECT_TRUE(keepsAddress(LinkPolicy::kAll, "javascript:x"));
  EXPECT_FALSE(keepsAddress(LinkPolicy::kNone, "http://x"));
}

TEST(SchemeOfAddress, IsTheOneThatIsNotSafe) {
  EXPECT_EQ(schemeOf("JavaScript:x"), "javascript");
  EXPECT_EQ(schemeOf("java\tscript&colon;x"), "javascript");
  EXPECT_EQ(schemeOf("javascript%253Ax"), "javascript");
  EXPECT_EQ(schemeOf("ms-word.x+y:z"), "ms-word.x+y");
  EXPECT_EQ(schemeOf("\\\\host\\share"), "file");
}

TEST(SchemeOfAddress, ElseTheOneThatItHas) {
  EXPECT_EQ(schemeOf("HTTP://x/"), "http");
  EXPECT_EQ(schemeOf("a/b"), "");
  EXPECT_EQ(schemeOf("#a:b"), "");
}

TEST(SchemeOfAddress, HoldsNothingThatIsNoScheme) {
  EXPECT_EQ(schemeOf(":x"), "?");
  EXPECT_EQ(schemeOf("%66ile:///x"), "?");
  EXPECT_EQ(schemeOf("<b>\":x"), "?");
  EXPECT_EQ(schemeOf(std::string(33, 'a') + ":x"), "?");
  EXPECT_EQ(schemeOf(std::string(32, 'a') + ":x"), std::string(32, 'a'));
  EXPECT_EQ(schemeOf("javascript%2525252525252525253Ax"), "?");
}

}  // namespace
