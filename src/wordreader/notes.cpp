#include "wordreader/notes.h"

Status KDRFootnotes::Read(const KDRDocument& document) {
  const Status status = positions_.Read(document);
  return failed(status) ? status : textRanges_.Read(document);
}

Status KDREndnotes::Read(const KDRDocument& document) {
  // Unlike the footnotes' texts, those of endnotes are not read when the references are merely absent.
  const Status status = positions_.Read(document);
  return status != Status::kOk ? status : textRanges_.Read(document);
}
