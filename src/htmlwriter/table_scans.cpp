#include "htmlwriter/table_scans.h"

namespace pagerex {

std::shared_ptr<const KTableScan> KTableScans::Scan(const KEnv& env, uint32_t paragraph, uint32_t depth) {
  std::shared_ptr<KTableScan>& scan = scans_[{env.plcfPap, depth}];
  const bool free = scan && scan.use_count() == 1;
  if (free && scan->Covers(paragraph)) {
    scan->StartAt(paragraph, env.sectionLeftMargin);
    return scan;
  }
  if (!free) scan = std::make_shared<KTableScan>();
  scan->Start(paragraph);
  const uint32_t end = Walk(env, paragraph, depth, [&](uint32_t index, const TableParagraph& properties) {
    if (properties.definesRow) scan->CollectRow(index, properties.sprms, env.sectionLeftMargin);
    return true;
  });
  scan->Finish(end);
  return scan;
}

}  // namespace pagerex
