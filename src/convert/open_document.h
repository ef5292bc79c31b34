#pragma once

#include <memory>
#include <optional>

#include "base/chain_allocator.h"
#include "base/run_control.h"
#include "base/warnings.h"
#include "convert/inputs.h"
#include "wordreader/document.h"

/// A document that a host has open: its input, and what was read of it.
struct pagerex_document {
  /// `memory` counts bytes; UINT64_MAX for no limit.
  explicit pagerex_document(uint64_t memory) : memoryLimit_(memory) {}
  pagerex_document(const pagerex_document&) = delete;
  pagerex_document& operator=(const pagerex_document&) = delete;
  ~pagerex_document() { CloseDocument(); }

  /// Opens an input that has been checked: PAGEREX_RESULT_..., and for some a value of errno in `error`.
  int Open(const pagerex_input& input, uint64_t mostInputBytes, pagerex::RunControl& control, int& error);

  /// The document, for the length of a call with this control; opened anew if an earlier call ended badly.
  /// Null, and `code`, if that fails.
  const KDRDocument* Begin(pagerex::RunControl& control, int& code);
  /// After each `Begin`, whatever came of it. What was read by a call that broke off may not be whole, so
  /// that it goes.
  void End(bool brokeOff);

  pagerex::InputSource& input() { return *source_; }
  const pagerex::Warnings& warnings() const { return warnings_; }
  int kind() const { return kind_; }

  /// What ended a call that threw std::bad_alloc.
  pagerex::StopCause MemoryCause() const {
    return budget_.wasExceeded ? pagerex::StopCause::kMemoryLimit : pagerex::StopCause::kOutOfMemory;
  }

 private:
  int OpenDocument(pagerex::RunControl& control);
  void CloseDocument();
  int Detect();

  const uint64_t memoryLimit_;
  std::unique_ptr<pagerex::InputSource> source_;
  MemoryBudget budget_;
  pagerex::Warnings warnings_;  ///< of what was read so far
  std::optional<KDRDocument> document_;
  int kind_ = PAGEREX_KIND_UNKNOWN;
};
