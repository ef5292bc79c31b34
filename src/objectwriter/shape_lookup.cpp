#include "objectwriter/shape_lookup.h"

#include <algorithm>
#include <queue>

#include "drawing/drawing.h"
#include "wordreader/document.h"

namespace ObjectWriter {

ShapeLookup::ShapeLookup(const KDRDocument& document) : document_(document) {
  AddAnchors();
  const mso_escher::MsoROShape& root = document.GetDrawing(0).GetRootShape();
  for (unsigned int i = 0; i < root.GetChildCount(); ++i) {
    const mso_escher::MsoROShape shape = root.GetChildShape(i);
    if (shape.Good()) shapes_.emplace(shape.GetShapeID(), i);
  }
  AddEmbedded();
}

/// Ranges may overlap in a damaged table, where the first entry that holds a position counts: they are swept
/// in the order of their starts, with the lowest open entry on top.
void ShapeLookup::AddAnchors() {
  const auto& table = document_.GetShapePositions(mso_word::SUBDOC_MAIN);
  std::vector<AnchorStart> starts;
  for (uint32_t i = 0; i < table.PresentCount(); ++i) {
    const KDWRange range = table.Range(i);
    if (range.start < range.end) starts.push_back({range.start, i});
  }
  std::stable_sort(starts.begin(), starts.end(), [](auto& a, auto& b) { return a.cp < b.cp; });

  std::priority_queue<uint32_t, std::vector<uint32_t>, std::greater<>> open;
  const auto enter = [this](uint32_t cp, uint32_t index) {
    if (!anchors_.empty() && anchors_.back().cp == cp) anchors_.pop_back();
    if (anchors_.empty() || anchors_.back().index != index) anchors_.push_back({cp, index});
  };
  /// Ends the ranges that end up to `limit`.
  const auto leaveUpTo = [&](uint32_t limit) {
    while (!open.empty() && table.Range(open.top()).end <= limit) {
      const uint32_t end = table.Range(open.top()).end;
      while (!open.empty() && table.Range(open.top()).end <= end) open.pop();
      enter(end, open.empty() ? kNone : open.top());
    }
  };
  for (const AnchorStart& each : starts) {
    leaveUpTo(each.cp);
    open.push(each.index);
    enter(each.cp, open.top());
  }
  leaveUpTo(UINT32_MAX);
}

void ShapeLookup::AddEmbedded() {
  const auto& pictures = document_.GetEmbedShapes();
  for (uint32_t i = 0; i < pictures.Count(); ++i) {
    const KDREmbedShape& picture = pictures.Item(i);
    if (picture.shape && picture.shape->Good()) embedded_.emplace(picture.cp, i);
  }
}

ShapeLookup::Floating ShapeLookup::FindFloating(uint32_t cp) const {
  Floating found;
  auto anchor = std::upper_bound(anchors_.begin(), anchors_.end(), cp,
                                 [](uint32_t value, const AnchorStart& each) { return value < each.cp; });
  if (anchor == anchors_.begin() || (--anchor)->index == kNone) return found;
  found.anchor = document_.GetShapePositions(mso_word::SUBDOC_MAIN).Item(anchor->index).data;
  const auto shape = shapes_.find(found.anchor.shapeId);
  if (shape == shapes_.end()) return found;
  found.index = shape->second;
  found.shape = document_.GetDrawing(0).GetRootShape().GetChildShape(found.index);
  return found;
}

const KDREmbedShape* ShapeLookup::FindEmbedded(uint32_t cp) const {
  const auto picture = embedded_.find(cp);
  return picture == embedded_.end() ? nullptr : &document_.GetEmbedShapes().Item(picture->second);
}

}  // namespace ObjectWriter
