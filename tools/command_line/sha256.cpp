#include "sha256.h"

#include <sha256.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace cli {

Sha256 sha256Of(const std::string& content) {
  SHA256_CTX context;
  Sha256 hash;
  SHA256_Init(&context);
  SHA256_Update(&context, reinterpret_cast<const uint8_t*>(content.data()), content.size());
  SHA256_Final(hash.data(), &context);
  return hash;
}

bool sha256OfFile(int file, Sha256& hash) {
  std::vector<uint8_t> buffer(size_t{256} << 10);
  SHA256_CTX context;
  SHA256_Init(&context);
  for (;;) {
    const ssize_t count = read(file, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) break;
    SHA256_Update(&context, buffer.data(), static_cast<size_t>(count));
  }
  SHA256_Final(hash.data(), &context);
  return true;
}

std::string spelled(const Sha256& hash) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const uint8_t byte : hash) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

}  // namespace cli
