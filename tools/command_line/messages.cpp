#include "messages.h"

#include <cstdio>

namespace cli {

int fail(int exitCode, const std::string& message) {
  std::fprintf(stderr, "pagerex: %s\n", message.c_str());
  return exitCode;
}

std::string shown(const std::string& path) {
  std::string text;
  for (const char byte : path) {
    if (static_cast<unsigned char>(byte) >= ' ' && byte != '\x7f') {
      text += byte;
      continue;
    }
    char escaped[5];
    std::snprintf(escaped, sizeof escaped, "\\x%02x", static_cast<unsigned char>(byte));
    text += escaped;
  }
  return text;
}

}  // namespace cli
