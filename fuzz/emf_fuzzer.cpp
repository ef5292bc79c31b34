// Plays the records of an enhanced metafile, with those of EMF+ in its comments.

#include <algorithm>

#include "picture_check.h"
#include "pictures/metafile.h"
#include "record_changes.h"

using namespace pagerex;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  fuzz::PictureText made;
  const PictureResult result = playEmf(ByteView(input, size), {72, 54}, made);
  fuzz::checkPicture(result, PictureKind::kEmf, made.view());
  return 0;
}

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned int seed) {
  fuzz::Random random(seed);
  support::Bytes bytes(data, data + size);
  fuzz::changeEmf(bytes, maxSize - std::min(maxSize, size), random);
  return fuzz::copyOut(bytes, data, maxSize);
}

extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* one, size_t oneSize, const uint8_t* other,
                                            size_t otherSize, uint8_t* out, size_t maxSize,
                                            unsigned int seed) {
  fuzz::Random random(seed);
  support::Bytes bytes(one, one + oneSize);
  fuzz::takeRecord(bytes, 0, support::Bytes(other, other + otherSize), 0, fuzz::kEmfForm, random);
  return fuzz::copyOut(bytes, out, maxSize);
}
