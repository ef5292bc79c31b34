#pragma once

#include <string_view>

#include "base/status.h"

namespace pagerex {

struct KEnv;

/// How the document comes out.
enum VIEW : int {
  VIEW_INVALID = -1,
  VIEW_NORMAL = 0,    ///< one page, with a navigation frame
  VIEW_PHONE = 1,     ///< many small pages, no floating drawings, no notes
  VIEW_PREVIEW = 2,   ///< the first characters as a bare fragment
  VIEW_MULPAGES = 3,  ///< as normal, cut into pages by character count
};

/// What tells a view from the others, but for its writers (writer_factory.h).
struct KViewTraits {
  VIEW view;
  std::string_view word;  ///< of the option
  bool hasPageSize;       ///< it is cut by character count, so that a page size counts
  bool hasFilesFolder;    ///< with pages, a style sheet and shapes in it; else all stands in the main file
  bool hasNavigation;     ///< a tree of headings and bookmarks is collected
  bool hasNotes;          ///< the contents of notes stand at the end of their page
  bool isForPhones;       ///< pages without script
  /// Writes the index at the main HTML path; null if there is none. `name` is that of the main file, without
  /// folder and extension.
  void (*writeIndex)(const KEnv& env, std::string_view name);
};

/// The row of a view; null for an invalid one.
const KViewTraits* TraitsOf(VIEW view);
/// The view of an option's word; VIEW_INVALID for a word that is none.
VIEW ViewOf(std::string_view word);

/// What the name of the main HTML file takes for the folder beside it.
constexpr std::string_view kFilesFolderSuffix = ".files";

}  // namespace pagerex
