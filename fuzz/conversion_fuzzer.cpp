// Converts a whole document in one view; FUZZ_VIEW is its name.

#include "document_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  fuzz::convert(fuzz::documentOf(input, size), FUZZ_VIEW);
  return 0;
}
