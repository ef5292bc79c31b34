#pragma once

#include <array>
#include <cstdint>

#include "base/status.h"
#include "wordreader/fkp.h"
#include "wordreader/piece.h"
#include "wordreader/sprm_pool.h"
#include "wordreader/sub_doc_iterator.h"
#include "wordreader/text_stream.h"

class DsMemReadArchive;

/// Makes the texts and property tables of all sub-documents in one pass over the piece table.
/// The document and the tables that are filled must outlive it. It is used once.
class _KDRScanner {
 public:
  _KDRScanner(const KDRDocument& document, std::array<_SubDoc, mso_word::kSubDocCount>& subDocs);

  /// kFailure if there are no pieces or the tables are damaged; what was found up to there stays. Throws an
  /// int if a piece or a page lies outside the stream.
  Status Scan();

 private:
  static constexpr uint32_t kNoPosition = 0xFFFFFFFF;

  Status _ScanPiece(_PieceWrapper& piece, uint32_t n);
  Status ScanPiece(const _PieceWrapper& piece, const _PieceEx& ex);
  Status ScanTextPool(const _PieceEx& ex, KTextPool& pool);
  Status ScanPapProp(const _PieceEx& ex, const _PieceWrapper& piece);
  Status ScanParagraphs(const _PieceEx& ex, const _PieceWrapper& piece);
  Status ScanChpProp(const _PieceEx& ex, const _PieceWrapper& piece);
  Status ScanRuns(const _PieceEx& ex, const _PieceWrapper& piece);

  void ReadText(bool wide, uint32_t n, KTextPool& pool);
  void ReadBytes(unsigned char* bytes, uint32_t count);

  _SubDoc& Current() { return subDocs_[subDoc_.GetType()]; }
  bool InMainText() const { return subDoc_.GetType() == mso_word::SUBDOC_MAIN; }
  bool EndsSubDoc(const _PieceEx& ex) const { return ex.GetCPEnd() == subDoc_.GetSubDocLen(); }
  /// False when more entries were met than a sound document can have.
  bool Take(uint64_t& left);
  void FinishTables();
  /// Makes an entry. False when there are more lists than a sound document can have.
  bool Enter(KPropxTable& table, uint32_t position, ByteView fkp, ByteView piece);

  const KDRDocument& document_;
  DsMemReadArchive& word_;
  std::array<_SubDoc, mso_word::kSubDocCount>& subDocs_;
  const uint64_t streamBytes_;
  _SubDocIterator subDoc_;
  KSprmPool sprms_;
  KDRPapxFkps papx_;
  KDRChpxFkps chpx_;
  uint32_t cpPapPre_ = 0;          ///< where the next paragraph begins
  uint32_t cpLast_ = kNoPosition;  ///< where the last run was entered
  uint64_t charactersLeft_;        ///< that the stream can hold, whatever the pieces claim
  uint64_t paragraphsLeft_ = 0;    ///< entries that sound pages and pieces can need
  uint64_t runsLeft_ = 0;
  bool overLimit_ = false;  ///< one of these is used up
};
