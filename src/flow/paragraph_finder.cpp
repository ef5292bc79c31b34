#include "flow/paragraph_finder.h"

#include <algorithm>

#include "flow/text_scan.h"
#include "wordreader/text_marks.h"

namespace pagerex {

void ParagraphFinder::Read(WordFile& file, PieceList& pieces, TextReader& text) {
  pieces_ = &pieces;
  text_ = &text;
  pages_.Read(file, PropertyPages::Kind::kParagraphs);
  file.ReadData(data_, 0);
  hugeBytesLeft_ = 2 * uint64_t{data_.size()};
}

void ParagraphFinder::Find(uint32_t start, uint32_t limit) {
  last_ = {};
  last_.start = start;
  lastLimit_ = limit;
  FindEnd(last_, limit);
  FindProperties(last_);
}

FoundParagraph ParagraphFinder::TextAt(uint32_t start, uint32_t limit) {
  FoundParagraph paragraph;
  paragraph.start = start;
  FindEnd(paragraph, limit);
  return paragraph;
}

void ParagraphFinder::FindEnd(FoundParagraph& paragraph, uint32_t limit) {
  for (uint32_t at = paragraph.start; at < limit;) {
    const std::u16string_view text = text_->At(at, limit);
    if (text.empty()) {
      at = text_->NextText(at, limit);
      continue;
    }
    const size_t found = findParagraphMark(text);
    at += static_cast<uint32_t>(found);
    if (found == text.size()) continue;
    const char16_t mark = text[found];
    if (mark == text_mark::kPageBreak && at + 1 < limit && !EndsWithPageBreak(at)) {
      ++at;
      continue;
    }
    paragraph.textEnd = at;
    paragraph.end = at + 1;
    paragraph.mark = mark;
    return;
  }
  paragraph.textEnd = paragraph.end = limit;
}

/// A page break ends a paragraph where the pages say so; otherwise it stands in one.
bool ParagraphFinder::EndsWithPageBreak(uint32_t position) {
  const TextPiece& piece = pieces_->Find(position);
  const uint32_t offset = piece.OffsetOf(position);
  const PropertyPages::Entry& entry = pages_.At(offset);
  return entry.isThere && entry.end == offset + (piece.isWide ? 2 : 1);
}

void ParagraphFinder::FindProperties(FoundParagraph& paragraph) {
  const uint32_t position = paragraph.end > paragraph.start ? paragraph.end - 1 : paragraph.start;
  const TextPiece& piece = pieces_->Find(position);
  if (piece.start == piece.end) return;
  const PropertyPages::Entry& entry = pages_.At(piece.OffsetOf(position));
  paragraph.istd = entry.properties.u16(0);
  paragraph.sprms = entry.properties.part(2);
  paragraph.prm = piece.prm;
  if (piece.prm != 0) paragraph.pieceSprms = pieces_->Modifier(piece.prm);
  const auto [outline, kind] = KindOf(paragraph.sprms, paragraph.istd);
  if (piece.prm == 0) paragraph.kind = kind;
  paragraph.place = outline.place;
  if (outline.isHuge) {
    paragraph.sprms = Huge(outline.hugeOffset);
    paragraph.place = tablePlaceOf(paragraph.sprms);
  }
  if (!paragraph.pieceSprms.empty()) paragraph.place = tablePlaceOf(paragraph.pieceSprms, paragraph.place);
  paragraph.place.depth = std::min(paragraph.place.depth, kDeepest);
}

ParagraphFinder::Kind ParagraphFinder::KindOf(ByteView sprms, uint16_t istd) {
  if (const Kind* const recent = recentKinds_.Find(sprms, 0, istd, {})) return *recent;
  const Kind kind{outlineOf(sprms), ++kinds_};
  recentKinds_.Keep(sprms, 0, istd, {}, kind);
  return kind;
}

ByteView ParagraphFinder::Huge(uint32_t offset) {
  const auto [found, isNew] = huge_.try_emplace(offset);
  if (!isNew || !data_.good()) return found->second;
  const uint32_t bytes = uint32_t{data_.Keep(offset, 2).u16(0)} + 2;
  // Those of a sound file do not overlap.
  if (bytes > hugeBytesLeft_) return {};
  hugeBytesLeft_ -= bytes;
  return found->second = data_.Keep(offset, bytes).part(2);
}

}  // namespace pagerex
