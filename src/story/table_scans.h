#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "story/table_grid.h"
#include "story/table_paragraph.h"
#include "story/work_limits.h"
#include "wordreader/merged_propx.h"

namespace pagerex {

/// The scans ahead over the paragraph tables of one document. All its stories share them, so that what one
/// scan has seen is not scanned again for the next table or note.
class KTableScans {
 public:
  /// Neither is owned; `document` may be null.
  KTableScans(const KDRDocument* document, KWorkLimits& limits) : limits_(limits), paragraphs_(document) {}

  KTableParagraphs& paragraphs() { return paragraphs_; }

  /// The rows of the table of depth `depth` that begins at `paragraph` of the paragraph table `story`, in a
  /// section with this left margin (twips). The scan stays as it is for as long as it is held.
  std::shared_ptr<const KTableScan> Scan(const KPropxTable& story, uint32_t paragraph, uint32_t depth,
                                         int32_t leftMargin);

  /// Calls `visit` with the index and the properties of each paragraph of the table of depth `depth` that
  /// begins at `paragraph`, deeper tables left out, until it returns false. Returns the index of the first
  /// paragraph behind the table, or of the one at which `visit` stopped.
  template <class Visit>
  uint32_t Walk(const KPropxTable& story, uint32_t paragraph, uint32_t depth, Visit&& visit);

 private:
  using Key = std::pair<const KPropxTable*, uint32_t>;

  KWorkLimits& limits_;
  KTableParagraphs paragraphs_;
  std::map<Key, std::shared_ptr<KTableScan>> scans_;  ///< the last one of each story and depth
};

template <class Visit>
uint32_t KTableScans::Walk(const KPropxTable& story, uint32_t paragraph, uint32_t depth, Visit&& visit) {
  for (; paragraph < story.Count(); ++paragraph) {
    const KDRMergePropx* propx = story.Data(paragraph);
    if (propx->fkp().empty() || !limits_.LookAhead()) break;
    const TableParagraph properties = paragraphs_.Look(SprmsOfParagraph(*propx));
    if (properties.kind == TableParagraph::OUTSIDE) break;
    if (properties.kind == TableParagraph::UNREADABLE) continue;
    if (depth > properties.depth) break;
    if (depth == properties.depth && !visit(paragraph, properties)) break;
  }
  return paragraph;
}

}  // namespace pagerex
