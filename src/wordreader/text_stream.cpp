#include "wordreader/text_stream.h"

#include "wordreader/scanner.h"

Status _KDRTextStream::Read(const KDRDocument& document) {
  return _KDRScanner(document, subDocs_).Scan();
}
