#include "drawing/shape_properties.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace mso_escher {
namespace {

constexpr size_t kArrayHeader = 6;
constexpr size_t kElementSizeAt = 4;

constexpr PID kArrays[] = {0x0145, 0x0146, 0x0151, 0x0152, 0x0155, 0x0156, 0x0157,
                           0x0197, 0x01CF, 0x0383, 0x206E, 0x206F, 0x2070};

bool isArray(PID id) {
  return std::find(std::begin(kArrays), std::end(kArrays), id) != std::end(kArrays);
}

/// Bytes that an array takes, by its own header. A negative element size stands for a quarter of it.
uint32_t arrayBytes(ByteView data) {
  int elementSize = data.i16(kElementSizeAt);
  if (elementSize < 0 && data.contains(kElementSizeAt, sizeof(int16_t))) elementSize = -elementSize >> 2;
  return static_cast<uint32_t>(int{data.i16(0)} * elementSize + static_cast<int>(kArrayHeader));
}

}  // namespace

void MsoROShapeOPT::Init(const MsoRORecInfo& record) {
  body_ = record.body;
  reach_ = record.reach;
  const size_t fits = body_.size() / kPropertySize;
  count_ = static_cast<unsigned int>(std::min<size_t>(record.instance(), fits));
  if (count_ < record.instance()) body_ = reach_ = body_.part(0, propertyBytes());  // cut: there is no data
  map_.reset();
}

Status MsoROShapeOPT::Enumerator::Next(MsoROShapeProp* property) {
  if (properties_.size() < kPropertySize) return Status::kNothing;
  *property = {properties_.u16(0), properties_.u32(2), {}, {}};
  properties_ = properties_.part(kPropertySize);
  if (!property->hasData()) return Status::kOk;
  if (isArray(property->id())) property->operand = arrayBytes(data_);
  property->data = data_.part(0, property->operand);
  property->reach = reach_;
  data_ = data_.part(property->operand);
  reach_ = reach_.part(property->operand);
  return Status::kOk;
}

Status MsoROShapeOPT::Find(PID id, MsoROShapeProp* property) const {
  id &= MsoROShapeProp::kNumber;
  if (map_) {
    const auto found =
        std::lower_bound(map_->begin(), map_->end(), id,
                         [](const MsoROShapeProp& each, PID wanted) { return each.id() < wanted; });
    if (found == map_->end() || found->id() != id) return Status::kNoProperty;
    if (property) *property = *found;
    return Status::kOk;
  }
  for (unsigned int i = 0; i < count_; ++i) {
    if ((body_.u16(i * kPropertySize) & MsoROShapeProp::kNumber) != id) continue;
    if (property) *property = PropertyAt(i);
    return Status::kOk;
  }
  return Status::kNoProperty;
}

/// Where the data of a complex property lies depends on that of those before it; others stand for themselves.
MsoROShapeProp MsoROShapeOPT::PropertyAt(unsigned int i) const {
  const size_t at = i * kPropertySize;
  MsoROShapeProp property{body_.u16(at), body_.u32(at + 2), {}, {}};
  if (!property.hasData()) return property;
  Enumerator walk(*this);
  for (unsigned int passed = 0; passed <= i; ++passed) walk.Next(&property);
  return property;
}

/// Flags are packed into the last number of each 64: the value of each in the low half of the operand, in the
/// reverse order of their numbers, and in the high half whether the file sets it at all.
Status MsoROShapeOPT::FindBool(PID id, bool& value) const {
  constexpr unsigned kFirstFlag = 48;
  constexpr unsigned kGroup = 63;
  if ((id & kGroup) < kFirstFlag) return Status::kNoProperty;
  MsoROShapeProp property;
  if (Find(static_cast<PID>((id & ~kGroup) + kGroup), &property) != Status::kOk) return Status::kNoProperty;
  const unsigned bit = ~unsigned{id} & 15;
  if ((property.operand >> (bit + 16) & 1) == 0) return Status::kNoProperty;
  value = (property.operand >> bit & 1) != 0;
  return Status::kOk;
}

void MsoROShapeOPT::InitMap() {
  if (body_.empty()) return;
  map_ = std::make_unique<Map>();
  map_->reserve(count_);
  MsoROShapeProp each;
  for (Enumerator walk(*this); walk.Next(&each) == Status::kOk;) map_->push_back(each);
  std::stable_sort(map_->begin(), map_->end(),
                   [](const MsoROShapeProp& a, const MsoROShapeProp& b) { return a.id() < b.id(); });
}

}  // namespace mso_escher

namespace object {

unsigned int CMsoArray::GetItemSize() const {
  const int size = data_.i16(4);
  return static_cast<unsigned int>(size < 0 ? -size >> 2 : size);
}

unsigned int CMsoArray::GetItemCount() const {
  const unsigned int size = GetItemSize();
  if (size == 0 || data_.size() <= 6) return 0;
  return std::min<unsigned int>(data_.u16(0), static_cast<unsigned int>((data_.size() - 6) / size));
}

ByteView CMsoArray::GetEle(unsigned int i) const {
  return i < GetItemCount() ? data_.part(6 + size_t{i} * GetItemSize(), GetItemSize()) : ByteView();
}

}  // namespace object
