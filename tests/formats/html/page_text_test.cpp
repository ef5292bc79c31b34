#include "formats/html/page_text.h"

#include <gtest/gtest.h>

namespace pagerex {
namespace {

std::string text(std::u16string_view text) {
  PageText page;
  page.PutText(text);
  return std::string(page.view());
}

std::string attribute(std::u16string_view text) {
  PageText page;
  page.PutAttribute(text);
  return std::string(page.view());
}

std::string value(std::string_view bytes) {
  std::string out;
  appendValue(out, bytes);
  return out;
}

TEST(PageText, EscapesWhatIsMarkup) {
  EXPECT_EQ(text(u"a<b>&\"c'"), "a&lt;b>&amp;\"c'");
  EXPECT_EQ(text(u"<"), "&lt;");
  EXPECT_EQ(text(u"&amp;"), "&amp;amp;");
  EXPECT_EQ(text(u"</style><!--"), "&lt;/style>&lt;!--");
}

TEST(PageText, EscapesQuotesInAttributes) {
  EXPECT_EQ(attribute(u"a\"b'<&>"), "a&quot;b'&lt;&amp;>");
  EXPECT_EQ(attribute(u"plain"), "plain");
}

TEST(PageText, LeavesControlsOut) {
  EXPECT_EQ(text(u"a\u0001b\u001Fc\u007Fd\u0080e\u009Ff"), "abcdef");
  EXPECT_EQ(text(u"<\u0085>"), "&lt;>");
  EXPECT_EQ(attribute(u"\"\u007F\""), "&quot;&quot;");
  EXPECT_EQ(text(u"\u007F"), "");
}

TEST(PageText, KeepsWhatBeginsAsControlsDo) {
  EXPECT_EQ(text(u"\u00A0\u00A9\u00BF"), "\xC2\xA0\xC2\xA9\xC2\xBF");
  EXPECT_EQ(text(u"\u0100\u0442\uFFE0"), "\xC4\x80\xD1\x82\xEF\xBF\xA0");
}

TEST(PageText, FindsMarkupAtEachPlace) {
  for (size_t size = 1; size < 40; ++size) {
    for (size_t at = 0; at < size; ++at) {
      std::u16string units(size, u'a');
      std::string wanted(size, 'a');
      for (const char16_t unit : {u'<', u'\u007F', u'\u00E4', u'\n', u'\u0001'}) {
        units[at] = unit;
        const std::string_view spelled = unit == '<'    ? "&lt;"
                                         : unit == 0xE4 ? "\xC3\xA4"
                                         : unit == '\n' ? "\n"
                                                        : "";
        EXPECT_EQ(text(units), wanted.substr(0, at).append(spelled).append(wanted, at + 1))
            << size << ' ' << at;
      }
    }
  }
}

TEST(PageText, JoinsHalvesThatAControlParts) {
  EXPECT_EQ(text(u"<\xD83D\u0080\xDE00"), "&lt;\xF0\x9F\x98\x80");
}

TEST(PageText, HasNoHalvesOfCharacters) {
  EXPECT_EQ(text(u"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
  const std::string lone = text(std::u16string_view(u"a\xD83D<", 3));
  EXPECT_EQ(lone, "a\xEF\xBF\xBD&lt;");
}

TEST(PageText, GrowsBeyondAnySize) {
  PageText page;
  std::string wanted;
  for (int i = 0; i < 3000; ++i) {
    page.PutText(u"a<b");
    page.Put('-');
    page.Put("cd");
    wanted += "a&lt;b-cd";
  }
  EXPECT_EQ(page.view(), wanted);
  const std::u16string large(100000, u'&');
  page.Clear();
  page.PutText(large);
  EXPECT_EQ(page.size(), large.size() * 5);
}

TEST(PageText, InsertsAnywhere) {
  PageText page;
  page.Insert(0, "c");
  page.Insert(0, "a");
  page.Insert(1, "b");
  page.Insert(3, "d");
  EXPECT_EQ(page.view(), "abcd");
  page.Insert(2, std::string(10000, '-'));
  EXPECT_EQ(page.view(), "ab" + std::string(10000, '-') + "cd");
}

TEST(PageText, InsertsAPartOfItself) {
  PageText page;
  page.Put("abc");
  page.Insert(0, page.view());
  page.Insert(3, page.view().substr(1, 2));
  EXPECT_EQ(page.view(), "abcbcabc");
}

TEST(PageText, LosesItsFrontOrItsEnd) {
  PageText page;
  page.Put("abcdef");
  page.DropFront(2);
  EXPECT_EQ(page.view(), "cdef");
  page.Cut(1);
  EXPECT_EQ(page.view(), "c");
  page.DropFront(1);
  EXPECT_TRUE(page.empty());
  page.Put("x");
  EXPECT_EQ(page.view(), "x");
}

TEST(PageText, QuotesValuesThatNeedIt) {
  EXPECT_EQ(value("abc-1_2.#"), "abc-1_2.#");
  EXPECT_EQ(value("\xC3\xA4"), "\xC3\xA4");
  EXPECT_EQ(value(""), "\"\"");
  for (const char* const odd : {"a b", "a>b", "a=b", "a'b", "a`b", "a/", "a\tb"})
    EXPECT_EQ(value(odd), "\"" + std::string(odd) + "\"");
  EXPECT_EQ(value("\"<&"), "\"&quot;&lt;&amp;\"");
}

TEST(PageText, EscapesBytesLikeText) {
  std::string out = "x";
  appendAttribute(out, "a&\"<b\xC3\xA4");
  EXPECT_EQ(out, "xa&amp;&quot;&lt;b\xC3\xA4");
}

}  // namespace
}  // namespace pagerex
