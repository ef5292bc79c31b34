#pragma once

#include <string_view>

namespace pagerex {

/// Bookmarks that Word makes for itself and that nothing leads to: where the cursor stood last, where a link
/// was pasted from, and where the pictures of bullets are kept; also one without a name.
inline bool isOfWordItself(std::u16string_view bookmark) {
  return bookmark.empty() || bookmark == u"_GoBack" || bookmark == u"_PictureBullets" ||
         bookmark.starts_with(u"_Hlk");
}

}  // namespace pagerex
