#pragma once

#include <vector>

#include "mutation/rich_documents.h"

namespace safety {

/// Documents that bring script or style of their own into the pages made of them, unless these are safe: one
/// for each place that text or an address of a document is written to, in every way that is known for it.
std::vector<mutation::NamedDocument> scriptDocuments();

/// Nothing but what runs in every page by the library's own will: notes, headings that fold, a line and an
/// ellipse, several sections.
support::WordDocument harmlessDocument();

}  // namespace safety
