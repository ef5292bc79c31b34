#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "base/byte_view.h"
#include "story/work_limits.h"
#include "wordreader/document.h"
#include "wordreader/merged_propx.h"
#include "wordreader/sprm_list.h"

namespace pagerex {

/// Tables nest this deep at most; a paragraph that claims more counts as this.
constexpr uint32_t kDeepestTable = 64;

/// What a paragraph's property list says of tables.
struct TableParagraph {
  enum Kind : uint8_t {
    OUTSIDE,     ///< not marked as lying in a table
    UNREADABLE,  ///< its list lies in the "Data" stream, and that one does not mark it as lying in a table
    INSIDE,
  };
  Kind kind = OUTSIDE;
  uint8_t inTable = 0;        ///< sprmPFInTable as it stands, 0 or not; 1 when read from the "Data" stream
  uint8_t depth = 1;          ///< sprmPItap, 0 to kDeepestTable
  bool rowEnd = false;        ///< sprmPFTtp or sprmPFInnerTtp
  bool innerCellEnd = false;  ///< sprmPFInnerTableCell
  bool definesRow = false;    ///< sprmTDefTable
  ByteView sprms;             ///< the list in force: the paragraph's own, or that of the "Data" stream
};

/// Tells what paragraphs say of tables. A paragraph whose properties do not fit its page keeps them in the
/// "Data" stream: those lists are read into the document's allocator, each once.
class KTableParagraphs {
 public:
  explicit KTableParagraphs(const KDRDocument* document);

  /// `sprms` is the paragraph's list, without its style index. It outlives this, as the lists of a document
  /// do.
  TableParagraph Look(ByteView sprms);

 private:
  const TableParagraph& LookAtHuge(uint32_t offset);
  ByteView ReadHuge(uint32_t offset);

  const KDRDocument* document_;
  std::array<TableParagraph, 64> known_;     ///< lists that were looked at lately, by address
  std::map<uint32_t, TableParagraph> huge_;  ///< by offset in the "Data" stream
  uint64_t bytesRead_ = 0;
  KBudget uses_;        ///< bytes of lists that may be handed out
  ByteView wholeData_;  ///< the whole "Data" stream, once its lists prove to overlap
};

/// The property list of an entry of a paragraph table; empty if the entry has no data.
inline ByteView SprmsOfParagraph(const KDRMergePropx& paragraph) {
  return paragraph.fkp().part(2);
}

}  // namespace pagerex
