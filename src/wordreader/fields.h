#pragma once

#include <array>
#include <cstdint>

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
  /// Index of the first mark at `cp`, or `Count()`; a search where the positions ascend.
  uint32_t Find(uint32_t cp) const;

 private:
  /// Index of the first mark at or behind `cp`, where the positions ascend.
  uint32_t FirstFrom(uint32_t cp) const;

  bool ascending_ = true;  ///< the positions ascend, as they do unless the document is damaged
};

/// The field contexts of all sub-documents; a sub-document without fields has an empty one.
class _KDRFields {
 public:
  Status Read(const KDRDocument& document);
  const KDRFieldContext& GetFields(mso_word::SUBDOC_TYPE type) const;

 private:
  std::array<const KDRFieldContext*, mso_word::kSubDocCount> contexts_{};
};
