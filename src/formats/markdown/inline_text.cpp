#include "formats/markdown/inline_text.h"

#include <algorithm>

#include "base/utf8.h"
#include "formats/markdown/escape.h"

namespace pagerex {
namespace {

bool isBlank(char16_t unit) {
  return unit < 0x80 ? unit <= 0x20 : flankOf(unit) == Flank::kSpace;
}

/// Of Markdown: others show.
bool isTrimmed(char16_t unit) {
  return unit == ' ' || unit == '\t';
}

}  // namespace

void InlineText::Clear() {
  text_.clear();
  markup_.clear();
  links_.clear();
  pieces_.clear();
  link_ = 0;
}

void InlineText::Add(std::u16string_view text, uint16_t look) {
  const size_t begin = text_.size();
  if (isPlainText(text.data(), text.size())) {
    text_ += text;
  } else {
    AddFiltered(text);
  }
  if (text_.size() == begin) return;
  if (!pieces_.empty()) {
    Piece& last = pieces_.back();
    if (last.kind == Piece::kText && last.look == look && last.link == link_) {
      last.end = text_.size();
      return;
    }
  }
  pieces_.push_back({Piece::kText, false, look, link_, begin, text_.size()});
}

/// A text in which there may be controls or noncharacters.
void InlineText::AddFiltered(std::u16string_view text) {
  size_t done = 0;
  for (size_t i = 0; i < text.size();) {
    if (text[i] >= 0x20 && text[i] < 0xD800) {
      ++i;
      continue;
    }
    const CharacterAt next = characterAt(text.data() + i, text.size() - i);
    const bool isLineEnd = next.code == '\n' || next.code == '\r' || next.code == '\v';
    if (isLineEnd || isNoText(next.code)) {
      text_ += text.substr(done, i - done);
      if (isLineEnd) text_ += u' ';
      done = i + next.units;
    }
    i += next.units;
  }
  text_ += text.substr(done);
}

void InlineText::AddBreak() {
  pieces_.push_back({Piece::kBreak, true, 0, link_, text_.size(), text_.size()});
}

void InlineText::AddStored(Piece::Kind kind, std::string_view markup, uint32_t link) {
  pieces_.push_back({kind, false, 0, link, markup_.size(), markup_.size() + markup.size()});
  markup_ += markup;
}

void InlineText::BeginLink(InlineLink link) {
  links_.push_back(std::move(link));
  link_ = static_cast<uint32_t>(links_.size());
}

bool InlineText::IsEmpty() const {
  for (const Piece& piece : pieces_) {
    if (piece.kind == Piece::kBreak) continue;
    if (piece.kind != Piece::kText) return false;
    for (size_t i = piece.begin; i < piece.end; ++i) {
      if (!isTrimmed(text_[i])) return false;
    }
  }
  return true;
}

uint16_t InlineText::CommonLook() const {
  uint16_t common = 0xFFFF;
  for (const Piece& piece : pieces_) {
    if (piece.kind == Piece::kText && !HasOnlyBlanks(piece)) common &= piece.look;
  }
  return common;
}

void InlineText::Arrange(uint16_t ignored) {
  uint32_t looks = 0;
  for (Piece& piece : pieces_) {
    piece.look = static_cast<uint16_t>(piece.look & ~ignored);
    if (piece.link) piece.look = static_cast<uint16_t>(piece.look & ~kUnderlineLook);
    looks |= piece.look | piece.link;
  }
  if (looks != 0) {
    SplitBlanks();
    LookOfBlanks();
    Join();
  }
  TrimEnds();
}

bool InlineText::HasOnlyBlanks(const Piece& piece) const {
  const std::u16string_view text = TextOf(piece);
  return isBlank(text.front()) && isBlank(text.back()) && std::all_of(text.begin(), text.end(), isBlank);
}

/// Blanks at the edges of a piece become pieces.
void InlineText::SplitBlanks() {
  split_.resize(std::max(split_.size(), 3 * pieces_.size()));
  Piece* next = split_.data();
  for (const Piece& piece : pieces_) {
    *next = piece;
    if (piece.kind == Piece::kText) {
      while (next->begin < next->end && isBlank(text_[next->begin])) ++next->begin;
      if (next->begin > piece.begin) {
        Piece& blanks = *next++;
        *next = piece;
        next->begin = blanks.end = blanks.begin;
        blanks.begin = piece.begin;
        blanks.isBlank = true;
        if (next->begin == next->end) continue;
      }
      while (isBlank(text_[next->end - 1])) --next->end;
      if (next->end < piece.end) {
        next[1] = piece;
        next[1].begin = next->end;
        next[1].isBlank = true;
        ++next;
      }
    }
    ++next;
  }
  pieces_.assign(split_.data(), next);
}

void InlineText::LookOfBlanks() {
  for (size_t i = 0; i < pieces_.size();) {
    if (!pieces_[i].isBlank) {
      ++i;
      continue;
    }
    size_t end = i;
    while (end < pieces_.size() && pieces_[end].isBlank) ++end;
    const bool isBetween = i > 0 && end < pieces_.size();
    const uint16_t look = isBetween ? pieces_[i - 1].look & pieces_[end].look : 0;
    const uint32_t link = isBetween && pieces_[i - 1].link == pieces_[end].link ? pieces_[end].link : 0;
    for (; i < end; ++i) {
      pieces_[i].look = look;
      pieces_[i].link = link;
    }
  }
}

/// Blanks in front of a link stay by themselves: a look may end there.
void InlineText::Join() {
  size_t count = 0;
  for (size_t i = 0; i < pieces_.size(); ++i) {
    const Piece& piece = pieces_[i];
    const bool isKept = piece.isBlank && i + 1 < pieces_.size() && pieces_[i + 1].link != piece.link;
    Piece* const last = count > 0 ? &pieces_[count - 1] : nullptr;
    if (!isKept && last && last->kind == Piece::kText && piece.kind == Piece::kText &&
        last->look == piece.look && last->link == piece.link && last->end == piece.begin) {
      last->end = piece.end;
      last->isBlank &= piece.isBlank;
      continue;
    }
    pieces_[count] = piece;
    if (isKept) pieces_[count].look &= static_cast<uint16_t>(~kCodeLook);
    ++count;
  }
  pieces_.resize(count);
}

bool InlineText::BeginsAndEndsWithText() const {
  const Piece& first = pieces_.front();
  const Piece& last = pieces_.back();
  return first.kind == Piece::kText && last.kind == Piece::kText && !isTrimmed(text_[first.begin]) &&
         !isTrimmed(text_[last.end - 1]);
}

void InlineText::TrimEnds() {
  if (!pieces_.empty() && BeginsAndEndsWithText()) return;
  while (!pieces_.empty()) {
    Piece& last = pieces_.back();
    if (last.kind == Piece::kText) {
      while (last.begin < last.end && isTrimmed(text_[last.end - 1])) --last.end;
    }
    if (last.kind != Piece::kBreak && last.begin < last.end) break;
    pieces_.pop_back();
  }
  size_t first = 0;
  for (; first < pieces_.size(); ++first) {
    Piece& piece = pieces_[first];
    if (piece.kind == Piece::kText) {
      while (piece.begin < piece.end && isTrimmed(text_[piece.begin])) ++piece.begin;
    }
    if (piece.kind != Piece::kBreak && piece.begin < piece.end) break;
  }
  if (first > 0) pieces_.erase(pieces_.begin(), pieces_.begin() + static_cast<ptrdiff_t>(first));
}

}  // namespace pagerex
