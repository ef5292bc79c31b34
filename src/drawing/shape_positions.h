#pragma once

#include "base/status.h"
#include "wordreader/plcf.h"

class KDRDocument;

/// Anchors of floating shapes: the range of positions of each, and its FSPA.
using KShapeAnchors = KDRPlcf<mso_word::FSPA, mso_word::FCLCB_SHAPE_ANCHORS>;
/// Stories of the text boxes of the main document, by number.
using KTextBoxes = KDRPlcf<mso_word::FTXBXS, mso_word::FCLCB_TEXTBOXES>;

/// The anchors in the main document and in the headers.
class _KDRShpPos {
 public:
  Status Read(const KDRDocument& document);
  /// An empty table for a sub-document that has no anchors of its own.
  const KShapeAnchors& GetShpPos(mso_word::SUBDOC_TYPE type) const;

 private:
  KShapeAnchors main_;
  KShapeAnchors headers_;
};
