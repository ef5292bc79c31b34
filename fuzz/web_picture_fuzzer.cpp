// Makes of any picture what browsers read, by what its bytes are.

#include "picture_check.h"

using namespace pagerex;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  const ByteView bytes(input, size);
  fuzz::PictureText made;
  const PictureResult result = writeWebPicture(bytes, {}, made);
  fuzz::checkPicture(result, kindOfPicture(bytes), made.view());
  return 0;
}
