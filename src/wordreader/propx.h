#pragma once

#include <cstdint>

#include "base/byte_view.h"

#pragma pack(push, 1)
/// A property list in memory: a 16-bit size, directly followed by that many bytes of sprms.
/// Lives in the document's allocator.
struct KDRPropx {
  uint16_t size;  ///< bytes of the list, without this word

  ByteView sprms() const { return ByteView(this + 1, size); }
};
#pragma pack(pop)
static_assert(sizeof(KDRPropx) == 2);
