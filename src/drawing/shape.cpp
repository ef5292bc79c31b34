#include "drawing/shape.h"

namespace mso_escher {
namespace {

constexpr uint32_t kNewShape = 0xA00;
constexpr uint32_t kNewGroup = 0x201;
constexpr unsigned int kDeepestGroup = 64;

tagRECT rectOf(ByteView bytes) {
  return {bytes.i32(0), bytes.i32(4), bytes.i32(8), bytes.i32(12)};
}

}  // namespace

void MsoROShape::GetChildAnchor(tagRECT& anchor) const {
  anchor = shape_ ? rectOf(shape_->anchor) : tagRECT();
}

unsigned int MsoROShape::GetChildCount() const {
  return IsGroupShape() ? static_cast<unsigned int>(shape_->children.size()) : 0;
}

MsoROShape MsoROShape::GetChildShape(unsigned int i) const {
  return i < GetChildCount() ? shape_->children[i] : MsoROShape();
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
  shape_ = New<_MsoROShape>(allocator);
  shape_->grf = kNewGroup;
  shape_->zOrder = zOrder;
  MsoRORecInfo own;
  for (MsoRORecords self(record); self.Next(&own) == Status::kOk;) {
    if (!_HandleShape(own, *shape_) && own.type == kGroupCoordinates) shape_->groupBounds = rectOf(own.body);
  }
  if (!IsGroupShape()) {
    shape_ = nullptr;
    return;
  }

  uint32_t childOrder = 1;
  while (records.Next(&record) == Status::kOk) {
    if (record.type != kShapeGroupContainer && record.type != kShapeContainer) continue;
    MsoROShape child;
    if (record.type == kShapeContainer) {
      child.InitShape(record, allocator, childOrder);
    } else if (depth < kDeepestGroup) {
      child.InitGroupShape(record, allocator, childOrder, depth + 1);
    }
    shape_->children.push_back(child);
    ++childOrder;
  }
}

/// True for a record that a shape takes.
bool MsoROShape::_HandleShape(const MsoRORecInfo& record, _MsoROShape& shape) {
  switch (record.type) {
    case kFsp:
      shape.id = record.body.u32(0);
      shape.grf = record.body.u32(4);
      shape.type = record.instance();
      return true;
    case kAnchor:
    case kChildAnchor:
    case kClientAnchor:
      shape.anchor = record.body;
      return true;
    case kTextBoxes:
    case kClientTextBox:
      shape.textBox = record.body;
      return true;
    case kClientData:
      shape.clientData = record.body;
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

}  // namespace mso_escher
