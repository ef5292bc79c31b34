#pragma once

#include <cstdint>
#include <string>

#include "flow/properties.h"

namespace pagerex {

/// The base of all: `table{border-collapse:collapse}`,
/// `td,th{padding:0;vertical-align:top;text-align:start}`.

/// Width of a table.
void appendTableCss(std::string& out, const TableProperties& table);
/// Of the box around a table, which is as wide as the table: its place in the line, and whether text goes
/// around it. Indents as in paragraphs, by --i and --n. Centred tables have text above and below.
void appendTableBoxCss(std::string& out, const TableProperties& table);
/// Of a `col`: "width:72pt;", or its share of `whole`, which `wholeOfColumns` tells once a table.
void appendColumnCss(std::string& out, int64_t twips, int64_t whole);
/// What columns are told as shares of: 0 unless the width of the table is a percentage.
int64_t wholeOfColumns(const TableProperties& table);

/// "height:20pt;break-inside:avoid;"
void appendRowCss(std::string& out, const RowProperties& row);
/// All in which `cell` differs from `base`, against CellProperties{} from the base of all. Its colour is told
/// by its paragraphs, see `Grounds`.
void appendCellCss(std::string& out, const CellProperties& cell, const CellProperties& base);

}  // namespace pagerex
