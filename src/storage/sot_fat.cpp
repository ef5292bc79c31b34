#include "storage/sot_fat.h"

#include "storage/sot_trunk.h"

namespace {

constexpr int kEmptyChain[] = {-2};
/// Steps beyond twice the table, so that small files may be damaged at will.
constexpr size_t kSpareSteps = size_t{1} << 18;

}  // namespace

SotRoFAT::SotRoFAT(SotRoTrunk& trunk) {
  table_.resize(trunk.bytesLeft() / sizeof(int));
  const auto bytes = static_cast<unsigned int>(table_.size() * sizeof(int));
  table_.resize(trunk.read(reinterpret_cast<char*>(table_.data()), bytes) / sizeof(int));
  stepsLeft_ = 2 * table_.size() + kSpareSteps;
}

std::span<const int> SotRoFAT::pageLst(int start) {
  if (start >= 0 && !contains(start)) return kEmptyChain;
  const auto found = chains_.find(start);
  if (found != chains_.end()) return found->second;
  const size_t length = chainLength(start);
  if (length == 0) return kEmptyChain;
  std::vector<int>& pages = chains_[start];
  pages.reserve(length);
  pages.push_back(start);
  while (pages.size() < length) pages.push_back(table_[static_cast<size_t>(pages.back())]);
  return pages;
}

/// Count of numbers in the chain's list; 0 if the steps are used up.
size_t SotRoFAT::chainLength(int start) {
  size_t length = 1;
  size_t steps = 0;
  for (int page = start; contains(page);) {
    if (stepsLeft_ == 0) return 0;
    --stepsLeft_;
    const int next = table_[static_cast<size_t>(page)];
    ++length;
    if (next == page) break;
    if (++steps > table_.size()) throw static_cast<int>(steps);
    page = next;
  }
  return length;
}
