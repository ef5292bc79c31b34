#pragma once

namespace cli {

/// A structure of the library: empty, but for its size.
template <typename Structure>
Structure sized() {
  Structure structure = {};
  structure.size = sizeof structure;
  return structure;
}

}  // namespace cli
