#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "htmlwriter/env.h"
#include "htmlwriter/table_grid.h"
#include "htmlwriter/table_paragraph.h"
#include "htmlwriter/work_limits.h"

namespace pagerex {

/// The scans ahead over the paragraph tables of one document. Shared by the environments of all its stories,
/// so that what one scan has seen is not scanned again for the next table or note.
class KTableScans {
 public:
  explicit KTableScans(const KDRDocument* document) : document_(document), paragraphs_(document) {}

  const KDRDocument* document() const { return document_; }
  KTableParagraphs& paragraphs() { return paragraphs_; }

  /// The rows of the table of depth `depth` that begins at `paragraph` of the environment's paragraph table.
  /// The scan stays as it is for as long as it is held.
  std::shared_ptr<const KTableScan> Scan(const KEnv& env, uint32_t paragraph, uint32_t depth);

  /// Calls `visit` with the index and the properties of each paragraph of the table of depth `depth` that
  /// begins at `paragraph`, deeper tables left out, until it returns false. Returns the index of the first
  /// paragraph behind the table, or of the one at which `visit` stopped.
  template <class Visit>
  uint32_t Walk(const KEnv& env, uint32_t paragraph, uint32_t depth, Visit&& visit);

 private:
  using Key = std::pair<const KPropxTable*, uint32_t>;

  const KDRDocument* document_;
  KTableParagraphs paragraphs_;
  std::map<Key, std::shared_ptr<KTableScan>> scans_;  ///< the last one of each story and depth
};

template <class Visit>
uint32_t KTableScans::Walk(const KEnv& env, uint32_t paragraph, uint32_t depth, Visit&& visit) {
  for (; paragraph < env.plcfPap->Count(); ++paragraph) {
    const KDRMergePropx* propx = env.plcfPap->Data(paragraph);
    if (propx->fkp().empty() || (env.workLimits && !env.workLimits->LookAhead())) break;
    const TableParagraph properties = paragraphs_.Look(SprmsOfParagraph(*propx));
    if (properties.kind == TableParagraph::OUTSIDE) break;
    if (properties.kind == TableParagraph::UNREADABLE) continue;
    if (depth > properties.depth) break;
    if (depth == properties.depth && !visit(paragraph, properties)) break;
  }
  return paragraph;
}

}  // namespace pagerex
