// Facts of a tree's items as attributes: a table of what lies where.

#include <cstddef>
#include <cstring>

#include "module.h"
#include "outcome.h"
#include "tree_object.h"

namespace pagerex::python {
namespace {

enum class Form {
  kFlag,
  kByte,
  kShort,
  kSignedShort,
  kNumber,
  kInteger,
  kText,
  kColour,
  kDate,
  kWidths,
  kSections
};

struct Field {
  const char* name;
  Form form;
  size_t offset;
};

template <class T>
T read(const char* at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

PyObject* integers(const int32_t* values, size_t count) {
  Ref tuple(PyTuple_New(static_cast<Py_ssize_t>(count)));
  for (size_t i = 0; tuple && i < count; ++i)
    if (PyTuple_SetItem(tuple.get(), static_cast<Py_ssize_t>(i), PyLong_FromLong(values[i])) != 0)
      return nullptr;
  return tuple.Release();
}

PyObject* dateOf(const pagerex_date& date) {
  if (!date.year) Py_RETURN_NONE;
  return Py_BuildValue("iiiii", date.year, date.month, date.day, date.hour, date.minute);
}

PyObject* get(PyObject* self, void* closure) {
  const Field& field = *static_cast<const Field*>(closure);
  const auto& facts = *reinterpret_cast<const FactsObject*>(self);
  const char* const at = static_cast<const char*>(facts.facts) + field.offset;
  switch (field.form) {
    case Form::kFlag:
      return PyBool_FromLong(read<uint8_t>(at));
    case Form::kByte:
      return PyLong_FromLong(read<uint8_t>(at));
    case Form::kShort:
      return PyLong_FromLong(read<uint16_t>(at));
    case Form::kSignedShort:
      return PyLong_FromLong(read<int16_t>(at));
    case Form::kNumber:
      return PyLong_FromUnsignedLong(read<uint32_t>(at));
    case Form::kInteger:
      return PyLong_FromLong(read<int32_t>(at));
    case Form::kDate:
      return dateOf(read<pagerex_date>(at));
    case Form::kSections:
      return integers(reinterpret_cast<const int32_t*>(at), 6);
    case Form::kText: {
      const std::string& text = treeOf(facts.tree).strings[read<StringId>(at)];
      return textOf(text.data(), text.size());
    }
    case Form::kColour: {
      const int32_t colour = read<int32_t>(at);
      if (colour < 0) Py_RETURN_NONE;
      return PyLong_FromLong(colour);
    }
    case Form::kWidths: {
      const auto& widths = *reinterpret_cast<const std::vector<int32_t>*>(at);
      return integers(widths.data(), widths.size());
    }
  }
  Py_RETURN_NONE;
}

#define FIELD(type, name, form, member) \
  { name, Form::form, offsetof(type, member) }
// Offsets into what holds a vector are what every compiler of this library gives.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

const Field runFields[] = {
    FIELD(RunFacts, "font", kText, font),
    FIELD(RunFacts, "east_asian_font", kText, eastAsianFont),
    FIELD(RunFacts, "other_font", kText, otherFont),
    FIELD(RunFacts, "complex_font", kText, complexFont),
    FIELD(RunFacts, "character_style", kText, characterStyle),
    FIELD(RunFacts, "bold", kFlag, bold),
    FIELD(RunFacts, "italic", kFlag, italic),
    FIELD(RunFacts, "strike", kFlag, strike),
    FIELD(RunFacts, "double_strike", kFlag, doubleStrike),
    FIELD(RunFacts, "outline", kFlag, outline),
    FIELD(RunFacts, "shadow", kFlag, shadow),
    FIELD(RunFacts, "emboss", kFlag, emboss),
    FIELD(RunFacts, "imprint", kFlag, imprint),
    FIELD(RunFacts, "small_caps", kFlag, smallCaps),
    FIELD(RunFacts, "caps", kFlag, caps),
    FIELD(RunFacts, "hidden", kFlag, hidden),
    FIELD(RunFacts, "is_right_to_left", kFlag, isRightToLeft),
    FIELD(RunFacts, "no_proof", kFlag, noProof),
    FIELD(RunFacts, "underline", kByte, underline),
    FIELD(RunFacts, "highlight", kByte, highlight),
    FIELD(RunFacts, "vertical_alignment", kByte, verticalAlignment),
    FIELD(RunFacts, "size_half_points", kShort, sizeHalfPoints),
    FIELD(RunFacts, "scale_percent", kShort, scalePercent),
    FIELD(RunFacts, "language", kShort, language),
    FIELD(RunFacts, "spacing", kSignedShort, spacing),
    FIELD(RunFacts, "raised_half_points", kSignedShort, raisedHalfPoints),
    FIELD(RunFacts, "colour", kColour, colour),
    FIELD(RunFacts, "underline_colour", kColour, underlineColour),
    FIELD(RunFacts, "background", kColour, background),
    FIELD(RunFacts, "change", kInteger, change),
};

const Field paragraphFields[] = {
    FIELD(ParagraphFacts, "style", kText, style),
    FIELD(ParagraphFacts, "label", kText, label),
    FIELD(ParagraphFacts, "position", kNumber, position),
    FIELD(ParagraphFacts, "label_characters", kNumber, labelCharacters),
    FIELD(ParagraphFacts, "heading_level", kByte, headingLevel),
    FIELD(ParagraphFacts, "outline_level", kByte, outlineLevel),
    FIELD(ParagraphFacts, "is_list_item", kFlag, isListItem),
    FIELD(ParagraphFacts, "is_bullet", kFlag, isBullet),
    FIELD(ParagraphFacts, "list_level", kByte, listLevel),
    FIELD(ParagraphFacts, "number_format", kByte, numberFormat),
    FIELD(ParagraphFacts, "list_id", kInteger, listId),
    FIELD(ParagraphFacts, "number", kInteger, number),
    FIELD(ParagraphFacts, "alignment", kByte, alignment),
    FIELD(ParagraphFacts, "is_right_to_left", kFlag, isRightToLeft),
    FIELD(ParagraphFacts, "keep_lines", kFlag, keepLines),
    FIELD(ParagraphFacts, "keep_with_next", kFlag, keepWithNext),
    FIELD(ParagraphFacts, "page_break_before", kFlag, pageBreakBefore),
    FIELD(ParagraphFacts, "widow_control", kFlag, widowControl),
    FIELD(ParagraphFacts, "line_spacing", kByte, lineSpacing),
    FIELD(ParagraphFacts, "line_height", kShort, lineHeight),
    FIELD(ParagraphFacts, "space_before", kShort, spaceBefore),
    FIELD(ParagraphFacts, "space_after", kShort, spaceAfter),
    FIELD(ParagraphFacts, "indent_start", kInteger, indentStart),
    FIELD(ParagraphFacts, "indent_end", kInteger, indentEnd),
    FIELD(ParagraphFacts, "indent_first_line", kInteger, indentFirstLine),
    FIELD(ParagraphFacts, "background", kColour, background),
};

const Field sectionFields[] = {
    FIELD(SectionFacts, "index", kNumber, index),
    FIELD(SectionFacts, "start", kInteger, start),
    FIELD(SectionFacts, "page_width", kInteger, pageWidth),
    FIELD(SectionFacts, "page_height", kInteger, pageHeight),
    FIELD(SectionFacts, "margin_top", kInteger, marginTop),
    FIELD(SectionFacts, "margin_bottom", kInteger, marginBottom),
    FIELD(SectionFacts, "margin_left", kInteger, marginLeft),
    FIELD(SectionFacts, "margin_right", kInteger, marginRight),
    FIELD(SectionFacts, "gutter", kInteger, gutter),
    FIELD(SectionFacts, "header_distance", kInteger, headerDistance),
    FIELD(SectionFacts, "footer_distance", kInteger, footerDistance),
    FIELD(SectionFacts, "column_count", kNumber, columnCount),
    FIELD(SectionFacts, "is_landscape", kFlag, isLandscape),
    FIELD(SectionFacts, "has_title_page", kFlag, hasTitlePage),
    FIELD(SectionFacts, "is_right_to_left", kFlag, isRightToLeft),
    FIELD(SectionFacts, "restarts_page_numbers", kFlag, restartsPageNumbers),
    FIELD(SectionFacts, "first_page_number", kShort, firstPageNumber),
    FIELD(SectionFacts, "header_sections", kSections, headerSections),
};

const Field headerFields[] = {
    FIELD(HeaderFacts, "kind", kInteger, kind),
    FIELD(HeaderFacts, "is_footer", kInteger, isFooter),
};

const Field tableFields[] = {
    FIELD(TableFacts, "style", kText, style),
    FIELD(TableFacts, "depth", kNumber, depth),
    FIELD(TableFacts, "row_count", kNumber, rowCount),
    FIELD(TableFacts, "header_row_count", kNumber, headerRowCount),
    FIELD(TableFacts, "column_count", kNumber, columnCount),
    FIELD(TableFacts, "width", kInteger, width),
    FIELD(TableFacts, "indent", kInteger, indent),
    FIELD(TableFacts, "width_kind", kByte, widthKind),
    FIELD(TableFacts, "alignment", kByte, alignment),
    FIELD(TableFacts, "is_right_to_left", kFlag, isRightToLeft),
    FIELD(TableFacts, "is_regular", kFlag, isRegular),
    FIELD(TableFacts, "has_merged_cells", kFlag, hasMergedCells),
    FIELD(TableFacts, "column_widths", kWidths, columnWidths),
};

const Field rowFields[] = {
    FIELD(RowFacts, "is_header", kFlag, isHeader),
    FIELD(RowFacts, "cant_split", kFlag, cantSplit),
    FIELD(RowFacts, "height", kInteger, height),
    FIELD(RowFacts, "columns_before", kNumber, columnsBefore),
    FIELD(RowFacts, "columns_after", kNumber, columnsAfter),
    FIELD(RowFacts, "change", kInteger, change),
};

const Field cellFields[] = {
    FIELD(CellFacts, "width", kInteger, width),
    FIELD(CellFacts, "column_span", kNumber, columnSpan),
    FIELD(CellFacts, "row_span", kNumber, rowSpan),
    FIELD(CellFacts, "vertical_alignment", kByte, verticalAlignment),
    FIELD(CellFacts, "background", kColour, background),
};

const Field linkFields[] = {
    FIELD(LinkFacts, "address", kText, address),
    FIELD(LinkFacts, "bookmark", kText, bookmark),
    FIELD(LinkFacts, "title", kText, title),
    FIELD(LinkFacts, "target", kText, target),
};

const Field noteFields[] = {
    FIELD(NoteFacts, "kind", kInteger, kind),
    FIELD(NoteFacts, "index", kNumber, index),
    FIELD(NoteFacts, "label", kText, label),
    FIELD(NoteFacts, "is_custom", kInteger, isCustom),
};

const Field commentFields[] = {
    FIELD(CommentFacts, "index", kNumber, index),
    FIELD(CommentFacts, "date", kDate, date),
    FIELD(CommentFacts, "author", kText, author),
    FIELD(CommentFacts, "initials", kText, initials),
};

const Field revisionFields[] = {
    FIELD(RevisionFacts, "kind", kInteger, kind),
    FIELD(RevisionFacts, "date", kDate, date),
    FIELD(RevisionFacts, "author", kText, author),
};

const Field formFieldFields[] = {
    FIELD(FormFieldFacts, "kind", kInteger, kind),
    FIELD(FormFieldFacts, "is_checked", kInteger, isChecked),
    FIELD(FormFieldFacts, "name", kText, name),
    FIELD(FormFieldFacts, "value", kText, value),
};

const Field pictureFields[] = {
    FIELD(PictureFacts, "description", kText, description),
    FIELD(PictureFacts, "name", kText, name),
    FIELD(PictureFacts, "linked_address", kText, linkedAddress),
    FIELD(PictureFacts, "order", kNumber, order),
    FIELD(PictureFacts, "identity", kNumber, identity),
    FIELD(PictureFacts, "width", kInteger, width),
    FIELD(PictureFacts, "height", kInteger, height),
    FIELD(PictureFacts, "is_inline", kFlag, isInline),
    FIELD(PictureFacts, "is_behind_text", kFlag, isBehindText),
    FIELD(PictureFacts, "has_source", kFlag, hasSource),
};
#undef FIELD

void freeFacts(PyObject* self) {
  Py_DECREF(reinterpret_cast<FactsObject*>(self)->tree);
  freeObject(self);
}

/// What a type is made of, from its fields; of the process.
struct TypeTable {
  template <size_t kCount>
  TypeTable(const char* typeName, const Field (&fields)[kCount]) : name(typeName) {
    static_assert(kCount < kMost);
    for (size_t i = 0; i < kCount; ++i)
      attributes[i] = {fields[i].name, get, nullptr, nullptr, const_cast<Field*>(&fields[i])};
    slots[0] = {Py_tp_getset, attributes};
    slots[1] = {Py_tp_new, slot(refuseNew)};
    slots[2] = {Py_tp_dealloc, slot(freeFacts)};
  }

  static constexpr size_t kMost = 40;
  const char* name;
  PyGetSetDef attributes[kMost] = {};
  PyType_Slot slots[4] = {};
};

TypeTable typeTables[kFactsTypeCount] = {
    {"pagerex._native.RunFacts", runFields},           {"pagerex._native.ParagraphFacts", paragraphFields},
    {"pagerex._native.SectionFacts", sectionFields},   {"pagerex._native.HeaderFacts", headerFields},
    {"pagerex._native.TableFacts", tableFields},       {"pagerex._native.RowFacts", rowFields},
    {"pagerex._native.CellFacts", cellFields},         {"pagerex._native.LinkFacts", linkFields},
    {"pagerex._native.NoteFacts", noteFields},         {"pagerex._native.CommentFacts", commentFields},
    {"pagerex._native.RevisionFacts", revisionFields}, {"pagerex._native.FormFieldFacts", formFieldFields},
    {"pagerex._native.PictureFacts", pictureFields},
};

}  // namespace

PyType_Spec factsSpec(FactsType type) {
  return {typeTables[type].name, sizeof(FactsObject), 0, Py_TPFLAGS_DEFAULT, typeTables[type].slots};
}

PyObject* makeFacts(PyObject* module, PyObject* tree, FactsType type, const void* facts) {
  PyObject* const object = makeObject(stateOf(module).factsTypes[type]);
  if (!object) return nullptr;
  auto& made = *reinterpret_cast<FactsObject*>(object);
  Py_INCREF(tree);
  made.tree = tree;
  made.facts = facts;
  return object;
}

}  // namespace pagerex::python
