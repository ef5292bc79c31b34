// Writes a device-independent bitmap as PNG. Input: 16 bytes that tell what is made of its pixels, then the
// bitmap.

#include "picture_check.h"
#include "pictures/bitmap.h"

using namespace pagerex;

namespace {

constexpr size_t kChoices = 16;

PixelChange changeOf(ByteView choices, const Dib& dib) {
  PixelChange change;
  const uint8_t flags = choices.u8(0);
  if (flags & 1) {
    change.left = choices.i16(4);
    change.top = choices.i16(6);
    change.width = choices.i16(8);
    change.height = choices.i16(10);
  }
  change.alpha = static_cast<PixelChange::Alpha>(choices.u8(1) % 3);
  change.hasKey = flags & 2;
  change.key = choices.u32(12) & 0xFFFFFF;
  if (flags & 4) change.operation = choices.u8(2) & 15;
  change.pattern = 0x80FF00;
  change.hasInks = flags & 8;
  change.inks[1] = 0x0000FF;
  if (flags & 16) change.mask = &dib;
  change.maskLeft = choices.u8(3) & 7;
  return change;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  const ByteView all(input, size);
  const Dib dib = packedDib(all.part(kChoices));
  fuzz::PictureText made;
  const bool isMade = writePng(dib, changeOf(all.part(0, kChoices), dib), made);
  fuzz::checkPicture(isMade ? PictureResult::kWhole : PictureResult::kNothing, PictureKind::kDib,
                     made.view());
  return 0;
}
