#pragma once

#include <cstdint>

#include "base/byte_view.h"
#include "base/status.h"

namespace mso_escher {

/// Types of the records of a drawing that are read.
enum RecordType : uint16_t {
  kDrawingGroupContainer = 0xF000,
  kBlipStoreContainer = 0xF001,
  kDrawingContainer = 0xF002,
  kShapeGroupContainer = 0xF003,
  kShapeContainer = 0xF004,
  kSolverContainer = 0xF005,
  kFdgg = 0xF006,
  kFbse = 0xF007,
  kFdg = 0xF008,
  kGroupCoordinates = 0xF009,
  kFsp = 0xF00A,
  kOpt = 0xF00B,
  kTextBoxes = 0xF00C,
  kClientTextBox = 0xF00D,
  kAnchor = 0xF00E,
  kChildAnchor = 0xF00F,
  kClientAnchor = 0xF010,
  kClientData = 0xF011,
  kFirstBlip = 0xF018,
  kColourScheme = 0xF120,
  kUserOpt = 0xF122,
};

/// A record: the fields of its 8-byte header, and its body, cut to the bytes that hold it.
struct MsoRORecInfo {
  uint16_t versionAndInstance = 0;  ///< version in the low 4 bits
  uint16_t type = 0;
  ByteView body;
  ByteView reach;  ///< the body and all that was read behind it

  uint16_t instance() const { return versionAndInstance >> 4; }
};

/// A cursor over records that lie one behind the other.
class MsoRORecords {
 public:
  explicit MsoRORecords(ByteView bytes) : left_(bytes), reach_(bytes) {}
  /// The records in the body of a container.
  explicit MsoRORecords(const MsoRORecInfo& container) : left_(container.body), reach_(container.reach) {}

  /// kOk with a record; kNothing at the end, or at a record whose length is negative. A record that overruns
  /// the bytes is delivered shortened, and is the last one.
  Status Next(MsoRORecInfo* record);
  /// Copies raw bytes between records. Returns how many.
  unsigned int ReadBytes(unsigned char* out, unsigned int n);

 private:
  void Skip(size_t n);

  ByteView left_;
  ByteView reach_;  ///< from where `left_` begins to the end of what was read
};

}  // namespace mso_escher
