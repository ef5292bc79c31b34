#include <gtest/gtest.h>

#include <algorithm>

#include "flow/walked_document.h"
#include "support/drawing_writer.h"
#include "support/picture_writer.h"

using namespace flow_test;
using namespace support;

namespace {

/// Counts the characters of descriptions, and the pictures.
class Pictures : public pagerex::FlowHandler {
 public:
  size_t characters = 0, count = 0;

  void Text(std::u16string_view, const pagerex::RunProperties&) override {}
  void Picture(const pagerex::PictureFacts& facts) override {
    characters += facts.description.size();
    ++count;
  }
};

}  // namespace

TEST(WalkLimits, DescriptionsOfOnePictureAreNotToldWithoutEnd) {
  WordDocument doc;
  const std::u16string description(20000, u'x');
  const Sprms picture = drawing::pictureRun(
      doc, {.shape = drawing::Shape(75).props(drawing::Props().number(0x4104, 1).text(0xC381, description)),
            .blips = {{.uid = 0x55}}});
  Paragraph& paragraph = doc.paragraph();
  constexpr size_t kPictures = 3000;
  for (size_t i = 0; i < kPictures; ++i) paragraph.special(1, picture);
  const Bytes file = doc.build();
  Pictures told;
  const pagerex::Warnings warnings = walkInto(file, told);
  EXPECT_EQ(told.count, kPictures);
  EXPECT_GE(told.characters, description.size());
  EXPECT_LE(told.characters, 8 * file.size() + (1 << 16));
  EXPECT_TRUE(std::any_of(warnings.all().begin(), warnings.all().end(), [](const pagerex::Warning& warning) {
    return warning.code == pagerex::WarningCode::kWorkLimit;
  }));
}
