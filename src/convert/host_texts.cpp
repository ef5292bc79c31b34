#include "convert/host_texts.h"

#include "base/utf8.h"

namespace pagerex {

void HostTexts::Fill(const Text* texts, size_t count) {
  size_t most = 1;  // so that no pointer is null
  for (size_t i = 0; i < count; ++i) most += mostUtf8(texts[i].from.size());
  if (bytes_.size() < most) bytes_.resize(most);
  char* to = bytes_.data();
  for (size_t i = 0; i < count; ++i) {
    const std::u16string_view from = texts[i].from;
    const size_t length = utf8FromUtf16(from.data(), from.size(), to, Utf8Filter::kControls);
    *texts[i].to = {to, length};
    to += length;
  }
}

}  // namespace pagerex
