#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "drawing/escher_records.h"
#include "drawing/shape_geometry.h"
#include "drawing/shape_properties.h"

namespace mso_escher {

/// Bits of a shape's flags word.
enum ShapeFlags : uint32_t {
  kShapeIsGroup = 0x01,
  kShapeIsChild = 0x02,
  kShapeFlippedX = 0x40,
  kShapeFlippedY = 0x80,
};

/// What a shape's records say. Lives in the document's allocator; reached through `MsoROShape`.
struct _MsoROShape {
  uint32_t grf = 0;
  uint32_t id = 0;
  uint32_t type = 0;  ///< MSOSPT
  ByteView anchor;    ///< from the body of the latest anchor record on
  ByteView textBox;   ///< from the body of the latest text box record on
  ByteView clientData;
  MsoROShapeOPT properties;
  MsoROShapeOPT userProperties;
  uint32_t zOrder = 0;  ///< place among its siblings
};

struct _MsoROGroupShape;

/// A handle on a read-only shape; copied freely, null by default. The document owns the shape.
class MsoROShape {
 public:
  bool Good() const { return shape_ != nullptr; }

  // Of a handle that is not good, all are 0 or empty; but the property tables need a good one.
  uint32_t GetGrfValue() const { return shape_ ? shape_->grf : 0; }
  bool IsGroupShape() const { return (GetGrfValue() & kShapeIsGroup) != 0; }
  bool IsChildShape() const { return (GetGrfValue() & kShapeIsChild) != 0; }
  uint32_t GetShapeID() const { return shape_ ? shape_->id : 0; }
  uint32_t GetZOrder() const { return shape_ ? shape_->zOrder : 0; }
  uint32_t GetShapeType() const { return shape_ ? shape_->type : 0; }
  MsoROShapeOPT& GetProperties() const { return shape_->properties; }
  MsoROShapeOPT& GetUDefProperties() const { return shape_->userProperties; }
  /// The coordinate space of a group's children; zeros for a shape that is no group.
  void GetGroupCoordBounds(tagRECT& bounds) const;
  /// The box of a child in its group's space; zeros without an anchor.
  void GetChildAnchor(tagRECT& anchor) const;
  /// From the body of the text box record on: the text box's number is the u16 at 2. Null without a record.
  ByteView GetTextBox() const { return shape_ ? shape_->textBox : ByteView(); }
  /// 0 for a shape that is no group.
  unsigned int GetChildCount() const;
  /// Child i, which is not good if its records were bad. A null handle outside the group.
  MsoROShape GetChildShape(unsigned int i) const;

  /// Builds a shape of a shape container. The handle stays null if the container claims to be a group.
  void InitShape(const MsoRORecInfo& container, ChainAllocator& allocator, uint32_t zOrder);
  /// Builds a group of a group container. The handle stays as it was if the first record is no shape
  /// container. Groups that are nested more than 64 deep are left out.
  void InitGroupShape(const MsoRORecInfo& container, ChainAllocator& allocator, uint32_t zOrder,
                      unsigned int depth = 0);

 private:
  const _MsoROGroupShape* Group() const;

  _MsoROShape* shape_ = nullptr;
};

/// A shape with children: the shapes whose flags say so.
struct _MsoROGroupShape : _MsoROShape {
  std::vector<MsoROShape> children;
  tagRECT coordinates;  ///< the space of the children
};

}  // namespace mso_escher
