#pragma once

#include "base/byte_view.h"
#include "wordreader/mso_word.h"

/// A table of the table stream: where it lies, and its bytes, which the document's allocator holds.
struct KDRTableRecord {
  mso_word::FCLCB place{};
  ByteView bytes;
};
