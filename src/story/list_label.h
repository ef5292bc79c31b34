#pragma once

#include <string>

#include "story/list_counts.h"

class KDRDocument;
class KDRList;
class NumberFormatService;

namespace pagerex {

/// Where a numbered paragraph stands: the number of its list, from 1, and its level, from 0.
struct ListPlace {
  unsigned int list = 0;
  unsigned int level = 0;
};

/// The numbers in the labels of a story's lists, counted from label to label.
class KListLabels {
 public:
  /// Neither is owned. The lists of the document are read when first asked for.
  void Init(const KDRDocument* document, NumberFormatService* formats);

  /// A list by its number; null if there is none.
  const KDRList* List(unsigned int number) const;
  /// The number at a placeholder in the label of a paragraph at `place`, spelled as the level says that the
  /// placeholder names; empty if that level is bad. Good until the next number.
  const std::wstring& NumberAt(unsigned int placeholder, const ListPlace& place);

 private:
  const KDRDocument* document_ = nullptr;
  NumberFormatService* formats_ = nullptr;
  KListCount counts_;
  std::wstring number_;  ///< used again and again
};

}  // namespace pagerex
