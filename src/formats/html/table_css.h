#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "flow/properties.h"

namespace pagerex {

/// The base of all: `table{border-collapse:collapse}`,
/// `td,th{padding:0;vertical-align:top;text-align:start}`.

/// Width and place of a table in its line. Indents as in paragraphs, by --i and --n.
void appendTableCss(std::string& out, const TableProperties& table);
/// For the box around a table that floats: text goes around it. Nothing for others.
void appendTableFloatCss(std::string& out, const TableProperties& table);
/// Of a `col`: "width:72pt;", in a table whose width is a percentage its share of it.
void appendColumnCss(std::string& out, const TableProperties& table, size_t column);

/// "height:20pt;break-inside:avoid;"
void appendRowCss(std::string& out, const RowProperties& row);
/// All in which `cell` differs from `base`, against CellProperties{} from the base of all. Its colour is told
/// by its paragraphs, see `Grounds`.
void appendCellCss(std::string& out, const CellProperties& cell, const CellProperties& base);

}  // namespace pagerex
