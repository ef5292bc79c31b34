#pragma once

#include "base/byte_view.h"
#include "support/sprms.h"

namespace pagerex {

/// The bytes of a list, which must stay.
inline ByteView viewOf(const support::Sprms& sprms) {
  return ByteView(sprms.bytes().data(), sprms.size());
}

}  // namespace pagerex
