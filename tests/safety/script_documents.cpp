#include "safety/script_documents.h"

#include <iterator>
#include <string_view>

#include "support/drawing_writer.h"
#include "support/named_sprms.h"

namespace safety {

using namespace support;
using drawing::Drawing;
using drawing::Props;
using drawing::Shape;

namespace {

constexpr uint8_t kHyperlinkField = 88;
constexpr char16_t kShapeMark = 8;
constexpr uint16_t kGeoText = 0x00C0;
constexpr uint16_t kGeoTextFont = 0x00C5;
constexpr uint16_t kBlipName = 0x0105;
constexpr uint16_t kFillBlipName = 0x0187;
constexpr uint16_t kLineType = 0x01C4;
constexpr uint16_t kLineBlipName = 0x01C6;
constexpr uint16_t kLink = 0x0382;

const drawing::Rect kBox = {0, 0, 2000, 1000};

constexpr const char16_t* kAddresses[] = {
    u"javascript:alert(1)",
    u"JaVaScRiPt:alert(1)",
    u"java\tscript:alert(1)",
    u"\x02 javascript:alert(1)",
    u"vbscript:msgbox(1)",
    u"data:text/html,<script>alert(1)</script>",
    u"\\\\example.org\\x",
    u"file:///etc/passwd",
    u"&#106;avascript:alert(1)",
    u"&#x6A;avascript&colon;alert(1)",
    u"%6aavascript:alert(1)",
    u"javascript&amp#58;alert(1)",
    u"java\xD83Dscript:alert(1)",
    u"\x2028javascript:alert(1)",
    u"view-source:javascript:alert(1)",
    u"feed:javascript:alert(1)",
    u"x'><img src=x onerror=alert(1)>",
};

/// What ends an attribute, a comment, a style or a text and begins something else.
constexpr const char16_t* kTexts[] = {
    u"<img src=x onerror=alert(1)>",
    u"x\u201D onmouseover=\u201Dalert(1)",
    u"x\" onmouseover=\"alert(1)",
    u"x' onmouseover='alert(1)",
    u"--><script>alert(1)</script>",
    u"<![endif]--><script>alert(1)</script>",
    u"</style><script>alert(1)</script>",
    u"--!><script>alert(1)</script>",
    u"]]><script>alert(1)</script>",
    u"*/</title></textarea></xmp><script>alert(1)</script>",
    u"<!--<![if !vml]><script>alert(1)</script>",
    u"&lt;script&gt;&lt<script >alert(1)</script>",
    u"\x2028<script>alert(1)</script>\xDC00<\xD83Dscript>alert(1)</script>",
    u"`` onmouseover=alert(1)\\",
};

constexpr const char16_t* kFonts[] = {
    u"x;background:url(javascript:alert(1))",
    u"x;width:expression(alert(1))",
    u"x';behavior:url(#x);y:'",
    u"x}*{background:url(//x)}",
    u"x\\",
    u"x\\3bwidth\\3a expression(alert(1))",
    u"x\n;width:expression(alert(1))",
    u"x</style><script>alert(1)</script>",
    u"x/**/;background:u\\72l(//x)",
    u"x\" onmouseover=\"alert(1)",
    u"--><script>alert(1)</script>",
};

std::u16string fieldCode(const std::u16string& address, const std::u16string& tip = u"") {
  return u" HYPERLINK \"" + address + u"\"" + (tip.empty() ? u"" : u" \\o \"" + tip + u"\"") + u" ";
}

/// A quotation mark inside a string of a field's code has a backslash in front.
std::u16string inCode(std::u16string_view text) {
  std::u16string code;
  for (const char16_t c : text) {
    if (c == u'"') code += u'\\';
    code += c;
  }
  return code;
}

/// Where only text stands: safe in all pages.
void addStories(WordDocument& doc) {
  for (const char16_t* text : kTexts) {
    doc.paragraph(Text(text)).footnote(Text(text)).endnote(Text(text)).annotation(Text(text));
    doc.paragraph().run(Text(text), {sprm(0x2A32, 1)});
  }
}

void addFieldAddresses(WordDocument& doc) {
  for (const char16_t* address : kAddresses) {
    doc.paragraph("go ").field(kHyperlinkField, Text(fieldCode(inCode(address))), "here").run(".");
  }
  for (const char16_t* text : kTexts) {
    doc.paragraph("go ").field(kHyperlinkField, Text(fieldCode(inCode(text))), "here").run(".");
  }
}

void addFieldTips(WordDocument& doc) {
  for (const char16_t* text : kTexts) {
    doc.paragraph("go ").field(kHyperlinkField, Text(fieldCode(u"http://x/", inCode(text))), "here").run(".");
  }
}

void addFonts(WordDocument& doc) {
  uint16_t istd = 20;
  for (const char16_t* name : kFonts) {
    const uint16_t font = doc.font(Text(name));
    doc.style(istd, Style().name(Text(name)).chpx({sprm(0x286F, 0), sprm(0x4A4F, font)}));
    doc.paragraph().istd(istd++).run("text", {sprm(0x286F, 0), sprm(0x4A4F, font)});
  }
}

void addAuthors(WordDocument& doc) {
  for (const char16_t* text : kTexts) doc.paragraph("a").annotation("Look.", {.author = text});
}

void addLabels(WordDocument& doc) {
  int32_t lsid = 90;
  for (const char16_t* text : kTexts) {
    const uint16_t list = doc.list({.lsid = lsid++, .levels = {{.text = Text(text)}}});
    doc.paragraph("item").sprms({listItem(list, 0)});
  }
}

/// A bullet may be longer than one character.
void addBullets(WordDocument& doc) {
  ListLevel bullet = bulletLevel(u'<', 0);
  bullet.text = kTexts[0];
  const uint16_t list = doc.list({.lsid = 99, .levels = {bullet}});
  doc.paragraph("item").sprms({listItem(list, 0)});
}

void addNavigation(WordDocument& doc) {
  doc.style(1, Style().name("heading 1").sti(1).basedOn(0));
  for (const char16_t* text : kTexts) {
    doc.paragraph(Text(text)).istd(1);
    doc.paragraph().bookmarkStart(Text(text)).run(Text(text)).bookmarkEnd(Text(text));
  }
}

Bytes stringLink(std::u16string_view address) {
  constexpr uint32_t kStringAddress = 0x101;
  return ByteWriter()
      .zeros(20)
      .u32(kStringAddress)
      .u32(static_cast<uint32_t>(address.size()))
      .text16(address)
      .take();
}

constexpr uint8_t kUrlMoniker[] = {0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                                   0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
constexpr uint8_t kFileMoniker[] = {0x03, 0x03, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};

Bytes bytesOf(const uint8_t (&id)[16]) {
  return Bytes(std::begin(id), std::end(id));
}

/// With a display text and a frame in front, and a location behind.
Bytes urlLink(std::u16string_view address) {
  const auto length = static_cast<uint32_t>(address.size());
  ByteWriter link;
  link.zeros(20).u32(0x01 | 0x02 | 0x04 | 0x08 | 0x80);
  link.u32(length).text16(address).u32(length).text16(address).bytes(bytesOf(kUrlMoniker));
  return link.u32(length * 2).text16(address).u32(length).text16(address).take();
}

/// The path of a file, absolute, one byte a character.
Bytes fileLink(std::u16string_view address) {
  ByteWriter link;
  link.zeros(20).u32(0x01 | 0x02).bytes(bytesOf(kFileMoniker)).u16(0);
  link.u32(static_cast<uint32_t>(address.size()) + 1);
  for (const char16_t unit : address) link.u8(static_cast<uint8_t>(unit));
  return link.u8(0).zeros(24).u32(0).take();
}

void addShapes(WordDocument& doc, const std::vector<Props>& properties) {
  Paragraph& paragraph = doc.paragraph();
  for (size_t i = 0; i < properties.size(); ++i) paragraph.special(kShapeMark);
  Drawing shapes;
  for (uint32_t i = 0; i < properties.size(); ++i) {
    shapes.shape(i, Shape(1, 1025 + i).props(properties[i]), {.rect = kBox});
  }
  shapes.addTo(doc);
}

void addShapeAddresses(WordDocument& doc) {
  std::vector<Props> properties;
  for (const auto& linkTo : {stringLink, urlLink, fileLink}) {
    for (const char16_t* address : kAddresses) properties.push_back(Props().complex(kLink, linkTo(address)));
    for (const char16_t* text : kTexts) properties.push_back(Props().complex(kLink, linkTo(text)));
  }
  addShapes(doc, properties);
}

void addShapeTexts(WordDocument& doc) {
  std::vector<Props> properties;
  for (const char16_t* text : kTexts) {
    properties.push_back(Props().text(kGeoText, text).text(kBlipName, text).text(kFillBlipName, text));
    properties.push_back(Props().number(kLineType, 1).text(kLineBlipName, text));
  }
  for (const char16_t* font : kFonts)
    properties.push_back(Props().text(kGeoText, u"Art").text(kGeoTextFont, font));
  properties.push_back(Props().text(kGeoText, u"Art").text(kGeoTextFont, std::u16string(80, u'x')));
  addShapes(doc, properties);
}

/// Their bytes are a page.
void addPictures(WordDocument& doc) {
  constexpr uint16_t kPicture = 0x4104;
  constexpr uint32_t kPictureFrame = 75;
  constexpr uint8_t kLastType = 7;
  Drawing shapes;
  for (uint8_t type = 0; type <= kLastType; ++type) {
    doc.paragraph().special(kShapeMark);
    shapes.blip({.type = type, .data = ByteWriter().text8("<script>alert(1)</script>").take(), .uid = type});
    shapes.shape(type * 2u, Shape(kPictureFrame, 1025u + type).props(Props().number(kPicture, type + 1u)));
  }
  shapes.addTo(doc);
}

/// Inside a text box the page is in a comment.
void addTextBox(WordDocument& doc) {
  doc.paragraph().special(kShapeMark);
  Story& box = doc.story(mso_word::SUBDOC_TEXTBOX);
  const std::u16string code = fieldCode(u"--><script>alert(1)</script>", u"--><img src=x onerror=alert(1)>");
  box.paragraph("In a box").field(kHyperlinkField, Text(code), Text("x"));
  Drawing shapes;
  shapes.shape(0, Shape(202).textBox(1), {.rect = kBox});
  shapes.addTo(doc, {static_cast<uint32_t>(8 + code.size() + 5)});
}

constexpr struct {
  const char* name;
  void (*add)(WordDocument& doc);
} kParts[] = {
    {"Stories", addStories},
    {"AddressesOfFields", addFieldAddresses},
    {"TipsOfFields", addFieldTips},
    {"Fonts", addFonts},
    {"AuthorsOfComments", addAuthors},
    {"LabelsOfLists", addLabels},
    {"Bullets", addBullets},
    {"HeadingsAndBookmarks", addNavigation},
    {"AddressesOfShapes", addShapeAddresses},
    {"TextsOfShapes", addShapeTexts},
    {"Pictures", addPictures},
    {"TextBoxes", addTextBox},
};

}  // namespace

std::vector<mutation::NamedDocument> scriptDocuments() {
  std::vector<mutation::NamedDocument> documents;
  for (const auto& part : kParts) {
    WordDocument doc;
    part.add(doc);
    documents.push_back({part.name, std::move(doc)});
  }
  return documents;
}

WordDocument harmlessDocument() {
  WordDocument doc;
  doc.style(1, Style().name("heading 1").sti(1).basedOn(0));
  doc.style(2, Style().name("heading 2").sti(2).basedOn(0));
  doc.paragraph().special(kShapeMark).special(kShapeMark).special(kShapeMark);
  doc.paragraph("One").istd(1);
  doc.paragraph("Below").istd(2);
  doc.paragraph("a").footnote("Foot.").endnote("End.").annotation("Look.");
  doc.section({});
  doc.paragraph("The last section.");
  Drawing shapes;
  shapes.shape(0, Shape(20, 1025), {.rect = kBox});
  shapes.shape(1, Shape(3, 1026), {.rect = kBox});
  shapes.shape(2, Shape(3, 1027).props(Props().number(0x0181, 0x10000000).number(0x01C0, 0x08000040)),
               {.rect = kBox});
  shapes.addTo(doc);
  return doc;
}

}  // namespace safety
