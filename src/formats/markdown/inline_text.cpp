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
    for (size_t i = 0; i < text.size();) {
      const CharacterAt next = characterAt(text.data() + i, text.size() - i);
      if (next.code == '\n' || next.code == '\r' || next.code == '\v') {
        text_ += u' ';
      } else if (!isNoText(next.code)) {
        text_ += text.substr(i, next.units);
      }
      i += next.units;
    }
  }
  if (text_.size() == begin) return;
  if (!pieces_.empty()) {
    Piece& last = pieces_.back();
    if (last.kind == Piece::kText && last.look == look && last.link == link_) {
      last.end = text_.size();
      return;
    }
  }
  pieces_.push_back({Piece::kText, look, link_, begin, text_.size()});
}

void InlineText::AddBreak() {
  pieces_.push_back({Piece::kBreak, 0, link_, text_.size(), text_.size()});
}

void InlineText::AddStored(Piece::Kind kind, std::string_view markup, uint32_t link) {
  pieces_.push_back({kind, 0, link, markup_.size(), markup_.size() + markup.size()});
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
    if (piece.kind == Piece::kText && !IsBlank(piece)) common &= piece.look;
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

bool InlineText::IsBlank(const Piece& piece) const {
  if (piece.kind != Piece::kText) return piece.kind == Piece::kBreak;
  if (!isBlank(text_[piece.begin]) || !isBlank(text_[piece.end - 1])) return false;
  const std::u16string_view text = TextOf(piece);
  return std::all_of(text.begin(), text.end(), isBlank);
}

/// Blanks at the edges of a piece become pieces.
void InlineText::SplitBlanks() {
  ordered_.clear();
  for (const Piece& piece : pieces_) {
    Piece middle = piece;
    if (piece.kind == Piece::kText) {
      while (middle.begin < middle.end && isBlank(text_[middle.begin])) ++middle.begin;
      while (middle.begin < middle.end && isBlank(text_[middle.end - 1])) --middle.end;
    }
    if (middle.begin > piece.begin) {
      ordered_.push_back({Piece::kText, piece.look, piece.link, piece.begin, middle.begin});
    }
    if (piece.kind != Piece::kText || middle.begin < middle.end) ordered_.push_back(middle);
    if (middle.begin < middle.end && middle.end < piece.end) {
      ordered_.push_back({Piece::kText, piece.look, piece.link, middle.end, piece.end});
    }
  }
  pieces_.swap(ordered_);
}

void InlineText::LookOfBlanks() {
  for (size_t i = 0; i < pieces_.size();) {
    if (!IsBlank(pieces_[i])) {
      ++i;
      continue;
    }
    size_t end = i;
    while (end < pieces_.size() && IsBlank(pieces_[end])) ++end;
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
  ordered_.clear();
  for (size_t i = 0; i < pieces_.size(); ++i) {
    const Piece& piece = pieces_[i];
    const bool isKept = IsBlank(piece) && i + 1 < pieces_.size() && pieces_[i + 1].link != piece.link;
    Piece* const last = ordered_.empty() ? nullptr : &ordered_.back();
    if (!isKept && last && last->kind == Piece::kText && piece.kind == Piece::kText &&
        last->look == piece.look && last->link == piece.link && last->end == piece.begin) {
      last->end = piece.end;
    } else {
      ordered_.push_back(piece);
      if (isKept) ordered_.back().look &= static_cast<uint16_t>(~kCodeLook);
    }
  }
  pieces_.swap(ordered_);
}

void InlineText::TrimEnds() {
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
