#include "formats/markdown_reader.h"

#include <cmark-gfm-core-extensions.h>
#include <cmark-gfm-extension_api.h>
#include <cmark-gfm.h>

#include <memory>
#include <string_view>

#include "base/encoding.h"
#include "formats/markdown/inline_text.h"

namespace support {
namespace {

struct TagRow {
  std::string_view name;
  uint16_t look;
};
constexpr TagRow kTags[] = {
    {"ins", pagerex::kInsertedLook},  {"del", pagerex::kStrikeLook},  {"strong", pagerex::kBoldLook},
    {"em", pagerex::kItalicLook},     {"u", pagerex::kUnderlineLook}, {"sup", pagerex::kSuperscriptLook},
    {"sub", pagerex::kSubscriptLook}, {"code", pagerex::kCodeLook},
};
constexpr std::string_view kNotePlace = "<a id=\"note-", kNoteLink = "<sup><a href=\"#note-";

std::string_view literalOf(cmark_node* node) {
  const char* const literal = cmark_node_get_literal(node);
  return literal ? literal : "";
}

std::string unescaped(std::string_view html) {
  constexpr std::pair<std::string_view, char> kEntities[] = {
      {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}};
  std::string text;
  while (!html.empty()) {
    bool isEntity = false;
    for (const auto& [entity, c] : kEntities) {
      if (!html.starts_with(entity)) continue;
      text += c;
      html.remove_prefix(entity.size());
      isEntity = true;
      break;
    }
    if (isEntity) continue;
    text += html[0];
    html.remove_prefix(1);
  }
  return text;
}

class Reader {
 public:
  ReadMarkdown read;

  void ReadBlock(cmark_node* node);

 private:
  void ReadList(cmark_node* list);
  void ReadInlines(cmark_node* parent, uint16_t look);
  void ReadInline(cmark_node* node, uint16_t look);
  void ReadTag(std::string_view tag);
  void ReadHtmlBlock(std::string_view html);
  void ReadCode(std::string_view code);
  void Add(std::string_view text, uint16_t look);
  void Keep(bool isCell = false);

  ShownText shown_;
  uint16_t tagLook_ = 0;
  uint32_t tables_ = 0;
  bool isInNote_ = false;
  bool isBehindNotePlace_ = false;  ///< the paragraph is a note that is linked to
};

void Reader::Add(std::string_view text, uint16_t look) {
  for (size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t code = size == 1 ? lead : lead & (0x7Fu >> size);
    for (size_t k = 1; k < size; ++k) code = code << 6 | (static_cast<unsigned char>(text[i + k]) & 0x3F);
    addShown(shown_, code, look);
    i += size;
  }
}

void Reader::Keep(bool isCell) {
  ShownText shown = trimmed(std::move(shown_));
  shown_ = {};
  const bool isNote = isInNote_ || isBehindNotePlace_;
  if (isBehindNotePlace_) {
    // Its label.
    const size_t end = shown.text.find("] ");
    if (end != std::string::npos) {
      shown.looks.erase(0, end + 1);
      shown.text.erase(0, end + 2);
    }
  }
  isBehindNotePlace_ = false;
  if (shown.text.empty() && (shown.label.empty() || isCell)) return;
  (isNote ? read.notes : read.body).push_back(std::move(shown));
}

void Reader::ReadBlock(cmark_node* node) {
  const std::string_view type = cmark_node_get_type_string(node);
  if (type == "paragraph" || type == "heading" || type == "table_cell") {
    tagLook_ = 0;
    ReadInlines(node, 0);
    return Keep(type == "table_cell");
  }
  if (type == "list") return ReadList(node);
  if (type == "html_block") return ReadHtmlBlock(literalOf(node));
  if (type == "code_block") return ReadCode(literalOf(node));
  const bool isNote = cmark_node_get_type(node) == CMARK_NODE_FOOTNOTE_DEFINITION;
  isInNote_ |= isNote;
  for (cmark_node* child = cmark_node_first_child(node); child; child = cmark_node_next(child))
    ReadBlock(child);
  if (isNote) isInNote_ = false;
}

void Reader::ReadList(cmark_node* list) {
  int number = cmark_node_get_list_start(list);
  const bool isOrdered = cmark_node_get_list_type(list) == CMARK_ORDERED_LIST;
  const char behind = cmark_node_get_list_delim(list) == CMARK_PAREN_DELIM ? ')' : '.';
  for (cmark_node* item = cmark_node_first_child(list); item; item = cmark_node_next(item), ++number) {
    shown_.label = isOrdered ? std::to_string(number) + behind : "-";
    cmark_node* child = cmark_node_first_child(item);
    const bool hasText = child && cmark_node_get_type(child) == CMARK_NODE_PARAGRAPH;
    if (!hasText) Keep();
    for (; child; child = cmark_node_next(child)) ReadBlock(child);
  }
}

void Reader::ReadInlines(cmark_node* parent, uint16_t look) {
  for (cmark_node* node = cmark_node_first_child(parent); node; node = cmark_node_next(node)) {
    ReadInline(node, look);
  }
}

void Reader::ReadInline(cmark_node* node, uint16_t look) {
  const std::string_view type = cmark_node_get_type_string(node);
  const auto with = [&](uint16_t more) { return static_cast<uint16_t>(look | more); };
  if (type == "text") return Add(literalOf(node), with(tagLook_));
  if (type == "code") return Add(literalOf(node), with(tagLook_ | pagerex::kCodeLook));
  if (type == "softbreak" || type == "linebreak") return addShown(shown_, ' ', 0);
  if (type == "html_inline") return ReadTag(literalOf(node));
  if (cmark_node_get_type(node) == CMARK_NODE_FOOTNOTE_REFERENCE || type == "image") return;
  if (type == "strong") return ReadInlines(node, with(pagerex::kBoldLook));
  if (type == "emph") return ReadInlines(node, with(pagerex::kItalicLook));
  if (type == "strikethrough") return ReadInlines(node, with(pagerex::kStrikeLook));
  if (type == "link" && std::string_view(cmark_node_get_url(node)).starts_with("#note-")) return;
  ReadInlines(node, look);
}

void Reader::ReadTag(std::string_view tag) {
  if (tag.starts_with(kNotePlace)) isBehindNotePlace_ = true;
  if (tag.starts_with("<br")) addShown(shown_, ' ', 0);
  const bool isEnd = tag.starts_with("</");
  tag.remove_prefix(isEnd ? 2 : 1);
  for (const TagRow& row : kTags) {
    if (tag.substr(0, tag.find_first_of(" >")) != row.name) continue;
    tagLook_ = static_cast<uint16_t>(isEnd ? tagLook_ & ~row.look : tagLook_ | row.look);
  }
}

/// A table.
void Reader::ReadHtmlBlock(std::string_view html) {
  tagLook_ = 0;
  while (!html.empty()) {
    if (html.starts_with(kNoteLink)) {
      const size_t end = html.find("</sup>");
      html.remove_prefix(end + 6);
    } else if (html[0] == '<') {
      const size_t end = html.find('>') + 1;
      const std::string_view tag = html.substr(0, end);
      if (tag == "<table>") ++tables_;
      if (tag == "</table>") --tables_;
      const bool isCellEnd = tag == "</td>" || tag == "</th>";
      if (isCellEnd && tables_ == 1) Keep(true);
      if (isCellEnd || tag == "<table>" || tag == "<hr>") addShown(shown_, ' ', 0);
      ReadTag(tag);
      html.remove_prefix(end);
    } else {
      const size_t end = std::min(html.find('<'), html.size());
      Add(unescaped(html.substr(0, end)), tagLook_);
      html.remove_prefix(end);
    }
  }
  shown_ = {};
}

void Reader::ReadCode(std::string_view code) {
  while (!code.empty()) {
    const size_t end = std::min(code.find('\n'), code.size() - 1);
    Add(code.substr(0, end), 0);
    Keep();
    code.remove_prefix(end + 1);
  }
}

}  // namespace

ReadMarkdown readMarkdown(const std::string& markdown) {
  cmark_gfm_core_extensions_ensure_registered();
  const std::unique_ptr<cmark_parser, decltype(&cmark_parser_free)> parser(
      cmark_parser_new(CMARK_OPT_FOOTNOTES), cmark_parser_free);
  for (const char* const name : {"table", "strikethrough", "autolink"}) {
    cmark_parser_attach_syntax_extension(parser.get(), cmark_find_syntax_extension(name));
  }
  cmark_parser_feed(parser.get(), markdown.data(), markdown.size());
  const std::unique_ptr<cmark_node, decltype(&cmark_node_free)> document(cmark_parser_finish(parser.get()),
                                                                         cmark_node_free);
  Reader reader;
  reader.ReadBlock(document.get());
  return std::move(reader.read);
}

}  // namespace support
