#include "story/table_scans.h"

namespace pagerex {

std::shared_ptr<const KTableScan> KTableScans::Scan(const KPropxTable& story, uint32_t paragraph,
                                                    uint32_t depth, int32_t leftMargin) {
  std::shared_ptr<KTableScan>& scan = scans_[{&story, depth}];
  const bool free = scan && scan.use_count() == 1;
  if (free && scan->Covers(paragraph)) {
    scan->StartAt(paragraph, leftMargin);
    return scan;
  }
  if (!free) scan = std::make_shared<KTableScan>();
  scan->Start(paragraph);
  const uint32_t end = Walk(story, paragraph, depth, [&](uint32_t index, const TableParagraph& properties) {
    if (properties.definesRow) scan->CollectRow(index, properties.sprms, leftMargin);
    return true;
  });
  scan->Finish(end);
  return scan;
}

}  // namespace pagerex
