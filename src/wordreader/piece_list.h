#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "base/byte_view.h"
#include "wordreader/position_table.h"
#include "wordreader/word_file.h"

namespace pagerex {

/// A piece of the text: characters that lie one behind the other in "WordDocument".
struct TextPiece {
  uint32_t start = 0;  ///< character positions
  uint32_t end = 0;
  uint32_t fc = 0;  ///< offset of the first character
  bool isWide = false;
  uint16_t prm = 0;

  uint32_t OffsetOf(uint32_t position) const { return fc + ((position - start) << (isWide ? 1 : 0)); }
  /// The position of what lies at `offset`, which is in the piece or behind it.
  uint32_t PositionOf(uint32_t offset) const { return start + ((offset - fc) >> (isWide ? 1 : 0)); }
};

/// The piece table: which characters lie where. A file without one that can be read has one piece, which the
/// FIB tells.
class PieceList {
 public:
  void Read(WordFile& file);

  /// The end of the last piece.
  uint32_t end() const { return end_; }
  /// The piece that holds `position`; an empty one behind the end. Cheap for positions that rise.
  const TextPiece& Find(uint32_t position) {
    return position >= piece_.start && position < piece_.end ? piece_ : FindElsewhere(position);
  }
  /// The start of the first piece behind `position`, which lies in none; the end of all for none.
  uint32_t NextStart(uint32_t position) const;
  /// The property list that the modifier of a piece brings; empty for none. Valid as long as the file.
  ByteView Modifier(uint16_t prm);

 private:
  bool ReadTable(ByteView clx);
  void MakeOnePiece(const WordFile& file);
  void LimitLength(const WordFile& file);
  void Mend();
  void Load(uint32_t index);
  const TextPiece& FindElsewhere(uint32_t position);
  uint32_t Count() const;
  uint32_t IndexOf(uint32_t position) const;
  ByteView SingleSprm(uint16_t prm);

  ChainAllocator* allocator_ = nullptr;
  PositionTable table_;
  std::vector<ByteView> groups_;                   ///< property lists of a fast-saved document
  std::unordered_map<uint16_t, ByteView> single_;  ///< modifiers of one sprm, spelled out
  uint32_t end_ = 0;
  std::vector<TextPiece> mended_;  ///< in the place of a table whose positions do not rise
  uint32_t current_ = 0;
  TextPiece piece_;
};

}  // namespace pagerex
