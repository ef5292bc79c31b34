// Converts a whole document in one view; FUZZ_VIEW is its name.

#include <algorithm>

#include "document_input.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  fuzz::convert(fuzz::documentOf(input, size), FUZZ_VIEW);
  return 0;
}

// Changes one of the streams and leaves the others where they are. Three times in four it keeps its length
// too, so that the offsets that point into it still mean something.
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned int seed) {
  if (fuzz::isCompoundFile(data, size)) return LLVMFuzzerMutate(data, size, maxSize);
  fuzz::DocumentStreams streams = fuzz::splitStreams(data, size);
  support::Bytes* const choices[] = {&streams.wordDocument, &streams.table, &streams.data};
  support::Bytes& stream = *choices[seed % 3];
  const bool keepsLength = !stream.empty() && seed / 3 % 4 != 0;

  const size_t length = stream.size();
  const size_t room = keepsLength ? length : length + (maxSize - std::min(maxSize, size));
  support::Bytes changed = stream;
  changed.resize(std::max<size_t>(room, 1));
  const size_t newLength = LLVMFuzzerMutate(changed.data(), length, changed.size());
  if (keepsLength) {
    std::copy(stream.begin() + static_cast<ptrdiff_t>(newLength), stream.end(),
              changed.begin() + static_cast<ptrdiff_t>(newLength));
  }
  changed.resize(keepsLength ? length : newLength);
  stream = changed;

  const support::Bytes joined = fuzz::joinStreams(streams);
  const size_t result = std::min(joined.size(), maxSize);
  std::copy_n(joined.begin(), result, data);
  return result;
}
