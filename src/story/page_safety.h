#pragma once

#include <string>
#include <string_view>

#include "base/link_policy.h"
#include "base/warnings.h"

class IWriteArchive;

namespace pagerex {

/// Whether the pages are safe, so that nothing of the document leaves the place it is written to, and which
/// of its addresses are kept then. All that comes from the document and is not written as document text
/// (`AddContentEx`, `AddTextEx`) goes through here. Where pages are not safe it is written as it stands.
struct KPageSafety {
  bool on = false;
  LinkPolicy links = LinkPolicy::kSafe;  ///< counts only where `on`
  Warnings* warnings = nullptr;          ///< where it tells of addresses that are left out; may be null

  /// Between tags, and in the value of an attribute.
  std::string Text(std::string text) const;
  /// The name of a font in CSS; `quote` as it stands around names otherwise.
  std::string FontName(std::string name, const char* quote = "") const;
  /// A path below the main HTML file, by the name that the host has given.
  std::string Path(std::string path) const;

  bool Keeps(std::string_view address) const { return !on || keepsAddress(links, address); }
  /// An attribute with an address of the document, left out if that is not kept.
  void AddAddress(IWriteArchive& archive, const char* name, const std::string& address,
                  const char* ns = nullptr) const;
};

}  // namespace pagerex
