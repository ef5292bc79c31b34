#pragma once

#include <cstdint>
#include <cstring>
#include <unordered_map>
#include <unordered_set>

#include "base/byte_view.h"
#include "flow/properties.h"
#include "wordreader/style_table.h"

namespace pagerex {

/// The table style that a paragraph stands in, and which of its conditional parts hold there.
struct TableStylePlace {
  uint16_t istd = kNoStyle;
  uint16_t conditions = 0;  ///< StyleCondition bits

  friend bool operator==(const TableStylePlace&, const TableStylePlace&) = default;
};

/// What properties follow from. The lists are not owned; keys are equal if the lists have equal bytes.
struct PropertyKey {
  ByteView lists[3];
  TableStylePlace place;
  uint16_t istd = 0;
  bool isLabel = false;

  bool operator==(const PropertyKey& other) const;
};

struct PropertyKeyHash {
  size_t seed;
  size_t operator()(const PropertyKey& key) const;
};

struct RunPropertiesHash {
  size_t operator()(const RunProperties& properties) const;
};

template <class T>
using PropertyMap = std::unordered_map<PropertyKey, T, PropertyKeyHash>;
using RunPropertiesSet = std::unordered_set<RunProperties, RunPropertiesHash>;

}  // namespace pagerex
