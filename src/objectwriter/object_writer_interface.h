#pragma once

#include <vector>

#include "base/status.h"

namespace mso_escher {
class MsoROShape;
}

namespace ObjectWriter {

class IEnv;

/// Writes shapes and pictures into the page, by the character position that anchors them.
class IObjectWriter {
 public:
  virtual ~IObjectWriter() = default;
  virtual Status Init(IEnv* env) = 0;
  virtual Status WriteObject(const std::vector<mso_escher::MsoROShape>& shapes) = 0;
  /// The floating shape that is anchored at `cp`. `pageBreakFollows`: the run of the anchor ends in front of
  /// a page break.
  virtual Status WriteObject(unsigned int cp, bool pageBreakFollows) = 0;
  /// The inline picture at `cp`.
  virtual Status WriteEmbedShape(unsigned int cp) = 0;
  /// The OLE object at `cp`.
  virtual Status WriteOle(unsigned int cp) = 0;
};

}  // namespace ObjectWriter
