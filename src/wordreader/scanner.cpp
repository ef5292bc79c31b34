#include "wordreader/scanner.h"

#include <algorithm>
#include <cstring>

#include "base/code_page_1252.h"
#include "wordreader/document.h"

namespace {

constexpr uint32_t kBlock = 4096;  // characters that are read at a time
/// Bytes of an entry of a page: a stream offset and what follows for it.
constexpr uint32_t kRunEntry = 4 + sizeof(unsigned char);
constexpr uint32_t kParagraphEntry = 4 + sizeof(mso_word::FKP_BX);

}  // namespace

_KDRScanner::_KDRScanner(const KDRDocument& document, std::array<_SubDoc, mso_word::kSubDocCount>& subDocs)
    : document_(document),
      word_(document.GetDocFile().getWordDocumentStrm()),
      subDocs_(subDocs),
      streamBytes_(word_.bytesHeld()),
      sprms_(document.GetAllocator(), streamBytes_),
      charactersLeft_(streamBytes_) {}

Status _KDRScanner::Scan() {
  const KDRPlcf<mso_word::PCD, 0>& pieces = document_.GetPlcfpcd();
  // In a sound document no two entries share their bytes, and a piece meets an entry of its own for each of
  // its paragraphs and runs, and one more of each at either end.
  const uint64_t edges = 3 * (uint64_t{pieces.PresentCount()} + mso_word::kSubDocCount);
  paragraphsLeft_ = streamBytes_ / kParagraphEntry + edges;
  runsLeft_ = streamBytes_ / kRunEntry + edges;

  papx_.Read(document_);
  chpx_.Read(document_);
  subDoc_.Init(document_.GetDocFile().getTableStrm().GetSubDocLengths());
  Status status = Status::kFailure;
  _PieceWrapper piece(document_);
  for (uint32_t i = 0; i < pieces.PresentCount(); ++i) {
    piece.Assign(pieces.Item(i));
    while (piece.Length() > 0) {
      status = _ScanPiece(piece, std::min(piece.Length(), subDoc_.GetRemain()));
      if (failed(status) || subDoc_.Finished()) return status;
    }
  }
  return status;
}

Status _KDRScanner::_ScanPiece(_PieceWrapper& piece, uint32_t n) {
  const Status status = ScanPiece(piece, piece.Front(n, subDoc_.GetTotal()));
  if (failed(status) && overLimit_) FinishTables();
  piece.SplitPiece(n);
  subDoc_.ReduceHandCount(n);
  return status;
}

Status _KDRScanner::ScanPiece(const _PieceWrapper& piece, const _PieceEx& ex) {
  if (ex.Length() == 0) return Status::kOk;
  Status status = ScanTextPool(ex, Current().textPool);
  if (!failed(status)) status = ScanPapProp(ex, piece);
  if (!failed(status)) status = ScanChpProp(ex, piece);
  return status;
}

// Text

Status _KDRScanner::ScanTextPool(const _PieceEx& ex, KTextPool& pool) {
  word_.seek(static_cast<long>(std::min<uint64_t>(ex.fcBegin, kNoPosition)), 0);
  const uint32_t length = ex.Length();
  const auto n = static_cast<uint32_t>(std::min<uint64_t>(length, charactersLeft_));
  charactersLeft_ -= n;
  ReadText(ex.wide, n, pool);
  // The final paragraph mark of every sub-document but the main text is no part of its text.
  if (!InMainText() && EndsSubDoc(ex)) pool.pop_back();
  overLimit_ = n < length;
  return overLimit_ ? Status::kFailure : Status::kOk;
}

void _KDRScanner::ReadText(bool wide, uint32_t n, KTextPool& pool) {
  unsigned short characters[kBlock];
  unsigned char bytes[kBlock];
  while (n > 0) {
    const uint32_t block = std::min(n, kBlock);
    if (wide) {
      ReadBytes(reinterpret_cast<unsigned char*>(characters), block * 2);
    } else {
      ReadBytes(bytes, block);
      MsoCP1252ToWcs(bytes, block, characters);
    }
    pool.append(characters, block);
    n -= block;
  }
}

/// What the stream does not hold is zero: the positions of later pieces count on it.
void _KDRScanner::ReadBytes(unsigned char* bytes, uint32_t count) {
  const uint32_t arrived = word_.get(bytes, count);
  if (arrived < count) warn(document_.GetWarnings(), pagerex::WarningCode::kOutside, "text");
  std::memset(bytes + arrived, 0, count - arrived);
}

// Paragraphs

Status _KDRScanner::ScanPapProp(const _PieceEx& ex, const _PieceWrapper& piece) {
  if (!piece.NoParaLast()) {
    const Status status = ScanParagraphs(ex, piece);
    if (failed(status)) return status;
  }
  if (EndsSubDoc(ex)) {
    Current().plcfPap.Finalize(Current().textPool.size());
    cpPapPre_ = 0;
  }
  return Status::kOk;
}

Status _KDRScanner::ScanParagraphs(const _PieceEx& ex, const _PieceWrapper& piece) {
  const bool endsSubDoc = EndsSubDoc(ex);
  const bool leavesLastMark = !InMainText() && ex.GetCPEnd() == subDoc_.GetSubDocLen() - 1;
  const auto end = papx_.End();
  for (auto entry = papx_.UpperBound(static_cast<uint32_t>(ex.fcBegin)); entry <= end; ++entry) {
    const auto [range, sprms] = papx_.Item(entry);
    if (range.end <= range.start || !Take(paragraphsLeft_)) return Status::kFailure;
    // The paragraph goes on in a later piece.
    if (range.end > ex.fcEnd && !endsSubDoc) break;
    // It goes on in the last mark, which is dropped.
    if (range.end >= ex.fcEnd && leavesLastMark) break;
    if (!Enter(Current().plcfPap, cpPapPre_, sprms, piece.Sprms().paragraph)) return Status::kFailure;
    if (range.end >= ex.fcEnd && endsSubDoc) break;
    cpPapPre_ = ex.PositionAt(range.end);
  }
  return Status::kOk;
}

// Runs

Status _KDRScanner::ScanChpProp(const _PieceEx& ex, const _PieceWrapper& piece) {
  const Status status = ScanRuns(ex, piece);
  if (!failed(status) && EndsSubDoc(ex)) {
    Current().plcfChp.Finalize(Current().textPool.size());
    cpLast_ = kNoPosition;
  }
  return status;
}

Status _KDRScanner::ScanRuns(const _PieceEx& ex, const _PieceWrapper& piece) {
  const auto end = chpx_.End();
  for (auto entry = chpx_.UpperBound(static_cast<uint32_t>(ex.fcBegin)); entry <= end; ++entry) {
    const auto [range, sprms] = chpx_.Item(entry);
    if (range.end <= range.start || range.start >= ex.fcEnd) break;
    if (!Take(runsLeft_)) return Status::kFailure;
    const uint32_t position = ex.PositionAt(range.start);
    if (position == cpLast_) continue;
    if (!Enter(Current().plcfChp, position, sprms, piece.Sprms().character)) return Status::kFailure;
    cpLast_ = position;
  }
  return Status::kOk;
}

// Entries

bool _KDRScanner::Enter(KPropxTable& table, uint32_t position, ByteView fkp, ByteView piece) {
  overLimit_ = !sprms_.Keep(&fkp);
  if (overLimit_) return false;
  table.NewItem(position, {static_cast<uint16_t>(fkp.size()), static_cast<uint16_t>(piece.size()),
                           fkp.empty() ? nullptr : fkp.data(), piece.empty() ? nullptr : piece.data()});
  return true;
}

bool _KDRScanner::Take(uint64_t& left) {
  overLimit_ = left == 0;
  if (overLimit_) return false;
  --left;
  return true;
}

/// The last paragraph and the last run reach to the end of the text, so that all that was read comes out.
void _KDRScanner::FinishTables() {
  Current().plcfPap.Finalize(Current().textPool.size());
  Current().plcfChp.Finalize(Current().textPool.size());
}
