#include "wordreader/text_stream.h"

#include "wordreader/document.h"
#include "wordreader/scanner.h"

Status _KDRTextStream::Read(const KDRDocument& document) {
  const Status status = _KDRScanner(document, subDocs_).Scan();
  if (failed(status)) warn(document.GetWarnings(), pagerex::WarningCode::kEndedEarly);
  return status;
}
