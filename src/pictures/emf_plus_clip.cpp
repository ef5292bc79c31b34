// Clips and regions of EMF+.

#include <algorithm>

#include "pictures/emf_plus_state.h"

namespace pagerex {
namespace {

// How two areas become one.
constexpr uint32_t kReplace = 0, kAnd = 1, kOr = 2, kXor = 3, kExclude = 4, kComplement = 5;

// Nodes of a region that have no others below them.
constexpr uint32_t kBoxNode = 0x10000000, kPathNode = 0x10000001, kEmptyNode = 0x10000002,
                   kInfiniteNode = 0x10000003;

constexpr int kDeepest = 64;

/// A tree of nothing but boxes, all put together by the same operation: one path is as good. False, and
/// nothing is taken from the reader, for any other.
bool readBoxes(PlusReader& reader, uint32_t operation, const Matrix& matrix, PlusOutline& boxes) {
  PlusReader ahead = reader;
  for (size_t open = 1; open > 0;) {
    const uint32_t type = ahead.U32();
    if (ahead.left() == 0) return false;
    if (type == operation) {
      ++open;
    } else if (type == kBoxNode) {
      boxes.AddBox(ahead.Rectangle(false));
      --open;
    } else {
      return false;
    }
  }
  boxes.Move(matrix);
  reader = ahead;
  return true;
}

}  // namespace

PathData PlusState::Everything() const {
  PathData path;
  path.AddBox({0, 0, canvas_.width(), canvas_.height()});
  return path;
}

/// The part of the clip `within` that lies in the shape, or outside.
uint32_t PlusState::Part(const PlusClipShape& shape, uint32_t within, bool isOutside) {
  if (shape.box && !isOutside && shape.box->left <= 0 && shape.box->top <= 0 &&
      shape.box->right >= canvas_.width() && shape.box->bottom >= canvas_.height())
    return within;
  if (shape.region.empty()) return canvas_.AddClip(shape.path.view(), shape.rule, within, isOutside);
  PlusReader reader(shape.region);
  reader.U32();  // version
  const uint32_t nodes = reader.U32();
  // Some trees are walked along twice at each node.
  regionNodes_ = 256 + static_cast<uint32_t>(std::min<size_t>(nodes, shape.region.size() / 4));
  return RegionPart(reader, within, isOutside, 0);
}

uint32_t PlusState::RegionPart(PlusReader& reader, uint32_t within, bool isOutside, int depth) {
  if (regionNodes_ == 0 || depth > kDeepest) {
    isWhole_ = false;
    reader = PlusReader({});
    return within;
  }
  --regionNodes_;
  PlusOutline boxes;
  for (const uint32_t operation : {kOr, kXor}) {
    boxes.clear();
    if (reader.rest().u32(0) != operation || !readBoxes(reader, operation, WorldToCanvas(), boxes)) continue;
    const FillRule rule = operation == kOr ? FillRule::kNonZero : FillRule::kEvenOdd;
    return canvas_.AddClip(boxes.Data().view(), rule, within, isOutside);
  }
  const uint32_t type = reader.U32();
  const auto part = [&](uint32_t in, bool outside) { return RegionPart(reader, in, outside, depth + 1); };
  // What is outside of one or in the other is put together; the rest is taken away step by step.
  switch (type) {
    case kAnd:
    case kOr:
      if ((type == kOr) == isOutside) return part(part(within, isOutside), isOutside);
      break;
    case kExclude:
      if (!isOutside) return part(part(within, false), true);
      break;
    case kComplement:
      if (!isOutside) return part(part(within, true), false);
      break;
    case kXor: {
      PlusReader again = reader;
      const uint32_t onlyFirst = part(part(within, isOutside), true);
      std::swap(reader, again);
      const uint32_t onlySecond = part(part(within, !isOutside), false);
      return canvas_.AddUnion(onlyFirst, onlySecond);
    }
    default:
      return LeafPart(reader, type, within, isOutside);
  }
  const uint32_t first = part(within, type == kExclude || (type != kComplement && isOutside));
  return canvas_.AddUnion(first, part(within, type == kComplement || (type != kExclude && isOutside)));
}

uint32_t PlusState::LeafPart(PlusReader& reader, uint32_t type, uint32_t within, bool isOutside) {
  PlusOutline outline;
  if (type == kBoxNode) {
    outline.AddBox(reader.Rectangle(false));
  } else if (type == kPathNode) {
    outline.AddPath(reader.Take(reader.Count(1)));
  } else if (type == kInfiniteNode) {
    isOutside = !isOutside;
  } else if (type != kEmptyNode) {
    isWhole_ = false;
    isOutside = true;
  }
  if (outline.points.empty() && isOutside) return within;
  outline.Move(WorldToCanvas());
  return canvas_.AddClip(outline.Data().view(), outline.rule, within, isOutside);
}

/// What is taken from is the clip as it is; it never becomes more than the container's.
void PlusState::CombineClip(uint32_t mode, const PlusClipShape& shape) {
  PlusGraphics& now = graphics_;
  const bool isAll = now.clip == now.outerClip;
  const bool wasBox = now.isClipBox;
  now.isClipBox = false;
  PathData old;
  if (wasBox) old.AddBox(now.clipBox);
  switch (mode) {
    case kReplace:
    case kAnd: {
      const uint32_t within = mode == kAnd ? now.clip : now.outerClip;
      now.isClipBox = shape.box && (mode == kReplace || isAll);
      if (now.isClipBox) now.clipBox = *shape.box;
      now.clip = Part(shape, within, false);
      break;
    }
    case kOr:
      if (!isAll) now.clip = canvas_.AddUnion(now.clip, Part(shape, now.outerClip, false));
      break;
    case kExclude:
      now.clip = Part(shape, now.clip, true);
      break;
    case kXor:
    case kComplement: {
      const uint32_t only = mode == kXor ? Part(shape, now.clip, true) : 0;
      uint32_t other = isAll ? 0 : Part(shape, now.outerClip, false);
      if (wasBox) {
        other = canvas_.AddClip(old.view(), FillRule::kNonZero, other, true);
      } else if (!isAll) {
        isWhole_ = false;
      }
      if (isAll) {
        now.clip = mode == kXor ? only : canvas_.AddClip({}, FillRule::kNonZero, 0);
      } else {
        now.clip = mode == kXor ? canvas_.AddUnion(only, other) : other;
      }
      break;
    }
    default:
      isWhole_ = false;
  }
}

void PlusState::ResetClip(Record&) {
  graphics_.clip = graphics_.outerClip;
  graphics_.isClipBox = false;
}

void PlusState::ClipBox(Record& record) {
  const Box box = record.data.Rectangle(false);
  const Matrix matrix = WorldToCanvas();
  outline_.AddBox(box);
  outline_.Move(matrix);
  PlusClipShape shape;
  shape.path = outline_.Data();
  shape.box = matrix.isUpright() && !outline_.points.empty() ? &shape.path.bounds() : nullptr;
  CombineClip(record.flags >> 8 & 15, shape);
}

void PlusState::ClipPath(Record& record) {
  outline_.AddPath(Find(record.id(), PlusType::kPath));
  outline_.Move(WorldToCanvas());
  CombineClip(record.flags >> 8 & 15, {outline_.Data(), outline_.rule, {}, nullptr});
}

void PlusState::ClipRegion(Record& record) {
  const ByteView region = Find(record.id(), PlusType::kRegion);
  if (!region.empty()) CombineClip(record.flags >> 8 & 15, {{}, {}, region, nullptr});
}

void PlusState::OffsetClip(Record& record) {
  const Point by = record.data.RealPoint();
  const Point way = WorldToCanvas().Turn(by.x, by.y);
  PlusGraphics& now = graphics_;
  if (now.clip == now.outerClip) return;
  if (!now.isClipBox) {
    isWhole_ = false;
    return;
  }
  Box box = now.clipBox;
  box = {box.left + way.x, box.top + way.y, box.right + way.x, box.bottom + way.y};
  PlusClipShape shape;
  shape.path.AddBox(box);
  shape.box = &box;
  CombineClip(kReplace, shape);
}

void PlusState::FillRegion(Record& record) {
  const ByteView region = Find(record.id(), PlusType::kRegion);
  const Paint paint = FillPaint(record, record.data.U32());
  if (region.empty()) return;
  canvas_.SetClip(Part({{}, {}, region, nullptr}, graphics_.clip, false));
  canvas_.Fill(Everything(), paint);
}

/// Of a terminal: what the world becomes, in pixels.
void PlusState::SetServerGraphics(Record& record) {
  record.data.Take(12);  // how it is smoothed
  graphics_.world = record.data.RealMatrix();
  graphics_.pageX = graphics_.pageY = 1;
}

/// Of a terminal: boxes in pixels.
void PlusState::SetServerClip(Record& record) {
  if (record.flags & 0x8000) {
    isWhole_ = false;  // in a short form
    return;
  }
  outline_.rule = FillRule::kNonZero;
  for (int left = record.flags & 0x7FFF; left > 0 && record.data.left() > 0; --left) {
    double edges[4];
    for (double& edge : edges) edge = static_cast<int16_t>(record.data.U16());
    outline_.AddBox({edges[0], edges[1], edges[2], edges[3]});
  }
  outline_.Move(device_);
  CombineClip(kReplace, {outline_.Data(), outline_.rule, {}, nullptr});
}

}  // namespace pagerex
