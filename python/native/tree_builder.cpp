#include "tree_builder.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace pagerex::python {
namespace {

constexpr std::string_view kChecked = "\u2612", kNotChecked = "\u2610";

template <class Facts>
uint32_t keep(std::vector<Facts>& all, Facts facts) {
  all.push_back(std::move(facts));
  return static_cast<uint32_t>(all.size() - 1);
}

int32_t colourOf(const pagerex_colour& colour) {
  return colour.is_automatic ? -1 : static_cast<int32_t>(colour.rgb);
}

int32_t backgroundOf(const pagerex_shading& shading) {
  return shading.is_there ? colourOf(shading.fill) : -1;
}

uint32_t charactersOf(std::string_view text) {
  return static_cast<uint32_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

/// Without the names, which stand for themselves.
RunFacts plainFacts(const pagerex_run& r) {
  RunFacts facts;
  std::memset(static_cast<void*>(&facts), 0, sizeof facts);  // its bytes are a key
  facts.bold = r.bold, facts.italic = r.italic, facts.strike = r.strike, facts.doubleStrike = r.double_strike;
  facts.outline = r.outline, facts.shadow = r.shadow, facts.emboss = r.emboss, facts.imprint = r.imprint;
  facts.smallCaps = r.small_caps, facts.caps = r.caps, facts.hidden = r.hidden;
  facts.isRightToLeft = r.is_right_to_left, facts.noProof = r.no_proof, facts.underline = r.underline;
  facts.highlight = r.highlight, facts.verticalAlignment = r.vertical_alignment;
  facts.sizeHalfPoints = r.is_complex_script ? r.complex_size_half_points : r.size_half_points;
  facts.scalePercent = r.scale_percent, facts.language = r.language;
  facts.spacing = r.spacing, facts.raisedHalfPoints = r.raised_half_points;
  facts.colour = colourOf(r.colour), facts.underlineColour = colourOf(r.underline_colour);
  facts.background = backgroundOf(r.shading);
  facts.change = r.deletion.kind ? r.deletion.kind : r.insertion.kind;
  return facts;
}

}  // namespace

// Items.

Item& TreeBuilder::Add(ItemKind kind, uint32_t facts) {
  const uint32_t number = static_cast<uint32_t>(tree_.items.size());
  if (number >= UINT32_MAX - 1) throw std::bad_alloc();
  const Place at = place();
  tree_.items.push_back({kind, isAside_, open_.empty() ? number : open_.back(), number + 1, facts, at.bytes,
                         at.bytes, at.characters, at.characters});
  return tree_.items.back();
}

void TreeBuilder::Open(ItemKind kind, uint32_t facts) {
  Add(kind, facts);
  open_.push_back(static_cast<uint32_t>(tree_.items.size() - 1));
}

void TreeBuilder::Close() {
  Item& item = tree_.items[open_.back()];
  open_.pop_back();
  item.next = static_cast<uint32_t>(tree_.items.size());
  item.end = place().bytes;
  item.last = place().characters;
}

void TreeBuilder::Finish() {
  isAside_ = false;
  while (!open_.empty()) Close();
}

// Texts.

void TreeBuilder::Put(std::string_view added) {
  if (added.size() > UINT32_MAX - place().bytes) throw std::bad_alloc();
  text().append(added);
  place().bytes += static_cast<uint32_t>(added.size());
  place().characters += charactersOf(added);
}

/// In the place of a paragraph's end within a cell.
void TreeBuilder::PutOwedSpace() {
  if (std::exchange(owesSpace_, false)) Put(" ");
}

StringId TreeBuilder::Keep(std::string_view kept) {
  if (kept.empty()) return 0;
  const auto [place, isNew] =
      stringIds_.try_emplace(std::string(kept), static_cast<StringId>(tree_.strings.size()));
  if (isNew) tree_.strings.emplace_back(kept);
  return place->second;
}

uint32_t TreeBuilder::KeepRun(const pagerex_run& run) {
  RunFacts facts = plainFacts(run);
  facts.font = Keep(run.font);
  facts.eastAsianFont = Keep(run.east_asian_font);
  facts.otherFont = Keep(run.other_font);
  facts.complexFont = Keep(run.complex_font);
  facts.characterStyle = Keep(run.character_style);
  if (lastRun_ < tree_.runs.size() && tree_.runs[lastRun_] == facts) return lastRun_;
  const std::string key(reinterpret_cast<const char*>(&facts), sizeof facts);
  const auto [place, isNew] = runIds_.try_emplace(key, static_cast<uint32_t>(tree_.runs.size()));
  if (isNew) tree_.runs.push_back(facts);
  return lastRun_ = place->second;
}

void TreeBuilder::Text(std::string_view told, const pagerex_run& run) {
  const uint32_t facts = KeepRun(run);
  const Item& last = tree_.items.back();
  const bool goesOn = last.kind == ItemKind::kRun && last.facts == facts && last.parent == open_.back();
  if (!goesOn) Add(ItemKind::kRun, facts);
  Put(told);
  cellHasText_ |= !told.empty();
  Item& item = tree_.items.back();
  item.end = place().bytes;
  item.last = place().characters;
}

void TreeBuilder::Mark(int mark, const pagerex_run& run) {
  if (mark == PAGEREX_MARK_TAB) return Text("\t", run);
  if (mark == PAGEREX_MARK_LINE_BREAK) return Text("\n", run);
  Add(mark == PAGEREX_MARK_PAGE_BREAK     ? ItemKind::kPageBreak
      : mark == PAGEREX_MARK_COLUMN_BREAK ? ItemKind::kColumnBreak
                                          : ItemKind::kRule,
      0);
  if (mark != PAGEREX_MARK_RULE) Text("\n", run);
}

// Paragraphs and what stands in them.

void TreeBuilder::BeginParagraph(const pagerex_paragraph& p) {
  PutOwedSpace();
  const Place start = place();
  if (p.label.length) {
    Put({p.label.data, p.label.length});
    if (p.label_follow != PAGEREX_FOLLOW_NOTHING) Put(" ");
    cellHasText_ = true;
  }
  ParagraphFacts facts{};
  facts.style = Keep(p.style), facts.label = Keep(p.label);
  facts.position = p.position;
  facts.labelBytes = place().bytes - start.bytes,
  facts.labelCharacters = place().characters - start.characters;
  facts.headingLevel = p.heading_level, facts.outlineLevel = p.outline_level;
  facts.isListItem = p.is_list_item, facts.isBullet = p.is_bullet, facts.listLevel = p.list_level;
  facts.numberFormat = p.number_format, facts.listId = p.list_id, facts.number = p.number;
  facts.alignment = p.alignment, facts.isRightToLeft = p.is_right_to_left;
  facts.keepLines = p.keep_lines, facts.keepWithNext = p.keep_with_next;
  facts.pageBreakBefore = p.page_break_before, facts.widowControl = p.widow_control;
  facts.lineSpacing = p.line_spacing, facts.lineHeight = p.line_height;
  facts.spaceBefore = p.space_before, facts.spaceAfter = p.space_after;
  facts.indentStart = p.indent_start, facts.indentEnd = p.indent_end,
  facts.indentFirstLine = p.indent_first_line;
  facts.background = backgroundOf(p.shading);
  Open(ItemKind::kParagraph, keep(tree_.paragraphs, facts));
  if (p.label_picture) ++pictureCount_;
}

void TreeBuilder::EndParagraph() {
  Close();
  if (tables_ == 0) {
    Put("\n");
  } else {
    owesSpace_ = cellHasText_;
  }
}

void TreeBuilder::BeginLink(const pagerex_link& link) {
  Open(ItemKind::kLink,
       keep(tree_.links, {Keep(link.address), Keep(link.bookmark), Keep(link.title), Keep(link.target)}));
}

void TreeBuilder::BeginRevision(const pagerex_revision& revision) {
  Open(ItemKind::kRevision, keep(tree_.revisions, {revision.kind, revision.date, Keep(revision.author)}));
}

void TreeBuilder::Bookmark(ItemKind kind, std::string_view name) {
  Add(kind, Keep(name));
}

void TreeBuilder::NoteHere(ItemKind kind, const pagerex_note& note) {
  Add(kind, keep(tree_.notes, {note.kind, note.index, Keep(note.label), note.is_custom}));
}

void TreeBuilder::CommentRange(ItemKind kind, uint32_t index) {
  Add(kind, index);
}

void TreeBuilder::CommentReference(const pagerex_comment& comment) {
  Add(ItemKind::kCommentReference, comment.index);
}

void TreeBuilder::FormField(const pagerex_form_field& field, const pagerex_run& run) {
  Add(ItemKind::kFormField,
      keep(tree_.formFields, {field.kind, field.is_checked, Keep(field.name), Keep(field.value)}));
  if (field.kind == PAGEREX_FIELD_CHECK_BOX) return Text(field.is_checked ? kChecked : kNotChecked, run);
  if (field.value.length) Text(std::string_view(field.value.data, field.value.length), run);
}

uint32_t TreeBuilder::KeepPicture(const pagerex_picture& p) {
  return keep(tree_.pictures,
              {Keep(p.description), Keep(p.name), Keep(p.linked_address), pictureCount_, p.identity, p.width,
               p.height, p.is_inline, p.is_behind_text, p.source != nullptr});
}

void TreeBuilder::Picture(const pagerex_picture& picture) {
  Add(ItemKind::kPicture, KeepPicture(picture));
  ++pictureCount_;
}

// Tables. One within another is part of its cell.

void TreeBuilder::BeginTable(const pagerex_table& t) {
  PutOwedSpace();
  TableFacts facts{Keep(t.style),
                   t.depth,
                   t.row_count,
                   t.header_row_count,
                   t.column_count,
                   t.width,
                   t.indent,
                   t.width_kind,
                   t.alignment,
                   t.is_right_to_left,
                   t.is_regular,
                   t.has_merged_cells,
                   {}};
  facts.columnWidths.assign(t.column_widths, t.column_widths + (t.column_widths ? t.column_count : 0));
  ++tables_;
  Open(ItemKind::kTable, keep(tree_.tables, std::move(facts)));
}

void TreeBuilder::EndTable() {
  const uint32_t table = open_.back();
  Close();
  if (--tables_ > 0) return;
  // The end of its last line is not its own, as that of a paragraph is not.
  Item& item = tree_.items[table];
  if (item.end > item.begin) --item.end, --item.last;
}

void TreeBuilder::BeginRow(const pagerex_row& row) {
  if (tables_ == 1) isFirstCell_ = true;
  Open(ItemKind::kRow, keep(tree_.rows, {row.is_header, row.cant_split, row.height, row.columns_before,
                                         row.columns_after, row.change.kind}));
}

void TreeBuilder::EndRow() {
  Close();
  if (tables_ > 1) return;
  owesSpace_ = cellHasText_ = false;
  Put("\n");
}

void TreeBuilder::BeginCell(const pagerex_cell& cell) {
  if (tables_ == 1) {
    if (!isFirstCell_) Put("\t");
    isFirstCell_ = owesSpace_ = cellHasText_ = false;
  }
  Open(ItemKind::kCell, keep(tree_.cells, {cell.width, cell.column_span, cell.row_span,
                                           cell.vertical_alignment, backgroundOf(cell.shading)}));
}

// Parts.

void TreeBuilder::BeginSection(const pagerex_section& s) {
  SectionFacts facts{s.index,
                     s.start,
                     s.page_width,
                     s.page_height,
                     s.margin_top,
                     s.margin_bottom,
                     s.margin_left,
                     s.margin_right,
                     s.gutter,
                     s.header_distance,
                     s.footer_distance,
                     s.column_count,
                     s.is_landscape,
                     s.has_title_page,
                     s.is_right_to_left,
                     s.restarts_page_numbers,
                     s.first_page_number,
                     {}};
  std::copy_n(&s.header_sections[0][0], 6, facts.headerSections);
  Open(ItemKind::kSection, keep(tree_.sections, facts));
}

void TreeBuilder::BeginHeader(const pagerex_header& header) {
  isAside_ = true;
  Open(ItemKind::kHeader, keep(tree_.headers, {header.kind, header.is_footer}));
}

void TreeBuilder::BeginTextBox(const pagerex_text_box&) {
  Open(ItemKind::kTextBox, 0);
}

void TreeBuilder::BeginNote(const pagerex_note& note) {
  isAside_ = true;
  Open(ItemKind::kNote, keep(tree_.notes, {note.kind, note.index, Keep(note.label), note.is_custom}));
}

void TreeBuilder::BeginComment(const pagerex_comment& comment) {
  isAside_ = true;
  Open(ItemKind::kComment,
       keep(tree_.comments, {comment.index, comment.date, Keep(comment.author), Keep(comment.initials)}));
}

void TreeBuilder::EndAside() {
  Close();
  isAside_ = false;
}

}  // namespace pagerex::python
