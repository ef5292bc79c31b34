#pragma once

#include <vector>

#include "convert/host_texts.h"
#include "flow/handler.h"
#include "pagerex/walk.h"

namespace pagerex {

/// Facts for a host. What they point to lies in `texts` and the vectors, or in what is given.
pagerex_document_facts hostFacts(const DocumentFacts& facts, HostTexts& texts,
                                 std::vector<pagerex_custom_property>& custom);
pagerex_section hostSection(const SectionFacts& facts, std::vector<pagerex_column>& columns);
/// Without the name of the style.
pagerex_table hostTable(const TableProperties& from);
pagerex_row hostRow(const RowProperties& from);
pagerex_cell hostCell(const CellProperties& from);

}  // namespace pagerex
