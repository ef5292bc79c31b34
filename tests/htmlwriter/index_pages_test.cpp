#include "htmlwriter/index_pages.h"

#include <gtest/gtest.h>

#include "base/output_files.h"
#include "support/temp_folder.h"

using namespace pagerex;
using support::TempFolder;

namespace {

constexpr char kFrameStart[] =
    "<html><head><script language=\"javascript\"\r\n"
    ">function ShiftStatus()\r\n"
    "{var obj = document.getElementById(\"switchPoint\");\r\n"
    "\r\n"
    "if (obj.title == \"close\"){\r\n"
    "obj.title = \"open\";\r\n"
    "obj.innerHTML = \"<b>&gt;</b>\";\r\n"
    "document.getElementById(\"navigation\").style.display=\"none\";}\r\n"
    "else{\r\n"
    "obj.title = \"close\";\r\n"
    "obj.innerHTML = \"<b>&lt;</b>\";\r\n"
    "document.getElementById(\"navigation\").style.display=\"\";}}</script></head>"
    "<body style=\"margin: 0px;\" scroll=\"no\">"
    "<table height=\"100%\" cellspacing=\"0\" cellpadding=\"0\" width=\"100%\" border=\"0\"><tr>";

constexpr char kNavigation[] =
    "<td id=\"center\" nowrap align=\"middle\">"
    "<iframe id=\"navigation\" style=\"z-index: 2; visibility: inherit; width: 300px; height: 100%;\""
    " src=\"x.files/navigation.html\" frameborder=\"0\"></iframe></td>"
    "<td><table height=\"100%\" cellspacing=\"0\" cellpadding=\"0\" border=\"0\"><tr>"
    "<td id=\"switchPoint\" title=\"close\""
    " style=\"cursor: pointer; vertical-align: center;font-family: Tahoma; font-size: 6pt; color: white;"
    " height: 100%;\" onclick=\"ShiftStatus();\" width=\"8\" bgcolor=\"#aac8f6\"><b>&lt;</b></td>"
    "</tr></table></td>";

constexpr char kFrameEnd[] =
    "<td style=\"width:100%;\">"
    "<iframe name=\"main\" style=\"z-index: 1; visibility: inherit; width: 100%; height: 100%;\""
    " src=\"x.files/1.htm\" frameborder=\"0\" scrolling=\"yes\"></iframe></td>"
    "</tr></table></body></html>";

constexpr char kPlainStart[] =
    "<html><head><script language=\"JavaScript\" src=\"shapejs.js\"></script>"
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"></meta></head><body>";

std::string framePage(bool hasNavigation) {
  OutputFiles files;
  TempFolder folder;
  EXPECT_EQ(WriteFramePage(files, folder.path("x.htm").c_str(), "x.files/navigation.html", "x.files/1.htm",
                           hasNavigation),
            Status::kOk);
  return folder.read("x.htm");
}

std::string pageList(const std::string& filesFolderName, int pageCount) {
  OutputFiles files;
  TempFolder folder;
  EXPECT_EQ(WriteHtmlMain(files, folder.path("x.htm").c_str(), filesFolderName.c_str(), pageCount),
            Status::kOk);
  return folder.read("x.htm");
}

std::string mulpagesInfo(const std::string& filesFolderName, int pageCount) {
  OutputFiles files;
  TempFolder folder;
  EXPECT_EQ(WriteMulpagesInfo(files, folder.path("x.htm").c_str(), filesFolderName.c_str(), pageCount),
            Status::kOk);
  return folder.read("x.htm");
}

}  // namespace

TEST(FramePage, HoldsTheNavigationBesideTheText) {
  EXPECT_EQ(framePage(true), std::string(kFrameStart) + kNavigation + kFrameEnd);
}

TEST(FramePage, HoldsTheTextAloneWithoutNavigation) {
  EXPECT_EQ(framePage(false), std::string(kFrameStart) + kFrameEnd);
}

TEST(PageList, LinksEachPageAndATabBehindIt) {
  EXPECT_EQ(pageList("x.files", 2),
            std::string(kPlainStart) +
                "<p>total2page</p>\r\n"
                "<p><a href=\"x.files/1.htm\">1</a>\t<a href=\"x.files/2.htm\">2</a>\t</p>\r\n"
                "</body></html>");
}

TEST(PageList, CutsLinksAt63Bytes) {
  const std::string name(60, 'n');
  EXPECT_NE(pageList(name, 1).find("<a href=\"" + name + "/1.\">1</a>"), std::string::npos);
}

TEST(MulpagesInfo, ListsEachPage) {
  EXPECT_EQ(mulpagesInfo("x.files", 2),
            "<file totalpages=\"2\"><page>x.files/1.htm</page><page>x.files/2.htm</page></file>");
}

TEST(MulpagesInfo, CutsPathsAt259Bytes) {
  const std::string name(257, 'n');
  EXPECT_EQ(mulpagesInfo(name, 1), "<file totalpages=\"1\"><page>" + name + "/1</page></file>");
}

TEST(IndexPages, RefuseNullPointersAndEmptyDocuments) {
  OutputFiles files;
  TempFolder folder;
  const std::string path = folder.path("x.htm");
  EXPECT_EQ(WriteFramePage(files, nullptr, "n", "1", true), Status::kInvalidArgument);
  EXPECT_EQ(WriteFramePage(files, path.c_str(), nullptr, "1", true), Status::kInvalidArgument);
  EXPECT_EQ(WriteFramePage(files, path.c_str(), "n", nullptr, true), Status::kInvalidArgument);
  EXPECT_EQ(WriteHtmlMain(files, nullptr, "f", 1), Status::kInvalidArgument);
  EXPECT_EQ(WriteHtmlMain(files, path.c_str(), nullptr, 1), Status::kInvalidArgument);
  EXPECT_EQ(WriteHtmlMain(files, path.c_str(), "f", 0), Status::kInvalidArgument);
  EXPECT_EQ(WriteMulpagesInfo(files, nullptr, "f", 1), Status::kInvalidArgument);
  EXPECT_EQ(WriteMulpagesInfo(files, path.c_str(), nullptr, 1), Status::kInvalidArgument);
  EXPECT_EQ(WriteMulpagesInfo(files, path.c_str(), "f", -1), Status::kInvalidArgument);
  EXPECT_FALSE(folder.exists("x.htm"));
}

TEST(IndexPages, TellWhenTheirFileCannotBeCreated) {
  OutputFiles files;
  EXPECT_EQ(WriteFramePage(files, "/nowhere/x.htm", "n", "1", true), Status::kInvalidArgument);
  EXPECT_EQ(WriteHtmlMain(files, "/nowhere/x.htm", "f", 1), Status::kInvalidArgument);
  EXPECT_EQ(WriteMulpagesInfo(files, "/nowhere/x.htm", "f", 1), Status::kFailure);
}
