// Draws records of EMF+. Input: the records alone, which lie in one comment, or, where the last byte is odd,
// in two.

#include <algorithm>

#include "picture_check.h"
#include "pictures/metafile.h"
#include "record_changes.h"
#include "seed_pictures.h"

using namespace pagerex;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  const size_t half = size > 0 && input[size - 1] % 2 ? size / 2 : size;
  const support::Bytes file = fuzz::emfWith(
      {fuzz::emfPlusComment({input, input + half}), fuzz::emfPlusComment({input + half, input + size})});
  fuzz::PictureText made;
  const PictureResult result = playEmf(ByteView(file.data(), file.size()), {}, made);
  fuzz::checkPicture(result, PictureKind::kEmf, made.view());
  return 0;
}

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned int seed) {
  fuzz::Random random(seed);
  support::Bytes bytes(data, data + size);
  fuzz::changeRecordList(bytes, 0, fuzz::kEmfPlusForm, maxSize - std::min(maxSize, size), random);
  return fuzz::copyOut(bytes, data, maxSize);
}

extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* one, size_t oneSize, const uint8_t* other,
                                            size_t otherSize, uint8_t* out, size_t maxSize,
                                            unsigned int seed) {
  fuzz::Random random(seed);
  support::Bytes bytes(one, one + oneSize);
  fuzz::takeRecord(bytes, 0, support::Bytes(other, other + otherSize), 0, fuzz::kEmfPlusForm, random);
  return fuzz::copyOut(bytes, out, maxSize);
}
