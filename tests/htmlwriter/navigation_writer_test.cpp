#include "htmlwriter/navigation_writer.h"

#include <gtest/gtest.h>

#include "support/markup.h"

namespace pagerex {
namespace {

std::string tree(const KHtmlNavigationPageWriter& root) {
  return support::markupOf([&](IWriteArchive* archive) {
    int folds = 0;
    for (const auto& child : root.children) {
      WriteNavigation(child.get(), archive, "main", "1.htm", folds, nullptr);
    }
  });
}

void addTitle(KHtmlNavigationPageWriter& root, unsigned cp, unsigned level, const char* text) {
  EXPECT_EQ(root.StartCollectTitle(cp, level), Status::kOk);
  root.CollectTitle(text);
  root.EndCollectTitle();
}

TEST(Navigation, WithoutItemsNoPageIsWritten) {
  OutputFiles files;
  support::TempFolder folder;
  KHtmlNavigationPageWriter root;
  EXPECT_EQ(root.Write(files, folder.path("navigation.html").c_str(), "main", "1.htm"), Status::kNothing);
  EXPECT_TRUE(folder.files().empty());
}

TEST(Navigation, APageThatCannotBeMadeIsAFailure) {
  OutputFiles files;
  KHtmlNavigationPageWriter root;
  addTitle(root, 0, 1, "x");
  EXPECT_EQ(root.Write(files, "/nowhere/navigation.html", "main", "1.htm"), Status::kFailure);
}

TEST(Navigation, AHeadingIsALinkToItsAnchor) {
  KHtmlNavigationPageWriter root;
  addTitle(root, 12, 1, "One & two");
  EXPECT_EQ(tree(root),
            "&nbsp;&nbsp;<a target=\"main\" href=\"1.htm#TITLE_12\">One &amp; two</a><br/>\r\n\r\n");
}

TEST(Navigation, ABookmarkStandsInBracketsUnderTheHeadingItFollows) {
  KHtmlNavigationPageWriter root;
  root.CollectBookMarkCP(1, "first");
  addTitle(root, 5, 1, "H");
  root.CollectBookMarkCP(7, "second");
  EXPECT_EQ(tree(root),
            "&nbsp;&nbsp;<a target=\"main\" href=\"1.htm#BM_1\">[first]</a><br/>\r\n\r\n"
            "<a id=\"fold0\" href=\"#\" class=\"fold\" onclick=\"fun(0)\">-</a>&nbsp;"
            "<a target=\"main\" href=\"1.htm#TITLE_5\">H</a><br/>\r\n"
            "<div id=\"div0\" style=\"margin-left:20;\">"
            "&nbsp;&nbsp;<a target=\"main\" href=\"1.htm#BM_7\">[second]</a><br/>\r\n\r\n"
            "</div>\r\n");
}

TEST(Navigation, HeadingTwoGoesUnderHeadingOne) {
  KHtmlNavigationPageWriter root;
  addTitle(root, 0, 1, "1");
  addTitle(root, 1, 2, "1.1");
  addTitle(root, 2, 3, "1.1.1");
  addTitle(root, 3, 2, "1.2");
  addTitle(root, 4, 1, "2");
  ASSERT_EQ(root.children.size(), 2u);
  ASSERT_EQ(root.children[0]->children.size(), 2u);
  EXPECT_EQ(root.children[0]->children[0]->children[0]->text, "1.1.1");
  EXPECT_EQ(root.children[0]->children[1]->text, "1.2");
}

TEST(Navigation, ASkippedLevelHangsAtTheRoot) {
  KHtmlNavigationPageWriter root;
  addTitle(root, 0, 1, "1");
  addTitle(root, 1, 3, "deep");
  ASSERT_EQ(root.children.size(), 2u);
  EXPECT_EQ(root.children[1]->text, "deep");
}

TEST(Navigation, ALevelOutsideOneToNineAddsItsTextToTheCurrentItem) {
  KHtmlNavigationPageWriter root;
  addTitle(root, 0, 1, "one");
  EXPECT_EQ(root.StartCollectTitle(9, 0), Status::kInvalidArgument);
  EXPECT_EQ(root.StartCollectTitle(9, 10), Status::kInvalidArgument);
  root.CollectTitle(" more");
  EXPECT_EQ(root.children[0]->text, "one more");
}

TEST(Navigation, NullTextsAreRefused) {
  KHtmlNavigationPageWriter root;
  EXPECT_EQ(root.CollectBookMarkCP(0, nullptr), Status::kInvalidArgument);
  EXPECT_EQ(root.CollectTitle(nullptr), Status::kInvalidArgument);
  EXPECT_TRUE(root.children.empty());
}

TEST(Navigation, AHeadingWithoutTextStillHasItsEntry) {
  KHtmlNavigationPageWriter root;
  root.StartCollectTitle(3, 2);
  EXPECT_EQ(tree(root), "&nbsp;&nbsp;<a target=\"main\" href=\"1.htm#TITLE_3\"></a><br/>\r\n\r\n");
}

TEST(Navigation, TheWholePage) {
  OutputFiles files;
  support::TempFolder folder;
  KHtmlNavigationPageWriter root;
  addTitle(root, 0, 1, "T");
  ASSERT_EQ(root.Write(files, folder.path("navigation.html").c_str(), "main", "1.htm"), Status::kOk);
  EXPECT_EQ(
      folder.read("navigation.html"),
      "<html><head><script language=\"JavaScript\" src=\"shapejs.js\"></script>"
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"></meta></head><body>"
      "<style>body\r\n{white-space:nowrap;\r\n}\r\n"
      "a\r\n{text-decoration:none;\r\ncolor:#000000;\r\nfont-size:12px;\r\n}\r\n"
      ".fold\r\n{width:16;\r\nheight:16;\r\nborder-style:dashed;\r\nborder-width:1;\r\nfont-size:16px;\r\n"
      "text-align:center;\r\nvertical-align:middle;\r\n}\r\n</style>"
      "&nbsp;&nbsp;<a target=\"main\" href=\"1.htm#TITLE_0\">T</a><br/>\r\n\r\n"
      "<script language='javascript'>\r\nfunction fun(id)\r\n{\tfold = document.getElementById('fold' + "
      "id);\r\n"
      "\tif (fold.innerHTML == '-')\r\n\t{\tfold.innerHTML = '+';\r\n"
      "\t\tdocument.getElementById('div' + id).style.display = 'none';\r\n\t} else\r\n"
      "\t{\tfold.innerHTML = '-';\r\n\t\tdocument.getElementById('div' + id).style.display = "
      "'';\r\n\t}\r\n}\r\n"
      "for (i = 0; i < 0; ++i)\r\nfun(i);\r\n</script>\r\n</body></html>");
}

}  // namespace
}  // namespace pagerex
