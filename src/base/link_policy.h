#pragma once

#include <string>
#include <string_view>

namespace pagerex {

/// Which addresses of a document are kept where a page is to be safe.
enum class LinkPolicy {
  kSafe,  ///< those that open something and run nothing
  kAll,
  kNone
};

/// Whether an address is kept. A safe one has a scheme of the table, in any letter case, or none: relative
/// addresses and "#place". Judged is what is left when blanks, control characters and all that is not ASCII
/// are taken out, as it stands and again as often as character references and percent escapes can be read in
/// it. Two slashes in front, of either kind, take their scheme from where the page lies, which on a disk is
/// the network share of a stranger: not safe.
bool keepsAddress(LinkPolicy policy, std::string_view address);

/// For reports: the scheme that an address is not safe for, else the one that it has; in small letters. Empty
/// for a relative address, "file" for a network share, "?" for what is no scheme or is escaped too deep.
std::string schemeOf(std::string_view address);

}  // namespace pagerex
