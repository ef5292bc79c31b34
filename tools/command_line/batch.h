#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pagerex/convert.h"
#include "request.h"
#include "sha256.h"

namespace cli {

/// What came of one file. Their names stand in reports and stay.
enum class Status : uint8_t {
  kOk,
  kPartial,
  kNotWord,
  kEncrypted,
  kDamaged,
  kTimeout,
  kMemory,
  kCrash,
  kTooLarge,
  kUnreadable,
  kWriteFailed,
  kRefused,
};
constexpr int kStatusCount = 12;

const char* nameOf(Status status);
/// False if no status has that name.
bool readStatus(const std::string& name, Status& status);
Status statusOf(const pagerex_result& result);
inline bool isFailure(Status status) {
  return status != Status::kOk && status != Status::kPartial;
}

/// What a report says of a file that was done before.
struct Earlier {
  bool isThere = false;
  Status status = Status::kOk;
  std::string sha256;
  std::string output;
};

struct Item {
  std::string path;
  std::string output;
  std::string refusal;  ///< why it is not even tried; empty if it is
  Earlier earlier;
};

/// The files of a run, and what holds for all of them.
struct Batch {
  const pagerex_format* format = nullptr;
  pagerex_options asked = {};
  uint64_t timeoutMs = 0;
  uint64_t memory = 0;
  bool hasReport = false;
  std::string options;  ///< what results depend on, as reports have it
  std::string limits;   ///< what a document may take
  std::vector<Item> items;
};

/// Files and folders into a folder. Returns the exit code.
int convertManyFiles(const Request& request);

}  // namespace cli
