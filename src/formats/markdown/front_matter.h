#pragma once

#include <string>

#include "wordreader/document_summary.h"

namespace pagerex {

/// What is known of a document, as YAML between two lines of hyphens; empty where nothing is known.
std::string frontMatter(const DocumentSummary& summary);

/// A point in time as "2004-02-29T23:59:59Z".
std::string isoTime(FileTime time);

/// Date and time as Word packs them, as "2004-02-29 23:59"; empty for none or one that cannot be.
std::string dttmText(uint32_t dttm);

}  // namespace pagerex
