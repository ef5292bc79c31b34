#pragma once

#include <array>
#include <atomic>
#include <memory>

#include "numformat/format_section.h"

/// A compiled format: its sections, and which of them serves which value. Counts references from 1, whatever
/// thread adds and releases them, and destroys itself with the last.
class KNFSect final : public KNumericalFormat {
 public:
  /// What a section serves.
  enum Slot : int { kPositive, kNegative, kZero, kText, kSlots };

  Status FormatNum(const tagVARIANT& value, const NF_FORMAT_PARAM& param, std::optional<std::wstring>& out,
                   NFSTYLE& style) const override;
  Status FormatPrecision(double& value) const override;
  int AddRef() override { return ++references_; }
  int Release() override;
  int References() const { return references_; }

  KNFBase* GetSect(Slot slot) const { return slots_[slot]; }
  void SetSect(Slot slot, KNFBase* section) { slots_[slot] = section; }

  /// The sections in the order of the format string, `index` from 0 to 3; null for one without characters.
  KNFBase* GetSetcReal(int index) const { return real_[index].get(); }
  void SetSectReal(int index, std::unique_ptr<KNFBase> section) { real_[index] = std::move(section); }

  /// 1 to 4; any other count becomes 4.
  int GetSectCount() const { return count_; }
  void SetSectCount(int count) { count_ = count >= 1 && count <= kMaxSections ? count : kMaxSections; }

 private:
  const KNFBase* GetNF(const tagVARIANT& value, const NF_FORMAT_PARAM& param) const;
  KNFBase* sectionOf(double number) const;

  std::array<KNFBase*, kSlots> slots_ = {};
  std::array<std::unique_ptr<KNFBase>, kMaxSections> real_;
  int count_ = 1;
  std::atomic<int> references_ = 1;
};
