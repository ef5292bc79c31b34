#pragma once

#include <vector>

#include "mutation/rich_documents.h"

namespace mutation {

/// Documents with what only a walk reads: headers, text boxes, form fields, changes, a summary.
std::vector<NamedDocument> flowDocuments();

}  // namespace mutation
