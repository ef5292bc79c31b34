#include "convert/host_handler.h"

#include <algorithm>
#include <new>

#include "base/utf8.h"
#include "convert/host_facts.h"
#include "convert/structures.h"

namespace pagerex {

static_assert(static_cast<int>(Mark::kTab) == PAGEREX_MARK_TAB &&
              static_cast<int>(Mark::kLineBreak) == PAGEREX_MARK_LINE_BREAK &&
              static_cast<int>(Mark::kPageBreak) == PAGEREX_MARK_PAGE_BREAK &&
              static_cast<int>(Mark::kColumnBreak) == PAGEREX_MARK_COLUMN_BREAK &&
              static_cast<int>(Mark::kRule) == PAGEREX_MARK_RULE);

static_assert(static_cast<int>(HeaderKind::kEven) == PAGEREX_HEADER_EVEN &&
              static_cast<int>(HeaderKind::kOdd) == PAGEREX_HEADER_ODD &&
              static_cast<int>(HeaderKind::kFirst) == PAGEREX_HEADER_FIRST);
static_assert(static_cast<int>(NoteKind::kFootnote) == PAGEREX_NOTE_FOOTNOTE &&
              static_cast<int>(NoteKind::kEndnote) == PAGEREX_NOTE_ENDNOTE);
static_assert(static_cast<int>(ParagraphFacts::Follow::kTab) == PAGEREX_FOLLOW_TAB &&
              static_cast<int>(ParagraphFacts::Follow::kSpace) == PAGEREX_FOLLOW_SPACE &&
              static_cast<int>(ParagraphFacts::Follow::kNothing) == PAGEREX_FOLLOW_NOTHING);
static_assert(static_cast<int>(FormFieldFacts::Kind::kText) == PAGEREX_FIELD_TEXT &&
              static_cast<int>(FormFieldFacts::Kind::kCheckBox) == PAGEREX_FIELD_CHECK_BOX &&
              static_cast<int>(FormFieldFacts::Kind::kDropDown) == PAGEREX_FIELD_DROP_DOWN);
static_assert(static_cast<int>(PictureType::kEmf) == PAGEREX_PICTURE_EMF &&
              static_cast<int>(PictureType::kWmf) == PAGEREX_PICTURE_WMF &&
              static_cast<int>(PictureType::kPict) == PAGEREX_PICTURE_PICT &&
              static_cast<int>(PictureType::kJpeg) == PAGEREX_PICTURE_JPEG &&
              static_cast<int>(PictureType::kPng) == PAGEREX_PICTURE_PNG &&
              static_cast<int>(PictureType::kDib) == PAGEREX_PICTURE_DIB &&
              static_cast<int>(PictureType::kTiff) == PAGEREX_PICTURE_TIFF);

/// What has begun is not told to end once the host has had enough.
template <class... Given>
void HostHandler::Call(int (*function)(void*, Given...), std::type_identity_t<Given>... given) {
  if (!function || hasStopped_) return;
  try {
    if (function(user_, given...) == 0) return control_.LookAtClock();
  } catch (...) {
  }
  hasStopped_ = true;
  control_.Stop(StopCause::kCanceled);
}

void HostHandler::BeginDocument(const DocumentFacts& facts) {
  names_ = {facts.styles, facts.fonts};
  if (!host_.begin_document) return;
  std::vector<pagerex_custom_property> custom;
  const pagerex_document_facts told = hostFacts(facts, texts_, custom);
  Call(host_.begin_document, &told);
}

void HostHandler::BeginSection(const SectionFacts& facts) {
  const pagerex_section told = hostSection(facts, columns_);
  Call(host_.begin_section, &told);
}

void HostHandler::BeginHeader(const HeaderFacts& facts) {
  const pagerex_header told = {sizeof told, static_cast<int32_t>(facts.kind), facts.isFooter};
  Call(host_.begin_header, &told);
}

void HostHandler::BeginParagraph(const ParagraphFacts& facts) {
  if (!host_.begin_paragraph) return;
  pagerex_paragraph told = {};
  told.size = sizeof told;
  told.position = facts.position;
  told.heading_level = facts.headingLevel;
  told.is_list_item = facts.isListItem;
  told.is_bullet = facts.isBullet;
  told.label_follow = static_cast<uint8_t>(facts.labelFollow);
  told.number_format = facts.numberFormat;
  told.list_id = facts.listId;
  told.number = facts.number;
  told.label_run = facts.labelProperties ? labelRun_.Of(*facts.labelProperties, names_) : nullptr;
  told.mark_run = markRun_.Of(facts.markProperties, names_);
  paragraph_.Fill(facts.properties, told);
  pagerex_picture bullet = {};
  pagerex_picture_source source{};
  if (facts.labelPicture) {
    bullet = Shape(*facts.labelPicture);
    source.source = facts.labelPicture->source;
    if (source.source) bullet.source = &source;
    told.label_picture = &bullet;
  }
  // One block holds all texts of the call.
  texts_.Fill({{facts.styleName, &told.style},
               {facts.label, &told.label},
               {facts.labelPicture ? facts.labelPicture->description : u"", &bullet.description},
               {facts.labelPicture ? facts.labelPicture->name : u"", &bullet.name},
               {facts.labelPicture ? facts.labelPicture->linkedAddress : u"", &bullet.linked_address}});
  Call(host_.begin_paragraph, &told);
  if (source.hasNoMemory) throw std::bad_alloc();
}

/// Long texts go in parts, so that the room for them stays small.
void HostHandler::Text(std::u16string_view text, const RunProperties& properties) {
  constexpr size_t kMost = 4096;
  if (!host_.text) return;
  const pagerex_run* const run = run_.Of(properties, names_);
  while (!text.empty()) {
    size_t units = std::min(text.size(), kMost);
    const bool endsWithHalf = units < text.size() && (text[units - 1] & 0xFC00) == 0xD800;
    if (endsWithHalf) --units;
    if (characters_.size() < mostUtf8(units)) characters_.resize(mostUtf8(units));
    const size_t length = utf8FromUtf16(text.data(), units, characters_.data(), Utf8Filter::kControls);
    if (length > 0) Call(host_.text, characters_.data(), length, run);
    text.remove_prefix(units);
  }
}

void HostHandler::MarkHere(Mark mark, const RunProperties& properties) {
  if (host_.mark) Call(host_.mark, static_cast<int>(mark), run_.Of(properties, names_));
}

void HostHandler::BeginLink(const LinkFacts& facts) {
  pagerex_link told = {};
  told.size = sizeof told;
  texts_.Fill({{facts.address, &told.address},
               {facts.bookmark, &told.bookmark},
               {facts.title, &told.title},
               {facts.target, &told.target}});
  Call(host_.begin_link, &told);
}

void HostHandler::TellName(int (*function)(void*, const char*, size_t), std::u16string_view name) {
  pagerex_text told = {};
  texts_.Fill({{name, &told}});
  Call(function, told.data, told.length);
}

pagerex_note HostHandler::Note(const NoteFacts& facts) {
  pagerex_note told = {sizeof told, static_cast<int32_t>(facts.kind), facts.index, {}, facts.isCustom};
  texts_.Fill({{facts.label, &told.label}});
  return told;
}

void HostHandler::TellNote(int (*function)(void*, const pagerex_note*, const pagerex_run*),
                           const NoteFacts& facts, const RunProperties& properties) {
  const pagerex_note told = Note(facts);
  Call(function, &told, run_.Of(properties, names_));
}

void HostHandler::NoteReference(const NoteFacts& facts, const RunProperties& properties) {
  TellNote(host_.note_reference, facts, properties);
}

void HostHandler::NoteMark(const NoteFacts& facts, const RunProperties& properties) {
  TellNote(host_.note_mark, facts, properties);
}

void HostHandler::BeginNote(const NoteFacts& facts) {
  const pagerex_note told = Note(facts);
  Call(host_.begin_note, &told);
}

void HostHandler::TellComment(int (*function)(void*, const pagerex_comment*), const CommentFacts& facts) {
  pagerex_comment told = {sizeof told, facts.index, hostDate(facts.dttm), {}, {}};
  texts_.Fill({{facts.author, &told.author}, {facts.initials, &told.initials}});
  Call(function, &told);
}

void HostHandler::BeginRevision(const RevisionFacts& facts) {
  pagerex_revision told = {sizeof told, facts.kind, hostDate(facts.dttm), {}};
  texts_.Fill({{facts.author, &told.author}});
  Call(host_.begin_revision, &told);
}

void HostHandler::FormField(const FormFieldFacts& facts, const RunProperties& properties) {
  pagerex_form_field told = {sizeof told, static_cast<int32_t>(facts.kind), facts.isChecked, {}, {}};
  texts_.Fill({{facts.name, &told.name}, {facts.value, &told.value}});
  Call(host_.form_field, &told, run_.Of(properties, names_));
}

pagerex_picture HostHandler::Shape(const PictureFacts& facts) {
  pagerex_picture told = {};
  told.size = sizeof told;
  texts_.Fill({{facts.description, &told.description},
               {facts.name, &told.name},
               {facts.linkedAddress, &told.linked_address}});
  told.identity = facts.identity;
  told.width = facts.width;
  told.height = facts.height;
  told.left = facts.left;
  told.top = facts.top;
  told.is_inline = facts.isInline;
  told.wrap = facts.wrap;
  told.is_behind_text = facts.isBehindText;
  return told;
}

void HostHandler::Picture(const PictureFacts& facts) {
  pagerex_picture told = Shape(facts);
  pagerex_picture_source source{facts.source};
  if (facts.source) told.source = &source;
  Call(host_.picture, &told);
  if (source.hasNoMemory) throw std::bad_alloc();
}

void HostHandler::BeginTextBox(const TextBoxFacts& facts) {
  const pagerex_picture shape = Shape(facts.shape);
  const pagerex_text_box told = {sizeof told, facts.index, &shape};
  Call(host_.begin_text_box, &told);
}

void HostHandler::BeginTable(const TableProperties& properties) {
  pagerex_table told = hostTable(properties);
  texts_.Fill({{properties.style != 0 ? names_.Style(properties.style) : u"", &told.style}});
  Call(host_.begin_table, &told);
}

void HostHandler::BeginRow(const RowProperties& properties) {
  const pagerex_row told = hostRow(properties);
  Call(host_.begin_row, &told);
}

void HostHandler::BeginCell(const CellProperties& properties) {
  const pagerex_cell told = hostCell(properties);
  Call(host_.begin_cell, &told);
}

}  // namespace pagerex

int pagerex_picture_source::Read(pagerex_picture_data& out) {
  pagerex_picture_data told = {};
  told.size = sizeof told;
  int code = PAGEREX_RESULT_UNREADABLE;
  try {
    const pagerex::PictureData data = source->Read();
    if (data.type != pagerex::PictureType::kNone) {
      code = PAGEREX_RESULT_OK;
      told.type = static_cast<int32_t>(data.type);
      told.is_deflated = data.isDeflated;
      told.data = data.bytes.data();
      told.length = data.bytes.size();
      told.raw_length = data.rawSize;
    }
  } catch (const std::bad_alloc&) {
    hasNoMemory = true;
    code = PAGEREX_RESULT_OUT_OF_MEMORY;
  } catch (...) {  // a damaged document
    code = PAGEREX_RESULT_UNREADABLE;
  }
  pagerex::giveStructure(told, out);
  return code;
}
