#include <algorithm>
#include <iterator>

#include "batch.h"

namespace cli {

namespace {

/// In the order of the statuses.
constexpr const char* kNames[] = {"ok",     "partial", "not_word",  "encrypted",  "damaged",      "timeout",
                                  "memory", "crash",   "too_large", "unreadable", "write_failed", "refused"};
static_assert(std::size(kNames) == kStatusCount);

struct Row {
  int code;
  Status status;
};
constexpr Row kOfResults[] = {
    {PAGEREX_RESULT_OK, Status::kOk},
    {PAGEREX_RESULT_INVALID_ARGUMENT, Status::kRefused},
    {PAGEREX_RESULT_NOT_WORD, Status::kNotWord},
    {PAGEREX_RESULT_ENCRYPTED, Status::kEncrypted},
    {PAGEREX_RESULT_DAMAGED, Status::kDamaged},
    {PAGEREX_RESULT_UNREADABLE, Status::kUnreadable},
    {PAGEREX_RESULT_CANNOT_WRITE, Status::kWriteFailed},
    {PAGEREX_RESULT_REFUSED, Status::kRefused},
    {PAGEREX_RESULT_DEADLINE, Status::kTimeout},
    {PAGEREX_RESULT_OUT_OF_MEMORY, Status::kMemory},
    {PAGEREX_RESULT_MEMORY_LIMIT, Status::kMemory},
    {PAGEREX_RESULT_OUTPUT_LIMIT, Status::kTooLarge},
    {PAGEREX_RESULT_TOO_LARGE, Status::kTooLarge},
};

}  // namespace

const char* nameOf(Status status) {
  return kNames[static_cast<size_t>(status)];
}

bool readStatus(const std::string& name, Status& status) {
  const auto found = std::find(std::begin(kNames), std::end(kNames), name);
  if (found == std::end(kNames)) return false;
  status = static_cast<Status>(found - std::begin(kNames));
  return true;
}

Status statusOf(const pagerex_result& result) {
  if (result.code == PAGEREX_RESULT_OK) return result.complete ? Status::kOk : Status::kPartial;
  const auto row = std::find_if(std::begin(kOfResults), std::end(kOfResults),
                                [&](const Row& one) { return one.code == result.code; });
  return row == std::end(kOfResults) ? Status::kDamaged : row->status;
}

}  // namespace cli
