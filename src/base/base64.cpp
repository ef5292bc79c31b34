#include "base/base64.h"

namespace pagerex {
namespace {

constexpr size_t kGroup = 3, kDigitsOfGroup = 4;

void putGroup(const uint8_t* bytes, char* out) {
  constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const uint32_t bits = uint32_t{bytes[0]} << 16 | uint32_t{bytes[1]} << 8 | bytes[2];
  out[0] = kDigits[bits >> 18];
  out[1] = kDigits[bits >> 12 & 63];
  out[2] = kDigits[bits >> 6 & 63];
  out[3] = kDigits[bits & 63];
}

}  // namespace

void Base64::Append(ByteView part, std::string& out) {
  size_t at = 0;
  while (count_ > 0 && count_ < kGroup && at < part.size()) waiting_[count_++] = part.data()[at++];
  if (count_ > 0 && count_ < kGroup) return;
  const size_t groups = (part.size() - at) / kGroup + (count_ == kGroup);
  const size_t begin = out.size();
  out.resize(begin + groups * kDigitsOfGroup);
  char* next = out.data() + begin;
  if (count_ == kGroup) {
    putGroup(waiting_, next);
    next += kDigitsOfGroup;
    count_ = 0;
  }
  for (; part.size() - at >= kGroup; at += kGroup, next += kDigitsOfGroup) putGroup(part.data() + at, next);
  while (at < part.size()) waiting_[count_++] = part.data()[at++];
}

void Base64::Finish(std::string& out) {
  if (count_ == 0) return;
  const size_t digits = count_ + 1;
  while (count_ < kGroup) waiting_[count_++] = 0;
  char group[kDigitsOfGroup];
  putGroup(waiting_, group);
  count_ = 0;
  out.append(group, digits).append(kDigitsOfGroup - digits, '=');
}

}  // namespace pagerex
