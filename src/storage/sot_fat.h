#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <vector>

class SotRoTrunk;

/// An allocation table: for each page, or tiny page, the number of the next one of its chain, negative at the
/// chain's end.
class SotRoFAT {
 public:
  /// Reads the whole table, as many values as the trunk has.
  explicit SotRoFAT(SotRoTrunk& trunk);

  /// The page numbers of the chain that begins with `start`, with the negative number that ends it. A chain
  /// that runs into itself at one page, or out of the table, ends with that page and has no end mark. The
  /// list belongs to the table. Empty (an end mark alone) for a start past the table. Throws an int for a
  /// chain that is a loop.
  std::span<const int> pageLst(int start);

 private:
  bool contains(int page) const { return page >= 0 && static_cast<size_t>(page) < table_.size(); }
  size_t chainLength(int start);

  std::vector<int> table_;
  std::map<int, std::vector<int>> chains_;  ///< by start page
  /// In a sound file chains share no page. Damaged ones may: the steps that may still be made along all
  /// chains together keep time and memory in proportion to the table.
  size_t stepsLeft_;
};
