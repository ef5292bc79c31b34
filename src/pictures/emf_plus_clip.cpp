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

}  // namespace

/// The part of the clip `within` that lies in the region, or outside of it. Without a region it is that of
/// the outline, in units of the canvas.
uint32_t PlusState::Part(ByteView region, uint32_t within, bool isOutside) {
  if (region.empty()) {
    const Box& box = CanvasPath().bounds();
    const bool isEverything = isBox_ && box.left <= 0 && box.top <= 0 && box.right >= canvas_.width() &&
                              box.bottom >= canvas_.height();
    if (isEverything && !isOutside) return within;
    return canvas_.AddClip(path_.view(), outline_.rule, within, isOutside);
  }
  PlusReader reader(region.part(8));
  // Some trees are walked along twice at each node.
  regionNodes_ = 4096 + region.size();
  return RegionPart(reader, within, isOutside, 0);
}

/// Takes a node of a region into the outline: one that has none below it, or nothing but boxes, all put
/// together by the same operation. False, and nothing is taken from the reader, for any other.
bool PlusState::TakeLeaves(PlusReader& reader) {
  PlusReader ahead = reader;
  const uint32_t operation = ahead.rest().u32(0);
  const bool hasMany = operation == kOr || operation == kXor;
  outline_.clear();
  for (size_t open = 1; open > 0;) {
    if (regionNodes_ == 0) return false;
    --regionNodes_;
    const uint32_t type = ahead.U32();
    if (hasMany && type == operation && ahead.left() > 0) {
      ++open;
      continue;
    }
    --open;
    if (type == kBoxNode) {
      outline_.AddBox(ahead.Rectangle());
    } else if (type == kPathNode && !hasMany) {
      outline_.AddPath(ahead.TakeCounted());
    } else if (type == kInfiniteNode && !hasMany) {
      constexpr double kFar = 1e9;
      outline_.AddBox({-kFar, -kFar, kFar, kFar});
    } else if (type != kEmptyNode) {
      return false;
    }
  }
  if (operation == kOr) outline_.rule = FillRule::kNonZero;
  outline_.Move(WorldToCanvas());
  reader = ahead;
  return true;
}

uint32_t PlusState::RegionPart(PlusReader& reader, uint32_t within, bool isOutside, int depth) {
  if (TakeLeaves(reader)) return canvas_.AddClip(CanvasPath().view(), outline_.rule, within, isOutside);
  const uint32_t type = reader.U32();
  if (regionNodes_ == 0 || depth > kDeepest || type < kAnd || type > kComplement) {
    isWhole_ = false;
    reader = PlusReader({});
    return within;
  }
  const auto part = [&](uint32_t in, bool outside) { return RegionPart(reader, in, outside, depth + 1); };
  if (type == kXor) {
    PlusReader again = reader;
    const uint32_t onlyFirst = part(part(within, isOutside), true);
    reader = again;
    return canvas_.AddUnion(onlyFirst, part(part(within, !isOutside), false));
  }
  // What is to lie in both is taken away step by step; what in one of them, put together.
  const bool isFirstOut = isOutside != (type == kComplement), isSecondOut = isOutside != (type == kExclude);
  const uint32_t first = part(within, isFirstOut);
  if ((type == kOr) == isOutside) return part(first, isSecondOut);
  return canvas_.AddUnion(first, part(within, isSecondOut));
}

/// It never becomes more than the container's.
void PlusState::CombineClip(uint32_t mode, ByteView region) {
  PlusGraphics& now = graphics_;
  const bool isAll = now.clip == now.outerClip, wasBox = now.isClipBox;
  const Box before = now.clipBox;
  // A box stays known as such.
  now.clipBox = region.empty() ? CanvasPath().bounds() : Box{};
  now.isClipBox = region.empty() && isBox_ && (mode == kReplace || (mode == kAnd && isAll));
  if (mode == kReplace || mode == kAnd) {
    now.clip = Part(region, mode == kAnd ? now.clip : now.outerClip, false);
  } else if (mode == kExclude || (mode == kXor && isAll)) {
    now.clip = Part(region, now.clip, true);
  } else if (mode == kOr) {
    if (!isAll) now.clip = canvas_.AddUnion(now.clip, Part(region, now.outerClip, false));
  } else if (isAll) {
    now.clip = canvas_.AddClip({}, FillRule::kNonZero, 0);
  } else {
    const uint32_t left = mode == kXor ? Part(region, now.clip, true) : 0;
    uint32_t other = Part(region, now.outerClip, false);
    path_.clear();
    path_.AddBox(before);
    if (wasBox) other = canvas_.AddClip(path_.view(), FillRule::kNonZero, other, true);
    isWhole_ &= wasBox;
    now.clip = mode == kXor ? canvas_.AddUnion(left, other) : other;
  }
}

void PlusState::ResetClip(Record&) {
  graphics_.clip = graphics_.outerClip;
  graphics_.isClipBox = false;
}

void PlusState::ClipBox(Record& record) {
  const Matrix matrix = WorldToCanvas();
  outline_.AddBox(record.data.Rectangle());
  outline_.Move(matrix);
  isBox_ = matrix.isUpright() && !outline_.points.empty();
  CombineClip(record.flags >> 8 & 15, {});
}

/// A path, or a region.
void PlusState::ClipShape(Record& record) {
  constexpr uint16_t kRegionRecord = 0x4034;
  const bool isRegion = record.type == kRegionRecord;
  const ByteView bytes = Find(record.id(), isRegion ? PlusType::kRegion : PlusType::kPath);
  if (bytes.empty()) return;
  if (!isRegion) outline_.AddPath(bytes);
  outline_.Move(WorldToCanvas());
  isBox_ = false;
  CombineClip(record.flags >> 8 & 15, isRegion ? bytes : ByteView());
}

void PlusState::OffsetClip(Record& record) {
  const Point by = record.data.RealPoint();
  const Point way = WorldToCanvas().Turn(by.x, by.y);
  const Box& box = graphics_.clipBox;
  if (graphics_.clip == graphics_.outerClip) return;
  if (!graphics_.isClipBox) {
    graphics_.clip = canvas_.AddMoved(graphics_.clip, way);
    return;
  }
  outline_.AddBox({box.left + way.x, box.top + way.y, box.right + way.x, box.bottom + way.y});
  isBox_ = true;
  CombineClip(kReplace, {});
}

void PlusState::FillRegion(Record& record) {
  const ByteView region = Find(record.id(), PlusType::kRegion);
  const Paint paint = FillPaint(record, record.data.U32());
  if (region.empty()) return;
  canvas_.SetClip(Part(region, graphics_.clip, false));
  FillAll(paint);
}

}  // namespace pagerex
