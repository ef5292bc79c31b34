#pragma once

#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace support {

/// A tag that has no partner in proper nesting: a start tag that is still open when an outer element, a
/// conditional part or the page ends, or an end tag of what is not open.
struct LoneTag {
  enum Kind { kStart, kEnd };
  Kind kind;
  std::string element;

  bool operator==(const LoneTag&) const = default;
  bool operator<(const LoneTag& other) const {
    return std::tie(kind, element) < std::tie(other.kind, other.element);
  }
};

/// The lone tags of a page, in the order in which they are found. Void elements (`<br>`, `<img>`) stand for
/// themselves, whatever end tags they have. Scripts and styles are raw text. A conditional part (`<!--[if gte
/// vml 1]>` up to `<![endif]-->`, `<![if !vml]>` up to `<![endif]>`) is an element "[if]" that no tag inside
/// reaches out of. Other comments are left out.
std::vector<LoneTag> loneTags(std::string_view page);

}  // namespace support
