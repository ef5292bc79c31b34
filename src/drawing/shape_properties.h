#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/byte_view.h"
#include "base/status.h"
#include "drawing/escher_records.h"

/// Number of a shape property.
using PID = uint16_t;

namespace mso_escher {

/// A property of a table.
struct MsoROShapeProp {
  uint16_t word = 0;     ///< the number in the low 14 bits, kBlipFlag, kComplexFlag
  uint32_t operand = 0;  ///< of a complex property: bytes of its data
  ByteView data;         ///< of a complex property, cut to the record
  ByteView reach;        ///< the data and all that was read behind it

  static constexpr uint16_t kNumber = 0x3FFF;
  static constexpr uint16_t kBlipFlag = 0x4000;
  static constexpr uint16_t kComplexFlag = 0x8000;
  PID id() const { return word & kNumber; }
  /// It has data behind the table, unless that is 0 bytes long.
  bool hasData() const { return (word & kComplexFlag) != 0 && operand != 0; }
};

/// A property table: properties of 6 bytes each, then the data of the complex ones in their order.
/// A view of the record's bytes.
class MsoROShapeOPT {
 public:
  /// The instance of the record is the count of properties.
  void Init(const MsoRORecInfo& record);
  unsigned int GetCount() const { return count_; }
  /// Bytes of the properties and their data.
  size_t GetSize() const { return body_.size(); }

  /// kOk and the first property of that number; kNoProperty if there is none. `property` may be null.
  Status Find(PID id, MsoROShapeProp* property) const;
  /// kOk and the value of a flag that the file sets; kNoProperty for a flag that it leaves open.
  Status FindBool(PID id, bool& value) const;

  /// Between these two, lookups search instead of walking the table.
  void InitMap();
  void ClearMap() { map_.reset(); }

  /// Walks the table in order.
  class Enumerator {
   public:
    explicit Enumerator(const MsoROShapeOPT& table)
        : properties_(table.body_.part(0, table.propertyBytes())),
          data_(table.body_.part(table.propertyBytes())),
          reach_(table.reach_.part(table.propertyBytes())) {}
    /// kNothing at the end.
    Status Next(MsoROShapeProp* property);

   private:
    ByteView properties_;
    ByteView data_;
    ByteView reach_;
  };

 private:
  using Map = std::vector<MsoROShapeProp>;  ///< sorted by number, the first of each number foremost

  static constexpr size_t kPropertySize = 6;
  size_t propertyBytes() const { return count_ * kPropertySize; }
  MsoROShapeProp PropertyAt(unsigned int i) const;

  ByteView body_;
  ByteView reach_;  ///< the body and all that was read behind it
  unsigned int count_ = 0;
  std::unique_ptr<Map> map_;
};

}  // namespace mso_escher

namespace object {

/// The data of an array property: a count, an allocated count and the size of an element, 16 bits each, then
/// the elements.
class CMsoArray {
 public:
  explicit CMsoArray(ByteView data) : data_(data) {}
  /// Elements that are there, at most as many as are declared.
  unsigned int GetItemCount() const;
  unsigned int GetItemSize() const;
  /// The bytes of element i; empty outside the array.
  ByteView GetEle(unsigned int i) const;

 private:
  ByteView data_;
};

}  // namespace object
