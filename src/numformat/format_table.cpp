#include "numformat/format_table.h"

FormatTable nfTable;

KNFSect* FormatTable::Find(std::wstring_view format) const {
  const auto found = formats_.find(format);
  return found == formats_.end() ? nullptr : found->second;
}

void FormatTable::Insert(std::wstring_view format, KNFSect* compiled) {
  KNFSect*& slot = formats_[std::wstring(format)];
  KNFSect* before = slot;
  slot = compiled;
  compiled->AddRef();
  if (before) before->Release();
}

void FormatTable::Clear() {
  // Destroying a format may release others, but adds none to the table.
  for (const auto& [text, format] : formats_) format->Release();
  formats_.clear();
}
