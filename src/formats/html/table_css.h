#pragma once

#include <cstdint>
#include <string>

#include "flow/properties.h"

namespace pagerex {

/// The base of all: `table{border-collapse:collapse}`,
/// `td,th{padding:0;vertical-align:top;text-align:start}`.

/// Width and place of a table in its line. Indents as in paragraphs, by --i and --n.
void appendTableCss(std::string& out, const TableProperties& table);
/// For the box around a table that floats: text goes around it. Nothing for
/// others, and for centred ones, which have text above and below.
void appendTableFloatCss(std::string& out, const TableProperties& table);
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
