#pragma once

#include <array>

#include "base/status.h"
#include "wordreader/merged_propx.h"
#include "wordreader/mso_word.h"
#include "wordreader/text_pool.h"

class KDRDocument;

/// One story: its text, and the property lists of its paragraphs and runs by position in it.
struct _SubDoc {
  KPropxTable plcfPap;
  KPropxTable plcfChp;
  KTextPool textPool;
};

/// All eight stories of a document, made by one scan of the piece table.
class _KDRTextStream {
 public:
  Status Read(const KDRDocument& document);
  const KTextPool& GetTextPool(mso_word::SUBDOC_TYPE type) const { return subDocs_[type].textPool; }
  const KPropxTable& GetPlcfPap(mso_word::SUBDOC_TYPE type) const { return subDocs_[type].plcfPap; }
  const KPropxTable& GetPlcfChp(mso_word::SUBDOC_TYPE type) const { return subDocs_[type].plcfChp; }

 private:
  std::array<_SubDoc, mso_word::kSubDocCount> subDocs_;
};
