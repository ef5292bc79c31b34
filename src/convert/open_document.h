#pragma once

#include <memory>
#include <optional>

#include "base/chain_allocator.h"
#include "base/run_control.h"
#include "base/warnings.h"
#include "convert/inputs.h"
#include "storage/com_interfaces.h"
#include "wordreader/document.h"
#include "wordreader/word_file.h"

/// A document that a host has open: its input, and what was read of it.
struct pagerex_document {
  /// `memory` counts bytes; UINT64_MAX for no limit.
  explicit pagerex_document(uint64_t memory) : memoryLimit_(memory) {}
  pagerex_document(const pagerex_document&) = delete;
  pagerex_document& operator=(const pagerex_document&) = delete;
  ~pagerex_document() { CloseDocument(); }

  /// Opens an input that has been checked: PAGEREX_RESULT_..., and for some a value of errno in `error`.
  int Open(const pagerex_input& input, uint64_t mostInputBytes, pagerex::RunControl& control, int& error);

  /// The document as the views read it, or as the walk does, for the length of a call with this control;
  /// opened anew if an earlier call ended badly. Null, and `code`, if that fails.
  const KDRDocument* BeginModel(pagerex::RunControl& control, int& code);
  pagerex::WordFile* BeginFile(pagerex::RunControl& control, int& code);
  /// Within a call that one of these has begun.
  const pagerex_summary& Summary();
  /// After each of these, whatever came of it. What was read by a call that broke off may not be whole, so
  /// that it goes.
  void End(bool brokeOff);

  pagerex::InputSource& input() { return *source_; }
  /// Of what the last call read.
  const pagerex::Warnings& warnings() const { return readsModel_ ? modelWarnings_ : fileWarnings_; }
  int kind() const { return kind_; }

  /// What ended a call that threw std::bad_alloc.
  pagerex::StopCause MemoryCause() const {
    return budget_.wasExceeded || fileBudget_.wasExceeded ? pagerex::StopCause::kMemoryLimit
                                                          : pagerex::StopCause::kOutOfMemory;
  }

 private:
  struct StorageReleaser {
    void operator()(IStorage* storage) const { storage->Release(); }
  };

  int OpenFile(pagerex::RunControl& control);
  int OpenFileAgain(pagerex::RunControl& control);
  Status OpenFresh();
  int OpenModel(pagerex::RunControl& control);
  template <class Function>
  int Guarded(pagerex::RunControl& control, const Function& open);
  void CloseDocument();
  int Detect();

  const uint64_t memoryLimit_;
  std::unique_ptr<pagerex::InputSource> source_;
  MemoryBudget budget_;                             ///< of the compound file and the model
  MemoryBudget fileBudget_;                         ///< of one opening for the walk: what the other leaves
  pagerex::Warnings modelWarnings_, fileWarnings_;  ///< of what was read so far
  bool readsModel_ = false;
  bool fileIsFresh_ = false;  ///< nothing but its beginning has been read
  std::unique_ptr<IStorage, StorageReleaser> storage_;
  std::optional<pagerex::WordFile> file_;
  std::optional<KDRDocument> model_;
  std::unique_ptr<pagerex_summary> summary_;
  int kind_ = PAGEREX_KIND_UNKNOWN;
};
