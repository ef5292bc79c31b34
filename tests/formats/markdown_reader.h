#pragma once

#include <string>
#include <vector>

#include "support/flow_recorder.h"

namespace support {

/// What a reader sees of Markdown with GitHub's tables, strikes, addresses and notes.
struct ReadMarkdown {
  std::vector<ShownText> body;
  std::vector<ShownText> notes;
};
ReadMarkdown readMarkdown(const std::string& markdown);

}  // namespace support
