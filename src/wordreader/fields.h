#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/status.h"
#include "wordreader/plcf.h"

/// One field mark.
struct KDRField {
  mso_word::FLD fld{};
  uint8_t GetFieldType() const { return fld.type; }
};

/// The field marks of one sub-document, as they stand: pairing them is the writers' work.
class KDRPlcffld : public KDRPlcf<mso_word::FLD, 0> {
 public:
  Status Read(const KDRDocument& document);

 protected:
  explicit KDRPlcffld(uint32_t fibIndex) : fibIndex_(fibIndex) {}
  uint32_t fibIndex_;
};

class KDRFieldContext : public KDRPlcffld {
 public:
  explicit KDRFieldContext(uint32_t fibIndex) : KDRPlcffld(fibIndex) {}
  Status Read(const KDRDocument& document);
  bool Good() const { return Count() > 0; }
  KDRField Item(unsigned int i) const;
  uint32_t GetCP(unsigned int i) const { return Position(i); }
  /// Index of the first mark at `cp`, or `Count()`.
  uint32_t Find(uint32_t cp) const;

 private:
  /// The n-th mark in the order of the positions.
  uint32_t Sorted(uint32_t n) const { return order_.empty() ? n : order_[n]; }

  std::vector<uint32_t> order_;  ///< only of a damaged document, whose positions do not ascend
};

/// The field contexts of all sub-documents; a sub-document without fields has an empty one.
class _KDRFields {
 public:
  Status Read(const KDRDocument& document);
  const KDRFieldContext& GetFields(mso_word::SUBDOC_TYPE type) const;

 private:
  static constexpr uint32_t kNoTable = 145;

  std::array<const KDRFieldContext*, mso_word::kSubDocCount> contexts_{};
  KDRFieldContext none_{kNoTable};
};
