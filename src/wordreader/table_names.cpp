#include "wordreader/table_names.h"

#include "wordreader/mso_word.h"

namespace pagerex {
namespace {

struct TableName {
  uint32_t index;
  std::string_view name;
};
/// As people say it who are told of a damaged one.
constexpr TableName kTableNames[] = {
    {mso_word::FCLCB_STYLE_SHEET, "styles"},
    {mso_word::FCLCB_FOOTNOTE_REFS, "footnotes"},
    {mso_word::FCLCB_FOOTNOTE_TEXT, "footnotes"},
    {mso_word::FCLCB_ANNOTATION_REFS, "comments"},
    {mso_word::FCLCB_ANNOTATION_TEXT, "comments"},
    {mso_word::FCLCB_SECTIONS, "sections"},
    {mso_word::FCLCB_HEADER_TEXT, "headers"},
    {mso_word::FCLCB_CHPX_BINS, "character properties"},
    {mso_word::FCLCB_PAPX_BINS, "paragraph properties"},
    {mso_word::FCLCB_FONTS, "fonts"},
    {mso_word::FCLCB_FIELDS_MAIN, "fields"},
    {mso_word::FCLCB_FIELDS_HEADER, "fields of headers"},
    {mso_word::FCLCB_FIELDS_FOOTNOTE, "fields of footnotes"},
    {mso_word::FCLCB_FIELDS_ANNOTATION, "fields of comments"},
    {mso_word::FCLCB_FIELDS_ENDNOTE, "fields of endnotes"},
    {mso_word::FCLCB_FIELDS_TEXTBOX, "fields of text boxes"},
    {mso_word::FCLCB_FIELDS_HEADER_TEXTBOX, "fields of text boxes in headers"},
    {mso_word::FCLCB_BOOKMARK_NAMES, "bookmarks"},
    {mso_word::FCLCB_BOOKMARK_STARTS, "bookmarks"},
    {mso_word::FCLCB_BOOKMARK_ENDS, "bookmarks"},
    {mso_word::FCLCB_DOCUMENT_PROPERTIES, "document properties"},
    {mso_word::FCLCB_CLX, "pieces"},
    {mso_word::FCLCB_ANNOTATION_OWNERS, "authors of comments"},
    {mso_word::FCLCB_ANNOTATION_RANGE_NAMES, "ranges of comments"},
    {mso_word::FCLCB_ANNOTATION_RANGE_STARTS, "ranges of comments"},
    {mso_word::FCLCB_ANNOTATION_RANGE_ENDS, "ranges of comments"},
    {mso_word::FCLCB_SHAPE_ANCHORS, "anchors of shapes"},
    {mso_word::FCLCB_HEADER_SHAPE_ANCHORS, "anchors of shapes in headers"},
    {mso_word::FCLCB_ENDNOTE_REFS, "endnotes"},
    {mso_word::FCLCB_ENDNOTE_TEXT, "endnotes"},
    {mso_word::FCLCB_DRAWINGS, "drawings"},
    {mso_word::FCLCB_REVISION_AUTHORS, "authors of changes"},
    {mso_word::FCLCB_TEXTBOXES, "text boxes"},
    {mso_word::FCLCB_HEADER_TEXTBOXES, "text boxes in headers"},
    {mso_word::FCLCB_LIST_DEFINITIONS, "lists"},
    {mso_word::FCLCB_LIST_OVERRIDES, "lists"},
};

}  // namespace

std::string_view nameOfTable(uint32_t index) {
  for (const TableName& row : kTableNames) {
    if (row.index == index) return row.name;
  }
  return "other";
}

}  // namespace pagerex
