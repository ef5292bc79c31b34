#pragma once

#include <set>
#include <string>
#include <string_view>

namespace safety {

/// What a page may do to those who look at it, by the tree that a browser makes of it: each element that runs
/// or loads something, each script, each style element and each handler must be one of harmless pages, up to
/// numbers and colours; addresses have a known scheme or none; styles of elements load and run nothing. Parts
/// that only some browsers read (`<!--[if gte vml 1]>` and their like) are looked at both as comments and as
/// markup.
class PageRules {
 public:
  /// `page` is harmless: what runs in it may run in others.
  void learn(std::string_view page);

  /// The first thing that `page` may not do; empty if there is none. With `anyAddress`, addresses may have
  /// any scheme.
  std::string violation(std::string_view page, bool anyAddress = false) const;
  /// The same for a file that is no page: a style sheet, the library's script, a picture by its name.
  static std::string fileViolation(std::string_view name, std::string_view text);

 private:
  std::set<std::string> known_;
};

}  // namespace safety
