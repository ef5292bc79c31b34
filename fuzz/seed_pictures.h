#pragma once

#include <string>
#include <vector>

#include "support/bytes.h"

/// Small pictures with records of every kind.
namespace fuzz {

struct SeedPicture {
  std::string name;
  support::Bytes bytes;
};

/// An enhanced metafile of 192 pixels square, with a header in front of the records and an end behind.
support::Bytes emfWith(const std::vector<support::Bytes>& records);
/// A comment with records of EMF+.
support::Bytes emfPlusComment(const support::Bytes& records);

std::vector<SeedPicture> seedWmfs();
std::vector<SeedPicture> seedEmfs();
std::vector<SeedPicture> seedEmfPluses();  ///< records alone
std::vector<SeedPicture> seedDibs();       ///< packed
std::vector<SeedPicture> seedTiffs();
std::vector<SeedPicture> seedPicts();

}  // namespace fuzz
