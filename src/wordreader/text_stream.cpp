#include "wordreader/text_stream.h"

#include <string>

#include "wordreader/document.h"
#include "wordreader/scanner.h"

Status _KDRTextStream::Read(const KDRDocument& document) {
  for (_SubDoc& story : subDocs_) {
    MemoryBudget* const budget = document.GetAllocator().Budget();
    story.textPool.SetBudget(budget);
    story.plcfPap.SetBudget(budget);
    story.plcfChp.SetBudget(budget);
  }
  const Status status = _KDRScanner(document, subDocs_).Scan();
  const _SubDoc& main = subDocs_[mso_word::SUBDOC_MAIN];
  const bool lacksParagraphs = main.textPool.size() > 0 && main.plcfPap.Count() == 0;
  if (failed(status) || lacksParagraphs) {
    const size_t end = lacksParagraphs ? 0 : main.textPool.size();
    warn(document.GetWarnings(), pagerex::WarningCode::kEndedEarly, std::to_string(end));
  }
  return status;
}
