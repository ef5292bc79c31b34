#pragma once

#include "wordreader/mso_word.h"
#include "wordreader/plcf.h"

namespace pagerex {

/// Writes a story where it is anchored: shapes hold text, and how text comes out is not theirs to know.
class IStoryWriter {
 public:
  virtual ~IStoryWriter() = default;
  /// Writes a range of a sub-document into the current page.
  virtual void WriteStory(mso_word::SUBDOC_TYPE type, const KDWRange& range) = 0;
};

}  // namespace pagerex
