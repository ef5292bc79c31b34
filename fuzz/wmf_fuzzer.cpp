// Plays the records of a Windows metafile.

#include <algorithm>

#include "picture_check.h"
#include "pictures/metafile.h"
#include "record_changes.h"

using namespace pagerex;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  fuzz::PictureText made;
  const PictureResult result = playWmf(ByteView(input, size), {72, 54}, made);
  fuzz::checkPicture(result, PictureKind::kWmf, made.view());
  return 0;
}

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned int seed) {
  fuzz::Random random(seed);
  support::Bytes bytes(data, data + size);
  if (random() % 16 == 0) {
    fuzz::changeInPlace(bytes, 0, fuzz::wmfRecords(bytes));
  } else {
    fuzz::changeRecordList(bytes, fuzz::wmfRecords(bytes), fuzz::kWmfForm, maxSize - std::min(maxSize, size),
                           random);
  }
  return fuzz::copyOut(bytes, data, maxSize);
}

extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* one, size_t oneSize, const uint8_t* other,
                                            size_t otherSize, uint8_t* out, size_t maxSize,
                                            unsigned int seed) {
  fuzz::Random random(seed);
  support::Bytes bytes(one, one + oneSize);
  const support::Bytes others(other, other + otherSize);
  fuzz::takeRecord(bytes, fuzz::wmfRecords(bytes), others, fuzz::wmfRecords(others), fuzz::kWmfForm, random);
  return fuzz::copyOut(bytes, out, maxSize);
}
