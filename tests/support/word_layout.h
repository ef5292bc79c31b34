#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/bytes.h"
#include "support/fkp_writer.h"
#include "support/word_text.h"
#include "wordreader/mso_word.h"

namespace support {

/// What each sub-document consists of: its own text, then one part for each of its notes.
using StoryParts = std::array<std::vector<const Story*>, mso_word::kSubDocCount>;

/// A mark of the text at its character position in the whole document.
struct PlacedAnchor {
  uint32_t cp;
  const Anchor* anchor;
};

/// All stories one behind the other, with what lies at which character position (cp).
struct FlatText {
  struct Run {
    uint32_t start;
    const Bytes* sprms;
    bool breakBefore;
  };
  struct ParagraphEnd {
    uint32_t end;  ///< behind the mark
    const Paragraph* paragraph;
  };
  struct PieceStart {
    uint32_t start;
    Piece piece;
  };

  std::u16string text;
  std::vector<Run> runs;
  std::vector<ParagraphEnd> paragraphs;
  std::vector<PieceStart> pieces;
  std::array<std::vector<PlacedAnchor>, mso_word::kSubDocCount> anchors;  ///< of each story, in order
  std::array<uint32_t, mso_word::kSubDocCount + 1> storyStarts = {};
  std::array<std::vector<uint32_t>, mso_word::kSubDocCount> partStarts;  ///< relative to the story's start

  uint32_t end() const { return static_cast<uint32_t>(text.size()); }
  uint32_t storyLength(uint32_t type) const { return storyStarts[type + 1] - storyStarts[type]; }
};

/// Which closing marks stand behind the paragraphs that the test gave.
struct ClosingMarks {
  std::array<bool, mso_word::kSubDocCount> ofStory = {false, true, true, true, true, true, true, true};
  bool ofDocument = true;  ///< one more paragraph mark if there is any story but the main text
};

FlatText flatten(const StoryParts& stories, const ClosingMarks& marks);

/// A piece with its place in the "WordDocument" stream.
struct PlacedPiece {
  uint32_t cpStart;
  uint32_t cpEnd;
  uint32_t fc;  ///< stream offset of its first character
  bool wide;
  uint16_t prm;
  bool noParaLast;
  uint32_t fcOf(uint32_t cp) const { return fc + (cp - cpStart) * (wide ? 2 : 1); }
  uint32_t fcEnd() const { return fcOf(cpEnd); }
};

/// The pieces of a text in the stream: `pieces` in the order of the text, `fileOrder` their indexes in the
/// order of the file, and the bytes.
struct PlacedText {
  std::vector<PlacedPiece> pieces;
  std::vector<size_t> fileOrder;
  Bytes bytes;
};

/// Lays the text out from stream offset `fc` on.
PlacedText placeText(const FlatText& text, uint32_t fc);

/// The entries of the run table: neighbours in the file with equal properties are one entry.
std::vector<FkpEntry> runEntries(const FlatText& text, const PlacedText& placed);

/// Makes the property data of a paragraph.
using PapxOf = std::function<Bytes(const Paragraph&)>;
/// The entries of the paragraph table. An entry ends behind each paragraph mark in the file, whatever piece
/// it lies in, so a paragraph whose pieces lie apart has its properties where its mark is.
std::vector<FkpEntry> paragraphEntries(const FlatText& text, const PlacedText& placed, const PapxOf& papxOf);

}  // namespace support
