#pragma once

#include "base/write_archive.h"
#include "story/table_cells.h"
#include "story/table_rows.h"

namespace pagerex {

/// Writes the attributes and the `style` of an open `table` start tag.
void WriteTableFormat(const TableStyle& style, IWriteArchive* archive);

/// Writes the `style` of an open `td` start tag: borders, padding, background.
void WriteCellCss(const CELL_FORMAT& cell, IWriteArchive* archive);

}  // namespace pagerex
