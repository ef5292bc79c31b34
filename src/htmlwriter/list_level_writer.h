#pragma once

#include <string>

#include "htmlwriter/env.h"
#include "story/list_label.h"

class KDRListLevel;

namespace pagerex {

/// Writes the label of a numbered or bulleted paragraph as text in front of it. Serves one walk over its
/// sub-document, since labels are counted.
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
  void WriteLevelProps(const KDRListLevel& level, const KDRSpanProp& base);
  /// Writes label text, and hands it to the heading that is being collected.
  void WriteLabel(const std::string& text);
  void WriteGap();

  KEnv* env_ = nullptr;
  KListLabels labels_;
};

}  // namespace pagerex
