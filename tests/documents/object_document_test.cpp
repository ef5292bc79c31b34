#include <gtest/gtest.h>

#include "base/byte_view.h"
#include "documents/converted.h"
#include "support/drawing_writer.h"

// Shapes and pictures in whole documents.

namespace {

using support::Bytes;
using support::sprm;
using support::WordDocument;
using support::drawing::Blip;
using support::drawing::Drawing;
using support::drawing::Inline;
using support::drawing::pictureRun;
using support::drawing::Props;
using support::drawing::Rect;
using support::drawing::Shape;

constexpr Rect kBox = {0, 0, 2000, 1000};
constexpr uint16_t kVanish = 0x083C;
constexpr uint16_t kOle2 = 0x080A;

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

size_t countOf(const std::string& text, const std::string& part) {
  size_t count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

/// "a", a drawn object, "b".
WordDocument withShape(const Shape& shape, const support::Sprms& run = {}) {
  WordDocument document;
  document.paragraph().run("a").special(8, run).run("b");
  Drawing().shape(1, shape, {.rect = kBox}).addTo(document);
  return document;
}

/// "a", an inline picture, "b".
WordDocument withPicture(const support::Sprms& more = {}) {
  WordDocument document;
  Inline picture;
  picture.shape = Shape(75).props(Props().number(0x4104, 1));
  picture.blips = {Blip{.data = {7, 8, 9}}};
  support::Sprms run = pictureRun(document, picture);
  document.paragraph().run("a").special(1, run.add(more)).run("b");
  return document;
}

TEST(ObjectDocument, DrawnObjectStandsInTheText) {
  const Converted converted(withShape(Shape(201)));
  EXPECT_EQ(converted.result, 0);
  EXPECT_TRUE(has(converted.text(), ">a</span><!--[if gte vml 1]>\r\n<v:shape o:spt=\"201\""));
  EXPECT_TRUE(has(converted.text(), "</div><![endif]><span>b</span>") ||
              has(converted.text(), "</div><![endif]><span style=\"line-height:10.5pt;\">b</span>"))
      << converted.text();
}

TEST(ObjectDocument, InlinePictureStandsInTheText) {
  const Converted converted(withPicture());
  EXPECT_TRUE(has(converted.text(), ">a</span><!--[if gte vml 1]>\r\n<v:shape o:spt=\"75\" id=\"1025\""));
  EXPECT_TRUE(has(converted.text(),
                  "<img style=\"position:absolute;\" width=\"96px\" height=\"48px\""
                  " src=\"image001.png\"></img></div><![endif]>"));
  EXPECT_EQ(converted.file("image001.png"), "\x07\x08\x09");
}

TEST(ObjectDocument, EachViewShowsItsObjects) {
  const auto shows = [](const WordDocument& document, const std::string& view) {
    const Converted converted(document, {"view=" + view, "pagesize=100"});
    return has(view == "preview" ? converted.main() : converted.page(), "<![if !vml]>");
  };
  EXPECT_TRUE(shows(withShape(Shape(1)), "normal"));
  EXPECT_TRUE(shows(withShape(Shape(1)), "mulpages"));
  EXPECT_FALSE(shows(withShape(Shape(1)), "phone"));
  EXPECT_FALSE(shows(withShape(Shape(1)), "preview"));
  EXPECT_TRUE(shows(withPicture(), "normal"));
  EXPECT_TRUE(shows(withPicture(), "mulpages"));
  EXPECT_TRUE(shows(withPicture(), "phone"));
  EXPECT_FALSE(shows(withPicture(), "preview"));
}

/// What reaches the page of a shape, a picture and an OLE object in each view.
TEST(ObjectDocument, EachViewHasItsObjects) {
  const struct {
    std::string view;
    size_t shapes, pictures;
  } rows[] = {{"normal", 1, 1}, {"phone", 0, 1}, {"preview", 0, 0}, {"mulpages", 1, 1}};
  for (const auto& row : rows) {
    WordDocument document = withPicture();
    const support::Sprms ole = pictureRun(document, Inline{.shape = Shape(75, 3000)});
    document.paragraph().special(8).special(1, support::Sprms(ole).add({sprm(kOle2, 1)}));
    Drawing().shape(4, Shape(1, 2000), {.rect = kBox}).addTo(document);
    const Converted converted(document, {"view=" + row.view, "pagesize=1000"});
    const std::string page = row.view == "preview" ? converted.main() : converted.page();
    EXPECT_EQ(countOf(page, "<div id=\"2000\""), row.shapes) << row.view;
    EXPECT_EQ(countOf(page, "<div id=\"1025\""), row.pictures) << row.view;
    EXPECT_EQ(countOf(page, "id=\"3000\""), 0u) << row.view;
  }
}

TEST(ObjectDocument, PictureMarkWithoutPictureWritesNothing) {
  WordDocument document;
  document.paragraph().run("a").special(1).run("b");
  EXPECT_EQ(Converted(document).text(), p(span("a") + span("b")));
}

TEST(ObjectDocument, ObjectMarkWithoutAnchorWritesNothing) {
  WordDocument document;
  document.paragraph().run("a").special(8).run("b");
  EXPECT_EQ(Converted(document).text(), p(span("a") + span("b")));
}

TEST(ObjectDocument, ObjectMarkOfAShapeThatIsNotThereWritesNothing) {
  WordDocument document;
  document.paragraph().run("a").special(8).run("b");
  Drawing().shape(Shape(1)).anchor(1, 77).addTo(document);
  EXPECT_EQ(Converted(document).text(), p(span("a") + span("b")));
}

/// The anchors are those of the main text, whichever text the object's character stands in.
TEST(ObjectDocument, ObjectInANoteIsTheOneAtItsPositionInTheMainText) {
  WordDocument document;
  document.paragraph("main text").footnote([](support::Story& story) { story.paragraph().special(8); });
  // The note's own text begins with its reference mark.
  Drawing().shape(0, Shape(1, 2000)).shape(1, Shape(1, 2001)).shape(2, Shape(1, 2002)).addTo(document);
  const std::string page = Converted(document).page();
  EXPECT_EQ(countOf(page, "<div id=\"20"), 1u) << page;
}

TEST(ObjectDocument, HeadersAreNotWritten) {
  WordDocument document = withShape(Shape(1));
  document.story(mso_word::SUBDOC_HEADER).paragraph().special(8).run("header");
  const std::string page = Converted(document).page();
  EXPECT_EQ(countOf(page, "<![if !vml]>"), 1u);
  EXPECT_FALSE(has(page, "header"));
}

/// In a drawing with the label 1 stand the shapes of the headers.
TEST(ObjectDocument, ShapeOfTheHeaderDrawingIsNotFound) {
  WordDocument document;
  document.paragraph().run("a").special(8).run("b");
  Drawing().shape(1, Shape(1)).addTo(document);
  const uint8_t mainLabel = 0;
  document.editTable(mso_word::FCLCB_DRAWINGS, [mainLabel](Bytes& table) {
    const size_t groupEnd = 8 + ByteView(table.data(), table.size()).u32(4);
    ASSERT_EQ(table[groupEnd], mainLabel);
    table[groupEnd] = 1;
  });
  EXPECT_EQ(Converted(document).text(), p(span("a") + span("b")));
}

TEST(ObjectDocument, HiddenRunsShowNone) {
  for (const char* view : {"view=normal", "view=mulpages", "view=phone"}) {
    const std::vector<std::string> options = {view, "pagesize=100"};
    EXPECT_FALSE(has(Converted(withShape(Shape(1), {sprm(kVanish, 1)}), options).page(), "<![if !vml]>"));
    EXPECT_FALSE(has(Converted(withPicture({sprm(kVanish, 1)}), options).page(), "<![if !vml]>"));
  }
}

TEST(ObjectDocument, OleObjectsShowNoPicture) {
  for (const char* view : {"view=normal", "view=mulpages", "view=phone"}) {
    const Converted converted(withPicture({sprm(kOle2, 1)}), {view, "pagesize=100"});
    EXPECT_FALSE(has(converted.page(), "<![if !vml]>")) << view;
  }
}

TEST(ObjectDocument, PictureInATableHasNoLeft) {
  WordDocument document;
  Inline picture;
  const support::Sprms run = pictureRun(document, picture);
  document.cell().special(1, run);
  document.rowEnd({support::defTableSprm({0, 1000})});
  EXPECT_TRUE(has(Converted(document).page(), " style=\"text-align:left;width:72.00pt;"));
}

TEST(ObjectDocument, PageBreakBehindTheAnchorWrapsTheObject) {
  WordDocument document;
  document.paragraph().special(8).run("\f");
  Drawing().shape(0, Shape(201), {.rect = kBox}).addTo(document);
  EXPECT_TRUE(has(Converted(document).page(), "<o:wrapblock\r\n><v:shape"));
}

TEST(ObjectDocument, PicturesOfNotesShareTheFiles) {
  WordDocument document = withPicture();
  Inline picture;
  picture.shape = Shape(75).props(Props().number(0x4104, 1));
  picture.blips = {Blip{.data = {7, 8, 9}}};
  const support::Sprms run = pictureRun(document, picture);
  document.paragraph("note").footnote([&run](support::Story& story) { story.paragraph().special(1, run); });
  const Converted converted(document);
  EXPECT_EQ(countOf(converted.page(), "<img "), 2u);
  EXPECT_FALSE(converted.has("image002.png"));
}

// Text boxes.

/// A document whose drawn object 0 shows text box 1; the boxes' texts are the paragraphs of the story.
WordDocument withTextBoxes(const std::vector<std::string>& texts, uint16_t number = 1, uint16_t type = 202) {
  WordDocument document;
  document.paragraph().special(8).run("main");
  std::vector<uint32_t> lengths;
  for (const std::string& text : texts) {
    document.story(mso_word::SUBDOC_TEXTBOX).paragraph(text);
    lengths.push_back(static_cast<uint32_t>(text.size() + 1));
  }
  Drawing().shape(0, Shape(type).textBox(number), {.rect = kBox}).addTo(document, lengths);
  return document;
}

TEST(TextBoxDocument, TextStandsInBothForms) {
  const std::string page = Converted(withTextBoxes({"Inside", "Other"})).page();
  EXPECT_TRUE(has(page, "<v:textbox inset=\"7.20pt,3.60pt,7.20pt,3.60pt\">\r\n<div><p class=\"std0\""));
  EXPECT_TRUE(has(page, "padding:3.60pt 7.20pt 3.60pt 7.20pt;\"><div><p class=\"std0\""));
  EXPECT_EQ(countOf(page, ">Inside</span></p>\r\n</div>\r\n"), 2u);
  EXPECT_FALSE(has(page, "Other"));
}

/// A text box as a whole, both forms byte for byte.
TEST(TextBoxDocument, IsWrittenAsAWhole) {
  const std::string place =
      "position:absolute;left:0;text-align:left;margin-left:0.00pt;margin-top:0.00pt;width:100.00pt;"
      "height:50.00pt;z-index:1;";
  const std::string text = "<div>" + p(span("Inside")) + "</div>\r\n";
  EXPECT_EQ(Converted(withTextBoxes({"Inside"})).text(),
            p("<!--[if gte vml 1]>\r\n<v:shape o:spt=\"202\" id=\"1025\" style=\"" + place +
              "\" coordsize=\"21600,21600\">\r\n"
              "<v:textbox inset=\"7.20pt,3.60pt,7.20pt,3.60pt\">\r\n" +
              text +
              "</v:textbox>\r\n<v:imagedata></v:imagedata>\r\n</v:shape><![endif]--><![if !vml]>\r\n"
              "<div id=\"1025\" style=\"" +
              place +
              "background:#ffffff;border-color:#000000;border-style:solid;border-width:1.000000pt;"
              "word-wrap:break-word;overflow:hidden;\">"
              "<div style=\"position:relative;padding:3.60pt 7.20pt 3.60pt 7.20pt;\">" +
              text + "</div></div><![endif]>" + span("main")));
}

TEST(TextBoxDocument, NumberTellsTheText) {
  const std::string page = Converted(withTextBoxes({"One", "Two", "Three"}, 2)).page();
  EXPECT_EQ(countOf(page, ">Two</span>"), 2u);
  EXPECT_FALSE(has(page, "One"));
}

TEST(TextBoxDocument, NumberOutsideTheTableIsEmpty) {
  for (const uint16_t number : {0, 2, 0xFFFF}) {
    const std::string page = Converted(withTextBoxes({"Inside"}, number)).page();
    EXPECT_EQ(countOf(page, "<div></div>\r\n"), 2u) << number;
    EXPECT_FALSE(has(page, "Inside"));
  }
}

TEST(TextBoxDocument, OtherShapesShowTheirTextInVmlOnly) {
  EXPECT_EQ(countOf(Converted(withTextBoxes({"Inside"}, 1, 2)).page(), ">Inside</span>"), 1u);
}

TEST(TextBoxDocument, IsWrittenInFullInAPagedView) {
  const std::string text(300, 'x');
  const Converted converted(withTextBoxes({text}), {"view=mulpages", "pagesize=10"});
  EXPECT_EQ(countOf(converted.page(), ">" + text + "</span>"), 2u);
}

TEST(TextBoxDocument, MainTextGoesOnAsBefore) {
  const Converted converted(withTextBoxes({"Inside"}));
  EXPECT_TRUE(has(converted.text(), "main</span></p>"));
}

/// Text boxes that hold drawn objects; the anchors of all stories are those of the main text. The first
/// object is anchored at position 100 of the main text, the others by the places where text boxes have
/// theirs.

std::string chained(const std::vector<uint32_t>& showsAt, uint32_t boxes) {
  // Box i is one paragraph, a drawn object: 2 characters, the object at 2 i.
  WordDocument document;
  document.paragraph().run(std::string(1000, '.')).special(8).run("main");
  std::vector<uint32_t> lengths;
  for (uint32_t i = 0; i < boxes; ++i) {
    document.story(mso_word::SUBDOC_TEXTBOX).paragraph().special(8);
    lengths.push_back(2);
  }
  Drawing drawing;
  drawing.shape(1000, Shape(202, 1).textBox(1));
  for (uint32_t i = 0; i < showsAt.size(); ++i) {
    drawing.shape(2 * i, Shape(202, 2 + i).textBox(static_cast<uint16_t>(showsAt[i])));
  }
  drawing.addTo(document, lengths);
  return Converted(document).page();
}

TEST(TextBoxDocument, ThatShowsItselfIsEmptyInside) {
  const std::string page = chained({1}, 1);
  EXPECT_TRUE(has(page, "main"));
  EXPECT_EQ(countOf(page, "id=\"1\""), 2u);
  // Both forms of the box inside, in both forms of the box around.
  EXPECT_EQ(countOf(page, "id=\"2\""), 4u);
  EXPECT_EQ(countOf(page, "<div></div>\r\n"), 4u);
}

TEST(TextBoxDocument, RingOfBoxesEnds) {
  const std::string page = chained({2, 3, 1}, 3);
  EXPECT_TRUE(has(page, "main"));
  EXPECT_EQ(countOf(page, "id=\"4\""), 16u);
}

TEST(TextBoxDocument, LongChainOfBoxesEnds) {
  std::vector<uint32_t> next;
  for (uint32_t i = 0; i < 200; ++i) next.push_back(i + 2);
  const std::string page = chained(next, 200);
  EXPECT_TRUE(has(page, "main"));
  EXPECT_LT(page.size(), 4000000u);
}

// Damage.

/// A document with a group, text boxes, pictures, paths, links.
WordDocument withEverything() {
  WordDocument document;
  Inline inlined;
  inlined.shape = Shape(75).props(Props().number(0x4104, 1));
  inlined.blips = {Blip{.uid = 3},
                   Blip{.type = 3, .data = Bytes(50), .uid = 4, .rawSize = 100, .compression = 0}};
  const support::Sprms run = pictureRun(document, inlined);
  document.paragraph().special(8).special(8).run("text").special(1, run);
  document.story(mso_word::SUBDOC_TEXTBOX).paragraph("Inside").special(8);
  Drawing drawing;
  drawing.blip(Blip{.uid = 1});
  drawing.blip(
      Blip{.type = 2, .data = Bytes(40), .uid = 2, .rawSize = 90, .compression = 0, .delayed = true});
  const Props path = Props()
                         .number(0x4104, 2)
                         .text(0x00C0, u"Art")
                         .array(0x0145, 3, 8, Bytes(24))
                         .array(0x0146, 2, 2, {0, 0x40, 2, 0})
                         .array(0x0197, 2, 8, Bytes(16))
                         .complex(0x0382, Bytes(60))
                         .flag(0x01BB, true)
                         .flag(0x023E, true)
                         .flag(0x02BC, true);
  const Shape inner = Shape(0, 12).at({0, 0, 10, 10}).group({0, 0, 5, 5}, {Shape(3, 13).at({1, 1, 2, 2})});
  drawing.shape(0, Shape(0, 10).group({0, 0, 100, 100}, {Shape(202, 11).at({0, 0, 9, 9}).textBox(1), inner}));
  drawing.shape(1, Shape(20, 14).props(path), {.rect = kBox, .wrap = 1});
  drawing.addTo(document, {8});
  return document;
}

TEST(DamagedDrawing, EveryByteOfTheDrawingMayBeAnything) {
  const auto original = std::make_shared<size_t>(0);
  WordDocument probe = withEverything();
  probe.editTable(mso_word::FCLCB_DRAWINGS, [original](Bytes& table) { *original = table.size(); });
  EXPECT_EQ(Converted(probe).result, 0);
  for (size_t at = 0; at < *original; at += 3) {
    WordDocument document = withEverything();
    document.editTable(mso_word::FCLCB_DRAWINGS,
                       [at](Bytes& table) { table[at] ^= static_cast<uint8_t>(at % 5 ? 0xFF : 0x81); });
    EXPECT_EQ(Converted(document).result, 0) << at;
  }
}

TEST(DamagedDrawing, MayBeCutAnywhere) {
  for (size_t kept = 1; kept < 900; kept += 17) {
    WordDocument document = withEverything();
    document.editTable(mso_word::FCLCB_DRAWINGS,
                       [kept](Bytes& table) { table.resize(std::min(kept, table.size())); });
    EXPECT_EQ(Converted(document).result, 0) << kept;
  }
}

TEST(DamagedDrawing, InlinePictureMayBeAnything) {
  for (size_t at = 0; at < 400; at += 3) {
    WordDocument document = withEverything();
    document.editData([at](Bytes& data) {
      if (at < data.size()) data[at] ^= static_cast<uint8_t>(at % 5 ? 0xFF : 0x81);
    });
    EXPECT_EQ(Converted(document).result, 0) << at;
  }
}

TEST(DamagedDrawing, WritesNothingOutsideTheFolder) {
  const Converted converted(withEverything());
  for (const std::string& name : converted.folder.files()) {
    EXPECT_TRUE(name == "in.doc" || name == "out.htm" || name.rfind("out.files/", 0) == 0) << name;
  }
}

#if GTEST_HAS_DEATH_TEST
TEST(ShapeScriptDocument, FileIsThereWhenTheConversionReturns) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      std::exit(has(Converted(withShape(Shape(3))).file("shapejs.js"), "function drawEllipse") ? 0 : 1),
      testing::ExitedWithCode(0), "");
}
#endif

}  // namespace
