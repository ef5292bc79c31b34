#pragma once

#include <cstdint>
#include <map>

#include "support/word_layout.h"
#include "support/word_tables.h"

namespace support {

/// Tables of the table stream by their FIB index.
using TableSet = std::map<uint32_t, TableWithTail>;

/// The sub-document that holds the text of a note or annotation.
uint32_t noteStoryOf(Anchor::Kind kind);

/// Makes the tables that point into the text: fields, notes, annotations (with their dates only if
/// `withDates`) and bookmarks. Those that would be empty are left out.
void addTextTables(const FlatText& text, const ClosingMarks& closingMarks, bool withDates, TableSet& tables);

}  // namespace support
