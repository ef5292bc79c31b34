#pragma once

#include <cstdint>
#include <vector>

#include "base/status.h"
#include "wordreader/plcf.h"
#include "wordreader/propx.h"

/// The piece table of a document (table 33) and the property groups that its pieces refer to.
/// Both are views of the table's bytes, which must stay.
class KDRClx : public KDRPlcf<mso_word::PCD, 0> {
 public:
  /// kMalformed if there is no piece table or something runs past the record; kNothing if it has no pieces.
  Status Read(const KDRTableRecord& record);

  const KDRPlcf<mso_word::PCD, 0>& GetPlcfpcd() const { return *this; }
  /// The property groups of a fast-saved document in file order; as many as a piece can refer to.
  const std::vector<const KDRPropx*>& GetSprmsFastSave() const { return propertyGroups_; }

 private:
  std::vector<const KDRPropx*> propertyGroups_;
};
