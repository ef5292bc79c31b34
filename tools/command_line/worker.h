#pragma once

#include <atomic>
#include <cstdint>

#include "batch.h"

namespace cli {

/// What a child knows of its document, in memory that outlives it.
struct Desk {
  static constexpr uint32_t kNothing = UINT32_MAX;

  std::atomic<uint32_t> item{kNothing};  ///< begun; the last one done stays
  int32_t kind = PAGEREX_KIND_UNKNOWN;
  uint64_t bytes = 0;
  bool hasHash = false;
  Sha256 hash = {};
};

/// What a child sends for each document, in front of its line of the report.
struct Reply {
  uint32_t item = 0;
  Status status = Status::kOk;
  bool isLeftOut = false;  ///< the report has it; no line follows
  char sentence[sizeof(pagerex_result::sentence)] = "";
};

/// The life of a child: takes numbers of items from the socket, and answers each. Ends when the socket does.
[[noreturn]] void work(int socket, const Batch& batch, Desk& desk);

}  // namespace cli
