#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

// The writer of shapes without a document behind it.

namespace {

using ObjectWriter::MsoROShape;
using support::drawing::Props;
using support::drawing::Shape;

/// Each shape stands at 1, 2 and is 30 by 40.
class PlainWriter : public ObjectWriter::KHtmlObjectWriter {
 public:
  Status Init(ObjectWriter::IEnv* env) override {
    env_ = env;
    return Status::kOk;
  }
  Status WriteImage(PID, int, std::string&) override { return Status::kNothing; }
  float GetOBJLeft(const MsoROShape&) override { return 1; }
  float GetOBJTop(const MsoROShape&) override { return 2; }
  float GetOBJWidth(const MsoROShape&) override { return 30; }
  float GetOBJHeight(const MsoROShape&) override { return 40; }
};

std::string positionOf(const Shape& shape) {
  ObjectPage page(shape);
  PlainWriter writer;
  std::string style;
  writer.GetShapePos(page.shape(), style);
  return style;
}

TEST(PlainShapePosition, HasABoxInPoints) {
  EXPECT_EQ(positionOf(Shape(1)),
            "position:absolute;margin-left:1.00pt;margin-top:2.00pt;width:30.00pt;height:40.00pt;z-index:1;");
}

TEST(PlainShapePosition, ChildHasNoUnit) {
  EXPECT_EQ(positionOf(Shape(1).flags(2)),
            "position:absolute;margin-left:1.00;margin-top:2.00;width:30.00;height:40.00;z-index:1;");
}

TEST(PlainShapePosition, LineHasNoBox) {
  EXPECT_EQ(positionOf(Shape(20).props(Props().fixed(0x0004, 30))),
            "position:absolute;rotation:30;z-index:1;");
}

TEST(PlainShapePosition, KeepsItsOrderBehindTheText) {
  EXPECT_EQ(positionOf(Shape(20).props(Props().flag(0x03BA, true))), "position:absolute;z-index:1;");
}

TEST(PlainWriter, HasNoTextBoxes) {
  ObjectPage page(Shape(202).textBox(1));
  PlainWriter writer;
  EXPECT_EQ(writer.WriteTextBoxProp(page.shape()), Status::kNothing);
  EXPECT_EQ(writer.WriteTextBoxTxt_NV(page.shape()), Status::kNothing);
}

TEST(DocWriter, NeedsAnEnvironment) {
  EXPECT_EQ(ObjectWriter::CreateDocHtmlObjectWriter()->Init(nullptr), Status::kInvalidArgument);
}

}  // namespace
