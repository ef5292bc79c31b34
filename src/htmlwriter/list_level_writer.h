#pragma once

#include <string>

#include "htmlwriter/env.h"
#include "htmlwriter/list_number.h"
#include "numformat/number_format_service.h"

class KDRList;
class KDRListLevel;

namespace pagerex {

/// Writes the label of a numbered or bulleted paragraph as text in front of it, and keeps the counters of the
/// sub-document's lists.
class KHtmlListLevelWriter {
 public:
  /// kInvalidArgument for a null `env`, which is not owned.
  Status Init(KEnv* env);
  /// Writes the label of the environment's current paragraph. `base`: the properties of its paragraph mark,
  /// styles merged in. kInvalidArgument if there is no such list or level.
  Status Write(const KDRSpanProp* base);

 private:
  Status _WriteNumber(const KDRListLevel* level);
  Status _WriteBullet(const KDRListLevel* level);
  Status _ParseBullet(unsigned int index);
  /// The current paragraph's list; null if there is none of its number.
  const KDRList* CurrentList() const;
  void WriteLevelProps(const KDRListLevel& level, const KDRSpanProp& base);
  std::wstring NumberFor(const KDRList& list, unsigned int placeholder);
  /// Writes label text, and hands it to the heading that is being collected.
  void WriteLabel(const std::string& text);
  void WriteGap();

  KEnv* env_ = nullptr;
  KListCount counts_;
  NumberFormatService formats_;
};

}  // namespace pagerex
