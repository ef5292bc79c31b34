#pragma once

#include "htmlwriter/env.h"
#include "wordreader/plcf.h"

namespace pagerex {

/// Writes a range of a sub-document with writers of its own, as in the normal view, into the page of `env`:
/// the text of a note or of a text box.
void WriteStory(const KEnv& env, mso_word::SUBDOC_TYPE type, const KDWRange& range);

}  // namespace pagerex
