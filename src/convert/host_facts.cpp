#include "convert/host_facts.h"

#include "convert/host_properties.h"

namespace pagerex {
namespace {

using Start = SectionProperties::Start;
static_assert(static_cast<int>(Start::kContinuous) == PAGEREX_SECTION_CONTINUOUS &&
              static_cast<int>(Start::kNewColumn) == PAGEREX_SECTION_NEW_COLUMN &&
              static_cast<int>(Start::kNewPage) == PAGEREX_SECTION_NEW_PAGE &&
              static_cast<int>(Start::kEvenPage) == PAGEREX_SECTION_EVEN_PAGE &&
              static_cast<int>(Start::kOddPage) == PAGEREX_SECTION_ODD_PAGE);
using Kind = CustomProperty::Kind;
static_assert(static_cast<int>(Kind::kText) == PAGEREX_PROPERTY_TEXT &&
              static_cast<int>(Kind::kInteger) == PAGEREX_PROPERTY_INTEGER &&
              static_cast<int>(Kind::kReal) == PAGEREX_PROPERTY_REAL &&
              static_cast<int>(Kind::kBoolean) == PAGEREX_PROPERTY_BOOLEAN &&
              static_cast<int>(Kind::kTime) == PAGEREX_PROPERTY_TIME);

constexpr uint64_t kTicksPerSecond = 10'000'000;

/// 0 stays: it stands for none.
int64_t secondsSince1970(FileTime time) {
  constexpr int64_t kFrom1601To1970 = 11'644'473'600;
  return time == 0 ? 0 : static_cast<int64_t>(time / kTicksPerSecond) - kFrom1601To1970;
}

void fillCounts(const DocumentSummary& summary, pagerex_document_facts& out) {
  out.created = secondsSince1970(summary.created);
  out.saved = secondsSince1970(summary.saved);
  out.printed = secondsSince1970(summary.printed);
  out.editing_seconds = static_cast<int64_t>(summary.editingTime / kTicksPerSecond);
  out.pages = summary.pages;
  out.words = summary.words;
  out.characters = summary.characters;
  out.characters_with_spaces = summary.charactersWithSpaces;
  out.lines = summary.lines;
  out.paragraphs = summary.paragraphs;
  out.security = summary.security;
}

pagerex_note_numbering hostNumbering(const NoteNumbering& numbering) {
  return {numbering.setsRestart, numbering.setsStart, numbering.setsFormat,
          numbering.restart,     numbering.start,     numbering.format};
}

}  // namespace

pagerex_document_facts hostFacts(const DocumentFacts& facts, HostTexts& texts,
                                 std::vector<pagerex_custom_property>& custom) {
  const DocumentSummary& summary = facts.summary;
  pagerex_document_facts told = {};
  told.size = sizeof told;
  told.page_count = facts.pageCount;
  told.language = facts.language;
  told.default_tab_stop = facts.defaultTabStop;
  told.has_odd_even_headers = facts.hasOddAndEvenHeaders;
  fillCounts(summary, told);
  std::vector<HostTexts::Text> all = {{summary.title, &told.title},
                                      {summary.subject, &told.subject},
                                      {summary.author, &told.author},
                                      {summary.keywords, &told.keywords},
                                      {summary.comments, &told.comments},
                                      {summary.templateName, &told.template_name},
                                      {summary.lastAuthor, &told.last_author},
                                      {summary.revisionNumber, &told.revision_number},
                                      {summary.application, &told.application},
                                      {summary.category, &told.category},
                                      {summary.manager, &told.manager},
                                      {summary.company, &told.company},
                                      {summary.contentStatus, &told.content_status},
                                      {summary.language, &told.language_name}};
  custom.resize(summary.custom.size());
  for (size_t i = 0; i < custom.size(); ++i) {
    const CustomProperty& from = summary.custom[i];
    custom[i] = {{},        static_cast<int64_t>(from.kind), {}, from.integer,
                 from.real, secondsSince1970(from.time)};
    all.push_back({from.name, &custom[i].name});
    all.push_back({from.text, &custom[i].text});
  }
  texts.Fill(all.data(), all.size());
  told.custom = custom.data();
  told.custom_count = static_cast<uint32_t>(custom.size());
  return told;
}

pagerex_section hostSection(const SectionFacts& facts, std::vector<pagerex_column>& columns) {
  const SectionProperties& from = facts.properties;
  pagerex_section told = {};
  told.size = sizeof told;
  told.index = facts.index;
  told.start = static_cast<int32_t>(from.start);
  told.page_width = from.pageWidth;
  told.page_height = from.pageHeight;
  told.margin_top = from.marginTop;
  told.margin_bottom = from.marginBottom;
  told.margin_left = from.marginLeft;
  told.margin_right = from.marginRight;
  told.gutter = from.gutter;
  told.header_distance = from.headerDistance;
  told.footer_distance = from.footerDistance;
  told.column_count = from.columnCount;
  told.column_space = from.columnSpace;
  columns.clear();
  for (const auto& [width, space] : from.columns) columns.push_back({width, space});
  told.columns = columns.data();
  told.columns_told = static_cast<uint32_t>(columns.size());
  told.has_line_between_columns = from.hasLineBetweenColumns;
  told.is_landscape = from.isLandscape;
  told.has_title_page = from.hasTitlePage;
  told.is_right_to_left = from.isRightToLeft;
  told.restarts_page_numbers = from.restartsPageNumbers;
  told.page_number_format = from.pageNumberFormat;
  told.vertical_alignment = from.verticalAlignment;
  told.first_page_number = from.firstPageNumber;
  told.text_flow = from.textFlow;
  told.page_top = hostBorder(from.pageTop);
  told.page_left = hostBorder(from.pageLeft);
  told.page_bottom = hostBorder(from.pageBottom);
  told.page_right = hostBorder(from.pageRight);
  told.footnotes = hostNumbering(from.footnotes);
  told.endnotes = hostNumbering(from.endnotes);
  for (unsigned footer = 0; footer < 2; ++footer) {
    for (unsigned kind = 0; kind < 3; ++kind)
      told.header_sections[footer][kind] = facts.headerSections[footer][kind];
  }
  return told;
}

pagerex_table hostTable(const TableProperties& from) {
  pagerex_table told = {};
  told.size = sizeof told;
  told.depth = from.depth;
  told.row_count = from.rowCount;
  told.header_row_count = from.headerRowCount;
  told.column_count = static_cast<uint32_t>(from.columnWidths.size());
  told.column_widths = from.columnWidths.data();
  told.indent = from.indent;
  told.width = from.width;
  told.width_kind = from.widthKind;
  told.alignment = static_cast<uint8_t>(from.alignment);
  told.is_right_to_left = from.isRightToLeft;
  told.is_regular = from.isRegular;
  told.has_merged_cells = from.hasMergedCells;
  told.has_single_paragraphs = from.hasSingleParagraphs;
  told.floats = from.floats;
  told.style_index = from.style;
  return told;
}

pagerex_row hostRow(const RowProperties& from) {
  pagerex_row told = {};
  told.size = sizeof told;
  told.is_header = from.isHeader;
  told.cant_split = from.cantSplit;
  told.is_exact_height = from.isExactHeight;
  told.height = from.height;
  told.columns_before = from.columnsBefore;
  told.columns_after = from.columnsAfter;
  told.change = hostChange(from.revision);
  return told;
}

pagerex_cell hostCell(const CellProperties& from) {
  pagerex_cell told = {};
  told.size = sizeof told;
  told.left = from.left;
  told.width = from.width;
  told.column_span = from.columnSpan;
  told.row_span = from.rowSpan;
  told.vertical_alignment = from.verticalAlignment;
  told.text_flow = from.textFlow;
  told.no_wrap = from.noWrap;
  told.top = hostBorder(from.top);
  told.start = hostBorder(from.start);
  told.bottom = hostBorder(from.bottom);
  told.end = hostBorder(from.end);
  told.shading = hostShading(from.shading);
  told.padding_top = from.paddingTop;
  told.padding_start = from.paddingStart;
  told.padding_bottom = from.paddingBottom;
  told.padding_end = from.paddingEnd;
  return told;
}

}  // namespace pagerex
