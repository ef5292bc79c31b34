#include <gtest/gtest.h>

#include "flow/walked_document.h"
#include "support/drawing_writer.h"
#include "support/named_sprms.h"
#include "support/picture_writer.h"

using namespace flow_test;
using namespace support;

namespace {

constexpr uint8_t kAutoNumField = 54, kListNumField = 90;
constexpr uint8_t kBulletFormat = 23;

/// Each paragraph as its label, a bar, and its text; a picture in the place of the label as "[picture]".
class Items : public pagerex::FlowHandler {
 public:
  std::u16string told;

  void BeginParagraph(const pagerex::ParagraphFacts& facts) override {
    if (facts.labelPicture) told += facts.labelPicture->source ? u"[picture]" : u"[drawing]";
    told += facts.label;
    told += u'|';
    level = facts.properties.listLevel;
    number = facts.number;
  }
  void EndParagraph() override { told += u'\n'; }
  void Text(std::u16string_view text, const pagerex::RunProperties&) override { told += text; }

  uint8_t level = 0;
  int32_t number = 0;
};

std::u16string itemsOf(const WordDocument& doc) {
  Items items;
  walkInto(doc.build(), items);
  return items.told;
}

List outline() {
  return {.lsid = 7,
          .levels = {{.text = u"%1."}, {.text = u"%1.%2"}, {.numberFormat = 4, .text = u"%3)", .follow = 1}}};
}

}  // namespace

TEST(WalkLists, LabelsHaveTheNumbersOfAllLevels) {
  WordDocument doc;
  const uint16_t list = doc.list(outline());
  doc.paragraph("a").sprms({listItem(list, 0)});
  doc.paragraph("b").sprms({listItem(list, 1)});
  doc.paragraph("c").sprms({listItem(list, 1)});
  doc.paragraph("d").sprms({listItem(list, 2)});
  doc.paragraph("text");
  doc.paragraph("e").sprms({listItem(list, 0)});
  doc.paragraph("f").sprms({listItem(list, 1)});
  EXPECT_EQ(itemsOf(doc), u"1.|a\n1.1|b\n1.2|c\na)|d\n|text\n2.|e\n2.1|f\n");
}

TEST(WalkLists, AStyleNumbersItsParagraphs) {
  WordDocument doc;
  const uint16_t list = doc.list(outline());
  doc.style(20, Style().name("Item").basedOn(0).papx({listItem(list, 0)}));
  doc.style(21, Style().name("Item below").basedOn(20).papx({sprm(0x260A, 1)}));
  doc.paragraph("a").istd(20);
  doc.paragraph("b").istd(21);
  doc.paragraph("c").istd(20);
  EXPECT_EQ(itemsOf(doc), u"1.|a\n1.1|b\n2.|c\n");
}

TEST(WalkLists, AParagraphTakesItselfOut) {
  WordDocument doc;
  const uint16_t list = doc.list(outline());
  doc.style(20, Style().name("Item").basedOn(0).papx({listItem(list, 0)}));
  doc.paragraph("a").istd(20);
  doc.paragraph("b").istd(20).sprms({sprm(0x460B, 0)});
  doc.paragraph("c").istd(20);
  EXPECT_EQ(itemsOf(doc), u"1.|a\n|b\n2.|c\n");
}

TEST(WalkLists, AnotherUseOfAListMayBeginAnew) {
  WordDocument doc;
  const uint16_t list = doc.list(outline());
  const uint16_t again = doc.listOverride({.lsid = 7, .levels = {{.level = 0, .startAt = uint16_t{1}}}});
  doc.paragraph("a").sprms({listItem(list, 0)});
  doc.paragraph("b").sprms({listItem(list, 0)});
  doc.paragraph("c").sprms({listItem(again, 0)});
  EXPECT_EQ(itemsOf(doc), u"1.|a\n2.|b\n1.|c\n");
}

TEST(WalkLists, HiddenItemsAreNotCounted) {
  WordDocument doc;
  const uint16_t list = doc.list(outline());
  doc.paragraph("a").sprms({listItem(list, 0)});
  doc.paragraph("b", {sprm(0x083C, 1)}).sprms({listItem(list, 0)}).mark({sprm(0x083C, 1)});
  doc.paragraph("c").sprms({listItem(list, 0)});
  EXPECT_EQ(itemsOf(doc), u"1.|a\n2.|c\n");
}

TEST(WalkLists, BulletsAreUnicode) {
  WordDocument doc;
  doc.font("Times New Roman");
  const uint16_t symbol = doc.font("Symbol");
  const uint16_t list = doc.list({.lsid = 3, .levels = {bulletLevel(0xF0B7, symbol)}});
  doc.paragraph("a").sprms({listItem(list, 0)});
  EXPECT_EQ(itemsOf(doc), u"\u2022|a\n");
}

TEST(WalkLists, ABulletMayBeAPicture) {
  WordDocument doc;
  const Sprms picture = drawing::pictureRun(
      doc, {.shape = drawing::Shape(75).props(drawing::Props().number(0x4104, 1)), .blips = {{.uid = 0x55}}});
  doc.paragraph().bookmarkStart("_PictureBullets").special(1, picture).bookmarkEnd("_PictureBullets");
  doc.font("Times New Roman");
  ListLevel bullet = bulletLevel(0xF0B7, doc.font("Symbol"));
  bullet.numberFormat = kBulletFormat;
  bullet.chpx.add(sprm(0x6887, 0)).add(sprm(0x4888, 1));
  const uint16_t list = doc.list({.lsid = 3, .levels = {bullet}});
  doc.paragraph("a").sprms({listItem(list, 0)});
  EXPECT_EQ(itemsOf(doc), u"|\n[picture]\u2022|a\n");
}

TEST(WalkLists, FieldsNumberParagraphsAndPlaces) {
  WordDocument doc;
  doc.paragraph().field(kAutoNumField, " AUTONUM ").run(" a");
  doc.paragraph().field(kAutoNumField, " AUTONUM ").run(" b ").field(kListNumField, " LISTNUM ");
  EXPECT_EQ(itemsOf(doc), u"|1. a\n|2. b 1)\n");
}
