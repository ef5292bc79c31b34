#pragma once

#include <string>
#include <vector>

#include "request.h"

namespace cli {

struct Input {
  std::string path;    ///< as it was given
  std::string folder;  ///< that was given, or that the file lies in: results keep what lies below
};

/// The files that the request names, those of its list, and those in folders. `skipped` is a folder that is
/// not looked into, since results go there. Returns what is wrong, or nothing.
std::string collectInputs(const Request& request, const std::string& skipped, std::vector<Input>& inputs);

}  // namespace cli
