#include "support/word_layout.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace support {

namespace {

/// Appends paragraphs to a flat text.
class Flattener {
 public:
  explicit Flattener(FlatText& text) : text_(text) { text_.pieces.push_back({0, Piece{}}); }

  void append(const Story& story, uint32_t type) {
    for (const auto& paragraph : story.paragraphs()) append(*paragraph, type);
  }

  void append(const Paragraph& paragraph, uint32_t type) {
    const uint32_t start = text_.end();
    placeAnchors(paragraph, start, type);
    for (const Paragraph::Run& run : paragraph.runs()) {
      if (run.text.empty()) continue;
      text_.runs.push_back({text_.end(), &run.sprms, run.breakBefore});
      text_.text += run.text;
    }
    if (paragraph.markUnit()) {
      text_.runs.push_back({text_.end(), &paragraph.markSprms(), paragraph.markBreaks()});
      text_.text += *paragraph.markUnit();
    }
    if (text_.end() > start) text_.paragraphs.push_back({text_.end(), &paragraph});
  }

 private:
  void placeAnchors(const Paragraph& paragraph, uint32_t start, uint32_t type) {
    for (const Anchor& anchor : paragraph.anchors()) {
      const uint32_t cp = start + static_cast<uint32_t>(anchor.offset);
      if (anchor.kind == Anchor::Kind::kPiece) {
        startPiece(cp, anchor.piece);
      } else {
        text_.anchors[type].push_back({cp, &anchor});
      }
    }
  }

  void startPiece(uint32_t cp, const Piece& piece) {
    if (text_.pieces.back().start == cp) text_.pieces.pop_back();
    text_.pieces.push_back({cp, piece});
  }

  FlatText& text_;
};

bool isParagraphEnd(char16_t unit) {
  return unit == 0x0D || unit == 0x07 || unit == 0x0C;
}

}  // namespace

FlatText flatten(const StoryParts& stories, const ClosingMarks& marks) {
  static const Paragraph kClosingMark;
  FlatText text;
  Flattener flattener(text);
  for (uint32_t type = 0; type < mso_word::kSubDocCount; ++type) {
    const uint32_t start = text.end();
    for (const Story* part : stories[type]) {
      text.partStarts[type].push_back(text.end() - start);
      flattener.append(*part, type);
    }
    if (marks.ofStory[type] && text.end() > start) flattener.append(kClosingMark, type);
    text.storyStarts[type + 1] = text.end();
  }
  const bool onlyMainText = text.end() == text.storyStarts[1];
  if (marks.ofDocument && !onlyMainText) flattener.append(kClosingMark, mso_word::SUBDOC_MAIN);
  return text;
}

namespace {

bool fitsInBytes(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return toCp1252(unit).has_value(); });
}

PlacedPiece describePiece(const FlatText& text, size_t i) {
  const FlatText::PieceStart& start = text.pieces[i];
  const uint32_t end = i + 1 < text.pieces.size() ? text.pieces[i + 1].start : text.end();
  const auto units = std::u16string_view(text.text).substr(start.start, end - start.start);
  const bool fits = fitsInBytes(units);
  if (start.piece.width == Piece::Width::k8 && !fits) {
    throw std::invalid_argument("an 8-bit piece holds a character that has no byte");
  }
  const bool wide = start.piece.width == Piece::Width::k16 || !fits;
  const bool noParaLast =
      start.piece.noParaLast.value_or(std::none_of(units.begin(), units.end(), isParagraphEnd));
  return {start.start, end, 0, wide, start.piece.prm, noParaLast};
}

void appendText(Bytes& bytes, std::u16string_view text, bool wide) {
  for (char16_t unit : text) {
    bytes.push_back(wide ? static_cast<uint8_t>(unit) : *toCp1252(unit));
    if (wide) bytes.push_back(static_cast<uint8_t>(unit >> 8));
  }
}

}  // namespace

PlacedText placeText(const FlatText& text, uint32_t fc) {
  PlacedText placed;
  for (size_t i = 0; i < text.pieces.size(); ++i) placed.pieces.push_back(describePiece(text, i));
  placed.fileOrder.resize(text.pieces.size());
  std::iota(placed.fileOrder.begin(), placed.fileOrder.end(), size_t{0});
  std::stable_sort(placed.fileOrder.begin(), placed.fileOrder.end(), [&text](size_t a, size_t b) {
    return text.pieces[a].piece.fileOrder < text.pieces[b].piece.fileOrder;
  });
  for (size_t i : placed.fileOrder) {
    PlacedPiece& piece = placed.pieces[i];
    piece.fc = fc + static_cast<uint32_t>(placed.bytes.size());
    const uint32_t length = piece.cpEnd - piece.cpStart;
    appendText(placed.bytes, std::u16string_view(text.text).substr(piece.cpStart, length), piece.wide);
  }
  return placed;
}

namespace {

/// The run that the piece begins in.
size_t firstRunOf(const FlatText& text, const PlacedPiece& piece) {
  const auto after = std::upper_bound(text.runs.begin(), text.runs.end(), piece.cpStart,
                                      [](uint32_t cp, const FlatText::Run& run) { return cp < run.start; });
  return after == text.runs.begin() ? 0 : static_cast<size_t>(after - text.runs.begin()) - 1;
}

/// The first paragraph that ends behind the start of the piece.
size_t firstParagraphOf(const FlatText& text, const PlacedPiece& piece) {
  const auto found =
      std::upper_bound(text.paragraphs.begin(), text.paragraphs.end(), piece.cpStart,
                       [](uint32_t cp, const FlatText::ParagraphEnd& end) { return cp < end.end; });
  return static_cast<size_t>(found - text.paragraphs.begin());
}

}  // namespace

std::vector<FkpEntry> runEntries(const FlatText& text, const PlacedText& placed) {
  std::vector<FkpEntry> entries;
  for (size_t pieceIndex : placed.fileOrder) {
    const PlacedPiece& piece = placed.pieces[pieceIndex];
    for (size_t i = firstRunOf(text, piece); i < text.runs.size() && text.runs[i].start < piece.cpEnd; ++i) {
      const uint32_t runEnd = i + 1 < text.runs.size() ? text.runs[i + 1].start : text.end();
      const uint32_t start = std::max(text.runs[i].start, piece.cpStart);
      const uint32_t end = std::min(runEnd, piece.cpEnd);
      if (start >= end) continue;
      const bool breaks = text.runs[i].breakBefore && start == text.runs[i].start;
      Bytes data = chpxData(*text.runs[i].sprms);
      if (!entries.empty() && !breaks && entries.back().data == data) {
        entries.back().end = piece.fcOf(end);
      } else {
        entries.push_back({piece.fcOf(start), piece.fcOf(end), std::move(data)});
      }
    }
  }
  return entries;
}

std::vector<FkpEntry> paragraphEntries(const FlatText& text, const PlacedText& placed, const PapxOf& papxOf) {
  std::vector<FkpEntry> entries;
  uint32_t fcStart = placed.pieces.empty() ? 0 : placed.pieces[placed.fileOrder[0]].fc;
  for (size_t pieceIndex : placed.fileOrder) {
    const PlacedPiece& piece = placed.pieces[pieceIndex];
    for (size_t i = firstParagraphOf(text, piece); i < text.paragraphs.size(); ++i) {
      const auto& [end, paragraph] = text.paragraphs[i];
      if (end > piece.cpEnd) break;
      entries.push_back({fcStart, piece.fcOf(end), papxOf(*paragraph)});
      fcStart = piece.fcOf(end);
    }
  }
  if (entries.empty() || placed.fileOrder.empty()) return entries;
  // Text behind the last mark of the file, its own mark being further up, still belongs to an entry.
  const uint32_t fcEnd = placed.pieces[placed.fileOrder.back()].fcEnd();
  if (fcStart < fcEnd) entries.push_back({fcStart, fcEnd, entries.back().data});
  return entries;
}

}  // namespace support
