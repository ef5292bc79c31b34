#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/status.h"
#include "drawing/shape_geometry.h"
#include "objectwriter/enum_map.h"

namespace ObjectWriter {

template <class K, class V>
using ItemPair = EnumPair<K, V>;

/// A map that also tells whether it holds a key.
template <class K, class V>
class PathEnumMap : private EnumMap<K, V> {
 public:
  using EnumMap<K, V>::EnumMap;
  /// Sets `out` to the value of `key`, or to the default; false for the default.
  bool Find(V& out, K key) const {
    bool found = false;
    out = EnumMap<K, V>::Find(key, &found);
    return found;
  }
};

/// The letters of a path command, by the high byte of a segment; "hb" for unknown ones.
const PathEnumMap<unsigned short, const char*>& GetSegmentCmd();
/// How many numbers a command takes; one that takes none is never written.
const PathEnumMap<int, int>& GetCmdParameterCount();

/// Turns the outline of a free-form shape, which is points and segments, into the text of a VML path:
/// commands with their coordinates, and "e" at the end.
class WmlPathUnparser {
 public:
  /// A segment is a command in its high byte and a repeat count in its low byte, where 0 is once. A command
  /// that finds fewer points than it wants takes what is left. kFailure without points or segments.
  Status UnParse(size_t pointCount, const tagPOINT* points, size_t segmentCount, const uint16_t* segments);
  const std::string& GetPath() const { return path_; }

 private:
  std::string path_;
};

}  // namespace ObjectWriter
