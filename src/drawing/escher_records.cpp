#include "drawing/escher_records.h"

#include <algorithm>
#include <cstring>

namespace mso_escher {

Status MsoRORecords::Next(MsoRORecInfo* record) {
  constexpr size_t kHeader = 8;
  if (left_.size() < kHeader) return Status::kNothing;
  const int32_t length = left_.i32(4);
  if (length < 0) return Status::kNothing;
  record->versionAndInstance = left_.u16(0);
  record->type = left_.u16(2);
  record->body = left_.part(kHeader, static_cast<size_t>(length));
  record->reach = reach_.part(kHeader);
  left_ = left_.part(kHeader + static_cast<size_t>(length));
  reach_ = reach_.part(kHeader + static_cast<size_t>(length));
  return Status::kOk;
}

unsigned int MsoRORecords::ReadBytes(unsigned char* out, unsigned int n) {
  const size_t count = std::min<size_t>(n, left_.size());
  if (count > 0) std::memcpy(out, left_.data(), count);
  left_ = left_.part(count);
  reach_ = reach_.part(count);
  return static_cast<unsigned int>(count);
}

}  // namespace mso_escher
