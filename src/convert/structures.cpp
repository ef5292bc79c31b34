#include "convert/structures.h"

#include <cerrno>

namespace pagerex {
namespace {

// What the first versions of the structures held.
constexpr size_t kInputSize = sizeof(pagerex_input);
constexpr size_t kOutputSize = sizeof(pagerex_output);

bool isInput(const pagerex_input& input) {
  const bool hasFunctions = input.byte_count && input.read_at;
  const bool hasOneFunction = input.byte_count || input.read_at;
  const int ways = (input.path != nullptr) + (input.data != nullptr) + hasOneFunction;
  return ways == 1 && hasFunctions == hasOneFunction;
}

bool isOutput(const pagerex_output& output) {
  return output.path ? !output.begin && !output.write && *output.path : output.begin && output.write;
}

}  // namespace

bool takeInput(const pagerex_input& given, pagerex_input& out) {
  return takeStructure(given, kInputSize, out) && isInput(out);
}

bool takeOutput(const pagerex_output& given, pagerex_output& out) {
  return takeStructure(given, kOutputSize, out) && isOutput(out);
}

int errorOfName(const std::string& name) {
  constexpr size_t kLongest = 230;  // paths below it have room for 259 bytes
  if (name.empty() || name == "." || name == "..") return EISDIR;
  if (name.size() > kLongest) return ENAMETOOLONG;
  for (const char c : name) {
    if (c == '/' || static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return EINVAL;
  }
  return 0;
}

}  // namespace pagerex
