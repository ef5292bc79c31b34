#pragma once

#include <cstdint>

#include "base/progress.h"
#include "base/run_control.h"
#include "base/status.h"
#include "flow/handler.h"
#include "wordreader/word_file.h"

namespace pagerex {

/// Which state of the text is told.
enum class RevisionView : uint8_t {
  kFinal,     ///< with all changes
  kOriginal,  ///< without them
  kAll,       ///< what was inserted and what was deleted, marked as such
};

struct WalkOptions {
  RevisionView revisions = RevisionView::kFinal;
  bool hiddenText = false;
};

/// Tells `handler` what the document says, in the order of reading. Asks `control` at each paragraph, and
/// ends early, with every `End` told, when it says so. `progress` may be null. Damage leaves text out only
/// where its bytes are not there; warnings go where the file's go. Returns what there was in the main text,
/// without pictures and pages. Throws std::bad_alloc, and whatever the handler throws.
WrittenCounts walk(WordFile& file, const WalkOptions& options, RunControl& control,
                   ProgressListener* progress, FlowHandler& handler);

}  // namespace pagerex
