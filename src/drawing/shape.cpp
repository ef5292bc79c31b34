#include "drawing/shape.h"

namespace mso_escher {
namespace {

constexpr uint32_t kNewShape = 0xA00;
constexpr uint32_t kNewGroup = 0x201;
constexpr unsigned int kDeepestGroup = 64;

tagRECT rectOf(ByteView bytes) {
  return {bytes.i32(0), bytes.i32(4), bytes.i32(8), bytes.i32(12)};
}

/// True for a record that a shape takes. Its fields are taken as far as anything was read, whatever length
/// the record claims.
bool _HandleShape(const MsoRORecInfo& record, _MsoROShape& shape) {
  switch (record.type) {
    case kFsp:
      shape.id = record.reach.u32(0);
      shape.grf = record.reach.u32(4);
      shape.type = record.instance();
      return true;
    case kAnchor:
    case kChildAnchor:
    case kClientAnchor:
      shape.anchor = record.reach;
      return true;
    case kTextBoxes:
    case kClientTextBox:
      shape.textBox = record.reach;
      return true;
    case kClientData:
      shape.clientData = record.reach;
      return true;
    case kOpt:
      shape.properties.Init(record);
      return true;
    case kUserOpt:
      shape.userProperties.Init(record);
      return true;
    default:
      return false;
  }
}

void _HandleGroupShapeSelf(const MsoRORecInfo& container, _MsoROGroupShape& group) {
  MsoRORecInfo record;
  for (MsoRORecords records(container); records.Next(&record) == Status::kOk;) {
    if (!_HandleShape(record, group) && record.type == kGroupCoordinates) {
      group.coordinates = rectOf(record.reach);
    }
  }
}

}  // namespace

const _MsoROGroupShape* MsoROShape::Group() const {
  return IsGroupShape() ? static_cast<const _MsoROGroupShape*>(shape_) : nullptr;
}

void MsoROShape::GetGroupCoordBounds(tagRECT& bounds) const {
  const _MsoROGroupShape* group = Group();
  bounds = group ? group->coordinates : tagRECT();
}

void MsoROShape::GetChildAnchor(tagRECT& anchor) const {
  anchor = shape_ ? rectOf(shape_->anchor) : tagRECT();
}

unsigned int MsoROShape::GetChildCount() const {
  const _MsoROGroupShape* group = Group();
  return group ? static_cast<unsigned int>(group->children.size()) : 0;
}

MsoROShape MsoROShape::GetChildShape(unsigned int i) const {
  return i < GetChildCount() ? Group()->children[i] : MsoROShape();
}

void MsoROShape::InitShape(const MsoRORecInfo& container, ChainAllocator& allocator, uint32_t zOrder) {
  shape_ = New<_MsoROShape>(allocator);
  shape_->grf = kNewShape;
  shape_->zOrder = zOrder;
  MsoRORecInfo record;
  for (MsoRORecords records(container); records.Next(&record) == Status::kOk;) _HandleShape(record, *shape_);
  if (IsGroupShape()) shape_ = nullptr;
}

void MsoROShape::InitGroupShape(const MsoRORecInfo& container, ChainAllocator& allocator, uint32_t zOrder,
                                unsigned int depth) {
  MsoRORecords records(container);
  MsoRORecInfo record;
  if (records.Next(&record) != Status::kOk || record.type != kShapeContainer) return;
  auto* const group = New<_MsoROGroupShape>(allocator);
  group->grf = kNewGroup;
  group->zOrder = zOrder;
  _HandleGroupShapeSelf(record, *group);
  shape_ = (group->grf & kShapeIsGroup) != 0 ? group : nullptr;
  if (!shape_) return;

  for (uint32_t childOrder = 1; records.Next(&record) == Status::kOk;) {
    if (record.type != kShapeGroupContainer && record.type != kShapeContainer) continue;
    MsoROShape child;
    if (record.type == kShapeContainer) {
      child.InitShape(record, allocator, childOrder);
    } else if (depth < kDeepestGroup) {
      child.InitGroupShape(record, allocator, childOrder, depth + 1);
    }
    group->children.push_back(child);
    ++childOrder;
  }
}

}  // namespace mso_escher
