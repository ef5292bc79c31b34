#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "wordreader/clx.h"
#include "wordreader/plcf.h"

class KDRDocument;

/// The opcode of a sprm by its number in the short form of a piece's modifier; 0 for none.
uint16_t OpcodeOfSingleSprm(uint8_t isprm);

/// The property lists that a piece's modifier brings, sorted by what they apply to.
struct KPieceSprms {
  ByteView paragraph;
  ByteView character;
};

/// Sorts the modifiers of pieces into lists. Each property group is looked at once, however many pieces use
/// it; a group that must be put in order is copied to the document's allocator.
class KPieceSprmSorter {
 public:
  explicit KPieceSprmSorter(const KDRDocument& document) : document_(document) {}

  /// The lists of a modifier (`prm`): the index of a property group, or a single sprm.
  KPieceSprms AnalyseSprm(uint16_t prm);

 private:
  KPieceSprms SortedGroup(size_t index);
  /// A single sprm in the form that readers of the lists have always been handed.
  ByteView RepairSingleSprm(uint16_t prm);

  struct Group {
    bool sorted = false;
    KPieceSprms sprms;
  };

  const KDRDocument& document_;
  std::vector<Group> groups_;  ///< by index in the file, as far as they were used
};

/// Puts paragraph sprms in front of character sprms, each kind in its old order; only character sprms count
/// as such, every other kind as paragraph. What needs no sorting is not copied.
KPieceSprms SortSprms(ByteView sprms, ChainAllocator& allocator);

/// The part of a piece that is scanned at a time. Offsets are in "WordDocument".
struct _PieceEx {
  uint64_t fcBegin = 0;
  uint64_t fcEnd = 0;
  uint32_t cpBegin = 0;  ///< of its first character within the sub-document
  bool wide = false;     ///< 16-bit text

  uint32_t Length() const { return ToCharacters(fcEnd - fcBegin); }
  uint32_t GetCPEnd() const { return cpBegin + Length(); }
  /// Position within the sub-document of the character at the stream offset `fc`; in front of the piece that
  /// of its start.
  uint32_t PositionAt(uint64_t fc) const {
    return fc > fcBegin ? cpBegin + ToCharacters(fc - fcBegin) : cpBegin;
  }

 private:
  uint32_t ToCharacters(uint64_t bytes) const { return static_cast<uint32_t>(wide ? bytes / 2 : bytes); }
};

/// A cursor on one piece of the piece table, which `SplitPiece` moves through it.
class _PieceWrapper {
 public:
  explicit _PieceWrapper(const KDRDocument& document) : sorter_(document) {}

  /// Moves to the start of a piece. One whose end does not lie behind its start is empty.
  void Assign(const _TypeTraits<mso_word::PCD>::ItemType& piece);
  /// Moves `n` characters on, at most `Length()`; the property lists stay.
  void SplitPiece(uint32_t n);

  /// What is left of the piece, in characters.
  uint32_t Length() const { return range_.end - range_.start; }
  uint32_t CpBegin() const { return range_.start; }
  /// The first `n` characters of what is left, in a sub-document that begins at position `subDocBegin`.
  _PieceEx Front(uint32_t n, uint32_t subDocBegin) const;
  /// The piece does not end with the end of a paragraph.
  bool NoParaLast() const { return noParaLast_; }
  const KPieceSprms& Sprms() const { return sprms_; }

 private:
  KPieceSprmSorter sorter_;
  KDWRange range_;
  uint64_t fc_ = 0;
  bool wide_ = false;
  bool noParaLast_ = false;
  KPieceSprms sprms_;
};
