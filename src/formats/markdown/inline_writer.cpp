#include "formats/markdown/inline_writer.h"

#include <algorithm>

namespace pagerex {

/// How a look is spelled, the outermost of equal length first.
struct InlineWriter::Look {
  uint16_t bit;
  std::string_view delimiter;  ///< empty where there is none
  std::string_view open, close;
};

constexpr InlineWriter::Look InlineWriter::kLooks[] = {
    {kInsertedLook, {}, "<ins>", "</ins>"},    {kDeletedLook, {}, "<del>", "</del>"},
    {kStrikeLook, "~~", "<del>", "</del>"},    {kBoldLook, "**", "<strong>", "</strong>"},
    {kItalicLook, "*", "<em>", "</em>"},       {kUnderlineLook, {}, "<u>", "</u>"},
    {kSuperscriptLook, {}, "<sup>", "</sup>"}, {kSubscriptLook, {}, "<sub>", "</sub>"},
};

namespace {

constexpr size_t kNowhere = static_cast<size_t>(-1);

using Piece = InlineText::Piece;

constexpr uint16_t kSpans = kCodeLook - 1;  ///< looks that have others in them

bool isSpaceOrPunctuation(Flank flank) {
  return flank == Flank::kSpace || flank == Flank::kPunctuation;
}

/// Whether a delimiter that stands between two characters begins emphasis, or, turned around, ends it.
bool flanks(Flank outside, Flank inside) {
  return inside == Flank::kWord || (inside != Flank::kSpace && isSpaceOrPunctuation(outside));
}

size_t longestBackticks(std::u16string_view text) {
  size_t longest = 0, count = 0;
  for (const char16_t unit : text) {
    count = unit == '`' ? count + 1 : 0;
    longest = std::max(longest, count);
  }
  return longest;
}

bool isAsciiBlank(char16_t unit) {
  return unit == ' ' || unit == '\t';
}

}  // namespace

InlineWriter::InlineWriter(const InlineText& text, const InlineForm& form, std::string& out)
    : text_(text), form_(form), out_(out), begin_(out.size()), isAtLineStart_(form.isAtLineStart) {
  if (!form.isAtLineStart) last_ = Flank::kPunctuation;
}

void InlineWriter::Write() {
  const std::vector<Piece>& pieces = text_.pieces();
  const bool isPlain =
      pieces.size() == 1 && pieces[0].kind == Piece::kText && (pieces[0].look | pieces[0].link) == 0;
  if (isPlain) return WriteText(text_.TextOf(pieces[0]), true);
  WriteRange(0, text_.pieces().size(), kSpans, 0, Flank::kSpace);
}

/// The pieces from `begin` up to `end`. `looks` are those that do not stand around them already; `behind` is
/// what follows them.
void InlineWriter::WriteRange(size_t begin, size_t end, uint16_t looks, uint32_t link, Flank behind) {
  for (size_t i = begin; i < end;) {
    const Piece& piece = text_.pieces()[i];
    const Look* longest = nullptr;
    size_t spanEnd = i;
    const bool beginsLink = piece.link != 0 && piece.link != link;
    if (beginsLink) spanEnd = EndOfLink(i, end);
    if ((piece.look & looks) && !piece.isBlank) {
      for (const Look& look : kLooks) {
        if (!(piece.look & looks & look.bit)) continue;
        const size_t lookEnd = EndOfLook(i, end, look.bit, link);
        if (lookEnd <= spanEnd) continue;
        longest = &look;
        spanEnd = lookEnd;
      }
    }
    if (spanEnd == i) {
      WritePiece(i++);
      continue;
    }
    if (longest) {
      WriteLook(*longest, i, spanEnd, static_cast<uint16_t>(looks & ~longest->bit), link,
                FlankAt(spanEnd, end, looks, link, behind));
    } else {
      WriteLink(i, spanEnd, looks);
    }
    i = spanEnd;
  }
}

/// Where a look that begins at `begin` ends: behind a link or before it, not within.
size_t InlineWriter::EndOfLook(size_t begin, size_t end, uint16_t look, uint32_t link) const {
  const std::vector<Piece>& pieces = text_.pieces();
  size_t i = begin, linkBegin = begin;
  for (; i < end && (pieces[i].look & look); ++i) {
    if (i == begin || pieces[i].link != pieces[i - 1].link) linkBegin = i;
  }
  const bool isWithinLink =
      i < end && pieces[i].link != 0 && pieces[i].link != link && pieces[i - 1].link == pieces[i].link;
  if (!isWithinLink || linkBegin == begin) return i;
  while (pieces[linkBegin - 1].isBlank) --linkBegin;
  return linkBegin;
}

size_t InlineWriter::EndOfLink(size_t begin, size_t end) const {
  size_t i = begin;
  while (i < end && text_.pieces()[i].link == text_.pieces()[begin].link) ++i;
  return i;
}

/// What a reader sees at the beginning of a piece: its text, or what is written in front. GitHub looks
/// through "~".
Flank InlineWriter::FlankAt(size_t index, size_t end, uint16_t looks, uint32_t link, Flank behind) const {
  if (index >= end) return behind;
  const Piece& piece = text_.pieces()[index];
  if (piece.kind == Piece::kBreak) return Flank::kSpace;
  const unsigned open = piece.look & (looks | kCodeLook);
  if (piece.kind != Piece::kText || piece.link != link || (open != 0 && open != kStrikeLook)) {
    return Flank::kPunctuation;
  }
  return firstFlank(text_.TextOf(piece));
}

/// Emphasis is spelled inside out: only what stands in it tells whether a delimiter can begin and end it.
/// Where delimiters of two looks meet, only looks that begin or end together may share them.
void InlineWriter::WriteLook(const Look& look, size_t begin, size_t end, uint16_t looks, uint32_t link,
                             Flank behind) {
  BeginSpan();
  const size_t start = out_.size();
  const Flank before = last_;
  const bool meets =
      delimiterEnd_ == start && start > begin_ && !look.delimiter.empty() && out_.back() == look.delimiter[0];
  const Flank first = FlankAt(begin, end, looks, link, behind);
  const bool hasStrikeFirst = (text_.pieces()[begin].look & looks & kStrikeLook) != 0;
  const bool isStar = !look.delimiter.empty() && look.delimiter[0] == '*';
  const size_t outerStar = starBegin_;
  if (isStar) starBegin_ = start;
  ++depth_;
  WriteRange(begin, end, looks, link, behind);
  --depth_;
  starBegin_ = outerStar;
  bool isDelimited =
      !IsHtml() && !look.delimiter.empty() && !meets && (look.bit != kStrikeLook || form_.hasStrikes);
  if (isDelimited) {
    const char mark = look.delimiter[0];
    const bool sharesBegin = out_[start] == mark;
    const bool sharesEnd = delimiterEnd_ == out_.size() && out_.back() == mark;
    isDelimited = (sharesBegin || flanks(before, hasStrikeFirst ? Flank::kPunctuation : first)) &&
                  (sharesEnd || flanks(behind, last_));
    // Within emphasis it could end that.
    const bool isWithin = isStar && outerStar != kNowhere && outerStar != start;
    if (isWithin && flanks(first, before)) isDelimited = false;
  }
  out_.insert(start, isDelimited ? look.delimiter : look.open);
  out_ += isDelimited ? look.delimiter : look.close;
  if (isDelimited) delimiterEnd_ = out_.size();
  // GitHub looks through "~", others do not.
  const bool isSeenThrough = isDelimited && look.bit == kStrikeLook;
  if (!isSeenThrough) last_ = Flank::kPunctuation;
  if (last_ == Flank::kWord) last_ = Flank::kUnclear;
}

void InlineWriter::WriteLink(size_t begin, size_t end, uint16_t looks) {
  BeginSpan();
  const InlineLink& link = text_.LinkOf(text_.pieces()[begin]);
  if (IsHtml()) {
    out_ += "<a href=\"";
    appendHtml(out_, std::string_view(link.address));
    out_ += '"';
    if (!link.title.empty()) {
      out_ += " title=\"";
      appendHtml(out_, link.title);
      out_ += '"';
    }
    out_ += '>';
  } else {
    out_ += '[';
  }
  last_ = Flank::kPunctuation;
  ++depth_;
  isInLink_ = true;
  WriteRange(begin, end, looks, text_.pieces()[begin].link, Flank::kPunctuation);
  isInLink_ = false;
  --depth_;
  if (IsHtml()) {
    out_ += "</a>";
  } else {
    out_ += "](";
    appendDestination(out_, link.address);
    if (!link.title.empty()) {
      out_ += " \"";
      appendTitle(out_, link.title, form_.kind == InlineForm::kCell);
      out_ += '"';
    }
    out_ += ')';
  }
  last_ = Flank::kPunctuation;
}

void InlineWriter::BeginSpan() {
  WriteBreaks();
  isAtLineStart_ = isBehindReference_ = false;
}

void InlineWriter::WritePiece(size_t index) {
  const Piece& piece = text_.pieces()[index];
  if (piece.kind == Piece::kBreak) {
    ++breaks_;
    return;
  }
  if (piece.kind == Piece::kText) {
    if (piece.look & kCodeLook) return WriteCode(text_.TextOf(piece));
    std::u16string_view text = text_.TextOf(piece);
    const bool isLast = index + 1 == text_.pieces().size();
    const bool isBeforeBreak = !isLast && text_.pieces()[index + 1].kind == Piece::kBreak;
    while (isBeforeBreak && !text.empty() && isAsciiBlank(text.back())) text.remove_suffix(1);
    return WriteText(text, isLast && depth_ == 0);
  }
  BeginSpan();
  out_ += text_.MarkupOf(piece);
  last_ = Flank::kPunctuation;
  isBehindReference_ = piece.kind == Piece::kReference;
}

void InlineWriter::WriteText(std::u16string_view text, bool isLast) {
  if (breaks_ > 0) {
    while (!text.empty() && isAsciiBlank(text[0])) text.remove_prefix(1);
    if (text.empty()) return;
    WriteBreaks();
  }
  if (text.empty()) return;
  if (IsHtml()) {
    appendHtml(out_, text);
  } else {
    MarkdownPlace place;
    place.isInCell = form_.kind == InlineForm::kCell;
    place.isInBrackets = isInLink_;
    place.isLineStart = isAtLineStart_ && form_.kind == InlineForm::kParagraph;
    place.isFirstLine = isFirstLine_;
    place.isBehindReference = isBehindReference_;
    place.isLast = isLast;
    appendEscaped(out_, text, place);
  }
  isAtLineStart_ = isBehindReference_ = false;
  last_ = lastFlank(text);
}

/// In a pipe table a bar cannot stand behind a backslash in code.
void InlineWriter::WriteCode(std::u16string_view code) {
  BeginSpan();
  last_ = Flank::kPunctuation;
  const bool isInCell = form_.kind == InlineForm::kCell;
  if (IsHtml() || (isInCell && code.find(u'|') != std::u16string_view::npos &&
                   code.find(u'\\') != std::u16string_view::npos)) {
    out_ += "<code>";
    if (IsHtml()) {
      appendHtml(out_, code);
    } else {
      MarkdownPlace place;
      place.isInCell = true;
      place.isInBrackets = isInLink_;
      appendEscaped(out_, code, place);
    }
    out_ += "</code>";
    return;
  }
  const std::string fence(longestBackticks(code) + 1, '`');
  const bool isPadded = code.front() == '`' || code.back() == '`';
  out_ += fence;
  if (isPadded) out_ += ' ';
  for (size_t done = 0; done < code.size();) {
    const size_t end = std::min(code.find_first_of(u"|\t", done), code.size());
    appendUtf8(out_, code.substr(done, end - done));
    if (end < code.size()) out_ += code[end] == '\t' ? " " : isInCell ? "\\|" : "|";
    done = end + 1;
  }
  if (isPadded) out_ += ' ';
  out_ += fence;
}

void InlineWriter::WriteBreaks() {
  if (breaks_ == 0) return;
  while (out_.size() > begin_ && out_.back() == ' ') out_.pop_back();
  for (; breaks_ > 0; --breaks_) {
    if (form_.kind != InlineForm::kParagraph) {
      out_ += "<br>";
      continue;
    }
    out_ += "\\\n";
    out_.append(form_.indent, ' ');
    isAtLineStart_ = true;
    isFirstLine_ = false;
  }
  last_ = Flank::kSpace;
  isBehindReference_ = false;
}

}  // namespace pagerex
