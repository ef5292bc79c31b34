// How the fuzzers of documents change their inputs and join two of them.

#include <algorithm>

#include "document_input.h"
#include "mutations.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned int seed) {
  if (fuzz::isCompoundFile(data, size)) return LLVMFuzzerMutate(data, size, maxSize);
  fuzz::Random random(seed);
  fuzz::DocumentStreams streams = fuzz::splitStreams(data, size);
  fuzz::changeDocument(streams, maxSize - std::min(maxSize, size), random);
  return fuzz::copyOut(fuzz::joinStreams(streams), data, maxSize);
}

extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* one, size_t oneSize, const uint8_t* other,
                                            size_t otherSize, uint8_t* out, size_t maxSize,
                                            unsigned int seed) {
  if (fuzz::isCompoundFile(one, oneSize) || fuzz::isCompoundFile(other, otherSize)) return 0;
  fuzz::Random random(seed);
  fuzz::DocumentStreams streams = fuzz::splitStreams(one, oneSize);
  fuzz::takeTable(streams, fuzz::splitStreams(other, otherSize), random);
  return fuzz::copyOut(fuzz::joinStreams(streams), out, maxSize);
}
