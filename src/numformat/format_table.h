#pragma once

#include <map>
#include <string>
#include <string_view>

#include "numformat/sectioned_format.h"

/// What has been compiled, by format string. Holds a reference to each format.
class FormatTable {
 public:
  ~FormatTable() { Clear(); }

  /// Null if there is none; no reference is added.
  KNFSect* Find(std::wstring_view format) const;
  /// Adds a reference to `compiled`.
  void Insert(std::wstring_view format, KNFSect* compiled);
  void Clear();

 private:
  std::map<std::wstring, KNFSect*, std::less<>> formats_;
};

extern FormatTable nfTable;
