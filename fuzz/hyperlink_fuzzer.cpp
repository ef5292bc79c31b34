// Reads the bytes as the hyperlink of a shape, and as the code of a HYPERLINK field.

#include <cstdint>
#include <string>

#include "objectwriter/hyperlink.h"
#include "story/field_state.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  const ByteView bytes(input, size);
  hyperLink::ReadHyperlink(bytes);

  std::wstring code;
  for (size_t i = 0; i < size; ++i) code += static_cast<wchar_t>(bytes.u8(i));
  std::wstring url, title;
  pagerex::ParseHyperlinkFieldCode(code, url, title);
  return 0;
}
