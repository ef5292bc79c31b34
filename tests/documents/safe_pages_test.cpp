#include <gtest/gtest.h>

#include "documents/converted.h"
#include "support/drawing_writer.h"

// Pages made with safe=on, byte for byte where text of the document stands elsewhere than in the text.

namespace {

using support::ByteWriter;
using support::sprm;
using support::Style;
using support::Text;
using support::WordDocument;
using support::drawing::Drawing;
using support::drawing::Props;
using support::drawing::Shape;

constexpr uint8_t kHyperlink = 88;
using Options = std::vector<std::string>;
const Options kSafe = {"safe=on"};

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

/// The pages that show the text, by their view.
Options pagedView(const std::string& view) {
  return {"view=" + view, "pagesize=1000", "safe=on"};
}

std::string fieldOf(const Text& code, const Options& options) {
  WordDocument doc;
  doc.paragraph("a").field(kHyperlink, code, "link").run("b");
  return Converted(doc, options).page();
}

std::string field(const std::string& code, const Options& options) {
  return fieldOf(" HYPERLINK " + code + " ", options);
}

std::string anchor(const std::string& attributes) {
  return span("a") + span("<a" + attributes + ">link") + "</a>" + span("b");
}

/// Whether a link of a field has its address, which may hold no quotation marks.
bool keepsAddress(const std::string& address, const std::string& links = "safe") {
  const std::string page = field("\"" + address + "\"", {"safe=on", "links=" + links});
  EXPECT_TRUE(has(page, "<a>link") || has(page, "<a href=\"")) << page;
  return has(page, "<a href=\"");
}

// Links.

TEST(SafeLinks, ThatRunSomethingKeepTheirTextAlone) {
  for (const char* view : {"normal", "phone", "mulpages"}) {
    EXPECT_TRUE(has(field("\"javascript:alert(1)\"", pagedView(view)), anchor(""))) << view;
  }
}

TEST(SafeLinks, KeepKnownSchemesAndPlaces) {
  for (const char* address :
       {"http://x/", "https://x/?a=b:c", "HTTP://x/", "mailto:a@x", "ftp://x/", "ftps://x/", "sftp://x/",
        "tel:+1", "sms:1", "news:a.b", "a/b.doc", "../a.doc", "/a", "#place", "?a:b", "a b.doc", "%41.doc",
        "dir/a:b", "http://x/%25%32%35"}) {
    EXPECT_TRUE(keepsAddress(address)) << address;
  }
}

TEST(SafeLinks, LoseOtherSchemesHoweverTheyAreSpelled) {
  for (const char* address : {"javascript:x",
                              "JaVaScRiPt:x",
                              "java\tscript:x",
                              " javascript:x",
                              "\x01\x1Fjavascript:x",
                              "java\xC2\xA0script:x",
                              "java\xE2\x80\x8Bscript:x",
                              "&#106;avascript:x",
                              "&#0000106avascript:x",
                              "&#x6a;avascript:x",
                              "&#X6Aavascript:x",
                              "javascript&colon;x",
                              "java&Tab;script:x",
                              "java&NewLine;script:x",
                              "&amp;#106;avascript:x",
                              "%6Aavascript:x",
                              "javascript%3Ax",
                              "javascript%253Ax",
                              "%26#106;avascript:x",
                              "&percnt;6aavascript:x",
                              "vbscript:x",
                              "data:text/html,x",
                              "file:///x",
                              "blob:x",
                              "about:blank",
                              "C:/x",
                              "//host/x",
                              "/%5Chost",
                              "%2F/host",
                              "&sol;&sol;host",
                              "\t//host",
                              ":x",
                              "view-source:javascript:x",
                              "feed:javascript:x",
                              "http\x01s2:x"}) {
    EXPECT_FALSE(keepsAddress(address)) << address;
  }
}

TEST(SafeLinks, LoseWhatIsEscapedTooDeep) {
  std::string address = "%41";
  for (int i = 0; i < 6; ++i) address.insert(1, "25");
  EXPECT_TRUE(keepsAddress(address));
  for (int i = 0; i < 3; ++i) address.insert(1, "25");
  EXPECT_FALSE(keepsAddress(address));
}

TEST(SafeLinks, AllOrNoneIfAskedFor) {
  EXPECT_TRUE(keepsAddress("javascript:x", "all"));
  EXPECT_FALSE(keepsAddress("http://x/", "none"));
  EXPECT_FALSE(keepsAddress("#place", "none"));
  EXPECT_FALSE(keepsAddress("javascript:x", "any"));
}

TEST(SafeLinks, AddressAndTipCannotLeaveTheirAttributes) {
  const std::string code = R"("http://x/?a=1&b='<c>\"d" \o "t\"i<p>")";
  EXPECT_TRUE(has(field(code, kSafe), anchor(" href=\"http://x/?a=1&amp;b=&#39;&lt;c&gt;\\&quot;d\""
                                             " title=\"t\\&quot;i&lt;p&gt;\"")));
}

TEST(SafeLinks, QuotationMarksEndNoAttribute) {
  EXPECT_TRUE(has(field(R"code("x\" onmouseover=\"alert(1)")code", kSafe),
                  anchor(" href=\"x\\&quot; onmouseover=\\&quot;alert(1)\"")));
}

TEST(SafeLinks, NameNoTarget) {
  EXPECT_TRUE(has(field(R"(\n \t "_top" \m "http://x/")", kSafe), anchor("")));
  EXPECT_TRUE(has(field(R"("http://x/" \t "_top\" onclick=x")", kSafe), anchor(" href=\"http://x/\"")));
}

TEST(SafeLinks, PlacesOfThePageAreNoAddresses) {
  EXPECT_TRUE(has(field(R"(\l "javascript:x")", kSafe), anchor(" href=\"#javascript:x\"")));
  EXPECT_TRUE(has(field(R"(\l javascript:x)", kSafe), anchor(" href=\"#javascript:x \"")));
  EXPECT_TRUE(has(field(R"("java" \o "script:" "script:x")", kSafe), anchor(" title=\"script:\"")));
}

TEST(SafeLinks, KeepCharactersOfTwoHalvesAndNoHalf) {
  const std::u16string code = u" HYPERLINK \"http://\xD83D\xDE00\xD83D/\" \\o \"\xDE00<\xD83D\xDE00\" ";
  EXPECT_TRUE(
      has(fieldOf(code, kSafe), anchor(" href=\"http://\xF0\x9F\x98\x80/\" title=\"&lt;\xF0\x9F\x98\x80\"")));
  EXPECT_TRUE(has(fieldOf(code, {}), anchor(" href=\"\" title=\"\"")));
}

TEST(SafeLinks, HalvesHideNoScheme) {
  EXPECT_TRUE(has(fieldOf(u" HYPERLINK \"java\xD83Dscript:x\" ", kSafe), anchor("")));
}

TEST(SafeLinks, CountOnlyInSafePages) {
  for (const Options& options : {Options{}, Options{"safe=off", "links=none"}, Options{"links=none"},
                                 Options{"safe=on", "safe=off"}, Options{"safe=1"}}) {
    EXPECT_TRUE(
        has(field("\"javascript:x\" \\o \"<b>\"", options), anchor(" href=\"javascript:x\" title=\"<b>\"")));
  }
}

// Other texts.

TEST(SafePages, AuthorOfACommentIsText) {
  WordDocument doc;
  doc.paragraph("a").annotation("Look.", {.author = u"<img src=x onerror=\"alert(1)\">&'"});
  for (const char* view : {"normal", "mulpages"}) {
    EXPECT_TRUE(has(Converted(doc, pagedView(view)).page(),
                    "<b>&lt;img src=x onerror=&quot;alert(1)&quot;&gt;&amp;&#39;,&nbsp;"))
        << view;
  }
}

TEST(SafePages, LabelOfAListIsText) {
  WordDocument doc;
  const uint16_t list = doc.list({.lsid = 1, .levels = {{.text = u"<b>%1&\"'\n", .follow = 2}}});
  doc.paragraph("x").sprms({sprm(0x460B, list), sprm(0x260A, 0)});
  for (const char* view : {"normal", "phone", "mulpages"}) {
    EXPECT_TRUE(
        has(Converted(doc, pagedView(view)).page(), "<span style=\"\">&lt;b&gt;1&amp;&quot;&#39;<br></span>"))
        << view;
  }
}

TEST(SafePages, BulletIsText) {
  WordDocument doc;
  support::ListLevel bullet = support::bulletLevel(u'<', 0);
  bullet.text = u"<i>";
  const uint16_t list = doc.list({.lsid = 1, .levels = {bullet}});
  doc.paragraph("x").sprms({sprm(0x460B, list), sprm(0x260A, 0)});
  EXPECT_TRUE(has(Converted(doc, kSafe).page(), ">&lt;i&gt;&nbsp;</span>"));
}

/// A run and a style in a font of this name.
WordDocument inFont(const char16_t* name) {
  WordDocument doc;
  const uint16_t font = doc.font(Text(name));
  doc.style(10, Style().name("S").chpx({sprm(0x286F, 0), sprm(0x4A4F, font)}));
  doc.paragraph().run("x", {sprm(0x286F, 0), sprm(0x4A4F, font)});
  return doc;
}

TEST(SafePages, UsualNamesOfFontsStandAsTheyAre) {
  const Converted converted(inFont(u"Times New-R_1 \u5B8B"), kSafe);
  EXPECT_TRUE(has(converted.page(), "\"font-family:Times New-R_1 \xE5\xAE\x8B;line-height:10.5pt;\""));
  EXPECT_TRUE(has(converted.file("style.css"), "font-family:Times New-R_1 \xE5\xAE\x8B;\r\n"));
}

TEST(SafePages, OtherNamesOfFontsAreStrings) {
  const std::string name = R"(font-family:'x\3B a\3A url\28 \22 \27 \5C \7D \3C \26 y';)";
  const Converted converted(inFont(u"x;a:url(\"'\\}<&y"), kSafe);
  EXPECT_TRUE(has(converted.page(), "\"" + name + "line-height:10.5pt;\""));
  EXPECT_TRUE(has(converted.file("style.css"), name + "\r\n"));
  const Converted phone(inFont(u"x;a:url(\"'\\}<&y"), pagedView("phone"));
  EXPECT_TRUE(has(phone.page(), "\"" + name));
}

TEST(SafePages, NavigationIsTextInAnyPages) {
  WordDocument doc;
  doc.style(1, Style().name("heading 1").sti(1).basedOn(0));
  doc.paragraph("<b>").istd(1).bookmarkStart("<i>").run("x").bookmarkEnd("<i>");
  const std::string navigation = Converted(doc, kSafe).file("navigation.html");
  EXPECT_EQ(navigation, Converted(doc).file("navigation.html"));
  EXPECT_FALSE(has(navigation, "<b>")) << navigation;
  EXPECT_FALSE(has(navigation, "<i>")) << navigation;
}

/// The page of a document with one shape.
std::string pageOf(const Props& props, const Options& options = kSafe) {
  WordDocument doc;
  doc.paragraph().special(8);
  Drawing().shape(0, Shape(1).props(props), {.rect = {0, 0, 2000, 1000}}).addTo(doc);
  return Converted(doc, options).page();
}

Props linkTo(std::u16string_view address) {
  const support::Bytes link =
      ByteWriter().zeros(20).u32(0x101).u32(static_cast<uint32_t>(address.size())).text16(address).take();
  return Props().complex(0x0382, link);
}

TEST(SafeShapes, AddressesAreJudgedLikeThoseOfText) {
  EXPECT_TRUE(has(pageOf(linkTo(u"javascript:x")), "<v:rect id=\"1025\" style="));
  EXPECT_TRUE(has(pageOf(linkTo(u"javascript:x"), {}), " href=\"javascript:x\""));
  EXPECT_TRUE(has(pageOf(linkTo(u"http://x/\">-->")), " href=\"http://x/&quot;&gt;--&gt;\" style="));
  EXPECT_TRUE(has(pageOf(linkTo(u"javascript:x"), {"safe=on", "links=all"}), " href=\"javascript:x\""));
  EXPECT_TRUE(has(pageOf(linkTo(u"http://x/"), {"safe=on", "links=none"}), "<v:rect id=\"1025\" style="));
  EXPECT_FALSE(has(pageOf(linkTo(u"javascript:x"), pagedView("mulpages")), "href=\"javascript"));
}

TEST(SafeShapes, NarrowPathsAreUtf8) {
  const support::Bytes fileMoniker = {0x03, 0x03, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
  const support::Bytes link = ByteWriter()
                                  .zeros(20)
                                  .u32(0x01)
                                  .bytes(fileMoniker)
                                  .u16(0)
                                  .u32(6)
                                  .text8("\xD6\xD0\xC3\xA9\xE4")
                                  .u8(0)
                                  .zeros(24)
                                  .u32(0)
                                  .take();
  EXPECT_TRUE(has(pageOf(Props().complex(0x0382, link)), " href=\"../%D6%D0\xC3\xA9%E4\" style="));
}

TEST(SafeShapes, TextsCannotLeaveTheirAttributes) {
  const std::string page =
      pageOf(Props().text(0x00C0, u"\"-->&").text(0x00C5, u"a';b").text(0x0105, u"<c>\""));
  EXPECT_TRUE(has(page, "<v:textpath style=\"font-family:'a\\27 \\3B b';\" string=\"&quot;--&gt;&amp;\">"))
      << page;
  EXPECT_TRUE(has(page, "<v:imagedata o:title=\"&lt;c&gt;&quot;\">")) << page;
}

/// The name of a picture that is a text, or an address, by its flags.
Props pictureName(const char16_t* name, uint32_t flags) {
  return Props().text(0x0105, name).number(0x0106, flags);
}

TEST(SafeShapes, AddressesOfLinkedPicturesAreJudged) {
  const auto titleOf = [](const char16_t* name, uint32_t flags, const std::string& links = "safe") {
    const std::string page = pageOf(pictureName(name, flags), {"safe=on", "links=" + links});
    const size_t begin = page.find("<v:imagedata") + 12;
    return page.substr(begin, page.find('>', begin) - begin);
  };
  for (const uint32_t linked : {2u, 8u, 9u, 10u}) {
    EXPECT_EQ(titleOf(u"C:\\a.png", linked), "");
    EXPECT_EQ(titleOf(u"http://x/'", linked), " o:title=\"http://x/&#39;\"");
    EXPECT_EQ(titleOf(u"http://x/", linked, "none"), "");
    EXPECT_EQ(titleOf(u"C:\\a.png", linked, "all"), " o:title=\"C:\\a.png\"");
  }
  for (const uint32_t text : {0u, 1u, 4u})
    EXPECT_EQ(titleOf(u"C: a'", text, "none"), " o:title=\"C: a&#39;\"");
  EXPECT_TRUE(has(pageOf(pictureName(u"C:\\a'", 10), {"links=none"}), " o:title=\"C:\\a'\""));
}

TEST(SafeShapes, PicturesOfNoKindCannotBeTakenForPages) {
  WordDocument doc;
  doc.paragraph().special(8);
  Drawing drawing;
  drawing.blip({.type = 1, .data = ByteWriter().text8("<script>alert(1)</script>").take()});
  drawing.shape(0, Shape(75).props(Props().number(0x4104, 1))).addTo(doc);
  const Converted safe(doc, kSafe);
  EXPECT_TRUE(has(safe.page(), " src=\"image001.bin\""));
  EXPECT_TRUE(safe.has("image001.bin"));
  EXPECT_TRUE(has(Converted(doc).page(), " src=\"image001.\""));
}

TEST(SafeShapes, LongNamesOfFontsEndAsTheyShould) {
  const std::string page =
      pageOf(Props().text(0x00C0, u"Art").text(0x00C5, std::u16string(80, u'x')).fixed(0x00C3, 9));
  EXPECT_TRUE(has(page, "style=\"font-family:'" + std::string(80, 'x') + "';font-size:9pt;\"")) << page;
}

// What is the same.

TEST(SafePages, OfADocumentWithoutMarkupAreThoseThatAreNot) {
  WordDocument doc;
  doc.paragraph("a < b").footnote("Foot.").annotation("Look.").field(kHyperlink, "HYPERLINK \"http://x/\"",
                                                                     "x");
  for (const char* view : {"normal", "phone", "mulpages"}) {
    const Options plain = {std::string("view=") + view, "pagesize=1000"};
    EXPECT_EQ(Converted(doc, pagedView(view)).page(), Converted(doc, plain).page()) << view;
  }
}

TEST(SafePages, PreviewHasNothingButText) {
  WordDocument doc;
  doc.paragraph("<b>").field(kHyperlink, "HYPERLINK \"javascript:x\"", "link");
  EXPECT_EQ(Converted(doc, {"view=preview", "pagesize=100", "safe=on"}).main(), "&lt;b&gtlink");
}

/// The name of the main file is the host's, who may have it from anywhere.
TEST(SafePages, IndexPagesSpellTheNameOfTheFolder) {
  const support::TempFolder folder;
  WordDocument doc;
  doc.paragraph("x");
  doc.save(folder.path("in.doc"));
  const std::string name = "a:'\"<b>&#";
  const auto mainOf = [&](std::string view) {
    std::string size = "pagesize=100", safe = "safe=on";
    char* argv[] = {view.data(), size.data(), safe.data()};
    PageRex(folder.path("in.doc").c_str(), folder.path(name + ".htm").c_str(), 3, argv);
    return folder.read(name + ".htm");
  };
  const std::string spelled = "\"a%3A%27%22%3Cb%3E%26%23.files/1.htm\"";
  EXPECT_TRUE(has(mainOf("view=normal"), " src=" + spelled));
  EXPECT_TRUE(has(mainOf("view=phone"), " href=" + spelled));
  EXPECT_EQ(mainOf("view=mulpages"),
            "<file totalpages=\"1\"><page>a:&#39;&quot;&lt;b&gt;&amp;#.files/1.htm</page></file>");
}

}  // namespace
