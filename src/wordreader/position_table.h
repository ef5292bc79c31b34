#pragma once

#include "wordreader/plcf.h"

namespace pagerex {

/// A position table (PLCF) of any kind, in place. Positions outside are 0, records outside empty.
class PositionTable : public KDRPlcfBase {
 public:
  PositionTable() = default;
  PositionTable(ByteView bytes, uint32_t recordSize) : recordSize_(recordSize) {
    AssignBytes(bytes, recordSize);
  }

  ByteView Record(uint32_t i) const { return RecordBytes(i, recordSize_); }
  /// The entry that holds `position`, if positions rise; `Count()` for none.
  uint32_t Find(uint32_t position) const {
    const uint32_t above = UpperBound(position);
    return above == 0 || above > Count() ? Count() : above - 1;
  }

 private:
  uint32_t recordSize_ = 0;
};

}  // namespace pagerex
