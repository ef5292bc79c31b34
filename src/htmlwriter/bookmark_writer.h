#pragma once

#include <cstdint>
#include <vector>

#include "htmlwriter/env.h"

namespace pagerex {

/// Turns the bookmarks of a run into named anchors and hands them to the navigation page.
class KHtmlBookmarkWriter {
 public:
  /// kInvalidArgument for a null `env`, which is not owned.
  Status Init(KEnv* env);
  /// Finds the bookmarks that start in [begin, end). kInvalidArgument without an environment.
  Status Collect(unsigned int begin, unsigned int end);
  /// Start positions that the last `Collect` found, in ascending order.
  const std::vector<unsigned int>& positions() const { return positions_; }
  /// An anchor that is named by its position.
  Status Write(unsigned int position);

 private:
  KEnv* env_ = nullptr;
  KWorkLimits* limits_ = nullptr;
  std::vector<unsigned int> positions_;
  // Where the last search ended.
  const KBookmarkPositions* starts_ = nullptr;  ///< null: nowhere
  unsigned int end_ = 0;
  KBookmarkPositions::const_iterator next_;
};

}  // namespace pagerex
