#include "flow/story_marks.h"

#include <algorithm>
#include <unordered_map>

#include "wordreader/text_marks.h"

namespace pagerex {
namespace {

constexpr size_t kMostStrings = 1 << 16;

/// Of a name no more than any name has: many places may show it.
std::u16string textOf(ByteView bytes) {
  constexpr size_t kLongestName = 512;
  bytes = bytes.part(0, kLongestName);
  std::u16string text;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) text.push_back(bytes.u16(i));
  return text;
}

}  // namespace

// StringTable

void StringTable::Read(ByteView table) {
  strings_.clear();
  const bool isWide = table.u16(0) == 0xFFFF;
  size_t at = isWide ? 2 : 0;
  const size_t count = table.u16(at);
  const size_t extraBytes = table.u16(at + 2);
  at += 4;
  while (strings_.size() < std::min(count, kMostStrings) && at < table.size()) {
    const size_t length = isWide ? size_t{table.u16(at)} * 2 : table.u8(at);
    at += isWide ? 2 : 1;
    const ByteView text = table.part(at, length);
    strings_.push_back({isWide ? text : ByteView(), table.part(at + length, extraBytes)});
    at += length + extraBytes;
  }
}

std::u16string StringTable::Text(uint32_t i) const {
  return i < Count() ? textOf(strings_[i].text) : std::u16string();
}

// FieldMarks

void FieldMarks::Read(ByteView plcfld) {
  table_ = PositionTable(plcfld, sizeof(mso_word::FLD));
  hasEnd_.assign(table_.Count(), false);
  next_ = 0;
  std::vector<uint32_t> open;
  for (uint32_t i = 0; i < table_.Count(); ++i) {
    const uint8_t mark = table_.Record(i).u8(0) & 0x1F;
    if (mark == text_mark::kFieldBegin) open.push_back(i);
    if (mark != text_mark::kFieldEnd || open.empty()) continue;
    hasEnd_[open.back()] = true;
    open.pop_back();
  }
}

bool FieldMarks::Begins(uint32_t position, uint8_t& flt) {
  if (next_ >= table_.Count() || table_.Position(next_) != position)
    next_ = position == 0 ? 0 : table_.UpperBound(position - 1);
  if (next_ >= table_.Count() || table_.Position(next_) != position || !hasEnd_[next_]) return false;
  flt = table_.Record(next_++).u8(1);
  return true;
}

// RangeMarks

void RangeMarks::Read(ByteView starts, uint32_t startBytes, ByteView ends) {
  starts_ = PositionTable(starts, startBytes);
  ends_ = PositionTable(ends, 0);
  startOfEnd_.assign(ends_.Count(), UINT32_MAX);
  for (uint32_t i = 0; i < starts_.Count(); ++i) {
    const uint16_t end = starts_.Record(i).u16(0);
    if (end < startOfEnd_.size()) startOfEnd_[end] = i;
  }
}

RangeMarks::Cursor RangeMarks::From(uint32_t position) const {
  Cursor cursor;
  cursor.nextStart = position == 0 ? 0 : starts_.UpperBound(position - 1);
  cursor.nextEnd = position == 0 ? 0 : ends_.UpperBound(position - 1);
  FindNext(cursor);
  return cursor;
}

void RangeMarks::Advance(Cursor& cursor) const {
  ++(cursor.next.isEnd ? cursor.nextEnd : cursor.nextStart);
  FindNext(cursor);
}

void RangeMarks::FindNext(Cursor& cursor) const {
  while (cursor.nextEnd < ends_.Count() && startOfEnd_[cursor.nextEnd] == UINT32_MAX) ++cursor.nextEnd;
  const uint32_t start = cursor.nextStart < starts_.Count() ? starts_.Position(cursor.nextStart) : UINT32_MAX;
  const uint32_t end = cursor.nextEnd < ends_.Count() ? ends_.Position(cursor.nextEnd) : UINT32_MAX;
  // What is empty begins before it ends; of two others the end comes first.
  const bool isEnd =
      end < start || (end == start && end != UINT32_MAX && startOfEnd_[cursor.nextEnd] < cursor.nextStart);
  cursor.next = isEnd ? Event{end, startOfEnd_[cursor.nextEnd], true} : Event{start, cursor.nextStart, false};
}

// NoteTable

void NoteTable::Read(WordFile& file, NoteKind kind) {
  const bool isFootnote = kind == NoteKind::kFootnote;
  refs_ =
      PositionTable(file.Table(isFootnote ? mso_word::FCLCB_FOOTNOTE_REFS : mso_word::FCLCB_ENDNOTE_REFS), 2);
  texts_ =
      PositionTable(file.Table(isFootnote ? mso_word::FCLCB_FOOTNOTE_TEXT : mso_word::FCLCB_ENDNOTE_TEXT), 0);
  notes_.assign(refs_.Count(), {});
}

// CommentTable

void CommentTable::Read(WordFile& file) {
  refs_ = PositionTable(file.Table(mso_word::FCLCB_ANNOTATION_REFS), sizeof(mso_word::ATRD));
  if (refs_.Count() == 0) return;
  texts_ = PositionTable(file.Table(mso_word::FCLCB_ANNOTATION_TEXT), 0);
  dates_ = file.Table(mso_word::FCLCB_ANNOTATION_DATES);
  hidden_.assign(refs_.Count(), false);
  ReadAuthors(file.Table(mso_word::FCLCB_ANNOTATION_OWNERS));
  constexpr uint32_t kStartBytes = 4;
  ranges_.Read(file.Table(mso_word::FCLCB_ANNOTATION_RANGE_STARTS), kStartBytes,
               file.Table(mso_word::FCLCB_ANNOTATION_RANGE_ENDS));
  MatchRanges(file.Table(mso_word::FCLCB_ANNOTATION_RANGE_NAMES));
}

/// A row of names, each with its length in front.
void CommentTable::ReadAuthors(ByteView names) {
  for (size_t at = 0; at < names.size() && authors_.size() < kMostStrings;) {
    const size_t bytes = size_t{names.u16(at)} * 2;
    authors_.push_back(textOf(names.part(at + 2, bytes)));
    at += 2 + bytes;
  }
  constexpr size_t kInitials = 2, kMostInitials = 9;
  for (uint32_t i = 0; i < refs_.Count(); ++i) {
    const ByteView reference = refs_.Record(i);
    const size_t length = std::min<size_t>(reference.u16(0), kMostInitials);
    initials_.push_back(textOf(reference.part(kInitials, length * 2)));
  }
}

void CommentTable::MatchRanges(ByteView names) {
  constexpr size_t kTag = 2, kTagOfReference = 26;
  StringTable tags;
  tags.Read(names);
  std::unordered_map<uint32_t, uint32_t> comments;
  for (uint32_t i = 0; i < refs_.Count(); ++i) comments.emplace(refs_.Record(i).u32(kTagOfReference), i);
  ofRange_.assign(ranges_.Count(), Count());
  for (uint32_t i = 0; i < ofRange_.size() && i < tags.Count(); ++i) {
    const auto found = comments.find(tags.Extra(i).u32(kTag));
    if (found != comments.end() && found->first != UINT32_MAX) ofRange_[i] = found->second;
  }
}

uint32_t CommentTable::At(uint32_t position) const {
  const uint32_t i = refs_.Find(position);
  return i < Count() && refs_.Position(i) == position ? i : Count();
}

CommentFacts CommentTable::Facts(uint32_t i) const {
  constexpr size_t kAuthor = 20, kDateBytes = 18;
  const uint16_t author = refs_.Record(i).u16(kAuthor);
  return {i, author < authors_.size() ? std::u16string_view(authors_[author]) : std::u16string_view(),
          initials_[i], dates_.u32(size_t{i} * kDateBytes)};
}

}  // namespace pagerex
