#pragma once

#include <utility>
#include <vector>

#include "support/word_document_writer.h"

namespace mutation {

struct NamedDocument {
  const char* name;
  support::WordDocument document;
};

/// Documents with something of everything that is read, each with one kind of it and the last with all: tests
/// change their bytes, and fuzzers start from them.
std::vector<NamedDocument> richDocuments();

}  // namespace mutation
