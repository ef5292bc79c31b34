#include "safety/one_page_rules.h"

#include <gtest/gtest.h>

// The rules see what may not be in a page, and let pass what may.

namespace {

constexpr char kHead[] =
    "<!doctype html>\n<html lang=en><head><meta charset=utf-8><meta http-equiv=Content-Security-Policy "
    "content=\"default-src 'none'\"><title>x</title><style>p{color:red}</style></head><body><main>";
constexpr char kEnd[] = "</main></body></html>\n";

std::string faultOf(const std::string& body, bool anyAddress = false) {
  return safety::faultOfOnePage(kHead + body + kEnd, anyAddress);
}

TEST(OnePageRules, LetPass) {
  for (const char* body : {
           "<p class=p1>a<br>b</p>",
           "<p><a href=\"http://x/?a=b&amp;c=d\">x</a> <a href=#a>y</a> <a href='mailto:a@b'>z</a></p>",
           "<p id=a><img src=\"data:image/png;base64,AAAA\" alt=''><img src=image001.png alt='onload=x'></p>",
           "<svg viewBox='0 0 1 1'><defs><linearGradient id=g1></linearGradient></defs>"
           "<path d='M0 0' fill='url(#g1)'/></svg>",
           "<table><colgroup><col><col></colgroup><tr><td>a</td><td>b</td></tr></table>",
           "<ul><li><p>a</p><ul><li><p>b</p></li></ul></li></ul>",
           "<style>p{font-family:\"url(x)\\\"url(y)\",'@import'}</style>",
           "<p title='url(http://x)'>\xC3\xA4\xF0\x9F\x98\x80</p>",
       })
    EXPECT_EQ(faultOf(body), "") << body;
}

TEST(OnePageRules, SeeWhatRunsOrLoads) {
  for (const char* body : {
           "<script>x</script>",
           "<iframe></iframe>",
           "<object></object>",
           "<form></form>",
           "<link rel=x href=y>",
           "<p onclick=x>a</p>",
           "<p style='color:red'>a</p>",
           "<a href='javascript:x'>a</a>",
           "<a href=' java\tscript:x'>a</a>",
           "<a href='//x'>a</a>",
           "<a href='file:///x'>a</a>",
           "<a href='data:text/html,x'>a</a>",
           "<img src='data:text/html,x' alt=''>",
           "<svg><path fill='url(http://x)'/></svg>",
           "<svg><a xlink:href='javascript:x'></a></svg>",
           "<svg><foreignObject></foreignObject></svg>",
           "<style>p{background:url(x)}</style>",
           "<style>@import 'x';</style>",
           "<style>p{font-family:\"x\ny\"}</style>",
           "<style>p{font-family:\"x}</style>",
           "<style>p{font-family:\"x\";background:url(y)}</style>",
           "<meta http-equiv=refresh content='0;url=x'>",
       })
    EXPECT_NE(faultOf(body), "") << body;
}

TEST(OnePageRules, SeeWhatIsMended) {
  for (const char* body : {
           "<p>a",
           "<p><b>a</p></b>",
           "<p>a<div>b</div></p>",
           "<b><p>a</b>b</p>",
           "<table><tr><p>a</p></tr></table>",
           "<ul><li>a</ul>",
           "<span>a",
           "<a href=#a>a<a href=#b>b</a></a>",
           "</p>",
           "</br>",
           "<svg><g></svg>",
       })
    EXPECT_NE(faultOf(body), "") << body;
}

TEST(OnePageRules, SeeBytesThatAreNoText) {
  for (const std::string& body :
       {std::string("\x00", 1), std::string("\x01"), std::string("\x80"), std::string("\xC0\x80"),
        std::string("\xED\xA0\x80"), std::string("\xE4"), std::string("\xF4\x90\x80\x80"),
        std::string("\xC2\x85"), std::string("\xEF\xBF\xBF"), std::string("\r")})
    EXPECT_NE(faultOf("<p>" + body + "</p>"), "");
}

TEST(OnePageRules, SeePlacesOfOneName) {
  EXPECT_EQ(faultOf("<p id=a>a</p><p id=b>b</p>"), "");
  EXPECT_EQ(faultOf("<p id=a>a</p><p id=a>b</p>"), "a place twice: a");
}

TEST(OnePageRules, LetLinksLeadAnywhereWhereThatIsWanted) {
  EXPECT_EQ(faultOf("<p><a href='javascript:x'>a</a></p>", true), "");
  EXPECT_NE(faultOf("<p><img src='javascript:x' alt=''></p>", true), "");
}

TEST(OnePageRules, SeeThatThereIsAPolicyAndAType) {
  EXPECT_EQ(safety::faultOfOnePage("<p>a</p>"), "no document type");
  EXPECT_EQ(safety::faultOfOnePage("<!doctype html><html><head></head><body></body></html>"), "no policy");
}

}  // namespace
