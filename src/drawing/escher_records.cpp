#include "drawing/escher_records.h"

#include <algorithm>
#include <cstring>

namespace mso_escher {

Status MsoRORecords::Next(MsoRORecInfo* record) {
  constexpr size_t kHeader = 8;
  if (left_.size() < kHeader) return Status::kNothing;
  const int32_t length = left_.i32(4);
  if (length < 0) return Status::kNothing;
  const size_t bodySize = std::min(static_cast<size_t>(length), left_.size() - kHeader);
  const uint8_t* const body = left_.data() + kHeader;
  record->versionAndInstance = left_.u16(0);
  record->type = left_.u16(2);
  // Even an empty body has a place: a shape can have a text box record with nothing in it.
  record->body = ByteView(body, bodySize);
  record->reach = ByteView(body, reach_.size() - kHeader);
  Skip(kHeader + bodySize);
  return Status::kOk;
}

unsigned int MsoRORecords::ReadBytes(unsigned char* out, unsigned int n) {
  const size_t count = std::min<size_t>(n, left_.size());
  if (count > 0) std::memcpy(out, left_.data(), count);
  Skip(count);
  return static_cast<unsigned int>(count);
}

void MsoRORecords::Skip(size_t n) {
  left_ = left_.part(n);
  reach_ = reach_.part(n);
}

}  // namespace mso_escher
