#include "formats/markdown/block_writer.h"

#include "base/number_text.h"

namespace pagerex {
namespace {

constexpr size_t kNoteIndent = 4;

}  // namespace

size_t BlockWriter::Begin() {
  levels_.clear();
  StartLine(noteIndent_, true);
  return noteIndent_;
}

size_t BlockWriter::BeginItem(const ListItem& item, bool isEmpty) {
  Level before{};
  while (!levels_.empty() && levels_.back().last.level > item.level) Pop(before);
  if (!levels_.empty() && levels_.back().last.level == item.level) {
    if (Continues(levels_.back().last, item)) {
      StartItem(item, isEmpty, false);
      return Indent();
    }
    Pop(before);
  }
  // A list that begins right below the text of the item around it has to begin with text, and with 1.
  const bool canBeBelow = (item.kind == '-' || item.number == 1) && !isEmpty;
  const bool isBelow = before.marker == 0 && isBehindItem_ && (isBehindEmptyItem_ || canBeBelow);
  levels_.push_back({item, item.kind, Indent(), 0});
  if (before.marker != 0 && before.outside == levels_.back().outside) KeepApart(before);
  StartItem(item, isEmpty, !isBelow);
  return Indent();
}

size_t BlockWriter::BeginInItem(uint8_t level) {
  Level before{};
  while (!levels_.empty() && levels_.back().last.level >= level) Pop(before);
  const size_t indent = Indent();
  // An empty item needs something that keeps the paragraph from being its text.
  if (before.marker == 0 && isBehindEmptyItem_) {
    StartLine(indent, false);
    out_.Put("<!-- -->\n");
  }
  StartLine(indent, true);
  return indent;
}

bool BlockWriter::Continues(const ListItem& last, const ListItem& item) {
  return last.list == item.list && last.kind == item.kind &&
         (item.kind == '-' || item.number == last.number + 1);
}

void BlockWriter::Pop(Level& before) {
  before = levels_.back();
  levels_.pop_back();
}

/// Lists below each other are one if nothing else is between them, and their items look alike.
void BlockWriter::KeepApart(const Level& before) {
  Level& level = levels_.back();
  if (before.marker != level.marker) return;
  if (level.marker == '-') {
    level.marker = '*';
  } else {
    StartLine(level.outside, true);
    out_.Put("<!-- -->\n");
  }
}

/// The innermost list's.
void BlockWriter::StartItem(const ListItem& item, bool isEmpty, bool isBehindBlank) {
  Level& level = levels_.back();
  level.last = item;
  StartLine(level.outside, isBehindBlank);
  NumberText marker;
  if (item.kind != '-') marker = number(item.number);
  marker.append(level.marker);
  out_.Put(std::string_view(marker));
  if (!isEmpty) out_.Put(' ');
  level.inside = level.outside + marker.size() + 1;
  isBehindItem_ = true;
  isBehindEmptyItem_ = isEmpty;
}

void BlockWriter::StartLine(size_t indent, bool isBehindBlank) {
  if (isBehindBlank && !isAtBegin_) out_.Put('\n');
  if (!noteMarker_.empty()) {
    out_.Put(noteMarker_);
    noteMarker_.clear();
    indent -= noteIndent_;
  }
  PutIndent(indent);
  isAtBegin_ = isBehindItem_ = isBehindEmptyItem_ = false;
}

void BlockWriter::PutIndent(size_t indent) {
  for (; indent > 0; --indent) out_.Put(' ');
}

void BlockWriter::PutLines(std::string_view lines) {
  const size_t indent = Begin();
  if (indent == 0) return Put(lines);
  for (bool isFirst = true; !lines.empty(); isFirst = false) {
    const size_t end = lines.find('\n') + 1;
    if (!isFirst && end > 1) PutIndent(indent);
    out_.Put(lines.substr(0, end));
    lines.remove_prefix(end);
  }
}

void BlockWriter::BeginNote(std::string_view marker) {
  levels_.clear();
  noteMarker_ = marker;
  noteIndent_ = kNoteIndent;
}

void BlockWriter::EndNote() {
  if (!noteMarker_.empty()) {
    Begin();
    End();
  }
  levels_.clear();
  noteIndent_ = 0;
}

}  // namespace pagerex
