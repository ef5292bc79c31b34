#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/bytes.h"

/// A document that asks for far more work than a sound one of its size: many of its entries refer to the same
/// bytes, or each step makes the next one longer.
struct HostileDocument {
  const char* name;
  /// The file. Its size grows with `scale` and is about `scale` KiB.
  support::Bytes (*make)(uint32_t scale);
  /// Behind the hostile part stands the paragraph `kTheEnd`, which comes out.
  bool comesToItsEnd = true;
  /// A preview of it succeeds, which writes one section after the other until it has its characters.
  bool hasPreview = true;
};

inline const std::string kTheEnd = "The end of it all.";

/// By what multiplies: texts, lists and styles; tables; shapes and pictures; the compound file.
std::vector<HostileDocument> hostileTexts();
std::vector<HostileDocument> hostileTables();
std::vector<HostileDocument> hostileObjects();
std::vector<HostileDocument> hostileFiles();

inline std::vector<HostileDocument> hostileDocuments() {
  std::vector<HostileDocument> all;
  for (const auto& some : {hostileTexts(), hostileTables(), hostileObjects(), hostileFiles()}) {
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}
