#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

namespace {

using ObjectWriter::KHtmlObjectWriter;
using support::Bytes;
using support::drawing::Blip;
using support::drawing::Drawing;
using support::drawing::Inline;
using support::drawing::Props;
using support::drawing::Shape;

constexpr uint16_t kBlip = 0x4104;  // with the bit that marks a picture
constexpr uint16_t kFillBlip = 0x4186;

std::string imageData(const std::string& attributes) {
  return "<v:imagedata" + attributes + "></v:imagedata>\r\n";
}

std::string imageDataOf(const Props& props) {
  return writtenFor(props, &KHtmlObjectWriter::WriteShapeImage, 75);
}

TEST(ImageData, IsWrittenForEveryShape) {
  EXPECT_EQ(imageDataOf(Props()), imageData(""));
}

TEST(ImageData, CropAndContrast) {
  const Props props = Props()
                          .number(0x0100, 1)
                          .number(0x0101, 2)
                          .number(0x0102, 3)
                          .number(0x0103, 0xFFFFFFFC)
                          .number(0x0108, 65536)
                          .number(0x0109, 100);
  EXPECT_EQ(imageDataOf(props), imageData(R"( croptop="1f" cropbottom="2f" cropleft="3f" cropright="-4f")"
                                          R"( gain="65536f" blacklevel="100f")"));
}

TEST(ImageData, GammaIsTruncatedFirst) {
  EXPECT_EQ(imageDataOf(Props().fixed(0x010A, 1)), imageData(R"( gamma="100f")"));
  EXPECT_EQ(imageDataOf(Props().fixed(0x010A, 1.9)), imageData(R"( gamma="100f")"));
  EXPECT_EQ(imageDataOf(Props().fixed(0x010A, 0)), imageData(R"( gamma="50f")"));
  EXPECT_EQ(imageDataOf(Props().fixed(0x010A, -3)), imageData(R"( gamma="-99f")"));
}

TEST(ImageData, GrayAndBlackAndWhite) {
  EXPECT_EQ(imageDataOf(Props().flag(0x013D, true)), imageData(R"( grayscale="t")"));
  EXPECT_EQ(imageDataOf(Props().flag(0x013D, true).flag(0x013E, true)),
            imageData(R"( grayscale="t" bilevel="t")"));
  EXPECT_EQ(imageDataOf(Props().flag(0x013E, true)), imageData(""));
}

TEST(ImageData, TitleNeedsNoPicture) {
  EXPECT_EQ(imageDataOf(Props().text(0x0105, u"A\u00E9")), imageData(" o:title=\"A\xC3\xA9\""));
}

/// A page with one picture frame for each property value.
struct Pictures {
  Drawing drawing;
  uint32_t cp = 0;
  Pictures& frame(uint32_t index, uint16_t property = kBlip) {
    drawing.shape(cp, Shape(75, 1025 + cp).props(Props().number(property, index)));
    ++cp;
    return *this;
  }
};

/// The name in the "src" attribute of each shape's image element, in order; "-" for none.
std::string sourcesOf(ObjectPage& page, unsigned int shapes) {
  std::string sources;
  for (unsigned int i = 0; i < shapes; ++i) {
    const std::string markup = page.written([&](auto& writer) { writer.WriteShapeImage(page.shape(i)); });
    const size_t at = markup.find("src=\"");
    sources += at == std::string::npos ? "-" : markup.substr(at + 5, markup.find('"', at + 5) - at - 5);
    sources += ' ';
  }
  return sources;
}

TEST(Picture, IsWrittenToAFileOnce) {
  Pictures pictures;
  pictures.drawing.blip(Blip{.data = {7, 8, 9}});
  pictures.frame(1).frame(1);
  ObjectPage page(pictures.drawing);
  EXPECT_EQ(sourcesOf(page, 2), "image001.png image001.png ");
  EXPECT_EQ(page.folder().read("image001.png"), "\x07\x08\x09");
  EXPECT_FALSE(page.folder().exists("image002.png"));
}

TEST(Picture, IdentityAndNotTheIndexTellsPicturesApart) {
  Pictures pictures;
  pictures.drawing.blip(Blip{.uid = 1});
  pictures.drawing.blip(Blip{.type = 5, .uid = 1});
  pictures.drawing.blip(Blip{.type = 5, .uid = 2});
  pictures.frame(1).frame(2).frame(3);
  ObjectPage page(pictures.drawing);
  EXPECT_EQ(sourcesOf(page, 3), "image001.png image001.png image002.jpg ");
}

TEST(Picture, KeysAreUpperCaseHexadecimal) {
  Pictures pictures;
  pictures.drawing.blip(Blip{.uid = 0xAB});
  pictures.frame(1);
  ObjectPage page(pictures.drawing);
  sourcesOf(page, 1);
  EXPECT_EQ(page.objects().images.at("ABABABABABABABABABABABABABABABAB"), "image001.png");
}

TEST(Picture, FillSharesTheFile) {
  Drawing drawing;
  drawing.blip(Blip{});
  drawing.shape(0, Shape(75).props(Props().number(0x0181, 0).number(kBlip, 1).number(kFillBlip, 1)));
  ObjectPage page(drawing);
  const std::string markup = page.written([](auto& writer) { writer.WriteObject(0, false); });
  size_t count = 0;
  for (size_t at = 0; (at = markup.find("src=\"image001.png\"", at)) != std::string::npos; ++at) ++count;
  EXPECT_EQ(count, 4u);  // fill and picture, in VML and without
  EXPECT_EQ(page.objects().images.size(), 1u);
}

TEST(Picture, IndexOutsideTheStoreHasNoSource) {
  Pictures pictures;
  pictures.drawing.blip(Blip{});
  pictures.frame(0).frame(2).frame(0xFFFFFFFF).frame(0x80000000);
  ObjectPage page(pictures.drawing);
  EXPECT_EQ(sourcesOf(page, 4), "- - - - ");
}

TEST(Picture, ExtensionFollowsTheType) {
  Pictures pictures;
  for (uint8_t type = 2; type <= 7; ++type) {
    pictures.drawing.blip(Blip{.type = type, .uid = type});
    pictures.frame(type - 1u);
  }
  ObjectPage page(pictures.drawing);
  EXPECT_EQ(sourcesOf(page, 6),
            "image001.wmf image002.wmf image003.jpg image004.jpg image005.png image006.dib ");
}

TEST(Picture, OfAnUnknownTypeHasAnEmptyExtension) {
  Pictures pictures;
  pictures.drawing.blip(Blip{.type = 1});
  pictures.frame(1);
  ObjectPage page(pictures.drawing);
  EXPECT_EQ(sourcesOf(page, 1), "image001. ");
}

TEST(Picture, NumbersRunOnPast999) {
  Pictures pictures;
  pictures.drawing.blip(Blip{});
  pictures.frame(1);
  for (const size_t known : {8, 9, 98, 99, 998, 999}) {
    ObjectPage page(pictures.drawing);
    for (size_t i = 0; i < known; ++i) page.objects().images.emplace(std::to_string(i), "");
    char expected[32];
    snprintf(expected, sizeof expected, "image%03d.png ", static_cast<int>(known + 1));
    EXPECT_EQ(sourcesOf(page, 1), expected);
  }
}

TEST(Picture, OfTheDelayStreamIsReadFromThere) {
  Pictures pictures;
  pictures.drawing.blip(Blip{.data = {4, 5, 6}, .delayed = true});
  pictures.frame(1);
  ObjectPage page(pictures.drawing);
  EXPECT_EQ(sourcesOf(page, 1), "image001.png ");
  EXPECT_EQ(page.folder().read("image001.png"), "\x04\x05\x06");
}

TEST(Picture, StoredMetafileIsWrittenAsItIs) {
  Pictures pictures;
  pictures.drawing.blip(Blip{.type = 2, .data = {'e', 'm', 'f'}, .rawSize = 3, .compression = 0xFE});
  pictures.frame(1);
  ObjectPage page(pictures.drawing);
  sourcesOf(page, 1);
  EXPECT_EQ(page.folder().read("image001.wmf"), "emf");
}

TEST(Picture, DeflatedMetafileThatIsCorruptStaysDeflated) {
  Pictures pictures;
  pictures.drawing.blip(Blip{.type = 2, .data = {'e', 'm', 'f'}, .rawSize = 100, .compression = 0});
  pictures.frame(1);
  ObjectPage page(pictures.drawing);
  sourcesOf(page, 1);
  EXPECT_EQ(page.folder().read("image001.wmf"), "emf");
}

TEST(Picture, WithoutBytesIsAnEmptyFile) {
  Pictures pictures;
  pictures.drawing.blip(Blip{.data = {}});
  pictures.frame(1);
  ObjectPage page(pictures.drawing);
  EXPECT_EQ(sourcesOf(page, 1), "image001.png ");
  EXPECT_TRUE(page.folder().exists("image001.png"));
  EXPECT_EQ(page.folder().read("image001.png"), "");
}

TEST(Picture, NameStaysWhenTheFileCannotBeWritten) {
  Pictures pictures;
  pictures.drawing.blip(Blip{});
  pictures.frame(1).frame(1);
  ObjectPage page(pictures.drawing);
  page.conversion().filesDir += "/none";
  EXPECT_EQ(sourcesOf(page, 2), "image001.png image001.png ");
}

TEST(Picture, PathTooLongForItsBufferIsNotCut) {
  Pictures pictures;
  pictures.drawing.blip(Blip{});
  pictures.frame(1);
  ObjectPage page(pictures.drawing);
  page.conversion().filesDir += std::string(300, '/');
  EXPECT_EQ(sourcesOf(page, 1), "image001.png ");
  EXPECT_EQ(page.folder().files(), std::vector<std::string>{"page.htm"});
}

// Inline pictures.

/// A document with one inline picture at position 0.
support::WordDocument withInline(const Inline& picture) {
  support::WordDocument document;
  const support::Sprms run = support::drawing::pictureRun(document, picture);
  document.paragraph().special(1, run).run("text");
  return document;
}

std::string inlineOf(const Inline& picture) {
  ObjectPage page(withInline(picture));
  return page.written([](auto& writer) { writer.WriteEmbedShape(0); });
}

TEST(InlinePicture, IsWrittenTwice) {
  Inline picture;
  picture.shape = Shape(75).props(Props().number(kBlip, 1));
  picture.blips = {Blip{.data = {7, 8, 9}}};
  ObjectPage page(withInline(picture));
  EXPECT_EQ(page.written([](auto& writer) { writer.WriteEmbedShape(0); }),
            "<!--[if gte vml 1]>\r\n<v:shape o:spt=\"75\" id=\"1025\" style=\"left:0;text-align:left;"
            "width:72.00pt;height:36.00pt;z-index:0;\" coordsize=\"21600,21600\">\r\n"
            "<v:imagedata src=\"image001.png\"></v:imagedata>\r\n</v:shape><![endif]-->"
            "<![if !vml]>\r\n<div id=\"1025\" style=\"left:0;text-align:left;width:72.00pt;height:36.00pt;"
            "z-index:0;\"><img style=\"position:absolute;\" width=\"96px\" height=\"48px\""
            " src=\"image001.png\"></img></div><![endif]>");
  EXPECT_EQ(page.folder().read("image001.png"), "\x07\x08\x09");
}

TEST(InlinePicture, HasNoPositionAndNoMarginsButItsImageIsAbsolute) {
  Inline picture;
  picture.shape = Shape(75).props(Props().number(kBlip, 1));
  picture.blips = {Blip{}};
  const std::string markup = inlineOf(picture);
  EXPECT_EQ(markup.find("margin"), std::string::npos);
  size_t positions = 0;
  for (size_t at = 0; (at = markup.find("position:", at)) != std::string::npos; ++at) ++positions;
  EXPECT_EQ(positions, 1u);
  EXPECT_NE(markup.find("<img style=\"position:absolute;\""), std::string::npos);
}

TEST(InlinePicture, MetafileIsInflated) {
  Inline picture;
  picture.shape = Shape(75).props(Props().number(kBlip, 1));
  // "stored" deflated by zlib without compression.
  const Bytes deflated = {0x78, 0x01, 0x01, 6,   0,    0xF9, 0xFF, 's', 't',
                          'o',  'r',  'e',  'd', 0x09, 0x3C, 0x02, 0x92};
  picture.blips = {Blip{.type = 2, .data = deflated, .rawSize = 6, .compression = 0}};
  ObjectPage page(withInline(picture));
  page.written([](auto& writer) { writer.WriteEmbedShape(0); });
  EXPECT_EQ(page.folder().read("image001.wmf"), "stored");
}

TEST(InlinePicture, IsScaled) {
  Inline picture;
  picture.scaleX = 500;
  picture.scaleY = 1500;
  const std::string markup = inlineOf(picture);
  EXPECT_NE(markup.find("width:36.00pt;height:54.00pt;"), std::string::npos);
}

TEST(InlinePicture, LargestScaleDoesNotOverflow) {
  Inline picture;
  picture.goalWidth = picture.scaleX = 0xFFFF;
  EXPECT_NE(inlineOf(picture).find("width:214741.80pt;"), std::string::npos);
}

TEST(InlinePicture, ModeTwoHasNoFallback) {
  Inline picture;
  picture.kind = 2;
  const std::string markup = inlineOf(picture);
  EXPECT_NE(markup.find("<v:shape"), std::string::npos);
  EXPECT_EQ(markup.find("<![if !vml]>"), std::string::npos);
}

TEST(InlinePicture, LineHasItsEndsInPoints) {
  Inline picture;
  picture.shape = Shape(20);
  EXPECT_NE(inlineOf(picture).find(" from=\"0.00pt,0.00pt\" to=\"72.00pt,36.00pt\""), std::string::npos);
}

TEST(InlinePicture, ChildHasABoxWithoutUnit) {
  Inline picture;
  picture.shape = Shape(75).flags(2);
  EXPECT_NE(inlineOf(picture).find("margin-left:0.00;margin-top:0.00;width:0.00;height:0.00;"),
            std::string::npos);
}

TEST(InlinePicture, TellsNoWrapping) {
  EXPECT_EQ(inlineOf(Inline()).find("w:wrap"), std::string::npos);
}

TEST(InlinePicture, NeedsAPictureAtThePosition) {
  ObjectPage page(withInline(Inline()));
  EXPECT_EQ(page.written([](auto& writer) { EXPECT_EQ(writer.WriteEmbedShape(1), Status::kNothing); }), "");
}

TEST(InlinePicture, ThatIsAGroupIsNone) {
  Inline picture;
  picture.shape = Shape(0).flags(1);
  EXPECT_EQ(inlineOf(picture), "");
}

TEST(InlinePicture, PropertyAndNotItsValueTellsThePlaceInTheList) {
  Inline picture;
  picture.shape = Shape(75).props(Props().number(0x0181, 0).number(kBlip, 77).number(kFillBlip, 99));
  picture.blips = {Blip{.uid = 1}};
  const std::string markup = inlineOf(picture);
  EXPECT_NE(markup.find("<v:fill color=\"#000000\"></v:fill>"), std::string::npos);
  EXPECT_NE(markup.find("<v:imagedata src=\"image001.png\">"), std::string::npos);
}

TEST(InlinePicture, TypeZeroIsNoPicture) {
  Inline picture;
  picture.shape = Shape(75).props(Props().number(kBlip, 1));
  picture.blips = {Blip{.type = 0}};
  EXPECT_EQ(inlineOf(picture).find("src="), std::string::npos);
}

TEST(InlinePicture, SharesItsFileWithTheStore) {
  Inline picture;
  picture.shape = Shape(75).props(Props().number(kBlip, 1));
  picture.blips = {Blip{.uid = 9}};
  support::WordDocument document = withInline(picture);
  Drawing drawing;
  drawing.blip(Blip{.uid = 9});
  drawing.shape(1, Shape(75).props(Props().number(kBlip, 1)));
  drawing.addTo(document);
  ObjectPage page(document);
  page.written([](auto& writer) {
    writer.WriteEmbedShape(0);
    writer.WriteObject(1, false);
  });
  EXPECT_EQ(page.objects().images.size(), 1u);
}

TEST(InlinePicture, FloatingShapeBehindItFloats) {
  support::WordDocument document = withInline(Inline());
  Drawing().shape(1, Shape(1)).addTo(document);
  ObjectPage page(document);
  const std::string markup = page.written([](auto& writer) {
    writer.WriteEmbedShape(0);
    writer.WriteObject(1, false);
  });
  EXPECT_NE(markup.find("position:absolute;left:0;"), std::string::npos);
}

}  // namespace
